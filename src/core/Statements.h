#pragma once
// Every statement the program issues on its data file, one function per use.
// Values are bound to the statements, never pasted into their text. Each
// function reports failure by its result (an empty list, 0, false or no
// value) and shows nothing: the callers carry on as if the row were absent.
//
// Captions and CD identities are looked up by a key that used to be written
// between single quotes into the statement, so a key holding an apostrophe
// made the statement fail. That outcome is kept: such a key finds nothing
// and writes nothing.

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>
#include <optional>

class Database;

// ---- Albums ---------------------------------------------------------------

// The album's file paths in the order they were saved (album listing, the
// album editor, sending an album by e-mail).
QStringList SelectPlaylistFiles(Database& db, qint32 playlistId);

struct AlbumHeader {
  qint32 PlaylistID = 0;
  QString PlaylistName;
};
// Every album the program makes (type "B"), ordered by name: letters compare
// without regard to case or accents; albums of one name keep the order in
// which they were made.
QList<AlbumHeader> SelectAlbumHeaders(Database& db);

struct AlbumProperties {
  QString PlaylistName;
  bool PlaylistPreventDuplicates = false;
};
// The album's name and its "a file only once" flag; no value when there is
// no such album.
std::optional<AlbumProperties> SelectAlbumProperties(Database& db, qint32 playlistId);
// Rewrites both; false when the album does not exist or the write fails.
bool UpdateAlbumProperties(Database& db, qint32 playlistId, const QString& name,
                           bool preventDuplicates);

// Adds an album header (type "B", sequence 0); its new PlaylistID, or 0.
qint32 AddAlbum(Database& db, const QString& name, bool preventDuplicates);

// Replaces the album's entries by the given paths, in order, each with row 0
// and not selected. One transaction: on failure the album keeps its entries.
bool SavePlaylistFiles(Database& db, qint32 playlistId, const QStringList& files);

// Saves an album as the album editor does: the header of `playlistId` takes
// the name and the flag (a new header of type "B", sequence 0, when the id
// is 0), then the entries are replaced by the paths, in order. One
// transaction: on failure the album keeps its header and its entries and no
// new header stays. The album's id (the new one for a new album), or 0.
qint32 SaveAlbum(Database& db, qint32 playlistId, const QString& name, bool preventDuplicates,
                 const QStringList& files);

// Deletes the album's entries, then its header, as one transaction.
bool DeleteAlbum(Database& db, qint32 playlistId);

// ---- Picture captions -----------------------------------------------------

// The caption kept for the name; "" when there is none.
QString SelectFileCaption(Database& db, const QString& fileName);
// Saves a caption: a new text adds the row, an empty text deletes it, a
// changed text updates it; an empty text without a row does nothing.
bool SaveFileCaption(Database& db, const QString& fileName, const QString& caption);
// A renamed picture takes its caption along: the row of sourceFile, if any,
// is rewritten to targetFile.
bool RenameFileCaption(Database& db, const QString& sourceFile, const QString& targetFile);

// ---- Renamed files --------------------------------------------------------

// The key a picture's caption is kept under: the file's name without its
// folder and without apostrophes.
QString CaptionKey(const QString& path);
// A file that the program renamed or moved keeps its album entries and its
// caption: every PlaylistFiles row of oldPath takes newPath, and the caption
// of the old name takes the new name, whatever the names hold (apostrophes
// too). A caption that stood under the new name before (one left by a
// deleted file) gives way to the one that follows. One transaction: on
// failure nothing changes.
bool FollowRenamedFile(Database& db, const QString& oldPath, const QString& newPath);

// ---- Audio CDs ------------------------------------------------------------

struct CdTitle {
  qint32 MediaID = 0;
  QString MediaNumber;
  bool MediaDownloaded = false;
  QString MediaTitle, MediaArtist, MediaStyle;
  qint16 MediaYear = 0;
  qint16 MediaTracks = 0;
  qint16 MediaSequence = 0;
};
// The row of the disc with this identity; no value when the disc is new.
std::optional<CdTitle> SelectCdTitle(Database& db, const QString& mediaNumber);
// Adds the row of a new disc: not downloaded, empty texts, year 0, the
// track count, sequence 0. Its new MediaID, or 0.
qint32 AddCdTitle(Database& db, const QString& mediaNumber, qint16 tracks);
// The MediaID of the disc with this identity, or 0.
qint32 SelectCdMediaId(Database& db, const QString& mediaNumber);
// After a title lookup: marks the disc downloaded and writes its texts.
bool UpdateCdTitle(Database& db, qint32 mediaId, const QString& title, const QString& artist,
                   const QString& style, qint16 year);

struct CdSong {
  qint16 SongTrack = 0;
  QString SongNumber;
  bool SongSelected = false;
  QString SongTitle;
};
// The disc's track titles in track order.
QStringList SelectCdSongTitles(Database& db, qint32 mediaId);
// Reads the disc's ticks in row order and deletes its track rows.
QList<bool> TakeCdSongSelections(Database& db, qint32 mediaId);
// Adds the track rows, in order, when the disc has none; one transaction.
bool AddCdSongs(Database& db, qint32 mediaId, const QList<CdSong>& songs);
// The row of the disc with this MediaID; no value when there is none.
std::optional<CdTitle> SelectCdTitleById(Database& db, qint32 mediaId);
// Adds the track rows, in order, within the caller's transaction.
bool InsertCdSongs(Database& db, qint32 mediaId, const QList<CdSong>& songs);

// ---- Tutorial -------------------------------------------------------------

struct HelpLineRow {
  qint32 HelpLine = 0;
  QString HelpText;
};
// The tour's lines (section 'Main') in speaking order.
QList<HelpLineRow> SelectHelpLines(Database& db);
