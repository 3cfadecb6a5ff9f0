#include <gtest/gtest.h>

#include <QCheckBox>
#include <QPainter>
#include <QRadioButton>
#include <QTest>
#include <QWidget>

#include "controls/PaintRoutines.h"
#include "controls/RadioButton.h"
#include "controls/TransCheck.h"
#include "controls/TransFrame.h"
#include "controls/TransRadio.h"

namespace {

// A form painted with the program's gradient in a start colour of choice.
struct GradientForm : QWidget {
  int level = 255;
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    PaintFormGradient(painter, size(), level, level, level, 1);
  }
};

QColor PixelOf(QWidget* widget, QPoint at) { return widget->grab().toImage().pixelColor(at); }

}  // namespace

TEST(TransCheck, PassesOnTheInnerBoxsEventsInOrderAndValueFollowsClicksAndCode) {
  GradientForm form;
  form.resize(200, 60);
  TransCheck check(&form);
  check.setObjectName("TransCheck1");
  EXPECT_EQ(check.Check1()->text(), "TransCheck1");  // the name is the first caption
  check.setGeometry(0, 0, 150, 24);
  form.show();
  QStringList log;
  QObject::connect(&check, &TransCheck::KeyDown,
                   [&](int k, int s) { log << QString("KeyDown %1 %2").arg(k).arg(s); });
  QObject::connect(&check, &TransCheck::KeyPress,
                   [&](int a) { log << QString("KeyPress %1").arg(a); });
  QObject::connect(&check, &TransCheck::KeyUp,
                   [&](int k, int s) { log << QString("KeyUp %1 %2").arg(k).arg(s); });
  QObject::connect(&check, &TransCheck::MouseDown, [&](int b, int s, int x, int y) {
    log << QString("MouseDown %1 %2 %3 %4").arg(b).arg(s).arg(x).arg(y);
  });
  QObject::connect(&check, &TransCheck::MouseUp, [&](int b, int s, int x, int y) {
    log << QString("MouseUp %1 %2 %3 %4").arg(b).arg(s).arg(x).arg(y);
  });
  QObject::connect(&check, &TransCheck::Click, [&] { log << "Click"; });

  QTest::keyClick(check.Check1(), Qt::Key_A);
  QTest::mouseClick(check.Check1(), Qt::LeftButton, Qt::ControlModifier, QPoint(8, 10));
  EXPECT_EQ(log.join(" | "),
            "KeyDown 65 0 | KeyPress 97 | KeyUp 65 0 | MouseDown 1 2 120 150 | "
            "MouseUp 1 2 120 150 | Click");
  EXPECT_EQ(check.Value(), 1);

  log.clear();
  QTest::mouseClick(check.Check1(), Qt::LeftButton, {}, QPoint(8, 12));
  EXPECT_EQ(check.Value(), 0);
  check.SetValue(2);
  EXPECT_EQ(check.Check1()->checkState(), Qt::PartiallyChecked);
  check.SetValue(2);  // no change, no Click
  // A click on a greyed box clears it.
  QTest::mouseClick(check.Check1(), Qt::LeftButton, {}, QPoint(8, 12));
  EXPECT_EQ(check.Value(), 0);
  EXPECT_EQ(log.filter("Click").size(), 3);
}

TEST(TransparentControls, TheFormsBackgroundShowsThroughUntilBackStyleOne) {
  GradientForm form;
  form.resize(200, 170);  // 2 pixels to a band
  TransCheck check(&form);
  check.setGeometry(10, 100, 180, 30);
  check.SetCaption("x");
  TransFrame frame(&form);
  frame.setGeometry(10, 20, 180, 60);
  frame.SetCaption("");
  form.show();

  // Far right of the check box and the middle of the frame: nothing but
  // the gradient, band 51 and band 26.
  const QPoint inCheck(185, 110), inFrame(100, 50);
  EXPECT_EQ(PixelOf(&form, inCheck), QColor(255 - 3 * 56, 255 - 3 * 56, 255 - 3 * 56));
  EXPECT_EQ(PixelOf(&form, inFrame), QColor(255 - 3 * 26, 255 - 3 * 26, 255 - 3 * 26));
  // A new gradient shows through at once.
  form.level = 200;
  form.update();
  EXPECT_EQ(PixelOf(&form, inCheck), QColor(200 - 3 * 56, 200 - 3 * 56, 200 - 3 * 56));

  // The frame's border in the shadow colour on its left edge, until hidden.
  const QPoint onBorder(10, 20 + frame.CaptionRect().height() / 2 + 10);
  const QRgb shadow = ColorFromOle(0x80000010).rgb();
  EXPECT_EQ(PixelOf(&form, onBorder).rgb(), shadow);
  frame.SetBorderStyle(0);
  EXPECT_NE(PixelOf(&form, onBorder).rgb(), shadow);

  check.SetBackStyle(1);
  check.SetBackColor(0x00FF00);
  frame.SetBackStyle(1);
  frame.SetBackColor(0xFF0000);
  EXPECT_EQ(PixelOf(&form, inCheck), QColor(0, 255, 0));
  EXPECT_EQ(PixelOf(&form, inFrame), QColor(0, 0, 255));
}

TEST(TransRadio, OptionButtonsOfOneParentFormAGroup) {
  GradientForm form;
  form.resize(200, 100);
  TransRadio a(&form), b(&form), c(&form);
  a.setGeometry(0, 0, 100, 24);
  b.setGeometry(0, 30, 100, 24);
  c.setGeometry(0, 60, 100, 24);
  form.show();
  QStringList clicks;
  QObject::connect(&a, &TransRadio::Click, [&] { clicks << "a"; });
  QObject::connect(&b, &TransRadio::Click, [&] { clicks << "b"; });
  QObject::connect(&c, &TransRadio::Click, [&] { clicks << "c"; });

  a.SetValue(true);
  QTest::mouseClick(b.Option1(), Qt::LeftButton, {}, QPoint(8, 12));
  EXPECT_FALSE(a.Value());
  EXPECT_TRUE(b.Value());
  // A click on the chosen button keeps it chosen and raises nothing.
  QTest::mouseClick(b.Option1(), Qt::LeftButton, {}, QPoint(8, 12));
  c.SetValue(true);
  EXPECT_FALSE(a.Value() || b.Value());
  EXPECT_EQ(clicks.join(","), "a,b,c");
}

TEST(RadioButton, ClickChoosesItAndClearsItsSiblings) {
  QWidget form;
  form.resize(100, 50);
  RadioButton a(&form), b(&form);
  a.setGeometry(0, 0, 15, 15);
  b.setGeometry(20, 0, 15, 15);
  form.show();
  EXPECT_FALSE(a.Value());
  QStringList log;
  QObject::connect(&a, &RadioButton::Click, [&] { log << "a"; });
  QObject::connect(&b, &RadioButton::Click, [&] { log << "b"; });

  QTest::mouseClick(&a, Qt::LeftButton);
  QTest::mouseClick(&b, Qt::LeftButton);
  EXPECT_FALSE(a.Value());
  EXPECT_TRUE(b.Value());
  QTest::mouseClick(&b, Qt::LeftButton);  // already chosen
  b.SetEnabled(false);
  a.SetEnabled(false);
  QTest::mouseClick(&a, Qt::LeftButton);
  EXPECT_FALSE(a.Value());
  EXPECT_EQ(log.join(","), "a,b");
}
