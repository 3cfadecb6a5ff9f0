#pragma once
// The folder chooser: a resizable window with a tree of the folders. It
// picks the target folder of a copy or move, with a box to change the file
// name at the same time, or a folder to browse. It is shown modeless and
// its caller waits for it, letting events run (ChooseDirectoryWait).
//
// The answer goes to the program-wide state: ChosenFolder, the folder
// picked; OperationFileName, the name box and the extension beside it;
// DirectoryCancelled, true unless OK took a folder.

#include <QPointer>
#include <QString>
#include <QWidget>

#include "core/CommonKeys.h"

#include "core/WindowRoles.h"

class FolderTreeView;
class QLabel;
class QLineEdit;
class QPushButton;

class ChooseDirectory : public QWidget, public FolderTreeWindow {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::ChooseDirectory;
  // Loads the window: reads its place and size from the settings, keeps it
  // on the main window's area and marks it open.
  explicit ChooseDirectory(QWidget* parent = nullptr);
  ~ChooseDirectory() override;

  // Shows the window for a mode, "Copy", "Move" or "Show", and selects the
  // folder in the tree once events have run.
  void Display(const QString& folder, const QString& mode);
  // Selects ChosenFolder in the tree after letting events run.
  void FolderTreeRefresh();
  // "Large" with the name box, "Small" without it.
  QString SizeMode() const { return sizeMode_; }

  FolderTreeView* FolderTree;
  QLabel* dName2;
  QLineEdit* NewFile;
  QLabel* Extension;
  QLabel* Label1;
  QPushButton* OKButton;
  QPushButton* cancelButton;

 public slots:
  // Reads the folders afresh, keeping the selected one (the F5 key).
  void RefreshFolderTree();
  // The same under the name the shared key routine asks a window for.
  void FolderTree_Refresh() override { RefreshFolderTree(); }
  void OKButton_Click();
  void cancelButton_Click();

 signals:
  // The window has closed; it goes away once events run.
  void Unloaded();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void FolderTree_Change(const QString& path);
  void ShowFolderName();
  void Form_Resize();
  // Keys that belong to the window rather than to the control they were
  // pressed in; true when the key was used.
  bool HandleWindowKey(QKeyEvent* event);
  // The window's outer rectangle in twips, and putting it there.
  QRect OuterTwips() const;
  void SetOuterTwips(const QRect& outer);
  QSize FrameExtra() const;

  QString sizeMode_ = "Small";
  QString folderName_;       // the tree's path, as dName2 shows it shortened
  QString nameBefore_;       // the name box before the user's last edit
  QRect loadedOuter_;        // where the settings put the window
  QSize appliedFrame_;       // the frame allowed for when it was put there
  bool wheelSuspended_ = false;
  bool closed_ = false;
};

// Shows ChooseDirectory starting at folder in the given mode and waits, letting events run, until it
// closes. The answer is in App().ChosenFolder, App().OperationFileName and App().DirectoryCancelled.
void ChooseDirectoryWait(const QString& folder, const QString& mode);
