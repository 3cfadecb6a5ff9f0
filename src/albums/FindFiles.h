#pragma once
// The search window: the user types a name (or part of one, "*" allowed),
// picks a file type and a folder, and starts the search; the files found
// are listed by their shortened paths (the full paths are kept in step in
// the hidden HoldList), and Show, or a double click, opens one in its
// viewer. While the search runs the folder being searched shows in
// Picture1 and the count in Count3; stopButton ends it, keeping what was
// found.
//
// Callers: construct and show; Display() puts the window back to its start
// (empty lists, "&Start") and shows it. FolderTreeRefresh() rereads the
// folder tree after the file system's folders changed.

#include <QString>
#include <QStringList>
#include <QWidget>

#include "core/CommonKeys.h"
#include "core/WindowRoles.h"
#include "core/WindowShow.h"

class FolderTreeView;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class TransCheck;

class FindFiles : public QWidget, public FolderTreeWindow, public ResetOnShow {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::FindFiles;

  explicit FindFiles(QWidget* parent = nullptr);
  ~FindFiles() override;

  void Display() override;
  void FolderTreeRefresh();
  // F5 rereads the tree too.
  void FolderTree_Refresh() override { FolderTreeRefresh(); }

  // The pattern list of the last start, the folder it searched, and
  // whether it looked for CD tracks.
  QString SearchPatternList;
  QString SearchFolder;
  bool CdTrackSearch = false;

  QLineEdit* FileName;
  QComboBox* FileType;
  FolderTreeView* FolderTree;
  TransCheck* Check1;
  QPushButton* startButton;
  QPushButton* stopButton;
  QListWidget* FileList;
  QListWidget* HoldList;
  QLabel* Count3;
  QLabel* Picture1;

 public slots:
  void startButton_Click();
  void stopButton_Click();
  void FileList_DblClick();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void PlaceControls();
  void RunSearch();
  void ShowFile();
  // Any change of what to search for: the button offers a new search.
  void SearchChanged();
  void SetStartCaption(const QString& caption);
  void FillResultList();

  bool searching_ = false;
  // Found paths not yet in HoldList: they join it in batches.
  QStringList pending_;
};
