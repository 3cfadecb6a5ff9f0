#include <gtest/gtest.h>

#include <QDateTime>
#include <QFile>
#include <QLocale>
#include <QRegularExpression>

#include "catalogue/FileInfoText.h"
#include "catalogue/MediaTypes.h"
#include "support/TestEnv.h"

namespace {

QDateTime At(int hour, int minute, int second) {
  return QDateTime(QDate(2003, 7, 4), QTime(hour, minute, second));
}

}  // namespace

TEST(FileInfoTextTest, DateAndTimeLinesKeepNoonAmongTheMorning) {
  EXPECT_EQ(FileTimeLine(At(0, 5, 9)), "Time: 12:05:09 AM");
  EXPECT_EQ(FileTimeLine(At(12, 5, 9)), "Time: 12:05:09 AM");
  EXPECT_EQ(FileTimeLine(At(13, 5, 9)), "Time: 1:05:09 PM");
  EXPECT_EQ(FileTimeLine(At(23, 59, 1)), "Time: 11:59:01 PM");
  EXPECT_EQ(FileDateLine(At(10, 0, 0)), "Date: 07/04/2003");
}

TEST(FileInfoTextTest, TypeLineFollowsTheMediaCode) {
  FillMediaTables();
  FillExteriorTables();
  const QStringList names{"a.JPG", "b.ico",   "c.cur", "d.avi", "e.mp3",
                          "f.pdf", "clip.rm", "g.htm", "README"};
  QStringList lines;
  for (const QString& name : names) lines << FileTypeLine(name);
  EXPECT_EQ(lines, (QStringList{"Type: Picture", "Type: Icon", "Type: Cursor", "Type: Video",
                                "Type: Audio", "Type: Document", "Type: Unknown", "Type: Unknown",
                                "Type: Unknown"}));
}

TEST(FileInfoTextTest, WholeTextOfFiles) {
  FillMediaTables();
  const QLocale saved;
  QLocale::setDefault(QLocale::c());
  const QString empty = testenv::MakeFile(testenv::Root() + "/empty.jpg", QByteArray());
  const QString big = testenv::MakeFile(testenv::Root() + "/big.mp3", QByteArray(1234567, 'x'));
  // Made just now: the date is today's (a test run across midnight may see yesterday's).
  const QStringList today = {"Date: " + QDate::currentDate().toString("MM/dd/yyyy"),
                             "Date: " + QDate::currentDate().addDays(-1).toString("MM/dd/yyyy")};
  const QStringList lines = FileInfoText("empty.jpg", empty).split("\r\n");
  ASSERT_EQ(lines.size(), 5);
  EXPECT_EQ(lines.mid(0, 3),
            (QStringList{"File:    empty.jpg", "Type: Picture", "Size:  0 bytes"}));
  EXPECT_TRUE(today.contains(lines[3])) << lines[3].toStdString();
  const QRegularExpression time("^Time: 1?[0-9]:[0-5][0-9]:[0-5][0-9] [AP]M$");
  EXPECT_TRUE(time.match(lines[4]).hasMatch()) << lines[4].toStdString();
  // The name shows as given.
  EXPECT_TRUE(FileInfoText("My song", big)
                  .startsWith("File:    My song\r\nType: Unknown\r\nSize:  1,234,567 bytes\r\n"));

  // The date is the creation date, not that of the last change.
  QFile file(big);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  ASSERT_TRUE(file.setFileTime(QDateTime(QDate(2001, 2, 3), QTime(4, 5)),
                               QFileDevice::FileModificationTime));
  file.close();
  EXPECT_TRUE(today.contains(FileInfoText("big.mp3", big).split("\r\n").value(3)));

  EXPECT_EQ(FileInfoText("gone.jpg", testenv::Root() + "/gone.jpg"), "");
  QLocale::setDefault(saved);
}
