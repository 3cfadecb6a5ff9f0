#pragma once
// What other windows may ask of the browser: switching the wheel of its
// scroll bars off while they take over the screen and back on afterwards,
// the tooltip of its current item read anew, and the current item renamed.
// The browser offers it through the window registry; without a browser each
// call does nothing.

#include <QString>

class BrowserCommands {
 public:
  virtual ~BrowserCommands() = default;
  // Stores the wheel state of the scroll bars of the first three tabs and
  // switches it off; ResumeMouseWheel puts the stored state back.
  virtual void SuspendMouseWheel() = 0;
  virtual void ResumeMouseWheel() = 0;
  // The tooltip of the current item of the current tab, set again from the
  // file when the data popups are on.
  virtual void RefreshCurrentTooltip() = 0;
  // The current item of the current tab was renamed: its list entry
  // becomes `entry` and its cell, name and tooltip follow.
  virtual void CurrentEntryRenamed(const QString& entry) = 0;
};

// The loaded browser's commands; nullptr when no browser is loaded.
BrowserCommands* TheBrowserCommands();

// Windows that take over the screen (the folder chooser, the delete
// verification) switch the browser's wheel off while they are up, and put
// it back as it was when they go.
void SuspendMouseWheel();
void ResumeMouseWheel();
