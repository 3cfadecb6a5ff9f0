// The browser over a folder of broken pictures, empty files, awkward names,
// links that loop and a locked folder (support/HostileFiles.h), and over a
// folder of 100,000 files.

#include <gtest/gtest.h>

#include "browser/BrowserFixture.h"
#include "catalogue/MediaPicture.h"
#include "controls/NewImage.h"
#include "controls/ThumbnailScroll.h"
#include "core/AppState.h"
#include "support/HostileFiles.h"

using namespace browsertest;

namespace {

class HostileFilesTest : public BrowserTest {
 protected:
  void TearDown() override {
    if (!folder_.isEmpty()) hostile::RemoveHostileFiles(folder_);
    BrowserTest::TearDown();
  }
  QString folder_;
};

// One letter a visible picture cell: "x" for the invalid-picture mark, "o"
// for a thumbnail of the picture.
QString Marks(const Thumbnails& window) {
  const QImage invalid = InvalidImagePicture().convertToFormat(QImage::Format_ARGB32);
  QString marks;
  for (int cell = 0; cell < window.CellCount(PicturesTab); ++cell) {
    if (window.Cell(PicturesTab, cell)->isHidden()) continue;
    const QImage shown = window.ThumbImage[cell]->Picture().toImage().convertToFormat(QImage::Format_ARGB32);
    marks += shown == invalid ? 'x' : 'o';
  }
  return marks;
}

TEST_F(HostileFilesTest, ListsEveryFileOnceAndBrokenPicturesEndAsTheInvalidMark) {
  folder_ = hostile::MakeHostileFiles(testenv::Root() + "/hostile");
  Thumbnails window;
  Open(window, folder_);

  // Links that loop, links to folders and folders are no files; the empty
  // files count on their tabs.
  EXPECT_EQ(Captions(window),
            QStringList({"Pictures (28)", "Videos (1)", "Audios (1)", "Documents (1)"}));
  EXPECT_EQ(window.CurrentTab(), PicturesTab);
  EXPECT_EQ(App().PictureFiles().mid(0, 15),
            QStringList({"a;b.png", "bad-\uFFFD.png", "cut.bmp", "cut.emf", "cut.gif", "cut.ico", "cut.jpg",
                         "cut.pcx", "cut.png", "cut.tif", "cut.wmf", "cut.xif", "empty.png", "good.png",
                         "it's.png"}));
  EXPECT_EQ(window.CountLabel[0]->text(), "1 to 15 of 28 picture files");
  // The name that is no UTF-8 can't be opened by the name it reads as; a
  // picture cut after 10 bytes or empty is no picture.
  EXPECT_EQ(Marks(window), "oxxxxxxxxxxxxoo");

  window.VScroll[0]->SetValue(1);
  WaitForPage(window);
  EXPECT_EQ(window.CountLabel[0]->text(), "16 to 28 of 28 picture files");
  EXPECT_EQ(App().PictureFiles().mid(15, 13),
            QStringList({"say \"cheese\".png", "torn.bmp", "torn.emf", "torn.gif", "torn.ico", "torn.jpg",
                         "torn.pcx", "torn.png", "torn.tif", "torn.wmf", "torn.xif", "two\nlines.png",
                         "\u00C6r\u00F8 \u00E9t\u00E9.png"}));
  // A picture torn in the middle shows what its decoder still makes of it,
  // or the mark where the decoder refuses it: the metafiles, the GIF, the
  // JPEG (its tables are torn), the PNG (its checksums fail) and the
  // paintbrush picture (its coded lines end too soon).
  EXPECT_EQ(Marks(window), "ooxxoxxxoxooo");

  // Back and forth again: the failures recorded on the first visit give the
  // same marks.
  window.VScroll[0]->SetValue(0);
  WaitForPage(window);
  EXPECT_EQ(Marks(window), "oxxxxxxxxxxxxoo");
  window.VScroll[0]->SetValue(1);
  WaitForPage(window);
  EXPECT_EQ(Marks(window), "ooxxoxxxoxooo");

  // In reverse order of names the sort takes a name's front off at its
  // ";", as the list always has: "a;b.png" reads "b.png", which is no file.
  settings::SaveSetting("SortDescending", "True");
  window.ChangePattern();
  window.VScroll[0]->SetValue(1);
  WaitForPage(window);
  EXPECT_EQ(App().PictureFiles().mid(25), QStringList({"cut.bmp", "bad-\uFFFD.png", "b.png", ""}));
  EXPECT_EQ(Marks(window), "xxxxxxxxxxxxx");

  window.SetCurrentTab(VideosTab);
  EXPECT_EQ(PageNames(window, VideosTab), QStringList({"empty.avi"}));
  window.SetCurrentTab(DocumentsTab);
  EXPECT_EQ(PageNames(window, DocumentsTab), QStringList({"empty.txt"}));
}

TEST_F(HostileFilesTest, AFolderOfAHundredThousandFilesListsThemAll) {
  const QString folder = testenv::Root() + "/many";
  ASSERT_TRUE(hostile::MakeManyFiles(folder, 100000));
  Thumbnails window;
  Open(window, folder);
  EXPECT_EQ(Captions(window),
            QStringList({"Pictures (100,000)", "Videos (0)", "Audios (0)", "Documents (0)"}));
  EXPECT_EQ(window.CountLabel[0]->text(), "1 to 15 of 100,000 picture files");
  EXPECT_EQ(App().PictureFiles().value(99999), "p099999.jpg");
  // The last page holds the last ten.
  window.VScroll[0]->SetValue(window.VScroll[0]->Max());
  WaitForPage(window);
  EXPECT_EQ(window.CountLabel[0]->text(), "99,991 to 100,000 of 100,000 picture files");
  EXPECT_EQ(Marks(window), "xxxxxxxxxx");
}

}  // namespace
