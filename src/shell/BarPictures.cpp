#include "shell/BarPictures.h"

#include <QGuiApplication>
#include <QHash>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>
#include <functional>

namespace {

// Every picture is drawn on a 24 by 24 grid and scaled to its size.
constexpr qreal Grid = 24.0;

const QColor Ink(55, 71, 79);
const QColor Folder(242, 193, 78);
const QColor FolderDark(196, 140, 30);
const QColor Green(46, 125, 50);
const QColor Blue(30, 94, 170);
const QColor Red(198, 40, 40);
const QColor Silver(214, 220, 226);
const QColor Paper(250, 250, 246);

QPen InkPen(qreal width = 1.4, const QColor& color = Ink) {
  QPen pen(color, width);
  pen.setJoinStyle(Qt::RoundJoin);
  pen.setCapStyle(Qt::RoundCap);
  return pen;
}

void DrawDisc(QPainter& p, const QPointF& centre, qreal radius) {
  QRadialGradient shine(centre - QPointF(radius / 3, radius / 3), radius * 1.4);
  shine.setColorAt(0, QColor(252, 252, 255));
  shine.setColorAt(0.5, Silver);
  shine.setColorAt(0.8, QColor(190, 208, 232));
  shine.setColorAt(1, QColor(226, 206, 236));
  p.setPen(InkPen(1.2));
  p.setBrush(shine);
  p.drawEllipse(centre, radius, radius);
  p.setBrush(Qt::white);
  p.drawEllipse(centre, radius * 0.28, radius * 0.28);
}

void DrawNote(QPainter& p, const QPointF& head, qreal height, const QColor& color) {
  p.setPen(InkPen(1.4, color));
  p.setBrush(color);
  p.drawEllipse(head, 2.2, 1.7);
  const QPointF stemFoot(head.x() + 2.0, head.y() - 0.4);
  p.drawLine(stemFoot, stemFoot - QPointF(0, height));
  p.drawLine(stemFoot - QPointF(0, height), stemFoot - QPointF(-3.2, height - 3.0));
}

void DrawSpeaker(QPainter& p) {
  QPolygonF body;
  body << QPointF(3, 9) << QPointF(7, 9) << QPointF(12, 4.5) << QPointF(12, 19.5)
       << QPointF(7, 15) << QPointF(3, 15);
  p.setPen(InkPen(1.3));
  p.setBrush(QColor(120, 134, 144));
  p.drawPolygon(body);
}

void DrawMagnifier(QPainter& p, const QPointF& centre, qreal radius) {
  p.setPen(InkPen(3.0, QColor(93, 64, 55)));
  const qreal d = radius * 0.7071;
  p.drawLine(centre + QPointF(d, d), centre + QPointF(d + 6, d + 6));
  p.setPen(InkPen(1.6));
  p.setBrush(QColor(200, 230, 250, 200));
  p.drawEllipse(centre, radius, radius);
}

void DrawCircleSign(QPainter& p, const QColor& fill, const QString& sign) {
  p.setPen(InkPen(1.2, fill.darker(130)));
  p.setBrush(fill);
  p.drawEllipse(QPointF(12, 12), 9.5, 9.5);
  QFont font = p.font();
  font.setBold(true);
  font.setPixelSize(14);
  p.setFont(font);
  p.setPen(Qt::white);
  p.drawText(QRectF(2, 2.5, 20, 20), Qt::AlignCenter, sign);
}

using Painter = std::function<void(QPainter&)>;

const QHash<QString, Painter>& Painters() {
  static const QHash<QString, Painter> painters = {
      {"DirectoryButton",
       [](QPainter& p) {
         QPainterPath back;
         back.moveTo(2.5, 6);
         back.lineTo(9, 6);
         back.lineTo(11, 8);
         back.lineTo(21.5, 8);
         back.lineTo(21.5, 19);
         back.lineTo(2.5, 19);
         back.closeSubpath();
         p.setPen(InkPen(1.2, FolderDark));
         p.setBrush(FolderDark.lighter(130));
         p.drawPath(back);
         QPolygonF front;
         front << QPointF(2.5, 19) << QPointF(5, 11) << QPointF(23, 11) << QPointF(21.5, 19);
         p.setBrush(Folder);
         p.drawPolygon(front);
       }},
      {"refreshButton",
       [](QPainter& p) {
         p.setPen(InkPen(2.4, Green));
         p.setBrush(Qt::NoBrush);
         p.drawArc(QRectF(5, 5, 14, 14), 60 * 16, 280 * 16);
         QPolygonF head;
         head << QPointF(13, 1.5) << QPointF(19.5, 5.2) << QPointF(13, 9);
         p.setPen(InkPen(1.0, Green));
         p.setBrush(Green);
         p.drawPolygon(head);
       }},
      {"cdButton",
       [](QPainter& p) {
         DrawDisc(p, QPointF(10, 13), 8.5);
         DrawNote(p, QPointF(18, 20), 9, Blue);
       }},
      {"ejectButton",
       [](QPainter& p) {
         QPolygonF up;
         up << QPointF(12, 4) << QPointF(20.5, 13) << QPointF(3.5, 13);
         p.setPen(InkPen(1.2));
         p.setBrush(Ink);
         p.drawPolygon(up);
         p.drawRect(QRectF(3.5, 16, 17, 3.5));
       }},
      {"closeButton",
       [](QPainter& p) {
         p.setPen(InkPen(1.2));
         p.setBrush(Ink);
         p.drawRect(QRectF(3.5, 4.5, 17, 3.5));
         QPolygonF down;
         down << QPointF(3.5, 11) << QPointF(20.5, 11) << QPointF(12, 20);
         p.drawPolygon(down);
       }},
      {"dvdButton",
       [](QPainter& p) {
         DrawDisc(p, QPointF(12, 12), 10);
         QFont font = p.font();
         font.setBold(true);
         font.setPixelSize(7);
         p.setFont(font);
         p.setPen(Blue.darker(120));
         p.drawText(QRectF(0, 14, 24, 8), Qt::AlignCenter, "DVD");
       }},
      {"audioButton",
       [](QPainter& p) {
         p.setPen(InkPen(1.6));
         for (int i = 0; i < 3; ++i) p.drawLine(QPointF(2.5, 5 + 5 * i), QPointF(10.5, 5 + 5 * i));
         DrawNote(p, QPointF(15, 19), 13, Blue);
       }},
      {"videoButton",
       [](QPainter& p) {
         p.setPen(InkPen(1.2));
         p.setBrush(Ink);
         p.drawRoundedRect(QRectF(2.5, 4, 19, 16), 1.5, 1.5);
         p.setBrush(QColor(144, 202, 249));
         p.setPen(Qt::NoPen);
         p.drawRect(QRectF(6.5, 6.5, 11, 11));
         p.setBrush(Paper);
         for (int i = 0; i < 4; ++i) {
           p.drawRect(QRectF(3.6, 5.4 + 3.6 * i, 1.8, 2));
           p.drawRect(QRectF(18.6, 5.4 + 3.6 * i, 1.8, 2));
         }
       }},
      {"albumButton",
       [](QPainter& p) {
         p.setPen(InkPen(1.2));
         p.setBrush(QColor(121, 85, 72));
         p.drawRoundedRect(QRectF(3, 2.5, 18, 19), 1.5, 1.5);
         p.setBrush(Paper);
         p.drawRect(QRectF(6.5, 6, 11, 9));
         QPolygonF hill;
         hill << QPointF(6.5, 15) << QPointF(10, 10.5) << QPointF(12.5, 13) << QPointF(14.5, 11)
              << QPointF(17.5, 15);
         p.setPen(Qt::NoPen);
         p.setBrush(Green);
         p.drawPolygon(hill);
         p.setBrush(Folder);
         p.drawEllipse(QPointF(15, 8.2), 1.3, 1.3);
       }},
      {"searchButton",
       [](QPainter& p) {
         p.setPen(InkPen(1.2));
         p.setBrush(Paper);
         p.drawRect(QRectF(3, 2.5, 13, 17));
         for (int i = 0; i < 4; ++i) p.drawLine(QPointF(5.5, 6 + 3 * i), QPointF(13.5, 6 + 3 * i));
         DrawMagnifier(p, QPointF(14, 13.5), 4.5);
       }},
      {"sortButton",
       [](QPainter& p) {
         p.setPen(InkPen(2.0));
         for (int i = 0; i < 4; ++i) p.drawLine(QPointF(2.5, 5 + 4.5 * i), QPointF(12.5 - 2.2 * i, 5 + 4.5 * i));
         p.setPen(InkPen(2.0, Blue));
         p.drawLine(QPointF(18, 3.5), QPointF(18, 20));
         p.drawLine(QPointF(14.5, 16.5), QPointF(18, 20.5));
         p.drawLine(QPointF(21.5, 16.5), QPointF(18, 20.5));
       }},
      {"sleepButton",
       [](QPainter& p) {
         QPainterPath moon;
         moon.addEllipse(QPointF(10, 13), 8, 8);
         QPainterPath bite;
         bite.addEllipse(QPointF(14, 9.5), 7, 7);
         p.setPen(InkPen(1.2, QColor(230, 160, 0)));
         p.setBrush(QColor(255, 213, 79));
         p.drawPath(moon.subtracted(bite));
         QFont font = p.font();
         font.setBold(true);
         font.setPixelSize(8);
         p.setFont(font);
         p.setPen(Blue);
         p.drawText(QRectF(13, 1, 10, 10), Qt::AlignCenter, "z");
       }},
      {"alarmButton",
       [](QPainter& p) {
         p.setPen(InkPen(1.2));
         p.setBrush(Red);
         p.drawEllipse(QPointF(5.5, 5.5), 3, 3);
         p.drawEllipse(QPointF(18.5, 5.5), 3, 3);
         p.drawLine(QPointF(6, 20), QPointF(4.5, 22));
         p.drawLine(QPointF(18, 20), QPointF(19.5, 22));
         p.setBrush(Paper);
         p.drawEllipse(QPointF(12, 13), 8, 8);
         p.setPen(InkPen(1.6));
         p.drawLine(QPointF(12, 13), QPointF(12, 8));
         p.drawLine(QPointF(12, 13), QPointF(15.5, 15));
       }},
      {"paintButton",
       [](QPainter& p) {
         QPainterPath palette;
         palette.addEllipse(QRectF(2, 4, 20, 16));
         QPainterPath thumb;
         thumb.addEllipse(QPointF(15, 15), 2.4, 2.4);
         p.setPen(InkPen(1.2, QColor(141, 110, 99)));
         p.setBrush(QColor(239, 222, 196));
         p.drawPath(palette.subtracted(thumb));
         const QColor dots[] = {Red, Folder, Green, Blue};
         const QPointF at[] = {{7, 9}, {12, 7.5}, {17, 9}, {6.5, 14}};
         p.setPen(Qt::NoPen);
         for (int i = 0; i < 4; ++i) {
           p.setBrush(dots[i]);
           p.drawEllipse(at[i], 1.9, 1.9);
         }
       }},
      {"magnifierButton",
       [](QPainter& p) {
         DrawMagnifier(p, QPointF(10, 10), 7);
         p.setPen(InkPen(2.0, Blue));
         p.drawLine(QPointF(10, 6.5), QPointF(10, 13.5));
         p.drawLine(QPointF(6.5, 10), QPointF(13.5, 10));
       }},
      {"optionsButton",
       [](QPainter& p) {
         QPainterPath gear;
         gear.addEllipse(QPointF(12, 12), 7, 7);
         for (int i = 0; i < 8; ++i) {
           QPainterPath tooth;
           tooth.addRect(QRectF(-1.8, -10.5, 3.6, 5));
           QTransform turn;
           turn.translate(12, 12);
           turn.rotate(45.0 * i);
           gear = gear.united(turn.map(tooth));
         }
         QPainterPath hole;
         hole.addEllipse(QPointF(12, 12), 3, 3);
         p.setPen(InkPen(1.1));
         p.setBrush(QColor(144, 164, 174));
         p.drawPath(gear.subtracted(hole));
       }},
      {"multimediaButton",
       [](QPainter& p) {
         DrawSpeaker(p);
         DrawNote(p, QPointF(17, 18), 10, Blue);
       }},
      {"mixerButton",
       [](QPainter& p) {
         const qreal knobs[] = {14, 7, 11};
         for (int i = 0; i < 3; ++i) {
           const qreal x = 5 + 7 * i;
           p.setPen(InkPen(1.6));
           p.drawLine(QPointF(x, 3), QPointF(x, 21));
           p.setPen(InkPen(1.0));
           p.setBrush(i == 1 ? Blue : QColor(120, 134, 144));
           p.drawRoundedRect(QRectF(x - 2.8, knobs[i] - 1.6, 5.6, 3.2), 0.8, 0.8);
         }
       }},
      {"aboutButton", [](QPainter& p) { DrawCircleSign(p, Blue, "i"); }},
      {"HelpButton", [](QPainter& p) { DrawCircleSign(p, Green, "?"); }},
      {"internetButton",
       [](QPainter& p) {
         p.setPen(InkPen(1.3, Blue));
         p.setBrush(QColor(187, 222, 251));
         p.drawEllipse(QPointF(12, 12), 9, 9);
         p.setBrush(Qt::NoBrush);
         p.drawEllipse(QPointF(12, 12), 4, 9);
         p.drawLine(QPointF(3, 12), QPointF(21, 12));
       }},
      {"Picture1",
       [](QPainter& p) {
         DrawSpeaker(p);
         p.setPen(InkPen(1.6, Green));
         p.setBrush(Qt::NoBrush);
         p.drawArc(QRectF(10, 8, 6, 8), -50 * 16, 100 * 16);
         p.drawArc(QRectF(9, 4.5, 11, 15), -50 * 16, 100 * 16);
       }},
      {"Picture2",
       [](QPainter& p) {
         DrawSpeaker(p);
         p.setPen(InkPen(2.2, Red));
         p.drawLine(QPointF(15, 8.5), QPointF(21, 15.5));
         p.drawLine(QPointF(21, 8.5), QPointF(15, 15.5));
       }},
  };
  return painters;
}

}  // namespace

QPixmap BarPicture(const QString& name, int sizePixels) {
  const qreal ratio = std::max<qreal>(qGuiApp ? qGuiApp->devicePixelRatio() : 1.0, 1.0);
  QPixmap pixmap(QSize(sizePixels, sizePixels) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(Qt::transparent);
  const auto it = Painters().constFind(name);
  if (it == Painters().constEnd()) return pixmap;
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setRenderHint(QPainter::TextAntialiasing);
  painter.scale(sizePixels / Grid, sizePixels / Grid);
  (*it)(painter);
  return pixmap;
}
