#pragma once
// Times, size and the few attributes of a file that a Linux file system
// keeps: the creation time is the birth time where the file system keeps
// one, else the time of the last status change, and cannot be set; the
// modified time can; read-only is the owner's write bit; hidden is a name
// that begins with a dot. All times are local.

#include <QDateTime>
#include <QString>
#include <QtGlobal>

namespace platform {

// When the file was made; invalid when the file cannot be read.
QDateTime FileCreatedTime(const QString& path);
// When the file's contents last changed, and when it was last read;
// invalid when the file cannot be read.
QDateTime FileModifiedTime(const QString& path);
QDateTime FileAccessedTime(const QString& path);
// Size in bytes; -1 when the file cannot be read.
qint64 FileSizeBytes(const QString& path);

// Error numbers of the file routines, as the program knows them: 0 none,
// 53 file not found, 58 file exists, 75 access refused (EACCES, EPERM,
// EROFS), 57 any other input/output error.
int ErrorNumberOf(int errnoValue);

// Sets the modified time (local), keeping the access time; an error number.
int SetFileModifiedTime(const QString& path, const QDateTime& modified);
// Read-only: the owner may not write the file.
bool IsReadOnly(const QString& path);
// Sets or clears the owner's write bit; an error number.
int SetReadOnly(const QString& path, bool readOnly);
// Prepares a file to be replaced or removed: the owner's write bit is set.
// 75 when that is refused, or when the file's folder cannot be written (on
// this system a file is removed through its folder); 53 when the file does
// not exist; else 0.
int ClearAttributes(const QString& path);

}  // namespace platform
