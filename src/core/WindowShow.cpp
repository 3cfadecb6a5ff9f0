#include "core/WindowShow.h"

#include <QEventLoop>
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
