#pragma once
// The browser window's own keys as decisions: which key does what, worked
// out without the window, which then carries the decision out. The window
// sees every key before its cells do; the cells' own keys are in
// CellNavigation.h.

#include <QString>
#include <QtGlobal>
#include <array>
#include <optional>

#include "core/BarCommands.h"

// ---- Form_KeyDown ----------------------------------------------------------

enum class FormKeyKind {
  Nothing,         // the key is taken and nothing happens
  FocusFirstCell,  // Pause: see PauseFocusesFirstCell
  GoHome,          // Home, with or without Ctrl: back to the default folder
  ScrollToEnd,     // End: the current tab's scroll bar to its Max
  EndProgram,      // Esc: unload the main window and end the program
  GoToTab,         // Ctrl+F1 to Ctrl+F4: bring tab `Tab` forward
  ClickButton,     // F1, or Ctrl with a letter: click `Button` if it is enabled
  Minimise,        // F2, F9: minimise the main window
  Enter,           // see EnterActionFor
  CommonKey,       // HandleCommonKey(window, KeyCode, Shift, false, false)
};

struct FormKeyAction {
  FormKeyKind Kind = FormKeyKind::Nothing;
  int Tab = 0;     // GoToTab: 1 to 4
  std::optional<BarButton> Button;  // ClickButton: the command bar's button
};

// What a key pressed in the browser window does. "Ctrl" is a shift state of
// exactly 2; any other state counts as without Ctrl.
FormKeyAction FormKeyDownAction(int keyCode, int shift);

// The command bar's button that Ctrl with the letter `keyCode` clicks; none
// for a letter without one.
std::optional<BarButton> CommandBarButtonForKey(int keyCode);

// Pause puts the focus on cell 0 of Pictures, Videos or Audios when the tab
// has entries and no frame stands on it; on Documents it does nothing.
bool PauseFocusesFirstCell(int tab, qint32 count, bool highlighted);

// ---- Form_KeyUp ------------------------------------------------------------

enum class KeyUpAction {
  Nothing,
  ContextMenu,  // Ctrl+N: the tab's mouse-down routine with button 2 on the current index
  Properties,   // Ctrl+P: mnuProperties_Click
  Mp3Tags,      // Ctrl+T: mnuMP3_Click
};

// What a released key does, given the tab in front, its Count and the
// extension of its current entry. Only Ctrl (shift state 2) acts.
KeyUpAction FormKeyUpAction(int keyCode, int shift, int tab, qint32 count,
                            const QString& currentExtension);

// ---- Enter -----------------------------------------------------------------

enum class EnterAction {
  ApplyThumbnailSize,  // the focus is in ThumbnailSize: ThumbnailSizeAfterEnter
  JumpToPosition,      // the focus is in the tab's PositionNumber: PositionJumpFor
  SkipThisEnter,       // the rename window closed with this key: clear SkipNextEnter
  OpenCurrent,         // the frame stands on the tab: open its current item
  Nothing,
};

EnterAction EnterActionFor(bool thumbnailSizeFocused, bool positionNumberFocused,
                           bool skipNextEnter, bool highlighted);

// The limits of the ThumbnailSize box, in inches.
inline constexpr double ThumbnailSizeMinimum = 0.5;
inline constexpr double ThumbnailSizeMaximum = 3.0;

// The new ThumbnailSizeTwips for the inches typed into ThumbnailSize: within
// the box's limits, then no higher than lets a cell fit the height of the
// page box ((box height - 270) / 1440 inches). On a box too low even for the
// smallest cell the size stays at the smallest, half an inch.
int ThumbnailSizeAfterEnter(double value, int boxHeightTwips);

// Where the position typed into PositionNumber leads: the scroll value of its
// page and the cell to focus on that page (-1: none).
struct PositionJump {
  int ScrollValue = 0;
  int FocusCell = -1;
};

// Position 0 (or less) goes to the first entry, one above Count to the last.
// On Documents no cell takes the focus.
PositionJump PositionJumpFor(qint64 value, qint32 count, int pageSize, int tab);

// ---- Going home ------------------------------------------------------------

// The tab whose first page is shown again when home is the folder on display:
// the first with entries in the order Pictures, Videos, Audios, Documents;
// 0 when all four are empty. counts[0] is the Count of Pictures.
int FirstNonEmptyTab(const std::array<qint32, 4>& counts);
