#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include "platform/Services.h"
#include "platform/SystemMessage.h"
#include "core/AppState.h"
#include "core/DataFile.h"
#include "core/Database.h"
#include "core/Settings.h"
#include "support/TestEnv.h"

namespace {

QByteArray ReadBytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The program folder as an installed one: this user cannot write it (the
// tests run with rights that would write anywhere, so the file system's
// answer is given here).
void ProgramFolderReadOnly() {
  const QString program = testenv::ProgramFolder();
  platform::TheServices().FolderWriteProbe = [program](const QString& folder) {
    return QDir::cleanPath(folder) != QDir::cleanPath(program);
  };
}

QStringList Captions(Database& db) {
  QStringList rows;
  platform::SqlStatement select = db.Prepare("SELECT FileName, FileCaption FROM FileCaptions");
  while (select.Next()) rows << select.Text(0) + "=" + select.Text(1);
  return rows;
}

class DataFilePlace : public testing::Test {
 protected:
  void SetUp() override {
    platform::SetSystemMessageSink(
        [this](const QString& text, const QString& title) { messages << title + ": " + text; });
  }
  void TearDown() override {
    delete App().DatabaseConnection;
    App().DatabaseConnection = nullptr;
  }
  QStringList messages;
};

}  // namespace

TEST_F(DataFilePlace, AWritableProgramFolderKeepsTheFileAndMyMediaBesideTheProgram) {
  const QString program = testenv::ProgramFolder();
  EXPECT_FALSE(DataFileIsPerUser());
  EXPECT_EQ(DataFilePath(), program + "/Vistrel.VRD");
  EXPECT_EQ(DataFileTempPath(), program + "/MediaTemp.VRD");
  EXPECT_EQ(settings::MyMediaFolder(), program + "/MyMedia");

  testenv::InstallDataFile();
  ASSERT_TRUE(OpenDataFile());
  CloseDataFile();
  EXPECT_FALSE(QFileInfo::exists(testenv::Root() + "/data/Vistrel"));
}

TEST_F(DataFilePlace, AReadOnlyProgramFolderGivesEachUserACopyOfTheFreshFileOnce) {
  const QString fresh = testenv::InstallDataFile();
  const QByteArray freshBytes = ReadBytes(fresh);
  ProgramFolderReadOnly();
  const QString user = testenv::Root() + "/data/Vistrel/Vistrel.VRD";
  EXPECT_TRUE(DataFileIsPerUser());
  EXPECT_EQ(DataFilePath(), user);
  EXPECT_EQ(DataFileTempPath(), testenv::Root() + "/data/Vistrel/MediaTemp.VRD");

  // The first start copies the fresh file, readable by this user alone.
  ASSERT_TRUE(OpenDataFile());
  EXPECT_TRUE(messages.isEmpty());
  EXPECT_EQ(App().DatabaseConnection->Path(), user);
  EXPECT_EQ(QFileInfo(user).permissions(),
            QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser);
  EXPECT_FALSE(QFileInfo::exists(user + ".part"));
  ASSERT_TRUE(App().DatabaseConnection->Execute(
      "INSERT INTO FileCaptions (FileName, FileCaption) VALUES ('/p/Zoë''s lake.jpg', 'day; one')"));

  // Compaction works beside the user's file; the program folder is not touched.
  CloseDataFile();
  EXPECT_EQ(ReadBytes(fresh), freshBytes);
  EXPECT_EQ(QDir(testenv::ProgramFolder()).entryList(QDir::Files), QStringList({"Vistrel.VRD"}));
  EXPECT_EQ(QDir(testenv::Root() + "/data/Vistrel").entryList(QDir::Files),
            QStringList({"Vistrel.VRD"}));

  // The next start opens the user's file as it was left, the fresh one
  // never replacing it, even when the fresh one has gone.
  QFile::remove(fresh);
  ASSERT_TRUE(OpenDataFile());
  EXPECT_EQ(Captions(*App().DatabaseConnection), QStringList({"/p/Zoë's lake.jpg=day; one"}));
}

TEST_F(DataFilePlace, NoFreshFileAndNoUserFileStopTheStartWithTheMessage) {
  ProgramFolderReadOnly();
  EXPECT_FALSE(OpenDataFile());
  EXPECT_EQ(messages, QStringList({"Vistrel: The Vistrel data file is missing or corrupted!"}));
  EXPECT_EQ(App().DatabaseConnection, nullptr);
  EXPECT_FALSE(QFileInfo::exists(testenv::Root() + "/data/Vistrel/Vistrel.VRD"));

  // A user file the program cannot open is left as it was, not replaced by
  // the fresh one.
  testenv::InstallDataFile();
  const QString user = testenv::MakeFile(testenv::Root() + "/data/Vistrel/Vistrel.VRD", "not a data file");
  messages.clear();
  EXPECT_FALSE(OpenDataFile());
  EXPECT_EQ(messages, QStringList({"Vistrel: The Vistrel data file is missing or corrupted!"}));
  EXPECT_EQ(ReadBytes(user), QByteArray("not a data file"));
}

TEST_F(DataFilePlace, AProgramInTheSystemsFoldersIsSharedEvenWhenItCouldBeWritten) {
  platform::TheServices().FolderWriteProbe = [](const QString&) { return true; };
  EXPECT_TRUE(ProgramFolderIsShared("/usr/lib/vistrel"));
  EXPECT_TRUE(ProgramFolderIsShared("/opt/vistrel/"));
  EXPECT_TRUE(ProgramFolderIsShared("/usr/local/lib/vistrel"));
  EXPECT_FALSE(ProgramFolderIsShared("/home/ann/vistrel/build/program"));
  EXPECT_FALSE(ProgramFolderIsShared("/usrdata/vistrel"));
  App().ProgramFolder = "/usr/lib/vistrel";
  EXPECT_EQ(DataFilePath(), testenv::Root() + "/data/Vistrel/Vistrel.VRD");
}

TEST_F(DataFilePlace, MyMediaOfAReadOnlyProgramFolderIsThePicturesFolderElseHome) {
  ProgramFolderReadOnly();
  const QString home = testenv::Root() + "/home";
  testenv::MakeFile(testenv::Root() + "/config/user-dirs.dirs", "XDG_PICTURES_DIR=\"$HOME/Bilder\"\n");
  EXPECT_EQ(settings::MyMediaFolder(), home);  // named, but not there
  QDir().mkpath(home + "/Bilder");
  EXPECT_EQ(settings::MyMediaFolder(), home + "/Bilder");
}
