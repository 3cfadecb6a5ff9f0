#pragma once
// The CD drives of the machine, through libcdio. A drive is named by its
// device ("/dev/sr0"); a CUE sheet of a CUE/BIN image opens as a drive too.

#include <QList>
#include <QString>
#include <QStringList>

namespace platform {

// One track of the disc in a drive. Sectors are counted from the start of
// the disc's lead-in gap, 75 to the second, so the first track of an
// ordinary disc starts at sector 150.
struct CdTrack {
  int number = 0;
  bool audio = false;
  int startSector = 0;
};

// What a drive holds. `ready` is false when the drive cannot be opened or
// holds no readable disc; the tracks are then empty.
struct CdDisc {
  bool ready = false;
  int firstTrack = 0;
  int trackCount = 0;
  QList<CdTrack> tracks;
  // Where the disc's lead-out starts, counted as the track starts are.
  int leadoutSector = 0;

  bool HasAudioTracks() const;
};

// The CD-ROM devices of the machine, or the override while one is set, or
// the devices named by the environment variable VISTREL_CD_DEVICES.
QStringList ListCdDevices();
// Makes ListCdDevices answer with these devices (image CUE sheets, for
// instance) instead of asking the system, until cleared.
void SetCdDeviceOverride(const QStringList& devices);
void ClearCdDeviceOverride();

// Opens the device, reads its table of contents and closes it again.
CdDisc ReadCdDisc(const QString& device);

// A CUE sheet (or another disc image file) rather than a drive.
bool IsCdImage(const QString& device);
// The device can be used as a drive: a CD drive, with or without a disc,
// or an image file that opens as a disc.
bool CdDeviceExists(const QString& device);

// Opens and closes the tray of a drive, by its name. An image has no tray:
// both answer false and touch nothing, since ejecting an image's handle
// would free it under the caller.
bool EjectCdTray(const QString& device);
bool CloseCdTray(const QString& device);

// The drive plays the disc by itself (its own audio output). Always false
// for an image and for a drive that cannot tell.
bool IsCdPlaying(const QString& device);

}  // namespace platform
