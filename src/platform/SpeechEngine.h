#pragma once
// Whether the speech engine that the tutorial's character talks through,
// espeak-ng, can be used on this machine.

#include <functional>

namespace platform {

// True when the espeak-ng shared library (libespeak-ng.so.1) can be loaded,
// or else when the espeak-ng program is on the PATH.
bool SpeechEngineAvailable();

// Test hook: replaces the look-up; an empty function restores the real one.
void SetSpeechEngineProbe(std::function<bool()> probe);

}  // namespace platform
