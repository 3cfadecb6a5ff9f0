#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include "controls/Button.h"
#include "controls/MessageBox.h"
#include "catalogue/MediaTypes.h"
#include "core/AppState.h"
#include "core/DataFile.h"
#include "core/Database.h"
#include "core/Settings.h"
#include "core/Statements.h"
#include "core/WindowRegistry.h"
#include "fileops/DeleteVerify.h"
#include "controls/NumberBox.h"
#include "fileops/FakeBrowser.h"
#include "shell/SharedMessageBox.h"
#include "support/MessageBoxAnswer.h"
#include "support/WindowAnswer.h"
#include "support/TestEnv.h"
#include "viewers/PictureFit.h"
#include "viewers/PictureHolder.h"
#include "viewers/PictureWalk.h"
#include "viewers/SingleImage.h"
#include "viewers/SlideshowController.h"
#include "viewers/SlideshowOrder.h"
#include "viewers/ViewerWindows.h"

namespace {

// A room like a main window of 1280 by 960 pixels with captions on.
PictureRoom Room(int left = 0, int top = 0) {
  PictureRoom room;
  room.Left = left;
  room.Top = top;
  room.MaximumWidth = 19200;
  room.MaximumHeight = 12900;
  room.TopMargin = 1005 + 300;
  return room;
}

TEST(PictureFitTest, ReducesToTheRoomFullSizeEnlargesAndResizingFollowsTheWindow) {
  // A landscape photograph twice the room's width: the width decides.
  EXPECT_EQ(FitPicture(QSize(60000, 40000), Room()), QSize(17393, 11595));
  // From further right and lower the room is smaller; the window still ends
  // inside it.
  EXPECT_EQ(FitPicture(QSize(60000, 40000), Room(3000, 1500)), QSize(15143, 10095));
  // A portrait one: the height decides.
  EXPECT_EQ(FitPicture(QSize(9000, 21000), Room()), QSize(4969, 11595));
  // A small picture keeps its natural size; its window takes the minimum width.
  EXPECT_EQ(FitPicture(QSize(4500, 3000), Room()), QSize(4500, 3000));
  EXPECT_EQ(FormSize(QSize(4500, 3000), Room()), QSize(5610, 4305));
  EXPECT_EQ(FitPicture(QSize(0, 3000), Room()), QSize(0, 0));

  // Full size enlarges.
  const FullSize full = FullSizePicture(QSize(4500, 3000), Room());
  EXPECT_EQ(full.Picture, QSize(17393, 11595));
  EXPECT_EQ(full.Window, QSize(17513, 12900));
  // The user makes the window lower: the picture follows the height.
  EXPECT_EQ(ResizedPicture(QSize(4500, 3000), QSize(9000, 5000), 1305, 120), QSize(5543, 3695));
  // ... and narrower than the picture would be: the width decides.
  EXPECT_EQ(ResizedPicture(QSize(4500, 3000), QSize(3000, 9000), 1305, 120), QSize(2880, 1920));
}

TEST(PictureWalkTest, PassesOverRemovedEntriesAndTurnsAtTheEnds) {
  const QStringList files{"", "b.png", "", "", "e.png", "", ""};
  const qint32 count = 6;  // the last element is the list's scratch element
  // Nothing after the last picture: the walk turns back from the last entry.
  WalkStep step = StepForward(files, count, 4);
  EXPECT_EQ(step.Index, 5);
  EXPECT_EQ(step.Direction, QChar('-'));
  EXPECT_FALSE(step.Close);
  // Nothing before: the walk turns forward from the first entry.
  step = StepBackward(files, count, 1);
  EXPECT_EQ(step.Index, 0);
  EXPECT_EQ(step.Direction, QChar('+'));
  // A list of one entry ends the walk.
  EXPECT_TRUE(StepForward(QStringList{"", ""}, 1, 0).Close);
}

TEST(SlideshowOrderTest, SequentialGoesRoundAndRandomSkipsTheFirstEntry) {
  const QStringList files{"a.png", "", "c.png", "d.png", ""};
  SlideshowOrder order;
  EXPECT_EQ(order.NextIndex(files, 4, 0), 2);
  EXPECT_EQ(order.NextIndex(files, 4, 2), 3);
  EXPECT_EQ(order.NextIndex(files, 4, 3), 0);

  // Random picks run from 1 to the count; the last entry is taken first,
  // and the pick equal to the count lies beyond the list.
  int rounds = 0;
  order.Random = true;
  order.NewQueue = [&rounds](int count) {
    ++rounds;
    return count == 4 ? QList<int>{2, 4, 1, 3} : QList<int>{};
  };
  QList<qint32> shown;
  for (int i = 0; i < 6; ++i) shown << order.NextIndex(files, 4, 0);
  EXPECT_EQ(shown, (QList<qint32>{3, 2, 3, 2, 3, 2}));
  EXPECT_EQ(rounds, 4);

  // Only removed entries and the first: nothing to go to, the show stays.
  EXPECT_EQ(order.NextIndex(QStringList{"a.png", "", "", ""}, 3, 0), 0);
}

// ---- The window on real files ---------------------------------------------------

class SingleImageTest : public testing::Test {
 protected:
  void SetUp() override {
    CreateSharedMsgBox()->SetSoundBeep(false);
    FillMediaTables();
    folder_ = testenv::Root() + "/home/Pictures";
    QDir().mkpath(folder_);
    App().CurrentFolder = folder_;
    App().TitleBarHeight = 300;
  }
  void TearDown() override {
    Windows().Unload(WindowId::SingleImage);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    delete App().DatabaseConnection;
    App().DatabaseConnection = nullptr;
    ReleaseSharedMsgBox();
  }

  void Picture(const QString& name, int width = 64, int height = 48) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    ASSERT_TRUE(image.save(folder_ + "/" + name));
  }
  // Lists the entries as the browser does, with its scratch element.
  void List(QStringList entries, qint32 current) {
    entries << QString();
    App().PictureFiles() = entries;
    App().CurrentPicture() = current;
  }
  SingleImage* Open() {
    auto* viewer = new SingleImage;
    Windows().Loaded(viewer);
    viewer->show();
    return viewer;
  }
  QString Shown(SingleImage* viewer) { return viewer->DescriptionLabel->text(); }

  QString folder_;
  FakeBrowser browser_;
};

TEST_F(SingleImageTest, WalksOverGapsAndInvalidEntriesBothWays) {
  for (const char* name : {"a.png", "c.png", "f.png"}) Picture(name);
  testenv::MakeFile(folder_ + "/e.png", "");  // a zero-byte picture still shows
  List({"a.png", "", "c.png", "notes.txt", "", "e.png", "f.png"}, 2);
  SingleImage* viewer = Open();
  EXPECT_EQ(Shown(viewer), " 3 of 7 files    Name: c.png");
  QTest::mouseClick(viewer->nextButton, Qt::LeftButton);
  EXPECT_EQ(Shown(viewer), " 6 of 7 files    Name: e.png");
  EXPECT_FALSE(viewer->PictureValid);
  QTest::mouseClick(viewer->nextButton, Qt::LeftButton);
  EXPECT_EQ(Shown(viewer), " 7 of 7 files    Name: f.png");
  EXPECT_FALSE(viewer->nextButton->isEnabled());
  QTest::mouseClick(viewer->previousButton, Qt::LeftButton);
  QTest::mouseClick(viewer->previousButton, Qt::LeftButton);
  // The text file is passed over going back as well.
  EXPECT_EQ(Shown(viewer), " 3 of 7 files    Name: c.png");
  QTest::mouseClick(viewer->previousButton, Qt::LeftButton);
  EXPECT_EQ(Shown(viewer), " 1 of 7 files    Name: a.png");
  EXPECT_FALSE(viewer->previousButton->isEnabled());
  EXPECT_EQ(browser_.Calls.last(), "HighlightItem 1 0");
}

TEST_F(SingleImageTest, AListWithNothingToShowClosesInsteadOfLooping) {
  List({"", "notes.txt", "", "readme.txt"}, 1);
  auto* viewer = new SingleImage;
  EXPECT_TRUE(viewer->Closing());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(SingleImageTest, DeletingTheLastShowsTheOneBeforeAndTheOnlyOneCloses) {
  for (const char* name : {"a.png", "b.png", "c.png"}) Picture(name);
  settings::SaveSetting("DeleteOption", "1");
  List({"a.png", "", "c.png"}, 2);
  QPointer<SingleImage> viewer = Open();
  const auto deleteShown = [&viewer] {
    WindowAnswer<DeleteVerify> yes([](DeleteVerify& verify) { verify.MsgButton[0]->click(); });
    QTest::mouseClick(viewer->deleteButton, Qt::LeftButton);
    EXPECT_TRUE(yes.Ran());
  };
  deleteShown();
  EXPECT_FALSE(QFile::exists(folder_ + "/c.png"));
  EXPECT_EQ(App().PictureFiles(), (QStringList{"a.png", "", "", ""}));
  EXPECT_EQ(Shown(viewer), " 1 of 3 files    Name: a.png");
  EXPECT_TRUE(browser_.Calls.contains("MarkItemDeleted 1 2"));
  deleteShown();
  EXPECT_FALSE(QFile::exists(folder_ + "/a.png"));
  EXPECT_TRUE(QFile::exists(folder_ + "/b.png"));
  EXPECT_TRUE(viewer.isNull() || viewer->Closing());
}

TEST_F(SingleImageTest, CaptionsRoundTripUnderTheNameWithoutApostrophes) {
  testenv::InstallDataFile();
  ASSERT_TRUE(OpenDataFile());
  settings::SaveSetting("ShowCaptions", "1");
  Picture("it's mine.png");
  Picture("plain.png");
  List({"it's mine.png", "plain.png"}, 0);
  SingleImage* viewer = Open();
  ASSERT_TRUE(viewer->CaptionText->isVisible());
  viewer->CaptionText->setText("Grandma's garden");
  QTest::mouseClick(viewer->nextButton, Qt::LeftButton);
  Database& db = *App().DatabaseConnection;
  EXPECT_EQ(SelectFileCaption(db, "its mine.png"), "Grandma's garden");
  EXPECT_EQ(viewer->CaptionText->text(), "");
  QTest::mouseClick(viewer->previousButton, Qt::LeftButton);
  EXPECT_EQ(viewer->CaptionText->text(), "Grandma's garden");
  // Emptying the caption removes its row.
  viewer->CaptionText->clear();
  QTest::mouseClick(viewer->nextButton, Qt::LeftButton);
  platform::SqlStatement rows = db.Prepare("SELECT COUNT(*) FROM FileCaptions");
  ASSERT_TRUE(rows.Next());
  EXPECT_EQ(rows.Int(0), 0);
}

TEST_F(SingleImageTest, ABigPhotographIsDecodedAtTheSizeShown) {
  Picture("big.jpg", 6000, 4000);
  List({"big.jpg"}, 0);
  SingleImage* viewer = Open();
  viewer->MaximumWidth = 24120;
  viewer->MaximumHeight = 15000;
  viewer->LoadImage();
  EXPECT_EQ(viewer->NaturalSize(), QSize(6000, 4000));
  EXPECT_EQ(QSize(viewer->PictureWidth, viewer->PictureHeight), QSize(20993, 13995));
  // 20993 twips are 1399 pixels: the decoder gave no more than that.
  EXPECT_EQ(viewer->Picture1->Picture().size(), QSize(1399, 933));
}

TEST_F(SingleImageTest, SlideshowChangesAtTheDelayAndPutsThePictureBack) {
  for (const char* name : {"a.png", "b.png", "c.png"}) Picture(name);
  List({"a.png", "", "b.png", "c.png"}, 2);
  settings::SaveSetting("SlideshowDelay", "2");
  RegisterViewerWindows();
  auto* show = new SlideshowController;
  show->Timer1.stop();  // the test's own clock ticks it
  auto* viewer = Windows().Get<SingleImage>();
  ASSERT_NE(viewer, nullptr);
  EXPECT_TRUE(App().SlideshowRunning);
  EXPECT_FALSE(viewer->nextButton->isVisible());
  show->Timer1_Timer();
  EXPECT_EQ(viewer->PictureIndex, 2);
  show->Timer1_Timer();
  EXPECT_EQ(viewer->PictureIndex, 3);
  show->Timer1.stop();
  show->Timer1_Timer();
  show->Timer1_Timer();
  // Round to the first, passing over the removed entry.
  EXPECT_EQ(viewer->PictureIndex, 0);
  show->Timer1.stop();

  // A delay typed above the limit is kept as typed and shown as the limit.
  show->NumberBox1->SetValue("75");
  EXPECT_EQ(settings::GetSetting("SlideshowDelay"), "75");
  EXPECT_EQ(show->NumberBox1->Value(), "60");
  EXPECT_EQ(show->Delay(), 60);

  App().CurrentPicture() = 0;
  show->stopButton->click();
  EXPECT_EQ(App().CurrentPicture(), 2);
  EXPECT_TRUE(QTest::qWaitFor([] { return !App().SlideshowRunning; }));
  EXPECT_FALSE(Windows().IsLoaded(WindowId::SingleImage));
  EXPECT_FALSE(Windows().IsLoaded(WindowId::SlideshowController));
}

TEST_F(SingleImageTest, BadPicturesShowTheMarkerAndTheWindowStays) {
  Picture("a.png");
  Picture("b.png");
  // 20000 x 20000 pixels of two colours: 50 MB as it is stored.
  QImage huge(20000, 20000, QImage::Format_Mono);
  huge.setColorTable({qRgb(0, 128, 0), qRgb(255, 255, 255)});
  huge.fill(0);
  ASSERT_TRUE(huge.save(folder_ + "/huge.png"));
  huge = QImage();
  testenv::MakeFile(folder_ + "/cut.jpg", QByteArray("\xFF\xD8\xFF\xE0", 4));
  List({"a.png", "b.png", "cut.jpg", "huge.png"}, 0);
  SingleImage* viewer = Open();
  // Deleted behind the viewer's back.
  QFile::remove(folder_ + "/b.png");
  QTest::mouseClick(viewer->nextButton, Qt::LeftButton);
  EXPECT_EQ(Shown(viewer), " 2 of 4 files    Name: b.png");
  EXPECT_FALSE(viewer->PictureValid);
  QTest::mouseClick(viewer->nextButton, Qt::LeftButton);
  EXPECT_EQ(Shown(viewer), " 3 of 4 files    Name: cut.jpg");
  EXPECT_FALSE(viewer->PictureValid);
  QTest::mouseClick(viewer->nextButton, Qt::LeftButton);
  // Too big to decode within the readers' ceiling: the marker, not a
  // program out of memory.
  EXPECT_EQ(Shown(viewer), " 4 of 4 files    Name: huge.png");
  EXPECT_FALSE(viewer->PictureValid);
  EXPECT_EQ(viewer->Picture1->Picture().size(), QSize(32, 32));
  // Nothing of this copies or prints: the two messages say so.
  QTest::mouseClick(viewer->previousButton, Qt::LeftButton);
  QString said;
  testenv::WhenMessageBoxShown([&said](MessageBox& box) {
    said = box.MsgText->text();
    QTest::keyClick(&box, Qt::Key_Return);
  });
  viewer->clipboardButton_Click();
  EXPECT_EQ(said, "An invalid picture cannot be copied to the clipboard");
}

}  // namespace
