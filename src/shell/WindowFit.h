#pragma once
// The rules that keep the main window inside the work area of the screen,
// keep the other windows inside the browser's area, and decide what the
// first-run timer of the main window does. Plain arithmetic, all measures in
// twips; the main window applies the answers.

#include <QRect>
#include <optional>

#include "shell/MainPosition.h"

// What the one-shot timer after a resize does to the main window. At most
// one of Width and Height is set, and then nothing else: the size change
// raises a new resize, and the checks go on at the next tick.
struct MainFitStep {
  std::optional<int> Width, Height;  // new outer width or height
  std::optional<int> Left, Top;      // new position
  bool Refit = false;                // RefitAllWindows
  bool operator==(const MainFitStep&) const = default;
};

// The decision of the timer after a resize, from the window's outer
// rectangle, the work area, and the size RefitAllWindows last fitted to.
// Below the minimum the size goes up to it; wider or higher than the work
// area it comes down to the work area, never below the minimum. A window
// hanging out of the work area on the right or at the bottom moves in, but
// never beyond the work area's left or top edge: at the minimum size a
// smaller work area moves nothing.
MainFitStep MainFitAfterResize(const QRect& window, const QRect& workArea, int lastWidth,
                               int lastHeight);

// What a change of the system's settings (a work area of another size, a
// panel moved) does to the main window.
struct WorkAreaFit {
  MainWindowState State = MainWindowState::Normal;
  QRect Window;
  bool Refit = false;
  bool operator==(const WorkAreaFit&) const = default;
};

// A maximised window stays as it is. A minimised one comes back to normal.
// A window larger than the work area (and above the minimum in that
// direction) goes to the work area's top left corner and shrinks to the
// work area, and the other windows are fitted again when its size changed;
// a smaller one only moves in where it hangs out on the right or at the
// bottom.
WorkAreaFit FitToChangedWorkArea(MainWindowState state, const QRect& window,
                                 const QRect& workArea);

// A viewer placed inside the browser's area: it comes back to the left or
// the top edge when it would reach past the browser's width less 120, or
// past the main window's client height less 60. Negative left and top
// become 0. Coordinates are relative to the browser's top left corner.
QRect PlacedViewerRect(const QRect& window, int browserWidth, int mainClientHeight);

// A window's size cut down so that it stays inside the browser's area:
// the width to the browser's width less its left, the height to the main
// window's client height less its top and 60.
QRect SizedFormRect(const QRect& window, int browserWidth, int mainClientHeight);

// What the first-run timer of the main window looks at.
struct FirstRunCheck {
  bool CharacterPresent = false;    // the tutorial's character file exists
  bool SpeechEnginePresent = false;
  bool FirstRun = false;            // the first tick since the main window loaded
  bool Defined = false;             // the options were saved at least once
  bool MerlinShown = false;         // the tutorial has been shown once
};

// And what it does, in this order: set HelpButton enabled or not, press
// HelpButton, show the options window, press optionsButton, and start the
// minute-by-minute watch again.
struct FirstRunActions {
  bool HelpEnabled = false;
  bool PressHelp = false;
  bool ShowOptionsEntry = false;
  bool PressOptions = false;
  bool Restart = false;
  bool operator==(const FirstRunActions&) const = default;
};

// The tutorial is offered only with both the character and the speech
// engine, first to a new user, then the options (the tour shows them at its
// end); each only until it has been seen or saved. Without the tutorial the
// watch ends until the browser is activated again.
FirstRunActions FirstRunTimerActions(const FirstRunCheck& check);
