#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
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

TEST(PaintRoutines, BandsDarkenByThreeFromTheEdgeOfTheirDirection) {
  // 170 pixels are 2550 twips: 85 bands of 30 twips, 2 pixels each. Each
  // band runs over the whole of the other dimension; an unknown direction
  // paints top down.
  struct Case {
    int direction;
    QSize size;
    QPoint at;
    int grey;
  };
  const QSize tall(20, 170), wide(170, 20);
  const Case cases[] = {
      {1, tall, {5, 1}, 252},   {1, tall, {5, 2}, 249},   {1, tall, {19, 99}, 105},
      {1, tall, {0, 169}, 0},   {2, tall, {5, 167}, 249}, {2, tall, {5, 0}, 0},
      {3, wide, {2, 10}, 249},  {3, wide, {80, 19}, 132}, {4, wide, {166, 10}, 249},
      {4, wide, {0, 10}, 0},    {5, tall, {0, 168}, 0},   {-2, tall, {0, 1}, 252},
  };
  for (const Case& c : cases) {
    const QImage image = Gradient(c.size.width(), c.size.height(), 255, 255, 255, c.direction);
    EXPECT_EQ(image.pixelColor(c.at), Grey(c.grey)) << c.direction << " at " << c.at.x() << ","
                                                    << c.at.y();
  }
}

TEST(PaintRoutines, EachChannelStopsAtZeroOnItsOwn) {
  const QImage image = Gradient(10, 170, 100, 200, 30, 1);
  EXPECT_EQ(image.pixelColor(0, 0), QColor(97, 197, 27));
  // Blue reaches 0 at band 10, red at band 34; green goes on.
  EXPECT_EQ(image.pixelColor(0, 18), QColor(70, 170, 0));
  EXPECT_EQ(image.pixelColor(0, 64), QColor(1, 101, 0));  // band 33
  EXPECT_EQ(image.pixelColor(0, 66), QColor(0, 98, 0));   // band 34
  EXPECT_EQ(image.pixelColor(0, 169), QColor(0, 0, 0));
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
