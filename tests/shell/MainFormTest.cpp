#include <gtest/gtest.h>

#include <QAction>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QTest>
#include <functional>
#include <memory>

#include "browser/Thumbnails.h"
#include "controls/Button.h"
#include "controls/MessageBox.h"
#include "controls/MsgBoxEnhanced.h"
#include "controls/ThumbnailScroll.h"

#include "platform/SettingsStore.h"
#include "platform/SiblingPrograms.h"
#include "platform/SpeechEngine.h"
#include "platform/SystemMessage.h"
#include "core/AppState.h"
#include "shell/CommandBar.h"
#include "shell/Logo.h"
#include "shell/MainForm.h"
#include "core/Settings.h"
#include "shell/SizeForm.h"
#include "core/WindowRegistry.h"
#include "support/MessageBoxAnswer.h"
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

// Lets events run until the condition holds; false if it never does.
bool RunUntil(const std::function<bool()>& condition) {
  QDeadlineTimer deadline(10000);
  while (!condition()) {
    if (deadline.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  }
  return true;
}

// A main window loaded, shown and activated once, without splash, with a
// user who has saved the options and seen the tutorial.
std::unique_ptr<MainForm> StartedMainForm(SizeForm& sizeForm) {
  testenv::InstallDataFile();
  settings::SaveSetting("ShowSplashScreen", "0");
  settings::SaveSetting("MainMaximized", "No");
  settings::SaveSetting("Defined", "Yes");
  settings::SaveSetting("MerlinShown", "Yes");
  auto form = std::make_unique<MainForm>(&sizeForm);
  if (!form->MDIForm_Load()) return nullptr;
  form->show();
  form->MDIForm_Activate();
  return form;
}

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

TEST(MainForm, ARunningSiblingKeepsTheSplashAwayAndAnArmedAlarmStartsTheViewerOnlyWhenAbsent) {
  testenv::InstallDataFile();
  settings::SaveSetting("AlarmStatus", "On");
  {
    SiblingWorld world;
    world.running << " Tintara" << " Lorvane";
    SizeForm sizeForm;
    MainForm form(&sizeForm);
    ASSERT_TRUE(form.MDIForm_Load());
    EXPECT_FALSE(App().SplashShown);
    EXPECT_EQ(App().PainterWindow, 77u);
    EXPECT_EQ(Logo::Instance(), nullptr);
    EXPECT_TRUE(world.started.isEmpty());
  }
  settings::SaveSetting("ShowSplashScreen", "0");
  SiblingWorld world;
  SizeForm sizeForm;
  MainForm form(&sizeForm);
  ASSERT_TRUE(form.MDIForm_Load());
  EXPECT_EQ(world.started, QStringList({App().ProgramFolder + "/Lorvane"}));
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
  EXPECT_TRUE(Windows().IsLoaded(WindowId::Thumbnails));
  EXPECT_EQ(App().CurrentFolder, testenv::ProgramFolder() + "/MyMedia");
  EXPECT_TRUE(QDir(testenv::ProgramFolder() + "/MyMedia").exists());

  // The command bar's popup menu offers the about box; the close takes it away.
  QWidget* bar = Windows().Find(WindowId::CommandBar);
  ASSERT_EQ(bar->actions().size(), 1);
  EXPECT_EQ(bar->actions()[0]->text(), "About Vistrel");
  bar->actions()[0]->trigger();
  EXPECT_TRUE(Windows().IsLoaded(WindowId::frmAbout));

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

TEST(MainForm, TheFirstRunTimerWatchesOnlyWhileTheTutorialCanBeOffered) {
  SiblingWorld world;
  bool speech = true;
  platform::SetSpeechEngineProbe([&speech] { return speech; });
  SizeForm sizeForm;
  auto form = StartedMainForm(sizeForm);
  ASSERT_TRUE(form);
  auto* bar = Windows().Get<CommandBar>();
  ASSERT_TRUE(bar);

  // The tutorial's character lives in the program folder; until it is
  // there, one tick per activation, then the timer stays off.
  EXPECT_EQ(App().AgentCharacterFile, testenv::ProgramFolder() + "/tutorial/Merlin.character");
  form->StartTimer1();
  EXPECT_EQ(form->Timer1.interval(), 300);
  ASSERT_TRUE(RunUntil([&] { return !form->FirstTimerRun; }));
  EXPECT_FALSE(form->Timer1.isActive());
  EXPECT_EQ(form->Timer1.interval(), 60000);
  EXPECT_FALSE(bar->HelpButton->isEnabled());

  // The character and the speech engine: the button comes on and the watch
  // goes on every minute.
  testenv::MakeFile(App().AgentCharacterFile, "character");
  form->StartTimer1();
  form->Timer1_Timer();
  EXPECT_TRUE(bar->HelpButton->isEnabled());
  EXPECT_TRUE(form->Timer1.isActive());
  EXPECT_EQ(form->Timer1.interval(), 60000);

  // The speech engine gone: the button goes off and the watch ends.
  speech = false;
  form->Timer1_Timer();
  EXPECT_FALSE(bar->HelpButton->isEnabled());
  EXPECT_FALSE(form->Timer1.isActive());

  platform::SetSpeechEngineProbe({});
  EXPECT_TRUE(form->MDIForm_QueryUnload());
}

TEST(MainForm, TheWheelPagesTheBrowserOnlyWhileTheBrowserIsInFront) {
  SiblingWorld world;
  SizeForm sizeForm;
  auto form = StartedMainForm(sizeForm);
  ASSERT_TRUE(form);
  form->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
  auto* browser = Windows().Get<Thumbnails>();
  ASSERT_TRUE(browser);
  ThumbnailScroll* bar = browser->VScroll[size_t(browser->CurrentTab() - 1)];
  ASSERT_TRUE(bar->MouseWheel());

  // The about box in front: the browser is deactivated; back to the main
  // window, activated again.
  form->ShowAbout();
  EXPECT_TRUE(QTest::qWaitFor([bar] { return !bar->MouseWheel(); }));
  Windows().Unload(WindowId::frmAbout);
  form->activateWindow();
  EXPECT_TRUE(QTest::qWaitFor([bar] { return bar->MouseWheel(); }));

  // The same for the message box, while it is up.
  bool wheelWhileBoxUp = true;
  testenv::WhenMessageBoxShown([&wheelWhileBoxUp, bar](MessageBox& box) {
    wheelWhileBoxUp = bar->MouseWheel();
    QTest::mouseClick(box.MsgButton[0], Qt::LeftButton);
  });
  App().MsgBox->MsgBox("Sure?", 0, "Vistrel");
  EXPECT_FALSE(wheelWhileBoxUp);
  form->activateWindow();
  EXPECT_TRUE(QTest::qWaitFor([bar] { return bar->MouseWheel(); }));

  EXPECT_TRUE(form->MDIForm_QueryUnload());
}

TEST(MainForm, AResizeRefitsTheBrowserKeepingTheTabAndEachItemsPage) {
  SiblingWorld world;
  const QString media = testenv::ProgramFolder() + "/MyMedia";
  for (int i = 0; i < 300; ++i) {
    testenv::MakeFile(media + QString("/clip%1.avi").arg(i, 3, 10, QChar('0')), QByteArray());
    testenv::MakeFile(media + QString("/song%1.mp3").arg(i, 3, 10, QChar('0')), QByteArray());
  }
  SizeForm sizeForm;
  auto form = StartedMainForm(sizeForm);
  ASSERT_TRUE(form);
  auto* browser = Windows().Get<Thumbnails>();
  ASSERT_TRUE(browser);
  ASSERT_EQ(browser->Tab(AudiosTab).Count, 300);
  const int smallPage = browser->Tab(AudiosTab).PageSize;
  ASSERT_LT(smallPage, 100);

  // Videos in front on its first page; the audios on a later page.
  browser->SetCurrentTab(VideosTab);
  browser->ShowItemPage(VideosTab, 1);
  browser->ShowItemPage(AudiosTab, 250);
  ASSERT_EQ(App().CurrentAudio(), 250);
  App().RefitDone = false;

  // A larger window: after the burst the timer fits everything again.
  const int widthBefore = form->OuterTwips().width();
  form->resize(form->width() + 100, form->height() + 100);
  ASSERT_TRUE(RunUntil([] { return App().RefitDone; }));
  EXPECT_FALSE(App().RefitInProgress);
  EXPECT_NE(form->LastWidth, widthBefore);
  EXPECT_EQ(form->LastWidth, form->OuterTwips().width());
  EXPECT_EQ(form->LastHeight, form->OuterTwips().height());
  const TabState& audios = browser->Tab(AudiosTab);
  ASSERT_GT(audios.PageSize, smallPage);
  EXPECT_EQ(browser->CurrentTab(), VideosTab);
  EXPECT_EQ(browser->VScroll[AudiosTab - 1]->Value(), 250 / audios.PageSize);
  EXPECT_LE(audios.PageFirst, 250);
  EXPECT_GE(audios.PageLast, 250);
  EXPECT_EQ(browser->VScroll[VideosTab - 1]->Value(), 0);

  // The item in front beyond the first page of the new size: a new listing,
  // which starts every tab at its first page; a pending file survives.
  browser->SetCurrentTab(AudiosTab);
  browser->ShowItemPage(AudiosTab, 250);
  App().PendingFile = media + "/song250.mp3";
  form->RefitAllWindows();
  EXPECT_EQ(browser->CurrentTab(), AudiosTab);
  EXPECT_EQ(browser->VScroll[AudiosTab - 1]->Value(), 0);
  EXPECT_EQ(App().PendingFile, media + "/song250.mp3");
  EXPECT_TRUE(App().RefitDone);

  EXPECT_TRUE(form->MDIForm_QueryUnload());
}
