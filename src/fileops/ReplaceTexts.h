#pragma once
// The texts and the picture size that the replace verification shows for
// each of its two files.

#include <QDateTime>
#include <QSize>
#include <QString>
#include <QtGlobal>

// The length in "###,###,##0", then " bytes": "1,234,567 bytes".
QString ReplaceSizeText(qint64 bytes);
// The date: month "00", "/", day "00", "/", year "0000": "03/07/2004".
QString ReplaceDateText(const QDate& date);
// The time: "(None)" at exact midnight; else the hour "#0", ":", minutes
// "00", ":", seconds "00" and " AM" for an hour below 13, or the hour less
// 12 in the same form and " PM" from 13 on. So noon reads "12:00:00 AM"
// and a quarter past midnight "0:15:00 AM".
QString ReplaceTimeText(const QTime& time);
// The size of a picture of width x height shown in an image area of
// areaTwips square, in twips, as a thumbnail is sized: the longer side
// takes the area less 60, the other side keeps the picture's proportion.
QSize PictureBoxTwips(const QSize& picture, int areaTwips);
