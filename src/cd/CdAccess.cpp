#include "cd/CdAccess.h"

#include <algorithm>

#include "cd/CdCommands.h"
#include "catalogue/CdDrives.h"
#include "cd/CddbLookup.h"
#include "core/AppState.h"
#include "core/Database.h"
#include "core/Settings.h"
#include "core/Statements.h"
#include "platform/CdDevices.h"

namespace {

constexpr int kIdentityBufferLength = 64;

// Sends a command and forgets its reply.
void Send(const QString& command) { CdCommand(command); }

// Sends a command and keeps its reply code in LastMciError; true on success.
bool SendChecked(const QString& command, QString* returned = nullptr) {
  CdAccess().LastMciError = CdCommand(command, returned);
  return CdAccess().LastMciError == CdSuccess;
}

// A question whose answer is a word or a number; empty when it failed.
QString Ask(const QString& command) {
  QString answer;
  CdCommand(command, &answer);
  return answer;
}

bool LookupsWanted() {
  return settings::GetTrueFalse("CddbAccess", settings::DefaultOf("CddbAccess") == "1");
}

}  // namespace

CdAccessState& CdAccess() {
  static CdAccessState state;
  return state;
}

void ResetCdAccess() {
  CdCloseAll();
  CdAccess() = CdAccessState();
}

void EjectDisc() { Send(QStringLiteral("set cd door open")); }

void CloseDoor() { Send(QStringLiteral("set cd door closed")); }

void CloseAllDevices() { Send(QStringLiteral("close all")); }

QString OpenCdCommand() {
  return "open \"" + CdAccess().CurrentDrive + "\" type cdaudio alias cd wait shareable";
}

void OpenCd() { Send(OpenCdCommand()); }

void SetCdTimeFormat() { Send(QStringLiteral("set cd time format tmsf wait")); }

qint16 CdTrackCount() {
  bool ok = false;
  const int count = Ask(QStringLiteral("status cd number of tracks wait")).toInt(&ok);
  return ok ? qint16(count) : qint16(0);
}

bool CdIsPlaying() { return Ask(QStringLiteral("status cd mode")) == "playing"; }

void PrepareCd() {
  CloseAllDevices();
  OpenCd();
  SetCdTimeFormat();
}

QString IdentityBuffer(const QString& reply) {
  return (reply.left(kIdentityBufferLength - 1) + QChar(0))
      .leftJustified(kIdentityBufferLength, QLatin1Char(' '));
}

QString IdentityFromBuffer(const QString& buffer) {
  if (buffer.isEmpty()) return QString();
  const QChar filler = buffer.back();
  const qsizetype end = buffer.indexOf(filler);
  QString identity = end > 0 ? buffer.left(end) : QString();
  if (!identity.isEmpty()) {
    const ushort last = identity.back().unicode();
    if (last < 48 || last >= 123) identity.chop(1);
  }
  return identity;
}

QString DiscIdentity() {
  return IdentityFromBuffer(IdentityBuffer(Ask(QStringLiteral("info cd identity"))));
}

bool LoadCdTitles() {
  CdAccessState& state = CdAccess();
  state.SongCount = 0;
  state.SongTitles.clear();
  state.MediaId = 0;
  state.MediaTitle.clear();
  state.MediaArtist.clear();
  state.MediaStyle.clear();
  state.MediaYear = 0;

  const bool opened = SendChecked(OpenCdCommand());
  const QString identity = DiscIdentity();
  Database* db = App().DatabaseConnection;
  if (!db || !db->IsOpen()) return false;

  // A drive without a disc answers with an empty identity, which gets its
  // row like any disc and never any songs. Identities hold no apostrophe,
  // which the CD_Titles statements refuse as a key.
  bool lookupWanted = false;
  if (const std::optional<CdTitle> known = SelectCdTitle(*db, identity)) {
    state.MediaId = known->MediaID;
    state.MediaTitle = known->MediaTitle;
    state.MediaArtist = known->MediaArtist;
    state.MediaStyle = known->MediaStyle;
    state.MediaYear = known->MediaYear;
    lookupWanted = !known->MediaDownloaded;
  } else {
    state.MediaId = AddCdTitle(*db, identity, CdTrackCount());
    lookupWanted = true;
  }
  if (state.MediaId == 0) state.MediaId = SelectCdMediaId(*db, identity);

  // Only a disc that is there can be looked up.
  if (lookupWanted && opened && !identity.isEmpty() && state.MediaId != 0 &&
      !state.LookedUp.contains(identity) && LookupsWanted()) {
    // The titles come from the title server; it fills CD_Titles and
    // CD_Songs, whose songs are read just below. The table of contents
    // counts from the start of the disc, without the lead-in gap.
    // A disc without an audio track has nothing to name.
    const platform::CdDisc disc = platform::ReadCdDisc(state.CurrentDrive);
    const bool hasAudio = std::any_of(disc.tracks.begin(), disc.tracks.end(),
                                      [](const platform::CdTrack& track) { return track.audio; });
    if (disc.ready && hasAudio) {
      state.LookedUp.insert(identity);
      CdTableOfContents toc;
      toc.FirstTrack = disc.firstTrack;
      for (const platform::CdTrack& track : disc.tracks) toc.TrackLbas << track.startSector - 150;
      toc.LeadOutLba = disc.leadoutSector - 150;
      LookupCdTitles(*db, state.MediaId, toc);
    }
  }

  state.SongTitles = SelectCdSongTitles(*db, state.MediaId);
  state.SongCount = qint16(state.SongTitles.size());
  return state.SongCount > 0;
}

void EjectCdDrive(const QString& drive) {
  CdAccess().CurrentDrive = drive;
  PrepareCd();
  if (!CdIsPlaying()) EjectDisc();
  CloseAllDevices();
}

void CloseCdDrive(const QString& drive) {
  CdAccess().CurrentDrive = drive;
  PrepareCd();
  if (!CdIsPlaying() && Ask(QStringLiteral("status cd media present")) != "true") CloseDoor();
  CloseAllDevices();
}

bool CdTitlesOfDrive(const QString& drive, QStringList& titles) {
  titles.clear();
  // Only a CD drive is asked; a folder of copied track files is none.
  if (!IsCdDriveFolder(drive)) return false;
  CloseAllDevices();
  CdAccess().CurrentDrive = drive;
  const bool known = LoadCdTitles();
  titles = CdAccess().SongTitles;
  return known;
}
