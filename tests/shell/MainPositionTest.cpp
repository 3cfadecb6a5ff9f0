#include <gtest/gtest.h>

#include "shell/MainPosition.h"
#include "core/Settings.h"

namespace {
const QRect WorkArea(0, 0, 19200, 14400);  // 1280 x 960 pixels
}

TEST(MainPosition, DefaultsCentreTheSmallestWindowAndSavedValuesAreRaisedToTheLimits) {
  EXPECT_EQ(RestoredMainRect(WorkArea), QRect(4800, 3810, 9600, 6780));
  settings::SaveSetting("MainLeft", "-300");
  settings::SaveSetting("MainTop", "450");
  settings::SaveSetting("MainWidth", "9000");
  settings::SaveSetting("MainHeight", "8000");
  EXPECT_EQ(RestoredMainRect(WorkArea), QRect(0, 450, 9600, 8000));

  settings::SaveSetting("MainTop", "-1");
  settings::SaveSetting("MainHeight", "100");
  settings::SaveSetting("MainWidth", "12000");
  EXPECT_EQ(RestoredMainRect(WorkArea), QRect(0, 0, 12000, 6780));
}

TEST(MainPosition, AMaximisedWindowKeepsItsNormalPlaceAndANormalOneSavesItsOwn) {
  settings::SaveSetting("MainLeft", "150");
  settings::SaveSetting("MainTop", "300");
  settings::SaveSetting("MainWidth", "10000");
  settings::SaveSetting("MainHeight", "7000");
  SaveMainPosition(MainWindowState::Maximised, MainWindowState::Maximised,
                   QRect(0, 0, 19200, 14400), 19200, 14400, WorkArea);
  EXPECT_EQ(settings::GetSetting("MainMaximized"), "Yes");
  EXPECT_EQ(settings::GetSetting("MainLeft"), "150");
  EXPECT_EQ(settings::GetSetting("MainTop"), "300");
  EXPECT_EQ(settings::GetSetting("MainWidth"), "10000");
  EXPECT_EQ(settings::GetSetting("MainHeight"), "7000");

  // A normal window saves its place and at most the work area.
  SaveMainPosition(MainWindowState::Normal, MainWindowState::Normal,
                   QRect(-120, 600, 25000, 8000), 25000, 8000, WorkArea);
  EXPECT_EQ(settings::GetSetting("MainMaximized"), "No");
  EXPECT_EQ(settings::GetSetting("MainLeft"), "0");
  EXPECT_EQ(settings::GetSetting("MainTop"), "600");
  EXPECT_EQ(settings::GetSetting("MainWidth"), "19200");
  EXPECT_EQ(settings::GetSetting("MainHeight"), "8000");

  // Closed while minimised: the place is not taken from the icon.
  settings::SaveSetting("MainLeft", "900");
  SaveMainPosition(MainWindowState::Normal, MainWindowState::Minimised,
                   QRect(-32000, -32000, 2400, 400), 9900, 7200, WorkArea);
  EXPECT_EQ(settings::GetSetting("MainLeft"), "900");
  EXPECT_EQ(settings::GetSetting("MainWidth"), "9900");
  EXPECT_EQ(settings::GetSetting("MainHeight"), "7200");
}
