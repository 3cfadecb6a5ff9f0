#include "cd/CddbLookup.h"

#include <cddb/cddb.h>

#include <memory>

#include "cd/CddbCipher.h"
#include "core/Database.h"
#include "core/Settings.h"
#include "core/WorkerWait.h"

namespace {

constexpr int kFramesPerSecond = 75;
constexpr int kPregapFrames = 150;

int StartSecond(qint32 lba) { return (lba + kPregapFrames) / kFramesPerSecond; }

// At most `count` characters, never ending in half of a surrogate pair.
QString FirstCharacters(const QString& text, qsizetype count) {
  QString cut = text.left(count);
  if (!cut.isEmpty() && cut.size() < text.size() && cut.back().isHighSurrogate()) cut.chop(1);
  return cut;
}

QString FromServer(const char* text) { return text ? QString::fromUtf8(text) : QString(); }

struct ConnectionDeleter {
  void operator()(cddb_conn_t* connection) const { cddb_destroy(connection); }
};
struct DiscDeleter {
  void operator()(cddb_disc_t* disc) const { cddb_disc_destroy(disc); }
};

// A connection that asks over HTTP and never looks in or writes to a cache
// on disk: every lookup goes to the server.
std::unique_ptr<cddb_conn_t, ConnectionDeleter> Connect(const CddbServer& server) {
  std::unique_ptr<cddb_conn_t, ConnectionDeleter> connection(cddb_new());
  if (!connection) return connection;
  cddb_conn_t* c = connection.get();
  cddb_cache_disable(c);
  cddb_http_enable(c);
  cddb_set_charset(c, "UTF-8");
  cddb_set_server_name(c, server.Address.toUtf8().constData());
  cddb_set_server_port(c, server.Port);
  cddb_set_http_path_query(c, server.QueryPath.toUtf8().constData());
  cddb_set_timeout(c, unsigned(qMax(1, server.TimeoutSeconds)));
  if (server.UseProxy) {
    cddb_http_proxy_enable(c);
    cddb_set_http_proxy_server_name(c, server.ProxyAddress.toUtf8().constData());
    cddb_set_http_proxy_server_port(c, server.ProxyPort);
    cddb_set_http_proxy_credentials(c, server.UserName.toUtf8().constData(),
                                    server.Password.toUtf8().constData());
  }
  return connection;
}

std::unique_ptr<cddb_disc_t, DiscDeleter> DiscOf(const CdTableOfContents& toc) {
  std::unique_ptr<cddb_disc_t, DiscDeleter> disc(cddb_disc_new());
  if (!disc) return disc;
  for (qint32 lba : toc.TrackLbas) {
    cddb_track_t* track = cddb_track_new();
    cddb_track_set_frame_offset(track, lba + kPregapFrames);
    cddb_disc_add_track(disc.get(), track);
  }
  cddb_disc_set_length(disc.get(), unsigned(StartSecond(toc.LeadOutLba)));
  cddb_disc_calc_discid(disc.get());
  return disc;
}

}  // namespace

quint32 CddbDiscId(const CdTableOfContents& toc) {
  if (toc.TrackLbas.isEmpty()) return 0;
  quint32 digitSum = 0;
  for (qint32 lba : toc.TrackLbas) {
    for (int seconds = StartSecond(lba); seconds > 0; seconds /= 10)
      digitSum += quint32(seconds % 10);
  }
  const quint32 playing = quint32(StartSecond(toc.LeadOutLba) - StartSecond(toc.TrackLbas.first()));
  return (digitSum % 255) << 24 | (playing & 0xFFFF) << 8 | quint32(toc.TrackLbas.size() & 0xFF);
}

CddbServer ReadCddbServer() {
  CddbServer server;
  const QString address =
      settings::GetSetting("CddbServerAddress", settings::DefaultOf("CddbServerAddress")).trimmed();
  if (!address.isEmpty()) server.Address = address;
  server.Port = settings::GetInt("CddbServerPort", 80);
  server.UseProxy = settings::GetTrueFalse("CddbProxyServer", false);
  if (!server.UseProxy) return server;
  server.ProxyAddress = settings::GetSetting("CddbProxyAddress").trimmed();
  server.ProxyPort = settings::GetInt("CddbProxyPort", 0);
  server.UserName = settings::GetSetting("CddbUserName");
  const QString stored = settings::GetSetting("CddbPassword");
  if (!stored.isEmpty()) server.Password = DecryptText(stored, CddbPasswordKey);
  return server;
}

std::optional<CddbDisc> QueryCddb(const CddbServer& server, const CdTableOfContents& toc) {
  if (toc.TrackLbas.isEmpty()) return std::nullopt;
  // The library's own messages would go to the terminal; failures are
  // reported by the result alone.
  cddb_log_set_level(CDDB_LOG_NONE);
  auto connection = Connect(server);
  auto match = DiscOf(toc);
  auto disc = DiscOf(toc);
  if (!connection || !match || !disc) return std::nullopt;
  // The query leaves the first match's category and identification (and
  // its title line) in `match`. The record is read into a disc that has
  // nothing yet, so that a record ending before its title line, which the
  // library takes for a complete one, is seen as the failure it is.
  if (cddb_query(connection.get(), match.get()) <= 0) return std::nullopt;
  cddb_disc_set_category(disc.get(), cddb_disc_get_category(match.get()));
  cddb_disc_set_discid(disc.get(), cddb_disc_get_discid(match.get()));
  if (!cddb_read(connection.get(), disc.get()) || cddb_errno(connection.get()) != CDDB_ERR_OK)
    return std::nullopt;
  if (!cddb_disc_get_title(disc.get())) return std::nullopt;

  CddbDisc answer;
  answer.Title = FromServer(cddb_disc_get_title(disc.get()));
  answer.Artist = FromServer(cddb_disc_get_artist(disc.get()));
  // The record's own genre line, or else the server's category of the disc.
  answer.Genre = FromServer(cddb_disc_get_genre(disc.get()));
  if (answer.Genre.isEmpty()) answer.Genre = FromServer(cddb_disc_get_category_str(disc.get()));
  answer.Year = int(cddb_disc_get_year(disc.get()));
  for (cddb_track_t* track = cddb_disc_get_track_first(disc.get()); track;
       track = cddb_disc_get_track_next(disc.get())) {
    answer.TrackTitles << FromServer(cddb_track_get_title(track));
  }
  return answer;
}

CdLookupRows MakeCdLookupRows(const CdTitle& current, const QList<bool>& keptSelections,
                              const CddbDisc& answer) {
  CdLookupRows rows;
  rows.Title =
      current.MediaTitle.isEmpty() ? FirstCharacters(answer.Title, 50) : current.MediaTitle;
  rows.Artist =
      current.MediaArtist.isEmpty() ? FirstCharacters(answer.Artist, 50) : current.MediaArtist;
  if (current.MediaStyle.isEmpty()) {
    rows.Style = FirstCharacters(answer.Genre, 30);
    if (rows.Style.size() > 1) rows.Style[0] = rows.Style.at(0).toUpper();
  } else {
    rows.Style = current.MediaStyle;
  }
  rows.Year = current.MediaYear == 0 ? qint16(answer.Year) : current.MediaYear;

  const bool anyKept = keptSelections.contains(true);
  for (qsizetype i = 0; i < answer.TrackTitles.size(); ++i) {
    CdSong song;
    song.SongTrack = qint16(i + 1);
    song.SongSelected = anyKept && i < keptSelections.size() && keptSelections.at(i);
    song.SongTitle = FirstCharacters(answer.TrackTitles.at(i), 50);
    rows.Songs << song;
  }
  return rows;
}

bool StoreCdLookup(Database& db, qint32 mediaId, const CddbDisc& answer) {
  platform::SqlTransaction transaction(db.Connection());
  if (!transaction.IsActive()) return false;
  const std::optional<CdTitle> current = SelectCdTitleById(db, mediaId);
  if (!current) return false;
  const QList<bool> kept = TakeCdSongSelections(db, mediaId);
  const CdLookupRows rows = MakeCdLookupRows(*current, kept, answer);
  if (!InsertCdSongs(db, mediaId, rows.Songs)) return false;
  if (!UpdateCdTitle(db, mediaId, rows.Title, rows.Artist, rows.Style, rows.Year)) return false;
  return transaction.Commit();
}

bool LookupCdTitles(Database& db, qint32 mediaId, const CdTableOfContents& toc) {
  // The conversation runs on a worker, so that the windows keep painting
  // while a slow or silent server is waited for.
  const CddbServer server = ReadCddbServer();
  const std::optional<CddbDisc> answer =
      RunWhileWindowsPaint([&server, &toc] { return QueryCddb(server, toc); });
  return answer && StoreCdLookup(db, mediaId, *answer);
}
