#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include "browser/CdTitles.h"
#include "browser/PageGeometry.h"
#include "browser/PageTexts.h"
#include "browser/ThumbnailLoader.h"
#include "browser/Thumbnails.h"
#include "catalogue/FileInfoText.h"
#include "catalogue/MediaPicture.h"
#include "controls/BalloonHelp.h"
#include "catalogue/MediaTypes.h"
#include "controls/NewImage.h"
#include "controls/NewTabControl.h"
#include "controls/NumberBox.h"
#include "controls/ThumbnailScroll.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"
#include "shell/AppState.h"
#include "shell/CommandBar.h"
#include "shell/DataFile.h"
#include "shell/Database.h"
#include "shell/Settings.h"
#include "shell/Statements.h"
#include "shell/WindowRegistry.h"
#include "support/TestEnv.h"

namespace {

QString MakeFolderWith(const QString& name, const QStringList& files) {
  const QString folder = testenv::Root() + "/" + name;
  QDir().mkpath(folder);
  for (const QString& file : files) testenv::MakeFile(folder + "/" + file, QByteArray());
  return folder;
}

// A picture of the given size with a diagonal, saved in the format of its
// extension.
void MakePicture(const QString& path, int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(QColor(40, 120, 200));
  QPainter painter(&image);
  painter.setPen(QPen(Qt::yellow, 3));
  painter.drawLine(0, 0, width, height);
  painter.end();
  ASSERT_TRUE(image.save(path)) << path.toStdString();
}

QStringList Captions(const Thumbnails& window) {
  QStringList captions;
  for (int tab = 1; tab <= 4; ++tab) captions << window.ThumbnailTabs->Caption(tab);
  return captions;
}

void WaitForPage(Thumbnails& window) {
  QDeadlineTimer deadline(20000);
  while (window.PageFilling() && !deadline.hasExpired()) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  QCoreApplication::processEvents();
}

int VisibleCells(const Thumbnails& window, int tab) {
  int visible = 0;
  for (int cell = 0; cell < window.CellCount(tab); ++cell)
    if (!window.Cell(tab, cell)->isHidden()) ++visible;
  return visible;
}

QStringList PageNames(const Thumbnails& window, int tab) {
  QStringList names;
  for (int cell = 0; cell < window.CellCount(tab); ++cell)
    if (!window.Name(tab, cell)->isHidden()) names << window.Name(tab, cell)->text();
  return names;
}

// The frame's rectangle in pixels, from its top and left lines.
QRect FrameRect(const Thumbnails& window) {
  const QRect top = window.Highlight[0]->geometry();
  const QRect left = window.Highlight[1]->geometry();
  const QRect bottom = window.Highlight[2]->geometry();
  return QRect(QPoint(left.left(), top.top()), QPoint(top.right(), bottom.bottom()));
}

class ThumbnailsTest : public testing::Test {
 protected:
  void SetUp() override {
    FillMediaTables();
    ThumbnailLoader::ResetDecodeCount();
  }
  void TearDown() override { SetCdTitleLookup({}); }

  // A browser of 600 x 400 pixels: five picture columns of three rows at the
  // inch size, and fifteen rows of names in each of the two columns.
  void Open(Thumbnails& window, const QString& folder) {
    settings::SaveSetting("DefaultFolder", folder);
    window.resize(600, 400);
    window.show();
    window.Form_Load();
    WaitForPage(window);
  }
};

}  // namespace

TEST(PageGeometry, CellsAndPagesFollowTheWindowAndTheThumbnailSize) {
  // A wide picture keeps the cell's width, a tall or square one its height.
  EXPECT_EQ(PictureCellSize(200, 100, 1440), QSizeF(1380, 690));
  EXPECT_EQ(PictureCellSize(100, 300, 1440), QSizeF(460, 1380));
  EXPECT_EQ(PictureCellSize(50, 50, 2160), QSizeF(2100, 2100));

  const PageLayout layout = LayOutPage(9000, 6000, 1440);
  EXPECT_EQ(layout.PictureColumns, 5);
  EXPECT_EQ(layout.PictureRows, 3);
  EXPECT_EQ(layout.PicturePageSize, 15);
  EXPECT_EQ(layout.ListRows, 15);
  EXPECT_EQ(layout.ListPageSize, 30);
  EXPECT_EQ(layout.Scroll.height(), layout.Tabs.height() - 1095);
  EXPECT_EQ(layout.CountTop, layout.Tabs.top() + layout.Tabs.height() - 795);
  // Cells stand a thumbnail size apart, row after row.
  EXPECT_EQ(PictureCellRect(layout, 6).topLeft() - PictureCellRect(layout, 0).topLeft(),
            QPoint(1440, 1440));
  // Icons run down the first column, then the second.
  EXPECT_EQ(IconCellRect(layout, 14).left(), IconCellRect(layout, 0).left());
  EXPECT_GT(IconCellRect(layout, 15).left(), layout.SeparatorX);
  EXPECT_EQ(IconCellRect(layout, 15).top(), IconCellRect(layout, 0).top());

  // The smallest main window (9600 x 6780) still holds a row of the largest
  // cell that the size box lets through.
  const int browserHeight = 6780 - 345 - 60 - 1230;
  const PageLayout smallest = LayOutPage(9600 - 195, browserHeight, 1440);
  const int largest = int((smallest.Box.height() - 270) / 1440.0 * 1440);
  EXPECT_GE(LayOutPage(9600 - 195, browserHeight, largest).PictureRows, 1);
  EXPECT_EQ(LayOutPage(100, 100, 4320).PicturePageSize, 1);
}

TEST_F(ThumbnailsTest, PicturesFillTheirCellsAndOtherTabsListNames) {
  const QString folder = MakeFolderWith("media", {"clip.avi", "tune.mp3", "song.wav", "letter.doc"});
  MakePicture(folder + "/wide.png", 200, 100);
  MakePicture(folder + "/tall.jpg", 100, 300);
  MakePicture(folder + "/square.bmp", 64, 64);
  testenv::MakeFile(folder + "/broken.gif", "GIF89a not really a picture");
  Thumbnails window;
  Open(window, folder);

  EXPECT_EQ(Captions(window),
            QStringList({"Pictures (4)", "Videos (1)", "Audios (2)", "Documents (1)"}));
  EXPECT_EQ(window.CurrentTab(), PicturesTab);
  EXPECT_EQ(window.CountLabel[0]->text(), "1 to 4 of 4 picture files");
  EXPECT_EQ(window.Tab(PicturesTab).PageLast, 3);
  EXPECT_EQ(VisibleCells(window, PicturesTab), 4);
  // Order: broken.gif, square.bmp, tall.jpg, wide.png.
  EXPECT_EQ(window.CellTwips(PicturesTab, 3).size(), QSizeF(1380, 690));
  EXPECT_EQ(window.CellTwips(PicturesTab, 2).size(), QSizeF(460, 1380));
  EXPECT_EQ(window.CellTwips(PicturesTab, 1).size(), QSizeF(1380, 1380));
  // The picture that can't be decoded shows the invalid-picture mark.
  const QImage invalid = InvalidImagePicture();
  EXPECT_EQ(window.ThumbImage[0]->Picture().toImage().convertToFormat(QImage::Format_ARGB32),
            invalid.convertToFormat(QImage::Format_ARGB32));
  EXPECT_FALSE(window.ThumbnailSize->isHidden());
  EXPECT_EQ(window.ThumbnailSize->Value(), "1.000");
  // The data popup of a cell is the file's information; the boxes of the
  // bottom strip carry their help, and lose it when help is switched off.
  EXPECT_EQ(window.ThumbImage[3]->toolTip(), FileInfoText("wide.png", folder));
  window.LoadHelp();
  EXPECT_EQ(window.Balloons()->Count(), 4);
  EXPECT_EQ(window.Balloons()->TitleOf(window.ThumbnailSize), "Thumbnail Size");
  EXPECT_EQ(window.Balloons()->TextOf(window.PositionNumber[1]),
            "Enter a number to position on a specific\r\nvideo file in the thumbnail list");
  App().ShowPopupHelp = false;
  App().ShowPopupData = false;
  window.LoadHelp();
  EXPECT_EQ(window.Balloons()->Count(), 0);
  EXPECT_EQ(window.ThumbImage[3]->toolTip(), "");

  window.SetCurrentTab(AudiosTab);
  EXPECT_EQ(VisibleCells(window, PicturesTab), 0);
  EXPECT_EQ(PageNames(window, AudiosTab), QStringList({"song.wav", "tune.mp3"}));
  EXPECT_EQ(window.CountLabel[2]->text(), "1 to 2 of 2 audio files");
  EXPECT_TRUE(window.CountLabel[0]->isHidden());
  EXPECT_TRUE(window.ThumbnailSize->isHidden());
  EXPECT_FALSE(window.Separator->isHidden());
  // The frame stands on the first audio and holds icon and name.
  EXPECT_TRUE(window.Tab(AudiosTab).Highlighted);
  EXPECT_FALSE(window.Highlight[0]->isHidden());
  EXPECT_EQ(twips::FromPixels(window.Highlight[3]->geometry().height()), 345);
}

TEST_F(ThumbnailsTest, PagesTurnAndTheFrameFollowsTheKeys) {
  const QString folder = testenv::Root() + "/many";
  QDir().mkpath(folder);
  for (int i = 0; i < 20; ++i) MakePicture(QString("%1/p%2.png").arg(folder).arg(i, 2, 10, QChar('0')), 40, 30);
  Thumbnails window;
  Open(window, folder);
  TabState& pictures = window.Tab(PicturesTab);
  ASSERT_EQ(pictures.PageSize, 15);
  EXPECT_EQ(window.VScroll[0]->Max(), 1);
  EXPECT_FALSE(window.PositionNumber[0]->isHidden());

  ASSERT_TRUE(window.FocusCell(PicturesTab, 0));
  EXPECT_TRUE(pictures.Highlighted);
  EXPECT_EQ(window.PositionNumber[0]->Value(), "1");
  window.ThumbImage_KeyDown(0, keys::Right, 0);
  EXPECT_EQ(App().CurrentPicture, 1);
  const QRect cell1 = window.ThumbImage[1]->geometry();
  EXPECT_EQ(FrameRect(window).topLeft(), cell1.topLeft() - QPoint(2, 2));
  window.ThumbImage_KeyDown(1, keys::Down, 0);
  EXPECT_EQ(App().CurrentPicture, 6);

  // Page Down turns to the second page and puts the frame on its first cell.
  window.ThumbImage_KeyDown(6, keys::Next, 0);
  WaitForPage(window);
  EXPECT_EQ(window.VScroll[0]->Value(), 1);
  EXPECT_EQ(pictures.PageStart, 15);
  EXPECT_EQ(pictures.PageLast, 19);
  EXPECT_EQ(App().CurrentPicture, 15);
  EXPECT_EQ(window.CountLabel[0]->text(), "16 to 20 of 20 picture files");
  EXPECT_EQ(VisibleCells(window, PicturesTab), 5);

  // Right on the last cell of the last page comes back to its first cell.
  ASSERT_TRUE(window.FocusCell(PicturesTab, 4));
  window.ThumbImage_KeyDown(4, keys::Right, 0);
  EXPECT_EQ(window.VScroll[0]->Value(), 1);
  EXPECT_EQ(App().CurrentPicture, 15);

  // Enter in the position box: 0 goes to the first item, too much to the last.
  window.PositionNumber[0]->SetValue("0");
  window.PositionNumber[0]->txtNumber()->setFocus();
  QCoreApplication::processEvents();
  QTest::keyClick(window.PositionNumber[0]->txtNumber(), Qt::Key_Return);
  WaitForPage(window);
  EXPECT_EQ(window.VScroll[0]->Value(), 0);
  EXPECT_EQ(App().CurrentPicture, 0);
  window.PositionNumber[0]->SetValue("99");
  window.PositionNumber[0]->txtNumber()->setFocus();
  QCoreApplication::processEvents();
  QTest::keyClick(window.PositionNumber[0]->txtNumber(), Qt::Key_Return);
  WaitForPage(window);
  EXPECT_EQ(window.VScroll[0]->Value(), 1);
  EXPECT_EQ(App().CurrentPicture, 19);

  // End and Home through the window's own keys.
  window.Form_KeyDown(keys::Home, 0);
  WaitForPage(window);
  EXPECT_EQ(window.VScroll[0]->Value(), 0);
  window.Form_KeyDown(keys::End, 0);
  WaitForPage(window);
  EXPECT_EQ(window.VScroll[0]->Value(), 1);
}

TEST_F(ThumbnailsTest, EnterOpensOnlyWhereTheFrameStandsAndClicksOpenAfterTheDelay) {
  const QString folder = MakeFolderWith("docs", {"a.txt", "b.pdf", "c.doc"});
  Thumbnails window;
  Open(window, folder);
  QSignalSpy opened(&window, &Thumbnails::ItemOpened);
  ASSERT_EQ(window.CurrentTab(), DocumentsTab);
  EXPECT_TRUE(window.Tab(DocumentsTab).Highlighted);

  window.DocumentIcon_KeyDown(0, keys::Down, 0);
  EXPECT_EQ(App().CurrentDocument, 1);
  window.Form_KeyDown(keys::Return, 0);
  ASSERT_EQ(opened.count(), 1);
  EXPECT_EQ(opened[0], QVariantList({DocumentsTab, 1}));

  // The rename window's Enter opens nothing.
  App().SkipNextEnter = true;
  window.Form_KeyDown(keys::Return, 0);
  EXPECT_EQ(opened.count(), 1);
  EXPECT_FALSE(App().SkipNextEnter);

  // Up on the first cell of the only page goes to the last named cell.
  window.DocumentIcon_KeyDown(0, keys::Up, 0);
  EXPECT_EQ(App().CurrentDocument, 2);

  // A click opens after the short delay, once.
  QTest::mouseClick(window.Name(DocumentsTab, 0), Qt::LeftButton);
  EXPECT_EQ(App().CurrentDocument, 0);
  EXPECT_EQ(opened.count(), 1);
  QTRY_COMPARE(opened.count(), 2);
  EXPECT_EQ(opened[1], QVariantList({DocumentsTab, 0}));
}

TEST_F(ThumbnailsTest, DeletedEntriesComeBackAsDeletedCellsAfterTurningPages) {
  const QString folder = testenv::Root() + "/pics";
  QDir().mkpath(folder);
  for (int i = 0; i < 20; ++i) MakePicture(QString("%1/p%2.png").arg(folder).arg(i, 2, 10, QChar('0')), 30, 30);
  QStringList videos;
  for (int i = 0; i < 35; ++i) videos << QString("v%1.avi").arg(i, 2, 10, QChar('0'));
  for (const QString& v : videos) testenv::MakeFile(folder + "/" + v, QByteArray());
  Thumbnails window;
  Open(window, folder);

  App().PictureFiles[16] = "";
  App().VideoFiles[31] = "";
  window.VScroll[0]->SetValue(1);
  WaitForPage(window);
  window.VScroll[0]->SetValue(0);
  WaitForPage(window);
  window.VScroll[0]->SetValue(1);
  WaitForPage(window);
  EXPECT_EQ(VisibleCells(window, PicturesTab), 5);
  EXPECT_EQ(window.ThumbImage[1]->Picture().toImage(),
            NewImage::DrawnDeletedPicture(window.ThumbImage[1]->size()).toImage());
  EXPECT_EQ(window.CellTwips(PicturesTab, 1).size(), QSizeF(1380, 1380));
  // Left on the first cell of page two goes back to the last cell of page one.
  ASSERT_TRUE(window.FocusCell(PicturesTab, 0));
  window.ThumbImage_KeyDown(0, keys::Left, 0);
  WaitForPage(window);
  EXPECT_EQ(window.VScroll[0]->Value(), 0);
  EXPECT_EQ(App().CurrentPicture, 14);

  window.SetCurrentTab(VideosTab);
  window.VScroll[1]->SetValue(1);
  EXPECT_EQ(PageNames(window, VideosTab), QStringList({"v30.avi", "(Deleted)", "v32.avi", "v33.avi", "v34.avi"}));
  EXPECT_EQ(window.CountLabel[1]->text(), "31 to 35 of 35 video files");
}

TEST_F(ThumbnailsTest, ASecondVisitOfAPageDecodesNothing) {
  const QString folder = testenv::Root() + "/visit";
  QDir().mkpath(folder);
  for (int i = 0; i < 20; ++i) MakePicture(QString("%1/p%2.jpg").arg(folder).arg(i, 2, 10, QChar('0')), 400, 300);
  testenv::MakeFile(folder + "/zz broken.jpg", "not a jpeg");
  Thumbnails window;
  Open(window, folder);
  EXPECT_EQ(ThumbnailLoader::DecodeCount(), 15);
  window.VScroll[0]->SetValue(1);
  WaitForPage(window);
  EXPECT_EQ(ThumbnailLoader::DecodeCount(), 21);
  ThumbnailLoader::ResetDecodeCount();
  window.VScroll[0]->SetValue(0);
  WaitForPage(window);
  window.VScroll[0]->SetValue(1);
  WaitForPage(window);
  EXPECT_EQ(ThumbnailLoader::DecodeCount(), 0);
  EXPECT_EQ(VisibleCells(window, PicturesTab), 6);
}

TEST_F(ThumbnailsTest, CdTracksTakeTheDiscTitlesByCellNumber) {
  QStringList tracks;
  for (int i = 1; i <= 32; ++i) tracks << QString("Track%1.cda").arg(i, 2, 10, QChar('0'));
  const QString folder = MakeFolderWith("cd", tracks);
  QStringList asked;
  SetCdTitleLookup([&asked](const QString& f, QStringList& titles) {
    asked << f;
    titles = {"Overture", "Rain; at \"Night\"", "Été"};
    return true;
  });
  Thumbnails window;
  Open(window, folder);
  ASSERT_EQ(window.CurrentTab(), AudiosTab);
  EXPECT_EQ(asked.value(0), folder);
  EXPECT_EQ(PageNames(window, AudiosTab).mid(0, 4),
            QStringList({"Overture", "Rain; at \"Night\"", "Été", "Track04.cda"}));
  // On the second page the titles begin again from the first.
  window.VScroll[2]->SetValue(1);
  EXPECT_EQ(PageNames(window, AudiosTab), QStringList({"Overture", "Rain; at \"Night\""}));
  EXPECT_EQ(window.Cell(AudiosTab, 0)->toolTip(), "File:    Track31.cda\nType: CD Audio");
}

TEST_F(ThumbnailsTest, AnAlbumListsItsRowsByBaseNameFromTheDataFile) {
  testenv::InstallDataFile();
  ASSERT_TRUE(OpenDataFile());
  Database& db = *App().DatabaseConnection;
  const QString elsewhere = MakeFolderWith("elsewhere", {"song.mp3"});
  MakePicture(elsewhere + "/z.jpg", 60, 40);
  const qint32 album = AddAlbum(db, "Holiday d'été; 2001", false);
  ASSERT_GT(album, 0);
  ASSERT_TRUE(SavePlaylistFiles(db, album,
                                {elsewhere + "/z.jpg", "/pics/gone.jpg", "/films/clip.mpg", "",
                                 elsewhere + "/song.mp3", "/notes/letter.txt"}));
  Thumbnails window;
  Open(window, MakeFolderWith("folder", {"readme.txt"}));
  App().AlbumMode = true;
  App().SelectedAlbumId = album;
  App().CurrentFolder = "Holiday d'été; 2001";
  window.ChangeDirectory();
  WaitForPage(window);

  EXPECT_EQ(Captions(window),
            QStringList({"Pictures (2)", "Videos (1)", "Audios (1)", "Documents (1)"}));
  EXPECT_EQ(window.CellTwips(PicturesTab, 0).size(), QSizeF(1380, 920));
  // A row whose file is gone shows the invalid-picture mark and stays selectable.
  EXPECT_FALSE(window.Cell(PicturesTab, 1)->isHidden());
  window.SetCurrentTab(AudiosTab);
  EXPECT_EQ(PageNames(window, AudiosTab), QStringList({"song.mp3"}));
  window.SetCurrentTab(DocumentsTab);
  EXPECT_EQ(PageNames(window, DocumentsTab), QStringList({"readme.txt"}));
  CloseDataFile();
}

TEST_F(ThumbnailsTest, EnterInTheSizeBoxLaysTheCellsOutAgainWithinTheBox) {
  const QString folder = testenv::Root() + "/sizes";
  QDir().mkpath(folder);
  for (int i = 0; i < 12; ++i) MakePicture(QString("%1/p%2.png").arg(folder).arg(i, 2, 10, QChar('0')), 40, 40);
  Thumbnails window;
  // The command bar's refresh lists the folder again through the browser
  // it finds among the loaded windows.
  Windows().Loaded("Thumbnails", &window);
  Open(window, folder);
  ASSERT_EQ(window.Tab(PicturesTab).PageSize, 15);

  window.ThumbnailSize->txtNumber()->setFocus();
  QCoreApplication::processEvents();
  window.ThumbnailSize->txtNumber()->setText("2");
  QTest::keyClick(window.ThumbnailSize->txtNumber(), Qt::Key_Return);
  WaitForPage(window);
  EXPECT_EQ(App().ThumbnailSizeTwips, 2880);
  EXPECT_EQ(settings::GetSetting("ThumbnailSize", ""), "2880");
  EXPECT_EQ(window.Tab(PicturesTab).PageSize, 2);
  EXPECT_EQ(window.CountLabel[0]->text(), "1 to 2 of 12 picture files");
  EXPECT_EQ(window.CellTwips(PicturesTab, 0).size(), QSizeF(2820, 2820));

  // Three inches do not fit the height of a lower box: the size stops where
  // a cell still fits.
  window.resize(600, 300);
  window.ChangeFormSize();
  window.ThumbnailSize->txtNumber()->setFocus();
  QCoreApplication::processEvents();
  window.ThumbnailSize->txtNumber()->setText("3");
  QTest::keyClick(window.ThumbnailSize->txtNumber(), Qt::Key_Return);
  WaitForPage(window);
  EXPECT_EQ(window.Layout().Box.height(), 3315);
  EXPECT_EQ(App().ThumbnailSizeTwips, 3315 - 270);
  EXPECT_EQ(window.ThumbnailSize->Value(), "2.115");
  EXPECT_EQ(window.Tab(PicturesTab).PageSize, 2);
}

TEST_F(ThumbnailsTest, CtrlNBringsTheContextMenuOfTheCurrentItem) {
  Thumbnails window;
  Open(window, MakeFolderWith("songs", {"a.mp3", "b.mp3", "c.wav"}));
  QSignalSpy menu(&window, &Thumbnails::ContextMenuRequested);
  QSignalSpy actions(&window, &Thumbnails::ActionRequested);
  ASSERT_EQ(window.CurrentTab(), AudiosTab);
  window.AudioIcon_KeyDown(0, keys::Down, 0);
  window.Form_KeyUp('N', keys::CtrlMask);
  ASSERT_EQ(menu.count(), 1);
  EXPECT_EQ(menu[0], QVariantList({AudiosTab, 1}));
  // Ctrl+T offers the tags of an MP3 only.
  window.Form_KeyUp('T', keys::CtrlMask);
  window.AudioIcon_KeyDown(1, keys::Down, 0);
  window.Form_KeyUp('T', keys::CtrlMask);
  ASSERT_EQ(actions.count(), 1);
  EXPECT_EQ(actions[0], QVariantList({"MP3", AudiosTab, 1}));
}

TEST_F(ThumbnailsTest, AMissingDefaultFolderFallsBackToAnEmptyMyMedia) {
  Thumbnails window;
  Open(window, testenv::Root() + "/gone");
  EXPECT_EQ(App().CurrentFolder, App().ProgramFolder + "/MyMedia");
  EXPECT_EQ(Captions(window),
            QStringList({"Pictures (0)", "Videos (0)", "Audios (0)", "Documents (0)"}));
  EXPECT_EQ(window.CountLabel[0]->text(), "0 picture files available");
  EXPECT_EQ(window.CountLabel[3]->text(), "0 document files available");
  EXPECT_EQ(window.CurrentTab(), PicturesTab);
  EXPECT_TRUE(window.ThumbnailSize->isHidden());
  EXPECT_TRUE(window.Highlight[0]->isHidden());
  // Keys on an empty tab neither move nor open anything.
  QSignalSpy opened(&window, &Thumbnails::ItemOpened);
  window.Form_KeyDown(keys::Return, 0);
  window.Form_KeyDown(keys::Pause, 0);
  window.Form_KeyDown(keys::End, 0);
  EXPECT_EQ(opened.count(), 0);
  EXPECT_FALSE(window.Tab(PicturesTab).Highlighted);
}
