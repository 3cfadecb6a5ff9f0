#include "support/MessageBoxAnswer.h"

#include <QElapsedTimer>
#include <QTimer>

#include "controls/MessageBox.h"
#include "controls/MsgBoxEnhanced.h"
#include "shell/AppState.h"

namespace testenv {

void WhenMessageBoxShown(std::function<void(MessageBox&)> answer) {
  auto* timer = new QTimer;
  auto* clock = new QElapsedTimer;
  clock->start();
  QObject::connect(timer, &QTimer::timeout, [timer, clock, answer] {
    MessageBox* form = App().MsgBox ? App().MsgBox->Form() : nullptr;
    const bool ready = form && form->isVisible() && form->Activated();
    if (!ready && clock->elapsed() < 5000) return;
    timer->stop();
    timer->deleteLater();
    delete clock;
    if (ready) answer(*form);
  });
  timer->start(10);
}

}  // namespace testenv
