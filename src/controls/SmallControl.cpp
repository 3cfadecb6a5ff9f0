#include "controls/SmallControl.h"

#include <QMouseEvent>

#include "controls/AccessibleControls.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"

int MouseButtonOf(const QMouseEvent* event, bool moving) {
  const Qt::MouseButtons buttons = moving ? event->buttons() : Qt::MouseButtons(event->button());
  int button = 0;
  if (buttons & Qt::LeftButton) button |= 1;
  if (buttons & Qt::RightButton) button |= 2;
  if (buttons & Qt::MiddleButton) button |= 4;
  return button;
}

int MouseShiftOf(const QMouseEvent* event) {
  int shift = 0;
  if (event->modifiers() & Qt::ShiftModifier) shift |= keys::ShiftMask;
  if (event->modifiers() & Qt::ControlModifier) shift |= keys::CtrlMask;
  if (event->modifiers() & Qt::AltModifier) shift |= keys::AltMask;
  return shift;
}

SmallControl::SmallControl(QWidget* parent) : QWidget(parent) { setMouseTracking(true); }

namespace {
int X(const QMouseEvent* e) { return twips::FromPixels(e->position().toPoint().x()); }
int Y(const QMouseEvent* e) { return twips::FromPixels(e->position().toPoint().y()); }
}  // namespace

void SmallControl::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    pressed_ = true;
    update();
    accessible::NotifyPressed(this);
  }
  emit MouseDown(MouseButtonOf(event, false), MouseShiftOf(event), X(event), Y(event));
}

void SmallControl::mouseReleaseEvent(QMouseEvent* event) {
  const bool click = pressed_ && event->button() == Qt::LeftButton &&
                     rect().contains(event->position().toPoint());
  if (event->button() == Qt::LeftButton) {
    pressed_ = false;
    update();
    accessible::NotifyPressed(this);
  }
  emit MouseUp(MouseButtonOf(event, false), MouseShiftOf(event), X(event), Y(event));
  if (click) emit Click();
}

void SmallControl::mouseMoveEvent(QMouseEvent* event) {
  emit MouseMove(MouseButtonOf(event, true), MouseShiftOf(event), X(event), Y(event));
}

void SmallControl::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    pressed_ = true;
    emit DblClick();
  }
  emit MouseDown(MouseButtonOf(event, false), MouseShiftOf(event), X(event), Y(event));
}

void SmallControl::enterEvent(QEnterEvent*) {
  hovered_ = true;
  update();
}

void SmallControl::leaveEvent(QEvent*) {
  hovered_ = false;
  update();
}
