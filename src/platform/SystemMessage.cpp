#include "platform/SystemMessage.h"
#include "platform/Services.h"

#include <QMessageBox>

namespace platform {

namespace {
auto& Sink() { return TheServices().MessageSink; }
}  // namespace

void ShowSystemMessage(const QString& text, const QString& title, MessageIcon icon) {
  if (Sink()) {
    Sink()(text, title);
    return;
  }
  QMessageBox box;
  box.setWindowTitle(title);
  box.setText(text);
  switch (icon) {
    case MessageIcon::Information: box.setIcon(QMessageBox::Information); break;
    case MessageIcon::Stop: box.setIcon(QMessageBox::Critical); break;
    case MessageIcon::Exclamation: box.setIcon(QMessageBox::Warning); break;
  }
  box.exec();
}

void SetSystemMessageSink(std::function<void(const QString&, const QString&)> sink) {
  Sink() = std::move(sink);
}

}  // namespace platform
