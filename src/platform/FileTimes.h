#pragma once
// Times and size of a file as the file system keeps them.

#include <QDateTime>
#include <QString>
#include <QtGlobal>

namespace platform {

// When the file was made: its birth time where the file system keeps one,
// else the time of its last status change. Local time; invalid when the
// file cannot be read.
QDateTime FileCreatedTime(const QString& path);
// Size in bytes; -1 when the file cannot be read.
qint64 FileSizeBytes(const QString& path);

}  // namespace platform
