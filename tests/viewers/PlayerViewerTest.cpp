#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QPointer>
#include <QTest>

#include "catalogue/MediaTypes.h"
#include "controls/Button.h"
#include "controls/NewSlider.h"
#include "controls/TransCheck.h"
#include "core/AppState.h"
#include "core/Settings.h"
#include "core/WindowRegistry.h"
#include "fileops/FakeBrowser.h"
#include "shell/SharedMessageBox.h"
#include "support/TestEnv.h"
#include "viewers/AudioVideoPlayer.h"
#include "viewers/Mci.h"
#include "viewers/PlayerViewer.h"
#include "viewers/PlayerMedia.h"

namespace {

class PlayerViewerTest : public testing::Test {
 protected:
  void SetUp() override {
    CreateSharedMsgBox()->SetSoundBeep(false);
    FillMediaTables();
    folder_ = testenv::Root() + "/home/Music";
    QDir().mkpath(folder_);
    App().CurrentFolder = folder_;
    App().TitleBarHeight = 300;
  }
  void TearDown() override {
    Windows().Unload(WindowId::SingleAudio);
    Windows().Unload(WindowId::SingleVideo);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    MciCloseAll();
    ReleaseSharedMsgBox();
  }
  // Puts a copy of a made file into the folder under the name given.
  void Put(const QString& made, const QString& name) {
    ASSERT_FALSE(made.isEmpty()) << "ffmpeg could not make " << name.toStdString();
    ASSERT_TRUE(QFile::copy(made, folder_ + "/" + name));
  }
  void List(int tab, QStringList entries, qint32 current) {
    entries << QString();
    App().List(tab) = entries;
    App().Current(tab) = current;
  }
  template <typename Viewer>
  Viewer* Open() {
    auto* viewer = new Viewer;
    Windows().Loaded(viewer);
    viewer->show();
    return viewer;
  }

  QString folder_;
  FakeBrowser browser_;
};

TEST_F(PlayerViewerTest, AudioSliderTransportAndContinuousPlay) {
  Put(playermedia::Mp3(5), "five.mp3");
  Put(playermedia::Wave(2), "two.wav");
  List(AudiosTab, {"five.mp3", "", "two.wav"}, 0);
  settings::SaveSetting("ContinuousPlayAudio", "0");
  SingleAudio* viewer = Open<SingleAudio>();
  EXPECT_EQ(viewer->DescriptionLabel->text(), " 1 of 3 files    Name: five.mp3");
  EXPECT_EQ(viewer->Slider1->Max(), 5);
  EXPECT_TRUE(viewer->tagButton->isVisible());
  EXPECT_TRUE(QTest::qWaitFor([viewer] { return viewer->Player->PlayState() == 2; }, 10000));

  // Back by a step from under the step lands on the start.
  viewer->Slider1->SetValue(1);
  viewer->fbButton_Click();
  EXPECT_EQ(viewer->Slider1->Value(), 0);

  // The walk passes over the removed entry; a wave file has no tags to edit.
  QTest::mouseClick(viewer->nextButton, Qt::LeftButton);
  EXPECT_EQ(viewer->DescriptionLabel->text(), " 3 of 3 files    Name: two.wav");
  EXPECT_FALSE(viewer->tagButton->isVisible());
  EXPECT_FALSE(viewer->nextButton->isEnabled());
  EXPECT_EQ(viewer->Slider1->Max(), 2);
  EXPECT_TRUE(QTest::qWaitFor([viewer] { return viewer->Player->PlayState() == 2; }, 10000));

  // The end of the file stays in the window with the slider at its end.
  EXPECT_TRUE(QTest::qWaitFor([viewer] { return viewer->Player->PlayState() == 0; }, 20000));
  EXPECT_EQ(viewer->Player->Status->text(), "Stopped");
  EXPECT_EQ(viewer->Slider1->Value(), 2);
  EXPECT_EQ(viewer->DescriptionLabel->text(), " 3 of 3 files    Name: two.wav");
  // Continuous play after the end starts the file again and is remembered.
  viewer->Check1->SetValue(1);
  EXPECT_EQ(settings::GetSetting("ContinuousPlayAudio"), "1");
  EXPECT_TRUE(viewer->Player->Repeat());
  EXPECT_TRUE(QTest::qWaitFor([viewer] { return viewer->Player->PlayState() == 2; }, 10000));
}

TEST_F(PlayerViewerTest, AFinishedFilmWalksOnAndTheLastStops) {
  Put(playermedia::Film(), "a.avi");
  Put(playermedia::Film(), "b.avi");
  List(VideosTab, {"a.avi", "b.avi"}, 0);
  settings::SaveSetting("ContinuousPlayVideo", "0");
  QPointer<SingleVideo> viewer = Open<SingleVideo>();
  EXPECT_EQ(viewer->Slider1->Max(), 200);
  // The window follows the film: 320 x 240 pixels and the viewer's margins.
  EXPECT_TRUE(QTest::qWaitFor([&] { return viewer->Player->VideoWidth() == 320; }, 10000));
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return viewer->DescriptionLabel->text() == " 2 of 2 files    Name: b.avi"; }, 20000));
  // The last film ends and stays: its next button is disabled.
  EXPECT_TRUE(QTest::qWaitFor([&] { return viewer->Player->PlayState() == 0; }, 20000));
  QTest::qWait(300);
  ASSERT_FALSE(viewer.isNull());
  EXPECT_EQ(viewer->DescriptionLabel->text(), " 2 of 2 files    Name: b.avi");
  EXPECT_EQ(viewer->Slider1->Value(), 200);
}

}  // namespace
