#include <gtest/gtest.h>

#include <QFile>

#include "platform/SettingsStore.h"
#include "core/AppState.h"
#include "core/Settings.h"
#include "support/TestEnv.h"

TEST(Settings, AbsentOrUnreadableValuesGiveTheDefaultAndSavedOnesAreReadAgainAtEachUse) {

  settings::SaveSetting("SortOrder", "3");
  settings::SaveTrueFalse("SortDescending", true);
  EXPECT_EQ(settings::GetInt("SortOrder", 1), 3);
  EXPECT_EQ(settings::GetSetting("SortDescending"), "True");

  // Another program of the family writes the same file; the next read sees it.
  platform::SaveSetting("Vistrel", "Settings", "AlarmStatus", "Armed");
  EXPECT_EQ(settings::GetSetting("AlarmStatus", "Off"), "Armed");
  EXPECT_TRUE(QFile::exists(testenv::Root() + "/config/Vistrel/Vistrel.ini"));

  // Unreadable numbers fall back to the default.
  settings::SaveSetting("ThumbnailSize", "large");
  EXPECT_EQ(settings::GetInt("ThumbnailSize", 1440), 1440);
}
