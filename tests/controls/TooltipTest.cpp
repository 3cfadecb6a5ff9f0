#include <gtest/gtest.h>

#include <QApplication>
#include <QCoreApplication>
#include <QEvent>
#include <QHelpEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QTest>
#include <QWidget>

#include "controls/BalloonHelp.h"
#include "controls/hTooltip.h"

TEST(hTooltip, KeepsOneTextPerToolOnlyAfterCreateAndShowsItWithItsColours) {
  QWidget form;
  QWidget first(&form), control(&form);
  control.resize(40, 20);
  hTooltip tips;
  EXPECT_FALSE(tips.AddTool(&first, "ignored"));
  EXPECT_EQ(tips.hWnd(), nullptr);

  ASSERT_TRUE(tips.Create(&form));
  EXPECT_TRUE(tips.AddTool(&first, "One"));
  EXPECT_TRUE(tips.AddTool(&first, "First"));
  EXPECT_EQ(tips.ToolText(&first), "First");
  tips.RemoveTool(&first);
  // A text is not given to a control that has no tool.
  tips.SetToolText(&first, "Back");
  EXPECT_EQ(tips.ToolCount(), 0);
  {
    QWidget gone(&form);
    tips.AddTool(&gone, "Short-lived");
    EXPECT_EQ(tips.ToolCount(), 1);
  }
  EXPECT_EQ(tips.ToolCount(), 0);

  tips.SetBackColor(0x00FFCC00);  // blue 255, green 204, red 0
  tips.SetMaxTipWidth(120);
  tips.AddTool(&control, "A rather long line of help that has to wrap\r\nSecond line");
  form.show();
  tips.ShowTool(&control);
  auto* window = qobject_cast<QLabel*>(tips.hWnd());
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(tips.ShownText(), "A rather long line of help that has to wrap\nSecond line");
  EXPECT_EQ(window->palette().color(QPalette::Window), QColor(0, 204, 255));
  EXPECT_LE(window->width(), 120);
  // -1, signed or not, puts the tooltip colour back.
  for (const qint64 none : {qint64(-1), qint64(0xFFFFFFFF)}) {
    tips.SetBackColor(0x00FFCC00);
    tips.SetBackColor(none);
    EXPECT_EQ(window->palette().color(QPalette::Window),
              QApplication::palette().color(QPalette::ToolTipBase)) << none;
  }
  tips.RemoveTool(&control);
  EXPECT_FALSE(window->isVisible());
}

TEST(hTooltip, TheTipComesWithTheMouseAndGoesWithIt) {
  QWidget form;
  QWidget control(&form);
  control.resize(40, 20);
  // Away from where the pointer stands, so that only the events sent here
  // reach the control.
  form.move(400, 300);
  form.show();
  hTooltip tips;
  ASSERT_TRUE(tips.Create(&form));
  tips.DelayTime(0);
  tips.AddTool(&control, "Hover help");

  // The control's own tooltip event is taken, so no second tip shows.
  QHelpEvent help(QEvent::ToolTip, QPoint(5, 5), control.mapToGlobal(QPoint(5, 5)));
  EXPECT_TRUE(QCoreApplication::sendEvent(&control, &help));

  QEvent enter(QEvent::Enter);
  QCoreApplication::sendEvent(&control, &enter);
  EXPECT_TRUE(QTest::qWaitFor([&] { return tips.ShownText() == "Hover help"; }));
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(&control, &leave);
  EXPECT_EQ(tips.ShownText(), "");

  // A press while the tip waits keeps it away: the wait of no time at all
  // that the mouse's coming started would be over at the next events.
  QCoreApplication::sendEvent(&control, &enter);
  QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5), control.mapToGlobal(QPointF(5, 5)),
                    Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&control, &press);
  for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
  EXPECT_EQ(tips.ShownText(), "");
}

TEST(BalloonHelp, KeepsATitleAndTextPerControlAndShowsThemTogether) {
  QWidget form;
  QWidget first(&form), second(&form);
  form.show();
  BalloonHelp balloons;
  balloons.SetBalloon(&first, "Click here to mute or unmute\r\nthe computer's speakers", "Mute");
  balloons.SetBalloon(&second, "Text", "Title");
  balloons.SetBalloon(&second, "Other text", "Other title");  // one balloon per control
  EXPECT_EQ(balloons.Count(), 2);
  EXPECT_EQ(balloons.TextOf(&second), "Other text");

  EXPECT_EQ(BalloonHelp::PopupText("a < b\r\nc & d", "T\"x\""),
            "<p style=\"white-space:pre\"><b>T&quot;x&quot;</b><br>a &lt; b<br>c &amp; d</p>");

  balloons.Show(&first);
  EXPECT_EQ(balloons.Shown(), &first);
  balloons.RemoveBalloon(&first);
  EXPECT_EQ(balloons.Shown(), nullptr);
  balloons.Show(&first);
  EXPECT_EQ(balloons.Shown(), nullptr);
  {
    QWidget gone(&form);
    balloons.SetBalloon(&gone, "x", "y");
  }
  EXPECT_EQ(balloons.Count(), 1);
}
