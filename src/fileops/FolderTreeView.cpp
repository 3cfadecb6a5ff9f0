#include "fileops/FolderTreeView.h"

#include "catalogue/CdDrives.h"
#include "core/Trace.h"
#include "fileops/FolderTreeModel.h"

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
  FolderTreeModel* oldTree = tree_;
  QItemSelectionModel* oldSelection = selectionModel();

  model_ = new QFileSystemModel(this);
  model_->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
  model_->setReadOnly(true);
  // Folders are not told apart by their icons here: the generic folder icon
  // needs no look-up of each folder's kind.
  model_->setOption(QFileSystemModel::DontUseCustomDirectoryIcons);
  model_->setRootPath(QDir::rootPath());
  model_->sort(0, Qt::AscendingOrder);
  tree_ = new FolderTreeModel(model_, this);
  QList<FolderTreeModel::Drive> drives;
  for (const CdDriveFolder& drive : CdDriveFolders()) drives.append({drive.Drive, drive.Label});
  tree_->SetDrives(drives);
  setModel(tree_);
  for (int column = 1; column < tree_->columnCount(); ++column) hideColumn(column);

  connect(selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this](const QModelIndex&, const QModelIndex&) { EmitPathChange(); });
  connect(model_, &QFileSystemModel::directoryLoaded, this, &FolderTreeView::ScheduleReveal);
  connect(tree_, &QAbstractItemModel::layoutAboutToBeChanged, this, &FolderTreeView::RememberDrive);
  connect(tree_, &QAbstractItemModel::layoutChanged, this, &FolderTreeView::KeepDrive);
  connect(tree_, &QAbstractItemModel::layoutChanged, this, &FolderTreeView::ScheduleReveal);
  connect(tree_, &QAbstractItemModel::rowsInserted, this, &FolderTreeView::ScheduleReveal);

  // The top entry "/" stands open from the start.
  expand(tree_->IndexOf(QDir::rootPath()));

  if (oldSelection) oldSelection->deleteLater();
  if (oldTree) oldTree->deleteLater();
  if (old) old->deleteLater();
}

void FolderTreeView::EmitPathChange() {
  const QString path = Path();
  if (path == lastPath_) return;
  lastPath_ = path;
  Trace("folder " + path);
  emit PathChanged(path);
}

// The folder model rearranges its rows as it reads folders, and the entries
// it does not hold, the drives, would lose the selection on the way.
void FolderTreeView::RememberDrive() {
  heldDrive_ = IsDriveSelected() ? Path() : QString();
}

void FolderTreeView::KeepDrive() {
  if (heldDrive_.isEmpty()) return;
  const QString drive = heldDrive_;
  heldDrive_.clear();
  if (!currentIndex().isValid()) setCurrentIndex(tree_->IndexOf(drive));
}

QModelIndex FolderTreeView::IndexOf(const QString& path) const { return tree_->IndexOf(path); }

bool FolderTreeView::IsDriveSelected() const { return tree_->IsDrive(currentIndex()); }

QString FolderTreeView::Path() const {
  const QModelIndex current = currentIndex();
  if (!current.isValid() || !tree_) return QString();
  return tree_->PathOf(current);
}

void FolderTreeView::SetPath(const QString& path) {
  // Blanks at either end belong to the name: a folder may end in one.
  QString wanted = path;
  if (wanted.isEmpty()) return;
  wanted = QDir::cleanPath(QFileInfo(wanted).absoluteFilePath());
  const QModelIndex drive = tree_->IndexOf(wanted);
  if (tree_->IsDrive(drive)) {
    setCurrentIndex(drive);
    revealPending_ = true;
    RevealCurrent();
    return;
  }
  // The model makes the entries on the way to an existing folder at once,
  // without waiting for the rest of each folder to be read; a path that is
  // gone comes back invalid, and its parent is tried instead.
  QModelIndex index;
  for (QString step = wanted; !step.isEmpty();) {
    index = tree_->IndexOf(step);
    if (index.isValid()) break;
    const QString parent = QFileInfo(step).path();
    if (parent == step) break;
    step = parent;
  }
  if (!index.isValid()) index = tree_->IndexOf(QDir::rootPath());
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
