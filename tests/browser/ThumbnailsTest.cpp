#include <gtest/gtest.h>

#include <QDir>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QListWidget>
#include <QScrollBar>
#include <QTabWidget>

#include "browser/PageTexts.h"
#include "browser/Thumbnails.h"
#include "catalogue/MediaTypes.h"
#include "shell/AppState.h"
#include "shell/CommandBar.h"
#include "shell/DataFile.h"
#include "shell/Database.h"
#include "shell/Statements.h"
#include "shell/Settings.h"
#include "support/TestEnv.h"

namespace {

QString MakeFolderWith(const QString& name, const QStringList& files) {
  const QString folder = testenv::Root() + "/" + name;
  QDir().mkpath(folder);
  for (const QString& file : files) testenv::MakeFile(folder + "/" + file, QByteArray());
  return folder;
}

QStringList Captions(const Thumbnails& window) {
  QStringList captions;
  for (int i = 0; i < window.ThumbnailTabs->count(); ++i) captions << window.ThumbnailTabs->tabText(i);
  return captions;
}

QStringList PageNames(const QListWidget* page) {
  QStringList names;
  for (int i = 0; i < page->count(); ++i) names << page->item(i)->text();
  return names;
}

class ThumbnailsTest : public testing::Test {
 protected:
  void SetUp() override { FillMediaTables(); }
};

}  // namespace

TEST(PageTexts, CountsAreGroupedByThousands) {
  EXPECT_EQ(TabCaption(PicturesTab, 0), "Pictures (0)");
  EXPECT_EQ(TabCaption(DocumentsTab, 1234567), "Documents (1,234,567)");
  EXPECT_EQ(EmptyCountText(AudiosTab), "0 audio files available");
  EXPECT_EQ(PageCountText(PicturesTab, 40, 40, 100), "41 to 80 of 100 picture files");
  EXPECT_EQ(PageCountText(VideosTab, 39960, 40, 40000), "39,961 to 40,000 of 40,000 video files");
  EXPECT_EQ(PageCountText(DocumentsTab, 0, 10, 3), "1 to 3 of 3 document files");
}

TEST(PageSizes, CountCellsAcrossAndDown) {
  // 9000 twips wide, 4440 high, inch cells: 6 across, 3 down; icon rows of
  // 540 twips: 8 rows in two columns.
  const PageSizes sizes = PageSizesFor(9000, 4440, 1440);
  EXPECT_EQ(sizes.Pictures, 18);
  EXPECT_EQ(sizes.Lists, 16);
  // A window too small for one cell still has one picture cell, and one
  // row in each of the two columns of names.
  const PageSizes tiny = PageSizesFor(100, 100, 2880);
  EXPECT_EQ(tiny.Pictures, 1);
  EXPECT_EQ(tiny.Lists, 2);
}

TEST_F(ThumbnailsTest, LoadListsTheDefaultFolderAndCaptionsCarryTheCounts) {
  const QString folder = MakeFolderWith(
      "media", {"b.jpg", "a.PNG", "c.gif", "clip.avi", "tune.mp3", "tune2.wav", "letter.doc"});
  settings::SaveSetting("DefaultFolder", folder);
  Thumbnails window;
  window.Form_Load();

  EXPECT_EQ(App().CurrentFolder, folder);
  EXPECT_EQ(window.Bar()->DirectoryCaption(), folder);
  EXPECT_EQ(Captions(window),
            QStringList({"Pictures (3)", "Videos (1)", "Audios (2)", "Documents (1)"}));
  EXPECT_EQ(window.CurrentTab(), PicturesTab);
  EXPECT_EQ(PageNames(window.Pages[0]), QStringList({"a.PNG", "b.jpg", "c.gif"}));
  EXPECT_EQ(window.CountLabel[0]->text(), "1 to 3 of 3 picture files");
  EXPECT_EQ(window.CountLabel[2]->text(), "1 to 2 of 2 audio files");
  EXPECT_FALSE(window.CountLabel[0]->isHidden());
  EXPECT_TRUE(window.CountLabel[2]->isHidden());
  EXPECT_FALSE(window.ThumbnailSize->isHidden());
  EXPECT_DOUBLE_EQ(window.ThumbnailSize->value(), 1.0);
  EXPECT_TRUE(QDir(App().ProgramFolder + "/MyMedia").exists());
}

TEST_F(ThumbnailsTest, AMissingDefaultFolderFallsBackToMyMediaWhichIsEmpty) {
  settings::SaveSetting("DefaultFolder", testenv::Root() + "/gone");
  Thumbnails window;
  window.Form_Load();
  EXPECT_EQ(App().CurrentFolder, App().ProgramFolder + "/MyMedia");
  EXPECT_EQ(Captions(window), QStringList({"Pictures (0)", "Videos (0)", "Audios (0)", "Documents (0)"}));
  EXPECT_EQ(window.CountLabel[0]->text(), "0 picture files available");
  EXPECT_EQ(window.CountLabel[3]->text(), "0 document files available");
  EXPECT_EQ(window.CurrentTab(), PicturesTab);
  EXPECT_TRUE(window.ThumbnailSize->isHidden());
}

TEST_F(ThumbnailsTest, AFolderOfDocumentsOpensOnDocumentsWithTheFirstSelected) {
  settings::SaveSetting("DefaultFolder", MakeFolderWith("start", {"x.jpg"}));
  Thumbnails window;
  window.Form_Load();
  App().CurrentFolder = MakeFolderWith("papers", {"b.pdf", "a.txt"});
  window.ChangeDirectory();
  EXPECT_EQ(window.CurrentTab(), DocumentsTab);
  EXPECT_EQ(window.ThumbnailTabs->currentIndex(), 3);
  EXPECT_EQ(Captions(window), QStringList({"Pictures (0)", "Videos (0)", "Audios (0)", "Documents (2)"}));
  EXPECT_EQ(PageNames(window.Pages[3]), QStringList({"a.txt", "b.pdf"}));
  EXPECT_EQ(window.Pages[3]->currentRow(), 0);
  EXPECT_FALSE(window.CountLabel[3]->isHidden());
  EXPECT_TRUE(window.CountLabel[0]->isHidden());
}

TEST_F(ThumbnailsTest, PagesTurnThroughTheScrollBar) {
  QStringList names;
  for (int i = 0; i < 25; ++i) names << QString::asprintf("n%02d.txt", i);
  settings::SaveSetting("DefaultFolder", MakeFolderWith("many", names));
  Thumbnails window;
  window.resize(600, 400);
  window.Form_Load();
  TabState& documents = window.Tab(DocumentsTab);
  const int pageSize = documents.PageSize;
  ASSERT_GT(pageSize, 1);
  ASSERT_LT(pageSize, 25);
  EXPECT_EQ(window.VScroll[3]->maximum(), ScrollMax(25, qint16(pageSize)));

  window.VScroll[3]->setValue(1);
  EXPECT_EQ(documents.PageStart, pageSize);
  EXPECT_EQ(App().CurrentDocument, pageSize);
  EXPECT_EQ(window.Pages[3]->item(0)->text(), names[pageSize]);
  EXPECT_EQ(window.CountLabel[3]->text(),
            PageCountText(DocumentsTab, pageSize, qint16(pageSize), 25));

  // A new listing brings every tab back to its first page.
  window.ChangePattern();
  EXPECT_EQ(window.VScroll[3]->value(), 0);
  EXPECT_EQ(documents.PageStart, 0);
  EXPECT_EQ(window.Pages[3]->item(0)->text(), "n00.txt");
}

TEST_F(ThumbnailsTest, AnAlbumListsItsRowsFromTheDataFileInRowOrder) {
  testenv::InstallDataFile();
  ASSERT_TRUE(OpenDataFile());
  Database& db = *App().DatabaseConnection;
  const QString elsewhere = MakeFolderWith("elsewhere", {"z.jpg", "song.mp3"});
  const qint32 album = AddAlbum(db, "Holiday d'été; 2001", false);
  ASSERT_GT(album, 0);
  ASSERT_TRUE(SavePlaylistFiles(db, album,
                                {elsewhere + "/z.jpg", "/pics/a.jpg", elsewhere + "/z.jpg",
                                 "/music/song.ram", "/films/clip.mpg", "", elsewhere + "/song.mp3",
                                 "/notes/letter.txt", "/icons/app.ico"}));

  settings::SaveSetting("DefaultFolder", MakeFolderWith("folder", {"x.jpg", "readme.txt"}));
  Thumbnails window;
  window.Form_Load();
  App().AlbumMode = true;
  App().SelectedAlbumId = album;
  App().CurrentFolder = "Holiday d'été; 2001";
  window.ChangeDirectory();

  // Rows keep their order and their repeats; "R", "D" and empty rows stay
  // out; the Documents tab keeps the documents of the last folder.
  EXPECT_EQ(App().PictureFiles.mid(0, 4), QStringList({elsewhere + "/z.jpg", "/pics/a.jpg",
                                                         elsewhere + "/z.jpg", "/icons/app.ico"}));
  EXPECT_EQ(App().VideoFiles.first(), "/films/clip.mpg");
  EXPECT_EQ(App().AudioFiles.first(), elsewhere + "/song.mp3");
  EXPECT_EQ(Captions(window),
            QStringList({"Pictures (4)", "Videos (1)", "Audios (1)", "Documents (1)"}));
  EXPECT_EQ(PageNames(window.Pages[3]), QStringList({"readme.txt"}));
  CloseDataFile();
}
