#include "cd/TagFileWriter.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <cstring>

#include "platform/FileDescriptors.h"
#include "platform/LeftoverFiles.h"

namespace {

// Puts the patches' bytes that fall inside the block starting at `at`.
void ApplyPatches(char* block, qint64 at, qint64 size, const std::vector<FilePatch>& patches) {
  for (const FilePatch& patch : patches) {
    const qint64 from = std::max(patch.Offset, at);
    const qint64 to = std::min(patch.Offset + patch.Bytes.size(), at + size);
    if (from < to)
      std::memcpy(block + (from - at), patch.Bytes.constData() + (from - patch.Offset),
                  size_t(to - from));
  }
}

// Copies the whole of `in` to `out`, patched on the way.
bool CopyPatched(int in, int out, const std::vector<FilePatch>& patches) {
  constexpr qint64 BlockSize = 1 << 20;
  QByteArray block(BlockSize, Qt::Uninitialized);
  qint64 at = 0;
  for (;;) {
    const ssize_t got = ::read(in, block.data(), size_t(BlockSize));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return false;
    if (got == 0) return true;
    ApplyPatches(block.data(), at, got, patches);
    if (!platform::WriteAll(out, block.constData(), got)) return false;
    at += got;
  }
}

void SyncFolder(const QByteArray& folder) {
  const int fd = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  ::fsync(fd);
  ::close(fd);
}

}  // namespace

bool WriteTagEdits(const QString& path, const std::vector<FilePatch>& patches) {
  // A link is followed: the file it names is the one written.
  const QString target = QFileInfo(path).canonicalFilePath();
  if (target.isEmpty()) return false;
  const QByteArray targetName = QFile::encodeName(target);
  const int in = ::open(targetName.constData(), O_RDONLY | O_CLOEXEC);
  if (in < 0) return false;
  struct stat info {};
  if (::fstat(in, &info) != 0 || !S_ISREG(info.st_mode)) {
    ::close(in);
    return false;
  }
  const QString folder = QFileInfo(target).absolutePath();
  QByteArray temporary = QFile::encodeName(folder + "/" + TagTemporaryPrefix + "XXXXXX");
  // Noted first: a copy cut off by the end of the program is removed at the
  // next start.
  const QString note = platform::NoteTemporaries(folder, TagTemporaryPrefix);
  const int out = ::mkostemp(temporary.data(), O_CLOEXEC);
  if (out < 0) {
    ::close(in);
    platform::ForgetLeftover(note);
    return false;
  }
  bool written = CopyPatched(in, out, patches);
  ::close(in);
  if (written) {
    // The owner is kept where this user may change it; the permissions
    // always.
    [[maybe_unused]] const int ownerKept = ::fchown(out, info.st_uid, info.st_gid);
    written = ::fchmod(out, info.st_mode & 07777) == 0 && ::fsync(out) == 0;
  }
  written = ::close(out) == 0 && written;
  written = written && ::rename(temporary.constData(), targetName.constData()) == 0;
  if (!written) {
    ::unlink(temporary.constData());
    platform::ForgetLeftover(note);
    return false;
  }
  SyncFolder(QFile::encodeName(folder));
  platform::ForgetLeftover(note);
  return true;
}
