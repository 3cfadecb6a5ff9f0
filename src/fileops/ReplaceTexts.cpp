#include "fileops/ReplaceTexts.h"

#include <algorithm>

#include "catalogue/NumberFormat.h"

QString ReplaceSizeText(qint64 bytes) { return FormatInteger(bytes, "###,###,##0") + " bytes"; }

QString ReplaceDateText(const QDate& date) {
  return Format(date.month(), "00") + "/" + Format(date.day(), "00") + "/" +
         Format(date.year(), "0000");
}

QString ReplaceTimeText(const QTime& time) {
  const int hour = time.hour(), minute = time.minute(), second = time.second();
  if (hour == 0 && minute == 0 && second == 0) return "(None)";
  const bool morning = hour < 13;
  return Format(morning ? hour : hour - 12, "#0") + ":" + Format(minute, "00") + ":" +
         Format(second, "00") + (morning ? " AM" : " PM");
}

QSize PictureBoxTwips(const QSize& picture, int areaTwips) {
  const int side = areaTwips - 60;
  const double width = std::max(picture.width(), 1), height = std::max(picture.height(), 1);
  if (width > height) return QSize(side, int(height / width * side));
  return QSize(int(width / height * side), side);
}
