#include "controls/NewSlider.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "controls/AccessibleControls.h"
#include "controls/SystemColours.h"

namespace {
constexpr int kThumbWidth = 11;
}

NewSlider::NewSlider(QWidget* parent) : SmallControl(parent) { setFocusPolicy(Qt::StrongFocus); }

void NewSlider::SetValue(int value) {
  value = std::clamp(value, 0, max_);
  if (value == value_) return;
  value_ = value;
  update();
  accessible::NotifyValue(this, value_);
  emit Change(value_);
}

void NewSlider::SetMax(int max) {
  max_ = std::max(max, 0);
  if (value_ > max_) value_ = max_;
  update();
}

void NewSlider::SetLargeChange(int change) { largeChange_ = std::max(change, 1); }

void NewSlider::SetBackColor(OleColor color) {
  backColor_ = SysColor::OrDefault(color, SysColor::ButtonFace);
  update();
}

void NewSlider::SetSliderShape(int shape) {
  sliderShape_ = (shape == 1 || shape == 2) ? shape : 0;
  update();
}

void NewSlider::SetShowBorder(bool on) {
  showBorder_ = on;
  update();
}

QRect NewSlider::Inner() const {
  const int border = showBorder_ ? 2 : 0;
  return rect().adjusted(border, border, -border, -border);
}

int NewSlider::TrackLength() const { return std::max(Inner().width() - kThumbWidth, 1); }

int NewSlider::LeftOfValue(int value) const {
  if (max_ <= 0) return Inner().left();
  return Inner().left() + static_cast<int>(static_cast<long long>(value) * TrackLength() / max_);
}

QRect NewSlider::ThumbRect() const {
  const QRect inner = Inner();
  return QRect(LeftOfValue(value_), inner.top() + 2, kThumbWidth, std::max(inner.height() - 4, 4));
}

int NewSlider::ValueAt(int x) const {
  if (max_ <= 0) return 0;
  const int from = x - Inner().left() - kThumbWidth / 2;
  const double value = static_cast<double>(from) * max_ / TrackLength();
  return std::clamp(static_cast<int>(std::lround(value)), 0, max_);
}

void NewSlider::StepTo(int value) { SetValue(std::clamp(value, 0, max_)); }

void NewSlider::mousePressEvent(QMouseEvent* event) {
  SmallControl::mousePressEvent(event);
  if (event->button() != Qt::LeftButton) return;
  const int x = event->position().toPoint().x();
  const QRect thumb = ThumbRect();
  valueAtPress_ = value_;
  if (x >= thumb.left() && x <= thumb.right()) {
    scrolling_ = true;
    grabOffset_ = x - thumb.left();
    update();
  } else {
    StepTo(x < thumb.left() ? value_ - largeChange_ : value_ + largeChange_);
  }
}

void NewSlider::mouseMoveEvent(QMouseEvent* event) {
  SmallControl::mouseMoveEvent(event);
  if (!scrolling_) return;
  const int left = event->position().toPoint().x() - grabOffset_;
  const int value = ValueAt(left + kThumbWidth / 2);
  if (value == value_) return;
  value_ = value;
  update();
  accessible::NotifyValue(this, value_);
  emit Scroll(value_);
}

void NewSlider::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && scrolling_) {
    scrolling_ = false;
    update();
    if (value_ != valueAtPress_) emit Change(value_);
  }
  SmallControl::mouseReleaseEvent(event);
}

void NewSlider::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up: StepTo(value_ - 1); break;
    case Qt::Key_Right:
    case Qt::Key_Down: StepTo(value_ + 1); break;
    case Qt::Key_PageUp: StepTo(value_ - largeChange_); break;
    case Qt::Key_PageDown: StepTo(value_ + largeChange_); break;
    case Qt::Key_Home: StepTo(0); break;
    case Qt::Key_End: StepTo(max_); break;
    default: SmallControl::keyPressEvent(event); return;
  }
}

void NewSlider::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), ColorFromOle(backColor_));
  const QColor light = ColorFromOle(SysColor::ButtonHighlight);
  const QColor shadow = ColorFromOle(SysColor::ButtonShadow);
  const QColor dark = ColorFromOle(SysColor::DarkShadow);
  const QColor face = ColorFromOle(SysColor::ButtonFace);
  if (showBorder_) {
    const QRect r = rect().adjusted(0, 0, -1, -1);
    painter.setPen(shadow);
    painter.drawLine(r.topLeft(), r.topRight());
    painter.drawLine(r.topLeft(), r.bottomLeft());
    painter.setPen(light);
    painter.drawLine(r.bottomLeft(), r.bottomRight());
    painter.drawLine(r.topRight(), r.bottomRight());
  }
  // The groove, sunken, along the middle.
  const QRect inner = Inner();
  const int middle = inner.center().y();
  const QRect groove(inner.left() + kThumbWidth / 2, middle - 2, TrackLength(), 4);
  painter.fillRect(groove, Qt::white);
  painter.setPen(shadow);
  painter.drawLine(groove.topLeft(), groove.topRight());
  painter.drawLine(groove.topLeft(), groove.bottomLeft());
  painter.setPen(dark);
  painter.drawLine(groove.topLeft() + QPoint(1, 1), groove.topRight() + QPoint(-1, 1));

  const QRect thumb = ThumbRect();
  const QColor fill = !isEnabled() ? face : scrolling_ ? QColor(0xFF, 0x80, 0x80) : face;
  painter.setRenderHint(QPainter::Antialiasing, sliderShape_ != 0);
  if (sliderShape_ == 2) {
    const int d = std::min(thumb.width(), thumb.height()) - 1;
    const QRectF circle(thumb.center().x() - d / 2.0, middle - d / 2.0, d, d);
    painter.setBrush(fill);
    painter.setPen(dark);
    painter.drawEllipse(circle);
    painter.setPen(light);
    painter.drawArc(circle.adjusted(1, 1, -1, -1), 45 * 16, 180 * 16);
    return;
  }
  QPainterPath outline;
  const QRectF t = QRectF(thumb).adjusted(0.5, 0.5, -0.5, -0.5);
  if (sliderShape_ == 1) {
    const double tip = t.width() / 2;
    outline.moveTo(t.topLeft());
    outline.lineTo(t.topRight());
    outline.lineTo(t.right(), t.bottom() - tip);
    outline.lineTo(t.center().x(), t.bottom());
    outline.lineTo(t.left(), t.bottom() - tip);
    outline.closeSubpath();
  } else {
    outline.addRect(t);
  }
  painter.setBrush(fill);
  painter.setPen(dark);
  painter.drawPath(outline);
  painter.setPen(light);
  painter.drawLine(t.topLeft() + QPointF(1, 1), t.topRight() + QPointF(-1, 1));
  painter.drawLine(t.topLeft() + QPointF(1, 1),
                   QPointF(t.left() + 1, t.bottom() - (sliderShape_ == 1 ? t.width() / 2 : 1)));
  if (hasFocus()) {
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1, Qt::DotLine));
    painter.drawRect(inner.adjusted(0, 0, -1, -1));
  }
}
