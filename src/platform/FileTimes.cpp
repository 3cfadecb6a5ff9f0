#include "platform/FileTimes.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <QFile>

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

}  // namespace

QDateTime FileCreatedTime(const QString& path) {
  struct statx info {};
  if (!StatFile(path, STATX_BTIME | STATX_CTIME, &info)) return QDateTime();
  if (info.stx_mask & STATX_BTIME) return FromTimestamp(info.stx_btime);
  return FromTimestamp(info.stx_ctime);
}

qint64 FileSizeBytes(const QString& path) {
  struct statx info {};
  if (!StatFile(path, STATX_SIZE, &info) || !(info.stx_mask & STATX_SIZE)) return -1;
  return qint64(info.stx_size);
}

}  // namespace platform
