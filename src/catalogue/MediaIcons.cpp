#include "catalogue/MediaIcons.h"

#include <QHash>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>

QPixmap MediaIcon(MediaIconKind kind, int sizePixels, qreal pixelRatio) {
  const QString name = kind == MediaIconKind::Video   ? QStringLiteral("video")
                       : kind == MediaIconKind::Audio ? QStringLiteral("audio")
                                                      : QStringLiteral("document");
  const int edge = std::max(sizePixels, 1);
  // Every cell of a list shows the same icon; it is rendered once.
  static QHash<QString, QPixmap> rendered;
  const QString key = QString("%1 %2 %3").arg(name).arg(edge).arg(pixelRatio);
  if (const auto it = rendered.constFind(key); it != rendered.constEnd()) return *it;

  QPixmap pixmap(QSize(edge, edge) * pixelRatio);
  pixmap.setDevicePixelRatio(pixelRatio);
  pixmap.fill(Qt::transparent);
  QSvgRenderer icon(":/cells/" + name + ".svg");
  QPainter painter(&pixmap);
  icon.render(&painter, QRectF(0, 0, edge, edge));
  painter.end();
  rendered.insert(key, pixmap);
  return pixmap;
}
