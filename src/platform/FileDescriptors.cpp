#include "platform/FileDescriptors.h"

#include <unistd.h>

#include <cerrno>

namespace platform {

bool WriteAll(int fd, const char* data, qint64 size) {
  while (size > 0) {
    const ssize_t written = ::write(fd, data, size_t(size));
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    data += written;
    size -= written;
  }
  return true;
}

}  // namespace platform
