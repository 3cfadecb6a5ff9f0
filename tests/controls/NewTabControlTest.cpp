#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>
#include <QTest>
#include <vector>

#include "controls/NewTabControl.h"
#include "controls/TabStripLayout.h"

namespace {

struct ClickLog {
  std::vector<std::pair<int, int>> clicks;
  std::vector<std::array<int, 4>> downs;
  void Watch(NewTabControl& tabs) {
    QObject::connect(&tabs, &NewTabControl::Click,
                     [this](qint16& now, qint16& before) { clicks.push_back({now, before}); });
    QObject::connect(&tabs, &NewTabControl::MouseDown, [this](int b, int s, int x, int y) {
      downs.push_back({b, s, x, y});
    });
  }
};

// A control of 6000 x 1500 twips (400 x 100 pixels) on a shown window.
void ShowSized(QWidget& window, NewTabControl& tabs, int tabCount) {
  tabs.setParent(&window);
  tabs.SetTabs(static_cast<qint16>(tabCount));
  tabs.setGeometry(0, 0, 400, 100);
  window.resize(400, 100);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
}

}  // namespace

TEST(TabStripLayout, EdgesRoundHalvesToEvenAndTheOutlineHasANotchAtEachEdge) {
  EXPECT_EQ(tabstrip::Edges(6000, 4), (std::array<int, 3>{1500, 3000, 4500}));
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

TEST(TabStripLayout, TheSurfaceMapsTheStripToTabsOneToThreeOnly) {
  const auto edges = tabstrip::Edges(6000, 4);
  EXPECT_EQ(tabstrip::SurfaceTabAt(100, 1199, 1500, edges), 0);  // above the strip
  EXPECT_EQ(tabstrip::SurfaceTabAt(100, 1200, 1500, edges), 1);
  EXPECT_EQ(tabstrip::SurfaceTabAt(1499, 1400, 1500, edges), 1);
  EXPECT_EQ(tabstrip::SurfaceTabAt(1500, 1400, 1500, edges), 2);
  EXPECT_EQ(tabstrip::SurfaceTabAt(3000, 1400, 1500, edges), 2);
  EXPECT_EQ(tabstrip::SurfaceTabAt(3001, 1400, 1500, edges), 3);
  EXPECT_EQ(tabstrip::SurfaceTabAt(5900, 1400, 1500, edges), 3);
}

TEST(NewTabControl, LabelsAndWindowShapeFollowTheTabCount) {
  QWidget window;
  auto& tabs = *new NewTabControl;
  ShowSized(window, tabs, 4);
  EXPECT_EQ(tabs.Edges(), (std::array<int, 3>{1500, 3000, 4500}));
  // Labels 285 twips above the bottom, 75 in from each tab, 120 narrower.
  EXPECT_EQ(tabs.CaptionLabel(1)->geometry(), QRect(5, 81, 92, 17));
  EXPECT_EQ(tabs.CaptionLabel(4)->geometry(), QRect(305, 81, 92, 17));
  // The notch at the first boundary is cut out of the window; the tab
  // beside it is not.
  EXPECT_FALSE(tabs.mask().contains(QPoint(100, 99)));
  EXPECT_TRUE(tabs.mask().contains(QPoint(90, 99)));
  EXPECT_TRUE(tabs.mask().contains(QPoint(100, 94)));

  // Three tabs: the change shows only after the next resize, and then the
  // fourth label lies beyond the right edge.
  tabs.SetTabs(3);
  EXPECT_EQ(tabs.Edges()[0], 1500);
  tabs.resize(401, 100);
  tabs.resize(400, 100);
  EXPECT_EQ(tabs.Edges(), (std::array<int, 3>{2000, 4000, 6000}));
  EXPECT_GE(tabs.CaptionLabel(4)->x(), tabs.width());
  EXPECT_FALSE(tabs.mask().contains(QPoint(133, 99)));
  EXPECT_TRUE(tabs.mask().contains(QPoint(100, 99)));
}

TEST(NewTabControl, TheSurfaceNeverSelectsTabFourButItsLabelDoes) {
  QWidget window;
  auto& tabs = *new NewTabControl;
  ShowSized(window, tabs, 4);
  ClickLog log;
  log.Watch(tabs);

  // Above the strip: no tab, but the press is reported, in twips.
  QTest::mouseClick(&tabs, Qt::LeftButton, Qt::NoModifier, QPoint(350, 40));
  EXPECT_EQ(tabs.CurrentTab(), 0);
  // In the fourth tab's span, in the strip above its label: tab 3.
  QTest::mouseClick(&tabs, Qt::LeftButton, Qt::ShiftModifier, QPoint(350, 80));
  EXPECT_EQ(tabs.CurrentTab(), 3);
  // The fourth label itself: tab 4.
  QTest::mouseClick(tabs.CaptionLabel(4), Qt::LeftButton, Qt::NoModifier, QPoint(10, 5));
  EXPECT_EQ(tabs.CurrentTab(), 4);
  // A right press on the strip picks a tab as well.
  QTest::mouseClick(&tabs, Qt::RightButton, Qt::NoModifier, QPoint(20, 80));
  EXPECT_EQ(tabs.CurrentTab(), 1);
  // A press on the current tab's strip sets nothing.
  QTest::mouseClick(&tabs, Qt::LeftButton, Qt::NoModifier, QPoint(30, 80));

  EXPECT_EQ(log.clicks, (std::vector<std::pair<int, int>>{{3, 0}, {4, 3}, {1, 4}}));
  EXPECT_EQ(log.downs, (std::vector<std::array<int, 4>>{{1, 0, 5250, 600},
                                                        {1, 1, 5250, 1200},
                                                        {1, 0, 4725, 1290},
                                                        {2, 0, 300, 1200},
                                                        {1, 0, 450, 1200}}));
}

TEST(NewTabControl, SettingTheCurrentTabAlwaysClicksAndHandlersMayChangeTheNewTab) {
  QWidget window;
  auto& tabs = *new NewTabControl;
  ShowSized(window, tabs, 4);
  ClickLog log;
  log.Watch(tabs);
  tabs.SetCurrentTab(2);
  tabs.SetCurrentTab(2);
  // The label of the current tab clicks again too.
  QTest::mouseClick(tabs.CaptionLabel(2), Qt::LeftButton, Qt::NoModifier, QPoint(10, 5));

  // A handler that turns tab 3 into tab 1 makes 1 the current and previous tab.
  auto redirect = QObject::connect(&tabs, &NewTabControl::Click, [](qint16& now, qint16&) {
    if (now == 3) now = 1;
  });
  tabs.SetCurrentTab(3);
  QObject::disconnect(redirect);
  tabs.SetCurrentTab(4);
  EXPECT_EQ(log.clicks,
            (std::vector<std::pair<int, int>>{{2, 0}, {2, 2}, {2, 2}, {3, 2}, {4, 1}}));
  EXPECT_EQ(tabs.CurrentTab(), 4);
}

TEST(NewTabControl, ADisabledControlAnswersNothingAndIgnoresClicksAndSetters) {
  QWidget window;
  auto& tabs = *new NewTabControl;
  ShowSized(window, tabs, 4);
  tabs.SetCaption(1, "Pictures");
  tabs.SetCurrentTab(2);
  ClickLog log;
  log.Watch(tabs);

  tabs.SetEnabled(false);
  EXPECT_EQ(tabs.CurrentTab(), 0);
  EXPECT_EQ(tabs.Tabs(), 0);
  EXPECT_EQ(tabs.Caption(1), "");
  EXPECT_FALSE(tabs.ForeColor().isValid());
  EXPECT_FALSE(tabs.CaptionLabel(3)->isEnabled());
  QTest::mouseClick(&tabs, Qt::LeftButton, Qt::NoModifier, QPoint(20, 80));
  QTest::mouseClick(tabs.CaptionLabel(3), Qt::LeftButton, Qt::NoModifier, QPoint(10, 5));
  tabs.SetCurrentTab(1);
  tabs.SetCaption(1, "Videos");
  tabs.SetTabs(2);
  EXPECT_TRUE(log.clicks.empty());
  EXPECT_TRUE(log.downs.empty());

  tabs.SetEnabled(true);
  EXPECT_EQ(tabs.CurrentTab(), 2);
  EXPECT_EQ(tabs.Tabs(), 4);
  EXPECT_EQ(tabs.Caption(1), "Pictures");
  EXPECT_TRUE(tabs.CaptionLabel(3)->isEnabled());
}

TEST(NewTabControl, CaptionsCannotBeClearedAndGradientLocksTheBackColour) {
  NewTabControl tabs;
  tabs.SetCaption(1, "Pictures (12)");
  tabs.SetCaption(1, "");
  EXPECT_EQ(tabs.Caption(1), "Pictures (12)");
  tabs.SetCaption(1, "Pictures");
  EXPECT_EQ(tabs.CaptionLabel(1)->text(), "Pictures");
  EXPECT_EQ(tabs.Caption(0), "");
  EXPECT_EQ(tabs.Caption(5), "");

  tabs.SetBackColor(QColor(10, 20, 30));
  EXPECT_EQ(tabs.BackColor(), QColor(10, 20, 30));
  tabs.SetGradient(true);
  tabs.SetBackColor(QColor(200, 0, 0));
  EXPECT_EQ(tabs.BackColor(), QColor(10, 20, 30));
  tabs.SetGradient(false);
  tabs.SetBackColor(QColor());  // back to the system's button face
  EXPECT_EQ(tabs.BackColor(), QApplication::palette().color(QPalette::Button));
  tabs.SetTabs(0);
  EXPECT_EQ(tabs.Tabs(), 3);
}

TEST(NewTabControl, TheCurrentTabStaysOpenToThePageAndTheOthersAreClosed) {
  QWidget window;
  auto& tabs = *new NewTabControl;
  ShowSized(window, tabs, 4);
  tabs.SetBackColor(QColor(238, 238, 238));
  const int stripTop = 80;  // (1500 - 300) / 15
  QImage before = tabs.grab().toImage();
  // No tab yet: the strip's top line is not drawn at all.
  EXPECT_EQ(QColor(before.pixel(50, stripTop)), QColor(238, 238, 238));
  EXPECT_EQ(QColor(before.pixel(250, stripTop)), QColor(238, 238, 238));

  tabs.SetCurrentTab(2);
  QImage image = tabs.grab().toImage();
  EXPECT_EQ(QColor(image.pixel(50, stripTop)), QColor(Qt::black));
  EXPECT_EQ(QColor(image.pixel(50, stripTop - 1)), QColor(90, 90, 90));
  EXPECT_EQ(QColor(image.pixel(50, stripTop - 2)), QColor(130, 130, 130));
  EXPECT_EQ(QColor(image.pixel(150, stripTop)), QColor(238, 238, 238));  // tab 2: open
  EXPECT_EQ(QColor(image.pixel(250, stripTop)), QColor(Qt::black));
  EXPECT_EQ(QColor(image.pixel(350, stripTop)), QColor(Qt::black));
  // Separators: black at the boundary, the greys on each side.
  EXPECT_EQ(QColor(image.pixel(200, stripTop + 5)), QColor(Qt::black));
  EXPECT_EQ(QColor(image.pixel(199, stripTop + 5)), QColor(90, 90, 90));
  EXPECT_EQ(QColor(image.pixel(198, stripTop + 5)), QColor(130, 130, 130));
  EXPECT_EQ(QColor(image.pixel(201, stripTop + 5)), QColor(200, 200, 200));
  EXPECT_EQ(QColor(image.pixel(202, stripTop + 5)), QColor(180, 180, 180));

  // The gradient runs from grey 80 at the top to 238 near the strip.
  tabs.SetGradient(true);
  QImage shaded = tabs.grab().toImage();
  EXPECT_EQ(QColor(shaded.pixel(50, 3)), QColor(80, 80, 80));
  EXPECT_GT(qGray(shaded.pixel(50, 70)), 200);
}
