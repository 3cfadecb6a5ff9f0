#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <algorithm>

#include "platform/SqlCipherConnection.h"
#include "platform/SystemMessage.h"
#include "core/AppState.h"
#include "core/DataFile.h"
#include "core/Database.h"
#include "core/Statements.h"
#include "support/TestEnv.h"

namespace {

QByteArray ReadBytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Records the stop messages instead of showing them.
struct MessageRecorder {
  QStringList messages;
  MessageRecorder() {
    platform::SetSystemMessageSink(
        [this](const QString& text, const QString& title) { messages << title + ": " + text; });
  }
};

// Makes a database file that holds one table, keyed with the given password.
void MakeKeyedFile(const QString& path, const QString& key) {
  platform::SqlCipherConnection connection;
  ASSERT_TRUE(connection.Open(path, key, platform::SqlCipherConnection::OpenMode::ReadWriteCreate));
  ASSERT_TRUE(connection.Execute("CREATE TABLE PlaylistHeader (PlaylistID INTEGER)"));
}

class DataFile : public testing::Test {
 protected:
  void TearDown() override {
    delete App().DatabaseConnection;
    App().DatabaseConnection = nullptr;
  }
};

}  // namespace

TEST_F(DataFile, TheBuiltFileIsEncryptedAndHoldsTheSixTablesAndTheTour) {
  const QString path = testenv::InstallDataFile();
  EXPECT_FALSE(ReadBytes(path).startsWith("SQLite format 3"));

  MessageRecorder recorder;
  ASSERT_TRUE(OpenDataFile());
  EXPECT_TRUE(recorder.messages.isEmpty());
  ASSERT_NE(App().DatabaseConnection, nullptr);
  Database& db = *App().DatabaseConnection;
  EXPECT_EQ(db.Path(), path);

  QStringList tables;
  platform::SqlStatement list = db.Prepare(
      "SELECT name FROM sqlite_master WHERE type = 'table' AND name <> 'sqlite_sequence' ORDER BY name");
  while (list.Next()) tables << list.Text(0);
  EXPECT_EQ(tables, QStringList({"CD_Songs", "CD_Titles", "FileCaptions", "HelpFile",
                                 "PlaylistFiles", "PlaylistHeader"}));

  // The shipped file holds no albums, captions or discs, only the tour.
  for (const char* table : {"PlaylistHeader", "PlaylistFiles", "FileCaptions", "CD_Titles", "CD_Songs"}) {
    platform::SqlStatement count = db.Prepare(QString("SELECT count(*) FROM ") + table);
    ASSERT_TRUE(count.Next());
    EXPECT_EQ(count.Int(0), 0) << table;
  }

  // Every line that makes the character move or point is there, once, in
  // speaking order; the tour opens before the first gesture.
  QList<qint32> numbers;
  for (const HelpLineRow& line : SelectHelpLines(db)) {
    EXPECT_FALSE(line.HelpText.trimmed().isEmpty()) << line.HelpLine;
    numbers << line.HelpLine;
  }
  EXPECT_EQ(numbers.size(), 26);
  EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
  for (qint32 gesture : {20, 25, 30, 35, 40, 41, 42, 50, 51, 60, 61, 62, 70, 71, 80, 90})
    EXPECT_EQ(numbers.count(gesture), 1) << gesture;
}

TEST_F(DataFile, AFileTheProgramCannotUseStopsTheStartAndStaysAsItWas) {
  const QString path = testenv::ProgramFolder() + "/Vistrel.VRD";
  const QString expected = "Vistrel: The Vistrel data file is missing or corrupted!";

  struct Case {
    const char* name;
    std::function<void()> make;
  };
  QByteArray noise(8192, '\0');
  for (int i = 0; i < noise.size(); ++i) noise[i] = char((i * 7919 + 13) % 251);
  const Case cases[] = {
      {"missing", [] {}},
      {"another password", [&] { MakeKeyedFile(path, "not the password"); }},
      {"random bytes", [&] { testenv::MakeFile(path, noise); }},
      {"empty file", [&] { testenv::MakeFile(path, QByteArray()); }},
      {"plain text", [&] { testenv::MakeFile(path, "PlaylistHeader;PlaylistFiles\n"); }},
      {"folder", [&] { QDir().mkpath(path + "/inside"); }},
  };

  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    QFile::remove(path);
    QDir(path).removeRecursively();
    c.make();
    const QByteArray before = ReadBytes(path);

    MessageRecorder recorder;
    EXPECT_FALSE(OpenDataFile());
    EXPECT_EQ(recorder.messages, QStringList({expected}));
    EXPECT_EQ(App().DatabaseConnection, nullptr);
    EXPECT_EQ(ReadBytes(path), before);
    EXPECT_FALSE(QFileInfo::exists(DataFileTempPath()));

    // Closing after a failed start neither creates nor changes anything.
    CloseDataFile();
    EXPECT_EQ(ReadBytes(path), before);
    EXPECT_FALSE(QFileInfo::exists(DataFileTempPath()));
    EXPECT_EQ(QFileInfo(path).isDir(), QString(c.name) == "folder");
    EXPECT_EQ(QFileInfo::exists(path), QString(c.name) != "missing");
  }
}

TEST_F(DataFile, ClosingCompactsTheFileAndKeepsItsPasswordContentsAndPermissions) {
  const QString path = testenv::InstallDataFile();
  testenv::MakeFile(DataFileTempPath(), "left behind by a crash");
  ASSERT_TRUE(OpenDataFile());
  Database& db = *App().DatabaseConnection;
  QStringList many;
  for (int i = 0; i < 3000; ++i) many << QString("/media/photos/2004/summer/picture %1.jpg").arg(i, 5, 10, QChar('0'));
  const qint32 big = AddAlbum(db, "Big", false);
  ASSERT_TRUE(SavePlaylistFiles(db, big, many));
  const qint32 kept = AddAlbum(db, "Kept", true);
  ASSERT_TRUE(SavePlaylistFiles(db, kept, {"/a.jpg", "/b.png"}));
  CloseDataFile();
  EXPECT_FALSE(QFileInfo::exists(DataFileTempPath()));  // the leftover too
  const qint64 full = QFileInfo(path).size();

  ASSERT_TRUE(OpenDataFile());
  ASSERT_TRUE(DeleteAlbum(*App().DatabaseConnection, big));
  CloseDataFile();
  const qint64 compacted = QFileInfo(path).size();
  EXPECT_LT(compacted, full / 4);
  EXPECT_FALSE(QFileInfo::exists(DataFileTempPath()));
  EXPECT_EQ(QFileInfo(path).permissions(),
            QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser);

  // Still the program's password: another key does not open the copy.
  platform::SqlCipherConnection other;
  ASSERT_TRUE(other.Open(path, "gladeon48173"));
  platform::SqlStatement probe = other.Prepare("SELECT count(*) FROM sqlite_master");
  EXPECT_FALSE(probe.Next());
  EXPECT_EQ(probe.Error(), platform::SqlNotADatabase);
  probe = platform::SqlStatement();
  other.Close();

  ASSERT_TRUE(OpenDataFile());
  Database& again = *App().DatabaseConnection;
  EXPECT_EQ(SelectPlaylistFiles(again, kept), QStringList({"/a.jpg", "/b.png"}));
  EXPECT_TRUE(SelectPlaylistFiles(again, big).isEmpty());
  EXPECT_EQ(SelectHelpLines(again).size(), 26);
  // Identities are not given out again after a compaction.
  EXPECT_EQ(AddAlbum(again, "New", false), kept + 1);
}

TEST_F(DataFile, AFailedCompactionLeavesTheDataFileAsItWas) {
  const QString path = testenv::InstallDataFile();
  ASSERT_TRUE(OpenDataFile());
  const qint32 id = AddAlbum(*App().DatabaseConnection, "Stays", false);
  ASSERT_TRUE(SavePlaylistFiles(*App().DatabaseConnection, id, {"/x.jpg"}));
  delete App().DatabaseConnection;
  App().DatabaseConnection = nullptr;
  const QByteArray before = ReadBytes(path);

  // The copy cannot be written.
  const QString unwritable = testenv::Root() + "/no such folder/MediaTemp.VRD";
  EXPECT_FALSE(CompactDataFile(path, unwritable));
  EXPECT_EQ(ReadBytes(path), before);
  EXPECT_FALSE(QFileInfo::exists(unwritable));

  // A folder stands where the copy would go and cannot be removed.
  testenv::MakeFile(DataFileTempPath() + "/keep.txt", "x");
  CloseDataFile();
  EXPECT_EQ(ReadBytes(path), before);
  EXPECT_TRUE(QFileInfo(DataFileTempPath()).isDir());
  QDir(DataFileTempPath()).removeRecursively();

  // A data file made read-only by its owner is left alone.
  QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadUser);
  if (!QFileInfo(path).isWritable()) {
    CloseDataFile();
    EXPECT_EQ(ReadBytes(path), before);
    EXPECT_FALSE(QFileInfo::exists(DataFileTempPath()));
  }
  QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);

  // A damaged data file is not copied over.
  QByteArray damaged = before;
  for (int i = 2048; i < damaged.size(); ++i) damaged[i] = char(0x5a);
  testenv::MakeFile(path, damaged);
  CloseDataFile();
  EXPECT_EQ(ReadBytes(path), damaged);
  EXPECT_FALSE(QFileInfo::exists(DataFileTempPath()));

  // The good file, put back, still opens with its album.
  testenv::MakeFile(path, before);
  ASSERT_TRUE(OpenDataFile());
  EXPECT_EQ(SelectPlaylistFiles(*App().DatabaseConnection, id), QStringList({"/x.jpg"}));
}
