#pragma once
// Whether the speech engine that the tutorial's character talks through,
// espeak-ng, can be used on this machine.

#include <functional>

namespace platform {

// True when the engine comes up with its data and an English voice: the
// library alone, without its voice data, speaks nothing.
bool SpeechEngineAvailable();

// Test hook: replaces the look-up; an empty function restores the real one.
void SetSpeechEngineProbe(std::function<bool()> probe);

}  // namespace platform
