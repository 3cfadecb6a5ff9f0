// The media command interpreter and its devices: reply words, numbers,
// pictures, and MIDI files on the synthesizer.

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTest>

#include "platform/SoundFont.h"
#include "support/PulseServer.h"
#include "support/TestEnv.h"
#include "viewers/Mci.h"
#include "viewers/PlayerCommands.h"
#include "viewers/PlayerMedia.h"
#include "viewers/VideoFrame.h"

namespace {

const QString NotOpen = "The specified device is not open or is not recognized.";

class PlayerMciTest : public testing::Test {
 protected:
  void SetUp() override { qputenv("VISTREL_MPV_AO", "null"); }
  void TearDown() override { MciCloseAll(); }

  // The number a status command gives; -1 when it failed.
  static qint64 Status(const QString& alias, const QString& item) {
    QString returned;
    if (MciSendString("status " + alias + " " + item, &returned) != "Success") return -1;
    return returned.toLongLong();
  }
};

TEST_F(PlayerMciTest, FormatsTimesAndRoundsHalvesToEven) {
  EXPECT_EQ(FormatTime(3599), "59:59");
  EXPECT_EQ(FormatTime(3605), "1:00:05");
  EXPECT_EQ(RoundHalfEven(2.5), 2);
  EXPECT_EQ(RoundHalfEven(3.5), 4);

  EXPECT_EQ(LeadingNumber(" 1 2ab"), 12);
  EXPECT_EQ(LeadingNumber("cified"), 0);
}

TEST_F(PlayerMciTest, RepliesToTheCommandsOfASoundFile) {
  const QString wave = playermedia::Wave(2);
  ASSERT_FALSE(wave.isEmpty()) << "ffmpeg could not make the test files";
  // A path with blanks goes in double quotes.
  const QString spaced = testenv::Root() + "/with blanks/a tone.wav";
  QDir().mkpath(QFileInfo(spaced).path());
  ASSERT_TRUE(QFile::copy(wave, spaced));

  EXPECT_EQ(MciSendString("open \"" + spaced + "\" type MPEGVideo Alias Tone parent 0 Style 1073741824"),
            "Success");
  EXPECT_NE(MciSendString("open \"" + spaced + "\" type MPEGVideo Alias tone parent 0"), "Success");
  EXPECT_NE(MciSendString("open \"" + testenv::Root() + "/none.wav\" type MPEGVideo Alias other"), "Success");
  EXPECT_NE(MciSendString("open \"" + spaced + "\" type Gramophone Alias other"), "Success");

  EXPECT_EQ(MciSendString("set tone time format frames"), "Success");
  EXPECT_EQ(Status("tone", "length"), 2000);
  EXPECT_EQ(Status("tone", "position"), 0);
  QString returned = "stale";
  EXPECT_NE(MciSendString("Where tone destination", &returned), "Success");
  EXPECT_EQ(returned, "");

  EXPECT_EQ(MciSendString("status other position"), NotOpen);
  EXPECT_NE(MciSendString("rewind tone"), "Success");
  EXPECT_NE(MciSendString("play tone from 2001"), "Success");
  EXPECT_NE(MciSendString("play tone from 500 to 400"), "Success");
  EXPECT_NE(MciSendString("play tone from half"), "Success");
  EXPECT_EQ(Status("tone", "position"), 0);

  EXPECT_EQ(MciSendString("play tone from 500 to 2000"), "Success");
  EXPECT_TRUE(QTest::qWaitFor([] { return Status("tone", "position") >= 700; }, 10000));
  EXPECT_EQ(MciSendString("Pause tone"), "Success");
  const qint64 paused = Status("tone", "position");
  QTest::qWait(300);
  EXPECT_EQ(Status("tone", "position"), paused);
  EXPECT_EQ(MciSendString("Resume tone"), "Success");
  // At the end the position is the length.
  EXPECT_TRUE(QTest::qWaitFor([] { return Status("tone", "position") == 2000; }, 10000));

  EXPECT_EQ(MciSendString("Close tone"), "Success");
  EXPECT_EQ(MciSendString("Close tone"), NotOpen);
}

TEST_F(PlayerMciTest, DrawsAFilmIntoItsFrame) {
  const QString film = playermedia::Film();
  const QString silent = playermedia::SilentFilm();
  ASSERT_FALSE(film.isEmpty() || silent.isEmpty());
  auto frame = std::make_unique<VideoFrame>();
  frame->resize(200, 150);
  const QString handle = frame->Handle();
  EXPECT_EQ(VideoFrame::FromHandle(handle), frame.get());

  ASSERT_EQ(MciSendString("open \"" + film + "\" type MPEGVideo Alias film parent " + handle), "Success");
  QString returned;
  EXPECT_EQ(MciSendString("Where film destination", &returned), "Success");
  EXPECT_EQ(returned, "0 0 320 240");
  EXPECT_EQ(MciSendString("put film window at 0 0 160 120"), "Success");
  EXPECT_EQ(MciSendString("play film from 0 to 2000"), "Success");
  EXPECT_TRUE(QTest::qWaitFor([&] { return frame->FramesShown() > 2; }, 10000));
  EXPECT_EQ(frame->Picture().size(), QSize(160, 120));
  EXPECT_EQ(MciSendString("Close film"), "Success");
  EXPECT_TRUE(frame->Picture().isNull());

  // A film without a sound track plays to its end all the same.
  ASSERT_EQ(MciSendString("open \"" + silent + "\" type MPEGVideo Alias silent parent " + handle), "Success");
  EXPECT_EQ(Status("silent", "length"), 2000);
  EXPECT_EQ(MciSendString("play silent from 1500"), "Success");
  EXPECT_TRUE(QTest::qWaitFor([] { return Status("silent", "position") == 2000; }, 10000));

  frame.reset();
  EXPECT_EQ(VideoFrame::FromHandle(handle), nullptr);
  EXPECT_NE(MciSendString("open \"" + film + "\" type MPEGVideo Alias film parent " + handle), "Success");
}

TEST_F(PlayerMciTest, PlaysMidiOnTheSynthesizer) {
  AbsentPulseServer noServer;
  const QString mid = testenv::MakeFile(testenv::Root() + "/song.mid", playermedia::MidiSong());
  const QString rmi = testenv::MakeFile(testenv::Root() + "/song.rmi", playermedia::RmidSong());

  // A MIDI file opened as a film goes to the synthesizer: it has a length
  // but no picture.
  ASSERT_EQ(MciSendString("open \"" + mid + "\" type MPEGVideo Alias song parent 0"), "Success");
  EXPECT_EQ(Status("song", "length"), 2500);
  EXPECT_NE(MciSendString("Where song destination"), "Success");
  EXPECT_EQ(MciSendString("play song from 1000 to 2500"), "Success");
  EXPECT_GE(Status("song", "position"), 1000);
  EXPECT_TRUE(QTest::qWaitFor([] { return Status("song", "position") == 2500; }, 10000));
  // Once at the end it stays there.
  QTest::qWait(200);
  EXPECT_EQ(Status("song", "position"), 2500);
  EXPECT_EQ(MciSendString("play song from 0"), "Success");
  EXPECT_LT(Status("song", "position"), 2500);

  ASSERT_EQ(MciSendString("open \"" + rmi + "\" type sequencer Alias wrapped"), "Success");
  EXPECT_EQ(Status("wrapped", "length"), 2500);

  // A sound file is no MIDI file, and without a sound font nothing plays.
  EXPECT_NE(MciSendString("open \"" + playermedia::Wave(2) + "\" type sequencer Alias wave"), "Success");
  platform::SetGeneralMidiSoundFont(testenv::Root() + "/none.sf2");
  EXPECT_NE(MciSendString("open \"" + mid + "\" type sequencer Alias silent"), "Success");
}

TEST_F(PlayerMciTest, MidiPlaysThroughASoundServerAndClosesPromptly) {
  PulseServer server;
  ASSERT_TRUE(server.Running());
  const QString mid = testenv::MakeFile(testenv::Root() + "/song.mid", playermedia::MidiSong());
  ASSERT_EQ(MciSendString("open \"" + mid + "\" type sequencer Alias song"), "Success");
  EXPECT_EQ(MciSendString("play song from 0"), "Success");
  EXPECT_TRUE(QTest::qWaitFor([] { return Status("song", "position") > 200; }, 20000));
  EXPECT_EQ(MciSendString("Close song"), "Success");
}

}  // namespace
