#include <gtest/gtest.h>

#include <cddb/cddb.h>

#include <QByteArray>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>
#include <atomic>
#include <functional>
#include <future>
#include <mutex>
#include <thread>

#include "cd/CddbCipher.h"
#include "cd/CddbLookup.h"
#include "core/AppState.h"
#include "core/DataFile.h"
#include "core/Database.h"
#include "core/Settings.h"
#include "core/Statements.h"
#include "cd/CddbServer.h"
#include "support/TestEnv.h"

namespace {

using cdtest::LoopbackServer;
using cdtest::Reply;

// ---- Password scrambling ---------------------------------------------------

TEST(CddbCipher, FixedVectorsAndStoredForm) {
  // Key "sablekey417": codes 115 97 98 108 101 107 101 121 52 49 55, so the
  // stream is "1159798108101107101121524955".
  //   'A' 0x41 ^ '1' 0x31 = 0x70;  'b' 0x62 ^ '1' 0x31 = 0x53;
  //   '1' 0x31 ^ '5' 0x35 = 0x04  (one digit, so a leading 0).
  EXPECT_EQ(EncryptText("Ab1", CddbPasswordKey), "705304");
  EXPECT_EQ(DecryptText("705304", CddbPasswordKey), "Ab1");
  // Key "A": stream "65", taken again from its start after two characters.
  //   'a' 0x61 ^ '6' 0x36 = 0x57;  'b' 0x62 ^ '5' 0x35 = 0x57;
  //   'c' 0x63 ^ '6' 0x36 = 0x55;  'é' 0xE9 ^ '5' 0x35 = 0xDC (upper case).
  EXPECT_EQ(EncryptText(QString::fromUtf8("abcé"), "A"), "575755DC");
  EXPECT_EQ(DecryptText("575755DC", "A"), QString::fromUtf8("abcé"));
  // Empty key: the text reversed. "ab" -> key "ba" -> stream "9897":
  //   'a' 0x61 ^ '9' 0x39 = 0x58;  'b' 0x62 ^ '8' 0x38 = 0x5A.
  EXPECT_EQ(EncryptText("ab", ""), "585A");
  // Deciphering with an empty key reverses the enciphered text instead:
  // "585A" -> key "A585" -> stream "65535653": 0x58 ^ '6' = 'n', 0x5A ^ '5' = 'o'.
  EXPECT_EQ(DecryptText("585A", ""), "no");
  EXPECT_EQ(EncryptText("", CddbPasswordKey), "");
  // Beyond Latin-1 the UTF-8 bytes are enciphered: "пы" is D0 BF D1 8B.
  //   0xD0 ^ '6' = 0xE6;  0xBF ^ '5' = 0x8A;  0xD1 ^ '6' = 0xE7;  0x8B ^ '5' = 0xBE.
  EXPECT_EQ(EncryptText(QString::fromUtf8("пы"), "A"), "E68AE7BE");
  EXPECT_EQ(DecryptText("E68AE7BE", "A"), QString::fromUtf8("пы"));
  EXPECT_EQ(DecryptText(EncryptText(QString::fromUtf8("пароль €5"), CddbPasswordKey), CddbPasswordKey),
            QString::fromUtf8("пароль €5"));

  // A stored password: longer than the key stream, all kinds of characters.
  const QString password =
      QString::fromUtf8("pä$$ w0rd 'quoted' \"twice\" ~ longer than 28 chars");
  const QString stored = EncryptText(password, CddbPasswordKey);
  EXPECT_EQ(stored.size(), password.size() * 2);
  EXPECT_TRUE(QRegularExpression("^[0-9A-F]*$").match(stored).hasMatch()) << qPrintable(stored);
  EXPECT_EQ(DecryptText(stored, CddbPasswordKey), password);
}

// ---- Disc identification ---------------------------------------------------

quint32 LibraryDiscId(const CdTableOfContents& toc) {
  cddb_disc_t* disc = cddb_disc_new();
  for (qint32 lba : toc.TrackLbas) {
    cddb_track_t* track = cddb_track_new();
    cddb_track_set_frame_offset(track, lba + 150);
    cddb_disc_add_track(disc, track);
  }
  cddb_disc_set_length(disc, unsigned((toc.LeadOutLba + 150) / 75));
  cddb_disc_calc_discid(disc);
  const quint32 id = cddb_disc_get_discid(disc);
  cddb_disc_destroy(disc);
  return id;
}

TEST(CddbDiscId, ByHandAndAsTheLibraryComputesIt) {
  // Tracks at LBA 0 and 15000, lead-out at 30000. With the 150-frame pregap
  // the starts are at 2 s and 202 s, the lead-out at 402 s. Digit sums
  // 2 + (2+0+2) = 6; playing time 402 - 2 = 400 = 0x190; two tracks.
  const CdTableOfContents small{1, {0, 15000}, 30000};
  EXPECT_EQ(CddbDiscId(small), 0x06019002u);
  EXPECT_EQ(LibraryDiscId(small), 0x06019002u);

  // A full-length disc whose digit sums pass 255, and one not starting at 0.
  CdTableOfContents many{1, {}, 0};
  for (int i = 0; i < 40; ++i) many.TrackLbas << 32 + i * 8317;
  many.LeadOutLba = 40 * 8317 + 5000;
  EXPECT_EQ(CddbDiscId(many), LibraryDiscId(many));
  const CdTableOfContents odd{2, {183, 21207, 48990, 77777, 150012}, 210000};
  EXPECT_EQ(CddbDiscId(odd), LibraryDiscId(odd));
  EXPECT_EQ(CddbDiscId(CdTableOfContents{}), 0u);
}

// ---- Rows written for an answer --------------------------------------------

TEST(CddbRows, CutToLengthAndKeepWhatIsSet) {
  // What the end-to-end lookup below doesn't reach: lengths, case of the
  // style, a year already set, more tracks than kept ticks.
  const CddbDisc answer{QString(60, 'T'), "", "rock" + QString(40, 'x'), 1987,
                        {"One", QString(55, 's'), "Three"}};
  CdTitle dated;
  dated.MediaYear = 2001;
  const CdLookupRows rows = MakeCdLookupRows(dated, {true}, answer);
  EXPECT_EQ(rows.Title, QString(50, 'T'));
  EXPECT_EQ(rows.Style, "Rock" + QString(26, 'x'));
  EXPECT_EQ(rows.Year, 2001);
  ASSERT_EQ(rows.Songs.size(), 3);
  EXPECT_EQ(rows.Songs[1].SongTitle, QString(50, 's'));
  EXPECT_EQ(rows.Songs[2].SongTrack, 3);
  EXPECT_TRUE(rows.Songs[0].SongSelected);
  EXPECT_FALSE(rows.Songs[2].SongSelected);
  // A one-letter genre keeps its case.
  EXPECT_EQ(MakeCdLookupRows({}, {}, CddbDisc{"", "", "j", 0, {}}).Style, "j");
}

// ---- A CDDB server on the loopback ----------------------------------------

const CdTableOfContents kDisc{1, {0, 15000}, 30000};  // id 06019002

QByteArray Record(const QByteArray& category, const QByteArray& title, const QByteArray& tracks) {
  return "210 " + category + " 06019002 CD database entry follows (until terminating `.')\r\n"
         "# xmcd\r\n#\r\n# Track frame offsets:\r\n#\t150\r\n#\t15150\r\n#\r\n"
         "# Disc length: 402 seconds\r\n#\r\n# Revision: 1\r\n#\r\n"
         "DISCID=06019002\r\nDTITLE=" + title + "\r\nDYEAR=1999\r\nDGENRE=\r\n" + tracks +
         "EXTD=\r\nEXTT0=\r\nEXTT1=\r\nPLAYORDER=\r\n.\r\n";
}

// A server knowing the disc under "folk" and, as a second match, "jazz".
Reply Catalogue(const QByteArray& request, const QByteArray& queryBody) {
  if (request.contains("cmd=cddb+query")) return {Reply::Answer, queryBody};
  if (request.contains("cmd=cddb+read+folk+"))
    return {Reply::Answer,
            Record("folk", "Folk Artist / Folk Title", "TTITLE0=First\r\nTTITLE1=Second\r\n")};
  if (request.contains("cmd=cddb+read+jazz+"))
    return {Reply::Answer,
            Record("jazz", "Jazz Artist / Jazz Title", "TTITLE0=A\r\nTTITLE1=B\r\n")};
  return {Reply::Answer, "500 Command syntax error\r\n"};
}

CddbServer Loopback(quint16 port) {
  CddbServer server;
  server.Address = "127.0.0.1";
  server.Port = port;
  server.TimeoutSeconds = 1;
  return server;
}

TEST(CddbConversation, MatchesOfEveryKindUseTheFirstDisc) {
  const QList<QByteArray> queries = {
      "200 folk 06019002 Folk Artist / Folk Title\r\n",
      "210 Found exact matches, list follows (until terminating `.')\r\n"
      "folk 06019002 Folk Artist / Folk Title\r\njazz 06019002 Jazz Artist / Jazz Title\r\n.\r\n",
      // An inexact match carries its own identification, which the read asks for.
      "211 Found inexact matches, list follows (until terminating `.')\r\n"
      "folk 07019002 Folk Artist / Folk Title\r\njazz 06019002 Jazz Artist / Jazz Title\r\n.\r\n"};
  for (const QByteArray& query : queries) {
    LoopbackServer server([&](const QByteArray& request) { return Catalogue(request, query); });
    const std::optional<CddbDisc> disc = QueryCddb(Loopback(server.Port()), kDisc);
    ASSERT_TRUE(disc) << query.constData();
    EXPECT_EQ(disc->Title, "Folk Title");
    EXPECT_EQ(disc->Artist, "Folk Artist");
    EXPECT_EQ(disc->Genre, "folk");  // no DGENRE line: the category
    EXPECT_EQ(disc->Year, 1999);
    EXPECT_EQ(disc->TrackTitles, QStringList({"First", "Second"}));
    const QList<QByteArray> requests = server.Requests();
    ASSERT_EQ(requests.size(), 2);
    const QByteArray readId = query.startsWith("211") ? "07019002" : "06019002";
    EXPECT_TRUE(requests[1].startsWith("GET /~cddb/cddb.cgi?cmd=cddb+read+folk+" + readId + "&"))
        << requests[1].constData();
    EXPECT_TRUE(requests[0].startsWith("GET /~cddb/cddb.cgi?cmd=cddb+query+06019002+2+150+15150+"))
        << requests[0].constData();
  }
}

TEST(CddbConversation, FailuresGiveNothingWithinTheTimeLimit) {
  const QList<Reply> replies = {
      {Reply::Answer, "202 No match for disc ID 06019002.\r\n"},
      {Reply::Answer, "this is not a CDDB server\r\n"},
      {Reply::CloseMidway, "210 Found exact matches, list follows (until terminating `.')\r\n"
                           "folk 06019002 Folk Artist / Folk Title\r\njazz 06019002 Jazz\r\n.\r\n"},
      {Reply::Silent, ""}};
  for (const Reply& reply : replies) {
    LoopbackServer server([&](const QByteArray&) { return reply; });
    // A silent server is given up after the time limit of one second.
    EXPECT_FALSE(QueryCddb(Loopback(server.Port()), kDisc)) << reply.body.constData();
  }
  // A server that drops the connection before reading the request.
  LoopbackServer refusing([](const QByteArray&) { return Reply{}; }, true);
  EXPECT_FALSE(QueryCddb(Loopback(refusing.Port()), kDisc));

  // A read that stops halfway through the record, and a record naming more
  // tracks than the disc has: both refused whole.
  for (const bool cut : {true, false}) {
    LoopbackServer badRead([&](const QByteArray& request) {
      if (request.contains("cmd=cddb+query"))
        return Reply{Reply::Answer, "200 folk 06019002 x / y\r\n"};
      const QByteArray tracks =
          cut ? "TTITLE0=1\r\nTTITLE1=2\r\n" : "TTITLE0=1\r\nTTITLE1=2\r\nTTITLE2=3\r\n";
      return Reply{cut ? Reply::CloseMidway : Reply::Answer, Record("folk", "A / T", tracks)};
    });
    EXPECT_FALSE(QueryCddb(Loopback(badRead.Port()), kDisc)) << cut;
  }
}

TEST(CddbConversation, ProxyGetsTheFullAddressAndCredentials) {
  LoopbackServer proxy([](const QByteArray& request) {
    return Catalogue(request, "200 folk 06019002 Folk Artist / Folk Title\r\n");
  });
  settings::SaveSetting("CddbServerAddress", "127.0.0.1");
  settings::SaveSetting("CddbServerPort", "9");  // must not be reached directly
  settings::SaveTrueFalse("CddbProxyServer", true);
  settings::SaveSetting("CddbProxyAddress", "127.0.0.1");
  settings::SaveSetting("CddbProxyPort", QString::number(proxy.Port()));
  settings::SaveSetting("CddbUserName", "listener");
  settings::SaveSetting("CddbPassword", EncryptText("se:cret 7", CddbPasswordKey));

  CddbServer server = ReadCddbServer();
  EXPECT_EQ(server.Password, "se:cret 7");
  server.TimeoutSeconds = 2;
  ASSERT_TRUE(QueryCddb(server, kDisc));
  const QList<QByteArray> requests = proxy.Requests();
  ASSERT_EQ(requests.size(), 2);
  EXPECT_TRUE(requests[0].startsWith(
      "GET http://127.0.0.1:9/~cddb/cddb.cgi?cmd=cddb+query+06019002+2+150+15150+"))
      << requests[0].constData();
  const QByteArray credentials =
      "Proxy-Authorization: Basic " + QByteArray("listener:se:cret 7").toBase64();
  EXPECT_TRUE(requests[0].contains(credentials)) << requests[0].constData();
  EXPECT_TRUE(requests[1].contains(credentials));
}

// ---- The whole lookup on a data file ---------------------------------------

class CddbLookupTest : public testing::Test {
 protected:
  void SetUp() override {
    testenv::InstallDataFile();
    ASSERT_TRUE(OpenDataFile());
  }
  void TearDown() override {
    delete App().DatabaseConnection;
    App().DatabaseConnection = nullptr;
  }
  Database& Db() { return *App().DatabaseConnection; }
};

TEST_F(CddbLookupTest, AnswerIsStoredAsItCameAndTicksSurvive) {
  const QByteArray tracks = QString::fromUtf8(
      "TTITLE0=Don't Stop\r\nTTITLE1=The \"Quoted\" One: Ça Ira – Ölü\r\n").toUtf8();
  LoopbackServer server([&](const QByteArray& request) {
    if (request.contains("cmd=cddb+query"))
      return Reply{Reply::Answer, "200 folk 06019002 x / y\r\n"};
    QByteArray record =
        Record("folk", QString::fromUtf8("Sinéad's / L'été \"live\"").toUtf8(), tracks);
    record.replace("DGENRE=\r\n", "DGENRE=chanson\r\n");
    return Reply{Reply::Answer, record};
  });
  settings::SaveSetting("CddbServerAddress", "127.0.0.1");
  settings::SaveSetting("CddbServerPort", QString::number(server.Port()));
  settings::SaveTrueFalse("CddbProxyServer", false);

  // A disc met before: its row holds the user's own artist, and its two
  // track rows carry a tick on the second. Another disc's rows stay apart.
  const qint32 id = AddCdTitle(Db(), "disc-one", 2);
  ASSERT_GT(id, 0);
  ASSERT_TRUE(UpdateCdTitle(Db(), id, "", "Mine", "", 0));
  ASSERT_TRUE(AddCdSongs(Db(), id, {{1, "", false, "Track 1"}, {2, "", true, "Track 2"}}));
  const qint32 other = AddCdTitle(Db(), "disc-two", 1);
  ASSERT_TRUE(AddCdSongs(Db(), other, {{1, "", true, "Untouched"}}));

  ASSERT_TRUE(LookupCdTitles(Db(), id, kDisc));
  const std::optional<CdTitle> title = SelectCdTitleById(Db(), id);
  ASSERT_TRUE(title);
  EXPECT_EQ(title->MediaTitle, QString::fromUtf8("L'été \"live\""));
  EXPECT_EQ(title->MediaArtist, "Mine");
  EXPECT_EQ(title->MediaStyle, "Chanson");
  EXPECT_EQ(title->MediaYear, 1999);
  const QStringList expected = {"Don't Stop", QString::fromUtf8("The \"Quoted\" One: Ça Ira – Ölü")};
  EXPECT_EQ(SelectCdSongTitles(Db(), id), expected);
  EXPECT_EQ(TakeCdSongSelections(Db(), id), QList<bool>({false, true}));
  EXPECT_EQ(SelectCdSongTitles(Db(), other), QStringList({"Untouched"}));
}

}  // namespace
