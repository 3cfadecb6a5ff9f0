#include <gtest/gtest.h>

#include <QAction>
#include <QDir>
#include <QFile>

#include "platform/SettingsStore.h"
#include "platform/SiblingPrograms.h"
#include "platform/SystemMessage.h"
#include "shell/AppState.h"
#include "shell/Logo.h"
#include "shell/MainForm.h"
#include "shell/Settings.h"
#include "shell/SizeForm.h"
#include "shell/WindowRegistry.h"
#include "support/TestEnv.h"

namespace {

// Siblings and program starts as the test wants them; restored afterwards.
struct SiblingWorld {
  QStringList running;
  QStringList started;
  SiblingWorld() {
    platform::SetWindowFinder([this](const QString& caption) -> quint64 {
      return running.contains(caption) ? 77 : 0;
    });
    platform::SetProgramStarter([this](const QString& path, const QStringList&) {
      started << path;
      return true;
    });
  }
  ~SiblingWorld() {
    platform::SetWindowFinder({});
    platform::SetProgramStarter({});
  }
};

}  // namespace

TEST(MainForm, AMissingDataFileEndsTheStartWithItsMessageAndWritesNothing) {
  SiblingWorld world;
  QStringList messages;
  platform::SetSystemMessageSink([&](const QString& text, const QString&) { messages << text; });
  SizeForm sizeForm;
  MainForm form(&sizeForm);
  EXPECT_FALSE(form.MDIForm_Load());
  EXPECT_EQ(messages, QStringList({"The Vistrel data file is missing or corrupted!"}));
  EXPECT_FALSE(QFile::exists(platform::SettingsFilePath("Vistrel")));
  EXPECT_FALSE(QFile::exists(testenv::ProgramFolder() + "/Vistrel.VRD"));
}

TEST(MainForm, TheSplashStaysAwayWhenASiblingRuns) {
  testenv::InstallDataFile();
  SiblingWorld world;
  world.running << " Tintara";
  SizeForm sizeForm;
  MainForm form(&sizeForm);
  ASSERT_TRUE(form.MDIForm_Load());
  EXPECT_FALSE(App().SplashShown);
  EXPECT_EQ(App().PainterWindow, 77u);
  EXPECT_EQ(App().ViewerWindow, 0u);
  EXPECT_EQ(Logo::Instance(), nullptr);
  EXPECT_TRUE(world.started.isEmpty());
}

TEST(MainForm, AnArmedAlarmStartsTheViewerOnlyWhenItIsAbsent) {
  testenv::InstallDataFile();
  settings::SaveSetting("AlarmStatus", "On");
  settings::SaveSetting("ShowSplashScreen", "0");
  {
    SiblingWorld world;
    SizeForm sizeForm;
    MainForm form(&sizeForm);
    ASSERT_TRUE(form.MDIForm_Load());
    EXPECT_EQ(world.started, QStringList({App().ProgramFolder + "/Lorvane"}));
    EXPECT_FALSE(App().SplashShown);
  }
  {
    SiblingWorld world;
    world.running << " Lorvane";
    SizeForm sizeForm;
    MainForm form(&sizeForm);
    ASSERT_TRUE(form.MDIForm_Load());
    EXPECT_TRUE(world.started.isEmpty());
  }
}

TEST(MainForm, StartsListsTheDefaultFolderAndSavesItsPlaceAtTheClose) {
  testenv::InstallDataFile();
  SiblingWorld world;
  settings::SaveSetting("MainMaximized", "No");
  settings::SaveSetting("MainLeft", "-600");
  settings::SaveSetting("MainTop", "1500");
  settings::SaveSetting("MainWidth", "9000");
  settings::SaveSetting("MainHeight", "9000");
  SizeForm sizeForm;
  auto* form = new MainForm(&sizeForm);
  ASSERT_TRUE(form->MDIForm_Load());
  EXPECT_TRUE(App().SplashShown);  // no sibling runs and the splash is on
  form->show();
  form->MDIForm_Activate();
  EXPECT_EQ(form->frameGeometry(), QRect(0, 100, 640, 600));
  EXPECT_FALSE(App().SplashShown);
  EXPECT_TRUE(App().MainActivated);
  EXPECT_TRUE(Windows().IsLoaded("Thumbnails"));
  EXPECT_TRUE(Windows().IsLoaded("CommandBar"));
  EXPECT_EQ(App().CurrentFolder, testenv::ProgramFolder() + "/MyMedia");
  EXPECT_TRUE(QDir(testenv::ProgramFolder() + "/MyMedia").exists());

  // The command bar's popup menu offers the about box; the close takes it away.
  QWidget* bar = Windows().Find("CommandBar");
  ASSERT_EQ(bar->actions().size(), 1);
  EXPECT_EQ(bar->actions()[0]->text(), "About Vistrel");
  bar->actions()[0]->trigger();
  EXPECT_TRUE(Windows().IsLoaded("frmAbout"));

  EXPECT_TRUE(form->MDIForm_QueryUnload());
  EXPECT_TRUE(App().ShuttingDown);
  EXPECT_EQ(Windows().LoadedNames(), QStringList({"MainForm"}));
  EXPECT_EQ(settings::GetSetting("MainMaximized"), "No");
  EXPECT_EQ(settings::GetSetting("MainLeft"), "0");
  EXPECT_EQ(settings::GetSetting("MainTop"), "1500");
  EXPECT_EQ(settings::GetSetting("MainWidth"), "9600");
  EXPECT_EQ(settings::GetSetting("MainHeight"), "9000");
  delete form;
}
