#pragma once
// The rename window: a small borderless strip that opens over the cell of
// the browser's current item (or over the file name in a viewer) with a
// box for the new name. The extension stands in a label beside the box and
// is not changed here. It passes: clicking elsewhere, Esc and Cancel close
// it without a rename.
//
// Callers: the browser copies its current entry to App().SourceFile and
// calls ShowRenameFile with its current tab and the place over the cell; a
// viewer sets App().PendingFile to the full path of its file first. The
// place is the window's top left in twips of the main window's client area
// (where the browser and the viewers stand); the window keeps inside that
// area less 60 twips.
//
// On success the file takes the box's text and the extension, the browser's
// entry the same with the blanks at either end trimmed, and the file's
// album entries and caption follow the new path.

#include <QString>
#include <QWidget>

#include "fileops/PassingWindow.h"

#include "core/WindowRoles.h"

class QLabel;
class QLineEdit;
class QPushButton;

class RenameFile : public PassingWindow {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::RenameFile;
  // Form_Load: splits the name of App().PendingFile, or else of
  // App().SourceFile, into the box and the label, and registers the window.
  explicit RenameFile(QWidget* parent = nullptr);

  // Shows the window modeless at the given place (see above) with the focus
  // in the name box. `tab` is the browser's tab whose current entry is
  // renamed when no PendingFile is set (1 Pictures to 4 Documents).
  void Display(int tab, int leftTwips, int topTwips);

  QLabel* Label1;
  QLineEdit* NewFile;
  QLabel* Extension;
  QPushButton* OKButton;
  QPushButton* cancelButton;

 public slots:
  void OKButton_Click();
  void cancelButton_Click();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void Form_Load();
  // Sizes the box to the name and lays out the strip at its place.
  void Layout();
  // Keys that belong to the window rather than to the control they were
  // pressed in; true when the key was used.
  bool HandleWindowKey(int keyCode, int shift);
  // Shows a message while the window stays up; false when the window went
  // away meanwhile.
  bool Tell(const QString& text);
  // A viewer that asked for the rename of its own file closes afterwards.
  static void UnloadViewersIfPending();

  int tab_ = 1;
  int wantedLeft_ = 0, wantedTop_ = 0;
  QString nameBefore_;  // the box before the user's last edit
};

// Loads the rename window afresh and shows it (see above); the window.
RenameFile* ShowRenameFile(int tab, int leftTwips, int topTwips);
