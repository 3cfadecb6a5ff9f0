#include <gtest/gtest.h>

#include <QStringList>

#include "platform/SqlCipherConnection.h"
#include "core/AppState.h"
#include "core/DataFile.h"
#include "core/Database.h"
#include "core/Statements.h"
#include "support/TestEnv.h"

namespace {

class Statements : public testing::Test {
 protected:
  void SetUp() override {
    testenv::InstallDataFile();
    ASSERT_TRUE(OpenDataFile());
  }
  void TearDown() override {
    delete App().DatabaseConnection;
    App().DatabaseConnection = nullptr;
  }
  Database& Db() { return *App().DatabaseConnection; }

  // One number from a statement of the test's own.
  qint64 Number(const QString& sql) {
    platform::SqlStatement statement = Db().Prepare(sql);
    return statement.Next() ? statement.Int(0) : -1;
  }
  // Every row of a statement, its columns joined by "|".
  QStringList Rows(const QString& sql) {
    QStringList rows;
    platform::SqlStatement statement = Db().Prepare(sql);
    while (statement.Next()) {
      QStringList columns;
      for (int i = 0; i < statement.ColumnCount(); ++i) columns << statement.Text(i);
      rows << columns.join('|');
    }
    return rows;
  }
};

// Every field of a disc's title row, joined by "|"; "none" without a row.
QString TitleOf(const QString& disc) {
  const std::optional<CdTitle> t = SelectCdTitle(*App().DatabaseConnection, disc);
  if (!t) return "none";
  return QStringList({QString::number(t->MediaID), t->MediaNumber, QString::number(t->MediaDownloaded),
                      t->MediaTitle, t->MediaArtist, t->MediaStyle, QString::number(t->MediaYear),
                      QString::number(t->MediaTracks), QString::number(t->MediaSequence)})
      .join('|');
}

QStringList Names(const QList<AlbumHeader>& albums) {
  QStringList names;
  for (const AlbumHeader& album : albums) names << album.PlaylistName;
  return names;
}

const QString AwkwardName = QString::fromUtf8("Mum's; \"best\" Ærøskøbing — '); DROP TABLE PlaylistHeader; --");

}  // namespace

TEST_F(Statements, AlbumsKeepAwkwardNamesAndAreListedByNameRegardlessOfCase) {
  const qint32 zoo = AddAlbum(Db(), "zoo", false);
  const qint32 awkward = AddAlbum(Db(), AwkwardName, true);
  const qint32 apple1 = AddAlbum(Db(), "Apple", false);
  const qint32 ete = AddAlbum(Db(), QString::fromUtf8("Été"), false);
  const qint32 banana = AddAlbum(Db(), "banana", false);
  const qint32 apple2 = AddAlbum(Db(), "Apple", true);  // two albums of one name are allowed
  EXPECT_EQ(QList<qint32>({zoo, ete, banana}), QList<qint32>({1, 4, 5}));
  // A header of another type is not one of the program's albums.
  ASSERT_TRUE(Db().Execute("INSERT INTO PlaylistHeader (PlaylistName, PlaylistType) VALUES ('Aaa', 'C')"));

  const QList<AlbumHeader> albums = SelectAlbumHeaders(Db());
  EXPECT_EQ(Names(albums), QStringList({"Apple", "Apple", "banana", QString::fromUtf8("Été"),
                                        AwkwardName, "zoo"}));
  ASSERT_EQ(albums.size(), 6);
  EXPECT_EQ(albums[0].PlaylistID, apple1);
  EXPECT_EQ(albums[1].PlaylistID, apple2);
  EXPECT_EQ(albums[4].PlaylistID, awkward);

  const auto properties = SelectAlbumProperties(Db(), awkward);
  ASSERT_TRUE(properties.has_value());
  EXPECT_EQ(properties->PlaylistName, AwkwardName);
  EXPECT_TRUE(properties->PlaylistPreventDuplicates);

  EXPECT_TRUE(UpdateAlbumProperties(Db(), awkward, "Holiday's end", false));
  EXPECT_EQ(SelectAlbumProperties(Db(), awkward)->PlaylistName, "Holiday's end");
  EXPECT_FALSE(UpdateAlbumProperties(Db(), 99, "nobody", true));
}

TEST_F(Statements, SavingAnAlbumReplacesItsEntriesInOrderAndAFailureKeepsTheOldOnes) {
  const qint32 id = AddAlbum(Db(), "Trip", false);
  const qint32 other = AddAlbum(Db(), "Other", false);
  ASSERT_TRUE(SavePlaylistFiles(Db(), other, {"/other/one.jpg"}));

  const QStringList first = {"/photos/zebra.jpg", "/photos/Bob's \"best\"; shot.jpg",
                             QString::fromUtf8("/фото/ёлка.png"), "/photos/apple.gif"};
  ASSERT_TRUE(SavePlaylistFiles(Db(), id, first));
  EXPECT_EQ(SelectPlaylistFiles(Db(), id), first);
  EXPECT_EQ(Rows("SELECT DISTINCT PlaylistRow, PlaylistSelected FROM PlaylistFiles"), QStringList({"0|0"}));

  const QStringList second = {"/music/b.mp3", "/music/a.mp3"};
  ASSERT_TRUE(SavePlaylistFiles(Db(), id, second));
  EXPECT_EQ(SelectPlaylistFiles(Db(), id), second);
  EXPECT_EQ(SelectPlaylistFiles(Db(), other), QStringList({"/other/one.jpg"}));

  // A row that the file refuses half-way: nothing of the new list stays.
  ASSERT_TRUE(Db().Execute(
      "CREATE TEMP TRIGGER RefuseBad BEFORE INSERT ON PlaylistFiles WHEN NEW.PlaylistFile = '/bad' "
      "BEGIN SELECT RAISE(ABORT, 'refused'); END"));
  EXPECT_FALSE(SavePlaylistFiles(Db(), id, {"/new/1.jpg", "/bad", "/new/2.jpg"}));
  EXPECT_EQ(SelectPlaylistFiles(Db(), id), second);
  // The connection is usable afterwards: no transaction was left open.
  ASSERT_TRUE(SavePlaylistFiles(Db(), id, {}));
  EXPECT_TRUE(SelectPlaylistFiles(Db(), id).isEmpty());
}

TEST_F(Statements, DeletingAnAlbumRemovesItsEntriesFirstThenItsHeader) {
  const qint32 gone = AddAlbum(Db(), "Gone", false);
  const qint32 stays = AddAlbum(Db(), "Stays", false);
  ASSERT_TRUE(SavePlaylistFiles(Db(), gone, {"/a.jpg", "/b.jpg"}));
  ASSERT_TRUE(SavePlaylistFiles(Db(), stays, {"/c.jpg"}));
  ASSERT_TRUE(Db().Execute(
      "CREATE TEMP TABLE Deleted (What TEXT);"
      "CREATE TEMP TRIGGER FileGone AFTER DELETE ON PlaylistFiles "
      "BEGIN INSERT INTO Deleted VALUES ('file ' || OLD.PlaylistFile); END;"
      "CREATE TEMP TRIGGER HeaderGone AFTER DELETE ON PlaylistHeader "
      "BEGIN INSERT INTO Deleted VALUES ('header ' || OLD.PlaylistName); END;"));

  EXPECT_TRUE(DeleteAlbum(Db(), gone));
  EXPECT_EQ(Rows("SELECT What FROM Deleted ORDER BY rowid"),
            QStringList({"file /a.jpg", "file /b.jpg", "header Gone"}));
  EXPECT_EQ(Names(SelectAlbumHeaders(Db())), QStringList({"Stays"}));
  EXPECT_EQ(SelectPlaylistFiles(Db(), stays), QStringList({"/c.jpg"}));
  EXPECT_EQ(Number("SELECT count(*) FROM PlaylistFiles"), 1);
}

TEST_F(Statements, CaptionsAreAddedChangedDeletedAndFollowARename) {
  EXPECT_EQ(SelectFileCaption(Db(), "beach.jpg"), "");
  EXPECT_TRUE(SaveFileCaption(Db(), "beach.jpg", ""));  // empty and no row: nothing
  EXPECT_EQ(Number("SELECT count(*) FROM FileCaptions"), 0);

  const QString caption = QString::fromUtf8("Sunset at Ærø; \"golden\" hour, it's lovely");
  EXPECT_TRUE(SaveFileCaption(Db(), "beach.jpg", caption));
  EXPECT_TRUE(SaveFileCaption(Db(), "hill.jpg", "Hill"));
  EXPECT_EQ(SelectFileCaption(Db(), "beach.jpg"), caption);
  EXPECT_TRUE(SaveFileCaption(Db(), "beach.jpg", "Changed"));
  EXPECT_EQ(Rows("SELECT FileName, FileCaption FROM FileCaptions ORDER BY rowid"),
            QStringList({"beach.jpg|Changed", "hill.jpg|Hill"}));

  EXPECT_TRUE(RenameFileCaption(Db(), "beach.jpg", "/new/Bob's beach.jpg"));
  EXPECT_EQ(SelectFileCaption(Db(), "beach.jpg"), "");
  EXPECT_EQ(Rows("SELECT FileName FROM FileCaptions ORDER BY rowid"),
            QStringList({"/new/Bob's beach.jpg", "hill.jpg"}));
  EXPECT_TRUE(RenameFileCaption(Db(), "nothing.jpg", "other.jpg"));  // no row: nothing changes
  EXPECT_EQ(Number("SELECT count(*) FROM FileCaptions WHERE FileName = 'other.jpg'"), 0);

  EXPECT_TRUE(SaveFileCaption(Db(), "hill.jpg", ""));
  EXPECT_EQ(Rows("SELECT FileName FROM FileCaptions"), QStringList({"/new/Bob's beach.jpg"}));
}

TEST_F(Statements, ARenamedFileTakesItsAlbumEntriesAndCaptionAlongApostropheOrNot) {
  const QString old = "/pics/Ann's beach.jpg";
  const QString renamed = "/pics/Bob's beach.jpg";
  ASSERT_TRUE(SavePlaylistFiles(Db(), 1, {"/pics/a.jpg", old, "/pics/Ann's beach.jpg.bak"}));
  ASSERT_TRUE(SavePlaylistFiles(Db(), 2, {old}));
  // Captions are kept under the bare name without apostrophes.
  ASSERT_TRUE(Db().Execute("INSERT INTO FileCaptions VALUES ('Bobs beach.jpg', 'Left behind')"));
  ASSERT_TRUE(Db().Execute("INSERT INTO FileCaptions VALUES ('Anns beach.jpg', 'Sand')"));
  ASSERT_TRUE(Db().Execute("INSERT INTO FileCaptions VALUES ('a.jpg', 'A')"));

  EXPECT_TRUE(FollowRenamedFile(Db(), old, renamed));
  EXPECT_EQ(SelectPlaylistFiles(Db(), 1),
            QStringList({"/pics/a.jpg", renamed, "/pics/Ann's beach.jpg.bak"}));
  EXPECT_EQ(SelectPlaylistFiles(Db(), 2), QStringList({renamed}));
  EXPECT_EQ(Rows("SELECT FileName, FileCaption FROM FileCaptions ORDER BY rowid"),
            QStringList({"Bobs beach.jpg|Sand", "a.jpg|A"}));

  // A move keeps the name and the caption; a file without rows changes
  // nothing, and keeps a caption that stands under the new name.
  EXPECT_TRUE(FollowRenamedFile(Db(), "/pics/a.jpg", "/other/a.jpg"));
  EXPECT_TRUE(FollowRenamedFile(Db(), "/pics/none.jpg", "/pics/b.jpg"));
  EXPECT_EQ(Rows("SELECT FileName, FileCaption FROM FileCaptions ORDER BY rowid"),
            QStringList({"Bobs beach.jpg|Sand", "a.jpg|A"}));
  EXPECT_EQ(SelectPlaylistFiles(Db(), 1),
            QStringList({"/other/a.jpg", renamed, "/pics/Ann's beach.jpg.bak"}));
}

TEST_F(Statements, AKeyWithAnApostropheFindsAndWritesNothing) {
  // Such rows can only come from elsewhere; the program never finds them.
  ASSERT_TRUE(Db().Execute("INSERT INTO FileCaptions VALUES ('Bob''s.jpg', 'There')"));
  ASSERT_TRUE(Db().Execute("INSERT INTO CD_Titles (MediaNumber) VALUES ('A1''B2')"));

  EXPECT_EQ(SelectFileCaption(Db(), "Bob's.jpg"), "");
  EXPECT_FALSE(SaveFileCaption(Db(), "Bob's.jpg", "Changed"));
  EXPECT_FALSE(SaveFileCaption(Db(), "Ann's.jpg", "New"));
  EXPECT_FALSE(RenameFileCaption(Db(), "Bob's.jpg", "bob.jpg"));
  EXPECT_EQ(Rows("SELECT FileName, FileCaption FROM FileCaptions"), QStringList({"Bob's.jpg|There"}));

  EXPECT_FALSE(SelectCdTitle(Db(), "A1'B2").has_value());
  EXPECT_EQ(SelectCdMediaId(Db(), "A1'B2"), 0);
  EXPECT_EQ(AddCdTitle(Db(), "C3'D4", 5), 0);
  EXPECT_EQ(Number("SELECT count(*) FROM CD_Titles"), 1);
}

TEST_F(Statements, ADiscIsAddedLookedUpAndItsTracksRewritten) {
  const QString disc = "7F0A2C09";
  EXPECT_EQ(SelectCdMediaId(Db(), disc), 0);
  const qint32 id = AddCdTitle(Db(), disc, 9);
  EXPECT_EQ(SelectCdMediaId(Db(), disc), 1);
  EXPECT_EQ(TitleOf(disc), "1|7F0A2C09|0||||0|9|0");

  // Tracks given out of order are listed by track number.
  ASSERT_TRUE(AddCdSongs(Db(), id, {{2, "", true, "Second"}, {1, "", false, QString::fromUtf8("Première")},
                                    {3, "", true, "Don't stop"}}));
  EXPECT_EQ(SelectCdSongTitles(Db(), id),
            QStringList({QString::fromUtf8("Première"), "Second", "Don't stop"}));
  // A disc that has its rows gets no second set.
  EXPECT_FALSE(AddCdSongs(Db(), id, {{1, "", false, "Again"}}));
  EXPECT_EQ(SelectCdSongTitles(Db(), id).size(), 3);

  // The ticks come back in the order the rows were written, and the rows go.
  EXPECT_EQ(TakeCdSongSelections(Db(), id), QList<bool>({true, false, true}));
  EXPECT_TRUE(SelectCdSongTitles(Db(), id).isEmpty());
  ASSERT_TRUE(AddCdSongs(Db(), id, {{1, "", true, "One"}, {2, "", false, "Two"}}));
  EXPECT_EQ(Rows("SELECT MediaID, SongTrack, SongNumber, SongSelected, SongTitle FROM CD_Songs ORDER BY rowid"),
            QStringList({"1|1||1|One", "1|2||0|Two"}));

  EXPECT_TRUE(UpdateCdTitle(Db(), id, "Blue", "The Band", "Rock", 1998));
  EXPECT_EQ(TitleOf(disc), "1|7F0A2C09|1|Blue|The Band|Rock|1998|9|0");
  EXPECT_FALSE(UpdateCdTitle(Db(), 77, "x", "y", "z", 1));
}
