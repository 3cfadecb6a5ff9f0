#include "platform/FileTimes.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>

namespace platform {

namespace {

bool StatFile(const QString& path, unsigned int mask, struct statx* result) {
  if (path.isEmpty()) return false;
  const QByteArray name = QFile::encodeName(path);
  return statx(AT_FDCWD, name.constData(), 0, mask, result) == 0;
}

QDateTime FromTimestamp(const struct statx_timestamp& stamp) {
  return QDateTime::fromMSecsSinceEpoch(qint64(stamp.tv_sec) * 1000 + stamp.tv_nsec / 1000000);
}

// The file's mode, or the error number of the failed look.
int ModeOf(const QString& path, mode_t& mode) {
  if (path.isEmpty()) return ErrorNumberOf(ENOENT);
  struct stat info {};
  if (stat(QFile::encodeName(path).constData(), &info) != 0) return ErrorNumberOf(errno);
  mode = info.st_mode;
  return 0;
}

int ChangeMode(const QString& path, mode_t mode) {
  return chmod(QFile::encodeName(path).constData(), mode) == 0 ? 0 : ErrorNumberOf(errno);
}

}  // namespace

QDateTime FileCreatedTime(const QString& path) {
  struct statx info {};
  if (!StatFile(path, STATX_BTIME | STATX_CTIME, &info)) return QDateTime();
  if (info.stx_mask & STATX_BTIME) return FromTimestamp(info.stx_btime);
  return FromTimestamp(info.stx_ctime);
}

QDateTime FileModifiedTime(const QString& path) {
  struct statx info {};
  if (!StatFile(path, STATX_MTIME, &info) || !(info.stx_mask & STATX_MTIME)) return QDateTime();
  return FromTimestamp(info.stx_mtime);
}

QDateTime FileAccessedTime(const QString& path) {
  struct statx info {};
  if (!StatFile(path, STATX_ATIME, &info) || !(info.stx_mask & STATX_ATIME)) return QDateTime();
  return FromTimestamp(info.stx_atime);
}

qint64 FileSizeBytes(const QString& path) {
  struct statx info {};
  if (!StatFile(path, STATX_SIZE, &info) || !(info.stx_mask & STATX_SIZE)) return -1;
  return qint64(info.stx_size);
}

int ErrorNumberOf(int errnoValue) {
  switch (errnoValue) {
    case 0:
      return 0;
    case EEXIST:
      return 58;
    case EACCES:
    case EPERM:
    case EROFS:
      return 75;
    case ENOENT:
    case ENOTDIR:
      return 53;
    default:
      return 57;
  }
}

int SetFileModifiedTime(const QString& path, const QDateTime& modified) {
  if (path.isEmpty()) return ErrorNumberOf(ENOENT);
  if (!modified.isValid()) return ErrorNumberOf(EINVAL);
  // The date and time are what the user sees on the clock here, whatever
  // zone the value was made in.
  const QDateTime local(modified.date(), modified.time(), Qt::LocalTime);
  if (!local.isValid()) return ErrorNumberOf(EINVAL);
  const qint64 msecs = local.toMSecsSinceEpoch();
  struct timespec times[2]{};
  times[0].tv_nsec = UTIME_OMIT;
  times[1].tv_sec = time_t(msecs / 1000 - (msecs % 1000 < 0 ? 1 : 0));
  times[1].tv_nsec = long(((msecs % 1000) + 1000) % 1000) * 1000000;
  if (utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0) != 0)
    return ErrorNumberOf(errno);
  return 0;
}

bool IsReadOnly(const QString& path) {
  mode_t mode = 0;
  return ModeOf(path, mode) == 0 && !(mode & S_IWUSR);
}

int SetReadOnly(const QString& path, bool readOnly) {
  mode_t mode = 0;
  if (const int error = ModeOf(path, mode)) return error;
  const mode_t wanted = readOnly ? (mode & ~mode_t(S_IWUSR)) : (mode | S_IWUSR);
  return wanted == mode ? 0 : ChangeMode(path, wanted & 07777);
}

int ClearAttributes(const QString& path) {
  if (const int error = SetReadOnly(path, false)) return error;
  // Removing or replacing a file writes its folder.
  const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
  if (access(folder.constData(), W_OK) != 0) return ErrorNumberOf(errno);
  return 0;
}

}  // namespace platform
