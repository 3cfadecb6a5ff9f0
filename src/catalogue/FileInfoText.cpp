#include "catalogue/FileInfoText.h"

#include "catalogue/MediaTypes.h"
#include "catalogue/NumberFormat.h"
#include "platform/FileTimes.h"

QDateTime GetFileCreated(const QString& path) { return platform::FileCreatedTime(path); }

QString FileTypeLine(const QString& name) {
  const QString code = GetMediaType(name);
  if (code == "P") return "Type: Picture";
  if (code == "I") return "Type: Icon";
  if (code == "C") return "Type: Cursor";
  if (code == "V") return "Type: Video";
  if (code == "A") return "Type: Audio";
  if (code == "D") return "Type: Document";
  return "Type: Unknown";
}

QString FileDateLine(const QDateTime& created) {
  const QDate date = created.date();
  return "Date: " + Format(date.month(), "00") + "/" + Format(date.day(), "00") + "/" +
         Format(date.year(), "0000");
}

QString FileTimeLine(const QDateTime& created) {
  const QTime time = created.time();
  int hour = time.hour();
  if (hour == 0) hour = 12;
  // Only hours past 12 count as afternoon, so noon shows as AM.
  const bool afternoon = hour > 12;
  if (afternoon) hour -= 12;
  return "Time: " + Format(hour, "#0") + ":" + Format(time.minute(), "00") + ":" +
         Format(time.second(), "00") + (afternoon ? " PM" : " AM");
}

QString FileInfoText(const QString& name, const QString& path) {
  // A file that vanished since it was listed has nothing to tell.
  const QDateTime created = GetFileCreated(path);
  const qint64 size = platform::FileSizeBytes(path);
  if (!created.isValid() || size < 0) return QString();
  QStringList lines;
  lines << "File:    " + name;
  lines << FileTypeLine(name);
  lines << "Size:  " + Format(size, "###,###,##0") + " bytes";
  lines << FileDateLine(created);
  lines << FileTimeLine(created);
  return lines.join("\r\n");
}
