#include "browser/HighlightFrame.h"

namespace {

QRect Horizontal(int x1, int x2, int y) { return QRect(x1, y, x2 - x1, FrameLineTwips); }
QRect Vertical(int x, int y1, int y2) { return QRect(x, y1, FrameLineTwips, y2 - y1); }

}  // namespace

FrameLines FrameAround(int left, int top, int width, int height) {
  FrameLines frame;
  frame.Lines[0] = Horizontal(left, left + width - 30, top);
  frame.Lines[1] = Vertical(left, top, top + height - 30);
  frame.Lines[2] = Horizontal(left, left + width, top + height - FrameLineTwips);
  frame.Lines[3] = Vertical(left + width - FrameLineTwips, top, top + height);
  return frame;
}

FrameLines PictureFrame(const QRect& cellTwips) {
  return FrameAround(cellTwips.x() - 30, cellTwips.y() - 30, cellTwips.width() + 60,
                     cellTwips.height() + 60);
}

FrameLines IconFrame(const QRect& iconTwips, int nameRightTwips) {
  const int left = iconTwips.x() - 30;
  const int top = iconTwips.y() - 30;
  return FrameAround(left, top, nameRightTwips + 30 - left, IconFrameHeightTwips);
}
