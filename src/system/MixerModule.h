#pragma once
// The volume control and mute switch of the machine's first audio mixer, for
// the command bar's slider and mute button, the keyboard shortcuts and the
// tutorial; whether the machine can play sound at all; and the start of the
// desktop's own sound settings.
//
// The mixer is the sound server's default output. Its controls sit in a
// table of 21 entries, indexed by the program's handle on a control:
//   0 master volume, 1 line in, 2 microphone, 3 synthesizer, 4 compact disc,
//   5 wave out, 6 auxiliary; 7 to 13 the mutes of the same lines.
// Only the master line exists here (0 and 7); every other entry stays
// zeroed, and writes to it fail quietly. Volumes cross the interface as
// percent, 0 to 100.

#include <QtGlobal>
#include <memory>

namespace platform {
class SoundServer;
}

inline constexpr int MixerControlCount = 21;

// One control of the mixer: its id (0 when the control does not exist) and
// the bounds of its raw values.
struct MixerControl {
  quint32 dwControlID = 0;
  qint32 Minimum = 0;
  qint32 Maximum = 0;
};

// The raw value written for a percent (or a mute's 0 and 1): with a maximum
// of 101 or more, (maximum / 100, whole part) times the value, else the value
// itself; then clamped to the maximum and raised to the minimum. With a
// maximum of 65535, 50 % is 32750 and 100 % is 65500.
qint64 RawFromPercent(int value, qint32 minimum, qint32 maximum);
// The percent read from a raw value: with a maximum below 101 the raw value
// itself, else raw * 100 / maximum less the minimum, rounded.
int PercentFromRaw(qint64 raw, qint32 minimum, qint32 maximum);

// Opens the mixer by number; only 0 exists, and only while a sound server
// with an output is reachable. Fills the table; true once open. The open
// mixer is part of the program-wide state (App().Mixer), so that
// ResetAppState closes it too.
bool OpenMixer(int device);
// Closes the mixer; every later call fails quietly until it is opened again.
void CloseMixer();

// Writes a percent to a control; true if set.
bool SetVolume(int index, int percent);
// Reads a control as percent; 0 when it cannot be read.
int GetVolume(int index);
// Writes a mute switch; true if set.
bool SetMute(int index, bool on);
// Reads a mute switch; false when it cannot be read.
bool GetMute(int index);
// Turns the master mute over; the result of the write.
bool ToggleMute();
// One percent up (direction 1 or more) or down on the master, the compact
// disc and the wave out volume; nothing at the end of the range.
void StepVolume(int direction);

// 0 no audio, 1 wave only, 2 MIDI only, 3 both. Wave is a sound server with
// an output; MIDI is the General MIDI sound font that MIDI files play with.
int AudioAbilities();

// Starts the desktop's sound settings ("pavucontrol") without waiting; a
// missing program is passed over quietly.
void mixerButton_Click();

// The table's entry; an index outside the table gives an empty entry.
const MixerControl& MixerControlAt(int index);

// The master line as one look at it found it: GetMute(7) and GetVolume(0).
struct MasterReading {
  bool Muted = false;
  int Volume = 0;
};

// Reads the master line over a connection of its own, so that the reading
// can wait for the sound server on another thread while the user-interface
// thread goes on (and writes over the mixer's own connection). It takes the
// open mixer's master controls when it is made; made while the mixer is
// closed, it reads not muted and 0 without asking the server, as the mixer
// functions do. One Read at a time, from any thread; a silent server holds
// it up for at most SoundServer::TimeOutMs per request.
class MasterReader {
 public:
  MasterReader();
  ~MasterReader();
  MasterReader(const MasterReader&) = delete;
  MasterReader& operator=(const MasterReader&) = delete;

  MasterReading Read();

 private:
  MixerControl volume_, mute_;
  std::unique_ptr<platform::SoundServer> server_;
};
