#pragma once
// The file properties window, " File Properties": a file's three times and
// its attributes, as far as this system keeps them. The creation time is
// shown but cannot be set; the modified time can; the access time is only
// shown, as it was when the window read it. Read-only is the owner's write
// bit, hidden a leading dot of the name; archive, system, compressed and
// temporary do not exist here and stay unticked and disabled.
//
// Callers: GetData(path) fills the window, then Display shows it modeless
// with its outer top left at the place given in twips of the main window's
// client area (where the browser and the viewers stand); the caller
// reckons the place below the cell and keeps the window inside the main
// window (OuterSizeTwips gives its size). ShowChangeProperties does all
// three. The window passes: clicking elsewhere, Esc and Cancel close it
// without a change.

#include <QSize>
#include <QString>
#include <QWidget>

#include "fileops/PassingWindow.h"

#include "core/WindowRoles.h"

class QDateEdit;
class QLabel;
class QPushButton;
class QTimeEdit;
class TransCheck;

class ChangeProperties : public PassingWindow {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::ChangeProperties;

  // Whether the Hidden box may be changed. Hiding or showing a file renames
  // it (a dot put in front or taken away), so the box is offered only for
  // the browser's current item of a folder on the Pictures, Videos or
  // Audios tab, whose entry follows the rename; elsewhere (an album, the
  // documents, a viewer) it only shows the state.
  enum class HiddenBox { ShowOnly, Renames };

  explicit ChangeProperties(QWidget* parent = nullptr);

  // Remembers the path and fills the window from the file. A file that
  // cannot be read leaves the times and the read-only box as they were.
  void GetData(const QString& path, HiddenBox hidden = HiddenBox::ShowOnly);
  // Shows the window at its place (see above).
  void Display(int leftTwips, int topTwips);
  // The window's outer size in twips, with the title bar reckoned as the
  // main window's until the window is up.
  QSize OuterSizeTwips() const;
  QString Path() const { return path_; }

  TransCheck* chkReadOnly;
  TransCheck* chkArchive;
  TransCheck* chkHidden;
  TransCheck* chkSystem;
  TransCheck* chkCompressed;
  TransCheck* chkTemporary;
  QDateEdit* DateCreated;
  QTimeEdit* TimeCreated;
  QDateEdit* DateModified;
  QTimeEdit* TimeModified;
  QLabel* DateAccessed;
  QLabel* TimeAccessed;
  QPushButton* OKButton;
  QPushButton* cancelButton;

 public slots:
  void OKButton_Click();
  void cancelButton_Click();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // Places the controls and makes the captions of the three times; once,
  // as the window does not change its size.
  void BuildLayout();
  // Hides or shows the file by its name when the Hidden box was changed;
  // the browser's entry and the data file follow.
  void ApplyHidden();

  QString path_;
  bool hiddenRenames_ = false;
  bool wasHidden_ = false;
};

// Loads the window if need be, fills it from the file and shows it at the
// place given (see above); the window.
ChangeProperties* ShowChangeProperties(
    const QString& path, int leftTwips, int topTwips,
    ChangeProperties::HiddenBox hidden = ChangeProperties::HiddenBox::ShowOnly);
