#include "controls/PaintRoutines.h"

#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "platform/Twips.h"

void PaintFormGradient(QPainter& painter, const QSize& sizePixels, int red, int green, int blue,
                       int direction) {
  if (direction < 1 || direction > 4) direction = 1;
  const bool vertical = direction == 1 || direction == 2;
  const int lengthTwips = twips::FromPixels(vertical ? sizePixels.height() : sizePixels.width());
  const int acrossPixels = vertical ? sizePixels.width() : sizePixels.height();
  const int band = static_cast<int>(std::lround(lengthTwips / 85.0));
  const bool fromFarEdge = direction == 2 || direction == 4;

  int start = fromFarEdge ? lengthTwips - band : 0;
  for (int number = 1; number <= 85; ++number) {
    if (fromFarEdge && number == 85) start = 0;
    red = std::max(red - 3, 0);
    green = std::max(green - 3, 0);
    blue = std::max(blue - 3, 0);
    // Band edges are worked out in twips and turned into pixels at the end,
    // so that neighbouring bands meet without gaps.
    const int from = static_cast<int>(std::lround(twips::ToPixelsF(start)));
    const int to = static_cast<int>(std::lround(twips::ToPixelsF(start + band)));
    const int extent = to - from;
    if (extent > 0) {
      const QRect rect = vertical ? QRect(0, from, acrossPixels, extent)
                                  : QRect(from, 0, extent, acrossPixels);
      painter.fillRect(rect, QColor(red, green, blue));
    }
    start += fromFarEdge ? -band : band;
  }
}

QPixmap CaptureWindow(QWidget* window, bool client, int left, int top, int width, int height) {
  Q_UNUSED(client);
  if (!window || width <= 0 || height <= 0) return QPixmap();
  return window->grab(QRect(left, top, width, height));
}

QCursor CursorForMousePointer(int pointer, const QPixmap& mouseIcon) {
  switch (pointer) {
    case 1: return QCursor(Qt::ArrowCursor);
    case 2: return QCursor(Qt::CrossCursor);
    case 3: return QCursor(Qt::IBeamCursor);
    case 4: return QCursor(Qt::ArrowCursor);
    case 5:
    case 15: return QCursor(Qt::SizeAllCursor);
    case 6: return QCursor(Qt::SizeBDiagCursor);
    case 7: return QCursor(Qt::SizeVerCursor);
    case 8: return QCursor(Qt::SizeFDiagCursor);
    case 9: return QCursor(Qt::SizeHorCursor);
    case 10: return QCursor(Qt::UpArrowCursor);
    case 11: return QCursor(Qt::WaitCursor);
    case 12: return QCursor(Qt::ForbiddenCursor);
    case 13: return QCursor(Qt::BusyCursor);
    case 14: return QCursor(Qt::WhatsThisCursor);
    case 99:
      if (!mouseIcon.isNull()) return QCursor(mouseIcon);
      return QCursor(Qt::ArrowCursor);
    default: return QCursor(Qt::ArrowCursor);
  }
}

void ApplyMousePointer(QWidget* widget, int pointer, const QPixmap& mouseIcon) {
  if (!widget) return;
  if (pointer == 0)
    widget->unsetCursor();
  else
    widget->setCursor(CursorForMousePointer(pointer, mouseIcon));
}
