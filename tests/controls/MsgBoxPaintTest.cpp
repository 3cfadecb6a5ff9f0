#include <gtest/gtest.h>

#include <QApplication>
#include <QPalette>

#include "controls/MsgDefs.h"

using MsgDefs::Surface;

namespace {

Surface MakeSurface(int width, int height, QColor back = Qt::red) {
  Surface surface;
  surface.Picture = QImage(width, height, QImage::Format_RGB32);
  surface.Picture.fill(Qt::blue);
  surface.BackColor = back;
  return surface;
}

int RedAtRow(const Surface& s, int row) { return qRed(s.Picture.pixel(0, row)); }

}  // namespace

TEST(MsgBoxPaint, BandGradientDarkensFromTheStartingEdge) {
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
  const int expected[] = {10, 7, 4, 1, 0, 0};
  for (int row = 0; row < 6; ++row) EXPECT_EQ(RedAtRow(dark, row), expected[row]) << row;
}

TEST(MsgBoxPaint, BandGradientLightensOnItsSteps) {
  Surface alternate = MakeSurface(1, 85);
  MsgDefs::PaintBandGradient(alternate, 0x000000, 1, true, true);
  // Odd steps below 30 keep the colour; every other step adds 3.
  const int rows[] = {0, 1, 2, 3, 4, 29, 30, 31, 84};
  const int values[] = {0, 0, 3, 3, 6, 42, 45, 48, 207};
  for (int i = 0; i < 9; ++i) EXPECT_EQ(RedAtRow(alternate, rows[i]), values[i]) << rows[i];

  Surface third = MakeSurface(1, 85);
  MsgDefs::PaintBandGradient(third, 0x000000, 1, true, false);
  EXPECT_EQ(RedAtRow(third, 2), 0);
  EXPECT_EQ(RedAtRow(third, 3), 3);
  EXPECT_EQ(RedAtRow(third, 84), 84);

}

TEST(MsgBoxPaint, BandGradientEdgesAndColourValues) {
  // 80 pixels: 1200 twips, bands of 14 twips, 10 twips left over.
  Surface forward = MakeSurface(1, 80);
  MsgDefs::PaintBandGradient(forward, 0xFFFFFF, 1, false, true);
  EXPECT_EQ(forward.Picture.pixel(0, 79), QColor(Qt::red).rgb());  // the rest stays cleared
  Surface backward = MakeSurface(1, 80);
  MsgDefs::PaintBandGradient(backward, 0xFFFFFF, 2, false, true);
  EXPECT_EQ(RedAtRow(backward, 79), 255);
  EXPECT_EQ(RedAtRow(backward, 0), 3);  // the last band stretches to the edge

  // -1 leaves the surface as it was.
  Surface untouched = MakeSurface(2, 2);
  MsgDefs::PaintBandGradient(untouched, 0xFFFFFFFFu, 1, false, true);
  MsgDefs::PaintPatternGradient(untouched, 0xFFFFFFFFu, 5);
  EXPECT_EQ(untouched.Picture.pixel(0, 0), QColor(Qt::blue).rgb());

  // A system colour stands for the desktop's palette colour.
  EXPECT_EQ(MsgDefs::ResolveColor(0x8000000Fu), QApplication::palette().color(QPalette::Button));
  EXPECT_EQ(MsgDefs::ResolveColor(0x00C08040u), QColor(0x40, 0x80, 0xC0));
  EXPECT_EQ(MsgDefs::ToOleColor(QColor(0x40, 0x80, 0xC0)), 0x00C08040u);
}

TEST(MsgBoxPaint, PatternRectanglesFallFromTheColourOnBlack) {
  Surface s = MakeSurface(256, 256);
  MsgDefs::PaintPatternGradient(s, 0x0000FF, 6);
  EXPECT_EQ(s.BackColor, QColor(Qt::black));
  const QRgb centre = s.Picture.pixel(128, 128);
  EXPECT_GT(qRed(centre), 200);
  EXPECT_EQ(qGreen(centre), 0);  // each channel stays within the colour's own
  EXPECT_EQ(qBlue(centre), 0);
  EXPECT_GT(qRed(centre), qRed(s.Picture.pixel(128, 64)));
  EXPECT_LT(qRed(s.Picture.pixel(0, 0)), 10);

  // Direction 5 runs up from black on a back of the colour.
  Surface rising = MakeSurface(256, 256);
  MsgDefs::PaintPatternGradient(rising, 0xFFFFFF, 5);
  EXPECT_EQ(rising.BackColor, QColor(Qt::white));
  EXPECT_LT(qRed(rising.Picture.pixel(128, 128)), 40);
  EXPECT_GT(qRed(rising.Picture.pixel(128, 2)), 240);
}

TEST(MsgBoxPaint, PatternCirclesAboutTheirCorner) {
  // Top left, rising: dark at the corner, the colour itself beyond the last circle.
  Surface rising = MakeSurface(256, 256);
  MsgDefs::PaintPatternGradient(rising, 0x00FF00, 9);
  EXPECT_LT(qGreen(rising.Picture.pixel(1, 1)), 30);
  EXPECT_EQ(rising.Picture.pixel(250, 250), QColor(0, 255, 0).rgb());

  // Bottom right, falling: the colour at the corner, black far from it.
  Surface falling = MakeSurface(256, 256);
  MsgDefs::PaintPatternGradient(falling, 0xFFFFFF, 16);
  EXPECT_GT(qRed(falling.Picture.pixel(254, 254)), 220);
  EXPECT_EQ(falling.Picture.pixel(5, 5), QColor(Qt::black).rgb());
  // The middle circles are round on a wide surface: radius runs along the width.
  Surface wide = MakeSurface(512, 128);
  MsgDefs::PaintPatternGradient(wide, 0xFFFFFF, 8);
  const int across = qRed(wide.Picture.pixel(256 + 40, 64));
  EXPECT_EQ(qRed(wide.Picture.pixel(256, 64 + 40)), across);
  EXPECT_LT(across, qRed(wide.Picture.pixel(256, 64)));
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
