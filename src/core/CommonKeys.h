#pragma once
// The keys that every window shares: each window passes the keys it has not
// used. Shift is 0 for no modifier, 1 for Shift and 2 for Ctrl.
//
//   Esc        unload the window
//   F1         the tutorial (HelpButton), if it is enabled
//   F2, F9     minimise the main window (unloading the window first when
//              unloadOnMinimise)
//   F5         refresh the window's folder tree, when it has one
//   F6, F7     volume one step down, up
//   F8         mute on or off
//   F10        choose another folder (DirectoryButton), if enabled
//   Shift+Esc  unload the window and close the program
//   Ctrl+F     file search (searchButton), if enabled

#include <functional>

class QWidget;

// A window with a folder tree that F5 refreshes.
class FolderTreeWindow {
 public:
  virtual ~FolderTreeWindow() = default;
  virtual void FolderTree_Refresh() = 0;
};

void HandleCommonKey(QWidget* window, int keyCode, int shift, bool unloadOnMinimise, bool hasTree);

// Esc, Shift+Esc and F1 of the settings windows that live in the main
// window's area: Esc unloads the window (through `unload`, which may be
// refused); Shift+Esc also closes the program unless the window refused;
// F1 minimises the window's frame while the tutorial runs, and puts it back
// when the tutorial cannot start. True when the key was one of these.
bool HandleSettingsWindowKey(QWidget* window, int keyCode, int shift,
                             const std::function<void()>& unload);
