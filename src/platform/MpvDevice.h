#pragma once
// Films and sound files on the desktop's media library (libmpv). A file
// opens paused on its first picture. Pictures are drawn in software at the
// size the owner asks for and handed over on the user-interface thread. At
// the end the file stays open on its last picture, and the position then
// equals the length.
//
// The environment may choose the outputs: VISTREL_MPV_AO names the sound
// output (unset: the library picks one; "null" plays in silence to the
// clock), VISTREL_MPV_VO the picture output (unset: drawn for the owner;
// "null" draws nothing).

#include <QString>
#include <memory>

#include "platform/MediaDevice.h"

namespace platform {

class MpvDevice : public MediaDevice {
 public:
  // Opens a file, paused at its start; nothing and the reason when the
  // library cannot play it. Waits until the library has looked at the file.
  static std::unique_ptr<MpvDevice> Open(const QString& path, MediaOpenFailure* failure);
  ~MpvDevice() override;
  MpvDevice(const MpvDevice&) = delete;
  MpvDevice& operator=(const MpvDevice&) = delete;

  qint64 LengthMs() override;
  qint64 PositionMs() override;
  void PlayFrom(qint64 fromMs, qint64 toMs) override;
  void Pause() override;
  void Resume() override;
  void Stop() override;
  bool PictureSize(QSize& size) override;
  void SetPictureSink(std::function<void(const QImage&)> sink) override;
  void SetPictureTargetSize(const QSize& size) override;

 private:
  struct Player;
  explicit MpvDevice(std::unique_ptr<Player> player);
  std::unique_ptr<Player> player_;
};

}  // namespace platform
