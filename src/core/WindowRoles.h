#pragma once
// Every window of the program, known by a typed identifier, and the one
// table of what each window is and how the program treats it: what kind of
// window it is, how it is placed, what a refit of the main window does with
// it, whether the command bar brings it forward, whether it may refuse the
// close, and whether the browser's coming forward minimises it. A new
// window is one identifier and one row.

#include <functional>
#include <span>
#include <vector>

enum class WindowId {
  MainForm,
  SizeForm,
  Logo,
  CommandBar,
  Thumbnails,
  Background,
  ChangeMP3,
  ChooseDirectory,
  CleaningMessage,
  CopyMessage,
  DeleteMessage,
  DeleteVerify,
  frmAbout,
  LoadingMessage,
  MessageBox,
  PrinterSetup,
  RenameFile,
  ReplaceVerify,
  SlideshowController,
  Target,
  ChangeProperties,
  Magnifier,
  AlbumEdit,
  AlbumSelect,
  FindFiles,
  SelectionSort,
  OptionsEntry,
  SingleImage,
  SingleVideo,
  SingleAudio,
  AgentHelp,
};

enum class WindowKind {
  Main,        // the main window
  Hidden,      // never shown (the measuring window)
  Fixed,       // frameless sub-window of the main window's area (command bar, browser)
  MdiChild,    // a movable sub-window of the main window's area
  Dialog,      // a top-level dialog
  Popup,       // a borderless window that passes
};

enum class Placing {
  Own,               // the window places itself
  Fixed,             // the main window lays it out under or beside the command bar
  ViewerArea,        // kept inside the browser's area
  CentredOnBrowser,  // centred over the browser
  AboveAlbumButton,  // above the command bar's album button
  CentredOnScreen,
};

enum class OnRefit {
  Untouched,  // the refit leaves it alone
  Passes,     // unloaded and not brought back
  Reloaded,   // unloaded and loaded again once the browser has its new size
  Centred,    // set normal and centred on the browser again
  Kept,       // its state is noted, and it comes back placed as it was
};

struct WindowRoles {
  WindowId Id;
  const char* Name;  // the window's name, for messages and object names
  WindowKind Kind;
  Placing Place;
  OnRefit Refit;
  // Kept windows come back in this order (1 first); 0 for the others.
  int RefitOrder = 0;
  // A kept window that is also cut to the browser's size (SizeForms).
  bool SizedOnRefit = false;
  // The tab whose current item the window shows (1 to 3); 0 for none.
  int ShowsTab = 0;
  // The order in which the command bar brings it forward (1 first); 0 never.
  int ForwardOrder = 0;
  // The order in which the close asks it, as it may refuse (1 first); 0 when
  // it cannot refuse.
  int CloseAskOrder = 0;
  // Unloaded by the close before any window is asked.
  bool ClosesFirst = false;
  // Minimised when the browser comes forward (but after a refit).
  bool MinimisedByBrowser = false;
};

// The table, one row per identifier, in the order of the identifiers.
std::span<const WindowRoles> AllWindowRoles();
const WindowRoles& RolesOf(WindowId id);
const char* WindowName(WindowId id);

// The identifiers whose row satisfies `has`, in the table's order or, for
// an ordered role, in that role's order (rows whose order is 0 left out).
enum class RoleOrder { Table, Refit, Forward, CloseAsk };
std::vector<WindowId> WindowsWith(const std::function<bool(const WindowRoles&)>& has,
                                  RoleOrder order = RoleOrder::Table);
