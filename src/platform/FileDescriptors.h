#pragma once
// Writing through a file descriptor, for the writers that must control
// every step (temporary files, syncs, renames) themselves.

#include <QtGlobal>

namespace platform {

// Writes all `size` bytes, going on after an interrupted or partial write;
// false when the system refuses (a full disk, say).
bool WriteAll(int fd, const char* data, qint64 size);

}  // namespace platform
