#include "fileops/FileCopy.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>
#include <climits>
#include <memory>

#include "platform/LeftoverFiles.h"

namespace {

constexpr size_t BufferBytes = 1 << 20;

// A descriptor closed when it goes out of scope (unless released).
class Descriptor {
 public:
  explicit Descriptor(int fd = -1) : fd_(fd) {}
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int get() const { return fd_; }
  // Closes now; the errno of a failed close, else 0.
  int Close() {
    const int fd = fd_;
    fd_ = -1;
    return fd >= 0 && ::close(fd) != 0 ? errno : 0;
  }

 private:
  int fd_;
};

int WriteAll(int fd, const char* data, size_t size) {
  while (size > 0) {
    const ssize_t written = ::write(fd, data, size);
    if (written < 0) {
      if (errno == EINTR) continue;
      return errno;
    }
    data += written;
    size -= size_t(written);
  }
  return 0;
}

// Copies everything from in to out; the bytes copied go to `copied`.
int CopyStream(int in, int out, qint64& copied) {
  const std::unique_ptr<char[]> buffer(new char[BufferBytes]);
  copied = 0;
  for (;;) {
    const ssize_t got = ::read(in, buffer.get(), BufferBytes);
    if (got < 0) {
      if (errno == EINTR) continue;
      return errno;
    }
    if (got == 0) return 0;
    if (const int error = WriteAll(out, buffer.get(), size_t(got))) return error;
    copied += got;
  }
}

// The path that the target stands for: the file a link points to, else
// the target itself.
QByteArray ResolvedTarget(const QByteArray& target) {
  struct stat link {};
  if (::lstat(target.constData(), &link) != 0 || !S_ISLNK(link.st_mode)) return target;
  char resolved[PATH_MAX];
  if (::realpath(target.constData(), resolved)) return QByteArray(resolved);
  return target;  // a dangling link: a file takes its place
}

// A target that exists and can't be replaced by another file: written
// through, in place.
int CopyInPlace(int in, const QByteArray& target, qint64 expected) {
  Descriptor out(::open(target.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
  if (out.get() < 0) return errno;
  // Opening a pipe must not wait for a reader; writing may.
  ::fcntl(out.get(), F_SETFL, ::fcntl(out.get(), F_GETFL) & ~O_NONBLOCK);
  qint64 copied = 0;
  if (const int error = CopyStream(in, out.get(), copied)) return error;
  if (const int error = out.Close()) return error;
  return copied == expected ? 0 : EIO;
}

void SyncFolder(const QByteArray& folder) {
  Descriptor fd(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (fd.get() >= 0) ::fsync(fd.get());
}

int CopyThroughTemporary(int in, const struct stat& source, const QByteArray& target) {
  const qsizetype slash = target.lastIndexOf('/');
  const QByteArray folder = slash < 0 ? QByteArray(".") : target.left(slash == 0 ? 1 : slash);
  QByteArray temporary = folder + (folder.endsWith('/') ? "" : "/") + CopyTemporaryPrefix + "XXXXXX";
  // Noted first: a run that ends before the rename has its partial copy
  // removed at the next start.
  const QString note = platform::NoteTemporaries(QFile::decodeName(folder), CopyTemporaryPrefix);
  Descriptor out(::mkostemp(temporary.data(), O_CLOEXEC));
  if (out.get() < 0) {
    const int error = errno;
    platform::ForgetLeftover(note);
    return error;
  }

  qint64 copied = 0;
  int error = CopyStream(in, out.get(), copied);
  if (!error && copied != qint64(source.st_size)) error = EIO;
  if (!error && ::fchmod(out.get(), source.st_mode & 0777) != 0) error = errno;
  if (!error) {
    const struct timespec times[2] = {{0, UTIME_NOW}, source.st_mtim};
    ::futimens(out.get(), times);  // the time is a courtesy; the copy stands without it
  }
  if (!error && ::fsync(out.get()) != 0) error = errno;
  if (const int closed = out.Close(); !error) error = closed;
  if (!error && ::rename(temporary.constData(), target.constData()) != 0) error = errno;
  if (error) ::unlink(temporary.constData());
  // The new name is on the disk too before anyone removes the source.
  if (!error) SyncFolder(folder);
  platform::ForgetLeftover(note);
  return error;
}

}  // namespace

int CopyFileContents(const QString& source, const QString& target) {
  if (source.isEmpty() || target.isEmpty()) return ENOENT;
  Descriptor in(::open(QFile::encodeName(source).constData(), O_RDONLY | O_CLOEXEC));
  if (in.get() < 0) return errno;
  struct stat from {};
  if (::fstat(in.get(), &from) != 0) return errno;
  if (S_ISDIR(from.st_mode)) return EISDIR;

  const QByteArray resolved = ResolvedTarget(QFile::encodeName(target));
  struct stat to {};
  if (::stat(resolved.constData(), &to) == 0) {
    if (S_ISDIR(to.st_mode)) return EISDIR;
    if (!S_ISREG(to.st_mode)) return CopyInPlace(in.get(), resolved, qint64(from.st_size));
  }
  return CopyThroughTemporary(in.get(), from, resolved);
}
