#pragma once
// The close of a window of settings with changes not yet saved: the user is
// asked (Yes, No, Cancel) whether to save. Cancel keeps the window and sets
// CloseRefused; Yes saves, and a save that refuses (the user has just been
// told what to put right) keeps the window too; No closes without saving.

#include <QString>
#include <functional>

enum class SettingsCloseOutcome { Refused, Closes, ClosesSaved };

// `asking` is the window's flag that a question is up, so that a second
// close while it is waits for its answer (refused). `changed` is whether
// there is anything to save.
SettingsCloseOutcome AskBeforeSettingsClose(bool changed, bool& asking, const QString& prompt,
                                            const QString& title, const std::function<bool()>& save);
