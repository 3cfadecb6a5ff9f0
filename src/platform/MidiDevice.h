#pragma once
// MIDI files on the software synthesizer with the General MIDI sound font.
// The song goes to the desktop's sound server when one answers; without one
// the synthesizer runs on in silence, kept to the clock, so that the
// position still advances and the end still comes. Nothing here ever waits
// on the sound server.

#include <QString>
#include <memory>

#include "platform/MediaDevice.h"

namespace platform {

class MidiDevice : public MediaDevice {
 public:
  // Opens a MIDI file (plain, or in a RIFF "RMID" form), paused at its
  // start; nothing and the reason when it cannot be played.
  static std::unique_ptr<MidiDevice> Open(const QString& path, MediaOpenFailure* failure);
  ~MidiDevice() override;
  MidiDevice(const MidiDevice&) = delete;
  MidiDevice& operator=(const MidiDevice&) = delete;

  qint64 LengthMs() override;
  qint64 PositionMs() override;
  void PlayFrom(qint64 fromMs, qint64 toMs) override;
  void Pause() override;
  void Resume() override;
  void Stop() override;

  // Whether the song goes to a sound server (false: it plays in silence).
  bool Audible() const;

 private:
  struct Engine;
  explicit MidiDevice(std::unique_ptr<Engine> engine);
  std::unique_ptr<Engine> engine_;
};

}  // namespace platform
