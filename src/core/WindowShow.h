#pragma once
// Showing a window that another subsystem makes: it is loaded through the
// window registry's loader, which that subsystem registers at start, and
// shown. A window whose subsystem registered no loader is not part of the
// program: nothing opens and nothing pretends to.

#include <QString>

#include "core/WindowRoles.h"

class QWidget;

// A viewer of the program's own (pictures, videos, audios). It is handed no
// file: it works on its tab's list through the current index, so that the
// whole list can be walked from inside it.
class MediaViewer {
 public:
  virtual ~MediaViewer() = default;
  // An open viewer shows the current item of its tab anew.
  virtual void LoadCurrentItem() = 0;
};

// A window that works on one file given before it shows (the file's
// properties, its tags).
class FileWindow {
 public:
  virtual ~FileWindow() = default;
  virtual void GetData(const QString& path) = 0;
};

// A viewer that shows the file the rename window has just renamed: it takes
// the new path, its title and description follow.
class RenamedFileViewer {
 public:
  virtual ~RenamedFileViewer() = default;
  virtual void FileRenamed(const QString& newPath) = 0;
};

// A window that the command bar resets each time it shows it (the search).
class ResetOnShow {
 public:
  virtual ~ResetOnShow() = default;
  virtual void Display() = 0;
};

// The picture viewer: the main window's refit asks it to fit its picture to
// the largest size its window now allows.
class PictureRefit {
 public:
  virtual ~PictureRefit() = default;
  virtual void RefitPicture() = 0;
};

// Loads the window (or takes the loaded one) and shows it, modeless; the
// window, or nullptr when it is not part of the program.
QWidget* ShowWindow(WindowId id);
// Loads the window and shows it modal, letting events run until it has
// gone; false when it is not part of the program.
bool ShowWindowModal(WindowId id);

// Gives the keyboard to a window that has come forward, unless it already
// holds it. A sub-window of the main window's area that shows does not take
// it by itself: the keys would stay with the window in front before, and
// Esc or Alt and a letter would miss the window the user sees in front.
void GiveKeyboard(QWidget* window);
