// The file search over the hostile collection (support/HostileFiles.h):
// links that loop and a locked folder end the walk instead of holding it,
// awkward names come back as they are, and an album of them reads back.

#include <gtest/gtest.h>
#include <unistd.h>

#include <QFile>

#include "albums/SearchEngine.h"
#include "catalogue/MediaTypes.h"
#include "core/AppState.h"
#include "core/DataFile.h"
#include "core/Database.h"
#include "core/Statements.h"
#include "support/HostileFiles.h"
#include "support/TestEnv.h"

namespace {

class HostileSearchTest : public testing::Test {
 protected:
  void SetUp() override {
    FillMediaTables();
    // An ordinary user must reach the collection (see Search).
    QFile::setPermissions(testenv::Root(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                               QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther |
                                               QFile::ExeOther);
    root_ = hostile::MakeHostileFiles(testenv::Root() + "/hostile");
  }
  void TearDown() override {
    delete App().DatabaseConnection;
    App().DatabaseConnection = nullptr;
    hostile::RemoveHostileFiles(root_);
  }

  // The paths found, sorted: the order within a folder is the file
  // system's. The superuser, who could open the locked folder, searches
  // with the rights of an ordinary user, so that both find the same.
  QStringList Search(const QString& patterns, int* count) {
    QStringList found;
    SearchSink sink;
    sink.Found = [&found](const QString& path) { found << path; };
    sink.Count = [count](int c) { *count = c; };
    const bool drop = ::geteuid() == 0;
    if (drop && ::seteuid(65534) != 0) return {"(no ordinary user)"};
    const bool ran = SearchFiles(root_, patterns, false, sink);
    if (drop && ::seteuid(0) != 0) return {"(superuser not back)"};
    if (!ran) return {"(refused)"};
    found.sort();
    return found;
  }

  QString root_;
};

TEST_F(HostileSearchTest, TheWalkEndsWithEachFileOnceAndNamesAsTheyAre) {
  int count = -1;
  const QStringList found = Search(SearchPatternList("*", 0), &count);
  QStringList expected;
  for (const char* name :
       {"a;b.png", "bad-\uFFFD.png", "cut.bmp", "cut.emf", "cut.gif", "cut.ico", "cut.jpg", "cut.pcx",
        "cut.png", "cut.tif", "cut.wmf", "cut.xif", "empty.avi", "empty.mp3", "empty.png", "good.png",
        "it's.png", "say \"cheese\".png", "sub/deep.png", "torn.bmp", "torn.emf", "torn.gif", "torn.ico",
        "torn.jpg", "torn.pcx", "torn.png", "torn.tif", "torn.wmf", "torn.xif", "two\nlines.png",
        "\u00C6r\u00F8 \u00E9t\u00E9.png"})
    expected << root_ + "/" + QString::fromUtf8(name);
  EXPECT_EQ(found, expected);
  EXPECT_EQ(count, 31);
  EXPECT_FALSE(SearchRunning());

  // Names with quotes and letters beyond ASCII match as typed; ";" separates
  // the patterns, so "?" stands for it.
  EXPECT_EQ(Search("a?b.png;it'*.png;*\"cheese\"*.png;\u00E6R\u00D8*.png;", &count),
            QStringList({root_ + "/a;b.png", root_ + "/it's.png", root_ + "/say \"cheese\".png",
                         root_ + "/\u00C6r\u00F8 \u00E9t\u00E9.png"}));

  // An album of what was found reads back row for row after the data file
  // is opened again; so does its name.
  testenv::InstallDataFile();
  ASSERT_TRUE(OpenDataFile());
  const QString name = "It's \"found\"; \u00C6r\u00F8";
  const qint32 album = SaveAlbum(*App().DatabaseConnection, 0, name, false, found);
  ASSERT_GT(album, 0);
  delete App().DatabaseConnection;
  App().DatabaseConnection = nullptr;
  ASSERT_TRUE(OpenDataFile());
  EXPECT_EQ(SelectPlaylistFiles(*App().DatabaseConnection, album), expected);
  const std::optional<AlbumProperties> properties = SelectAlbumProperties(*App().DatabaseConnection, album);
  ASSERT_TRUE(properties.has_value());
  EXPECT_EQ(properties->PlaylistName, name);
}

}  // namespace
