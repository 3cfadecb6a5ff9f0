#include "platform/SpeechEngine.h"

#include <QLibrary>
#include <QStandardPaths>

namespace platform {

namespace {

std::function<bool()>& Probe() {
  static std::function<bool()> probe;
  return probe;
}

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
