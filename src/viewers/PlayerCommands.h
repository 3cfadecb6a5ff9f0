#pragma once
// The player control's commands to the media command interpreter, one
// routine each, and the small text and number helpers around them. The
// commands go to the device alias shared by all players of the program:
// only one player plays at a time, and a player that loads a file takes the
// alias over.

#include <QString>
#include <QtGlobal>

class QWidget;

// Held once for all players: the alias of the device opened or closed
// last, and whether the file opened last is an mp3 ("True" or "False").
struct SharedPlayerDevice {
  QString DeviceAlias;
  QString IsMp3 = QStringLiteral("False");
};
SharedPlayerDevice& PlayerDevice();

// "open" of a file on a device, drawn into the window of `parentHandle`.
// A successful open sets IsMp3 from the path's last three characters.
QString MciOpen(const QString& path, const QString& device, const QString& parentHandle);
// The natural picture size from "Where ... destination"; -1 and -1 on any
// failure.
void MciVideoSize(int& width, int& height);
// The length in frames or in milliseconds (the time format is set first,
// and stays); -1 when the status command fails.
qint64 MciLengthFrames();
qint64 MciLengthMs();
// The position in the present time format; -1 on failure.
qint64 MciPosition();
// Starts the file: an mp3 always "from 180" with no end; others from
// `start` (empty: 0) to `end` (empty: the length in frames).
QString MciPlay(const QString& start, const QString& end);
// Plays on from a position, raised to 180 when under it.
QString MciPlayFrom(qint64 position);
QString MciPause();
QString MciResume();
QString MciStop();
QString MciClose();
// "put ... window at": a width or height of 0 takes the size of `frame`'s
// rectangle, in pixels.
QString MciPutWindow(int x, int y, int width, int height, const QWidget* frame);

// Seconds as the player shows them: "mm:ss" under an hour, "h:mm:ss" from
// an hour on (01:15, 1:00:05).
QString FormatTime(qint64 seconds);
// Rounds to the nearest whole number, a half to the even one.
qint64 RoundHalfEven(double value);
// The number a text begins with, blanks passed over (" 12ab" is 12); 0 when
// it begins with none.
int LeadingNumber(const QString& text);
