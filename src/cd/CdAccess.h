#pragma once
// The audio CD in a drive: tray commands for the command bar, and the
// titles known of each disc, kept in the data file's CD_Titles and CD_Songs.
// Everything goes through the audio CD device of CdCommands under the alias
// "cd", so only one disc is open at a time: CloseAllDevices stands before
// each new open. Nothing here shows a message.

#include <QSet>
#include <QString>
#include <QStringList>
#include <QtGlobal>

// What is known of the disc last loaded by LoadCdTitles, and the drive the
// routines below act on.
struct CdAccessState {
  // The drive being looked at: a device ("/dev/sr0") or the CUE sheet of a
  // disc image. The callers set it before calling the routines below.
  QString CurrentDrive;
  // The disc's record number in CD_Titles; 0 when unknown.
  qint32 MediaId = 0;
  QString MediaTitle, MediaArtist, MediaStyle;
  qint16 MediaYear = 0;
  qint16 SongCount = 0;
  // The track titles in track order: the first track's title comes first.
  QStringList SongTitles;
  // Reply code of the last checked command (0 for success).
  qint32 LastMciError = 0;
  // The discs asked about in this run, answered or not: a disc whose lookup
  // brought no titles is not asked about again at every page of its tracks.
  QSet<QString> LookedUp;
};

// The one instance.
CdAccessState& CdAccess();
// Closes the device and puts every value back to its start value.
void ResetCdAccess();

// The commands, each sent unchecked (the reply is ignored) unless said.
void EjectDisc();        // "set cd door open"
void CloseDoor();        // "set cd door closed"
void CloseAllDevices();  // "close all"
// Opens CurrentDrive under the alias "cd".
void OpenCd();
void SetCdTimeFormat();  // "set cd time format tmsf wait"
// The number of tracks of the open disc; 0 when there is none.
qint16 CdTrackCount();
// The open disc is playing.
bool CdIsPlaying();
// CloseAllDevices, OpenCd, SetCdTimeFormat.
void PrepareCd();

// The command text that opens CurrentDrive under the alias "cd".
QString OpenCdCommand();

// The identity of the open disc, as CD_Titles keeps it (MediaNumber); empty
// when no disc is open.
QString DiscIdentity();
// The buffer of 64 blanks that the device's answer is written into, as the
// device leaves it: the answer, a zero character, blanks.
QString IdentityBuffer(const QString& reply);
// Makes the identity out of such a buffer: the text before the first
// character equal to the buffer's last one is kept (nothing when that comes
// first), then a last character below "0" or above "z" is dropped, once.
// So the zero after the answer goes, and an answer with a blank is cut
// there.
QString IdentityFromBuffer(const QString& buffer);

// Reads the titles of the disc in CurrentDrive. A disc met for the first
// time gets its CD_Titles row (not downloaded, the track count, no texts);
// a disc whose titles were never fetched is looked up when the setting
// "CddbAccess" is on. Fills the state above; true when track titles are
// known. No data file, no drive or no disc: false.
bool LoadCdTitles();

// The command bar's buttons on the given drive. Eject: the tray opens
// unless the disc is playing. Close: when the disc is not playing and no
// disc can be read (the tray is out, or the drive is empty), the tray
// closes. The device is closed again afterwards. An image keeps its place.
void EjectCdDrive(const QString& drive);
void CloseCdDrive(const QString& drive);

// For the browser and the file search: the track titles of the disc in the
// drive (first track first); false when none are known. Closes the device
// first, as each look at a new drive must.
bool CdTitlesOfDrive(const QString& drive, QStringList& titles);
