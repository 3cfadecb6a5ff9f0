#include "shell/FirstRunWatch.h"

#include <QFileInfo>
#include <QPointer>

#include "controls/Button.h"
#include "core/AppState.h"
#include "core/Settings.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "core/WindowShow.h"
#include "platform/SpeechEngine.h"
#include "shell/CommandBar.h"

FirstRunCheck LookForFirstRun(bool firstRun) {
  const QString character = App().AgentCharacterFile;
  FirstRunCheck check;
  check.CharacterPresent = !character.isEmpty() && QFileInfo(character).isFile();
  check.SpeechEnginePresent = check.CharacterPresent && platform::SpeechEngineAvailable();
  check.FirstRun = firstRun;
  check.Defined = settings::GetSetting("Defined", "No") == "Yes";
  check.MerlinShown = settings::GetSetting("MerlinShown", "") == "Yes";
  return check;
}

void ApplyFirstRunActions(const FirstRunActions& actions) {
  // A press may run long and close the bar meanwhile.
  QPointer<CommandBar> bar = Windows().Get<CommandBar>();
  if (bar) bar->HelpButton->setEnabled(actions.HelpEnabled);
  if (actions.PressHelp && bar) bar->ClickIfEnabled(BarButton::HelpButton);
  if (actions.ShowOptionsEntry)
    if (QWidget* options = Windows().Find(WindowId::OptionsEntry)) {
      FrameOf(options)->show();
      GiveKeyboard(options);
    }
  if (actions.PressOptions && bar) bar->ClickIfEnabled(BarButton::optionsButton);
}
