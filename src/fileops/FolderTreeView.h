#pragma once
// A tree of the machine's folders, from the root "/" down, for the windows
// that let the user pick a folder. It shows folders only, hidden ones left
// out, reads them in the background as they are opened, and follows the
// file system's changes by itself. Its one property is the path of the
// selected folder; PathChanged tells when it moves.
//
// The CD drives stand as further top-level entries after "/", each named by
// what it holds; a drive's path is the folder of its disc's tracks.

#include <QString>
#include <QTimer>
#include <QTreeView>

class FolderTreeModel;
class QFileSystemModel;

class FolderTreeView : public QTreeView {
  Q_OBJECT
 public:
  explicit FolderTreeView(QWidget* parent = nullptr);

  // The selected folder as an absolute path without a trailing "/" (but
  // for the root itself); "" when nothing is selected.
  QString Path() const;
  // Selects the folder. A folder that does not exist gives way to its
  // nearest existing ancestor; hidden folders on the way to it are shown,
  // as the one way to it, while their hidden neighbours stay out. The
  // selection is opened to and kept in view while the folders around it
  // are still being read, until the user takes over.
  void SetPath(const QString& path);
  // Reads every folder afresh and selects the same folder again. Harmless
  // when it comes twice.
  void Refresh();

  // The entry of a folder or a drive, by its path; invalid when the tree
  // does not hold it (yet).
  QModelIndex IndexOf(const QString& path) const;
  // The selected entry is a CD drive.
  bool IsDriveSelected() const;

 signals:
  void PathChanged(const QString& path);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void BuildModel();
  void ScheduleReveal();
  void RevealCurrent();

  void EmitPathChange();
  void RememberDrive();
  void KeepDrive();

  QFileSystemModel* model_ = nullptr;
  FolderTreeModel* tree_ = nullptr;
  // The drive selected when the folder model rearranges itself; the
  // selection is put back on it afterwards.
  QString heldDrive_;
  QString lastPath_;
  // While set, the selection is scrolled into view again whenever the
  // model has read more folders.
  bool revealPending_ = false;
  QTimer revealTimer_;
};
