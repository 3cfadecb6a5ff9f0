#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QWidget>

#include "controls/PaintRoutines.h"

namespace {

const QColor kUnpainted(255, 0, 255);

// Paints the gradient over a magenta surface so that unpainted rows show.
QImage Gradient(int width, int height, int red, int green, int blue, int direction) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(kUnpainted);
  QPainter painter(&image);
  PaintFormGradient(painter, image.size(), red, green, blue, direction);
  return image;
}

QColor Grey(int level) { return QColor(level, level, level); }

}  // namespace

TEST(PaintRoutines, TopDownBandsDarkenByThreeFromTheFirstBand) {
  // 170 pixels are 2550 twips: 85 bands of 30 twips, 2 pixels each.
  const QImage image = Gradient(20, 170, 255, 255, 255, 1);
  EXPECT_EQ(image.pixelColor(5, 0), Grey(252));
  EXPECT_EQ(image.pixelColor(5, 1), Grey(252));
  EXPECT_EQ(image.pixelColor(5, 2), Grey(249));
  EXPECT_EQ(image.pixelColor(19, 99), Grey(255 - 3 * 50));
  EXPECT_EQ(image.pixelColor(0, 168), Grey(0));
  EXPECT_EQ(image.pixelColor(0, 169), Grey(0));
  // Each band runs over the whole width.
  EXPECT_EQ(image.pixelColor(0, 40), image.pixelColor(19, 40));
}

TEST(PaintRoutines, BottomUpAndSidewaysBandsStartAtTheirOwnEdge) {
  const QImage up = Gradient(20, 170, 255, 255, 255, 2);
  EXPECT_EQ(up.pixelColor(5, 169), Grey(252));
  EXPECT_EQ(up.pixelColor(5, 167), Grey(249));
  EXPECT_EQ(up.pixelColor(5, 0), Grey(0));

  const QImage right = Gradient(170, 20, 255, 255, 255, 3);
  EXPECT_EQ(right.pixelColor(0, 10), Grey(252));
  EXPECT_EQ(right.pixelColor(2, 10), Grey(249));
  EXPECT_EQ(right.pixelColor(169, 10), Grey(0));
  EXPECT_EQ(right.pixelColor(80, 0), right.pixelColor(80, 19));

  const QImage left = Gradient(170, 20, 255, 255, 255, 4);
  EXPECT_EQ(left.pixelColor(169, 10), Grey(252));
  EXPECT_EQ(left.pixelColor(166, 10), Grey(249));
  EXPECT_EQ(left.pixelColor(0, 10), Grey(0));
}

TEST(PaintRoutines, DirectionsOutsideOneToFourPaintTopDown) {
  const QImage down = Gradient(10, 170, 255, 255, 255, 1);
  EXPECT_EQ(Gradient(10, 170, 255, 255, 255, 0), down);
  EXPECT_EQ(Gradient(10, 170, 255, 255, 255, 5), down);
  EXPECT_EQ(Gradient(10, 170, 255, 255, 255, -2), down);
}

TEST(PaintRoutines, EachChannelStopsAtZeroOnItsOwn) {
  const QImage image = Gradient(10, 170, 100, 200, 30, 1);
  EXPECT_EQ(image.pixelColor(0, 0), QColor(97, 197, 27));
  // Blue reaches 0 at band 10, red at band 34; green goes on.
  EXPECT_EQ(image.pixelColor(0, 18), QColor(70, 170, 0));
  EXPECT_EQ(image.pixelColor(0, 64), QColor(1, 101, 0));  // band 33
  EXPECT_EQ(image.pixelColor(0, 66), QColor(0, 98, 0));   // band 34
  EXPECT_EQ(image.pixelColor(0, 169), QColor(0, 0, 0));
  // The command bar's lighter start.
  EXPECT_EQ(Gradient(10, 170, 238, 238, 238, 1).pixelColor(0, 0), Grey(235));
}

TEST(PaintRoutines, RoundedBandsLeaveTheRestAtTheFarEdgeOrBesideTheLastBand) {
  // 80 pixels are 1200 twips: bands of 14 twips cover 1190, 10 twips short.
  const QImage down = Gradient(10, 80, 255, 255, 255, 1);
  EXPECT_EQ(down.pixelColor(0, 78), Grey(0));
  EXPECT_EQ(down.pixelColor(0, 79), kUnpainted);

  // Bottom up, the first band meets the edge and the last starts at 0; the
  // rest stays between the last two bands.
  const QImage up = Gradient(10, 80, 255, 255, 255, 2);
  EXPECT_EQ(up.pixelColor(0, 79), Grey(252));
  EXPECT_EQ(up.pixelColor(0, 0), Grey(0));
  EXPECT_EQ(up.pixelColor(0, 1), kUnpainted);
  EXPECT_EQ(up.pixelColor(0, 2), Grey(3));
}

TEST(PaintRoutines, CaptureTakesTheRectangleOfWhatTheWindowShows) {
  struct GradientForm : QWidget {
    void paintEvent(QPaintEvent*) override {
      QPainter painter(this);
      PaintFormGradient(painter, size(), 255, 255, 255, 1);
    }
  } form;
  form.resize(40, 170);
  const QPixmap picture = CaptureWindow(&form, true, 10, 20, 15, 4);
  ASSERT_EQ(picture.size(), QSize(15, 4));
  const QImage image = picture.toImage();
  EXPECT_EQ(image.pixelColor(0, 0), Grey(255 - 3 * 11));
  EXPECT_EQ(image.pixelColor(14, 3), Grey(255 - 3 * 12));

  EXPECT_TRUE(CaptureWindow(nullptr, true, 0, 0, 10, 10).isNull());
  EXPECT_TRUE(CaptureWindow(&form, false, 0, 0, 0, 10).isNull());
}

TEST(PaintRoutines, ColourPropertiesReadBlueGreenRedOrTheSystemColours) {
  EXPECT_EQ(ColorFromOle(0x0000FF), QColor(255, 0, 0));
  EXPECT_EQ(ColorFromOle(0x8080FF), QColor(255, 128, 128));
  EXPECT_EQ(ColorFromOle(0x00FFFF00), QColor(0, 255, 255));
  const QPalette palette = QApplication::palette();
  EXPECT_EQ(ColorFromOle(0x8000000F), palette.color(QPalette::Button));
  EXPECT_EQ(ColorFromOle(0x80000012), palette.color(QPalette::ButtonText));
  EXPECT_EQ(ColorFromOle(0x80000005), palette.color(QPalette::Base));
}
