#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <utility>

#include <QRegularExpression>
#include <QStringList>

#include "core/AppState.h"
#include "platform/SiblingPrograms.h"
#include "platform/SoundFont.h"
#include "support/PulseServer.h"
#include "support/TestEnv.h"
#include "system/MixerModule.h"

namespace {

// A control's identity, minimum and maximum.
std::array<qint64, 3> Fields(const MixerControl& control) {
  return {control.dwControlID, control.Minimum, control.Maximum};
}

bool Empty(const MixerControl& control) { return Fields(control) == std::array<qint64, 3>{}; }

// The percent of every channel of the server's output, as pactl shows them.
QList<int> ChannelPercents(const PulseServer& server) {
  QList<int> percents;
  static const QRegularExpression channel(R"(/\s*(\d+)%)");
  auto it = channel.globalMatch(server.Pactl({"get-sink-volume", PulseServer::Sink()}));
  while (it.hasNext()) percents << it.next().captured(1).toInt();
  return percents;
}

class MixerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // No sound font unless a test makes one.
    platform::SetGeneralMidiSoundFont(testenv::Root() + "/sf2/TimGM6mb.sf2");
  }
  void TearDown() override {
    CloseMixer();
    platform::SetGeneralMidiSoundFont({});
    platform::SetProgramStarter({});
  }
  void InstallSoundFont() { testenv::MakeFile(testenv::Root() + "/sf2/TimGM6mb.sf2", "sfbk"); }
};

}  // namespace

TEST_F(MixerTest, WithoutAServerEveryCallFailsQuietly) {
  AbsentPulseServer absent;
  testing::internal::CaptureStderr();
  EXPECT_FALSE(OpenMixer(0));
  for (int index = 0; index <= MixerControlCount; ++index) EXPECT_TRUE(Empty(MixerControlAt(index)));
  EXPECT_EQ(GetVolume(0), 0);
  EXPECT_FALSE(SetVolume(0, 50));
  EXPECT_FALSE(SetMute(7, true));
  EXPECT_FALSE(ToggleMute());
  StepVolume(1);
  EXPECT_EQ(AudioAbilities(), 0);
  InstallSoundFont();
  EXPECT_EQ(AudioAbilities(), 2);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(MixerTest, AServerThatNeverAnswersIsGivenUpOnAfterTheTimeOut) {
  // Accepts the connection (the system does that for a listening socket)
  // and then says nothing.
  const QByteArray path = (testenv::Root() + "/silent").toUtf8();
  const int silent = socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_GE(silent, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, path.constData(), sizeof(address.sun_path) - 1);
  ASSERT_EQ(bind(silent, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
  ASSERT_EQ(listen(silent, 4), 0);
  AbsentPulseServer restore;  // puts PULSE_SERVER back at the end
  qputenv("PULSE_SERVER", "unix:" + path);

  EXPECT_FALSE(OpenMixer(0));
  EXPECT_EQ(GetVolume(0), 0);
  EXPECT_EQ(AudioAbilities(), 0);
  close(silent);
}

TEST_F(MixerTest, OpensDeviceZeroWithTheMasterVolumeAndMuteOnly) {
  PulseServer server;
  ASSERT_TRUE(server.Running());
  EXPECT_FALSE(OpenMixer(1));
  EXPECT_FALSE(OpenMixer(-1));
  EXPECT_TRUE(Empty(MixerControlAt(0)));

  ASSERT_TRUE(OpenMixer(0));
  EXPECT_EQ(Fields(MixerControlAt(0)), (std::array<qint64, 3>{1, 0, 65535}));
  EXPECT_EQ(Fields(MixerControlAt(7)), (std::array<qint64, 3>{2, 0, 1}));
  for (int index : {1, 4, 8, -1}) EXPECT_TRUE(Empty(MixerControlAt(index))) << index;

  CloseMixer();
  EXPECT_TRUE(Empty(MixerControlAt(0)));
  EXPECT_FALSE(SetVolume(0, 30));
  EXPECT_EQ(GetVolume(0), 0);
  // Opens again after a close.
  ASSERT_TRUE(OpenMixer(0));
  EXPECT_TRUE(SetVolume(0, 30));
  EXPECT_EQ(server.VolumePercent(), 30);

  // The open mixer is program-wide state: a reset of it closes the mixer.
  ResetAppState();
  EXPECT_TRUE(Empty(MixerControlAt(0)));
  EXPECT_FALSE(SetVolume(0, 50));
  EXPECT_EQ(server.VolumePercent(), 30);
}

TEST_F(MixerTest, VolumeAndMuteGoToTheServerAndComeBackFromIt) {
  PulseServer server;
  ASSERT_TRUE(server.Running());
  ASSERT_TRUE(OpenMixer(0));

  EXPECT_TRUE(SetVolume(0, 40));
  EXPECT_EQ(server.VolumeRaw(), 26200);
  EXPECT_TRUE(SetVolume(0, 100));
  EXPECT_EQ(server.VolumeRaw(), 65500);

  // Set from outside; above 100 % reads as 100.
  for (const auto& [set, read] : {std::pair{40, 40}, {73, 73}, {150, 100}, {0, 0}}) {
    ASSERT_TRUE(server.SetVolumePercent(set));
    EXPECT_EQ(GetVolume(0), read) << set;
  }

  // The compact disc and wave out lines do not exist: their writes fail
  // and the master still changes.
  EXPECT_FALSE(SetVolume(4, 60));
  EXPECT_TRUE(SetVolume(0, 60));
  EXPECT_EQ(server.VolumePercent(), 60);
  EXPECT_EQ(GetVolume(4), 0);

  // The mute turns both ways; the other lines have no mute.
  EXPECT_FALSE(GetMute(7));
  EXPECT_TRUE(SetMute(7, true));
  EXPECT_TRUE(server.Muted());
  EXPECT_TRUE(GetMute(7));
  EXPECT_TRUE(ToggleMute());
  EXPECT_FALSE(server.Muted());
  EXPECT_FALSE(SetMute(11, true));
  EXPECT_FALSE(server.Muted());
}

TEST_F(MixerTest, AVolumeWriteKeepsTheBalanceOfTheChannels) {
  PulseServer server;
  ASSERT_TRUE(server.Running());
  ASSERT_TRUE(OpenMixer(0));
  ASSERT_TRUE(server.PactlOk({"set-sink-volume", PulseServer::Sink(), "40%", "20%"}));
  EXPECT_EQ(ChannelPercents(server), (QList<int>{40, 20}));
  EXPECT_EQ(GetVolume(0), 40);  // the louder channel
  EXPECT_TRUE(SetVolume(0, 80));
  EXPECT_EQ(ChannelPercents(server), (QList<int>{80, 40}));
}

TEST_F(MixerTest, StepVolumeMovesOnePercentAndStopsAtTheEnds) {
  PulseServer server;
  ASSERT_TRUE(server.Running());
  ASSERT_TRUE(OpenMixer(0));

  ASSERT_TRUE(server.SetVolumePercent(40));
  StepVolume(1);
  EXPECT_EQ(server.VolumeRaw(), 41 * 655);
  StepVolume(0);
  EXPECT_EQ(server.VolumeRaw(), 40 * 655);

  ASSERT_TRUE(server.SetVolumePercent(100));
  StepVolume(1);
  EXPECT_EQ(server.VolumeRaw(), 65536);  // untouched
  StepVolume(0);
  EXPECT_EQ(server.VolumeRaw(), 99 * 655);

  ASSERT_TRUE(server.SetVolumePercent(0));
  StepVolume(0);
  EXPECT_EQ(server.VolumeRaw(), 0);
}

TEST_F(MixerTest, AudioAbilitiesTellsWaveFromAnOutputAndMidiFromTheSoundFont) {
  PulseServer server;
  ASSERT_TRUE(server.Running());
  EXPECT_EQ(AudioAbilities(), 1);
  InstallSoundFont();
  EXPECT_EQ(AudioAbilities(), 3);
  // Without an output there is nothing to play wave sound on.
  ASSERT_TRUE(server.PactlOk({"unload-module", "module-null-sink"}));
  EXPECT_EQ(AudioAbilities(), 2);
  EXPECT_FALSE(OpenMixer(0));
}
