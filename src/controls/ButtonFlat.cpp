#include "controls/ButtonFlat.h"

#include <QIcon>
#include <QPainter>

ButtonFlat::ButtonFlat(QWidget* parent) : SmallControl(parent) {}

void ButtonFlat::SetEnabled(bool on) {
  setEnabled(on);
  update();
}
void ButtonFlat::SetPicture(const QPixmap& picture) {
  picture_ = picture;
  updateGeometry();
  update();
}
void ButtonFlat::SetHoverPicture(const QPixmap& picture) {
  hoverPicture_ = picture;
  update();
}
void ButtonFlat::SetClickPicture(const QPixmap& picture) {
  clickPicture_ = picture;
  update();
}

QPixmap ButtonFlat::ShownPicture() const {
  if (!isEnabled()) return picture_;
  const bool over = Hovered() || Pressed();
  if (Pressed() && !clickPicture_.isNull()) return clickPicture_;
  if (over && !hoverPicture_.isNull()) return hoverPicture_;
  return picture_;
}

QSize ButtonFlat::sizeHint() const {
  return picture_.isNull() ? QSize(24, 24) : picture_.deviceIndependentSize().toSize();
}

void ButtonFlat::paintEvent(QPaintEvent*) {
  QPixmap shown = ShownPicture();
  if (shown.isNull()) return;
  if (!isEnabled()) shown = QIcon(shown).pixmap(shown.deviceIndependentSize().toSize(), QIcon::Disabled);
  QPainter painter(this);
  const QSize s = shown.deviceIndependentSize().toSize();
  painter.drawPixmap((width() - s.width()) / 2, (height() - s.height()) / 2, shown);
}
