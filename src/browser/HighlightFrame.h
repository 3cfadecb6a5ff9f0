#pragma once
// The red frame that marks the current item of a tab: four lines, each one
// pixel (15 twips) thick, placed in twips around a picture cell, or around an
// icon and its name.
//
// A line drawn from a to b covers a up to, but not including, b, as lines on
// the screen are drawn; so the line along the top from x1 to x2 at y is the
// rectangle (x1, y, x2 - x1, 15), and the line down from y1 to y2 at x is
// (x, y1, 15, y2 - y1).

#include <QRect>
#include <array>

struct FrameLines {
  // 0 along the top, 1 down the left side, 2 along the bottom, 3 down the
  // right side; rectangles in twips.
  std::array<QRect, 4> Lines;
};

// Thickness of a frame line: one pixel.
inline constexpr int FrameLineTwips = 15;
// Height of the frame around an icon and its name.
inline constexpr int IconFrameHeightTwips = 345;

// The frame of a box whose outer edges are given: the lines lie on its inner
// side, the top and left lines stopping 30 twips short of the far side.
FrameLines FrameAround(int left, int top, int width, int height);

// The frame of a picture cell: 30 twips outside the cell on every side.
FrameLines PictureFrame(const QRect& cellTwips);

// The frame of an icon cell: from 30 twips above and left of the icon, 345
// twips high, to 30 twips beyond the right edge of the name label.
// `nameRightTwips` is the label's left plus its width.
FrameLines IconFrame(const QRect& iconTwips, int nameRightTwips);
