#include "core/WindowShow.h"

#include <QApplication>
#include <QEventLoop>
#include <QMdiArea>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"

QWidget* ShowWindow(WindowId id) {
  QWidget* window = Windows().Load(id);
  if (!window) return nullptr;
  QWidget* frame = FrameOf(window);
  frame->show();
  frame->raise();
  window->activateWindow();
  GiveKeyboard(window);
  return window;
}

bool ShowWindowModal(WindowId id) {
  QWidget* window = Windows().Load(id);
  if (!window) return false;
  QWidget* frame = FrameOf(window);
  frame->setWindowModality(Qt::ApplicationModal);
  QPointer<QWidget> guard(frame);
  frame->show();
  frame->raise();
  window->activateWindow();
  GiveKeyboard(window);
  // The window has gone when it is hidden, closed or destroyed.
  QEventLoop loop;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &loop, [&] {
    if (!guard || !guard->isVisible() || !Windows().IsLoaded(id)) loop.quit();
  });
  watch.start(20);
  if (guard && guard->isVisible()) loop.exec();
  return true;
}

namespace {

bool HoldsKeyboard(const QWidget* window) {
  const QWidget* focus = QApplication::focusWidget();
  return focus && (focus == window || window->isAncestorOf(focus));
}

}  // namespace

void GiveKeyboard(QWidget* window) {
  if (!window || HoldsKeyboard(window)) return;
  if (auto* sub = qobject_cast<QMdiSubWindow*>(FrameOf(window)); sub && sub->mdiArea())
    sub->mdiArea()->setActiveSubWindow(sub);
  if (!HoldsKeyboard(window)) window->setFocus(Qt::ActiveWindowFocusReason);
}
