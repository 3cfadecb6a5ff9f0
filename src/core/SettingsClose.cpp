#include "core/SettingsClose.h"

#include "controls/MsgBoxEnhanced.h"
#include "core/AppState.h"

SettingsCloseOutcome AskBeforeSettingsClose(bool changed, bool& asking, const QString& prompt,
                                            const QString& title, const std::function<bool()>& save) {
  if (asking) return SettingsCloseOutcome::Refused;
  if (!changed) return SettingsCloseOutcome::Closes;
  AppState& app = App();
  qint16 answer = 0;
  if (app.MsgBox) {
    asking = true;
    answer = app.MsgBox->MsgBox(prompt, 35, title);
    asking = false;
  }
  bool saved = false;
  if (answer == 2 || (answer == 6 && !(saved = save()))) {
    app.CloseRefused = true;
    return SettingsCloseOutcome::Refused;
  }
  return saved ? SettingsCloseOutcome::ClosesSaved : SettingsCloseOutcome::Closes;
}
