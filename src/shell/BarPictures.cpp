#include "shell/BarPictures.h"

#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>

QPixmap BarPicture(const QString& name, int sizePixels) {
  return BarPicture(name, sizePixels, qGuiApp ? qGuiApp->devicePixelRatio() : 1.0);
}

QPixmap BarPicture(const QString& name, int sizePixels, qreal pixelRatio) {
  const qreal ratio = std::max<qreal>(pixelRatio, 1.0);
  // Buttons ask for the same few pictures over and over; each is rendered once.
  static QHash<QString, QPixmap> rendered;
  const QString key = QString("%1 %2 %3").arg(name).arg(sizePixels).arg(ratio);
  if (const auto it = rendered.constFind(key); it != rendered.constEnd()) return *it;

  QPixmap pixmap(QSize(sizePixels, sizePixels) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(Qt::transparent);
  const QString file = ":/bar/" + name + ".svg";
  if (QFile::exists(file)) {
    QSvgRenderer picture(file);
    QPainter painter(&pixmap);
    picture.render(&painter, QRectF(0, 0, sizePixels, sizePixels));
  }
  rendered.insert(key, pixmap);
  return pixmap;
}
