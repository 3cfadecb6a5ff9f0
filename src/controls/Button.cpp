#include "controls/Button.h"

#include <QIcon>
#include <QKeyEvent>
#include <QPainter>

#include "controls/SystemColours.h"

Button::Button(QWidget* parent) : SmallControl(parent) { setFocusPolicy(Qt::StrongFocus); }

void Button::SetEnabled(bool on) {
  setEnabled(on);
  update();
}
void Button::SetPicture(const QPixmap& picture) {
  picture_ = picture;
  updateGeometry();
  update();
}
void Button::SetBackColor(OleColor color) {
  backColor_ = SysColor::OrDefault(color, SysColor::ButtonFace);
  update();
}

QSize Button::sizeHint() const {
  const QSize picture = picture_.isNull() ? QSize(16, 16) : picture_.deviceIndependentSize().toSize();
  return picture + QSize(8, 8);
}

void Button::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect r = rect().adjusted(0, 0, -1, -1);
  painter.fillRect(rect(), ColorFromOle(backColor_));
  const bool down = Pressed() && underMouse();
  const QColor light = ColorFromOle(SysColor::ButtonHighlight);
  const QColor shadow = ColorFromOle(SysColor::ButtonShadow);
  const QColor dark = ColorFromOle(SysColor::DarkShadow);
  // Raised: light top and left, dark bottom and right; pressed swaps them.
  painter.setPen(down ? dark : light);
  painter.drawLine(r.topLeft(), r.topRight());
  painter.drawLine(r.topLeft(), r.bottomLeft());
  painter.setPen(down ? light : dark);
  painter.drawLine(r.bottomLeft(), r.bottomRight());
  painter.drawLine(r.topRight(), r.bottomRight());
  painter.setPen(down ? light : shadow);
  painter.drawLine(r.bottomLeft() + QPoint(1, -1), r.bottomRight() + QPoint(-1, -1));
  painter.drawLine(r.topRight() + QPoint(-1, 1), r.bottomRight() + QPoint(-1, -1));
  if (!picture_.isNull()) {
    QPixmap shown = picture_;
    const QSize s = shown.deviceIndependentSize().toSize();
    if (!isEnabled()) shown = QIcon(picture_).pixmap(s, QIcon::Disabled);
    const int shift = down ? 1 : 0;
    painter.drawPixmap((width() - s.width()) / 2 + shift, (height() - s.height()) / 2 + shift,
                       shown);
  }
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1, Qt::DotLine));
    painter.drawRect(rect().adjusted(3, 3, -4, -4));
  }
}

void Button::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Return ||
      event->key() == Qt::Key_Enter) {
    emit Click();
    return;
  }
  SmallControl::keyPressEvent(event);
}
