// The player control: its state machine and the order of its events, the
// mp3 start, failed loads and sizes in twips.

#include <gtest/gtest.h>

#include <QTest>

#include "support/TestEnv.h"
#include "viewers/AudioVideoPlayer.h"
#include "viewers/Mci.h"
#include "viewers/PlayerMedia.h"
#include "viewers/VideoFrame.h"

namespace {

constexpr int Generous = 15000;

class PlayerTest : public testing::Test {
 protected:
  void SetUp() override {
    qputenv("VISTREL_MPV_AO", "null");
    MciWatchCommands([this](const QString& command, const QString&) { commands << command; });
  }
  void TearDown() override {
    MciWatchCommands({});
    MciCloseAll();
  }

  // Records the control's events as words: "state N", "start", "finish",
  // "error N", "resize W H".
  void Listen(AudioVideoPlayer& player) {
    QObject::connect(&player, &AudioVideoPlayer::PlayStateChange,
                     [this](int state) { events << QStringLiteral("state %1").arg(state); });
    QObject::connect(&player, &AudioVideoPlayer::OnPlayStart, [this] { events << "start"; });
    QObject::connect(&player, &AudioVideoPlayer::OnPlayFinish, [this] { events << "finish"; });
    QObject::connect(&player, &AudioVideoPlayer::OnPlayerError,
                     [this](int number, const QString&) { events << QStringLiteral("error %1").arg(number); });
    QObject::connect(&player, &AudioVideoPlayer::OnSelfResize, [this](int width, int height) {
      events << QStringLiteral("resize %1 %2").arg(width).arg(height);
    });
  }

  // Commands that begin with a word.
  QStringList Sent(const QString& verb) const {
    QStringList found;
    for (const QString& command : commands)
      if (command.startsWith(verb + " ")) found << command;
    return found;
  }

  QStringList events;
  QStringList commands;
};

TEST_F(PlayerTest, PlayPauseResumeAndEndRaiseTheirEventsInOrder) {
  AudioVideoPlayer player;
  Listen(player);
  player.SetFileName(playermedia::Wave(2));
  EXPECT_EQ(player.Status->text(), "Loaded successfully");
  EXPECT_EQ(player.Duration(), 2);
  EXPECT_EQ(player.TimeLabel->text(), "00:00 / 00:02");

  player.Play();
  EXPECT_EQ(player.PlayState(), 2);
  player.Pause();
  EXPECT_EQ(player.Status->text(), "Paused");
  player.Pause();
  EXPECT_EQ(player.Status->text(), "Playing");
  ASSERT_TRUE(QTest::qWaitFor([&] { return events.contains("finish"); }, Generous));
  EXPECT_EQ(events, QStringList({"state 3", "start", "state 2", "state 1", "state 2", "state 0", "finish"}));
  EXPECT_EQ(player.Status->text(), "Stopped");
  EXPECT_EQ(player.CurrentTime(), "00:02");

  // Pause with nothing playing only says so.
  player.Pause();
  EXPECT_EQ(player.Status->text(), "Play the file");
}

TEST_F(PlayerTest, StopThenPlayStartsAtTheTopAndRepeatPlaysOnWithoutAStop) {
  AudioVideoPlayer player;
  player.SetChildNo(7);
  Listen(player);
  player.SetFileName(playermedia::Wave(1));
  player.Play();
  player.StopPlay();
  player.Play();
  EXPECT_EQ(Sent("play"), QStringList({"play 7movie from 0 to 1000", "play 7movie from 0 to 1000"}));
  EXPECT_EQ(events, QStringList({"state 3", "start", "state 2", "state 0", "state 2"}));

  events.clear();
  player.SetRepeat(true);
  ASSERT_TRUE(QTest::qWaitFor([&] { return Sent("play").size() >= 4; }, Generous));
  EXPECT_EQ(events, QStringList({"state 2", "state 2"}));
  player.SetRepeat(false);
  ASSERT_TRUE(QTest::qWaitFor([&] { return events.contains("finish"); }, Generous));
  EXPECT_EQ(events.mid(events.size() - 2), QStringList({"state 0", "finish"}));
}

TEST_F(PlayerTest, AnMp3StartsAt180AndNoSeekGoesBelowIt) {
  AudioVideoPlayer player;
  player.SetChildNo(7);
  player.SetFileName(playermedia::Mp3(3));
  player.Play();
  player.SetCurrentPosition(0);
  player.SkipBackward();
  EXPECT_EQ(Sent("play"),
            QStringList({"play 7movie from 180", "play 7movie from 180", "play 7movie from 180"}));
  // Forward past the end: the seek is refused once and retried at the end.
  player.SetFastForwardBySec(10);
  player.SkipForward();
  EXPECT_EQ(Sent("play").size(), 5);
  ASSERT_TRUE(QTest::qWaitFor([&] { return player.PlayState() == 0; }, Generous));
}

TEST_F(PlayerTest, ASkipWhilePausedStaysPaused) {
  AudioVideoPlayer player;
  Listen(player);
  player.SetFileName(playermedia::Wave(8));
  player.Play();
  player.Pause();
  events.clear();
  player.SkipForward();
  EXPECT_EQ(events, QStringList({"state 2", "state 1"}));
  EXPECT_EQ(player.Status->text(), "Paused");
  EXPECT_EQ(player.CurrentPosition(), 3);
  EXPECT_EQ(player.CurrentTime(), "00:03");
  QTest::qWait(1500);
  player.SkipBackward();
  EXPECT_EQ(player.CurrentPosition(), 0);
  EXPECT_EQ(player.PlayState(), 1);

  // The slider's time shows only while it is dragged.
  player.SetCurrentPosition2(5);
  EXPECT_EQ(player.CurrentTime(), "00:00");
  player.SetScrolling(true);
  player.SetCurrentPosition2(5);
  EXPECT_EQ(player.CurrentTime(), "00:05");
  player.SetCurrentPosition2(8);
  EXPECT_EQ(player.CurrentTime(), "00:05");
}

TEST_F(PlayerTest, FailedLoadsFinishAndOnlyALowerCaseAviIsTriedTwice) {
  AudioVideoPlayer player;
  player.SetChildNo(7);
  Listen(player);
  player.SetFileName(playermedia::Garbage("bad.avi", 4000));
  EXPECT_EQ(events, QStringList({"state 3", "state 0", "finish", "state 0", "finish"}));
  EXPECT_EQ(Sent("open").size(), 2);
  EXPECT_TRUE(Sent("open").value(1).contains(" type AviVideo Alias 8movie "));
  EXPECT_EQ(player.ChildNo(), 9.0);
  EXPECT_EQ(player.Status->text(), "Stopped");

  commands.clear();
  events.clear();
  player.SetFileName(playermedia::Garbage("BAD.AVI", 4000));
  EXPECT_EQ(Sent("open").size(), 1);
  EXPECT_EQ(events, QStringList({"state 3", "state 0", "finish"}));

  // A damaged mp3 fails alike; Play then reports it.
  events.clear();
  player.SetFileName(playermedia::Garbage("broken.mp3", 5000));
  player.Play();
  EXPECT_EQ(events, QStringList({"state 3", "state 0", "finish", "state 3", "state 0", "finish", "error 0"}));
  EXPECT_EQ(player.Status->text(), "File not loaded");
}

TEST_F(PlayerTest, AFileDeletedWhilePlayingEndsNormally) {
  AudioVideoPlayer player;
  Listen(player);
  const QString path = testenv::Root() + "/doomed.wav";
  ASSERT_TRUE(QFile::copy(playermedia::Wave(2), path));
  player.SetFileName(path);
  player.Play();
  ASSERT_TRUE(QFile::remove(path));
  ASSERT_TRUE(QTest::qWaitFor([&] { return events.contains("finish"); }, Generous));
  EXPECT_EQ(player.Status->text(), "Stopped");
}

TEST_F(PlayerTest, AFilmSizesTheControlOrIsFittedIntoIt) {
  AudioVideoPlayer player;
  Listen(player);
  player.SetFileName(playermedia::Film());
  // The film's own size, with the strip below it.
  EXPECT_EQ(events, QStringList({"state 3", "resize 4800 3945"}));
  EXPECT_TRUE(player.FrameVideo->isEnabled());
  EXPECT_EQ(player.FrameVideo->geometry(), QRect(0, 0, 320, 240));
  EXPECT_EQ(player.StatusDisplay->geometry(), QRect(0, 240, 320, 23));
  player.show();
  player.Play();
  ASSERT_TRUE(QTest::qWaitFor([&] { return player.FrameVideo->FramesShown() > 5; }, Generous));

  // Fitted: the film keeps its shape in the room above the strip.
  player.SetMovieSizer(1);
  player.VidSize(6000, 3345);
  EXPECT_EQ(player.FrameVideo->geometry(), QRect(66, 0, 266, 200));

  // A sound file in video mode has no picture.
  player.SetMovieSizer(0);
  events.clear();
  player.SetFileName(playermedia::Wave(2));
  EXPECT_FALSE(player.FrameVideo->isEnabled());
  EXPECT_EQ(player.WidthTwips(), 3000);
  EXPECT_EQ(player.HeightTwips(), 1500);
  EXPECT_EQ(events, QStringList({"state 3"}));
}

}  // namespace
