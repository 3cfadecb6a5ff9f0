#include <gtest/gtest.h>

#include <utility>

#include "controls/MsgDefs.h"

using MsgDefs::Surface;

namespace {

Surface MakeSurface(int width, int height) {
  Surface surface;
  surface.Picture = QImage(width, height, QImage::Format_RGB32);
  surface.Picture.fill(Qt::blue);
  surface.BackColor = Qt::red;
  return surface;
}

int RedAtRow(const Surface& s, int row) { return qRed(s.Picture.pixel(0, row)); }

}  // namespace

TEST(MsgBoxPaint, BandGradientDarkensOrLightensBandByBandFromItsEdge) {
  // 85 pixels are 1275 twips: bands of 15 twips, one pixel each.
  Surface down = MakeSurface(4, 85);
  MsgDefs::PaintBandGradient(down, 0xFFFFFF, 1, false, true);
  EXPECT_EQ(down.Picture.pixel(0, 0), QColor(255, 255, 255).rgb());
  EXPECT_EQ(down.Picture.pixel(3, 1), QColor(252, 252, 252).rgb());
  EXPECT_EQ(RedAtRow(down, 84), 3);

  // Across the width, two pixels a band; direction 4 from the right.
  Surface right = MakeSurface(170, 2);
  MsgDefs::PaintBandGradient(right, 0x0000FF, 4, false, true);
  EXPECT_EQ(right.Picture.pixel(169, 1), QColor(255, 0, 0).rgb());
  EXPECT_EQ(right.Picture.pixel(167, 1), QColor(252, 0, 0).rgb());
  EXPECT_EQ(right.Picture.pixel(0, 0), QColor(3, 0, 0).rgb());

  // Channels stop at 0; an unknown direction becomes 1.
  Surface dark = MakeSurface(1, 85);
  MsgDefs::PaintBandGradient(dark, 0x0A0A0A, 9, false, true);
  const int darkRows[] = {10, 7, 4, 1, 0, 0};
  for (int row = 0; row < 6; ++row) EXPECT_EQ(RedAtRow(dark, row), darkRows[row]) << row;

  // Lightening with alternation: odd steps below 30 keep the colour.
  Surface alternate = MakeSurface(1, 85);
  MsgDefs::PaintBandGradient(alternate, 0x000000, 1, true, true);
  const int rows[] = {0, 1, 2, 3, 4, 29, 30, 31, 84};
  const int values[] = {0, 0, 3, 3, 6, 42, 45, 48, 207};
  for (int i = 0; i < 9; ++i) EXPECT_EQ(RedAtRow(alternate, rows[i]), values[i]) << rows[i];
  // Without it, every third step adds 3.
  Surface third = MakeSurface(1, 85);
  MsgDefs::PaintBandGradient(third, 0x000000, 1, true, false);
  EXPECT_EQ(RedAtRow(third, 2), 0);
  EXPECT_EQ(RedAtRow(third, 3), 3);
  EXPECT_EQ(RedAtRow(third, 84), 84);
}

TEST(MsgBoxPaint, BandGradientLeavesTheRoundingRestOrStretchesTheLastBand) {
  // 80 pixels: 1200 twips, bands of 14 twips, 10 twips left over.
  Surface forward = MakeSurface(1, 80);
  MsgDefs::PaintBandGradient(forward, 0xFFFFFF, 1, false, true);
  EXPECT_EQ(forward.Picture.pixel(0, 79), QColor(Qt::red).rgb());  // the rest stays cleared
  Surface backward = MakeSurface(1, 80);
  MsgDefs::PaintBandGradient(backward, 0xFFFFFF, 2, false, true);
  EXPECT_EQ(RedAtRow(backward, 79), 255);
  EXPECT_EQ(RedAtRow(backward, 0), 3);

  // -1 leaves the surface as it was.
  Surface untouched = MakeSurface(2, 2);
  MsgDefs::PaintBandGradient(untouched, 0xFFFFFFFFu, 1, false, true);
  MsgDefs::PaintPatternGradient(untouched, 0xFFFFFFFFu, 5);
  EXPECT_EQ(untouched.Picture.pixel(0, 0), QColor(Qt::blue).rgb());
}

TEST(MsgBoxPaint, PatternsTakeTheirBackColourByDirectionAndStayWithinTheColour) {
  // Odd directions rise on a back of the colour, even ones fall on black.
  const std::pair<int, QColor> backs[] = {{5, Qt::red}, {6, Qt::black}, {9, Qt::red}, {16, Qt::black}};
  for (const auto& [direction, back] : backs) {
    Surface s = MakeSurface(64, 64);
    MsgDefs::PaintPatternGradient(s, 0x0000FF, direction);
    EXPECT_EQ(s.BackColor, back) << direction;
    // Each channel stays within the colour's own.
    EXPECT_EQ(s.Picture.pixel(32, 32) & 0x00FFFF, 0u) << direction;
  }
  // Circles about the top left corner, rising: the colour beyond the last.
  Surface corner = MakeSurface(256, 256);
  MsgDefs::PaintPatternGradient(corner, 0x00FF00, 9);
  EXPECT_EQ(corner.Picture.pixel(250, 250), QColor(0, 255, 0).rgb());
  // Bottom right, falling: black far from the corner.
  MsgDefs::PaintPatternGradient(corner, 0xFFFFFF, 16);
  EXPECT_EQ(corner.Picture.pixel(5, 5), QColor(Qt::black).rgb());
  // The middle circles are round on a wide surface.
  Surface wide = MakeSurface(512, 128);
  MsgDefs::PaintPatternGradient(wide, 0xFFFFFF, 8);
  EXPECT_EQ(wide.Picture.pixel(256 + 40, 64), wide.Picture.pixel(256, 64 + 40));
  EXPECT_NE(wide.Picture.pixel(256 + 40, 64), wide.Picture.pixel(256, 64));
}

TEST(MsgBoxPaint, ColourDigitsAndHex) {
  EXPECT_EQ(MsgDefs::ColorToDigits("255"), "255000000");
  EXPECT_EQ(MsgDefs::ColorToDigits("&HFF0000"), "000000255");
  EXPECT_EQ(MsgDefs::ColorToDigits("&H00C08040"), "064128192");
  EXPECT_EQ(MsgDefs::ColorToDigits("-2147483633"), "015000000");
  EXPECT_EQ(MsgDefs::ColorToDigits("not a colour"), "000000000");
  EXPECT_EQ(MsgDefs::DecimalToHex(0), "0");
  EXPECT_EQ(MsgDefs::DecimalToHex(255), "FF");
  EXPECT_EQ(MsgDefs::DecimalToHex(0x8000000Fu), "8000000F");
}
