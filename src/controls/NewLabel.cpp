#include "controls/NewLabel.h"

#include <QFontMetrics>
#include <QPainter>

#include "controls/AccessibleControls.h"
#include "controls/SystemColours.h"

namespace {
constexpr int kMargin = 2;
}

NewLabel::NewLabel(QWidget* parent) : SmallControl(parent) {}

void NewLabel::SetCaption(const QString& caption) {
  caption_ = caption;
  updateGeometry();
  update();
  accessible::NotifyNameChanged(this);
}

void NewLabel::SetBackColor(OleColor color) {
  backColor_ = SysColor::OrDefault(color, SysColor::ButtonFace);
  update();
}

QSize NewLabel::sizeHint() const {
  const QFontMetrics metrics(font());
  return QSize(metrics.horizontalAdvance(caption_) + 2 * kMargin, metrics.height() + 2);
}

void NewLabel::Resize() { resize(sizeHint().width(), height()); }

void NewLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), ColorFromOle(backColor_));
  painter.setFont(font());
  painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled,
                                 QPalette::WindowText));
  painter.drawText(rect().adjusted(kMargin, 0, -kMargin, 0), int(TextAlignment()), caption_);
}
