#include "viewers/PlayerCommands.h"

#include <QWidget>
#include <cmath>

#include "viewers/Mci.h"

namespace {

// The lowest position a play starts from: the first moments of an mp3
// hold the decoder's start-up, not the song.
constexpr qint64 LowestStart = 180;

const QString& Alias() { return PlayerDevice().DeviceAlias; }

qint64 NumberOf(const QString& reply, const QString& returned) {
  if (reply != "Success") return -1;
  bool ok = false;
  const double value = returned.trimmed().toDouble(&ok);
  return ok ? RoundHalfEven(value) : -1;
}

qint64 LengthIn(const char* format) {
  MciSendString("set " + Alias() + " time format " + QLatin1String(format));
  QString returned;
  const QString reply = MciSendString("status " + Alias() + " length", &returned);
  return NumberOf(reply, returned);
}

}  // namespace

SharedPlayerDevice& PlayerDevice() {
  static SharedPlayerDevice shared;
  return shared;
}

QString MciOpen(const QString& path, const QString& device, const QString& parentHandle) {
  const QString reply = MciSendString("open \"" + path + "\" type " + device + " Alias " + Alias() +
                                      " parent " + parentHandle + " Style 1073741824");
  if (reply == "Success")
    PlayerDevice().IsMp3 = path.right(3).toLower() == "mp3" ? QStringLiteral("True") : QStringLiteral("False");
  return reply;
}

void MciVideoSize(int& width, int& height) {
  width = height = -1;
  QString returned;
  if (MciSendString("Where " + Alias() + " destination", &returned) != "Success") return;
  const QStringList numbers = returned.split(' ', Qt::SkipEmptyParts);
  if (numbers.size() < 4) return;
  bool okWidth = false, okHeight = false;
  const int w = numbers[2].toInt(&okWidth), h = numbers[3].toInt(&okHeight);
  if (okWidth && okHeight) {
    width = w;
    height = h;
  }
}

qint64 MciLengthFrames() { return LengthIn("frames"); }

qint64 MciLengthMs() { return LengthIn("ms"); }

qint64 MciPosition() {
  QString returned;
  const QString reply = MciSendString("status " + Alias() + " position", &returned);
  return NumberOf(reply, returned);
}

QString MciPlay(const QString& start, const QString& end) {
  if (PlayerDevice().IsMp3 == "True")
    return MciSendString("play " + Alias() + " from " + QString::number(LowestStart));
  const QString from = start.isEmpty() ? QStringLiteral("0") : start;
  const QString to = end.isEmpty() ? QString::number(MciLengthFrames()) : end;
  return MciSendString("play " + Alias() + " from " + from + " to " + to);
}

QString MciPlayFrom(qint64 position) {
  return MciSendString("play " + Alias() + " from " + QString::number(qMax(position, LowestStart)));
}

QString MciPause() { return MciSendString("Pause " + Alias()); }

QString MciResume() { return MciSendString("Resume " + Alias()); }

QString MciStop() { return MciSendString("Stop " + Alias()); }

QString MciClose() { return MciSendString("Close " + Alias()); }

QString MciPutWindow(int x, int y, int width, int height, const QWidget* frame) {
  if ((width == 0 || height == 0) && frame) {
    width = frame->width();
    height = frame->height();
  }
  return MciSendString(QStringLiteral("put %1 window at %2 %3 %4 %5")
                           .arg(Alias())
                           .arg(x)
                           .arg(y)
                           .arg(width)
                           .arg(height));
}

QString FormatTime(qint64 seconds) {
  seconds = qMax<qint64>(0, seconds);
  const qint64 minutes = seconds / 60, rest = seconds % 60;
  const auto two = [](qint64 n) { return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0')); };
  if (minutes < 60) return two(minutes) + ":" + two(rest);
  return QString::number(minutes / 60) + ":" + two(minutes % 60) + ":" + two(rest);
}

qint64 RoundHalfEven(double value) {
  const double down = std::floor(value);
  const double fraction = value - down;
  if (fraction > 0.5) return qint64(down) + 1;
  if (fraction < 0.5) return qint64(down);
  return std::fmod(down, 2.0) == 0 ? qint64(down) : qint64(down) + 1;
}

int LeadingNumber(const QString& text) {
  QString digits;
  for (const QChar c : text) {
    if (c.isSpace()) continue;
    if ((c == '-' || c == '+') && digits.isEmpty()) {
      digits += c;
      continue;
    }
    if (!c.isDigit()) break;
    digits += c;
  }
  return digits.toInt();
}
