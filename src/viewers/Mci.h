#pragma once
// The media command interpreter: every playback command is one line of
// text, and every reply is "Success" or an error text. The players speak
// only this language; behind it, films and most sound files play on the
// desktop's media library, MIDI files on a software synthesizer.
//
// Commands understood (words compare without regard to case; the alias is
// any word without blanks):
//   open "PATH" type DEVICE Alias ALIAS parent HANDLE Style N
//       DEVICE: MPEGVideo, AviVideo (films and sound), sequencer (MIDI).
//       A MIDI file (known by its first bytes) opened as a film or sound
//       goes to the synthesizer all the same.
//       HANDLE: the decimal handle of a VideoFrame (VideoFrame::Handle),
//       which the film is drawn into; 0 for none.
//   set ALIAS time format ms | frames
//   status ALIAS length | position         (reply: a number)
//   play ALIAS [from N] [to M]
//   Pause ALIAS / Resume ALIAS / Stop ALIAS / Close ALIAS (Close all)
//   Where ALIAS destination                 (reply: "0 0 WIDTH HEIGHT")
//   put ALIAS window at X Y WIDTH HEIGHT
// Positions and lengths count in the alias's time format; a device that
// cannot count frames keeps milliseconds for both.

#include <QString>
#include <functional>

// Sends one command; the reply word ("Success" or the error text) is the
// result, and `returned` takes what the command gives back (a number, a
// rectangle), empty for the others.
QString MciSendString(const QString& command, QString* returned = nullptr);

// Closes every open alias (at the program's end, and between tests).
void MciCloseAll();

// Hears every command and its reply word, in order (tests and diagnosis);
// an empty function stops it.
void MciWatchCommands(std::function<void(const QString& command, const QString& reply)> watcher);
