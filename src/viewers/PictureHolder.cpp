#include "viewers/PictureHolder.h"

#include <QMouseEvent>
#include <QPainter>

PictureHolder::PictureHolder(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void PictureHolder::SetPicture(const QImage& picture) {
  picture_ = picture;
  stretched_ = QPixmap();
  update();
}

void PictureHolder::Clear() { SetPicture(QImage()); }

void PictureHolder::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (picture_.isNull()) {
    painter.fillRect(rect(), palette().window());
    return;
  }
  const qreal ratio = devicePixelRatioF();
  const QSize device = (QSizeF(size()) * ratio).toSize();
  if (stretched_.isNull() || stretched_.size() != device) {
    stretched_ = QPixmap::fromImage(
        picture_.size() == device ? picture_
                                  : picture_.scaled(device, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    stretched_.setDevicePixelRatio(ratio);
  }
  painter.drawPixmap(0, 0, stretched_);
}

void PictureHolder::mousePressEvent(QMouseEvent* event) {
  emit Pressed(event);
  QWidget::mousePressEvent(event);
}
