#include <gtest/gtest.h>

#include "catalogue/CdDrives.h"
#include "platform/CdDevices.h"
#include "core/AppState.h"
#include "support/TestEnv.h"

namespace {

// A CUE sheet over a BIN of `seconds` of sectors; the CUE's path.
QString MakeImage(const QString& name, int seconds, int sectorSize, const QString& tracks) {
  const QString stem = testenv::Root() + "/images/" + name;
  testenv::MakeFile(stem + ".bin", QByteArray(seconds * 75 * sectorSize, '\x5a'));
  return testenv::MakeFile(stem + ".cue",
                           ("FILE \"" + name + ".bin\" BINARY\r\n" + tracks).toUtf8());
}

class CdDrivesTest : public ::testing::Test {
 protected:
  void TearDown() override { platform::ClearCdDeviceOverride(); }
  const QString audio = MakeImage("audio", 4, 2352,
                                  "TRACK 01 AUDIO\r\nINDEX 01 00:00:00\r\n"
                                  "TRACK 02 AUDIO\r\nINDEX 01 00:02:00\r\n");
  const QString data = MakeImage("data", 4, 2048, "TRACK 01 MODE1/2048\r\nINDEX 01 00:00:00\r\n");
  const QString mixed = MakeImage("mixed", 6, 2352,
                                  "TRACK 01 MODE1/2352\r\nINDEX 01 00:00:00\r\n"
                                  "TRACK 02 AUDIO\r\nINDEX 01 00:02:00\r\n"
                                  "TRACK 03 AUDIO\r\nINDEX 01 00:04:00\r\n");
  const QString missing = testenv::Root() + "/images/none.cue";
};

}  // namespace

TEST_F(CdDrivesTest, ReadsTheTracksOfAnImage) {
  const platform::CdDisc disc = platform::ReadCdDisc(mixed);
  EXPECT_TRUE(disc.ready);
  ASSERT_EQ(disc.tracks.size(), 3);
  EXPECT_EQ(QList<bool>({disc.tracks[0].audio, disc.tracks[1].audio, disc.tracks[2].audio}),
            QList<bool>({false, true, true}));
  EXPECT_FALSE(platform::ReadCdDisc(data).HasAudioTracks());
  EXPECT_FALSE(platform::ReadCdDisc(missing).ready);

  EXPECT_EQ(AudioTrackFileNames(audio), (QStringList{"Track01.cda", "Track02.cda"}));
  EXPECT_EQ(AudioTrackFileNames(mixed), (QStringList{"Track02.cda", "Track03.cda"}));
  EXPECT_TRUE(AudioTrackFileNames(data).isEmpty());
}

TEST_F(CdDrivesTest, FillCdDrivesTakesEveryDriveAndAudioOnlyTheReadyAudioOnes) {
  platform::SetCdDeviceOverride({data, audio, missing});
  FillCdDrives();
  EXPECT_EQ(App().CdDrives, (QStringList{data, audio, missing}));
  FillAudioCdDrives();
  EXPECT_EQ(App().CdDrives, QStringList{audio});

  platform::SetCdDeviceOverride({data});
  FillAudioCdDrives();
  EXPECT_TRUE(App().CdDrives.isEmpty());
  EXPECT_EQ(App().CdDriveCount, 0);
}
