#include "controls/TabStripLayout.h"

#include <QPair>
#include <algorithm>
#include <cmath>

namespace tabstrip {

int RoundedDivide(int numerator, int denominator) {
  if (denominator == 0) return 0;
  // The default floating-point rounding mode goes to the even neighbour.
  return static_cast<int>(std::lrint(static_cast<double>(numerator) / denominator));
}

std::array<int, 3> Edges(int width, int tabs) {
  const int edge1 = RoundedDivide(width, tabs < 1 ? 1 : tabs);
  return {edge1, 2 * edge1, 3 * edge1};
}

std::array<QPoint, 15> Outline(int w, int h, const std::array<int, 3>& e) {
  return {QPoint(0, 0),
          QPoint(0, h - 75),
          QPoint(75, h),
          QPoint(e[0] - 60, h),
          QPoint(e[0], h - 60),
          QPoint(e[0] + 60, h),
          QPoint(e[1] - 60, h),
          QPoint(e[1], h - 60),
          QPoint(e[1] + 60, h),
          QPoint(e[2] - 60, h),
          QPoint(e[2], h - 60),
          QPoint(e[2] + 60, h),
          QPoint(w - 60, h),
          QPoint(w, h - 60),
          QPoint(w, 0)};
}

QRect LabelRect(int index, int h, const std::array<int, 3>& edges) {
  const int left = (index <= 1 ? 0 : edges[static_cast<size_t>(std::min(index, 4) - 2)]) + LabelInset;
  return QRect(left, h - LabelRise, edges[0] - LabelNarrowing, LabelHeight);
}

int SurfaceTabAt(int x, int y, int h, const std::array<int, 3>& edges) {
  if (y < h - StripHeight) return 0;
  if (x < edges[0]) return 1;
  if (x <= edges[1]) return 2;
  return 3;
}

QPair<int, int> TabSpan(int tab, int width, const std::array<int, 3>& edges) {
  switch (tab) {
    case 1: return {0, edges[0]};
    case 2: return {edges[0], edges[1]};
    case 3: return {edges[1], edges[2]};
    default: return {edges[2], std::max(width, edges[2])};
  }
}

}  // namespace tabstrip
