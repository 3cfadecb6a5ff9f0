#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QImage>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>
#include <vector>

#include "controls/ScrollTrack.h"
#include "controls/ThumbnailScroll.h"
#include "controls/WheelNotchFilter.h"

namespace {

// A bar of 3000 twips (200 pixels) with values 0 to 9: a track of 2550
// twips, ten slots of 255, and a thumb of 255.
struct Bar {
  QWidget window;
  ThumbnailScroll* bar = new ThumbnailScroll(&window);
  std::vector<int> changes;

  explicit Bar(int max = 9) {
    window.resize(100, 220);
    bar->setGeometry(0, 0, 20, 200);
    bar->SetMax(max);
    QObject::connect(bar, &ThumbnailScroll::Change,
                     [this](qint16 value) { changes.push_back(value); });
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
  }
  void Press(int y) { QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, QPoint(10, y)); }
  void Move(int y) { QTest::mouseMove(bar, QPoint(10, y)); }
  void Release(int y) { QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, QPoint(10, y)); }
  // A wheel turn as the window system delivers it.
  void Wheel(int angleDelta) {
    QWheelEvent turn(QPointF(50, 50), QPointF(50, 50), QPoint(), QPoint(0, angleDelta),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(window.windowHandle(), &turn);
  }
};

}  // namespace

TEST(ScrollTrack, OverlappingSlotsGiveTheFirstThatHoldsThePointer) {
  using namespace scrolltrack;
  // Slots of 51 are narrower than the smallest thumb, 120.
  EXPECT_EQ(ThumbHeight(2550, 49), 120);
  EXPECT_EQ(ValueAt(300, 49, 3000, 2550, 120), 0);
  EXPECT_EQ(ValueAt(300, 49, 3000, 2550, 120, 0), 1);  // unless that is the value to pass over
  EXPECT_EQ(ValueAt(-400, 49, 3000, 2550, 120), 0);
  EXPECT_EQ(ValueAt(2655, 49, 3000, 2550, 120), 46);  // 46 to 48 all hold it
  EXPECT_EQ(ValueAt(2656, 49, 3000, 2550, 120), 49);
  // Slot boundaries with a thumb of exactly one slot: the start belongs.
  EXPECT_EQ(ValueAt(1499, 9, 3000, 2550, 255), 4);
  EXPECT_EQ(ValueAt(1500, 9, 3000, 2550, 255), 5);
}

TEST(WheelNotchFilter, SmallTurnsAddUpToWholeNotchesAndAReversalStartsAfresh) {
  int carry = 0;
  EXPECT_EQ(WheelNotchFilter::NotchesOf(-120, carry), 1);   // towards the user
  EXPECT_EQ(WheelNotchFilter::NotchesOf(240, carry), -2);   // away, fast
  EXPECT_EQ(WheelNotchFilter::NotchesOf(-60, carry), 0);
  EXPECT_EQ(WheelNotchFilter::NotchesOf(-70, carry), 1);
  EXPECT_EQ(carry, 10);
  EXPECT_EQ(WheelNotchFilter::NotchesOf(100, carry), 0);    // the 10 is dropped
  EXPECT_EQ(WheelNotchFilter::NotchesOf(20, carry), -1);
  EXPECT_EQ(carry, 0);
}

TEST(ThumbnailScroll, SizeIsForcedAndSettersClampAsDocumented) {
  Bar b;
  EXPECT_EQ(b.bar->width(), 20);
  b.bar->resize(20, 30);
  EXPECT_EQ(b.bar->height(), 57);  // 855 twips
  b.bar->resize(20, 200);

  b.bar->SetValue(20);
  b.bar->SetValue(20);
  b.bar->SetValue(-3);
  EXPECT_EQ(b.changes, (std::vector<int>{9, 0}));

  // Max leaves Value and the thumb's place alone; only the height follows.
  b.bar->SetValue(9);
  EXPECT_EQ(b.bar->ThumbTop(), 2520);
  b.bar->SetMax(3);
  EXPECT_EQ(b.bar->Value(), 9);
  EXPECT_EQ(b.bar->ThumbHeight(), 637);
  EXPECT_EQ(b.bar->ThumbTop(), 2520);
  b.bar->SetMax(-5);
  EXPECT_EQ(b.bar->Max(), 0);
}

TEST(ThumbnailScroll, ADraggedThumbReportsOnlyOnReleaseWithTheValueUnderThePointer) {
  Bar b;
  // Press on the thumb and drag it down: it follows, the value does not.
  b.Press(20);
  EXPECT_TRUE(b.bar->Dragging());
  EXPECT_EQ(b.bar->ThumbColor(), QColor(255, 128, 128));
  b.Move(60);
  EXPECT_EQ(b.bar->ThumbTop(), 225 + 600);
  b.Move(400);
  EXPECT_EQ(b.bar->ThumbTop(), 2520);  // held above the lower arrow
  EXPECT_EQ(b.bar->Value(), 0);
  EXPECT_TRUE(b.changes.empty());
  // Let go below the track: Max.
  b.Release(250);
  EXPECT_EQ(b.bar->Value(), 9);
  EXPECT_FALSE(b.bar->Dragging());
  EXPECT_EQ(b.bar->ThumbColor(), QColor(150, 150, 150));

  // Up again and let go above the track: 0.
  b.Press(180);
  b.Move(-50);
  EXPECT_EQ(b.bar->ThumbTop(), 225);
  b.Release(-50);
  EXPECT_EQ(b.changes, (std::vector<int>{9, 0}));
}

TEST(ThumbnailScroll, APressOnTheTrackJumpsAtOnceButReportsOnRelease) {
  Bar b;
  // 1500 twips is the start of slot 5: the thumb jumps there at the press.
  b.Press(100);
  EXPECT_EQ(b.bar->Value(), 5);
  EXPECT_EQ(b.bar->ThumbTop(), 1500);
  EXPECT_TRUE(b.changes.empty());
  b.Release(100);
  EXPECT_EQ(b.changes, (std::vector<int>{5}));

  // A press and release on the thumb without moving changes nothing.
  b.Press(105);
  b.Release(105);
  EXPECT_EQ(b.changes, (std::vector<int>{5}));

  // With Max 0 the value stays 0 whatever the gesture.
  Bar none(0);
  EXPECT_EQ(none.bar->ThumbHeight(), 2550);
  none.Press(100);
  none.Move(190);
  none.Release(190);
  none.Press(195);  // lower arrow
  none.Release(195);
  none.Wheel(-120);
  none.bar->TimerWheel_Timer();
  EXPECT_EQ(none.bar->Value(), 0);
  EXPECT_TRUE(none.changes.empty());
}

TEST(ThumbnailScroll, AHeldArrowStepsAtOnceRepeatsWhileStillAndReportsOnRelease) {
  Bar b;
  // At the end of the range an arrow shows the press but neither repeats
  // nor reports.
  b.Press(5);  // upper arrow at 0
  EXPECT_FALSE(b.bar->TimerUp().isActive());
  b.Release(5);

  b.bar->SetValue(3);
  b.Press(195);  // lower arrow
  EXPECT_EQ(b.bar->Value(), 4);
  EXPECT_TRUE(b.bar->TimerDown().isActive());
  b.bar->TimerDown_Timer();
  b.bar->TimerDown_Timer();
  EXPECT_EQ(b.bar->Value(), 6);
  EXPECT_EQ(b.bar->ThumbTop(), 6 * 255 + 225);
  EXPECT_EQ(b.changes, (std::vector<int>{3}));
  // The slightest move ends the repeat; the press holds.
  b.Move(194);
  EXPECT_FALSE(b.bar->TimerDown().isActive());
  b.Release(194);
  EXPECT_EQ(b.changes, (std::vector<int>{3, 6}));

  // The upper arrow, left over the track: still that arrow's release.
  b.Press(5);
  EXPECT_EQ(b.bar->Value(), 5);
  b.Release(100);
  EXPECT_FALSE(b.bar->TimerUp().isActive());
  EXPECT_EQ(b.changes, (std::vector<int>{3, 6, 5}));

  b.bar->SetValue(9);
  b.Press(195);  // lower arrow at Max
  EXPECT_FALSE(b.bar->TimerDown().isActive());
  b.Release(195);
  EXPECT_EQ(b.bar->Value(), 9);
  EXPECT_EQ(b.changes, (std::vector<int>{3, 6, 5, 9}));
}

TEST(ThumbnailScroll, WheelNotchesAnywhereStepByOneAndGiveOneReportAfterTheLast) {
  Bar b;
  EXPECT_TRUE(b.bar->MouseWheel());
  // Two notches towards the user, one of them a fast double, and one back.
  b.Wheel(-120);
  b.Wheel(-240);
  EXPECT_EQ(b.bar->Value(), 2);
  b.Wheel(120);
  QElapsedTimer sinceLast;
  sinceLast.start();
  EXPECT_EQ(b.bar->Value(), 1);
  EXPECT_TRUE(b.changes.empty());
  EXPECT_EQ(b.bar->TimerWheel().interval(), 500);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !b.changes.empty(); }));
  EXPECT_GE(sinceLast.elapsed(), 450);  // a coarse timer may fire 5 % early
  EXPECT_EQ(b.changes, (std::vector<int>{1}));
  EXPECT_FALSE(b.bar->TimerWheel().isActive());

  // A run that comes back to where it began reports nothing.
  b.Wheel(-120);
  b.Wheel(120);
  b.bar->TimerWheel_Timer();
  EXPECT_EQ(b.changes, (std::vector<int>{1}));

  // Switched off, the wheel does nothing.
  b.bar->SetMouseWheel(false);
  b.Wheel(-120);
  EXPECT_EQ(b.bar->Value(), 1);
  EXPECT_FALSE(b.bar->TimerWheel().isActive());
}
