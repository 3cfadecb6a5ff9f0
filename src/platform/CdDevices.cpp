#include "platform/CdDevices.h"
#include "platform/Services.h"

#include <cdio/cdio.h>
#include <cdio/device.h>
#include <cdio/disc.h>
#include <cdio/logging.h>
#include <cdio/mmc.h>
#include <cdio/track.h>

#include <QFileInfo>

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
  // VISTREL_CD_DEVICES, a ":"-separated list of drives or CUE sheets,
  // stands in for the machine's drives: a disc image can be browsed as if
  // it lay in a drive.
  const QString chosen = qEnvironmentVariable("VISTREL_CD_DEVICES");
  if (!chosen.isEmpty()) return chosen.split(':', Qt::SkipEmptyParts);
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
      disc.tracks.append({number, cdio_get_track_format(cdio, number) == TRACK_FORMAT_AUDIO,
                          int(cdio_get_track_lba(cdio, number))});
    }
    disc.leadoutSector = int(cdio_get_track_lba(cdio, CDIO_CDROM_LEADOUT_TRACK));
  }
  // Never eject here: on an image that frees the handle.
  cdio_destroy(cdio);
  return disc;
}

bool IsCdImage(const QString& device) { return !device.isEmpty() && QFileInfo(device).isFile(); }

bool CdDeviceExists(const QString& device) {
  if (device.isEmpty()) return false;
  const QFileInfo info(device);
  if (!info.exists()) return false;
  // A drive node stands even with no disc in it; an empty file is no image
  // (and the image readers would probe it past its end).
  if (!info.isFile()) return true;
  if (info.size() == 0) return false;
  InstallQuietLog();
  CdIo_t* cdio = cdio_open(device.toLocal8Bit().constData(), DRIVER_UNKNOWN);
  if (!cdio) return false;
  cdio_destroy(cdio);
  return true;
}

bool EjectCdTray(const QString& device) {
  if (device.isEmpty() || IsCdImage(device)) return false;
  InstallQuietLog();
  return cdio_eject_media_drive(device.toLocal8Bit().constData()) == DRIVER_OP_SUCCESS;
}

bool CloseCdTray(const QString& device) {
  if (device.isEmpty() || IsCdImage(device)) return false;
  InstallQuietLog();
  driver_id_t driver = DRIVER_DEVICE;
  return cdio_close_tray(device.toLocal8Bit().constData(), &driver) == DRIVER_OP_SUCCESS;
}

bool IsCdPlaying(const QString& device) {
  if (device.isEmpty() || IsCdImage(device)) return false;
  InstallQuietLog();
  CdIo_t* cdio = cdio_open(device.toLocal8Bit().constData(), DRIVER_UNKNOWN);
  if (!cdio) return false;
  cdio_subchannel_t subchannel{};
  const bool playing = cdio_audio_read_subchannel(cdio, &subchannel) == DRIVER_OP_SUCCESS &&
                       subchannel.audio_status == CDIO_MMC_READ_SUB_ST_PLAY;
  cdio_destroy(cdio);
  return playing;
}

}  // namespace platform
