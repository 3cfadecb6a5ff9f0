#pragma once
// Window measures are kept in twips (1440 to the inch). These helpers turn
// them into Qt's logical pixels at the edge: 15 twips to a pixel at 96 dpi,
// and Qt scales logical pixels for high-dpi screens itself.

#include <QRect>
#include <QRectF>
#include <algorithm>

namespace twips {

constexpr int PerPixel = 15;

constexpr int ToPixels(int twips) { return twips / PerPixel; }
constexpr double ToPixelsF(double twips) { return twips / PerPixel; }
constexpr int FromPixels(int pixels) { return pixels * PerPixel; }

// A rectangle in twips as pixels, at least one pixel each way.
inline QRect ToPixels(const QRectF& t) {
  return QRect(ToPixels(int(t.left())), ToPixels(int(t.top())),
               std::max(ToPixels(int(t.width())), 1), std::max(ToPixels(int(t.height())), 1));
}

}  // namespace twips
