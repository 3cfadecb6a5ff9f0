#include <gtest/gtest.h>

#include "viewers/PlayerRules.h"

namespace {

TEST(PlayerRulesTest, SliderStepsGrowWithTheLength) {
  // Seconds (the audio viewer).
  EXPECT_EQ(SliderStep(9, 1), 3);
  EXPECT_EQ(SliderStep(10, 1), 2);
  EXPECT_EQ(SliderStep(29, 1), 6);
  EXPECT_EQ(SliderStep(225, 1), 22);  // 22.5: the half goes to the even side
  // Hundredths (the video viewer).
  EXPECT_EQ(SliderStep(600, 100), 200);
  EXPECT_EQ(SliderStep(4500, 100), 450);
}

TEST(PlayerRulesTest, TheFilmWindowStaysInsideTheBrowser) {
  // A film of 640 x 360 pixels (9600 x 5400 twips) at the browser's corner.
  FilmWindow window = FilmWindowSize(9600, 5400, 0, 0, 6300, 19200, 12800, 300);
  EXPECT_EQ(window.Width, 9690);
  EXPECT_EQ(window.Height, 7035);
  // Wider than the browser from where the window stands: to its right edge.
  window = FilmWindowSize(28800, 16200, 1500, 600, 6300, 19200, 12800, 300);
  EXPECT_EQ(window.Width, 17700);
  EXPECT_EQ(window.Height, 12200);
}

}  // namespace
