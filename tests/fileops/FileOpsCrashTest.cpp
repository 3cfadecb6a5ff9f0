#include <gtest/gtest.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include "catalogue/MediaTypes.h"
#include "controls/MessageBox.h"
#include "core/AppState.h"
#include "fileops/FileCopy.h"
#include "fileops/FileOperations.h"
#include "platform/LeftoverFiles.h"
#include "shell/SharedMessageBox.h"
#include "support/TestEnv.h"

// A copy, a move and a wipe of a 200 MB file killed at random moments: no
// file is lost, a target is old or whole, and what a cut-off run leaves is
// cleared by the next start.

namespace {

constexpr qint64 BigSize = 200ll * 1024 * 1024;
// Where the big file holds written bytes; the rest is a hole of zeros.
constexpr qint64 MiddleAt = 100ll * 1024 * 1024, TailAt = BigSize - 16;

// A sparse file of 200 MB with three marks written into it.
void MakeBigFile(const QString& path) {
  QDir().mkpath(QFileInfo(path).absolutePath());
  const int fd = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  ASSERT_GE(fd, 0);
  ASSERT_EQ(::ftruncate(fd, BigSize), 0);
  ASSERT_EQ(::pwrite(fd, "head of the file", 16, 0), 16);
  ASSERT_EQ(::pwrite(fd, "middle of a file", 16, MiddleAt), 16);
  ASSERT_EQ(::pwrite(fd, "end of that file", 16, TailAt), 16);
  ::close(fd);
}

QByteArray ReadAt(const QString& path, qint64 offset, qint64 size) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly) || !file.seek(offset)) return QByteArray();
  return file.read(size);
}

// The whole big file: its size, its marks, and zeros around them.
bool IsWholeBigFile(const QString& path) {
  return QFileInfo(path).size() == BigSize && ReadAt(path, 0, 17) == QByteArray("head of the file\0", 17) &&
         ReadAt(path, MiddleAt - 1, 18) == QByteArray("\0middle of a file\0", 18) &&
         ReadAt(path, TailAt - 1, 17) == QByteArray("\0end of that file", 17);
}

QByteArray Contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

QStringList Names(const QString& folder) {
  return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                QDir::Name);
}

// Starts work in a child process and kills it after a random delay between
// the bounds (milliseconds); the child is never let to finish on its own.
template <typename Work>
void KillAfterAWhile(QRandomGenerator& random, int fromMs, int toMs, Work work) {
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    work();
    for (;;) ::pause();
  }
  usleep(useconds_t(1000 * (fromMs + int(random.bounded(quint32(toMs - fromMs))))));
  kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
}

class FileOpsCrashTest : public testing::Test {
 protected:
  void SetUp() override {
    CreateSharedMsgBox()->SetSoundBeep(false);
    FillMediaTables();
  }
  void TearDown() override {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ReleaseSharedMsgBox();
  }
  QString Notes() { return testenv::Root() + "/data/Vistrel/leftovers"; }
};

}  // namespace

TEST_F(FileOpsCrashTest, KilledCopyLeavesTheOldTargetOrTheWholeCopy) {
  const QString source = testenv::Root() + "/home/from/big.mkv";
  const QString folder = testenv::Root() + "/home/to";
  const QString target = folder + "/big.mkv";
  MakeBigFile(source);
  testenv::MakeFile(target, "old target");
  QRandomGenerator random(2024);
  int copiesLeft = 0, replaced = 0;
  for (int round = 0; round < 10; ++round) {
    KillAfterAWhile(random, 20, 1500, [&] {
      for (;;) CopyFileContents(source, target);
    });
    EXPECT_TRUE(IsWholeBigFile(source)) << round;
    if (QFileInfo(target).size() == BigSize) {
      EXPECT_TRUE(IsWholeBigFile(target)) << round;
      ++replaced;
    } else {
      EXPECT_EQ(Contents(target), "old target") << round;
    }
    QStringList names = Names(folder);
    if (names.size() == 2 && names[0].startsWith(".vistrel-copy-")) ++copiesLeft;
    platform::CleanLeftovers();
    EXPECT_EQ(Names(folder), QStringList{"big.mkv"}) << round;
    EXPECT_EQ(Names(Notes()), QStringList()) << round;
    // The next round starts from the old target again.
    testenv::MakeFile(target, "old target");
  }
  EXPECT_GT(copiesLeft, 0);
  EXPECT_GT(replaced, 0);
}

TEST_F(FileOpsCrashTest, KilledMoveKeepsTheSourceUntilTheCopyIsWhole) {
  const QString here = testenv::Root() + "/home/here/big.mkv";
  const QString there = testenv::Root() + "/home/there/big.mkv";
  MakeBigFile(here);
  QDir().mkpath(testenv::Root() + "/home/there");
  QRandomGenerator random(77);
  int moved = 0;
  for (int round = 0; round < 10; ++round) {
    // The move as the browser and the viewers make it: copy, and remove the
    // source only once the copy is complete.
    const QString from = QFileInfo::exists(here) ? here : there;
    const QString to = from == here ? there : here;
    KillAfterAWhile(random, 20, 1500, [&] {
      if (CopyMediaFile(from, to) && LastCopyComplete()) QFile::remove(from);
    });
    const bool source = QFileInfo::exists(from), target = QFileInfo::exists(to);
    ASSERT_TRUE(source || target) << round;
    if (source) EXPECT_TRUE(IsWholeBigFile(from)) << round;
    if (target) EXPECT_TRUE(IsWholeBigFile(to)) << round;
    if (!source) ++moved;
    platform::CleanLeftovers();
    EXPECT_EQ(Names(testenv::Root() + "/home/here"), QStringList(QFileInfo::exists(here) ? QStringList{"big.mkv"} : QStringList()))
        << round;
    EXPECT_EQ(Names(testenv::Root() + "/home/there"), QStringList(QFileInfo::exists(there) ? QStringList{"big.mkv"} : QStringList()))
        << round;
    // Killed between the copy and the removal: the user has two whole
    // files, and keeps one here.
    if (source && target) QFile::remove(to);
  }
  EXPECT_GT(moved, 0);
}

TEST_F(FileOpsCrashTest, KilledWipeLeavesTheUntouchedFileOrNothingAfterTheNextStart) {
  const QString folder = testenv::Root() + "/home/secret";
  const QString path = folder + "/big.mkv";
  testenv::MakeFile(folder + "/keep.txt", "stays");
  QRandomGenerator random(5);
  int kept = 0, gone = 0;
  for (int round = 0; round < 10; ++round) {
    MakeBigFile(path);
    KillAfterAWhile(random, 1, 5000, [&] { WipeFile(path); });
    platform::CleanLeftovers();
    if (Names(folder).size() == 2) {
      EXPECT_EQ(Names(folder), QStringList({"big.mkv", "keep.txt"})) << round;
      EXPECT_TRUE(IsWholeBigFile(path)) << round;
      ++kept;
    } else {
      EXPECT_EQ(Names(folder), QStringList{"keep.txt"}) << round;
      ++gone;
    }
    EXPECT_EQ(Contents(folder + "/keep.txt"), "stays");
    EXPECT_EQ(Names(Notes()), QStringList()) << round;
  }
  EXPECT_GT(gone, 0);
}
