#include <gtest/gtest.h>

#include "shell/WindowFit.h"

namespace {

MainFitStep Step(std::optional<int> width, std::optional<int> height, std::optional<int> left,
                 std::optional<int> top, bool refit) {
  return MainFitStep{width, height, left, top, refit};
}

}  // namespace

// One tick of the timer after a resize each: the window's outer rectangle,
// the work area, and the size the windows were last fitted to.
TEST(WindowFit, AfterAResizeTheMainWindowComesInsideTheWorkAreaOneTickAtATime) {
  const QRect shrunken(0, 0, 12000, 9000), tiny(0, 0, 8000, 6000);
  // A panel of 1500 twips on the left: the work area runs from 1500 to 13500.
  const QRect beside(1500, 600, 12000, 9000);
  const struct {
    const char* What;
    QRect Window, WorkArea;
    int LastWidth, LastHeight;
    MainFitStep Expected;
  } cases[] = {
      // Wider than a shrunken work area: only the width changes, and the
      // resize it raises brings the next tick.
      {"too wide", {1500, 900, 15000, 8000}, shrunken, 15000, 8000, Step(12000, {}, {}, {}, false)},
      // Then it hangs out on the right and moves in; its size is not the one
      // last fitted to, so every window is fitted again.
      {"hangs out", {1500, 900, 12000, 8000}, shrunken, 15000, 8000, Step({}, {}, 0, {}, true)},
      {"fitted", {0, 900, 12000, 8000}, shrunken, 12000, 8000, MainFitStep{}},
      // Height works the same way, after the width is right.
      {"hangs out below", {0, 600, 12000, 9000}, shrunken, 12000, 12000, Step({}, {}, {}, 0, true)},
      // Below the minimum: the width first, alone, then the height.
      {"below the minimum", {0, 0, 9000, 5000}, tiny, 9600, 6780, Step(9600, {}, {}, {}, false)},
      {"too low", {0, 0, 9600, 5000}, tiny, 9600, 6780, Step({}, 6780, {}, {}, false)},
      // Larger than a work area below the minimum: down to the minimum, not to it.
      {"high on a tiny area", {0, 0, 9600, 11000}, tiny, 9600, 11000, Step({}, 6780, {}, {}, false)},
      // At the minimum in the corner the window hangs out and nothing moves;
      // away from the corner it comes back to the work area's edge, no further.
      {"minimum in the corner", {0, 0, 9600, 6780}, tiny, 9600, 6780, MainFitStep{}},
      {"minimum off the corner", {450, 300, 9600, 6780}, tiny, 9600, 6780, Step({}, {}, 0, 0, false)},
      // A work area beside a panel is measured from its own edges.
      {"out beside a panel", {5000, 3000, 10500, 9000}, beside, 10500, 9000, Step({}, {}, 3000, 600, false)},
  };
  for (const auto& c : cases)
    EXPECT_EQ(MainFitAfterResize(c.Window, c.WorkArea, c.LastWidth, c.LastHeight), c.Expected) << c.What;
}

TEST(WindowFit, AChangedWorkAreaPutsTheMainWindowBackInside) {
  using S = MainWindowState;
  const QRect area(0, 0, 12000, 8000);
  const struct {
    const char* What;
    S State;
    QRect Window, WorkArea;
    WorkAreaFit Expected;
  } cases[] = {
      {"maximised: left alone", S::Maximised, {0, 0, 20000, 15000}, area,
       {S::Maximised, {0, 0, 20000, 15000}, false}},
      {"too large: to the corner, cut, fitted again", S::Normal, {3000, 1500, 15000, 7000}, area,
       {S::Normal, {0, 0, 12000, 7000}, true}},
      {"too high only: the width is kept", S::Minimised, {600, 600, 10000, 9000}, area,
       {S::Normal, {0, 0, 10000, 8000}, true}},
      {"hanging out: moves in, keeps its size", S::Normal, {6000, 4000, 9600, 6780}, area,
       {S::Normal, {2400, 1220, 9600, 6780}, false}},
      // Not too large, so it only moves, and not past the left edge.
      {"at the minimum on a tiny work area", S::Minimised, {900, 0, 9600, 6780}, {0, 0, 8000, 6000},
       {S::Normal, {0, 0, 9600, 6780}, false}},
      {"below a top panel: the work area's corner", S::Normal, {0, 0, 15000, 7000}, {0, 450, 12000, 8000},
       {S::Normal, {0, 450, 12000, 7000}, true}},
  };
  for (const auto& c : cases)
    EXPECT_EQ(FitToChangedWorkArea(c.State, c.Window, c.WorkArea), c.Expected) << c.What;
}

TEST(WindowFit, ViewersArePlacedAndSizedInsideTheBrowser) {
  const int width = 12000, height = 8000;  // the browser's width, the main window's client height
  EXPECT_EQ(PlacedViewerRect(QRect(-300, -60, 4000, 3000), width, height), QRect(0, 0, 4000, 3000));
  // Exactly at the margins it stays.
  EXPECT_EQ(PlacedViewerRect(QRect(7880, 5940, 4000, 2000), width, height), QRect(7880, 5940, 4000, 2000));
  EXPECT_EQ(PlacedViewerRect(QRect(7881, 5941, 4000, 2000), width, height), QRect(0, 0, 4000, 2000));

  // The width is cut to the browser's edge, the height 60 short of the client's.
  EXPECT_EQ(SizedFormRect(QRect(2000, 1000, 11000, 7000), width, height), QRect(2000, 1000, 10000, 6940));
  EXPECT_EQ(SizedFormRect(QRect(0, 0, 11880, 7940), width, height), QRect(0, 0, 11880, 7940));
  EXPECT_EQ(SizedFormRect(QRect(0, 0, 11881, 7941), width, height), QRect(0, 0, 12000, 7940));
}

TEST(WindowFit, TheFirstRunTimerOffersTheTutorialThenTheOptions) {
  auto run = [](bool character, bool speech, bool first, bool defined, bool shown) {
    return FirstRunTimerActions(FirstRunCheck{character, speech, first, defined, shown});
  };
  using A = FirstRunActions;
  // No character: no tutorial, no watch; a new user gets the options once.
  EXPECT_EQ(run(false, true, true, false, false), (A{false, false, false, true, false}));
  EXPECT_EQ(run(false, true, true, true, false), A{});
  // The character without a speech engine: the same, and the options window
  // is shown before its button is pressed.
  EXPECT_EQ(run(true, false, true, false, false), (A{false, false, true, true, false}));
  EXPECT_EQ(run(true, false, true, true, false), A{});
  // Both: the tutorial first and the options second, each until it has been
  // seen or saved; and the watch goes on.
  EXPECT_EQ(run(true, true, true, false, false), (A{true, true, false, true, true}));
  EXPECT_EQ(run(true, true, true, true, false), (A{true, true, false, false, true}));
  EXPECT_EQ(run(true, true, true, true, true), (A{true, false, false, false, true}));
  // Later ticks only keep the button enabled.
  EXPECT_EQ(run(true, true, false, false, false), (A{true, false, false, false, true}));
}
