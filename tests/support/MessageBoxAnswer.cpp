#include "support/MessageBoxAnswer.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <QPointer>
#include <QTimer>
#include <list>

#include "controls/MessageBox.h"

namespace testenv {

namespace {

constexpr int PatienceMs = 5000;

struct Watch {
  std::function<void(MessageBox&)> answer;
  QDeadlineTimer deadline{PatienceMs};
  QPointer<MessageBox> answered;  // the box, once the answer has run
  bool ran = false;
  QTimer timer;
};

std::list<Watch>& Watches() {
  static std::list<Watch> watches;
  return watches;
}

// The message box form on the screen, whichever object asks through it:
// the program's shared box or one a test made for itself. One box shows at
// a time; a form already hidden is on its way out and does not count.
MessageBox* ShownForm() {
  for (QWidget* window : QApplication::topLevelWidgets())
    if (auto* form = qobject_cast<MessageBox*>(window); form && form->isVisible()) return form;
  return nullptr;
}

// Unloads a box that nobody is going to answer, so that its modal wait ends.
void Unload(MessageBox* form, const char* why) {
  ADD_FAILURE() << why;
  if (form && form->isVisible()) form->Unload();
}

// One look at the box; true when the watch is over.
bool Check(Watch& watch) {
  if (watch.ran) {
    if (!watch.answered || !watch.answered->isVisible()) return true;
    if (!watch.deadline.hasExpired()) return false;
    Unload(watch.answered, "the answer left the message box open");
    return true;
  }
  MessageBox* form = ShownForm();
  if (form && form->Activated()) {
    watch.ran = true;
    watch.answered = form;
    watch.deadline.setRemainingTime(PatienceMs);
    watch.answer(*form);
    return !watch.answered || !watch.answered->isVisible();
  }
  if (!watch.deadline.hasExpired()) return false;
  if (form)
    Unload(form, "the message box came but never became ready to answer");
  else
    ADD_FAILURE() << "no message box came within " << PatienceMs / 1000 << " s";
  return true;
}

}  // namespace

void WhenMessageBoxShown(std::function<void(MessageBox&)> answer) {
  Watch* watch = &Watches().emplace_back();
  watch->answer = std::move(answer);
  QObject::connect(&watch->timer, &QTimer::timeout, [watch] {
    if (!Check(*watch)) return;
    watch->timer.stop();
    // Removed later, since this runs inside the watch's own timer; by then
    // the end of the test may have removed it already.
    QTimer::singleShot(0, [watch] {
      Watches().remove_if([watch](const Watch& w) { return &w == watch; });
    });
  });
  watch->timer.start(10);
}

void FinishMessageBoxWatches() {
  for (Watch& watch : Watches()) {
    if (!watch.timer.isActive()) continue;
    if (!watch.ran)
      ADD_FAILURE() << "the test ended before the message box it waited for came";
    else if (watch.answered && watch.answered->isVisible())
      Unload(watch.answered, "the answer left the message box open");
  }
  Watches().clear();
}

}  // namespace testenv
