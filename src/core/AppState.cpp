#include "core/AppState.h"

#include "core/WindowRegistry.h"

namespace {
AppState& Instance() {
  static AppState state;
  return state;
}
}  // namespace

AppState& App() { return Instance(); }

void ResetAppState() {
  Instance() = AppState{};
  Windows().Clear();
}
