#include "shell/ForwardWindowWatch.h"

#include <QApplication>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QWindow>

#include "core/Trace.h"
#include "core/WindowRegistry.h"

ForwardWindowWatch::ForwardWindowWatch(QMainWindow* main, QMdiArea* area)
    : QObject(main), main_(main), area_(area) {
  connect(qApp, &QGuiApplication::focusWindowChanged, this, &ForwardWindowWatch::Check);
  connect(area_, &QMdiArea::subWindowActivated, this, &ForwardWindowWatch::Check);
}

QWidget* ForwardWindowWatch::Current() const {
  const QWindow* focus = QGuiApplication::focusWindow();
  if (!focus) return nullptr;
  if (focus == main_->windowHandle()) {
    const QMdiSubWindow* sub = area_->activeSubWindow();
    return sub && sub->widget() ? sub->widget() : main_;
  }
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->windowHandle() != focus) continue;
    // A popup menu or a tooltip stands over its window without taking its
    // place.
    const Qt::WindowType type = window->windowType();
    if (type == Qt::Popup || type == Qt::ToolTip) return nullptr;
    return window;
  }
  return nullptr;
}

void ForwardWindowWatch::Check() {
  if (!enabled_) return;
  QWidget* now = Current();
  if (!now || now == forward_) return;
  QWidget* previous = forward_;
  forward_ = now;
  if (Tracing()) {
    const std::optional<WindowId> id = Windows().IdOf(now);
    Trace(QStringLiteral("front %1").arg(id ? WindowName(*id) : now->objectName()));
  }
  emit ForwardChanged(previous, now);
}
