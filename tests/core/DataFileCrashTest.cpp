#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QFileInfo>
#include <algorithm>
#include <QRandomGenerator>
#include <QStringList>

#include "core/AppState.h"
#include "core/DataFile.h"
#include "core/Database.h"
#include "core/Statements.h"
#include "platform/SqlCipherConnection.h"
#include "support/TestEnv.h"

// The data file is killed in the middle of its writes: compaction at close,
// an album of 5,000 rows, a caption. Each time it must open with its
// password and hold the old or the new state, never a part of both.

namespace {

// Runs work() over and over in a child process and kills it without warning
// after a random delay between the bounds (microseconds); check() then looks
// at what the child left. The child never closes anything on its own.
template <typename Work, typename Check>
void KillWhileWorking(int rounds, quint32 seed, int fromUs, int toUs, Work work, Check check) {
  QRandomGenerator random(seed);
  for (int round = 0; round < rounds; ++round) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      for (;;) work();
    }
    usleep(useconds_t(fromUs + int(random.bounded(quint32(toUs - fromUs)))));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    check(round);
  }
}

QStringList Paths(const char* folder, int count) {
  QStringList paths;
  for (int i = 0; i < count; ++i)
    paths << QString("/home/user/%1/photo%2.jpg").arg(folder).arg(i, 4, 10, QChar('0'));
  return paths;
}

qint64 Count(Database& db, const QString& sql) {
  platform::SqlStatement count = db.Prepare(sql);
  return count.Next() ? count.Int(0) : -1;
}

bool IntegrityIsOk(Database& db) {
  platform::SqlStatement check = db.Prepare("PRAGMA integrity_check");
  return check.Next() && check.Text(0) == "ok";
}

// The data file as the next start finds it: a database opened by its own
// password, owned by the test.
struct Reopened {
  Database db;
  Reopened() { EXPECT_TRUE(db.Open(DataFilePath())); }
};

}  // namespace

TEST(DataFileCrashTest, KilledCompactionLeavesTheWholeOldFileAndTheNextStartClearsItsCopy) {
  testenv::InstallDataFile();
  {
    Database db;
    ASSERT_TRUE(db.Open(DataFilePath()));
    ASSERT_NE(SaveAlbum(db, 0, "Holiday", true, Paths("holiday", 3000)), 0);
    ASSERT_TRUE(SaveFileCaption(db, "beach.jpg", "Sun and sand"));
  }
  // The kills spread over about two compactions, however fast this build
  // compacts (a checked build is several times slower).
  QElapsedTimer clock;
  clock.start();
  ASSERT_TRUE(CompactDataFile(DataFilePath(), DataFileTempPath()));
  const int spanUs = std::max(60000, int(clock.nsecsElapsed() / 1000) * 2);
  int copiesLeft = 0;
  KillWhileWorking(
      15, 1234, 1000, spanUs, [] { CompactDataFile(DataFilePath(), DataFileTempPath()); },
      [&](int round) {
        if (QFileInfo::exists(DataFileTempPath())) ++copiesLeft;
        ASSERT_TRUE(OpenDataFile()) << round;
        EXPECT_FALSE(QFileInfo::exists(DataFileTempPath())) << round;
        EXPECT_FALSE(QFileInfo::exists(DataFileTempPath() + "-journal")) << round;
        Database& db = *App().DatabaseConnection;
        EXPECT_TRUE(IntegrityIsOk(db)) << round;
        const QList<AlbumHeader> albums = SelectAlbumHeaders(db);
        ASSERT_EQ(albums.size(), 1) << round;
        EXPECT_EQ(albums[0].PlaylistName, "Holiday");
        const QStringList files = SelectPlaylistFiles(db, albums[0].PlaylistID);
        ASSERT_EQ(files.size(), 3000) << round;
        EXPECT_EQ(files.first(), "/home/user/holiday/photo0000.jpg");
        EXPECT_EQ(files.last(), "/home/user/holiday/photo2999.jpg");
        EXPECT_EQ(SelectFileCaption(db, "beach.jpg"), "Sun and sand");
        delete App().DatabaseConnection;
        App().DatabaseConnection = nullptr;
      });
  // Most kills land while the copy is being written.
  EXPECT_GT(copiesLeft, 0);
}

TEST(DataFileCrashTest, KilledAlbumSaveLeavesTheOldAlbumOrTheNewWhole) {
  testenv::InstallDataFile();
  const QStringList oldFiles = Paths("old", 5000), newFiles = Paths("new", 5000);
  qint32 id = 0;
  {
    Database db;
    ASSERT_TRUE(db.Open(DataFilePath()));
    id = SaveAlbum(db, 0, "Summer", false, oldFiles);
    ASSERT_NE(id, 0);
  }
  // The child edits the album both ways, and adds and deletes a second one.
  const auto work = [&] {
    Database db;
    if (!db.Open(DataFilePath())) _exit(1);
    for (;;) {
      SaveAlbum(db, id, "Summer 2024", true, newFiles);
      const qint32 added = SaveAlbum(db, 0, "Winter", true, newFiles);
      SaveAlbum(db, id, "Summer", false, oldFiles);
      DeleteAlbum(db, added);
    }
  };
  KillWhileWorking(20, 99, 5000, 400000, work, [&](int round) {
    Reopened data;
    Database& db = data.db;
    EXPECT_TRUE(IntegrityIsOk(db)) << round;
    const std::optional<AlbumProperties> album = SelectAlbumProperties(db, id);
    ASSERT_TRUE(album) << round;
    const QStringList files = SelectPlaylistFiles(db, id);
    if (album->PlaylistName == "Summer") {
      EXPECT_FALSE(album->PlaylistPreventDuplicates) << round;
      EXPECT_TRUE(files == oldFiles) << round << " rows " << files.size();
    } else {
      EXPECT_EQ(album->PlaylistName, "Summer 2024") << round;
      EXPECT_TRUE(album->PlaylistPreventDuplicates) << round;
      EXPECT_TRUE(files == newFiles) << round << " rows " << files.size();
    }
    // Each second album that a kill left is there whole; one deleted is
    // gone whole.
    const QList<AlbumHeader> albums = SelectAlbumHeaders(db);
    for (const AlbumHeader& album : albums) {
      if (album.PlaylistID == id) continue;
      EXPECT_EQ(album.PlaylistName, "Winter") << round;
      EXPECT_TRUE(SelectPlaylistFiles(db, album.PlaylistID) == newFiles) << round;
    }
    const qint64 rows = 5000 * albums.size();
    EXPECT_EQ(Count(db, "SELECT count(*) FROM PlaylistFiles"), rows) << round;
  });
}

TEST(DataFileCrashTest, KilledCaptionWriteLeavesOneCaptionOrNone) {
  testenv::InstallDataFile();
  const auto work = [] {
    Database db;
    if (!db.Open(DataFilePath())) _exit(1);
    for (;;) {
      SaveFileCaption(db, "beach.jpg", "Sun and sand");
      SaveFileCaption(db, "beach.jpg", "Waves at dusk");
      SaveFileCaption(db, "beach.jpg", "");
    }
  };
  KillWhileWorking(20, 7, 1000, 80000, work, [&](int round) {
    Reopened data;
    Database& db = data.db;
    EXPECT_TRUE(IntegrityIsOk(db)) << round;
    const QString caption = SelectFileCaption(db, "beach.jpg");
    const qint64 rows = Count(db, "SELECT count(*) FROM FileCaptions");
    if (caption.isEmpty()) {
      EXPECT_EQ(rows, 0) << round;
    } else {
      EXPECT_TRUE(caption == "Sun and sand" || caption == "Waves at dusk") << round;
      EXPECT_EQ(rows, 1) << round;
    }
  });
}
