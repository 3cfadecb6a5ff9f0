#include "fileops/PassingWindow.h"

#include <QCloseEvent>
#include <QPainter>

#include "controls/PaintRoutines.h"
#include "core/WindowRegistry.h"

PassingWindow::PassingWindow(WindowId id, QWidget* parent, Qt::WindowFlags flags)
    : QWidget(parent, flags), id_(id) {}

void PassingWindow::Unload() {
  if (Windows().Find(id_) == this)
    Windows().Unload(id_);
  else
    close();
}

bool PassingWindow::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) activated_ = true;
  // Form_Deactivate: clicking elsewhere cancels, once the window had the
  // focus and while it asks nothing.
  if (event->type() == QEvent::WindowDeactivate && activated_ && !askingUser_ && !closed_)
    Unload();
  return QWidget::event(event);
}

void PassingWindow::closeEvent(QCloseEvent* event) {
  event->accept();
  if (closed_) return;
  closed_ = true;
  Windows().Closed(this);
}

void PassingWindow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  // The light part of the gradient only, so that the texts stay legible.
  PaintFormGradient(painter, QSize(width(), height() * 3), 255, 255, 255, 1);
}
