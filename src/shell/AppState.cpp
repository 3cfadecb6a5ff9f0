#include "shell/AppState.h"

namespace {
AppState& Instance() {
  static AppState state;
  return state;
}
}  // namespace

AppState& App() { return Instance(); }

void ResetAppState() { Instance() = AppState{}; }
