#include "platform/Trash.h"

#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

// The freedesktop Trash: a folder "files" that holds the trashed files and
// a folder "info" with one NAME.trashinfo record per file, naming where the
// file was (percent-encoded, as in a URL) and when it was trashed. The
// user's own Trash lies in the data folder; a file on another file system
// goes to the Trash at the top of that file system, so that trashing never
// copies.

namespace platform {

namespace {

QByteArray Native(const QString& path) { return QFile::encodeName(path); }

bool DeviceOf(const QByteArray& path, dev_t& device) {
  struct stat info {};
  if (lstat(path.constData(), &info) != 0) return false;
  device = info.st_dev;
  return true;
}

bool Exists(const QByteArray& path) {
  struct stat info {};
  return lstat(path.constData(), &info) == 0;
}

bool MakeFolder(const QByteArray& path) {
  return mkdir(path.constData(), 0700) == 0 || errno == EEXIST;
}

// A Trash folder with its two subfolders, made when missing.
bool PrepareTrash(const QString& trash) {
  return MakeFolder(Native(trash)) && MakeFolder(Native(trash + "/files")) &&
         MakeFolder(Native(trash + "/info"));
}

// The highest folder above the path on the same file system.
QString TopOfFileSystem(const QString& path, dev_t device) {
  QString top = QFileInfo(path).absolutePath();
  while (top != "/") {
    const QString parent = QFileInfo(top).absolutePath();
    dev_t parentDevice = 0;
    if (!DeviceOf(Native(parent), parentDevice) || parentDevice != device) break;
    top = parent;
  }
  return top;
}

// The Trash of a file system's top folder: the shared ".Trash/UID" when the
// administrator made ".Trash" a sticky folder (not a link), else ".Trash-UID".
QString TrashAtTop(const QString& top) {
  const QString uid = QString::number(getuid());
  const QString base = top == "/" ? QString() : top;
  struct stat shared {};
  if (lstat(Native(base + "/.Trash").constData(), &shared) == 0 && S_ISDIR(shared.st_mode) &&
      (shared.st_mode & S_ISVTX)) {
    const QString trash = base + "/.Trash/" + uid;
    if (PrepareTrash(trash)) return trash;
  }
  const QString own = base + "/.Trash-" + uid;
  return PrepareTrash(own) ? own : QString();
}

// The Trash for a file, and the top folder its records are relative to
// ("" for the user's Trash, whose records hold full paths).
bool TrashFor(const QString& path, dev_t device, QString& trash, QString& top) {
  const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  if (!data.isEmpty() && QDir().mkpath(data)) {
    dev_t dataDevice = 0;
    if (DeviceOf(Native(data), dataDevice) && dataDevice == device &&
        PrepareTrash(data + "/Trash")) {
      trash = data + "/Trash";
      top.clear();
      return true;
    }
  }
  top = TopOfFileSystem(path, device);
  trash = TrashAtTop(top);
  return !trash.isEmpty();
}

// The name in the Trash: the file's own, or "stem.N.suffix" for the first N
// from 2 on that neither folder of the Trash holds. The record is claimed
// by creating it exclusively; its open descriptor is returned.
int ClaimName(const QString& trash, const QString& fileName, QString& name) {
  const QFileInfo parts(fileName);
  const bool split = !parts.suffix().isEmpty() && !parts.completeBaseName().isEmpty();
  const QString stem = split ? parts.completeBaseName() : fileName;
  const QString suffix = split ? "." + parts.suffix() : QString();
  for (int n = 1; n < 100000; ++n) {
    name = n == 1 ? fileName : stem + "." + QString::number(n) + suffix;
    if (Exists(Native(trash + "/files/" + name))) continue;
    const int fd = open(Native(trash + "/info/" + name + ".trashinfo").constData(),
                        O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (fd >= 0) return fd;
    if (errno != EEXIST) return -1;
  }
  return -1;
}

bool WriteAll(int fd, const QByteArray& bytes) {
  qsizetype done = 0;
  while (done < bytes.size()) {
    const ssize_t written = write(fd, bytes.constData() + done, size_t(bytes.size() - done));
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    done += written;
  }
  return true;
}

}  // namespace

bool MoveToTrash(const QString& path) {
  if (path.isEmpty()) return false;
  const QString original = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
  dev_t device = 0;
  if (original == "/" || !DeviceOf(Native(original), device)) return false;

  QString trash, top;
  if (!TrashFor(original, device, trash, top)) return false;
  // Nothing goes into the Trash that holds it.
  if (original == trash || original.startsWith(trash + "/")) return false;

  QString name;
  const int fd = ClaimName(trash, QFileInfo(original).fileName(), name);
  if (fd < 0) return false;
  const QString record = trash + "/info/" + name + ".trashinfo";
  const QString recorded = top.isEmpty() || top == "/" ? original : original.mid(top.size() + 1);
  const QByteArray info =
      "[Trash Info]\nPath=" + Native(recorded).toPercentEncoding("/") +
      "\nDeletionDate=" + QDateTime::currentDateTime().toString("yyyy-MM-ddThh:mm:ss").toLatin1() +
      "\n";
  const bool written = WriteAll(fd, info);
  if (close(fd) != 0 || !written) {
    unlink(Native(record).constData());
    return false;
  }
  if (rename(Native(original).constData(), Native(trash + "/files/" + name).constData()) != 0) {
    unlink(Native(record).constData());
    return false;
  }
  return true;
}

}  // namespace platform
