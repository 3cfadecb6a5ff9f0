#pragma once
// One open media file on a playing engine: the films and sound files on the
// desktop's media library (MpvDevice), MIDI files on the software
// synthesizer (MidiDevice). A device counts in milliseconds. It plays, pauses
// and seeks, and never reports the end of a file: its owner polls the
// position, which at the end equals the length. Every call is made on the
// user-interface thread and returns promptly.

#include <QImage>
#include <QSize>
#include <QtGlobal>
#include <functional>

namespace platform {

// Why a file did not open.
enum class MediaOpenFailure {
  None,
  // The file is not there.
  Missing,
  // The engine could not make sense of the file.
  Unplayable,
  // The engine itself is missing (no sound font, for instance).
  NoEngine,
};

class MediaDevice {
 public:
  virtual ~MediaDevice() = default;

  // The length and the position in milliseconds; -1 when the engine cannot
  // tell. At the end of the file the position is the length.
  virtual qint64 LengthMs() = 0;
  virtual qint64 PositionMs() = 0;
  // Goes to `fromMs` and plays to `toMs`, or to the end when `toMs` is
  // negative. The caller has checked both against the length.
  virtual void PlayFrom(qint64 fromMs, qint64 toMs) = 0;
  // Pause and Stop both hold the file where it is; Resume plays on from
  // there.
  virtual void Pause() = 0;
  virtual void Resume() = 0;
  virtual void Stop() = 0;

  // The picture's natural size in pixels; false for a file without one.
  virtual bool PictureSize(QSize& size) { Q_UNUSED(size); return false; }
  // Where the pictures go: each new picture, drawn at the target size, is
  // handed to the sink on the user-interface thread.
  virtual void SetPictureSink(std::function<void(const QImage&)> sink) { Q_UNUSED(sink); }
  virtual void SetPictureTargetSize(const QSize& size) { Q_UNUSED(size); }
};

}  // namespace platform
