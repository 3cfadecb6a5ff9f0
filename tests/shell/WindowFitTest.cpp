#include <gtest/gtest.h>

#include "shell/WindowFit.h"

namespace {

MainFitStep Step(std::optional<int> width, std::optional<int> height, std::optional<int> left,
                 std::optional<int> top, bool refit) {
  return MainFitStep{width, height, left, top, refit};
}

}  // namespace

TEST(WindowFit, AWindowWiderThanAShrunkenWorkAreaShrinksOneTickAtATimeThenRefits) {
  const QRect workArea(0, 0, 12000, 9000);
  // Tick 1: only the width changes; the resize it raises brings tick 2.
  EXPECT_EQ(MainFitAfterResize(QRect(1500, 900, 15000, 8000), workArea, 15000, 8000),
            Step(12000, {}, {}, {}, false));
  // Tick 2: the window now hangs out on the right and moves in; its size is
  // not the one last fitted to, so every window is fitted again.
  EXPECT_EQ(MainFitAfterResize(QRect(1500, 900, 12000, 8000), workArea, 15000, 8000),
            Step({}, {}, 0, {}, true));
  // Tick 3, after the refit stored the size: nothing left to do.
  EXPECT_EQ(MainFitAfterResize(QRect(0, 900, 12000, 8000), workArea, 12000, 8000), MainFitStep{});

  // Height works the same way, after the width is right.
  EXPECT_EQ(MainFitAfterResize(QRect(0, 600, 12000, 12000), workArea, 12000, 12000),
            Step({}, 9000, {}, {}, false));
  EXPECT_EQ(MainFitAfterResize(QRect(0, 600, 12000, 9000), workArea, 12000, 12000),
            Step({}, {}, {}, 0, true));
}

TEST(WindowFit, TheMinimumSizeStandsAgainstAnySmallerWorkArea) {
  const QRect tiny(0, 0, 8000, 6000);
  // Below the minimum: the width first, alone, then the height.
  EXPECT_EQ(MainFitAfterResize(QRect(0, 0, 9000, 5000), tiny, 9600, 6780),
            Step(9600, {}, {}, {}, false));
  EXPECT_EQ(MainFitAfterResize(QRect(0, 0, 9600, 5000), tiny, 9600, 6780),
            Step({}, 6780, {}, {}, false));
  // Larger than a work area below the minimum: down to the minimum, not to it.
  EXPECT_EQ(MainFitAfterResize(QRect(0, 0, 14000, 6780), tiny, 14000, 6780),
            Step(9600, {}, {}, {}, false));
  EXPECT_EQ(MainFitAfterResize(QRect(0, 0, 9600, 11000), tiny, 9600, 11000),
            Step({}, 6780, {}, {}, false));
  // At the minimum in the corner the window hangs out and nothing moves.
  EXPECT_EQ(MainFitAfterResize(QRect(0, 0, 9600, 6780), tiny, 9600, 6780), MainFitStep{});
  // Away from the corner it comes back to the work area's edge, no further.
  EXPECT_EQ(MainFitAfterResize(QRect(450, 300, 9600, 6780), tiny, 9600, 6780),
            Step({}, {}, 0, 0, false));
}

TEST(WindowFit, AWorkAreaBesideAPanelIsMeasuredFromItsOwnEdges) {
  // A panel of 1500 twips on the left: the work area runs from 1500 to 13500.
  const QRect workArea(1500, 600, 12000, 9000);
  EXPECT_EQ(MainFitAfterResize(QRect(3000, 600, 10500, 9000), workArea, 10500, 9000),
            MainFitStep{});
  EXPECT_EQ(MainFitAfterResize(QRect(5000, 3000, 10500, 9000), workArea, 10500, 9000),
            Step({}, {}, 3000, 600, false));
}

TEST(WindowFit, AChangedWorkAreaPutsTheMainWindowBackInside) {
  const QRect workArea(0, 0, 12000, 8000);
  // Maximised: left alone, whatever the work area.
  EXPECT_EQ(FitToChangedWorkArea(MainWindowState::Maximised, QRect(0, 0, 20000, 15000), workArea),
            (WorkAreaFit{MainWindowState::Maximised, QRect(0, 0, 20000, 15000), false}));
  // Too large: to the corner, cut to the work area, and fitted again.
  EXPECT_EQ(FitToChangedWorkArea(MainWindowState::Normal, QRect(3000, 1500, 15000, 7000), workArea),
            (WorkAreaFit{MainWindowState::Normal, QRect(0, 0, 12000, 7000), true}));
  // Too high only: the width is kept.
  EXPECT_EQ(FitToChangedWorkArea(MainWindowState::Minimised, QRect(600, 600, 10000, 9000),
                                 workArea),
            (WorkAreaFit{MainWindowState::Normal, QRect(0, 0, 10000, 8000), true}));
  // Hanging out but not too large: it moves in and keeps its size.
  EXPECT_EQ(FitToChangedWorkArea(MainWindowState::Normal, QRect(6000, 4000, 9600, 6780), workArea),
            (WorkAreaFit{MainWindowState::Normal, QRect(2400, 1220, 9600, 6780), false}));
  // At the minimum, wider than a tiny work area: not too large, so it only
  // moves, and not past the work area's left edge.
  EXPECT_EQ(FitToChangedWorkArea(MainWindowState::Minimised, QRect(900, 0, 9600, 6780),
                                 QRect(0, 0, 8000, 6000)),
            (WorkAreaFit{MainWindowState::Normal, QRect(0, 0, 9600, 6780), false}));
  // A work area below a top panel: the corner is the work area's.
  EXPECT_EQ(FitToChangedWorkArea(MainWindowState::Normal, QRect(0, 0, 15000, 7000),
                                 QRect(0, 450, 12000, 8000)),
            (WorkAreaFit{MainWindowState::Normal, QRect(0, 450, 12000, 7000), true}));
}

TEST(WindowFit, ViewersArePlacedAndSizedInsideTheBrowser) {
  const int browserWidth = 12000;
  const int clientHeight = 8000;
  EXPECT_EQ(PlacedViewerRect(QRect(-300, -60, 4000, 3000), browserWidth, clientHeight),
            QRect(0, 0, 4000, 3000));
  EXPECT_EQ(PlacedViewerRect(QRect(9000, 6000, 3000, 2000), browserWidth, clientHeight),
            QRect(0, 0, 3000, 2000));
  // Exactly at the margins it stays.
  EXPECT_EQ(PlacedViewerRect(QRect(7880, 5940, 4000, 2000), browserWidth, clientHeight),
            QRect(7880, 5940, 4000, 2000));
  EXPECT_EQ(PlacedViewerRect(QRect(7881, 5941, 4000, 2000), browserWidth, clientHeight),
            QRect(0, 0, 4000, 2000));

  // The width is cut to the browser's edge, the height 60 short of the client's.
  EXPECT_EQ(SizedFormRect(QRect(2000, 1000, 11000, 7000), browserWidth, clientHeight),
            QRect(2000, 1000, 10000, 6940));
  EXPECT_EQ(SizedFormRect(QRect(0, 0, 11880, 7940), browserWidth, clientHeight),
            QRect(0, 0, 11880, 7940));
  EXPECT_EQ(SizedFormRect(QRect(0, 0, 11881, 7941), browserWidth, clientHeight),
            QRect(0, 0, 12000, 7940));
}

TEST(WindowFit, TheFirstRunTimerOffersTheTutorialThenTheOptions) {
  auto run = [](bool character, bool speech, bool first, bool defined, bool shown) {
    return FirstRunTimerActions(FirstRunCheck{character, speech, first, defined, shown});
  };
  using A = FirstRunActions;
  // No character: no tutorial, no watch; a new user gets the options once.
  EXPECT_EQ(run(false, true, true, false, false), (A{false, false, false, true, false}));
  EXPECT_EQ(run(false, true, true, true, false), A{});
  EXPECT_EQ(run(false, false, false, false, false), A{});
  // The character without a speech engine: the same, and the options window
  // is shown before its button is pressed.
  EXPECT_EQ(run(true, false, true, false, false), (A{false, false, true, true, false}));
  EXPECT_EQ(run(true, false, true, true, false), A{});
  // Both: the tutorial first and the options second, each until it has been
  // seen or saved; and the watch goes on.
  EXPECT_EQ(run(true, true, true, false, false), (A{true, true, false, true, true}));
  EXPECT_EQ(run(true, true, true, false, true), (A{true, false, false, true, true}));
  EXPECT_EQ(run(true, true, true, true, false), (A{true, true, false, false, true}));
  EXPECT_EQ(run(true, true, true, true, true), (A{true, false, false, false, true}));
  // Later ticks only keep the button enabled.
  EXPECT_EQ(run(true, true, false, false, false), (A{true, false, false, false, true}));
}
