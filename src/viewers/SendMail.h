#pragma once
// Sending media files by e-mail: the files are handed to the user's mail
// program, which shows a new message with them attached; the user addresses
// and sends it. The program adds no subject or text of its own.

#include <QString>
#include <QStringList>

// Signs on to the mail program once per run (App().MailSessionId); false
// when no mail program is there.
bool SignOnMail();

// A message being composed: its attachments by index, then sent.
class MailMessage {
 public:
  void SetAttachment(int index, const QString& name, const QString& path);
  // Hands the message to the mail program, which shows it; false without a
  // session or when it could not be started.
  bool Send() const;
  QStringList Attachments() const { return paths_; }

 private:
  QStringList names_, paths_;
};

// Sends App().EmailFile. A failure ends the routine silently; the session
// stays as it was, so that the next attempt composes at once.
void SendFileByEmail();
