#pragma once
// Changing a few bytes of a file so that a failure cannot spoil it: the
// file is written anew beside itself and put in its place only when the
// copy is complete.

#include <QByteArray>
#include <QString>
#include <vector>

// The prefix of the temporary copies made beside the file; a copy cut off
// by the end of the program is removed at the next start
// (platform/LeftoverFiles.h).
inline constexpr const char* TagTemporaryPrefix = ".vistrel-tags-";

// Bytes to put at an offset of the file.
struct FilePatch {
  qint64 Offset = 0;
  QByteArray Bytes;
};

// Writes the file anew with the patches applied, in their order (a later
// patch wins where two overlap; bytes beyond the file's end are dropped): a
// complete copy is written to a temporary file in the same folder, flushed
// to disk, and renamed over the file, which keeps its permissions (and its
// owner where this user may set it). A link is followed, and the file it
// names is written. A write that fails leaves the file as it was and
// removes the copy. False on failure.
bool WriteTagEdits(const QString& path, const std::vector<FilePatch>& patches);
