#include "catalogue/CdDrives.h"

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
