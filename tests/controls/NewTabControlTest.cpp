#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>
#include <QTest>
#include <utility>
#include <vector>

#include "controls/NewTabControl.h"
#include "controls/TabStripLayout.h"

namespace {

using Clicks = std::vector<std::pair<int, int>>;

// A control of 6000 x 1500 twips (400 x 100 pixels) with four tabs on a
// shown window, and what it raised.
struct Strip {
  QWidget window;
  NewTabControl& tabs = *new NewTabControl(&window);
  Clicks clicks;
  std::vector<std::array<int, 4>> downs;

  Strip() {
    tabs.SetTabs(4);
    tabs.setGeometry(0, 0, 400, 100);
    window.resize(400, 100);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
  }
  void Watch() {
    QObject::connect(&tabs, &NewTabControl::Click,
                     [this](qint16& now, qint16& before) { clicks.push_back({now, before}); });
    QObject::connect(&tabs, &NewTabControl::MouseDown,
                     [this](int b, int s, int x, int y) { downs.push_back({b, s, x, y}); });
  }
};

}  // namespace

TEST(TabStripLayout, EdgesRoundHalvesToEvenAndTheOutlineHasANotchAtEachEdge) {
  EXPECT_EQ(tabstrip::Edges(1000, 3), (std::array<int, 3>{333, 666, 999}));
  EXPECT_EQ(tabstrip::Edges(5, 2)[0], 2);  // 2.5
  EXPECT_EQ(tabstrip::Edges(7, 2)[0], 4);  // 3.5

  const auto outline = tabstrip::Outline(6000, 1500, tabstrip::Edges(6000, 3));
  const std::vector<QPoint> expected{{0, 0},       {0, 1425},    {75, 1500},   {1940, 1500},
                                     {2000, 1440}, {2060, 1500}, {3940, 1500}, {4000, 1440},
                                     {4060, 1500}, {5940, 1500}, {6000, 1440}, {6060, 1500},
                                     {5940, 1500}, {6000, 1440}, {6000, 0}};
  EXPECT_EQ(std::vector<QPoint>(outline.begin(), outline.end()), expected);
}

TEST(NewTabControl, LabelsAndWindowShapeFollowTheTabCount) {
  Strip s;
  EXPECT_EQ(s.tabs.Edges(), (std::array<int, 3>{1500, 3000, 4500}));
  // The notch at the first boundary is cut out of the window; the tab
  // beside it is not.
  EXPECT_FALSE(s.tabs.mask().contains(QPoint(100, 99)));
  EXPECT_TRUE(s.tabs.mask().contains(QPoint(90, 99)));
  EXPECT_TRUE(s.tabs.mask().contains(QPoint(100, 94)));

  // Three tabs: the change shows only after the next resize, and then the
  // fourth label lies beyond the right edge.
  s.tabs.SetTabs(3);
  EXPECT_EQ(s.tabs.Edges()[0], 1500);
  s.tabs.resize(401, 100);
  s.tabs.resize(400, 100);
  EXPECT_EQ(s.tabs.Edges(), (std::array<int, 3>{2000, 4000, 6000}));
  EXPECT_GE(s.tabs.CaptionLabel(4)->x(), s.tabs.width());
  EXPECT_FALSE(s.tabs.mask().contains(QPoint(133, 99)));
  EXPECT_TRUE(s.tabs.mask().contains(QPoint(100, 99)));
}

TEST(NewTabControl, TheSurfaceNeverSelectsTabFourButItsLabelDoes) {
  Strip s;
  s.Watch();
  // Above the strip: no tab, but the press is reported, in twips.
  QTest::mouseClick(&s.tabs, Qt::LeftButton, Qt::NoModifier, QPoint(350, 40));
  EXPECT_EQ(s.tabs.CurrentTab(), 0);
  // In the fourth tab's span, in the strip above its label: tab 3.
  QTest::mouseClick(&s.tabs, Qt::LeftButton, Qt::ShiftModifier, QPoint(350, 80));
  EXPECT_EQ(s.tabs.CurrentTab(), 3);
  // The fourth label itself: tab 4.
  QTest::mouseClick(s.tabs.CaptionLabel(4), Qt::LeftButton, Qt::NoModifier, QPoint(10, 5));
  EXPECT_EQ(s.tabs.CurrentTab(), 4);
  // A right press on the strip picks a tab as well; the boundary belongs to the tab on its right.
  QTest::mouseClick(&s.tabs, Qt::RightButton, Qt::NoModifier, QPoint(20, 80));
  EXPECT_EQ(s.tabs.CurrentTab(), 1);
  QTest::mouseClick(&s.tabs, Qt::LeftButton, Qt::NoModifier, QPoint(100, 80));
  EXPECT_EQ(s.tabs.CurrentTab(), 2);
  // A press on the current tab's strip sets nothing.
  QTest::mouseClick(&s.tabs, Qt::LeftButton, Qt::NoModifier, QPoint(130, 80));

  EXPECT_EQ(s.clicks, (Clicks{{3, 0}, {4, 3}, {1, 4}, {2, 1}}));
  EXPECT_EQ(s.downs, (std::vector<std::array<int, 4>>{{1, 0, 5250, 600},
                                                      {1, 1, 5250, 1200},
                                                      {1, 0, 4725, 1290},
                                                      {2, 0, 300, 1200},
                                                      {1, 0, 1500, 1200},
                                                      {1, 0, 1950, 1200}}));
}

TEST(NewTabControl, SettingTheCurrentTabAlwaysClicksAndHandlersMayChangeTheNewTab) {
  Strip s;
  s.Watch();
  s.tabs.SetCurrentTab(2);
  s.tabs.SetCurrentTab(2);
  // The label of the current tab clicks again too.
  QTest::mouseClick(s.tabs.CaptionLabel(2), Qt::LeftButton, Qt::NoModifier, QPoint(10, 5));

  // A handler that turns tab 3 into tab 1 makes 1 the current and previous tab.
  auto redirect = QObject::connect(&s.tabs, &NewTabControl::Click, [](qint16& now, qint16&) {
    if (now == 3) now = 1;
  });
  s.tabs.SetCurrentTab(3);
  QObject::disconnect(redirect);
  s.tabs.SetCurrentTab(4);
  EXPECT_EQ(s.clicks, (Clicks{{2, 0}, {2, 2}, {2, 2}, {3, 2}, {4, 1}}));
  EXPECT_EQ(s.tabs.CurrentTab(), 4);
}

TEST(NewTabControl, ADisabledControlAnswersNothingAndIgnoresClicksAndSetters) {
  Strip s;
  s.tabs.SetCaption(1, "Pictures");
  s.tabs.SetCurrentTab(2);
  s.Watch();

  s.tabs.SetEnabled(false);
  EXPECT_EQ(s.tabs.CurrentTab(), 0);
  EXPECT_EQ(s.tabs.Tabs(), 0);
  EXPECT_EQ(s.tabs.Caption(1), "");
  EXPECT_FALSE(s.tabs.ForeColor().isValid());
  EXPECT_FALSE(s.tabs.CaptionLabel(3)->isEnabled());
  QTest::mouseClick(&s.tabs, Qt::LeftButton, Qt::NoModifier, QPoint(20, 80));
  QTest::mouseClick(s.tabs.CaptionLabel(3), Qt::LeftButton, Qt::NoModifier, QPoint(10, 5));
  s.tabs.SetCurrentTab(1);
  s.tabs.SetCaption(1, "Videos");
  s.tabs.SetTabs(2);
  EXPECT_TRUE(s.clicks.empty());
  EXPECT_TRUE(s.downs.empty());

  s.tabs.SetEnabled(true);
  EXPECT_EQ(s.tabs.CurrentTab(), 2);
  EXPECT_EQ(s.tabs.Tabs(), 4);
  EXPECT_EQ(s.tabs.Caption(1), "Pictures");
  EXPECT_TRUE(s.tabs.CaptionLabel(3)->isEnabled());
}

TEST(NewTabControl, TheCurrentTabStaysOpenToThePageAndTheOthersAreClosed) {
  Strip s;
  NewTabControl& tabs = s.tabs;
  tabs.SetBackColor(QColor(238, 238, 238));
  const int stripTop = 80;  // (1500 - 300) / 15
  const QImage before = tabs.grab().toImage();
  // No tab yet: the strip's top line is not drawn at all.
  EXPECT_EQ(QColor(before.pixel(50, stripTop)), QColor(238, 238, 238));

  tabs.SetCurrentTab(2);
  const QImage image = tabs.grab().toImage();
  // The top line is black but over tab 2, which stays open, with two greys
  // below it; separators are black at the boundary, with greys each side.
  const std::pair<QPoint, int> greys[] = {
      {{50, stripTop}, 0},      {{50, stripTop - 1}, 90},  {{150, stripTop}, 238},
      {{250, stripTop}, 0},     {{200, stripTop + 5}, 0},  {{199, stripTop + 5}, 90},
      {{201, stripTop + 5}, 200}};
  for (const auto& [at, grey] : greys)
    EXPECT_EQ(QColor(image.pixel(at)), QColor(grey, grey, grey)) << at.x() << "," << at.y();

  // The gradient runs from grey 80 at the top to 238 near the strip.
  tabs.SetGradient(true);
  const QImage shaded = tabs.grab().toImage();
  EXPECT_EQ(QColor(shaded.pixel(50, 3)), QColor(80, 80, 80));
  EXPECT_GT(qGray(shaded.pixel(50, 70)), 200);
}
