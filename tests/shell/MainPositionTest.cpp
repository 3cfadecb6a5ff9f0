#include <gtest/gtest.h>

#include "shell/MainPosition.h"
#include "core/Settings.h"

namespace {
const QRect WorkArea(0, 0, 19200, 14400);  // 1280 x 960 pixels
const QStringList PlaceKeys = {"MainLeft", "MainTop", "MainWidth", "MainHeight"};

void SavePlace(const QStringList& values) {
  for (int i = 0; i < PlaceKeys.size(); ++i) settings::SaveSetting(PlaceKeys[i], values[i]);
}
// MainMaximized, then the place.
QStringList SavedPlace() {
  QStringList values = {settings::GetSetting("MainMaximized")};
  for (const QString& key : PlaceKeys) values << settings::GetSetting(key);
  return values;
}
}  // namespace

TEST(MainPosition, DefaultsCentreTheSmallestWindowAndSavedValuesAreRaisedToTheLimits) {
  EXPECT_EQ(RestoredMainRect(WorkArea), QRect(4800, 3810, 9600, 6780));
  SavePlace({"-300", "450", "9000", "8000"});
  EXPECT_EQ(RestoredMainRect(WorkArea), QRect(0, 450, 9600, 8000));
  SavePlace({"-300", "-1", "12000", "100"});
  EXPECT_EQ(RestoredMainRect(WorkArea), QRect(0, 0, 12000, 6780));
}

TEST(MainPosition, AMaximisedWindowKeepsItsNormalPlaceAndANormalOneSavesItsOwn) {
  SavePlace({"150", "300", "10000", "7000"});
  SaveMainPosition(MainWindowState::Maximised, MainWindowState::Maximised,
                   QRect(0, 0, 19200, 14400), 19200, 14400, WorkArea);
  EXPECT_EQ(SavedPlace(), QStringList({"Yes", "150", "300", "10000", "7000"}));

  // A normal window saves its place and at most the work area.
  SaveMainPosition(MainWindowState::Normal, MainWindowState::Normal,
                   QRect(-120, 600, 25000, 8000), 25000, 8000, WorkArea);
  EXPECT_EQ(SavedPlace(), QStringList({"No", "0", "600", "19200", "8000"}));

  // Closed while minimised: the place is not taken from the icon.
  settings::SaveSetting("MainLeft", "900");
  SaveMainPosition(MainWindowState::Normal, MainWindowState::Minimised,
                   QRect(-32000, -32000, 2400, 400), 9900, 7200, WorkArea);
  EXPECT_EQ(SavedPlace(), QStringList({"No", "900", "600", "9900", "7200"}));
}
