#include "controls/TransFrame.h"

#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>

#include "controls/SystemColours.h"

namespace {
constexpr int kCaptionInset = 8;  // pixels from the side to the caption
constexpr int kCaptionPadding = 2;
}  // namespace

TransFrame::TransFrame(QWidget* parent) : TransControl(parent) { ApplyLook(); }

void TransFrame::SetCaptionAlignment(int alignment) {
  captionAlignment_ = (alignment == 1 || alignment == 2) ? alignment : 0;
  update();
}

void TransFrame::SetBorderStyle(int style) {
  borderStyle_ = style == 0 ? 0 : 1;
  update();
}

QList<QWidget*> TransFrame::Controls() const {
  return findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
}

QRect TransFrame::CaptionRect() const {
  const QString caption = Caption();
  if (caption.isEmpty()) return QRect();
  const QFontMetrics metrics(Font());
  const int width = metrics.horizontalAdvance(caption) + 2 * kCaptionPadding;
  int left = kCaptionInset;
  if (captionAlignment_ == 1) left = this->width() - kCaptionInset - width;
  if (captionAlignment_ == 2) left = (this->width() - width) / 2;
  return QRect(left, 0, width, metrics.height());
}

void TransFrame::paintEvent(QPaintEvent* event) {
  TransControl::paintEvent(event);
  QPainter painter(this);
  const QRect caption = CaptionRect();
  if (borderStyle_ == 1) {
    const int top = caption.isEmpty() ? 0 : caption.height() / 2;
    const QRect box(0, top, width() - 2, height() - top - 2);
    // An etched line: a dark line with a light one beside it, broken where
    // the caption stands.
    painter.setClipRegion(QRegion(rect()).subtracted(caption));
    painter.setPen(ColorFromOle(SysColor::ButtonShadow));
    painter.drawRect(box);
    painter.setPen(ColorFromOle(SysColor::ButtonHighlight));
    painter.drawRect(box.translated(1, 1));
    painter.setClipping(false);
  }
  if (!caption.isEmpty()) {
    painter.setFont(Font());
    painter.setPen(ColorFromOle(isEnabled() ? ForeColor() : SysColor::GrayText));
    painter.drawText(caption, Qt::AlignCenter, Caption());
  }
}

void TransFrame::mouseReleaseEvent(QMouseEvent* event) {
  TransControl::mouseReleaseEvent(event);
  if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
    emit Click();
}

QString TransFrame::AboutText() const {
  return QStringLiteral("Transparent frame\nA frame that shows the form behind it.");
}
