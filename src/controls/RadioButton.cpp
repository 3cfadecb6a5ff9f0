#include "controls/RadioButton.h"

#include <QKeyEvent>
#include <algorithm>
#include <QMouseEvent>
#include <QPainter>

#include "controls/AccessibleControls.h"
#include "controls/PaintRoutines.h"
#include "controls/SystemColours.h"
#include "controls/SmallControl.h"
#include "platform/Twips.h"

RadioButton::RadioButton(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_NoSystemBackground);
}

void RadioButton::SetValue(bool value) {
  if (value == value_) return;
  value_ = value;
  update();
  accessible::NotifyChecked(this);
  if (!value) return;
  if (QWidget* parent = parentWidget()) {
    for (RadioButton* other : parent->findChildren<RadioButton*>(Qt::FindDirectChildrenOnly))
      if (other != this) other->SetValue(false);
  }
  emit Click();
}

void RadioButton::SetAppearance(int appearance) {
  appearance_ = appearance == 0 ? 0 : 1;
  update();
}

void RadioButton::SetMouseIcon(const QPixmap& icon) {
  mouseIcon_ = icon;
  ApplyMousePointer(this, mousePointer_, mouseIcon_);
}

void RadioButton::SetMousePointer(int pointer) {
  mousePointer_ = pointer;
  ApplyMousePointer(this, mousePointer_, mouseIcon_);
}

QRect RadioButton::CircleRect() const {
  const int side = std::max(std::min({width(), height(), 13}) - 1, 1);
  return QRect((width() - side) / 2, (height() - side) / 2, side, side);
}

void RadioButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRect circle = CircleRect();
  const bool enabled = isEnabled();
  const QColor face =
      pressed_ || !enabled ? ColorFromOle(SysColor::ButtonFace) : QColor(Qt::white);
  painter.setBrush(face);
  if (appearance_ == 1) {
    // Sunken: dark above and to the left, light below and to the right.
    painter.setPen(QPen(ColorFromOle(SysColor::ButtonShadow), 1));
    painter.drawEllipse(circle);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ColorFromOle(SysColor::ButtonHighlight), 1));
    painter.drawArc(circle, -135 * 16, 180 * 16);
  } else {
    painter.setPen(QPen(QColor(Qt::black), 1));
    painter.drawEllipse(circle);
  }
  if (value_) {
    const int dot = std::max(circle.width() * 2 / 5, 2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(enabled ? QColor(Qt::black) : ColorFromOle(SysColor::GrayText));
    painter.drawEllipse(QRectF(circle).center(), dot / 2.0, dot / 2.0);
  }
  if (hasFocus()) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
    painter.drawEllipse(circle.adjusted(-1, -1, 1, 1));
  }
}

void RadioButton::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    pressed_ = true;
    update();
  }
  emit MouseDown(MouseButtonOf(event, false), MouseShiftOf(event),
                 twips::FromPixels(event->position().toPoint().x()),
                 twips::FromPixels(event->position().toPoint().y()));
}

void RadioButton::mouseReleaseEvent(QMouseEvent* event) {
  const bool wasPressed = pressed_ && event->button() == Qt::LeftButton;
  if (wasPressed) {
    pressed_ = false;
    update();
  }
  emit MouseUp(MouseButtonOf(event, false), MouseShiftOf(event),
               twips::FromPixels(event->position().toPoint().x()),
               twips::FromPixels(event->position().toPoint().y()));
  if (wasPressed && rect().contains(event->position().toPoint())) SetValue(true);
}

void RadioButton::mouseMoveEvent(QMouseEvent* event) {
  emit MouseMove(MouseButtonOf(event, true), MouseShiftOf(event),
                 twips::FromPixels(event->position().toPoint().x()),
                 twips::FromPixels(event->position().toPoint().y()));
}

void RadioButton::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Space) {
    SetValue(true);
    return;
  }
  QWidget::keyPressEvent(event);
}
