#pragma once
// What other windows may ask of the browser: switching the wheel of its
// scroll bars off while they take over the screen and back on afterwards,
// the tooltip of its current item read anew, the current item renamed, and
// what a viewer that walks a tab's list asks of the cells.
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
  // Item `index` of the tab becomes its current item; when it stands on the
  // page shown, its cell takes the highlight. The focus stays where it is
  // and the page does not change (turning a page closes the viewers).
  virtual void HighlightItem(int tab, qint32 index) = 0;
  // The cell of item `index`, when it stands on the page shown, shows the
  // deleted mark and loses its tooltip.
  virtual void MarkItemDeleted(int tab, qint32 index) = 0;
  // The cell of the current item of the tab in front takes the focus.
  virtual void FocusCurrentItem() = 0;
};

// The loaded browser's commands; nullptr when no browser is loaded.
BrowserCommands* TheBrowserCommands();

// Windows that take over the screen (the folder chooser, the delete
// verification) switch the browser's wheel off while they are up, and put
// it back as it was when they go.
void SuspendMouseWheel();
void ResumeMouseWheel();
