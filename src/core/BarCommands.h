#pragma once
// What every window may ask of the command bar: pressing one of its buttons
// (as a click does, or only when the button is enabled), the caption of the
// folder or album on display as it stands, and the master volume. The bar
// offers it through the window registry; without a bar each call does
// nothing.

#include <QString>

enum class BarButton {
  DirectoryButton,
  refreshButton,
  cdButton,
  ejectButton,
  closeButton,
  dvdButton,
  audioButton,
  videoButton,
  albumButton,
  searchButton,
  sortButton,
  sleepButton,
  alarmButton,
  paintButton,
  magnifierButton,
  internetButton,
  optionsButton,
  multimediaButton,
  mixerButton,
  aboutButton,
  HelpButton,
  muteButton,
};

inline constexpr int BarButtonCount = int(BarButton::muteButton) + 1;
// The button's name, as its control is named.
const char* BarButtonName(BarButton button);

class BarCommands {
 public:
  virtual ~BarCommands() = default;
  // Runs the button's click when it is enabled; whether it ran.
  virtual bool ClickIfEnabled(BarButton button) = 0;
  // Runs the button's click whatever its state.
  virtual void Click(BarButton button) = 0;
  // The caption of the folder or album on display, as the bar shows it
  // (shortened to fit), without the trailing blank.
  virtual QString DirectoryCaption() const = 0;
  // Shows a folder or an album as the one on display ("Folder:" or
  // "Album:" and its name).
  virtual void ShowOnDisplay(const QString& folderOrAlbum, bool album) = 0;
  virtual void StepVolume(int direction) = 0;
  virtual void ToggleMute() = 0;
};

// The loaded command bar's commands; nullptr when no bar is loaded.
BarCommands* CommandBarCommands();
