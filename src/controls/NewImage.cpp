#include "controls/NewImage.h"

#include <QImageReader>
#include <QPainter>

#include "controls/PaintRoutines.h"

NewImage::NewImage(QWidget* parent) : SmallControl(parent) {}

void NewImage::SetMousePointer(int pointer) {
  mousePointer_ = pointer;
  ApplyMousePointer(this, mousePointer_, mouseIcon_);
}

void NewImage::SetMouseIcon(const QPixmap& icon) {
  mouseIcon_ = icon;
  ApplyMousePointer(this, mousePointer_, mouseIcon_);
}

void NewImage::SetPicture(const QPixmap& picture) {
  picture_ = picture;
  update();
}

bool NewImage::LoadFile(const QString& name, const QImage* source) {
  if (name.trimmed().isEmpty()) {
    SetPicture(QPixmap());
    return true;
  }
  if (source && !source->isNull()) {
    SetPicture(QPixmap::fromImage(*source));
    return true;
  }
  QImageReader reader(name);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  const QSize stored = reader.size();
  const QSize cell = size();
  // A picture larger than the cell is decoded at the cell's size at once.
  if (stored.isValid() && !cell.isEmpty() &&
      (stored.width() > cell.width() || stored.height() > cell.height()))
    reader.setScaledSize(cell);
  const QImage image = reader.read();
  if (image.isNull()) {
    SetPicture(QPixmap());
    return false;
  }
  SetPicture(QPixmap::fromImage(image));
  return true;
}

QPixmap NewImage::DrawnDeletedPicture(const QSize& size) {
  const QSize s = size.isEmpty() ? QSize(32, 32) : size;
  QPixmap pixmap(s);
  pixmap.fill(Qt::white);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF page = QRectF(pixmap.rect()).adjusted(s.width() * 0.2, s.height() * 0.1,
                                                    -s.width() * 0.2, -s.height() * 0.1);
  painter.setPen(QPen(QColor(128, 128, 128), 1));
  painter.setBrush(QColor(240, 240, 240));
  painter.drawRect(page);
  painter.setPen(QPen(QColor(200, 0, 0), std::max(2.0, s.width() / 16.0)));
  painter.drawLine(page.topLeft(), page.bottomRight());
  painter.drawLine(page.topRight(), page.bottomLeft());
  return pixmap;
}

void NewImage::LoadDeleted(const QPixmap& deletedPicture) {
  SetPicture(deletedPicture.isNull() ? DrawnDeletedPicture(size()) : deletedPicture);
}

void NewImage::Cls() {
  drawn_ = QPixmap();
  update();
}

void NewImage::PaintPicture(const QPixmap& picture, const QRect& target) {
  if (width() <= 0 || height() <= 0) return;
  if (drawn_.size() != size()) {
    QPixmap bigger(size());
    bigger.fill(Qt::transparent);
    if (!drawn_.isNull()) {
      QPainter copy(&bigger);
      copy.drawPixmap(0, 0, drawn_);
    }
    drawn_ = bigger;
  }
  QPainter painter(&drawn_);
  painter.drawPixmap(target, picture);
  update();
}

QPixmap NewImage::Image() const {
  QPixmap image(size().isEmpty() ? QSize(1, 1) : size());
  image.fill(Qt::transparent);
  QPainter painter(&image);
  if (!picture_.isNull()) painter.drawPixmap(image.rect(), picture_);
  if (!drawn_.isNull()) painter.drawPixmap(0, 0, drawn_);
  return image;
}

void NewImage::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  if (!picture_.isNull()) painter.drawPixmap(rect(), picture_);
  if (!drawn_.isNull()) painter.drawPixmap(0, 0, drawn_);
}

void NewImage::resizeEvent(QResizeEvent*) { update(); }
