#include "fileops/FolderTreeView.h"

#include <QDir>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScrollBar>

FolderTreeView::FolderTreeView(QWidget* parent) : QTreeView(parent) {
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  // A double click is the owner's to use (it takes the folder); it does not
  // also open or close the branch.
  setExpandsOnDoubleClick(false);
  setAnimated(false);
  // The reveal waits for a quiet moment, so that a burst of folders read in
  // one go scrolls once.
  revealTimer_.setSingleShot(true);
  revealTimer_.setInterval(20);
  connect(&revealTimer_, &QTimer::timeout, this, &FolderTreeView::RevealCurrent);
  connect(verticalScrollBar(), &QAbstractSlider::actionTriggered, this,
          [this](int) { revealPending_ = false; });
  BuildModel();
}

void FolderTreeView::BuildModel() {
  QFileSystemModel* old = model_;
  QItemSelectionModel* oldSelection = selectionModel();

  model_ = new QFileSystemModel(this);
  model_->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
  model_->setReadOnly(true);
  // Folders are not told apart by their icons here: the generic folder icon
  // needs no look-up of each folder's kind.
  model_->setOption(QFileSystemModel::DontUseCustomDirectoryIcons);
  model_->setRootPath(QDir::rootPath());
  model_->sort(0, Qt::AscendingOrder);
  setModel(model_);
  for (int column = 1; column < model_->columnCount(); ++column) hideColumn(column);

  connect(selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this](const QModelIndex&, const QModelIndex&) { emit PathChanged(Path()); });
  connect(model_, &QFileSystemModel::directoryLoaded, this, &FolderTreeView::ScheduleReveal);
  connect(model_, &QAbstractItemModel::layoutChanged, this, &FolderTreeView::ScheduleReveal);
  connect(model_, &QAbstractItemModel::rowsInserted, this, &FolderTreeView::ScheduleReveal);

  // The top entry "/" stands open from the start.
  expand(model_->index(QDir::rootPath()));

  if (oldSelection) oldSelection->deleteLater();
  if (old) old->deleteLater();
}

QString FolderTreeView::Path() const {
  const QModelIndex current = currentIndex();
  if (!current.isValid() || !model_) return QString();
  return model_->filePath(current);
}

void FolderTreeView::SetPath(const QString& path) {
  // Blanks at either end belong to the name: a folder may end in one.
  QString wanted = path;
  if (wanted.isEmpty()) return;
  wanted = QDir::cleanPath(QFileInfo(wanted).absoluteFilePath());
  // The model makes the entries on the way to an existing folder at once,
  // without waiting for the rest of each folder to be read; a path that is
  // gone comes back invalid, and its parent is tried instead.
  QModelIndex index;
  for (QString step = wanted; !step.isEmpty();) {
    index = model_->index(step);
    if (index.isValid()) break;
    const QString parent = QFileInfo(step).path();
    if (parent == step) break;
    step = parent;
  }
  if (!index.isValid()) index = model_->index(QDir::rootPath());
  if (!index.isValid()) return;

  // Open the branch to it step by step: each opened folder is read in the
  // background, and the selection is brought into view again as it comes.
  for (QModelIndex up = index.parent(); up.isValid(); up = up.parent()) expand(up);
  setCurrentIndex(index);
  revealPending_ = true;
  RevealCurrent();
  ScheduleReveal();
}

void FolderTreeView::Refresh() {
  const QString path = Path();
  BuildModel();
  if (!path.isEmpty()) SetPath(path);
}

void FolderTreeView::ScheduleReveal() {
  if (revealPending_) revealTimer_.start();
}

void FolderTreeView::RevealCurrent() {
  const QModelIndex current = currentIndex();
  if (current.isValid()) scrollTo(current, QAbstractItemView::EnsureVisible);
}

// Once the user works in the tree, it no longer jumps back to the folder
// that was selected for him.
void FolderTreeView::mousePressEvent(QMouseEvent* event) {
  revealPending_ = false;
  QTreeView::mousePressEvent(event);
}

void FolderTreeView::keyPressEvent(QKeyEvent* event) {
  revealPending_ = false;
  QTreeView::keyPressEvent(event);
}

void FolderTreeView::wheelEvent(QWheelEvent* event) {
  revealPending_ = false;
  QTreeView::wheelEvent(event);
}
