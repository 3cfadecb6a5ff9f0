#include "platform/CdDevices.h"
#include "platform/Services.h"

#include <cdio/cdio.h>
#include <cdio/device.h>
#include <cdio/disc.h>
#include <cdio/logging.h>
#include <cdio/track.h>

#include <cstdio>
#include <optional>

namespace platform {

namespace {

auto& Override() { return TheServices().CdDevices; }

// libcdio reports a drive without a disc as a warning on the terminal; the
// program asks such drives routinely, so only errors are let through.
void QuietLog(cdio_log_level_t level, const char* message) {
  if (level >= CDIO_LOG_ERROR) fprintf(stderr, "libcdio: %s\n", message);
}

void InstallQuietLog() {
  static const bool installed = [] {
    cdio_log_set_handler(QuietLog);
    return true;
  }();
  (void)installed;
}

}  // namespace

bool CdDisc::HasAudioTracks() const {
  for (const CdTrack& track : tracks)
    if (track.audio) return true;
  return false;
}

QStringList ListCdDevices() {
  if (Override()) return *Override();
  InstallQuietLog();
  QStringList devices;
  char** list = cdio_get_devices(DRIVER_DEVICE);
  if (!list) return devices;
  for (char** device = list; *device; ++device) {
    const QString name = QString::fromLocal8Bit(*device);
    if (!devices.contains(name)) devices.append(name);
  }
  cdio_free_device_list(list);
  return devices;
}

void SetCdDeviceOverride(const QStringList& devices) { Override() = devices; }

void ClearCdDeviceOverride() { Override().reset(); }

CdDisc ReadCdDisc(const QString& device) {
  CdDisc disc;
  if (device.isEmpty()) return disc;
  InstallQuietLog();
  CdIo_t* cdio = cdio_open(device.toLocal8Bit().constData(), DRIVER_UNKNOWN);
  if (!cdio) return disc;
  const track_t first = cdio_get_first_track_num(cdio);
  const track_t count = cdio_get_num_tracks(cdio);
  if (first != CDIO_INVALID_TRACK && count != CDIO_INVALID_TRACK && count > 0) {
    disc.ready = true;
    disc.firstTrack = first;
    disc.trackCount = count;
    for (int i = 0; i < count; ++i) {
      const track_t number = track_t(first + i);
      disc.tracks.append({number, cdio_get_track_format(cdio, number) == TRACK_FORMAT_AUDIO});
    }
  }
  // Never eject here: on an image that frees the handle.
  cdio_destroy(cdio);
  return disc;
}

}  // namespace platform
