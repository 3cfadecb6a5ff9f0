#include "controls/Label3D.h"

#include <QFontMetrics>
#include <QPainter>
#include <cstdlib>

#include "controls/AccessibleControls.h"
#include "controls/PaintRoutines.h"
#include "controls/SystemColours.h"
#include "platform/Twips.h"

Label3D::Label3D(QWidget* parent) : SmallControl(parent) {}

void Label3D::SetBackColor(OleColor color) {
  backColor_ = SysColor::OrDefault(color, SysColor::ButtonFace);
  update();
}
void Label3D::SetFont(const QFont& font) {
  setFont(font);
  Refresh();
}
void Label3D::SetBackStyle(int style) {
  backStyle_ = style == 1 ? 1 : 0;
  update();
}
void Label3D::SetBorderStyle(int style) {
  borderStyle_ = style == 1 ? 1 : 0;
  Refresh();
}
void Label3D::SetCaption(const QString& caption) {
  caption_ = caption;
  Refresh();
  accessible::NotifyNameChanged(this);
}
void Label3D::SetColor1(OleColor color) {
  color1_ = SysColor::OrDefault(color, DefaultColor1);
  update();
}
void Label3D::SetColor2(OleColor color) {
  color2_ = SysColor::OrDefault(color, DefaultColor2);
  update();
}
void Label3D::SetShadowLeft(int twips) {
  shadowLeft_ = twips;
  Refresh();
}
void Label3D::SetShadowTop(int twips) {
  shadowTop_ = twips;
  Refresh();
}
void Label3D::SetAutoSize(bool on) {
  autoSize_ = on;
  Refresh();
}
void Label3D::SetMouseIcon(const QPixmap& icon) {
  mouseIcon_ = icon;
  ApplyMousePointer(this, mousePointer_, mouseIcon_);
}
void Label3D::SetMousePointer(int pointer) {
  mousePointer_ = pointer;
  ApplyMousePointer(this, mousePointer_, mouseIcon_);
}

QSize Label3D::CaptionSize() const {
  const QFontMetrics metrics(font());
  const int border = borderStyle_ == 1 ? 2 : 0;
  return QSize(metrics.horizontalAdvance(caption_) +
                   std::abs(qRound(twips::ToPixelsF(shadowLeft_))) + border,
               metrics.height() + std::abs(qRound(twips::ToPixelsF(shadowTop_))) + border);
}

QSize Label3D::sizeHint() const { return CaptionSize(); }

void Label3D::Refresh() {
  if (autoSize_) resize(CaptionSize());
  updateGeometry();
  update();
}

void Label3D::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (backStyle_ == 1) painter.fillRect(rect(), ColorFromOle(backColor_));
  const int border = borderStyle_ == 1 ? 1 : 0;
  const int dx = qRound(twips::ToPixelsF(shadowLeft_));
  const int dy = qRound(twips::ToPixelsF(shadowTop_));
  // The text and its shadow share the room; a negative offset puts the
  // shadow above or to the left.
  const QRect room = rect().adjusted(border, border, -border, -border);
  const QPoint textAt(room.left() + std::max(0, -dx), room.top() + std::max(0, -dy));
  const QFontMetrics metrics(font());
  painter.setFont(font());
  painter.setPen(ColorFromOle(color2_));
  painter.drawText(textAt + QPoint(dx, dy + metrics.ascent()), caption_);
  painter.setPen(ColorFromOle(color1_));
  painter.drawText(textAt + QPoint(0, metrics.ascent()), caption_);
  if (border) {
    painter.setPen(Qt::black);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }
}
