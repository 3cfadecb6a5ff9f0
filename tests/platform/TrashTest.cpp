#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include "platform/Trash.h"
#include "support/TestEnv.h"

namespace {

QByteArray Read(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The record's lines but the deletion date, which must be a local time
// between the two moments given.
QStringList RecordWithoutDate(const QString& path, const QDateTime& from, const QDateTime& to) {
  QStringList lines = QString::fromUtf8(Read(path)).split('\n');
  const qsizetype at = lines.indexOf(QRegularExpression("^DeletionDate=.*"));
  if (at < 0) return lines;
  const QDateTime date = QDateTime::fromString(lines.takeAt(at).mid(int(qstrlen("DeletionDate="))),
                                               "yyyy-MM-ddThh:mm:ss");
  EXPECT_TRUE(date.isValid());
  EXPECT_GE(date, from.addMSecs(-from.time().msec()));
  EXPECT_LE(date, to);
  return lines;
}

}  // namespace

TEST(TrashTest, TrashedFilesLeaveTheirFolderWithARecordOfWhereTheyWere) {
  // The data folder does not exist yet: the Trash is made inside it, never
  // in the current folder.
  const QString data = testenv::Root() + "/data/not/yet";
  qputenv("XDG_DATA_HOME", data.toUtf8());
  const QString name = "a b ü;%'.txt";
  const QString first = testenv::MakeFile(testenv::Root() + "/files/" + name, "first");
  const QString second = testenv::MakeFile(testenv::Root() + "/files/sub/" + name, "second");
  const QString plain = testenv::MakeFile(testenv::Root() + "/files/notes", "third");
  const QString plainToo = testenv::MakeFile(testenv::Root() + "/files/sub/notes", "fourth");

  const QDateTime before = QDateTime::currentDateTime();
  for (const QString& path : {first, second, plain, plainToo})
    EXPECT_TRUE(platform::MoveToTrash(path)) << path.toStdString();
  const QDateTime after = QDateTime::currentDateTime();
  for (const QString& path : {first, second, plain, plainToo})
    EXPECT_FALSE(QFile::exists(path)) << path.toStdString();

  const QString trash = data + "/Trash";
  EXPECT_EQ(QDir(trash + "/files").entryList(QDir::Files, QDir::Name),
            QStringList({"a b ü;%'.2.txt", "a b ü;%'.txt", "notes", "notes.2"}));
  EXPECT_EQ(QDir(trash + "/info").entryList(QDir::Files, QDir::Name),
            QStringList({"a b ü;%'.2.txt.trashinfo", "a b ü;%'.txt.trashinfo", "notes.2.trashinfo",
                         "notes.trashinfo"}));
  EXPECT_EQ(Read(trash + "/files/" + name), "first");
  EXPECT_EQ(Read(trash + "/files/a b ü;%'.2.txt"), "second");
  EXPECT_EQ(Read(trash + "/files/notes.2"), "fourth");
  // The original path, escaped as in a URL; the root of the test's world
  // has no character that needs it.
  const QString root = testenv::Root();
  EXPECT_EQ(
      RecordWithoutDate(trash + "/info/" + name + ".trashinfo", before, after),
      QStringList({"[Trash Info]", "Path=" + root + "/files/a%20b%20%C3%BC%3B%25%27.txt", ""}));
  EXPECT_EQ(
      RecordWithoutDate(trash + "/info/a b ü;%'.2.txt.trashinfo", before, after),
      QStringList({"[Trash Info]", "Path=" + root + "/files/sub/a%20b%20%C3%BC%3B%25%27.txt", ""}));
  EXPECT_EQ(RecordWithoutDate(trash + "/info/notes.2.trashinfo", before, after),
            QStringList({"[Trash Info]", "Path=" + root + "/files/sub/notes", ""}));

  // A file that is not there, or the Trash itself, stays out.
  EXPECT_FALSE(platform::MoveToTrash(root + "/files/missing.txt"));
  EXPECT_FALSE(platform::MoveToTrash(trash + "/files/notes"));
  EXPECT_FALSE(platform::MoveToTrash(QString()));
  EXPECT_EQ(QDir(trash + "/info").count(), 6u);  // with "." and ".."
}

TEST(TrashTest, AFileOnAnotherFileSystemGoesToTheTrashAtItsTop) {
  // Memory-backed /dev/shm stands for a second disk; its Trash records
  // paths relative to its top.
  struct stat shm {
  }, root{};
  if (stat("/dev/shm", &shm) != 0 ||
      stat(QFile::encodeName(testenv::Root()).constData(), &root) != 0 ||
      shm.st_dev == root.st_dev || access("/dev/shm", W_OK) != 0)
    GTEST_SKIP() << "no second writable file system";
  const QString trash = "/dev/shm/.Trash-" + QString::number(getuid());
  const bool trashExisted = QFileInfo::exists(trash);
  const QString name = "vistrel-trash-test-" + QFileInfo(testenv::Root()).fileName() + ".txt";
  const QString file = testenv::MakeFile("/dev/shm/" + name, "elsewhere");

  EXPECT_TRUE(platform::MoveToTrash(file));
  EXPECT_FALSE(QFile::exists(file));
  EXPECT_EQ(Read(trash + "/files/" + name), "elsewhere");
  EXPECT_TRUE(QString::fromUtf8(Read(trash + "/info/" + name + ".trashinfo"))
                  .startsWith("[Trash Info]\nPath=" + name + "\nDeletionDate="));
  EXPECT_FALSE(QFileInfo::exists(testenv::Root() + "/data/Trash/files/" + name));

  QFile::remove(trash + "/files/" + name);
  QFile::remove(trash + "/info/" + name + ".trashinfo");
  if (!trashExisted) QDir(trash).removeRecursively();
}
