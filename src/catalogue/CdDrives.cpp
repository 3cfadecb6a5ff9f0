#include "catalogue/CdDrives.h"

#include <QFileInfo>

#include "catalogue/NumberFormat.h"
#include "platform/CdDevices.h"
#include "core/AppState.h"

void FillCdDrives() {
  App().CdDrives = platform::ListCdDevices();
  App().CdDriveCount = int(App().CdDrives.size());
}

void FillAudioCdDrives() {
  QStringList drives;
  for (const QString& device : platform::ListCdDevices()) {
    const platform::CdDisc disc = platform::ReadCdDisc(device);
    if (disc.ready && disc.HasAudioTracks()) drives.append(device);
  }
  App().CdDrives = drives;
  App().CdDriveCount = int(drives.size());
}

QStringList AudioTrackFileNames(const QString& drive) {
  QStringList names;
  const platform::CdDisc disc = platform::ReadCdDisc(drive);
  for (const platform::CdTrack& track : disc.tracks)
    if (track.audio) names.append("Track" + Format(track.number, "00") + ".cda");
  return names;
}

QList<CdDriveFolder> CdDriveFolders() {
  QList<CdDriveFolder> folders;
  for (const QString& device : platform::ListCdDevices()) {
    const platform::CdDisc disc = platform::ReadCdDisc(device);
    const QString name = QFileInfo(device).fileName();
    const bool audio = disc.ready && disc.HasAudioTracks();
    folders.append({device, (audio ? "Audio CD (" : "CD Drive (") + name + ")", disc.ready});
  }
  return folders;
}

bool IsCdDriveFolder(const QString& folder) {
  return !folder.isEmpty() && App().CdDrives.contains(folder);
}

bool CdDiscReady(const QString& drive) { return platform::ReadCdDisc(drive).ready; }

bool IsBrowsableFolder(const QString& folder) {
  return QFileInfo(folder).isDir() || IsCdDriveFolder(folder);
}
