#pragma once
// What the MIDI player needs to know of a MIDI file before it plays it: the
// song's bytes (a plain file, or one wrapped in a RIFF "RMID" form) and its
// clock, so that ticks and milliseconds can be turned into each other.

#include <QByteArray>
#include <QtGlobal>
#include <vector>

namespace platform {

// Whether the first bytes of a file are those of a MIDI file: "MThd", or a
// RIFF form of type "RMID".
bool LooksLikeMidi(const QByteArray& head);

// The standard MIDI file inside a file's bytes: the bytes themselves, or
// the "data" chunk of an "RMID" form; empty when there is none.
QByteArray MidiSongBytes(const QByteArray& file);

// The song's clock: its division, its tempo changes and its last tick.
struct MidiClock {
  // Ticks per quarter note, or, for a time-code division, ticks per second
  // (TimeCode true).
  double Division = 0;
  bool TimeCode = false;
  // Tempo changes by tick, in microseconds per quarter note, in order.
  struct Tempo {
    qint64 Tick;
    qint64 MicrosecondsPerQuarter;
  };
  std::vector<Tempo> Tempos;
  // The tick of the last event of the longest track.
  qint64 LastTick = 0;

  bool Valid() const { return Division > 0; }
  double MsAt(qint64 tick) const;
  qint64 TickAt(double ms) const;
  double LengthMs() const { return MsAt(LastTick); }
};

// Reads the clock of a standard MIDI file's bytes; an invalid clock when
// the header is not there. A track cut short counts up to where it stops.
MidiClock ReadMidiClock(const QByteArray& song);

}  // namespace platform
