#include <gtest/gtest.h>
#include <unistd.h>

#include <QDir>
#include <QFile>

#include "browser/FileListBox.h"
#include "browser/Listing.h"
#include "catalogue/MediaTypes.h"
#include "platform/DirectoryReader.h"
#include "core/AppState.h"
#include "core/Settings.h"
#include "support/TestEnv.h"

namespace {

QString MakeFolder(const QString& name) {
  const QString folder = testenv::Root() + "/" + name;
  QDir().mkpath(folder);
  return folder;
}

void Touch(const QString& folder, const QString& name, int length = 0) {
  testenv::MakeFile(folder + "/" + name, QByteArray(length, 'x'));
}

// Runs the listing of the current folder or album the way the browser does.
QList<int> ListNow(Listing& listing, const QStringList& albumRows = {}, QString keyFolder = {}) {
  if (keyFolder.isNull()) keyFolder = App().CurrentFolder;
  QList<int> listed;
  listing.BuildLists(keyFolder, [&] { return albumRows; }, [&](int tab) { listed.append(tab); });
  return listed;
}

// Reads the selection from the settings, then lists the folder.
QList<int> ListFolder(Listing& listing, const QString& folder) {
  App().CurrentFolder = folder;
  listing.ReadSelection();
  return ListNow(listing);
}

class ListingTest : public testing::Test {
 protected:
  void SetUp() override {
    FillMediaTables();
    FillExteriorTables();
  }
};

}  // namespace

TEST_F(ListingTest, PatternsFollowTheMasksWithLaterPositionsInFront) {
  EXPECT_EQ(PicturesPattern("11111111000000000001"),
            "*.ico;*.cur;*.xif;*.pcx;*.tif;*.jfx;*.png;*.mng;*.wmf;*.emf;*.jpe;*.jpg;*.jpeg;"
            "*.gif;*.bmp;*.dib;*.rle;*.xbm;");
  EXPECT_EQ(PicturesPattern("01000000000000000000"), "*.gif;");
  // A short mask reads as unset beyond its end.
  EXPECT_EQ(PicturesPattern("001"), "*.jpe;*.jpg;*.jpeg;");

  const QStringList exterior = MediaTables().ExteriorVideoExtensions;
  // Position 4 (Real video) adds nothing: the exterior masks are always there.
  EXPECT_EQ(VideosPattern("11110000000000000000", exterior),
            "*.wmv;*.asx;*.mpg;*.mpeg;*.mpe;*.m1v;*.mpv;*.mps;*.avi;*.ivf;"
            "*.flv;*.mp4;*.rm;*.ram;*.mov;");
  EXPECT_EQ(VideosPattern("00000000000000000000", exterior), "*.flv;*.mp4;*.rm;*.ram;*.mov;");
  // Position 6 (Real audio) adds nothing either.
  EXPECT_EQ(AudiosPattern("11111100000000000000"),
            "*.mid;*.rmi;*.cda;*.wma;*.asf;*.wav;*.mp3;*.mp1;*.mp2;*.mpa;");
  EXPECT_EQ(AudiosPattern("00000100000000000000"), "");
}

TEST_F(ListingTest, ReadSelectionTakesTheSettingsAndTheDocumentsPatternGrowsEachTime) {
  settings::SaveSetting("SelectPictures", "00100000000000000000");
  Listing listing;
  listing.ReadSelection();
  EXPECT_EQ(listing.Tab(PicturesTab).Pattern, "*.jpe;*.jpg;*.jpeg;");
  const QString six = "*.txt;*.text;*.rdf;*.doc;*.docx;*.pdf;";
  EXPECT_EQ(listing.Tab(DocumentsTab).Pattern, six);
  listing.ReadSelection();
  EXPECT_EQ(listing.Tab(DocumentsTab).Pattern, six + six);
  EXPECT_EQ(listing.Tab(PicturesTab).Pattern, "*.jpe;*.jpg;*.jpeg;");
}

TEST_F(ListingTest, MasksMatchWithoutRegardToCaseAndOnlyWhatTheyName) {
  EXPECT_TRUE(MatchesMask("PHOTO.JPG", "*.jpg"));
  EXPECT_TRUE(MatchesMask("Ärger.JPEG", "*.jpeg"));
  EXPECT_TRUE(MatchesMask("Scan.TIFF", "*.tif"));
  EXPECT_FALSE(MatchesMask("x.jp", "*.jpg"));
  EXPECT_FALSE(MatchesMask("x.jpg.bak", "*.jpg"));
  EXPECT_FALSE(MatchesMask(".jpg", "*.jpgx"));
  EXPECT_TRUE(MatchesMask("a1b.txt", "a?b*"));
  EXPECT_FALSE(MatchesMask("ab.txt", "a?b*"));
  EXPECT_TRUE(MatchesMask("noextension", "*.*"));
}

TEST_F(ListingTest, FolderListingKeepsOrdinaryVisibleFilesInCaseInsensitiveOrder) {
  const QString folder = MakeFolder("awkward names");
  for (const char* name : {"zeta.JPG", "b'c.jpg", "a;b.png", "my photo.gif", "Ärger.jpg", "PHOTO.JPG",
                           "photo.jpg", ".hidden.jpg", "clip.ram", "song.MP3", "notes.txt", "x.jpeg.bak"})
    Touch(folder, QString::fromUtf8(name));
  QDir(folder).mkdir("folder.jpg");
  QFile::link(folder + "/folder.jpg", folder + "/linked folder.jpg");
  QFile::link(folder + "/zeta.JPG", folder + "/alias.jpg");

  Listing listing;
  EXPECT_EQ(ListFolder(listing, folder), QList<int>({1, 2, 3, 4}));

  // Name order ascending takes the listing as it comes, scratch "" behind.
  EXPECT_EQ(App().PictureFiles(),
            QStringList({"a;b.png", "alias.jpg", "b'c.jpg", "my photo.gif", "PHOTO.JPG", "photo.jpg",
                         "zeta.JPG", QString::fromUtf8("Ärger.jpg"), ""}));
  EXPECT_EQ(listing.Tab(PicturesTab).Count, 8);
  EXPECT_EQ(App().VideoFiles(), QStringList({"clip.ram", ""}));
  EXPECT_EQ(App().AudioFiles(), QStringList({"song.MP3", ""}));
  EXPECT_EQ(App().DocumentFiles(), QStringList({"notes.txt", ""}));
  EXPECT_EQ(TabToShow(listing.Tabs), PicturesTab);

  // Name order descending sorts, and the ";" name loses its front.
  settings::SaveTrueFalse("SortDescending", true);
  ListFolder(listing, folder);
  EXPECT_EQ(App().PictureFiles(),
            QStringList({QString::fromUtf8("Ärger.jpg"), "zeta.JPG", "photo.jpg", "PHOTO.JPG",
                         "my photo.gif", "b'c.jpg", "alias.jpg", "b.png", ""}));
}

TEST_F(ListingTest, LengthAndExtensionOrdersReadTheKeyFolder) {
  const QString folder = MakeFolder("sizes");
  for (const auto& [name, length] :
       {std::pair{"b.jpg", 10}, {"a.jpg", 10}, {"c.gif", 3}, {"d.png", 2000}, {"e.BMP", 1}})
    Touch(folder, name, length);
  settings::SaveSetting("SortOrder", "4");
  Listing listing;
  ListFolder(listing, folder);
  EXPECT_EQ(App().PictureFiles().mid(0, 5), QStringList({"e.BMP", "c.gif", "a.jpg", "b.jpg", "d.png"}));

  settings::SaveTrueFalse("SortDescending", true);
  ListFolder(listing, folder);
  EXPECT_EQ(App().PictureFiles(), QStringList({"d.png", "b.jpg", "a.jpg", "c.gif", "e.BMP", ""}));

  // When the key folder is a shortened caption, no length is found: the
  // entries stay without key and fall back to name order.
  ListNow(listing, {}, "/ .../sizes");
  EXPECT_EQ(App().PictureFiles(), QStringList({"e.BMP", "d.png", "c.gif", "b.jpg", "a.jpg", ""}));

  settings::SaveSetting("SortOrder", "2");
  settings::SaveTrueFalse("SortDescending", false);
  ListFolder(listing, folder);
  EXPECT_EQ(App().PictureFiles().mid(0, 5), QStringList({"e.BMP", "c.gif", "a.jpg", "b.jpg", "d.png"}));
}

TEST_F(ListingTest, AFolderThatCantBeReadLeavesThePreviousList) {
  const QString good = MakeFolder("good");
  Touch(good, "kept.jpg");
  const QString locked = MakeFolder("locked");
  Touch(locked, "secret.jpg");
  QFile::setPermissions(locked, QFileDevice::Permissions());
  Listing listing;
  ListFolder(listing, good);
  ASSERT_EQ(App().PictureFiles(), QStringList({"kept.jpg", ""}));

  // A folder that is gone, a file, and (unless the superuser runs this) a
  // folder without read permission.
  QStringList bad = {testenv::Root() + "/missing", good + "/kept.jpg"};
  if (::geteuid() != 0) bad << locked;
  for (const QString& folder : bad) {
    App().CurrentFolder = folder;
    ListNow(listing);
    EXPECT_EQ(App().PictureFiles(), QStringList({"kept.jpg", ""})) << folder.toStdString();
  }
}

TEST_F(ListingTest, AFileAddedAfterwardsAppearsOnlyWithTheNextListing) {
  const QString folder = MakeFolder("growing");
  Touch(folder, "one.txt");
  FileListBox file1;
  file1.SetPath(folder);
  file1.SetPattern("*.txt");
  EXPECT_EQ(file1.ListCount(), 0);  // nothing read yet
  file1.Refresh();
  EXPECT_EQ(file1.ListCount(), 1);
  Touch(folder, "two.txt");
  file1.SetPattern("*.txt;*.txt");
  EXPECT_EQ(file1.Names(), QStringList({"one.txt"}));
  file1.Refresh();
  EXPECT_EQ(file1.Names(), QStringList({"one.txt", "two.txt"}));
  EXPECT_EQ(file1.List(2), "");
  file1.SetPattern("");
  EXPECT_EQ(file1.ListCount(), 0);
}

TEST_F(ListingTest, AlbumRowsKeepTheirOrderAndRepeatsAndDropOtherKinds) {
  const QString folder = MakeFolder("last folder");
  Touch(folder, "readme.txt");
  Touch(folder, "b.jpg");
  Listing listing;
  ListFolder(listing, folder);

  App().AlbumMode = true;
  App().CurrentFolder = "Holiday";
  settings::SaveSetting("SortOrder", "4");
  listing.ReadSelection();
  const QStringList rows = {"/p/z.jpg", "", "/p/a.mp3", "/p/z.jpg", "/p/clip.rm", "/p/icon.ICO",
                            "/p/movie.mp4", "/p/notes.txt", "/p/page.html", "/p/a.jpg"};
  EXPECT_EQ(ListNow(listing, rows, "Holiday"), QList<int>({1, 2, 3, 4}));
  EXPECT_EQ(App().PictureFiles(), QStringList({"/p/z.jpg", "/p/z.jpg", "/p/icon.ICO", "/p/a.jpg", ""}));
  EXPECT_EQ(App().VideoFiles(), QStringList({"/p/movie.mp4", ""}));
  EXPECT_EQ(App().AudioFiles(), QStringList({"/p/a.mp3", ""}));
  // Documents are those of the folder shown last, as bare names.
  EXPECT_EQ(listing.Tab(DocumentsTab).Count, 1);
  EXPECT_EQ(App().DocumentFiles()[0], "readme.txt");
  EXPECT_EQ(listing.Tab(PicturesTab).Count, 4);
}

TEST_F(ListingTest, ScrollMaxHasOneStepAPageAndSkipsTheLastAtPageSizeOne) {
  EXPECT_EQ(ScrollMax(0, 40), 0);
  EXPECT_EQ(ScrollMax(40, 40), 0);   // exact multiple: no empty last page
  EXPECT_EQ(ScrollMax(41, 40), 1);
  EXPECT_EQ(ScrollMax(2, 1), 0);
  EXPECT_EQ(ScrollMax(3, 1), 1);
  EXPECT_EQ(ScrollMax(5, 0), 3);  // a page size not yet set counts as one
}

TEST_F(ListingTest, ListsBeyondThirtyTwoThousandEntriesWorkWithTwoCallsAFile) {
  const QString folder = MakeFolder("many");
  const int count = 33000;
  for (int i = 0; i < count; ++i) {
    QFile file(folder + QString::asprintf("/f%05d.jpg", i));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  App().CurrentFolder = folder;
  settings::SaveSetting("SortOrder", "4");
  settings::SaveTrueFalse("SortDescending", true);
  Listing listing;
  listing.ReadSelection();
  platform::ResetFileSystemCallCount();
  ListNow(listing);
  EXPECT_LE(platform::FileSystemCallCount(), quint64(2 * count + 2));
  EXPECT_EQ(listing.Tab(PicturesTab).Count, count);
  ASSERT_EQ(App().PictureFiles().size(), count + 1);
  EXPECT_EQ(App().PictureFiles()[0], "f32999.jpg");
  EXPECT_EQ(App().PictureFiles()[count - 1], "f00000.jpg");
  EXPECT_EQ(ScrollMax(count, 40), 824);
}
