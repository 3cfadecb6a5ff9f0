#include "platform/SpeechEngine.h"
#include "platform/Services.h"

#include <QLibrary>
#include <QStandardPaths>

namespace platform {

namespace {

auto& Probe() { return TheServices().SpeechProbe; }

bool LibraryLoads() {
  QLibrary library("espeak-ng", 1);
  if (!library.load()) return false;
  library.unload();
  return true;
}

}  // namespace

bool SpeechEngineAvailable() {
  if (Probe()) return Probe()();
  return LibraryLoads() || !QStandardPaths::findExecutable("espeak-ng").isEmpty();
}

void SetSpeechEngineProbe(std::function<bool()> probe) { Probe() = std::move(probe); }

}  // namespace platform
