#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

#include "browser/BrowserFixture.h"
#include "browser/MenuFile.h"
#include "core/WindowShow.h"
#include "shell/CommandBar.h"
#include "browser/LoadingMessage.h"
#include "browser/PageGeometry.h"
#include "catalogue/MediaPicture.h"
#include "controls/BalloonHelp.h"
#include "controls/NewImage.h"
#include "controls/NumberBox.h"
#include "controls/ThumbnailScroll.h"
#include "platform/KeyCodes.h"
#include "platform/Services.h"
#include "platform/Twips.h"
#include "core/AppState.h"
#include "core/DataFile.h"
#include "core/Database.h"
#include "core/Statements.h"
#include "core/WindowRegistry.h"

using namespace browsertest;

namespace {

// The frame's rectangle in pixels, from its top and left lines.
QRect FrameRect(const Thumbnails& window) {
  const QRect top = window.Highlight[0]->geometry();
  const QRect left = window.Highlight[1]->geometry();
  const QRect bottom = window.Highlight[2]->geometry();
  return QRect(QPoint(left.left(), top.top()), QPoint(top.right(), bottom.bottom()));
}

using ThumbnailsTest = BrowserTest;

}  // namespace

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
  EXPECT_EQ(VisibleCells(window, PicturesTab), 4);
  // Order: broken.gif, square.bmp, tall.jpg, wide.png. A wide picture keeps
  // the cell's width, a tall or square one its height.
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
  EXPECT_EQ(FirstLines(window.ThumbImage[0]->toolTip(), 3),
            QStringList({"File:    broken.gif", "Type: Picture", "Size:  27 bytes"}));
  window.LoadHelp();
  EXPECT_EQ(window.Balloons()->Count(), 4);
  EXPECT_EQ(window.Balloons()->TitleOf(window.ThumbnailSize), "Thumbnail Size");
  EXPECT_EQ(window.Balloons()->TextOf(window.PositionNumber[1]),
            "Enter a number to position on a specific\r\nvideo file in the thumbnail list");
  App().ShowPopupHelp = false;
  App().ShowPopupData = false;
  window.LoadHelp();
  EXPECT_EQ(window.Balloons()->Count(), 0);
  EXPECT_EQ(window.ThumbImage[0]->toolTip(), "");

  window.SetCurrentTab(AudiosTab);
  EXPECT_EQ(VisibleCells(window, PicturesTab), 0);
  EXPECT_EQ(PageNames(window, AudiosTab), QStringList({"song.wav", "tune.mp3"}));
  EXPECT_EQ(window.CountLabel[2]->text(), "1 to 2 of 2 audio files");
  EXPECT_TRUE(window.CountLabel[0]->isHidden());
  EXPECT_TRUE(window.ThumbnailSize->isHidden());
  EXPECT_FALSE(window.Separator->isHidden());
  // The frame stands on the first audio and holds icon and name.
  EXPECT_FALSE(window.Highlight[0]->isHidden());
  EXPECT_EQ(twips::FromPixels(window.Highlight[3]->geometry().height()), 345);
}

TEST_F(ThumbnailsTest, PagesTurnAndTheFrameFollowsTheKeys) {
  Thumbnails window;
  Open(window, MakePictureFolder("many", 20));
  ASSERT_EQ(window.Tab(PicturesTab).PageSize, 15);
  EXPECT_EQ(window.VScroll[0]->Max(), 1);

  ASSERT_TRUE(window.FocusCell(PicturesTab, 0));
  EXPECT_EQ(window.PositionNumber[0]->Value(), "1");
  window.ThumbImage_KeyDown(0, keys::Right, 0);
  EXPECT_EQ(App().CurrentPicture(), 1);
  EXPECT_EQ(FrameRect(window).topLeft(), window.ThumbImage[1]->geometry().topLeft() - QPoint(2, 2));

  // Page Down turns to the second page and puts the frame on its first cell.
  window.ThumbImage_KeyDown(1, keys::Next, 0);
  WaitForPage(window);
  EXPECT_EQ(window.VScroll[0]->Value(), 1);
  EXPECT_EQ(App().CurrentPicture(), 15);
  EXPECT_EQ(window.CountLabel[0]->text(), "16 to 20 of 20 picture files");
  EXPECT_EQ(VisibleCells(window, PicturesTab), 5);

  // Right on the last cell of the last page passes the hidden cells and
  // comes back to its first cell.
  ASSERT_TRUE(window.FocusCell(PicturesTab, 4));
  window.ThumbImage_KeyDown(4, keys::Right, 0);
  EXPECT_EQ(window.VScroll[0]->Value(), 1);
  EXPECT_EQ(App().CurrentPicture(), 15);

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
  EXPECT_EQ(App().CurrentDocument(), 1);
  window.Form_KeyDown(keys::Return, 0);
  ASSERT_EQ(opened.count(), 1);
  EXPECT_EQ(opened[0], QVariantList({DocumentsTab, 1}));

  // The rename window's Enter opens nothing.
  App().SkipNextEnter = true;
  window.Form_KeyDown(keys::Return, 0);
  EXPECT_EQ(opened.count(), 1);
  EXPECT_FALSE(App().SkipNextEnter);

  // A click opens after the short delay, once.
  QTest::mouseClick(window.Name(DocumentsTab, 0), Qt::LeftButton);
  EXPECT_EQ(App().CurrentDocument(), 0);
  EXPECT_EQ(opened.count(), 1);
  EXPECT_TRUE(QTest::qWaitFor([&opened] { return opened.count() == 2; }));
  ASSERT_EQ(opened.count(), 2);
  EXPECT_EQ(opened[1], QVariantList({DocumentsTab, 0}));
}

TEST_F(ThumbnailsTest, DeletedEntriesComeBackAsDeletedCellsAfterTurningPages) {
  const QString folder = MakePictureFolder("pics", 20, 30, 30);
  MakeFolderWith("pics", Numbered("v%1.avi", 35));
  Thumbnails window;
  Open(window, folder);

  App().PictureFiles()[16] = "";
  App().VideoFiles()[31] = "";
  for (int value : {1, 0, 1}) {
    window.VScroll[0]->SetValue(value);
    WaitForPage(window);
  }
  EXPECT_EQ(VisibleCells(window, PicturesTab), 5);
  EXPECT_EQ(window.ThumbImage[1]->Picture().toImage(),
            NewImage::DrawnDeletedPicture(window.ThumbImage[1]->size()).toImage());
  EXPECT_EQ(window.CellTwips(PicturesTab, 1).size(), QSizeF(1380, 1380));

  window.SetCurrentTab(VideosTab);
  window.VScroll[1]->SetValue(1);
  EXPECT_EQ(PageNames(window, VideosTab), QStringList({"v30.avi", "(Deleted)", "v32.avi", "v33.avi", "v34.avi"}));
  EXPECT_EQ(window.CountLabel[1]->text(), "31 to 35 of 35 video files");
}

TEST_F(ThumbnailsTest, CdTracksTakeTheDiscTitlesByCellNumber) {
  const QString folder = MakeFolderWith("cd", Numbered("Track%1.cda", 32, 1));
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
  const QString elsewhere = MakeFolderWith("elsewhere", {});
  testenv::MakeFile(elsewhere + "/song.mp3", QByteArray(2048, 'x'));
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
  // Its data popup tells of the file itself, found by the row's full path.
  EXPECT_EQ(FirstLines(window.Name(AudiosTab, 0)->toolTip(), 3),
            QStringList({"File:    song.mp3", "Type: Audio", "Size:  2,048 bytes"}));
  window.SetCurrentTab(DocumentsTab);
  EXPECT_EQ(PageNames(window, DocumentsTab), QStringList({"readme.txt"}));
  CloseDataFile();
}

TEST_F(ThumbnailsTest, EnterInTheSizeBoxLaysTheCellsOutAgainWithinTheBox) {
  const QString folder = MakePictureFolder("sizes", 12, 40, 40);
  // The command bar's refresh lists the folder again through the browser
  // it finds among the loaded windows.
  CommandBar bar;
  Windows().Loaded(&bar);
  Thumbnails window;
  Windows().Loaded(&window);
  bar.Follow(&window);
  Open(window, folder);
  ASSERT_EQ(window.Tab(PicturesTab).PageSize, 15);

  EnterNumber(window.ThumbnailSize, "2");
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
  EnterNumber(window.ThumbnailSize, "3");
  WaitForPage(window);
  EXPECT_EQ(window.Layout().Box.height(), 3315);
  EXPECT_EQ(App().ThumbnailSizeTwips, 3315 - 270);
  EXPECT_EQ(window.ThumbnailSize->Value(), "2.115");
  EXPECT_EQ(window.Tab(PicturesTab).PageSize, 2);
}

TEST_F(ThumbnailsTest, CtrlNBringsTheContextMenuOfTheCurrentItemAndCtrlTTheTagsOfAnMp3) {
  const QString folder = MakeFolderWith("songs", {"a.mp3", "b.mp3", "c.wav"});
  Thumbnails window;
  Open(window, folder);
  QSignalSpy menu(&window, &Thumbnails::ContextMenuRequested);
  ASSERT_EQ(window.CurrentTab(), AudiosTab);
  window.AudioIcon_KeyDown(0, keys::Down, 0);
  QTest::keyClick(window.Cell(AudiosTab, 1), Qt::Key_N, Qt::ControlModifier);
  ASSERT_EQ(menu.count(), 1);
  EXPECT_EQ(menu[0], QVariantList({AudiosTab, 1}));
  EXPECT_TRUE(window.Menu->isVisible());
  window.Menu->hide();

  // The tag editor, standing in for the one to come, is given the MP3's
  // path; a WAV file offers no tags.
  struct Tags : QWidget, FileWindow {
    void GetData(const QString& path) override { given << path; }
    QStringList given;
  };
  Tags* tags = nullptr;
  Windows().SetLoader(WindowId::ChangeMP3, [&tags] { return tags = new Tags; });
  window.AudioIcon_KeyDown(1, keys::Down, 0);
  window.Form_KeyUp('T', keys::CtrlMask);
  EXPECT_EQ(tags, nullptr);
  window.AudioIcon_KeyDown(2, keys::Up, 0);
  window.Form_KeyUp('T', keys::CtrlMask);
  ASSERT_NE(tags, nullptr);
  EXPECT_EQ(tags->given, QStringList({folder + "/b.mp3"}));
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

  // A program folder this user cannot write (an installed one) gets no
  // "MyMedia": the browser falls back to the user's pictures folder.
  const QString program = App().ProgramFolder;
  platform::TheServices().FolderWriteProbe = [program](const QString& f) { return f != program; };
  QDir(program + "/MyMedia").removeRecursively();
  QDir().mkpath(testenv::Root() + "/home/Pictures");
  Thumbnails installed;
  Open(installed, testenv::Root() + "/gone");
  EXPECT_EQ(App().CurrentFolder, testenv::Root() + "/home/Pictures");
  EXPECT_FALSE(QFileInfo::exists(program + "/MyMedia"));
}

TEST_F(ThumbnailsTest, PagesDecodeOnlyWhatTheyShowOnceAndShowNothingOfTheFormerPage) {
  Thumbnails window;
  Open(window, MakePictureFolder("turn", 20));
  ASSERT_FALSE(window.ThumbImage[4]->Picture().isNull());
  EXPECT_EQ(ThumbnailLoader::DecodeCount(), 15);

  // Right after the turn, before any picture of the new page has arrived.
  window.VScroll[0]->SetValue(1);
  ASSERT_EQ(VisibleCells(window, PicturesTab), 5);
  for (int cell = 0; cell < 5; ++cell)
    EXPECT_TRUE(window.ThumbImage[cell]->Picture().isNull()) << "cell " << cell;

  // Meanwhile the loading message shows the program's white gradient, which
  // darkens band by band down to black.
  ASSERT_FALSE(window.LoadingMessage->isHidden());
  const QImage message = window.LoadingMessage->grab().toImage();
  EXPECT_GT(qRed(message.pixel(5, 2)), 230);
  EXPECT_LT(qRed(message.pixel(5, message.height() - 3)), 30);

  WaitForPage(window);
  for (int cell = 0; cell < 5; ++cell)
    EXPECT_FALSE(window.ThumbImage[cell]->Picture().isNull()) << "cell " << cell;
  EXPECT_TRUE(window.LoadingMessage->isHidden());
  EXPECT_EQ(ThumbnailLoader::DecodeCount(), 20);

  // A second visit of either page decodes nothing.
  ThumbnailLoader::ResetDecodeCount();
  for (int value : {0, 1}) {
    window.VScroll[0]->SetValue(value);
    WaitForPage(window);
  }
  EXPECT_EQ(ThumbnailLoader::DecodeCount(), 0);
}

TEST_F(ThumbnailsTest, TheTabStripIsOutOfReachWhileAFolderIsListed) {
  Thumbnails window;
  Open(window, MakeFolderWith("start", {"a.txt"}));
  const QString disc = MakeFolderWith("disc", {"Track01.cda", "Track02.cda"});
  bool hiddenWhileListing = false;
  SetCdTitleLookup([&](const QString&, QStringList&) {
    hiddenWhileListing = window.ThumbnailTabs->isHidden();
    return false;
  });
  App().CurrentFolder = disc;
  window.ChangeDirectory();
  EXPECT_TRUE(hiddenWhileListing);
  EXPECT_FALSE(window.ThumbnailTabs->isHidden());
  EXPECT_EQ(window.CurrentTab(), AudiosTab);
}

TEST_F(ThumbnailsTest, ControlsStackInTheOrderTheKeysWalkThem) {
  Thumbnails window;
  window.resize(600, 400);
  window.ChangeFormSize();
  QStringList names;
  for (const QObject* child : window.children())
    // The context menu is a popup of its own, outside the stacking.
    if (child->isWidgetType() && !qobject_cast<const QMenu*>(child) && names.size() < 34)
      names << child->objectName();
  // Bottom to top, which is also the focus order: the tab control, each
  // tab's scroll bar with its count and position, the size group, the frame,
  // the loading message, then the first cell of each tab and the other cells.
  EXPECT_EQ(names,
            QStringList({"ThumbnailTabs",  "VScroll1",       "CountLabel1",  "PositionLabel1",
                         "PositionNumber1", "VScroll2",      "CountLabel2",  "PositionLabel2",
                         "PositionNumber2", "VScroll3",      "CountLabel3",  "PositionLabel3",
                         "PositionNumber3", "VScroll4",      "CountLabel4",  "PositionLabel4",
                         "PositionNumber4", "Separator",     "SizeLabel",    "ThumbnailSize",
                         "InchLabel",      "Highlight0",     "Highlight1",   "Highlight2",
                         "Highlight3",     "LoadingMessage", "ThumbImage0",  "VideoIcon0",
                         "VideoName0",     "AudioIcon0",     "AudioName0",   "DocumentIcon0",
                         "DocumentName0",  "ThumbImage1"}));
}
