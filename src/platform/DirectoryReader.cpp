#include "platform/DirectoryReader.h"

#include <dirent.h>
#include <fcntl.h>
#include <cerrno>
#include <sys/stat.h>
#include <sys/types.h>

#include <QFile>
#include <atomic>

namespace platform {

namespace {

std::atomic<quint64> callCount{0};

void Count() { callCount.fetch_add(1, std::memory_order_relaxed); }

}  // namespace

bool ReadDirectory(const QString& folder, QList<DirectoryEntry>& entries) {
  if (folder.isEmpty()) return false;
  DIR* dir = ::opendir(QFile::encodeName(folder).constData());
  if (!dir) return false;
  const int dirFd = ::dirfd(dir);
  QList<DirectoryEntry> found;
  bool failed = false;
  for (;;) {
    errno = 0;
    const dirent* entry = ::readdir(dir);
    if (!entry) {
      failed = errno != 0;
      break;
    }
    Count();
    const char* name = entry->d_name;
    if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'))) continue;
    bool isFile = entry->d_type == DT_REG;
    // Links, and file systems that don't tell the type in the listing, need
    // one look at the file itself (following a link to its target).
    if (entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN) {
      struct stat st;
      Count();
      isFile = ::fstatat(dirFd, name, &st, 0) == 0 && S_ISREG(st.st_mode);
    }
    found.append({QFile::decodeName(name), isFile});
  }
  ::closedir(dir);
  if (failed) return false;
  entries = std::move(found);
  return true;
}

bool GetFileFacts(const QString& path, FileFacts& facts) {
  if (path.isEmpty()) return false;
  Count();
  struct statx sx;
  if (::statx(AT_FDCWD, QFile::encodeName(path).constData(), 0,
              STATX_SIZE | STATX_BTIME | STATX_CTIME, &sx) != 0)
    return false;
  facts.Length = qint64(sx.stx_size);
  facts.CreatedSeconds =
      (sx.stx_mask & STATX_BTIME) ? qint64(sx.stx_btime.tv_sec) : qint64(sx.stx_ctime.tv_sec);
  return true;
}

quint64 FileSystemCallCount() { return callCount.load(std::memory_order_relaxed); }

void ResetFileSystemCallCount() { callCount.store(0, std::memory_order_relaxed); }

}  // namespace platform
