#include <gtest/gtest.h>

#include <QImage>
#include <QTest>
#include <QWidget>

#include "controls/Button.h"
#include "controls/ButtonFlat.h"
#include "controls/NewImage.h"
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
  // 2 pixels of border each side and an 11-pixel thumb leave 100 pixels of
  // travel: one pixel to a value.
  slider.resize(115, 24);
  slider.show();
  QStringList log;
  QObject::connect(&slider, &NewSlider::Scroll,
                   [&](int v) { log << QString("Scroll %1 %2").arg(v).arg(slider.Scrolling()); });
  QObject::connect(&slider, &NewSlider::Change,
                   [&](int v) { log << QString("Change %1 %2").arg(v).arg(slider.Scrolling()); });

  QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(7, 12));
  EXPECT_TRUE(slider.Scrolling());
  Move(&slider, QPoint(37, 12), Qt::LeftButton);
  Move(&slider, QPoint(57, 30), Qt::LeftButton);  // off the control, still dragging
  EXPECT_TRUE(slider.Scrolling());
  Move(&slider, QPoint(57, 12), Qt::LeftButton);  // same value: no event
  QTest::mouseRelease(&slider, Qt::LeftButton, {}, QPoint(57, 12));
  EXPECT_FALSE(slider.Scrolling());
  EXPECT_EQ(log.join(","), "Scroll 30 1,Scroll 50 1,Change 50 0");

  // Dragged past the end, the thumb stops at Max; a click beside the thumb
  // steps by LargeChange.
  log.clear();
  QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(57, 12));
  Move(&slider, QPoint(400, 12), Qt::LeftButton);
  QTest::mouseRelease(&slider, Qt::LeftButton, {}, QPoint(400, 12));
  slider.SetLargeChange(10);
  QTest::mouseClick(&slider, Qt::LeftButton, {}, QPoint(5, 12));
  EXPECT_EQ(log.join(","), "Scroll 100 1,Change 100 0,Change 90 0");
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

  // A picture given by the caller is taken as it is, and stretched.
  QImage small(4, 3, QImage::Format_RGB32);
  small.fill(Qt::blue);
  EXPECT_TRUE(cell.LoadFile(path, &small));
  EXPECT_EQ(cell.Image().toImage().pixelColor(39, 29), QColor(Qt::blue));

  // Drawing stays until Cls; the picture stays after it.
  cell.PaintPicture(Filled(Qt::red), QRect(0, 0, 10, 10));
  EXPECT_EQ(cell.Image().toImage().pixelColor(5, 5), QColor(Qt::red));
  cell.Cls();
  EXPECT_EQ(cell.Image().toImage().pixelColor(5, 5), QColor(Qt::blue));

  cell.LoadDeleted(Filled(Qt::yellow));
  EXPECT_EQ(cell.Image().toImage().pixelColor(20, 15), QColor(Qt::yellow));
  EXPECT_TRUE(cell.LoadFile());
  EXPECT_TRUE(cell.Picture().isNull());
}

TEST(ButtonFlat, ShowsThePictureOfItsStateAndClicksOnReleaseOverIt) {
  QWidget form;
  ButtonFlat button(&form);
  button.setGeometry(0, 0, 20, 20);
  form.show();
  button.SetPicture(Filled(Qt::red));
  button.SetHoverPicture(Filled(Qt::green));
  button.SetClickPicture(Filled(Qt::blue));
  const auto shown = [&] { return button.ShownPicture().toImage().pixelColor(0, 0); };
  QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), button.mapToGlobal(QPointF(5, 5)));
  QApplication::sendEvent(&button, &enter);
  EXPECT_EQ(shown(), QColor(Qt::green));
  int clicks = 0;
  QObject::connect(&button, &ButtonFlat::Click, [&] { ++clicks; });
  QTest::mousePress(&button, Qt::LeftButton, {}, QPoint(5, 5));
  EXPECT_EQ(shown(), QColor(Qt::blue));
  QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(5, 5));
  // Released away from the button, or disabled: no click.
  QTest::mousePress(&button, Qt::LeftButton, {}, QPoint(5, 5));
  QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(50, 50));
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(&button, &leave);
  EXPECT_EQ(shown(), QColor(Qt::red));
  button.SetEnabled(false);
  QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(5, 5));
  EXPECT_EQ(clicks, 1);
}

TEST(Button, ClicksByMouseAndKeyboardAndPaintsItsBackColour) {
  QWidget form;
  Button button(&form);
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
