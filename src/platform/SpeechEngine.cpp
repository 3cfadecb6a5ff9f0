#include "platform/SpeechEngine.h"
#include "platform/Services.h"

#include "platform/SpeechSynth.h"

namespace platform {

namespace {

auto& Probe() { return TheServices().SpeechProbe; }

}  // namespace

bool SpeechEngineAvailable() {
  if (Probe()) return Probe()();
  return SpeechVoiceReady();
}

void SetSpeechEngineProbe(std::function<bool()> probe) { Probe() = std::move(probe); }

}  // namespace platform
