#pragma once
// The copy of one file's contents, made so that no file is lost: the data
// goes to a hidden temporary file beside the target, which takes the
// target's name only once it holds the whole source, flushed to the disk.
// A failure at any point leaves an existing target as it was and no partial
// file behind. Plain blocking routines, safe to run on a worker thread.

#include <QString>

// Copies source over target (replacing it) and gives 0 when the target now
// holds the complete source, else the errno of the first failure (ENOENT
// for a missing source, ENOSPC for a full disk, ...). The copy keeps the
// source's permission bits and modified time.
//
// A target that is a symbolic link is followed: the file it points to is
// replaced and the link stays. A target that exists but is no regular file
// (a device, a pipe) is written in place, as nothing can stand in for it.
int CopyFileContents(const QString& source, const QString& target);

// The prefix of the temporary files the copy makes beside its target. Each
// copy notes its folder while it runs (platform/LeftoverFiles.h), so that a
// copy cut off by the end of the program is removed at the next start.
inline constexpr const char* CopyTemporaryPrefix = ".vistrel-copy-";
