#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <cmath>

#include "catalogue/CdDrives.h"
#include "cd/CdAccess.h"
#include "cd/CdCommands.h"
#include "cd/CddbServer.h"
#include "core/AppState.h"
#include "core/DataFile.h"
#include "core/Database.h"
#include "core/Settings.h"
#include "core/Statements.h"
#include "platform/CdDevices.h"
#include "support/TestEnv.h"

namespace {

constexpr int kSectorBytes = 2352;
constexpr int kSectorsPerSecond = 75;

// One track of a disc image: its length in seconds, audio or data.
struct ImageTrack {
  int seconds = 2;
  bool audio = true;
};

// Writes a CUE/BIN disc image into its own folder and answers the CUE
// sheet's path. Every track holds silence; with CD-TEXT the sheet names
// the disc and each track.
QString MakeImage(const QString& name, const QList<ImageTrack>& tracks, bool cdText = false) {
  const QString folder = testenv::Root() + "/" + name;
  QByteArray bin;
  QString cue;
  if (cdText) cue += "PERFORMER \"The Testers\"\nTITLE \"Disc " + name + "\"\n";
  cue += "FILE \"disc.bin\" BINARY\n";
  for (int i = 0; i < tracks.size(); ++i) {
    const int start = int(bin.size() / kSectorBytes);
    cue += QString("  TRACK %1 %2\n").arg(i + 1, 2, 10, QChar('0')).arg(tracks[i].audio ? "AUDIO" : "MODE1/2352");
    if (cdText) cue += QString("    TITLE \"Song %1\"\n    PERFORMER \"The Testers\"\n").arg(i + 1);
    cue += QString("    INDEX 01 %1:%2:%3\n")
               .arg(start / (60 * kSectorsPerSecond), 2, 10, QChar('0'))
               .arg(start / kSectorsPerSecond % 60, 2, 10, QChar('0'))
               .arg(start % kSectorsPerSecond, 2, 10, QChar('0'));
    bin += QByteArray(tracks[i].seconds * kSectorsPerSecond * kSectorBytes, '\0');
  }
  testenv::MakeFile(folder + "/disc.bin", bin);
  return testenv::MakeFile(folder + "/disc.cue", cue.toUtf8());
}

class CdAccessTest : public testing::Test {
 protected:
  void SetUp() override {
    ResetCdAccess();
    // No test asks anything beyond the loopback: the title server of the
    // settings is one that answers nothing, unless a test starts its own.
    settings::SaveSetting("CddbServerAddress", "127.0.0.1");
    settings::SaveSetting("CddbServerPort", "9");
  }
  void TearDown() override {
    ResetCdAccess();
    delete App().DatabaseConnection;
    App().DatabaseConnection = nullptr;
  }
  void OpenData() {
    testenv::InstallDataFile();
    ASSERT_TRUE(OpenDataFile());
  }
  Database& Db() { return *App().DatabaseConnection; }

  static QString IdentityOf(const QString& cue) {
    CdCloseAll();
    EXPECT_EQ(CdSendString("open \"" + cue + "\" type cdaudio alias cd wait shareable"), "Success");
    QString identity;
    EXPECT_EQ(CdSendString("info cd identity", &identity), "Success");
    CdCloseAll();
    return identity;
  }
};

TEST_F(CdAccessTest, ImageAnswersTheDeviceCommands) {
  // Track 1 starts at 2 s and lasts 2 s, track 2 lasts 3 s: the lead-out
  // stands at 7 s, sector 525. Digit sums 2 + 4, playing time 5 s.
  const QString disc = MakeImage("a", {{2}, {3}});
  EXPECT_EQ(CdLookupId(platform::ReadCdDisc(disc)), 0x06000502u);

  QString answer;
  EXPECT_EQ(CdSendString("open \"" + disc + "\" type cdaudio alias cd wait shareable"), "Success");
  EXPECT_EQ(CdCommand("open \"" + disc + "\" type cdaudio alias CD"), CdAliasInUse);
  EXPECT_EQ(CdSendString("status cd number of tracks wait", &answer), "Success");
  EXPECT_EQ(answer, "2");
  EXPECT_EQ(CdSendString("info cd identity", &answer), "Success");
  EXPECT_EQ(answer, "06000502-2-525");
  EXPECT_EQ(CdSendString("status cd mode", &answer), "Success");
  EXPECT_EQ(answer, "stopped");
  EXPECT_EQ(CdSendString("status cd media present", &answer), "Success");
  EXPECT_EQ(answer, "true");
  // Lengths in the drive's time format.
  EXPECT_EQ(CdSendString("status cd length", &answer), "Success");
  EXPECT_EQ(answer, "00:05:00");
  EXPECT_EQ(CdSendString("status cd length track 2", &answer), "Success");
  EXPECT_EQ(answer, "00:03:00");
  EXPECT_EQ(CdCommand("set cd time format ms"), CdSuccess);
  EXPECT_EQ(CdSendString("status cd length track 1", &answer), "Success");
  EXPECT_EQ(answer, "2000");
  EXPECT_EQ(CdCommand("status cd length track 3"), CdOutOfRange);
  EXPECT_EQ(CdLengthText(4 * 60 * 75 + 33 * 75 + 7, "msf"), "04:33:07");

  // An image has no door: the tray commands fail and leave the image open
  // and readable.
  EXPECT_EQ(CdSendString("set cd door open", &answer), CdErrorText(CdNoDoor));
  EXPECT_EQ(CdCommand("set cd door closed"), CdNoDoor);
  EXPECT_EQ(CdSendString("status cd number of tracks", &answer), "Success");
  EXPECT_EQ(answer, "2");
  EjectCdDrive(disc);
  CloseCdDrive(disc);
  EXPECT_TRUE(QFile::exists(disc));
  EXPECT_EQ(platform::ReadCdDisc(disc).trackCount, 2);

  EXPECT_EQ(CdSendString("close all"), "Success");
  EXPECT_EQ(CdCommand("status cd mode"), CdNotOpen);
  EXPECT_EQ(CdCommand("open \"" + testenv::Root() + "/none.cue\" type cdaudio alias cd"), CdDeviceMissing);
}

TEST_F(CdAccessTest, IdentityIsStablePerDisc) {
  const QString a = MakeImage("a", {{2}, {3}});
  const QString sameWithText = MakeImage("a-text", {{2}, {3}}, true);
  const QString b = MakeImage("b", {{2}, {3}, {2}});
  const QString c = MakeImage("c", {{3}, {2}});

  const QString identity = IdentityOf(a);
  EXPECT_EQ(IdentityOf(a), identity);
  EXPECT_EQ(IdentityOf(sameWithText), identity);
  EXPECT_NE(IdentityOf(b), identity);
  EXPECT_NE(IdentityOf(c), identity);
}

TEST_F(CdAccessTest, IdentityFromTheReplyBuffer) {
  const auto fromReply = [](const QString& reply) { return IdentityFromBuffer(IdentityBuffer(reply)); };
  EXPECT_EQ(fromReply("06000502-2-525"), "06000502-2-525");
  EXPECT_EQ(fromReply("abc def"), "abc");
  EXPECT_EQ(fromReply(QString(70, 'x')), QString(63, 'x'));

  const QString blanks(60, ' ');
  EXPECT_EQ(IdentityFromBuffer("abc" + QString(QChar(1)) + blanks), "abc");
  EXPECT_EQ(IdentityFromBuffer("ab" + QString(QChar(1)) + QChar(1) + blanks), "ab" + QString(QChar(1)));
  EXPECT_EQ(IdentityFromBuffer("abc{" + blanks), "abc");
  EXPECT_EQ(IdentityFromBuffer(" abc" + blanks), "");
  EXPECT_EQ(IdentityFromBuffer(QString(64, 'x')), "");
}

TEST_F(CdAccessTest, LoadCdTitlesKeepsOneRowPerDisc) {
  OpenData();
  settings::SaveTrueFalse("CddbAccess", false);
  const QString a = MakeImage("a", {{2}, {3}});
  const QString b = MakeImage("b", {{2}, {3}, {2}});

  // First sighting: a row, no songs.
  CdAccess().CurrentDrive = a;
  EXPECT_FALSE(LoadCdTitles());
  EXPECT_EQ(CdAccess().LastMciError, 0);
  const qint32 id = CdAccess().MediaId;
  ASSERT_NE(id, 0);
  const std::optional<CdTitle> row = SelectCdTitle(Db(), "06000502-2-525");
  ASSERT_TRUE(row.has_value());
  EXPECT_EQ(row->MediaTracks, 2);
  EXPECT_EQ(CdAccess().SongCount, 0);

  // Songs stored out of order come back in track order; the row's texts
  // fill the state; no second row is made.
  ASSERT_TRUE(AddCdSongs(Db(), id, {{2, "2", false, "Second"}, {1, "1", true, "Don't Stop"}}));
  ASSERT_TRUE(UpdateCdTitle(Db(), id, "Album's Title", "Artist", "Rock", 1999));
  CloseAllDevices();
  EXPECT_TRUE(LoadCdTitles());
  EXPECT_EQ(CdAccess().MediaId, id);
  EXPECT_EQ(CdAccess().SongTitles, QStringList({"Don't Stop", "Second"}));
  EXPECT_EQ(CdAccess().MediaTitle, "Album's Title");

  // Another disc is another row, and forgets the first disc's titles. A
  // folder that is no CD drive is never asked.
  QStringList titles{"stale"};
  EXPECT_FALSE(CdTitlesOfDrive(QFileInfo(a).path(), titles));
  EXPECT_TRUE(titles.isEmpty());
  EXPECT_EQ(CdAccess().MediaId, id);
  platform::SetCdDeviceOverride({a, b});
  FillCdDrives();
  EXPECT_FALSE(CdTitlesOfDrive(b, titles));
  EXPECT_NE(CdAccess().MediaId, id);
  EXPECT_TRUE(CdAccess().MediaTitle.isEmpty());
  EXPECT_TRUE(CdTitlesOfDrive(a, titles));
  EXPECT_EQ(titles, QStringList({"Don't Stop", "Second"}));
  EXPECT_EQ(SelectCdMediaId(Db(), "06000502-2-525"), id);
  platform::ClearCdDeviceOverride();
  FillCdDrives();
}

TEST_F(CdAccessTest, NoDriveNoDiscOrDataDiscGiveNoTitles) {
  const QString audio = MakeImage("a", {{2}, {3}});
  // Without the data file nothing is read, whatever the drive holds.
  CdAccess().CurrentDrive = audio;
  EXPECT_FALSE(LoadCdTitles());

  OpenData();
  const QString data = MakeImage("data", {{2, false}});
  const QString empty = testenv::MakeFile(testenv::Root() + "/empty/disc.cue", "");
  for (const QString& drive : {QString(), testenv::Root() + "/missing.cue", empty}) {
    CloseAllDevices();
    CdAccess().CurrentDrive = drive;
    EXPECT_FALSE(LoadCdTitles()) << drive.toStdString();
    EXPECT_NE(CdAccess().LastMciError, 0) << drive.toStdString();
    EXPECT_EQ(CdTrackCount(), 0);
  }
  CloseAllDevices();
  CdAccess().CurrentDrive = data;
  EXPECT_FALSE(LoadCdTitles());
  EXPECT_EQ(CdAccess().LastMciError, 0);
  EXPECT_EQ(CdTrackCount(), 1);
  // The tray buttons on nothing do nothing.
  EjectCdDrive(QString());
  CloseCdDrive(testenv::Root() + "/missing.cue");
}

}  // namespace

namespace {

TEST_F(CdAccessTest, ADiscLookedUpOnceIsNeverAskedForAgain) {
  OpenData();
  settings::SaveTrueFalse("CddbAccess", true);
  // The title server of the test knows the two-track disc "06000502".
  cdtest::LoopbackServer server([](const QByteArray& request) -> cdtest::Reply {
    if (request.contains("cmd=cddb+query"))
      return {cdtest::Reply::Answer, "200 rock 06000502 The Band / Don't Look Back\r\n"};
    return {cdtest::Reply::Answer,
            "210 rock 06000502 CD database entry follows (until terminating `.')\r\n"
            "# xmcd\r\n#\r\n# Track frame offsets:\r\n#\t150\r\n#\t300\r\n#\r\n"
            "# Disc length: 9 seconds\r\n#\r\n# Revision: 1\r\n#\r\nDISCID=06000502\r\nDTITLE=The Band / Don't Look Back\r\nDYEAR=2001\r\n"
            "DGENRE=rock\r\nTTITLE0=Caf\xc3\xa9 \"Noir\"\r\nTTITLE1=It's Late\r\nEXTD=\r\nEXTT0=\r\n"
            "EXTT1=\r\nPLAYORDER=\r\n.\r\n"};
  });
  settings::SaveSetting("CddbServerAddress", "127.0.0.1");
  settings::SaveSetting("CddbServerPort", QString::number(server.Port()));
  CdAccess().CurrentDrive = MakeImage("looked", {{2}, {3}});

  EXPECT_TRUE(LoadCdTitles());
  EXPECT_EQ(CdAccess().SongTitles, QStringList({QString::fromUtf8("Caf\xc3\xa9 \"Noir\""), "It's Late"}));
  EXPECT_EQ(server.Requests().size(), 2);  // the query and the read
  const std::optional<CdTitle> row = SelectCdTitle(Db(), "06000502-2-525");
  ASSERT_TRUE(row.has_value());
  EXPECT_TRUE(row->MediaDownloaded);

  // The second sighting reads the data file only.
  CloseAllDevices();
  EXPECT_TRUE(LoadCdTitles());
  EXPECT_EQ(CdAccess().SongCount, 2);
  EXPECT_EQ(server.Requests().size(), 2);
}

}  // namespace
