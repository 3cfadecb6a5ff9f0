#include "viewers/SendMail.h"

#include "catalogue/PathParts.h"
#include "core/AppState.h"
#include "platform/MailProgram.h"

bool SignOnMail() {
  AppState& app = App();
  if (app.MailSessionId != 0) return true;
  if (!platform::MailProgramAvailable()) return false;
  app.MailSessionId = 1;
  return true;
}

void MailMessage::SetAttachment(int index, const QString& name, const QString& path) {
  if (index < 0) return;
  while (paths_.size() <= index) {
    names_ << QString();
    paths_ << QString();
  }
  names_[index] = name;
  paths_[index] = path;
}

bool MailMessage::Send() const {
  if (App().MailSessionId == 0) return false;
  // The mail program names each attachment after its file.
  return platform::ComposeMailWithAttachments(paths_);
}

void SendFileByEmail() {
  if (!SignOnMail()) return;
  MailMessage message;
  const QString file = App().EmailFile;
  message.SetAttachment(0, GetBaseName(file), file);
  message.Send();
}
