#include <gtest/gtest.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <QDateTime>
#include <QFile>

#include "platform/FileTimes.h"
#include "support/TestEnv.h"

namespace {

unsigned ModeOf(const QString& path) {
  struct stat info {};
  return stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_mode & 07777 : 0;
}

// The local clock of the test runs 5:30 hours ahead of UTC, without summer
// time, whatever the machine's zone.
class FileTimesTest : public testing::Test {
 protected:
  void SetUp() override {
    savedZone_ = qgetenv("TZ");
    hadZone_ = qEnvironmentVariableIsSet("TZ");
    qputenv("TZ", "VST-5:30");
    tzset();
  }
  void TearDown() override {
    if (hadZone_)
      qputenv("TZ", savedZone_);
    else
      qunsetenv("TZ");
    tzset();
  }

 private:
  QByteArray savedZone_;
  bool hadZone_ = false;
};

}  // namespace

TEST_F(FileTimesTest, TheModifiedTimeIsSetInLocalTimeAndTheAccessTimeStays) {
  const QString path = testenv::MakeFile(testenv::Root() + "/files/clip ü.mp4", "12345");
  {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::fromSecsSinceEpoch(1577934245, Qt::UTC),
                                 QFileDevice::FileAccessTime));
  }
  EXPECT_EQ(
      platform::SetFileModifiedTime(path, QDateTime(QDate(2021, 3, 14), QTime(15, 9, 26, 250))), 0);
  EXPECT_EQ(platform::FileModifiedTime(path).toMSecsSinceEpoch(), 1615714766250);
  EXPECT_EQ(platform::FileAccessedTime(path).toSecsSinceEpoch(), 1577934245);
  EXPECT_EQ(platform::FileAccessedTime(path).time(), QTime(8, 34, 5));
  EXPECT_EQ(platform::FileSizeBytes(path), 5);

  // The clock fields count, not the zone the value was made in.
  EXPECT_EQ(
      platform::SetFileModifiedTime(path, QDateTime(QDate(1999, 12, 31), QTime(23, 0), Qt::UTC)),
      0);
  EXPECT_EQ(platform::FileModifiedTime(path).toSecsSinceEpoch(), 946661400);

  const QString missing = testenv::Root() + "/files/missing.mp4";
  EXPECT_EQ(platform::SetFileModifiedTime(missing, QDateTime(QDate(2021, 3, 14), QTime(1, 2))), 53);
  EXPECT_FALSE(platform::FileModifiedTime(missing).isValid());
  EXPECT_EQ(platform::FileSizeBytes(missing), -1);
}

TEST_F(FileTimesTest, ReadOnlyIsTheOwnersWriteBitAndClearingItPreparesARemoval) {
  const QString path = testenv::MakeFile(testenv::Root() + "/files/photo.jpg", "x");
  ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
  EXPECT_FALSE(platform::IsReadOnly(path));
  EXPECT_EQ(platform::SetReadOnly(path, true), 0);
  EXPECT_TRUE(platform::IsReadOnly(path));
  EXPECT_EQ(ModeOf(path), 0440);
  EXPECT_EQ(platform::ClearAttributes(path), 0);
  EXPECT_FALSE(platform::IsReadOnly(path));
  EXPECT_EQ(ModeOf(path), 0640);

  const QString missing = testenv::Root() + "/files/missing.jpg";
  EXPECT_EQ(platform::SetReadOnly(missing, true), 53);
  // The kernel refuses every change of mode here, to the administrator too.
  EXPECT_EQ(platform::ClearAttributes("/proc/self/status"), 75);

  // A file whose folder cannot be written cannot be removed (the
  // administrator writes every folder).
  const QString locked = testenv::MakeFile(testenv::Root() + "/locked/song.mp3", "x");
  ASSERT_TRUE(
      QFile::setPermissions(testenv::Root() + "/locked", QFile::ReadOwner | QFile::ExeOwner));
  if (geteuid() != 0) {
    EXPECT_EQ(platform::ClearAttributes(locked), 75);
  }
}
