#include "controls/ThumbnailScroll.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPolygon>
#include <algorithm>

#include "controls/AccessibleControls.h"
#include "controls/ScrollTrack.h"
#include "controls/WheelNotchFilter.h"
#include "platform/Twips.h"

namespace {

const QColor MovingFill(255, 128, 128);
const QColor BevelOuterLight(0xE0, 0xE0, 0xE0);
const QColor BevelInnerLight(0xFF, 0xFF, 0xFF);
const QColor BevelInnerDark(0x80, 0x80, 0x80);
const QColor BevelOuterDark(0x40, 0x40, 0x40);

int Px(int twipsValue) { return twips::ToPixels(twipsValue); }

// Two bevel lines on each side of the rectangle: light on the top and left,
// dark on the bottom and right. Pressed swaps them and leaves out the two
// outermost lines.
void PaintBevel(QPainter& painter, const QRect& r, bool pressed) {
  const int l = r.left(), t = r.top(), rt = r.right(), b = r.bottom();
  if (!pressed) {
    painter.setPen(BevelOuterLight);
    painter.drawLine(l, t, rt, t);
    painter.drawLine(l, t, l, b);
    painter.setPen(BevelInnerLight);
    painter.drawLine(l + 1, t + 1, rt - 1, t + 1);
    painter.drawLine(l + 1, t + 1, l + 1, b - 1);
    painter.setPen(BevelOuterDark);
    painter.drawLine(l, b, rt, b);
    painter.drawLine(rt, t, rt, b);
    painter.setPen(BevelInnerDark);
    painter.drawLine(l + 1, b - 1, rt - 1, b - 1);
    painter.drawLine(rt - 1, t + 1, rt - 1, b - 1);
  } else {
    painter.setPen(BevelInnerDark);
    painter.drawLine(l + 1, t + 1, rt - 1, t + 1);
    painter.drawLine(l + 1, t + 1, l + 1, b - 1);
    painter.setPen(BevelInnerLight);
    painter.drawLine(l + 1, b - 1, rt - 1, b - 1);
    painter.drawLine(rt - 1, t + 1, rt - 1, b - 1);
  }
}

}  // namespace

ThumbnailScroll::ThumbnailScroll(QWidget* parent) : QWidget(parent) {
  setFixedWidth(Px(scrolltrack::BarWidth));
  setMinimumHeight(Px(scrolltrack::MinimumHeight));
  resize(Px(scrolltrack::BarWidth), Px(scrolltrack::MinimumHeight));
  setMouseTracking(true);
  for (QTimer* timer : {&timerUp_, &timerDown_}) timer->setInterval(400);
  timerWheel_.setInterval(500);
  connect(&timerUp_, &QTimer::timeout, this, &ThumbnailScroll::TimerUp_Timer);
  connect(&timerDown_, &QTimer::timeout, this, &ThumbnailScroll::TimerDown_Timer);
  connect(&timerWheel_, &QTimer::timeout, this, &ThumbnailScroll::TimerWheel_Timer);

  // A bar on a running window listens to the wheel from the start.
  wheel_ = new WheelNotchFilter(this);
  connect(wheel_, &WheelNotchFilter::MouseWheel1, this, &ThumbnailScroll::MouseWheel_MouseWheel1);
  wheel_->SetEnabled(true);

  trackLength_ = scrolltrack::TrackLength(HeightTwips());
  thumbHeight_ = scrolltrack::ThumbHeight(trackLength_, max_);
  thumbTop_ = scrolltrack::ThumbTop(value_, max_, HeightTwips(), trackLength_, thumbHeight_);
}

void ThumbnailScroll::SetMax(int max) {
  max_ = static_cast<qint16>(std::clamp(max, 0, 32767));
  thumbHeight_ = scrolltrack::ThumbHeight(trackLength_, max_);
  update();
}

void ThumbnailScroll::SetValue(int value) {
  const int clamped = std::clamp(value, 0, static_cast<int>(max_));
  if (clamped == value_) return;
  moving_ = true;
  value_ = static_cast<qint16>(clamped);
  PlaceThumb();
  accessible::NotifyValue(this, int(value_));
  emit Change(value_);
  moving_ = false;
  update();
}

qint32 ThumbnailScroll::hWnd() const { return static_cast<qint32>(effectiveWinId()); }

bool ThumbnailScroll::MouseWheel() const { return wheel_->Enabled(); }

void ThumbnailScroll::SetMouseWheel(bool on) { wheel_->SetEnabled(on); }

void ThumbnailScroll::SetBackColor(OleColor color) {
  backColor_ = SysColor::OrDefault(color, DefaultBackColor);
  update();
}

void ThumbnailScroll::SetArrowColor(OleColor color) {
  arrowColor_ = SysColor::OrDefault(color, DefaultArrowColor);
  update();
}

QColor ThumbnailScroll::ThumbColor() const {
  return moving_ ? MovingFill : ColorFromOle(backColor_);
}

int ThumbnailScroll::HeightTwips() const { return twips::FromPixels(height()); }

int ThumbnailScroll::ArrowAt(int y) const {
  if (y < scrolltrack::ArrowHeight) return UpArrow;
  if (y >= HeightTwips() - scrolltrack::ArrowHeight) return DownArrow;
  return NoArrow;
}

void ThumbnailScroll::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  trackLength_ = scrolltrack::TrackLength(HeightTwips());
  thumbHeight_ = scrolltrack::ThumbHeight(trackLength_, max_);
  // The thumb keeps to its value when the bar changes height.
  thumbTop_ = scrolltrack::ThumbTop(value_, max_, HeightTwips(), trackLength_, thumbHeight_);
  update();
}

void ThumbnailScroll::PlaceThumb() {
  thumbTop_ = scrolltrack::ThumbTop(value_, max_, HeightTwips(), trackLength_, thumbHeight_);
  update();
  // Let the thumb show where it now stands before the work that follows.
  QCoreApplication::processEvents();
}

void ThumbnailScroll::LookUp(int y, bool skipPresent) {
  const int found = scrolltrack::ValueAt(y, max_, HeightTwips(), trackLength_, thumbHeight_,
                                         skipPresent ? value_ : -1);
  if (found < 0) return;
  value_ = static_cast<qint16>(found);
  PlaceThumb();
  accessible::NotifyValue(this, int(value_));
}

void ThumbnailScroll::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const int y = twips::FromPixels(event->position().toPoint().y());
  const int arrow = ArrowAt(y);
  if (arrow != NoArrow) {
    pressedPart_ = arrow;
    ArrowPress(arrow);
    return;
  }
  pressedPart_ = TrackPart;
  dragging_ = true;
  moving_ = true;
  startValue_ = value_;
  lastY_ = y;
  update();
  LookUp(y, true);
}

void ThumbnailScroll::mouseMoveEvent(QMouseEvent* event) {
  const int y = twips::FromPixels(event->position().toPoint().y());
  if (pressedPart_ == UpPart || pressedPart_ == DownPart) {
    ArrowMove(pressedPart_);
    return;
  }
  if (pressedPart_ == TrackPart) {
    if (dragging_ && (event->buttons() & Qt::LeftButton) && y != lastY_) {
      thumbTop_ = std::clamp(thumbTop_ + (y - lastY_), scrolltrack::HighestThumbTop(),
                             std::max(scrolltrack::HighestThumbTop(),
                                      scrolltrack::LowestThumbTop(HeightTwips(), thumbHeight_)));
      lastY_ = y;
      update();
    }
    return;
  }
  const int arrow = ArrowAt(y);
  if (arrow != NoArrow) ArrowMove(arrow);
}

void ThumbnailScroll::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const int y = twips::FromPixels(event->position().toPoint().y());
  const int part = pressedPart_;
  pressedPart_ = NoPart;
  if (part == UpPart || part == DownPart) {
    ArrowRelease(part);
    return;
  }
  if (ArrowAt(y) == NoArrow || dragging_)
    TrackRelease(y);
  else
    ArrowRelease(ArrowAt(y));
}

void ThumbnailScroll::TrackRelease(int y) {
  timerUp_.stop();
  timerDown_.stop();
  dragging_ = false;
  LookUp(y, false);
  if (value_ != startValue_) emit Change(value_);
  moving_ = false;
  update();
}

void ThumbnailScroll::ArrowPress(int arrow) {
  startValue_ = value_;
  currentArrow_ = arrow;
  dragging_ = false;
  moving_ = true;
  update();
  if (arrow == UpArrow)
    TimerUp_Timer();
  else
    TimerDown_Timer();
}

void ThumbnailScroll::ArrowMove(int arrow) {
  // Any movement ends the repeat; the press itself holds until the release.
  dragging_ = false;
  (arrow == UpArrow ? timerUp_ : timerDown_).stop();
}

void ThumbnailScroll::ArrowRelease(int arrow) {
  if (arrow == NoArrow || arrow != currentArrow_) return;
  (arrow == UpArrow ? timerUp_ : timerDown_).stop();
  currentArrow_ = NoArrow;
  if (value_ != startValue_) emit Change(value_);
  moving_ = false;
  update();
}

void ThumbnailScroll::TimerUp_Timer() {
  timerUp_.stop();
  if (value_ <= 0) return;
  timerUp_.start();
  --value_;
  PlaceThumb();
}

void ThumbnailScroll::TimerDown_Timer() {
  timerDown_.stop();
  if (value_ >= max_) return;
  timerDown_.start();
  ++value_;
  PlaceThumb();
}

void ThumbnailScroll::MouseWheel_MouseWheel1(qint16 amount) {
  if (!wheel_->Enabled()) return;
  moving_ = true;
  if (timerWheel_.isActive())
    timerWheel_.stop();
  else
    wheelStartValue_ = value_;
  if (amount >= 0) {
    if (value_ < max_) ++value_;
  } else if (value_ > 0) {
    --value_;
  }
  PlaceThumb();
  timerWheel_.start();
}

void ThumbnailScroll::TimerWheel_Timer() {
  timerWheel_.stop();
  if (value_ != wheelStartValue_) emit Change(value_);
  moving_ = false;
  update();
}

void ThumbnailScroll::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const int w = width();
  const int arrow = Px(scrolltrack::ArrowHeight);
  painter.fillRect(rect(), ColorFromOle(backColor_));

  const QRect thumb(0, Px(thumbTop_), w, std::max(Px(thumbHeight_), 4));
  painter.fillRect(thumb, ThumbColor());
  PaintBevel(painter, thumb, false);

  PaintArrow(painter, QRect(0, 0, w, arrow), true, currentArrow_ == UpArrow);
  PaintArrow(painter, QRect(0, height() - arrow, w, arrow), false, currentArrow_ == DownArrow);
}

void ThumbnailScroll::PaintArrow(QPainter& painter, const QRect& area, bool up, bool pressed) {
  painter.fillRect(area, ColorFromOle(arrowColor_));
  PaintBevel(painter, area, pressed);
  // A small solid triangle, nudged down and right while pressed.
  const int shift = pressed ? 1 : 0;
  const int cx = area.center().x() + shift;
  const int cy = area.center().y() + shift;
  QPolygon triangle;
  if (up)
    triangle << QPoint(cx - 4, cy + 2) << QPoint(cx + 4, cy + 2) << QPoint(cx, cy - 2);
  else
    triangle << QPoint(cx - 4, cy - 2) << QPoint(cx + 4, cy - 2) << QPoint(cx, cy + 2);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::black);
  painter.drawPolygon(triangle);
}
