#pragma once
// Plays short sounds held in memory: a complete wave file in a byte array
// goes to the desktop's sound server without touching the disk. Playing
// never holds the caller up: the sound is handed to a worker thread of the
// player, and a new sound cuts off the one still playing. Without a sound
// server nothing is heard and nothing is reported; none is ever started on
// demand. The server is the one named by PULSE_SERVER, else the user's own.

#include <QByteArray>
#include <QtGlobal>
#include <memory>
#include <optional>

namespace platform {

// What the header of a wave file says about its samples.
struct WaveFormat {
  // The sample encoding: 1 integer samples, 3 floating point, 6 A-law,
  // 7 mu-law (an extensible header is read through to its sub-format).
  int Encoding = 0;
  int Channels = 0;
  int SampleRate = 0;
  int BitsPerSample = 0;
  // Where the samples start in the file's bytes, and how many bytes of
  // whole frames follow there.
  qsizetype DataOffset = 0;
  qsizetype DataLength = 0;
};

// Reads the header of a wave file held in memory. Nothing for bytes that
// are not a wave file, whose header is cut short, or whose samples cannot be
// played (integer 8, 16, 24 or 32 bits, floating point 32 bits, A-law and
// mu-law 8 bits can). Samples cut short by the end of the bytes leave the
// whole frames that are there.
std::optional<WaveFormat> ParseWave(const QByteArray& wave);

class SoundPlayer {
 public:
  SoundPlayer();
  // Cuts off the sound still playing.
  ~SoundPlayer();
  SoundPlayer(const SoundPlayer&) = delete;
  SoundPlayer& operator=(const SoundPlayer&) = delete;

  // Starts playing a complete wave file and returns at once, cutting off the
  // sound that is still playing. False when the bytes are no wave file that
  // can be played; whether a server hears it is not reported.
  bool Play(const QByteArray& wave);
  // Cuts off the sound that is playing, if any.
  void Stop();

 private:
  struct Worker;
  std::unique_ptr<Worker> worker_;
};

}  // namespace platform
