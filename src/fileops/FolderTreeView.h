#pragma once
// A tree of the machine's folders, from the root "/" down, for the windows
// that let the user pick a folder. It shows folders only, hidden ones left
// out, reads them in the background as they are opened, and follows the
// file system's changes by itself. Its one property is the path of the
// selected folder; PathChanged tells when it moves.
//
// The audio CD drives are to join the tree as further top-level entries
// beside "/"; that is the one thing the plain folder model cannot give, and
// it will come through a model placed in front of it.

#include <QString>
#include <QTimer>
#include <QTreeView>

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

  QFileSystemModel* Model() const { return model_; }

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

  QFileSystemModel* model_ = nullptr;
  // While set, the selection is scrolled into view again whenever the
  // model has read more folders.
  bool revealPending_ = false;
  QTimer revealTimer_;
};
