#include "platform/MailProgram.h"
#include "platform/SiblingPrograms.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace platform {

namespace {

// Looked up at every use: the desktop's tools may come and go while the
// program runs.
QString MailCommand() { return QStandardPaths::findExecutable(QStringLiteral("xdg-email")); }

}  // namespace

bool MailProgramAvailable() { return !MailCommand().isEmpty(); }

bool ComposeMailWithAttachments(const QStringList& files) {
  const QString command = MailCommand();
  if (command.isEmpty()) return false;
  QStringList arguments;
  // The mail program starts in a folder of its own choosing: every file
  // goes by its full path.
  for (const QString& file : files)
    arguments << QStringLiteral("--attach") << QFileInfo(file).absoluteFilePath();
  return StartProgram(command, arguments);
}

}  // namespace platform
