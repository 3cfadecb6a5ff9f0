#include "browser/CellIcons.h"

#include <QHash>
#include <algorithm>
#include <QPainter>
#include <QSvgRenderer>

#include "browser/TabState.h"

namespace {
// The icon file of each tab, by tab - 1. Pictures have no icon cells; they,
// and any other number, take the page of the documents.
constexpr const char* IconNames[TabCount] = {"document", "video", "audio", "document"};
}  // namespace

QPixmap CellIcon(int tab, int sizePixels, qreal pixelRatio) {
  const QString name =
      QLatin1String(IconNames[tab >= PicturesTab && tab <= DocumentsTab ? tab - 1 : TabCount - 1]);
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
