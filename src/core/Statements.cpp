#include "core/Statements.h"

#include <QCollator>
#include <QLocale>
#include <algorithm>

#include "platform/SqlCipherConnection.h"
#include "core/Database.h"

using platform::SqlStatement;
using platform::SqlTransaction;

namespace {

// A key that used to stand between single quotes in the statement text.
bool BreaksQuotedStatement(const QString& key) { return key.contains(QLatin1Char('\'')); }

}  // namespace

// ---- Albums ---------------------------------------------------------------

QStringList SelectPlaylistFiles(Database& db, qint32 playlistId) {
  QStringList files;
  SqlStatement select = db.Prepare(QStringLiteral(
      "SELECT PlaylistFile FROM PlaylistFiles WHERE PlaylistID = ? ORDER BY rowid"));
  select.Bind(1, playlistId);
  while (select.Next()) files << select.Text(0);
  return files;
}

QList<AlbumHeader> SelectAlbumHeaders(Database& db) {
  QList<AlbumHeader> albums;
  SqlStatement select = db.Prepare(QStringLiteral(
      "SELECT PlaylistID, PlaylistName FROM PlaylistHeader WHERE PlaylistType = 'B' "
      "ORDER BY PlaylistID"));
  while (select.Next()) albums.append({qint32(select.Int(0)), select.Text(1)});

  // Names sort as the user reads them; without a language of the user's
  // own (the "C" locale) the common order of the Latin letters stands.
  QLocale locale;
  if (locale.language() == QLocale::C) locale = QLocale(QLocale::English, QLocale::UnitedStates);
  QCollator collator(locale);
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  collator.setIgnorePunctuation(false);
  std::stable_sort(albums.begin(), albums.end(), [&collator](const AlbumHeader& a, const AlbumHeader& b) {
    return collator.compare(a.PlaylistName, b.PlaylistName) < 0;
  });
  return albums;
}

std::optional<AlbumProperties> SelectAlbumProperties(Database& db, qint32 playlistId) {
  SqlStatement select = db.Prepare(QStringLiteral(
      "SELECT PlaylistName, PlaylistPreventDuplicates FROM PlaylistHeader WHERE PlaylistID = ?"));
  select.Bind(1, playlistId);
  if (!select.Next()) return std::nullopt;
  return AlbumProperties{select.Text(0), select.Bool(1)};
}

bool UpdateAlbumProperties(Database& db, qint32 playlistId, const QString& name,
                           bool preventDuplicates) {
  SqlStatement update = db.Prepare(QStringLiteral(
      "UPDATE PlaylistHeader SET PlaylistName = ?, PlaylistPreventDuplicates = ? "
      "WHERE PlaylistID = ?"));
  update.Bind(1, name).Bind(2, preventDuplicates).Bind(3, playlistId);
  return update.Run() && db.Connection().Changes() > 0;
}

qint32 AddAlbum(Database& db, const QString& name, bool preventDuplicates) {
  SqlStatement insert = db.Prepare(QStringLiteral(
      "INSERT INTO PlaylistHeader (PlaylistName, PlayListType, PlaylistSequence, "
      "PlaylistPreventDuplicates) VALUES (?, 'B', 0, ?)"));
  insert.Bind(1, name).Bind(2, preventDuplicates);
  if (!insert.Run()) return 0;
  return qint32(db.Connection().LastInsertId());
}

namespace {

// The entries of an album replaced inside the caller's transaction.
bool WritePlaylistFiles(Database& db, qint32 playlistId, const QStringList& files) {
  SqlStatement clear = db.Prepare(QStringLiteral("DELETE FROM PlaylistFiles WHERE PlaylistID = ?"));
  clear.Bind(1, playlistId);
  if (!clear.Run()) return false;
  SqlStatement insert = db.Prepare(QStringLiteral(
      "INSERT INTO PlaylistFiles (PlaylistID, PlaylistRow, PlaylistSelected, PlaylistFile) "
      "VALUES (?, 0, 0, ?)"));
  for (const QString& file : files) {
    insert.Reset();
    insert.Bind(1, playlistId).Bind(2, file);
    if (!insert.Run()) return false;
  }
  return true;
}

}  // namespace

bool SavePlaylistFiles(Database& db, qint32 playlistId, const QStringList& files) {
  SqlTransaction transaction(db.Connection());
  if (!transaction.IsActive()) return false;
  if (!WritePlaylistFiles(db, playlistId, files)) return false;
  return transaction.Commit();
}

qint32 SaveAlbum(Database& db, qint32 playlistId, const QString& name, bool preventDuplicates,
                 const QStringList& files) {
  SqlTransaction transaction(db.Connection());
  if (!transaction.IsActive()) return 0;
  qint32 id = playlistId;
  if (id != 0) {
    if (!UpdateAlbumProperties(db, id, name, preventDuplicates)) return 0;
  } else {
    id = AddAlbum(db, name, preventDuplicates);
    if (id == 0) return 0;
  }
  if (!WritePlaylistFiles(db, id, files)) return 0;
  return transaction.Commit() ? id : 0;
}

bool DeleteAlbum(Database& db, qint32 playlistId) {
  SqlTransaction transaction(db.Connection());
  if (!transaction.IsActive()) return false;
  // Entries first, so that a failure never leaves entries without a header.
  SqlStatement entries = db.Prepare(QStringLiteral("DELETE FROM PlaylistFiles WHERE PlaylistID = ?"));
  entries.Bind(1, playlistId);
  if (!entries.Run()) return false;
  SqlStatement header = db.Prepare(QStringLiteral("DELETE FROM PlaylistHeader WHERE PlaylistID = ?"));
  header.Bind(1, playlistId);
  return header.Run() && transaction.Commit();
}

// ---- Picture captions -----------------------------------------------------

QString SelectFileCaption(Database& db, const QString& fileName) {
  if (BreaksQuotedStatement(fileName)) return QString();
  SqlStatement select =
      db.Prepare(QStringLiteral("SELECT FileCaption FROM FileCaptions WHERE FileName = ? ORDER BY rowid"));
  select.Bind(1, fileName);
  return select.Next() ? select.Text(0) : QString();
}

bool SaveFileCaption(Database& db, const QString& fileName, const QString& caption) {
  if (BreaksQuotedStatement(fileName)) return false;
  // The row found is the row written: no other writer comes between.
  SqlTransaction transaction(db.Connection());
  if (!transaction.IsActive()) return false;
  SqlStatement find =
      db.Prepare(QStringLiteral("SELECT rowid FROM FileCaptions WHERE FileName = ? ORDER BY rowid"));
  find.Bind(1, fileName);
  const bool found = find.Next();
  if (!found && find.Error() != 0) return false;
  const qint64 row = found ? find.Int(0) : 0;
  find = SqlStatement();

  SqlStatement write;
  if (!found) {
    if (caption.isEmpty()) return transaction.Commit();
    write = db.Prepare(QStringLiteral("INSERT INTO FileCaptions (FileName, FileCaption) VALUES (?, ?)"));
    write.Bind(1, fileName).Bind(2, caption);
  } else if (caption.isEmpty()) {
    write = db.Prepare(QStringLiteral("DELETE FROM FileCaptions WHERE rowid = ?"));
    write.Bind(1, row);
  } else {
    write = db.Prepare(QStringLiteral("UPDATE FileCaptions SET FileCaption = ? WHERE rowid = ?"));
    write.Bind(1, caption).Bind(2, row);
  }
  if (!write.Run()) return false;
  write = SqlStatement();
  return transaction.Commit();
}

bool RenameFileCaption(Database& db, const QString& sourceFile, const QString& targetFile) {
  if (BreaksQuotedStatement(sourceFile)) return false;
  SqlStatement update = db.Prepare(QStringLiteral(
      "UPDATE FileCaptions SET FileName = ? WHERE rowid = "
      "(SELECT rowid FROM FileCaptions WHERE FileName = ? ORDER BY rowid LIMIT 1)"));
  update.Bind(1, targetFile).Bind(2, sourceFile);
  return update.Run();
}

// ---- Renamed files --------------------------------------------------------

QString CaptionKey(const QString& path) {
  QString name = path.mid(path.lastIndexOf('/') + 1);
  name.remove('\'');
  return name;
}

bool FollowRenamedFile(Database& db, const QString& oldPath, const QString& newPath) {
  if (oldPath == newPath) return true;
  SqlTransaction transaction(db.Connection());
  if (!transaction.IsActive()) return false;
  SqlStatement entries =
      db.Prepare(QStringLiteral("UPDATE PlaylistFiles SET PlaylistFile = ? WHERE PlaylistFile = ?"));
  entries.Bind(1, newPath).Bind(2, oldPath);
  if (!entries.Run()) return false;
  // A move keeps the name, and with it the caption's key.
  const QString oldKey = CaptionKey(oldPath), newKey = CaptionKey(newPath);
  if (oldKey != newKey) {
    SqlStatement stale = db.Prepare(QStringLiteral(
        "DELETE FROM FileCaptions WHERE FileName = ?1 "
        "AND EXISTS (SELECT 1 FROM FileCaptions WHERE FileName = ?2)"));
    stale.Bind(1, newKey).Bind(2, oldKey);
    if (!stale.Run()) return false;
    SqlStatement caption =
        db.Prepare(QStringLiteral("UPDATE FileCaptions SET FileName = ? WHERE FileName = ?"));
    caption.Bind(1, newKey).Bind(2, oldKey);
    if (!caption.Run()) return false;
  }
  return transaction.Commit();
}

// ---- Audio CDs ------------------------------------------------------------

// The columns of a CD_Titles row in the order ReadCdTitle takes them.
#define CD_TITLE_COLUMNS                                                                 \
  "MediaID, MediaNumber, MediaDownloaded, MediaTitle, MediaArtist, MediaStyle, MediaYear, " \
  "MediaTracks, MediaSequence"

namespace {

CdTitle ReadCdTitle(SqlStatement& select) {
  CdTitle title;
  title.MediaID = qint32(select.Int(0));
  title.MediaNumber = select.Text(1);
  title.MediaDownloaded = select.Bool(2);
  title.MediaTitle = select.Text(3);
  title.MediaArtist = select.Text(4);
  title.MediaStyle = select.Text(5);
  title.MediaYear = qint16(select.Int(6));
  title.MediaTracks = qint16(select.Int(7));
  title.MediaSequence = qint16(select.Int(8));
  return title;
}

}  // namespace

std::optional<CdTitle> SelectCdTitle(Database& db, const QString& mediaNumber) {
  if (BreaksQuotedStatement(mediaNumber)) return std::nullopt;
  SqlStatement select = db.Prepare(QStringLiteral(
      "SELECT " CD_TITLE_COLUMNS " FROM CD_Titles WHERE MediaNumber = ? "
      "ORDER BY MediaID"));
  select.Bind(1, mediaNumber);
  if (!select.Next()) return std::nullopt;
  return ReadCdTitle(select);
}

qint32 AddCdTitle(Database& db, const QString& mediaNumber, qint16 tracks) {
  if (BreaksQuotedStatement(mediaNumber)) return 0;
  SqlStatement insert = db.Prepare(QStringLiteral(
      "INSERT INTO CD_Titles (MediaNumber, MediaDownloaded, MediaTitle, MediaArtist, MediaStyle, "
      "MediaYear, MediaTracks, MediaSequence) VALUES (?, 0, '', '', '', 0, ?, 0)"));
  insert.Bind(1, mediaNumber).Bind(2, int(tracks));
  if (!insert.Run()) return 0;
  return qint32(db.Connection().LastInsertId());
}

qint32 SelectCdMediaId(Database& db, const QString& mediaNumber) {
  if (BreaksQuotedStatement(mediaNumber)) return 0;
  SqlStatement select = db.Prepare(
      QStringLiteral("SELECT MediaID FROM CD_Titles WHERE MediaNumber = ? ORDER BY MediaID"));
  select.Bind(1, mediaNumber);
  return select.Next() ? qint32(select.Int(0)) : 0;
}

bool UpdateCdTitle(Database& db, qint32 mediaId, const QString& title, const QString& artist,
                   const QString& style, qint16 year) {
  SqlStatement update = db.Prepare(QStringLiteral(
      "UPDATE CD_Titles SET MediaDownloaded = 1, MediaTitle = ?, MediaArtist = ?, "
      "MediaStyle = ?, MediaYear = ? WHERE MediaID = ?"));
  update.Bind(1, title).Bind(2, artist).Bind(3, style).Bind(4, int(year)).Bind(5, mediaId);
  return update.Run() && db.Connection().Changes() > 0;
}

QStringList SelectCdSongTitles(Database& db, qint32 mediaId) {
  QStringList titles;
  SqlStatement select = db.Prepare(
      QStringLiteral("SELECT SongTitle FROM CD_Songs WHERE MediaID = ? ORDER BY SongTrack, rowid"));
  select.Bind(1, mediaId);
  while (select.Next()) titles << select.Text(0);
  return titles;
}

QList<bool> TakeCdSongSelections(Database& db, qint32 mediaId) {
  QList<bool> selected;
  SqlStatement select =
      db.Prepare(QStringLiteral("SELECT SongSelected FROM CD_Songs WHERE MediaID = ? ORDER BY rowid"));
  select.Bind(1, mediaId);
  while (select.Next()) selected << select.Bool(0);
  select = SqlStatement();
  SqlStatement remove = db.Prepare(QStringLiteral("DELETE FROM CD_Songs WHERE MediaID = ?"));
  remove.Bind(1, mediaId);
  remove.Run();
  return selected;
}

bool AddCdSongs(Database& db, qint32 mediaId, const QList<CdSong>& songs) {
  SqlTransaction transaction(db.Connection());
  if (!transaction.IsActive()) return false;
  SqlStatement existing = db.Prepare(QStringLiteral("SELECT count(*) FROM CD_Songs WHERE MediaID = ?"));
  existing.Bind(1, mediaId);
  if (!existing.Next()) return false;
  if (existing.Int(0) > 0) return false;
  existing = SqlStatement();
  return InsertCdSongs(db, mediaId, songs) && transaction.Commit();
}

std::optional<CdTitle> SelectCdTitleById(Database& db, qint32 mediaId) {
  SqlStatement select = db.Prepare(QStringLiteral(
      "SELECT " CD_TITLE_COLUMNS " FROM CD_Titles WHERE MediaID = ?"));
  select.Bind(1, mediaId);
  if (!select.Next()) return std::nullopt;
  return ReadCdTitle(select);
}

bool InsertCdSongs(Database& db, qint32 mediaId, const QList<CdSong>& songs) {
  SqlStatement insert = db.Prepare(QStringLiteral(
      "INSERT INTO CD_Songs (MediaID, SongTrack, SongNumber, SongSelected, SongTitle) "
      "VALUES (?, ?, ?, ?, ?)"));
  for (const CdSong& song : songs) {
    insert.Reset();
    insert.Bind(1, mediaId).Bind(2, int(song.SongTrack)).Bind(3, song.SongNumber);
    insert.Bind(4, song.SongSelected).Bind(5, song.SongTitle);
    if (!insert.Run()) return false;
  }
  return true;
}

// ---- Tutorial -------------------------------------------------------------

QList<HelpLineRow> SelectHelpLines(Database& db) {
  QList<HelpLineRow> lines;
  SqlStatement select = db.Prepare(QStringLiteral(
      "SELECT HelpLine, HelpText FROM HelpFile WHERE HelpID = 'Main' ORDER BY HelpID, HelpLine"));
  while (select.Next()) lines.append({qint32(select.Int(0)), select.Text(1)});
  return lines;
}
