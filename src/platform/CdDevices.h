#pragma once
// The CD drives of the machine, through libcdio. A drive is named by its
// device ("/dev/sr0"); a CUE sheet of a CUE/BIN image opens as a drive too.

#include <QList>
#include <QString>
#include <QStringList>

namespace platform {

// One track of the disc in a drive.
struct CdTrack {
  int number = 0;
  bool audio = false;
};

// What a drive holds. `ready` is false when the drive cannot be opened or
// holds no readable disc; the tracks are then empty.
struct CdDisc {
  bool ready = false;
  int firstTrack = 0;
  int trackCount = 0;
  QList<CdTrack> tracks;

  bool HasAudioTracks() const;
};

// The CD-ROM devices of the machine, or the override while one is set.
QStringList ListCdDevices();
// Makes ListCdDevices answer with these devices (image CUE sheets, for
// instance) instead of asking the system, until cleared.
void SetCdDeviceOverride(const QStringList& devices);
void ClearCdDeviceOverride();

// Opens the device, reads its table of contents and closes it again.
CdDisc ReadCdDisc(const QString& device);

}  // namespace platform
