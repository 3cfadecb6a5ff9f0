#pragma once
// The folder tree's model: the machine's folders as the file system model
// reads them, with the CD drives as further top-level entries after "/".
// A drive has no subfolders; its path is the drive's own (the folder of its
// tracks), and its label tells whether it holds an audio disc.

#include <QIdentityProxyModel>
#include <QList>
#include <QString>

class QFileSystemModel;

class FolderTreeModel : public QIdentityProxyModel {
  Q_OBJECT
 public:
  struct Drive {
    QString Path;
    QString Label;
  };

  explicit FolderTreeModel(QFileSystemModel* folders, QObject* parent = nullptr);

  // Replaces the drive entries.
  void SetDrives(const QList<Drive>& drives);

  // The path an entry stands for: a folder's path or a drive's path.
  QString PathOf(const QModelIndex& index) const;
  // The entry of a path: a drive's entry for a drive's path, otherwise the
  // folder's entry (invalid when the folder model does not know it).
  QModelIndex IndexOf(const QString& path) const;
  bool IsDrive(const QModelIndex& index) const;

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  QModelIndex sibling(int row, int column, const QModelIndex& index) const override;
  bool hasChildren(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QModelIndex mapToSource(const QModelIndex& proxyIndex) const override;
  bool canFetchMore(const QModelIndex& parent) const override;
  void fetchMore(const QModelIndex& parent) override;

 private:
  int FolderRows() const;
  int DriveRow(const QModelIndex& index) const;

  QFileSystemModel* folders_;
  QList<Drive> drives_;
};
