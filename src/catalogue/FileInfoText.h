#pragma once
// The text block that tells what a file is: the tooltip over thumbnails and
// file names, and the description label of the viewers. Lines are separated
// by "\r\n".

#include <QDateTime>
#include <QString>

// When the file was made (its creation date and time, in local time).
QDateTime GetFileCreated(const QString& path);

// "File:    name", the type, the size, the creation date and time. `name`
// is shown as given; `path` is the full path of the file. A file that
// cannot be read gives "".
QString FileInfoText(const QString& name, const QString& path);

// The type line for a file name: "Type: Picture" and so on.
QString FileTypeLine(const QString& name);
// "Date: " with month, day and year, as "Date: 07/04/2003".
QString FileDateLine(const QDateTime& created);
// "Time: " with the hour on a twelve-hour dial. Noon reads "12:00:00 AM"
// like midnight; the afternoon hours from 13 on read PM.
QString FileTimeLine(const QDateTime& created);
