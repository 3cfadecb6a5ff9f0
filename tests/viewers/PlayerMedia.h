#pragma once
// Media files for the player's tests, made once per test run with ffmpeg
// in a folder of their own, and a MIDI file written byte by byte. The
// media library plays in silence to the clock (VISTREL_MPV_AO=null), and
// no sound server is ever involved in timing.

#include <QByteArray>
#include <QDir>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

#include "support/TestEnv.h"

namespace playermedia {

inline QString Folder() {
  static std::unique_ptr<QTemporaryDir> folder;
  if (!folder) {
    // Beside the build's program folder: the tests' own temporary folders
    // go with each test.
    folder = std::make_unique<QTemporaryDir>(testenv::BuildProgramFolder() + "/../player-media-XXXXXX");
  }
  return folder->path();
}

// Runs ffmpeg to make `name` once; its path ("" when ffmpeg failed).
inline QString Made(const QString& name, const QStringList& arguments) {
  const QString path = Folder() + "/" + name;
  if (QFileInfo::exists(path)) return path;
  QProcess ffmpeg;
  ffmpeg.start("ffmpeg", QStringList{"-v", "error", "-y"} + arguments + QStringList{path});
  if (!ffmpeg.waitForFinished(120000) || ffmpeg.exitCode() != 0) return QString();
  return path;
}

// A tone of whole seconds as a wave file.
inline QString Wave(int seconds) {
  return Made(QStringLiteral("tone%1.wav").arg(seconds),
              {"-f", "lavfi", "-i", "sine=frequency=440:sample_rate=44100", "-t", QString::number(seconds)});
}

inline QString Mp3(int seconds) {
  return Made(QStringLiteral("tone%1.mp3").arg(seconds),
              {"-f", "lavfi", "-i", "sine=frequency=440", "-t", QString::number(seconds), "-c:a", "libmp3lame"});
}

// A film of 320 x 240 pixels with sound, 2 seconds.
inline QString Film() {
  return Made("film.avi", {"-f", "lavfi", "-i", "testsrc=size=320x240:rate=25", "-f", "lavfi", "-i",
                           "sine=frequency=440", "-t", "2", "-c:v", "mpeg4", "-c:a", "libmp3lame"});
}

// A film of 160 x 120 pixels without a sound track, 2 seconds.
inline QString SilentFilm() {
  return Made("silent.mp4", {"-f", "lavfi", "-i", "testsrc=size=160x120:rate=25", "-t", "2", "-an", "-c:v",
                             "mpeg4"});
}

// Bytes no media library can play, under a name.
inline QString Garbage(const QString& name, qsizetype size) {
  QByteArray bytes;
  while (bytes.size() < size) bytes += "this is not a media file at all ";
  return testenv::MakeFile(Folder() + "/" + name, bytes.left(size));
}

// A MIDI file of division 480: one quarter at 120 beats a minute (500 ms),
// then a tempo of 60 (a quarter a second) for two quarters (2000 ms): 2.5 s
// in all, with notes throughout.
inline QByteArray MidiSong() {
  const QByteArray track = QByteArray::fromHex(
      "00ff510307a120"      // tempo 500000
      "00c000"              // program 0
      "00903c64" "8360803c00"   // a quarter note
      "00ff51030f4240"      // tempo 1000000
      "0090406483608040" "00"   // a quarter note
      "0090436483608043" "00"   // a quarter note
      "00ff2f00");          // end of track
  QByteArray song = QByteArray::fromHex("4d546864000000060000000101e0");
  song += "MTrk";
  const quint32 size = quint32(track.size());
  song += char(size >> 24);
  song += char(size >> 16);
  song += char(size >> 8);
  song += char(size);
  return song + track;
}

// The same song in a RIFF "RMID" form.
inline QByteArray RmidSong() {
  const QByteArray song = MidiSong();
  const auto little = [](quint32 value) {
    QByteArray bytes(4, 0);
    for (int i = 0; i < 4; ++i) bytes[i] = char(value >> (8 * i));
    return bytes;
  };
  QByteArray body = "RMIDdata" + little(quint32(song.size())) + song;
  if (song.size() & 1) body += char(0);
  return "RIFF" + little(quint32(body.size())) + body;
}

}  // namespace playermedia
