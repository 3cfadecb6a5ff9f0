#pragma once
// The file system as the folder listing needs it: the names of a folder in
// one pass, and the length and creation time of one file in one query.
// Every call that reaches the file system is counted, so that the cost of a
// listing can be measured in calls a file.

#include <QList>
#include <QString>
#include <QtGlobal>

namespace platform {

struct DirectoryEntry {
  QString Name;
  // An ordinary file, or a link to one. Folders, links to folders, devices,
  // pipes and sockets are not.
  bool IsFile = false;
};

// Reads the entries of a folder (without "." and "..") in the order the
// file system keeps them. False, with entries untouched, when the folder
// can't be opened or read.
bool ReadDirectory(const QString& folder, QList<DirectoryEntry>& entries);

struct FileFacts {
  qint64 Length = 0;
  // Seconds since 1970 (UTC) of the file's birth where the file system
  // records it, else of its last status change.
  qint64 CreatedSeconds = 0;
};

// Length and creation time of a file; false when it can't be reached.
bool GetFileFacts(const QString& path, FileFacts& facts);

// File-system calls made through this interface since the last reset: one
// for each entry a folder reading delivers, one for each further query.
quint64 FileSystemCallCount();
void ResetFileSystemCallCount();

}  // namespace platform
