#pragma once
// Text to speech for the tutorial's character, through espeak-ng. A line is
// synthesised into memory as a complete wave file (16-bit mono PCM) that
// SoundPlayer can play, and its length is known before it plays, so that
// the character speaks for as long as the sound lasts.
//
// The engine is initialised once, at the first synthesis, and may be used
// from any thread (one synthesis at a time). Without the engine's data or a
// voice, synthesis fails cleanly: the result is empty and the caller goes on
// without sound.

#include <QByteArray>
#include <QString>

namespace platform {

struct SpokenLine {
  // The wave file; empty when the line could not be synthesised.
  QByteArray Wave;
  // How long it plays, in milliseconds; 0 without sound.
  int DurationMs = 0;
};

// Synthesises the line with the default English voice.
SpokenLine SynthesizeSpeech(const QString& text);

// True when the engine comes up with its data and the default English
// voice, so that lines can be spoken. Brings the engine up at the first call.
bool SpeechVoiceReady();

// Where the engine finds its data (the folder holding "espeak-ng-data" or
// that folder itself); empty for the engine's own default. A change takes
// effect at the next synthesis, which initialises the engine anew.
void SetSpeechDataPath(const QString& path);

}  // namespace platform
