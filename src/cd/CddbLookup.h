#pragma once
// Fetching a disc's title, artist, style, year and track names from a CDDB
// server, and storing them in CD_Titles and CD_Songs.
//
// The caller (the CD access) reads the disc's table of contents and calls
// LookupCdTitles once for a disc whose row isn't marked downloaded yet, when
// the setting "CddbAccess" is on. The conversation runs over HTTP on the
// calling thread and blocks it until the server has answered, has refused or
// the time limit has passed. Nothing is shown: a failure leaves the data file
// as it was, and the next sighting of the disc tries again.

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>
#include <optional>

#include "core/Statements.h"

class Database;

// What the drive says of an audio disc: the number of its first track, the
// start of each track and the start of the lead-out, as logical block
// addresses (LBA 0 is the first frame after the two-second pregap of 150
// frames, which the identification adds back; 75 frames a second).
struct CdTableOfContents {
  int FirstTrack = 1;
  QList<qint32> TrackLbas;
  qint32 LeadOutLba = 0;
};

// The disc's CDDB identification: the digit sums of the tracks' start
// seconds modulo 255, the playing time in seconds and the track count.
quint32 CddbDiscId(const CdTableOfContents& toc);

// Where and how to reach the server. The proxy values are empty or 0 when no
// proxy is used; the password is in clear.
struct CddbServer {
  QString Address = QStringLiteral("gnudb.gnudb.org");
  int Port = 80;
  QString QueryPath = QStringLiteral("/~cddb/cddb.cgi");
  bool UseProxy = false;
  QString ProxyAddress;
  int ProxyPort = 0;
  QString UserName;
  QString Password;
  // Seconds without an answer after which the conversation is given up.
  int TimeoutSeconds = 10;
};

// The server settings of the options form. The proxy values, the password
// among them, are read only when "CddbProxyServer" is on; a stored password
// is deciphered.
CddbServer ReadCddbServer();

// One disc record of a server's answer.
struct CddbDisc {
  QString Title, Artist, Genre;
  int Year = 0;
  QStringList TrackTitles;
};

// Asks the server for the disc and reads the first disc record it offers.
// No value when the server knows no such disc, answers with something that
// can't be read, or doesn't answer in time.
std::optional<CddbDisc> QueryCddb(const CddbServer& server, const CdTableOfContents& toc);

// What a lookup writes for a disc.
struct CdLookupRows {
  QString Title, Artist, Style;
  qint16 Year = 0;
  QList<CdSong> Songs;
};

// Turns an answer into the rows to write. The disc's own texts and year are
// kept where they are set (a user's edits survive); only empty ones are
// filled: title and artist with 50 characters at most, the style with 30 of
// the genre, its first letter in upper case when it is longer than one
// character. One track row for each track of the answer, numbered from 1,
// each title cut to 50 characters. The ticks kept from the disc's former
// rows go to the same positions when any of them was set; otherwise none is
// set.
CdLookupRows MakeCdLookupRows(const CdTitle& current, const QList<bool>& keptSelections,
                              const CddbDisc& answer);

// Writes an answer for the disc with this MediaID, in one transaction: its
// former track rows give their ticks and go, the new ones come in, and its
// row is marked downloaded with the texts of MakeCdLookupRows. False when
// the disc has no row or the data file refuses; then nothing changed.
bool StoreCdLookup(Database& db, qint32 mediaId, const CddbDisc& answer);

// The whole lookup for a disc: settings, conversation, storing. True when an
// answer was stored.
bool LookupCdTitles(Database& db, qint32 mediaId, const CdTableOfContents& toc);
