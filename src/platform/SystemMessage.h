#pragma once
// Plain system messages: the few that are shown before the program's own
// message box exists ("already running", the data file's stop message).
// Tests route them to a recorder instead of a modal window.

#include <QString>
#include <functional>

namespace platform {

enum class MessageIcon { Information, Stop, Exclamation };

void ShowSystemMessage(const QString& text, const QString& title, MessageIcon icon);

// Replaces the modal window by a callback (tests); an empty one restores it.
void SetSystemMessageSink(std::function<void(const QString& text, const QString& title)> sink);

}  // namespace platform
