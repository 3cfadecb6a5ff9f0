#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>

#include "cd/Mp3Tags.h"
#include "platform/LeftoverFiles.h"
#include "support/TestEnv.h"

// A tag edit killed at any moment leaves the song with its old tag or its
// new one, playable, and a copy in the making that the next start removes.

namespace {

QByteArray Contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray Padded(const QByteArray& text, int size) { return text + QByteArray(size - text.size(), '\0'); }

// The tail record a tagger writes: title, artist, album, year, comment,
// track 3, genre 13.
QByteArray Record(const QByteArray& title, const QByteArray& artist) {
  return "TAG" + Padded(title, 30) + Padded(artist, 30) + Padded("Old Album", 30) + "1999" +
         QByteArray(29, '\0') + QByteArray("\x03\x0d", 2);
}

// The record as the editor writes it: texts padded with spaces, the album
// (found only through a frame, and this song has none) left blank, the year
// blanking most of the comment, track and genre kept.
QByteArray Saved(const QByteArray& title, const QByteArray& artist) {
  const auto spaced = [](const QByteArray& text) { return text + QByteArray(30 - text.size(), ' '); };
  return "TAG" + spaced(title) + spaced(artist) + spaced("") + spaced("1999") +
         QByteArray("\0\0\0\x03\x0d", 5);
}

// Runs ffmpeg; its error output, or "failed" when it did not succeed.
QString RunFfmpeg(const QStringList& arguments) {
  QProcess process;
  process.start(QStandardPaths::findExecutable("ffmpeg"), arguments);
  if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit ||
      process.exitCode() != 0)
    return "failed: " + QString::fromLocal8Bit(process.readAllStandardError());
  return QString::fromLocal8Bit(process.readAllStandardError());
}

}  // namespace

TEST(TagFileCrashTest, KilledTagWriteLeavesTheOldTagOrTheNewAndAPlayableSong) {
  const QString folder = testenv::Root() + "/home/songs";
  ASSERT_TRUE(QDir().mkpath(folder));
  const QString tone = testenv::Root() + "/tone.mp3";
  ASSERT_EQ(RunFfmpeg({"-loglevel", "error", "-f", "lavfi", "-i", "sine=duration=2", "-c:a",
                       "libmp3lame", "-b:a", "64k", "-id3v2_version", "0", tone}),
            "");
  // Several megabytes of frames, so that a kill lands in the middle of the
  // copy, with a tail record after them.
  const QByteArray frames = Contents(tone);
  ASSERT_GT(frames.size(), 10000);
  QByteArray audio;
  while (audio.size() < 8 * 1024 * 1024) audio += frames;
  const QString path = testenv::MakeFile(folder + "/song.mp3", audio + Record("Old Title", "Old Artist"));
  ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));

  TagFormValues first = LoadTagsFromFile(path), second = first;
  first.Title = "First Title";
  first.Artist = "First Artist";
  second.Title = "Second Title";
  second.Artist = "Second Artist";

  QRandomGenerator random(321);
  int copiesLeft = 0;
  for (int round = 0; round < 15; ++round) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      for (;;) {
        SaveTagsToFile(path, first);
        SaveTagsToFile(path, second);
      }
    }
    usleep(useconds_t(1000 + random.bounded(150000)));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);

    const QByteArray bytes = Contents(path);
    ASSERT_EQ(bytes.size(), audio.size() + 128) << round;
    EXPECT_TRUE(bytes.first(audio.size()) == audio) << round;
    const QByteArray record = bytes.last(128);
    EXPECT_TRUE(record == Record("Old Title", "Old Artist") ||
                record == Saved("First Title", "First Artist") ||
                record == Saved("Second Title", "Second Artist"))
        << round << " " << record.toHex().constData();
    EXPECT_EQ(QFile::permissions(path),
              QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser | QFile::ReadGroup)
        << round;

    // The next start removes a copy cut off, and nothing else.
    const QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    if (names.size() == 2) {
      ++copiesLeft;
      EXPECT_TRUE(names[0].startsWith(".vistrel-tags-")) << names[0].toStdString();
    }
    platform::CleanLeftovers();
    EXPECT_EQ(QDir(folder).entryList(QDir::Files | QDir::Hidden), QStringList({"song.mp3"})) << round;
    EXPECT_EQ(QDir(testenv::Root() + "/data/Vistrel/leftovers").entryList(QDir::Files | QDir::Hidden),
              QStringList())
        << round;
  }
  EXPECT_GT(copiesLeft, 0);
  // The song still plays to its end.
  EXPECT_EQ(RunFfmpeg({"-v", "error", "-i", path, "-f", "null", "-"}), "");
}
