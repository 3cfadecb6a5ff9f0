#include "controls/MsgDefs.h"

#include <QPainter>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <cmath>

#include "platform/Twips.h"

namespace MsgDefs {

namespace {

QColor Clamped(int red, int green, int blue) {
  return QColor(std::clamp(red, 0, 255), std::clamp(green, 0, 255), std::clamp(blue, 0, 255));
}

// Turns an edge in twips along the surface into a pixel edge.
int EdgeToPixels(int twipsValue) {
  return static_cast<int>(std::lround(twips::ToPixelsF(twipsValue)));
}

}  // namespace

void PaintBandGradient(Surface& surface, OleColor color, int direction, bool lighten,
                       bool alternate) {
  if (color == SysColor::NoColor) return;
  surface.Picture.fill(surface.BackColor);
  if (surface.Picture.isNull()) return;
  if (direction < 1 || direction > 4) direction = 1;
  const QColor start = ColorFromOle(color);
  int red = start.red(), green = start.green(), blue = start.blue();

  const bool alongHeight = direction == 1 || direction == 2;
  const bool backwards = direction == 2 || direction == 4;
  const int lengthTwips = twips::FromPixels(alongHeight ? surface.Picture.height()
                                                        : surface.Picture.width());
  const int acrossPixels = alongHeight ? surface.Picture.width() : surface.Picture.height();
  const int band = static_cast<int>(std::lround(lengthTwips / 85.0));

  QPainter painter(&surface.Picture);
  int from = backwards ? lengthTwips - band : 0;
  for (int step = 1; step <= 85; ++step) {
    int to = from + band;
    // Running backwards, the last band reaches the far edge, whatever the
    // rounding of the band size left over.
    if (backwards && step == 85) from = 0;
    red = std::max(red, 0);
    green = std::max(green, 0);
    blue = std::max(blue, 0);
    const int a = EdgeToPixels(from), b = EdgeToPixels(to);
    if (b > a) {
      const QRect rect = alongHeight ? QRect(0, a, acrossPixels, b - a)
                                     : QRect(a, 0, b - a, acrossPixels);
      painter.fillRect(rect, Clamped(red, green, blue));
    }
    int change = 0;
    if (!lighten)
      change = -3;
    else if (alternate)
      change = (step % 2 == 1 && step < 30) ? 0 : 3;
    else
      change = step % 3 == 0 ? 3 : 0;
    red += change;
    green += change;
    blue += change;
    from += backwards ? -band : band;
  }
}

void PaintPatternGradient(Surface& surface, OleColor color, int direction) {
  if (color == SysColor::NoColor) return;
  const QColor resolved = ColorFromOle(color);
  const QString digits = ColorToDigits(QString::number(ToOleColor(resolved)));
  const int red = digits.mid(0, 3).toInt();
  const int green = digits.mid(3, 3).toInt();
  const int blue = digits.mid(6, 3).toInt();

  // The pattern is laid out on a grid of 256 by 256 over the surface.
  const double unitX = surface.Picture.width() / 256.0;
  const double unitY = surface.Picture.height() / 256.0;
  QPointF centre(128, 128);
  bool circles = true;
  switch (direction) {
    case 5: case 6: circles = false; break;
    case 7: case 8: break;
    case 9: case 10: centre = QPointF(0, 0); break;
    case 11: case 12: centre = QPointF(256, 0); break;
    case 13: case 14: centre = QPointF(0, 256); break;
    case 15: case 16: centre = QPointF(256, 256); break;
    default:
      surface.Picture.fill(surface.BackColor);
      return;
  }
  const bool up = direction % 2 == 1;
  surface.BackColor = up ? resolved : QColor(Qt::black);
  surface.Picture.fill(surface.BackColor);
  if (surface.Picture.isNull()) return;

  QPainter painter(&surface.Picture);
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setBrush(Qt::NoBrush);
  QPen pen;
  pen.setWidth(12);
  pen.setCosmetic(true);
  for (int step = 0; step < 256; ++step) {
    const int level = up ? step : 255 - step;
    pen.setColor(QColor(std::min(level, red), std::min(level, green), std::min(level, blue)));
    painter.setPen(pen);
    if (circles) {
      // The radius is measured along the width, so circles stay round.
      const double radius = step * unitX;
      painter.drawEllipse(QPointF(centre.x() * unitX, centre.y() * unitY), radius, radius);
    } else {
      const double t = step / 255.0;
      const QPointF a((1 - t) * centre.x() * unitX, (1 - t) * centre.y() * unitY);
      const QPointF b((1 + t) * centre.x() * unitX, (1 + t) * centre.y() * unitY);
      painter.drawLine(QPointF(a.x(), a.y()), QPointF(b.x(), a.y()));
      painter.drawLine(QPointF(b.x(), a.y()), QPointF(b.x(), b.y()));
      painter.drawLine(QPointF(b.x(), b.y()), QPointF(a.x(), b.y()));
      painter.drawLine(QPointF(a.x(), b.y()), QPointF(a.x(), a.y()));
    }
  }
}

QString DecimalToHex(quint32 value) {
  if (value == 0) return QStringLiteral("0");
  return QString::number(value, 16).toUpper();
}

QString ColorToDigits(const QString& colorText) {
  const QString text = colorText.trimmed();
  bool ok = false;
  quint32 value = 0;
  if (text.startsWith(QLatin1String("&H"), Qt::CaseInsensitive))
    value = text.mid(2).toUInt(&ok, 16);
  else
    value = static_cast<quint32>(text.toLongLong(&ok));
  if (!ok) value = 0;
  const QString hex = DecimalToHex(value).rightJustified(8, QLatin1Char('0'));
  const int red = hex.mid(6, 2).toInt(nullptr, 16);
  const int green = hex.mid(4, 2).toInt(nullptr, 16);
  const int blue = hex.mid(2, 2).toInt(nullptr, 16);
  return QStringLiteral("%1%2%3")
      .arg(red, 3, 10, QLatin1Char('0'))
      .arg(green, 3, 10, QLatin1Char('0'))
      .arg(blue, 3, 10, QLatin1Char('0'));
}

}  // namespace MsgDefs

void SetWindowOnTop(QWidget* form, bool on) {
  if (!form) return;
  QWidget* window = form->window();
  // A shown window keeps its native window and only changes its stacking;
  // changing the widget's own flags would hide it (and end a modal show).
  if (window->isVisible() && window->windowHandle()) {
    window->windowHandle()->setFlag(Qt::WindowStaysOnTopHint, on);
  } else {
    window->setWindowFlag(Qt::WindowStaysOnTopHint, on);
  }
}
