#pragma once
// The General MIDI sound font that MIDI files are played with
// (TimGM6mb, from the timgm6mb-soundfont package). Without it the machine
// plays no MIDI.

#include <QString>

namespace platform {

// The sound font's path, or "" when it is not installed.
QString GeneralMidiSoundFont();

// Test hook: looks for the sound font at `path` instead; an empty path
// restores the installed one.
void SetGeneralMidiSoundFont(const QString& path);

}  // namespace platform
