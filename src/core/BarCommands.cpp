#include "core/BarCommands.h"

#include <array>

#include "core/WindowRegistry.h"

namespace {
constexpr std::array<const char*, BarButtonCount> Names{
    "DirectoryButton",
    "refreshButton",
    "cdButton",
    "ejectButton",
    "closeButton",
    "dvdButton",
    "audioButton",
    "videoButton",
    "albumButton",
    "searchButton",
    "sortButton",
    "sleepButton",
    "alarmButton",
    "paintButton",
    "magnifierButton",
    "internetButton",
    "optionsButton",
    "multimediaButton",
    "mixerButton",
    "aboutButton",
    "HelpButton",
    "muteButton",
};
}  // namespace

const char* BarButtonName(BarButton button) { return Names[size_t(button)]; }

BarCommands* CommandBarCommands() {
  return dynamic_cast<BarCommands*>(Windows().Find(WindowId::CommandBar));
}
