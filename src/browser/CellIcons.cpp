#include "browser/CellIcons.h"

#include <QPainter>
#include <QPainterPath>

#include "browser/TabState.h"

namespace {

void DrawFilm(QPainter& p, qreal s) {
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(60, 60, 70));
  p.drawRoundedRect(QRectF(s * 0.06, s * 0.12, s * 0.88, s * 0.76), s * 0.08, s * 0.08);
  p.setBrush(QColor(245, 245, 245));
  for (int i = 0; i < 4; ++i) {
    const qreal x = s * (0.14 + i * 0.2);
    p.drawRect(QRectF(x, s * 0.17, s * 0.1, s * 0.08));
    p.drawRect(QRectF(x, s * 0.75, s * 0.1, s * 0.08));
  }
  p.setBrush(QColor(90, 150, 220));
  p.drawRect(QRectF(s * 0.14, s * 0.32, s * 0.72, s * 0.36));
}

void DrawNote(QPainter& p, qreal s) {
  p.setPen(QPen(QColor(40, 90, 160), s * 0.09));
  p.drawLine(QPointF(s * 0.42, s * 0.78), QPointF(s * 0.42, s * 0.14));
  p.drawLine(QPointF(s * 0.42, s * 0.14), QPointF(s * 0.8, s * 0.26));
  p.drawLine(QPointF(s * 0.8, s * 0.26), QPointF(s * 0.8, s * 0.66));
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(40, 90, 160));
  p.drawEllipse(QRectF(s * 0.14, s * 0.66, s * 0.3, s * 0.24));
  p.drawEllipse(QRectF(s * 0.52, s * 0.56, s * 0.3, s * 0.24));
}

void DrawPage(QPainter& p, qreal s) {
  QPainterPath page;
  page.moveTo(s * 0.2, s * 0.06);
  page.lineTo(s * 0.62, s * 0.06);
  page.lineTo(s * 0.82, s * 0.26);
  page.lineTo(s * 0.82, s * 0.94);
  page.lineTo(s * 0.2, s * 0.94);
  page.closeSubpath();
  p.setPen(QPen(QColor(90, 90, 90), s * 0.06));
  p.setBrush(Qt::white);
  p.drawPath(page);
  p.setPen(QPen(QColor(120, 140, 170), s * 0.05));
  for (int i = 0; i < 4; ++i) {
    const qreal y = s * (0.42 + i * 0.13);
    p.drawLine(QPointF(s * 0.3, y), QPointF(s * 0.72, y));
  }
}

}  // namespace

QPixmap CellIcon(int tab, int sizePixels, qreal pixelRatio) {
  const int edge = std::max(sizePixels, 1);
  QPixmap pixmap(QSize(edge, edge) * pixelRatio);
  pixmap.setDevicePixelRatio(pixelRatio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  switch (tab) {
    case VideosTab:
      DrawFilm(painter, edge);
      break;
    case AudiosTab:
      DrawNote(painter, edge);
      break;
    default:
      DrawPage(painter, edge);
  }
  return pixmap;
}
