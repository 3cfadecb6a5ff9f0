#include "controls/Headings.h"

#include <QFontMetrics>
#include <QPainter>

#include "controls/AccessibleControls.h"
#include "controls/SystemColours.h"

namespace {
constexpr int kInset = 6;
}

Headings::Headings(QWidget* parent) : SmallControl(parent) {}

void Headings::SetFont(const QFont& font) {
  setFont(font);
  updateGeometry();
  update();
}
void Headings::SetForeColor(OleColor color) {
  foreColor_ = SysColor::OrDefault(color, SysColor::ButtonText);
  update();
}
void Headings::SetBackColor(OleColor color) {
  backColor_ = SysColor::OrDefault(color, SysColor::ButtonFace);
  update();
}
void Headings::SetCaption(const QString& caption) {
  caption_ = caption;
  updateGeometry();
  update();
  accessible::NotifyNameChanged(this);
}

QSize Headings::sizeHint() const {
  const QFontMetrics metrics(font());
  return QSize(metrics.horizontalAdvance(caption_) + 2 * kInset, metrics.height() + 8);
}

void Headings::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), ColorFromOle(backColor_));
  painter.setFont(font());
  painter.setPen(ColorFromOle(foreColor_));
  painter.drawText(rect().adjusted(kInset, 0, -kInset, -2), Qt::AlignLeft | Qt::AlignVCenter,
                   caption_);
  painter.setPen(ColorFromOle(SysColor::ButtonShadow));
  painter.drawLine(0, height() - 2, width() - 1, height() - 2);
  painter.setPen(ColorFromOle(SysColor::ButtonHighlight));
  painter.drawLine(0, height() - 1, width() - 1, height() - 1);
}
