#pragma once
// The album editor, " Album Editing": the one window that writes albums.
// Its left side searches the disk for media files (a name, a file type,
// with or without subfolders, under the folder picked in the tree); its
// right side is the album: a name picked or typed, the list of full paths
// in album order, and the buttons that move, remove, clear and save them.
// Entries go from the search list to the album by the copy button, by the
// popup menu, or by dragging; files dragged from outside the program are
// taken too.
//
// The window opens on App().SelectedAlbumId (0 for a new album with an
// empty name and the focus there): construct it and show it. It is a
// sub-window of the main window's area when there is one. Closing it with
// unsaved changes asks to save; afterwards the album selection comes back
// through the command bar's album button.

#include <QStringList>
#include <QWidget>

#include "core/CommonKeys.h"
#include "core/WindowRoles.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QLabel;
class QListWidget;
class QMenu;
class QMimeData;
class QPushButton;
class FolderTreeView;

class AlbumEdit : public QWidget, public FolderTreeWindow {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::AlbumEdit;

  explicit AlbumEdit(QWidget* parent = nullptr);
  ~AlbumEdit() override;

  // The full paths behind the two lists (the lists show them shortened).
  QStringList SearchPaths, AlbumPaths;
  int SearchCount() const { return int(SearchPaths.size()); }
  int AlbumCount() const { return int(AlbumPaths.size()); }
  // The PlaylistID of each album name in AlbumName, in list order.
  QList<qint32> AlbumIds;
  // The album's list was changed since the last save.
  bool ListsChanged = false;
  // The list that the popup menu acts on: 'F' the search list, 'P' the album.
  QChar DragSource = 'F';

  // Album side.
  QComboBox* AlbumName;
  QCheckBox* Check3;  // prevent duplicate entries
  QListWidget* AlbumList;
  QLabel* Label12;  // the count line
  QPushButton* upButton;
  QPushButton* downButton;
  QPushButton* copyButton;
  QPushButton* deleteButton;
  QPushButton* clearButton;
  QPushButton* replaceButton;  // save
  // Search side.
  QLineEdit* FileName;
  QComboBox* FileType;
  QCheckBox* Check1;  // search subfolders
  QCheckBox* Check2;  // select all found entries
  QPushButton* startButton;
  QPushButton* stopButton;
  FolderTreeView* FolderTree;
  QListWidget* FileList;
  QLabel* Count3;    // files found so far
  QLabel* Picture2;  // search status: the folder searched, then " Loading file list"
  QLabel* Label1;
  QLabel* Label2;
  QLabel* Label3;
  QLabel* Label4;
  QLabel* Label5;
  QMenu* MenuFile;
  QAction* mnuCopy;
  QAction* mnuDelete;
  // The paths found by the running search, handed to the list at its end.
  QStringList HoldList;

  // Loads AlbumName and AlbumIds; the entry of App().SelectedAlbumId is
  // selected, "(Add New Album)" comes last.
  void FillAlbumNames();
  // Adds entry `index` of the search list to the album, unless the
  // duplicate test refuses it; whether it was added.
  bool AddToAlbum(int index);
  // Empties the album's list and starts a new album (SelectedAlbumId 0).
  void ClearAlbum();
  void SetMoveButtons();
  // Takes the data of a drop on the album list; false when refused.
  bool AlbumList_Drop(const QMimeData* data);

  void FolderTree_Refresh() override;

 public slots:
  void AlbumName_Click();
  void startButton_Click();
  void stopButton_Click();
  void copyButton_Click();
  void upButton_Click();
  void downButton_Click();
  void deleteButton_Click();
  void clearButton_Click();
  void Check3_Click();
  // The save; false when nothing was saved.
  bool replaceButton_Click();
  void mnuCopy_Click();
  void mnuDelete_Click();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void MakeControls();
  void PlaceControls();
  void Form_Load();
  // Loads the header and entries of App().SelectedAlbumId.
  void LoadAlbum();
  void RefillAlbumList();
  void RefillFileList();
  QString Shortened(const QListWidget* list, const QString& path) const;
  void ShowCount();
  // After entries were added: the clear and save buttons come on.
  void EntriesAdded();
  void SetEditButtons();
  void RemoveAlbumEntries(const QList<int>& ascending);
  void ShowPopup(QListWidget* list, QChar source, const QPoint& at);
  int Ask(const QString& prompt, int style, const QString& title) const;
  void Tell(const QString& text) const;

  bool closing_ = false;
  bool searching_ = false;
};
