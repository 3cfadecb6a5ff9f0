#include "platform/MidiFile.h"

#include <algorithm>

namespace platform {

namespace {

constexpr qint64 DefaultTempo = 500000;

quint32 Big32(const QByteArray& bytes, qsizetype at) {
  const auto* p = reinterpret_cast<const uchar*>(bytes.constData()) + at;
  return quint32(p[0]) << 24 | quint32(p[1]) << 16 | quint32(p[2]) << 8 | quint32(p[3]);
}

quint32 Little32(const QByteArray& bytes, qsizetype at) {
  const auto* p = reinterpret_cast<const uchar*>(bytes.constData()) + at;
  return quint32(p[0]) | quint32(p[1]) << 8 | quint32(p[2]) << 16 | quint32(p[3]) << 24;
}

bool IdAt(const QByteArray& bytes, qsizetype at, const char* id) {
  return at >= 0 && bytes.size() >= at + 4 && bytes.mid(at, 4) == QByteArray::fromRawData(id, 4);
}

// Reads one track's events from `at` to `end`: its tempo changes go into
// the clock, and the result is the tick of its last event.
qint64 ReadTrack(const QByteArray& song, qsizetype at, qsizetype end, MidiClock& clock) {
  const auto* p = reinterpret_cast<const uchar*>(song.constData());
  qint64 tick = 0;
  int running = 0;
  const auto variable = [&](qint64& value) {
    value = 0;
    for (int i = 0; i < 4; ++i) {
      if (at >= end) return false;
      const uchar byte = p[at++];
      value = value << 7 | (byte & 0x7F);
      if (!(byte & 0x80)) return true;
    }
    return false;
  };
  while (at < end) {
    qint64 delta = 0;
    if (!variable(delta)) break;
    if (at >= end) break;
    int status = p[at];
    if (status & 0x80) {
      ++at;
    } else if (running) {
      status = running;
    } else {
      break;
    }
    tick += delta;
    if (status == 0xFF) {
      if (at >= end) break;
      const int type = p[at++];
      qint64 length = 0;
      if (!variable(length) || at + length > end) break;
      if (type == 0x51 && length == 3) {
        const qint64 tempo = qint64(p[at]) << 16 | qint64(p[at + 1]) << 8 | p[at + 2];
        if (tempo > 0) clock.Tempos.push_back({tick, tempo});
      }
      at += length;
      if (type == 0x2F) break;
    } else if (status == 0xF0 || status == 0xF7) {
      qint64 length = 0;
      if (!variable(length) || at + length > end) break;
      at += length;
      running = 0;
    } else {
      running = status;
      const int kind = status & 0xF0;
      at += (kind == 0xC0 || kind == 0xD0) ? 1 : 2;
      if (at > end) break;
    }
  }
  return tick;
}

}  // namespace

bool LooksLikeMidi(const QByteArray& head) {
  return IdAt(head, 0, "MThd") || (IdAt(head, 0, "RIFF") && IdAt(head, 8, "RMID"));
}

QByteArray MidiSongBytes(const QByteArray& file) {
  if (IdAt(file, 0, "MThd")) return file;
  if (!IdAt(file, 0, "RIFF") || !IdAt(file, 8, "RMID")) return {};
  qint64 at = 12;
  while (at + 8 <= file.size()) {
    const qint64 size = Little32(file, at + 4);
    if (IdAt(file, at, "data")) {
      const QByteArray song = file.mid(at + 8, qsizetype(std::min<qint64>(size, file.size() - at - 8)));
      return IdAt(song, 0, "MThd") ? song : QByteArray();
    }
    at += 8 + size + (size & 1);
  }
  return {};
}

MidiClock ReadMidiClock(const QByteArray& song) {
  MidiClock clock;
  if (!IdAt(song, 0, "MThd") || song.size() < 14) return clock;
  const qint64 headerLength = Big32(song, 4);
  const auto* p = reinterpret_cast<const uchar*>(song.constData());
  const int division = p[12] << 8 | p[13];
  if (division & 0x8000) {
    // Frames per second (as a negative byte) times ticks per frame.
    const int frames = 256 - p[12];
    clock.TimeCode = true;
    clock.Division = (frames == 29 ? 29.97 : frames) * p[13];
  } else {
    clock.Division = division;
  }
  if (clock.Division <= 0) return MidiClock();
  qint64 at = 8 + headerLength;
  while (at + 8 <= song.size()) {
    const qint64 size = Big32(song, at + 4);
    const qint64 body = at + 8;
    const qint64 end = std::min<qint64>(body + size, song.size());
    if (IdAt(song, at, "MTrk"))
      clock.LastTick = std::max(clock.LastTick, ReadTrack(song, qsizetype(body), qsizetype(end), clock));
    at = body + size;
  }
  std::stable_sort(clock.Tempos.begin(), clock.Tempos.end(),
                   [](const MidiClock::Tempo& a, const MidiClock::Tempo& b) { return a.Tick < b.Tick; });
  return clock;
}

double MidiClock::MsAt(qint64 tick) const {
  if (!Valid()) return 0;
  if (TimeCode) return tick * 1000.0 / Division;
  double ms = 0;
  qint64 from = 0, tempo = DefaultTempo;
  for (const Tempo& change : Tempos) {
    if (change.Tick >= tick) break;
    ms += (change.Tick - from) * double(tempo) / Division / 1000.0;
    from = change.Tick;
    tempo = change.MicrosecondsPerQuarter;
  }
  return ms + (tick - from) * double(tempo) / Division / 1000.0;
}

qint64 MidiClock::TickAt(double ms) const {
  if (!Valid() || ms <= 0) return 0;
  if (TimeCode) return qint64(ms * Division / 1000.0);
  double at = 0;
  qint64 from = 0, tempo = DefaultTempo;
  for (const Tempo& change : Tempos) {
    const double next = at + (change.Tick - from) * double(tempo) / Division / 1000.0;
    if (next > ms) break;
    at = next;
    from = change.Tick;
    tempo = change.MicrosecondsPerQuarter;
  }
  return from + qint64((ms - at) * 1000.0 * Division / double(tempo));
}

}  // namespace platform
