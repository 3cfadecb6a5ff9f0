#include "fileops/FolderTreeModel.h"

#include <QApplication>
#include <QFileSystemModel>
#include <QStyle>

namespace {

// The drive entries carry this address as their internal pointer, which no
// entry of the folder model can carry.
char driveMarker;

}  // namespace

FolderTreeModel::FolderTreeModel(QFileSystemModel* folders, QObject* parent)
    : QIdentityProxyModel(parent), folders_(folders) {
  setSourceModel(folders);
}

void FolderTreeModel::SetDrives(const QList<Drive>& drives) {
  const int first = FolderRows();
  if (!drives_.isEmpty()) {
    beginRemoveRows(QModelIndex(), first, first + int(drives_.size()) - 1);
    drives_.clear();
    endRemoveRows();
  }
  if (!drives.isEmpty()) {
    beginInsertRows(QModelIndex(), first, first + int(drives.size()) - 1);
    drives_ = drives;
    endInsertRows();
  }
}

int FolderTreeModel::FolderRows() const { return folders_->rowCount(QModelIndex()); }

int FolderTreeModel::DriveRow(const QModelIndex& index) const {
  if (!index.isValid() || index.model() != this || index.internalPointer() != &driveMarker) return -1;
  const int row = index.row() - FolderRows();
  return row >= 0 && row < drives_.size() ? row : -1;
}

bool FolderTreeModel::IsDrive(const QModelIndex& index) const { return DriveRow(index) >= 0; }

QString FolderTreeModel::PathOf(const QModelIndex& index) const {
  if (!index.isValid()) return QString();
  const int drive = DriveRow(index);
  if (drive >= 0) return drives_[drive].Path;
  if (index.internalPointer() == &driveMarker) return QString();
  return folders_->filePath(mapToSource(index));
}

QModelIndex FolderTreeModel::IndexOf(const QString& path) const {
  for (int i = 0; i < drives_.size(); ++i)
    if (drives_[i].Path == path) return createIndex(FolderRows() + i, 0, &driveMarker);
  return mapFromSource(folders_->index(path));
}

int FolderTreeModel::rowCount(const QModelIndex& parent) const {
  if (!parent.isValid()) return FolderRows() + int(drives_.size());
  if (parent.internalPointer() == &driveMarker) return 0;
  return QIdentityProxyModel::rowCount(parent);
}

QModelIndex FolderTreeModel::index(int row, int column, const QModelIndex& parent) const {
  if (!parent.isValid() && row >= FolderRows()) {
    if (row - FolderRows() >= drives_.size() || column < 0 || column >= columnCount()) return {};
    return createIndex(row, column, &driveMarker);
  }
  if (parent.internalPointer() == &driveMarker) return {};
  return QIdentityProxyModel::index(row, column, parent);
}

QModelIndex FolderTreeModel::parent(const QModelIndex& child) const {
  if (child.internalPointer() == &driveMarker) return {};
  return QIdentityProxyModel::parent(child);
}

QModelIndex FolderTreeModel::sibling(int row, int column, const QModelIndex& index) const {
  if (index.internalPointer() == &driveMarker || (!index.parent().isValid() && row >= FolderRows()))
    return this->index(row, column, QModelIndex());
  return QIdentityProxyModel::sibling(row, column, index);
}

bool FolderTreeModel::hasChildren(const QModelIndex& parent) const {
  if (parent.internalPointer() == &driveMarker) return false;
  if (!parent.isValid()) return rowCount() > 0;
  return QIdentityProxyModel::hasChildren(parent);
}

QVariant FolderTreeModel::data(const QModelIndex& index, int role) const {
  if (index.internalPointer() != &driveMarker) return QIdentityProxyModel::data(index, role);
  const int drive = DriveRow(index);
  if (drive < 0 || index.column() != 0) return {};
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return drives_[drive].Label;
    case Qt::ToolTipRole:
      return drives_[drive].Path;
    case Qt::DecorationRole:
      return QApplication::style()->standardIcon(QStyle::SP_DriveCDIcon);
    case QFileSystemModel::FilePathRole:
      return drives_[drive].Path;
    default:
      return {};
  }
}

Qt::ItemFlags FolderTreeModel::flags(const QModelIndex& index) const {
  if (index.internalPointer() == &driveMarker)
    return DriveRow(index) >= 0 ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren
                                : Qt::NoItemFlags;
  return QIdentityProxyModel::flags(index);
}

QModelIndex FolderTreeModel::mapToSource(const QModelIndex& proxyIndex) const {
  if (proxyIndex.internalPointer() == &driveMarker) return {};
  return QIdentityProxyModel::mapToSource(proxyIndex);
}

bool FolderTreeModel::canFetchMore(const QModelIndex& parent) const {
  if (parent.internalPointer() == &driveMarker) return false;
  return QIdentityProxyModel::canFetchMore(parent);
}

void FolderTreeModel::fetchMore(const QModelIndex& parent) {
  if (parent.internalPointer() == &driveMarker) return;
  QIdentityProxyModel::fetchMore(parent);
}
