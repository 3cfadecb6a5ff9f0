#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QTest>
#include <QWidget>

#include "controls/Button.h"
#include "controls/ButtonFlat.h"
#include "controls/Divider3D.h"
#include "controls/Headings.h"
#include "controls/Label3D.h"
#include "controls/NewImage.h"
#include "controls/NewLabel2.h"
#include "controls/NewSlider.h"
#include "support/TestEnv.h"

namespace {

QPixmap Filled(QColor color, QSize size = QSize(8, 8)) {
  QPixmap pixmap(size);
  pixmap.fill(color);
  return pixmap;
}

void Move(QWidget* widget, QPoint at, Qt::MouseButtons held) {
  QMouseEvent move(QEvent::MouseMove, at, widget->mapToGlobal(at), Qt::NoButton, held,
                   Qt::NoModifier);
  QApplication::sendEvent(widget, &move);
}

}  // namespace

TEST(NewSlider, ScrollingHoldsFromThePressOnTheThumbUntilTheRelease) {
  NewSlider slider;
  EXPECT_EQ(slider.Value(), 0);
  EXPECT_EQ(slider.Max(), 100);
  EXPECT_EQ(slider.LargeChange(), 1);
  EXPECT_EQ(slider.BackColor(), 0x8000000Fu);
  EXPECT_EQ(slider.SliderShape(), 0);
  EXPECT_TRUE(slider.ShowBorder());
  // 2 pixels of border each side and an 11-pixel thumb leave 100 pixels of
  // travel: one pixel to a value.
  slider.resize(115, 24);
  slider.show();
  EXPECT_EQ(slider.ThumbRect(), QRect(2, 4, 11, 16));
  QStringList log;
  QObject::connect(&slider, &NewSlider::Scroll, [&](int v) {
    log << QString("Scroll %1 %2").arg(v).arg(slider.Scrolling());
  });
  QObject::connect(&slider, &NewSlider::Change, [&](int v) {
    log << QString("Change %1 %2").arg(v).arg(slider.Scrolling());
  });

  QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(7, 12));
  EXPECT_TRUE(slider.Scrolling());
  Move(&slider, QPoint(37, 12), Qt::LeftButton);
  EXPECT_TRUE(slider.Scrolling());
  Move(&slider, QPoint(57, 30), Qt::LeftButton);  // off the control, still dragging
  EXPECT_TRUE(slider.Scrolling());
  Move(&slider, QPoint(57, 12), Qt::LeftButton);  // same value: no event
  QTest::mouseRelease(&slider, Qt::LeftButton, {}, QPoint(57, 12));
  EXPECT_FALSE(slider.Scrolling());
  EXPECT_EQ(slider.Value(), 50);
  EXPECT_EQ(log.join(","), "Scroll 30 1,Scroll 50 1,Change 50 0");

  // Dragged past the end, the thumb stops at Max.
  log.clear();
  QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(57, 12));
  Move(&slider, QPoint(400, 12), Qt::LeftButton);
  QTest::mouseRelease(&slider, Qt::LeftButton, {}, QPoint(400, 12));
  EXPECT_EQ(log.join(","), "Scroll 100 1,Change 100 0");

  // Picked up and put down on the same value: nothing.
  log.clear();
  QTest::mouseClick(&slider, Qt::LeftButton, {}, slider.ThumbRect().center());
  EXPECT_EQ(log.join(","), "");
}

TEST(NewSlider, ClicksBesideTheThumbKeysAndCodeStepAndRaiseChange) {
  NewSlider slider;
  slider.resize(115, 24);
  slider.SetLargeChange(10);
  slider.SetValue(50);
  QList<int> changes;
  QObject::connect(&slider, &NewSlider::Change, [&](int v) { changes << v; });

  QTest::mouseClick(&slider, Qt::LeftButton, {}, QPoint(100, 12));
  QTest::mouseClick(&slider, Qt::LeftButton, {}, QPoint(5, 12));
  QTest::mouseClick(&slider, Qt::LeftButton, {}, QPoint(5, 12));
  EXPECT_FALSE(slider.Scrolling());
  QTest::keyClick(&slider, Qt::Key_Right);
  QTest::keyClick(&slider, Qt::Key_PageDown);
  QTest::keyClick(&slider, Qt::Key_End);
  QTest::keyClick(&slider, Qt::Key_End);  // already there
  QTest::keyClick(&slider, Qt::Key_Home);
  QTest::keyClick(&slider, Qt::Key_Left);  // held at 0
  EXPECT_EQ(changes, (QList<int>{60, 50, 40, 41, 51, 100, 0}));

  slider.SetValue(250);
  EXPECT_EQ(slider.Value(), 100);
  slider.SetMax(20);  // the value is held to the new maximum
  EXPECT_EQ(slider.Value(), 20);
  slider.SetMax(-5);
  EXPECT_EQ(slider.Max(), 0);
  slider.SetLargeChange(0);
  EXPECT_EQ(slider.LargeChange(), 1);
  slider.SetSliderShape(4);
  EXPECT_EQ(slider.SliderShape(), 0);
}

TEST(NewImage, LoadsFilesAtTheCellSizeAndStandsInForDeletedOnes) {
  NewImage cell;
  cell.resize(40, 30);
  QImage big(400, 300, QImage::Format_RGB32);
  big.fill(QColor(10, 200, 30));
  const QString path = testenv::Root() + "/big.png";
  ASSERT_TRUE(big.save(path));
  testenv::MakeFile(testenv::Root() + "/broken.jpg", "not a picture");

  EXPECT_TRUE(cell.LoadFile(path));
  EXPECT_EQ(cell.Picture().size(), QSize(40, 30));
  EXPECT_EQ(cell.Image().toImage().pixelColor(20, 15), QColor(10, 200, 30));

  EXPECT_FALSE(cell.LoadFile(testenv::Root() + "/broken.jpg"));
  EXPECT_TRUE(cell.Picture().isNull());
  EXPECT_FALSE(cell.LoadFile(testenv::Root() + "/missing.png"));

  // A picture given by the caller is taken as it is, and stretched.
  QImage small(4, 3, QImage::Format_RGB32);
  small.fill(Qt::blue);
  EXPECT_TRUE(cell.LoadFile(path, &small));
  EXPECT_EQ(cell.Picture().size(), QSize(4, 3));
  EXPECT_EQ(cell.Image().toImage().pixelColor(39, 29), QColor(Qt::blue));

  // Drawing stays until Cls; the picture stays after it.
  cell.PaintPicture(Filled(Qt::red), QRect(0, 0, 10, 10));
  EXPECT_EQ(cell.Image().toImage().pixelColor(5, 5), QColor(Qt::red));
  cell.Cls();
  EXPECT_EQ(cell.Image().toImage().pixelColor(5, 5), QColor(Qt::blue));

  cell.LoadDeleted();
  EXPECT_EQ(cell.Picture().size(), QSize(40, 30));
  cell.LoadDeleted(Filled(Qt::yellow));
  EXPECT_EQ(cell.Image().toImage().pixelColor(20, 15), QColor(Qt::yellow));
  EXPECT_TRUE(cell.LoadFile());
  EXPECT_TRUE(cell.Picture().isNull());
}

TEST(Label3D, DrawsTheCaptionInColor1OverItsShadowInColor2) {
  QWidget form;
  form.setStyleSheet("background: white");
  Label3D label(&form);
  EXPECT_EQ(label.Caption(), "3D Label");
  EXPECT_EQ(label.Color1(), 255u);
  EXPECT_EQ(label.Color2(), 0u);
  EXPECT_EQ(label.ShadowLeft(), 25);
  EXPECT_EQ(label.ShadowTop(), 25);
  EXPECT_EQ(label.BackStyle(), 0);
  EXPECT_EQ(label.BorderStyle(), 0);
  EXPECT_FALSE(label.AutoSize());

  QFont font = label.Font();
  font.setPixelSize(30);
  font.setBold(true);
  label.SetFont(font);
  label.SetCaption("II");
  label.SetShadowLeft(60);  // 4 pixels
  label.SetShadowTop(60);
  label.SetBackStyle(1);
  label.SetBackColor(0xFFFFFF);
  label.SetAutoSize(true);
  const QFontMetrics metrics(font);
  EXPECT_EQ(label.size(), QSize(metrics.horizontalAdvance("II") + 4, metrics.height() + 4));

  const QImage image = label.grab().toImage();
  int red = 0, black = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) {
      const QColor c = image.pixelColor(x, y);
      if (c == QColor(255, 0, 0)) ++red;
      if (c == QColor(0, 0, 0)) ++black;
    }
  EXPECT_GT(red, 20);
  EXPECT_GT(black, 20);
}

TEST(ButtonFlat, ShowsThePictureOfItsStateAndClicksOnReleaseOverIt) {
  QWidget form;
  ButtonFlat button(&form);
  button.setGeometry(0, 0, 20, 20);
  form.show();
  button.SetPicture(Filled(Qt::red));
  EXPECT_EQ(button.ShownPicture().toImage().pixelColor(0, 0), QColor(Qt::red));
  button.SetHoverPicture(Filled(Qt::green));
  button.SetClickPicture(Filled(Qt::blue));
  QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), button.mapToGlobal(QPointF(5, 5)));
  QApplication::sendEvent(&button, &enter);
  EXPECT_EQ(button.ShownPicture().toImage().pixelColor(0, 0), QColor(Qt::green));
  int clicks = 0;
  QObject::connect(&button, &ButtonFlat::Click, [&] { ++clicks; });
  QTest::mousePress(&button, Qt::LeftButton, {}, QPoint(5, 5));
  EXPECT_EQ(button.ShownPicture().toImage().pixelColor(0, 0), QColor(Qt::blue));
  QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(5, 5));
  EXPECT_EQ(clicks, 1);
  // Released away from the button: no click.
  QTest::mousePress(&button, Qt::LeftButton, {}, QPoint(5, 5));
  QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(50, 50));
  EXPECT_EQ(clicks, 1);
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(&button, &leave);
  EXPECT_EQ(button.ShownPicture().toImage().pixelColor(0, 0), QColor(Qt::red));
  button.SetEnabled(false);
  QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(5, 5));
  EXPECT_EQ(clicks, 1);
}

TEST(Button, ClicksByMouseAndKeyboardAndPaintsItsBackColour) {
  QWidget form;
  Button button(&form);
  EXPECT_EQ(button.BackColor(), 0x8000000Fu);
  EXPECT_TRUE(button.Picture().isNull());
  button.setGeometry(0, 0, 30, 30);
  button.SetBackColor(0x00FFFF);
  form.show();
  QStringList log;
  QObject::connect(&button, &Button::Click, [&] { log << "Click"; });
  QObject::connect(&button, &Button::MouseDown, [&](int b, int s, int x, int y) {
    log << QString("MouseDown %1 %2 %3 %4").arg(b).arg(s).arg(x).arg(y);
  });
  QObject::connect(&button, &Button::MouseUp, [&](int b, int, int, int) {
    log << QString("MouseUp %1").arg(b);
  });
  QTest::mouseClick(&button, Qt::LeftButton, Qt::ShiftModifier, QPoint(10, 20));
  QTest::keyClick(&button, Qt::Key_Space);
  QTest::mouseClick(&button, Qt::RightButton, {}, QPoint(10, 20));
  EXPECT_EQ(log.join(","), "MouseDown 1 1 150 300,MouseUp 1,Click,Click,MouseDown 2 0 150 300,MouseUp 2");
  EXPECT_EQ(button.grab().toImage().pixelColor(15, 15), QColor(255, 255, 0));
}

TEST(Labels, CaptionsStandLeftOrRightAndTheRuleTakesTheWidthOfItsPlace) {
  QWidget form;
  form.resize(300, 100);
  NewLabel2 label(&form);
  label.setGeometry(0, 0, 200, 20);
  label.SetBackColor(0xFFFFFF);
  label.SetCaption("1,234 files");
  auto inkColumns = [&] {
    const QImage image = label.grab().toImage();
    int first = -1, last = -1;
    for (int x = 0; x < image.width(); ++x)
      for (int y = 0; y < image.height(); ++y)
        if (image.pixelColor(x, y).lightness() < 128) {
          if (first < 0) first = x;
          last = x;
        }
    return std::make_pair(first, last);
  };
  EXPECT_LT(inkColumns().first, 6);
  label.SetRightAdjust(true);
  EXPECT_GT(inkColumns().second, 193);
  EXPECT_GT(inkColumns().first, 100);
  label.Resize();
  EXPECT_EQ(label.width(), QFontMetrics(label.font()).horizontalAdvance("1,234 files") + 4);
  EXPECT_EQ(label.height(), 20);

  Divider3D rule(&form);
  rule.move(10, 50);
  form.show();
  EXPECT_EQ(rule.geometry(), QRect(10, 50, 280, 2));
  form.resize(400, 100);
  EXPECT_EQ(rule.geometry(), QRect(10, 50, 380, 2));

  Headings heading(&form);
  EXPECT_EQ(heading.ForeColor(), 0x80000012u);
  EXPECT_EQ(heading.BackColor(), 0x8000000Fu);
}
