#pragma once
// The user's mail program, reached through the desktop's xdg-email: a new
// message with files attached, shown in the mail program's own window for
// the user to address and send.

#include <QString>
#include <QStringList>

namespace platform {

// Whether the desktop's mail command is there (looked up on PATH).
bool MailProgramAvailable();
// Starts the mail program, detached, with a new message that has the files
// attached (xdg-email --attach FILE ...), and no subject or text of its
// own; false when it could not be started.
bool ComposeMailWithAttachments(const QStringList& files);

}  // namespace platform
