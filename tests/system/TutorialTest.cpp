#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QMenu>
#include <QScreen>
#include <QTest>

#include "controls/NewTabControl.h"
#include "core/AppState.h"
#include "core/DataFile.h"
#include "core/Database.h"
#include "core/Settings.h"
#include "core/WindowRegistry.h"
#include "platform/SoundPlayer.h"
#include "platform/SpeechEngine.h"
#include "platform/SpeechSynth.h"
#include "support/PulseServer.h"
#include "support/TestEnv.h"
#include "system/AgentBubble.h"
#include "system/AgentCharacter.h"
#include "system/AgentHelp.h"
#include "system/AgentModule.h"
#include "system/MixerModule.h"

namespace {

const QStringList Opening{
    "Show",
    "Play Greet",
    "Play RestPose",
    "Speak Greetings, my name is Merlin.",
    "Play DoMagic1",
    "Speak During the next few minutes, please allow me to take you on a tour of the Ostrand "
    "Vistrel program.",
    "Speak If you wish to exit the tour before the end of my presentation,",
    "Speak press the right button on your mouse while the pointer is on top of me, then click "
    "on 'Hide'.",
    "Speak To restart the tour, click on the button with the green question mark in the bottom, "
    "right corner of your screen,",
    "Speak or just press the F1 key.",
};
const QStringList Goodbye{"Speak Goodbye", "Play Wave", "Hide"};

class TutorialTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Agent().FastCharacter = true;
    App().AgentCharacterFile = testenv::BuildProgramFolder() + "/tutorial/Merlin.character";
    RegisterTutorialWindow();
    // The browser: 640 by 400 pixels, with its tabs.
    browser_ = new QWidget;
    browser_->resize(640, 400);
    tabs_ = new NewTabControl(browser_);
    tabs_->setObjectName("ThumbnailTabs");
    tabs_->SetTabs(4);
    Windows().Loaded(WindowId::Thumbnails, browser_);
  }
  void TearDown() override {
    Windows().Unload(WindowId::AgentHelp);
    ResetAgentModule();
    delete browser_;
    platform::SetSpeechDataPath({});
  }
  // The tour's rows in a fresh data file.
  void UseRows(const QList<QPair<int, QString>>& rows) {
    testenv::InstallDataFile();
    ASSERT_TRUE(OpenDataFile());
    Database& db = *App().DatabaseConnection;
    ASSERT_TRUE(db.Execute("DELETE FROM HelpFile"));
    for (const auto& [line, text] : rows) {
      platform::SqlStatement insert =
          db.Prepare("INSERT INTO HelpFile (HelpID, HelpLine, HelpText) VALUES ('Main', ?, ?)");
      insert.Bind(1, line);
      insert.Bind(2, text);
      ASSERT_TRUE(insert.Run());
    }
    ASSERT_TRUE(db.Execute("INSERT INTO HelpFile VALUES ('Other', 15, 'Not part of the tour.')"));
  }
  // Presses the help button and lets the whole tour play; what the
  // character did, up to his hiding.
  QStringList PlayWholeTour() {
    StartTutorialFromBar();
    QStringList log;
    AgentCharacter* merlin = Agent().TourCharacter;
    if (!merlin) return {"no character"};
    QObject::connect(merlin, &AgentCharacter::Hidden, [&log, merlin] { log = merlin->Log(); });
    EXPECT_TRUE(QTest::qWaitFor([] { return !Windows().IsLoaded(WindowId::AgentHelp); }));
    return log;
  }

  QWidget* browser_ = nullptr;
  NewTabControl* tabs_ = nullptr;
};

}  // namespace

TEST_F(TutorialTest, TheTourPlaysTheOpeningThenEachLineAfterItsMovesAndGestures) {
  QString longLine;
  while (longLine.size() < 2000) longLine += "Thumbnails show what a folder holds. ";
  longLine.truncate(2000);
  UseRows({{40, "Beside the thumbnails."},
           {10, "First line."},
           {41, ""},
           {33, "Only spoken."},
           {25, "Rest line."},
           {90, longLine}});
  tabs_->SetCurrentTab(3);

  QStringList expected = Opening;
  expected << "Play ReadContinued"
           << "Speak First line."
           << "Play RestPose"
           << "Speak Rest line."
           << "Speak Only spoken."
           << "MoveTo 485,138"
           << "Play RestPose"
           << "Speak Beside the thumbnails."
           << "MoveTo 528,10"
           << "Speak " + longLine;
  expected << Goodbye;
  EXPECT_EQ(PlayWholeTour(), expected);
  EXPECT_EQ(tabs_->CurrentTab(), 1);
  EXPECT_EQ(settings::GetSetting("MerlinShown"), "Yes");
  EXPECT_FALSE(Agent().TourRunning);
  // The host released him.
  EXPECT_TRUE(Agent().TourCharacter.isNull());
}

TEST_F(TutorialTest, WithoutTourLinesOnlyTheOpeningAndTheGoodbyeRemain) {
  UseRows({});
  QStringList expected = Opening;
  expected << "Play ReadContinued" << Goodbye;
  EXPECT_EQ(PlayWholeTour(), expected);

  // Without a data file at all the tour is the same.
  delete App().DatabaseConnection;
  App().DatabaseConnection = nullptr;
  EXPECT_EQ(PlayWholeTour(), expected);
}

TEST_F(TutorialTest, TheTourCountsAsShownFromItsStartAndTheUserCanHideHim) {
  UseRows({{10, "First line."}, {20, "Second line."}});
  StartTutorialFromBar();
  AgentCharacter* merlin = Agent().TourCharacter;
  ASSERT_TRUE(merlin);
  // The opening has been played, the body has only just begun, and yet the
  // tour counts as shown.
  EXPECT_EQ(merlin->Log(), Opening + QStringList{"Play ReadContinued"});
  EXPECT_EQ(settings::GetSetting("MerlinShown"), "Yes");

  QStringList log;
  QObject::connect(merlin, &AgentCharacter::Hidden, [&log, merlin] { log = merlin->Log(); });
  merlin->HideNow();
  EXPECT_TRUE(QTest::qWaitFor([] { return !Windows().IsLoaded(WindowId::AgentHelp); }));
  EXPECT_EQ(log, Opening + QStringList({"Play ReadContinued", "Hide"}));
  // No goodbye after the user's own "Hide": the close did not call him back.
  EXPECT_TRUE(Agent().TourCharacter.isNull());
}

TEST_F(TutorialTest, HelpWhileHeIsOnScreenSkipsTheOpeningAndQueuesTheTourAgain) {
  UseRows({{11, "A line."}});
  Windows().Load(WindowId::AgentHelp);
  // Started over another window: the opening only, and he stays.
  StartTutorial(nullptr);
  AgentCharacter* merlin = Agent().TourCharacter;
  ASSERT_TRUE(merlin);
  EXPECT_TRUE(Agent().MerlinVisible);
  EXPECT_EQ(settings::GetSetting("MerlinShown"), "");
  merlin->move(300, 200);

  QStringList log;
  QObject::connect(merlin, &AgentCharacter::Hidden, [&log, merlin] { log = merlin->Log(); });
  StartTutorialFromBar();
  EXPECT_EQ(merlin->pos(), QPoint(300, 200));  // not placed again
  EXPECT_TRUE(QTest::qWaitFor([] { return !Windows().IsLoaded(WindowId::AgentHelp); }));
  EXPECT_EQ(log, Opening + QStringList({"Play ReadContinued", "Speak A line."}) + Goodbye);
}

TEST_F(TutorialTest, HiddenCharacterOpensTheOptionsForANewUserElseTheBrowserComesForward) {
  UseRows({});
  int optionsLoaded = 0;
  Windows().SetLoader(WindowId::OptionsEntry, [&] {
    ++optionsLoaded;
    return new QWidget;
  });
  PlayWholeTour();
  ASSERT_EQ(optionsLoaded, 1);
  QWidget* options = Windows().Find(WindowId::OptionsEntry);
  ASSERT_TRUE(options);
  EXPECT_TRUE(options->isVisible());

  // The tour closes the options; a user who has saved them does not get them.
  settings::SaveSetting("Defined", "Yes");
  PlayWholeTour();
  EXPECT_EQ(optionsLoaded, 1);
  EXPECT_FALSE(Windows().IsLoaded(WindowId::OptionsEntry));
}

TEST_F(TutorialTest, SpeechIsRenderedToAWaveInMemoryAndFailsCleanlyWithoutAVoice) {
  const platform::SpokenLine line = platform::SynthesizeSpeech("Greetings, my name is Merlin.");
  const auto format = platform::ParseWave(line.Wave);
  ASSERT_TRUE(format.has_value());
  EXPECT_EQ(format->SampleRate, 22050);
  // The length told matches the samples.
  EXPECT_GT(line.DurationMs, 1000);
  EXPECT_EQ(format->DataLength / 2 * 1000 / 22050, line.DurationMs);
  EXPECT_TRUE(platform::SynthesizeSpeech("   ").Wave.isEmpty());

  // Without voice data the engine is not there for the help button, though
  // its library is loaded.
  EXPECT_TRUE(platform::SpeechEngineAvailable());
  platform::SetSpeechDataPath(testenv::Root() + "/no-such-folder");
  EXPECT_FALSE(platform::SpeechEngineAvailable());
  const platform::SpokenLine silent = platform::SynthesizeSpeech("Hello");
  EXPECT_TRUE(silent.Wave.isEmpty());
  EXPECT_EQ(silent.DurationMs, 0);
}

TEST_F(TutorialTest, WithoutAVoiceTheBubbleStillShowsTheLineForItsTime) {
  platform::SetSpeechDataPath(testenv::Root() + "/no-such-folder");
  AgentCharacter merlin("Merlin", App().AgentCharacterFile);
  merlin.Show();
  EXPECT_TRUE(merlin.Visible());
  merlin.Speak("Hello there.");
  merlin.MoveTo(40, 30);
  EXPECT_TRUE(QTest::qWaitFor([&] { return merlin.BubbleText() == "Hello there."; }));
  EXPECT_TRUE(QTest::qWaitFor([&] { return merlin.Idle(); }, 10000));
  EXPECT_EQ(merlin.BubbleText(), "");
  EXPECT_EQ(merlin.Log(), (QStringList{"Show", "Speak Hello there.", "MoveTo 40,30"}));

  // A long line goes into the bubble a page at a time, every word once.
  AgentBubble bubble(&merlin);
  QString text;
  for (int i = 1; i <= 300; ++i) text += QString("word%1 ").arg(i);
  const QStringList pages = bubble.SplitPages(text, 220, 6);
  EXPECT_GT(pages.size(), 3);
  EXPECT_EQ(pages.join(' '), text.trimmed());
}

TEST_F(TutorialTest, TheTutorialLiftsTheMuteAndRaisesASilencedVolume) {
  PulseServer server;
  if (!server.Running()) GTEST_SKIP() << "no private sound server";
  ASSERT_TRUE(OpenMixer(0));
  settings::SaveSetting("AlarmVolume", "40");
  ASSERT_TRUE(server.SetVolumePercent(0));
  ASSERT_TRUE(server.SetMuted(true));
  MakeTutorialAudible();
  EXPECT_EQ(server.VolumePercent(), 40);
  EXPECT_FALSE(server.Muted());

  // A volume above 0 stays; the mute is lifted all the same.
  ASSERT_TRUE(server.SetVolumePercent(25));
  ASSERT_TRUE(server.SetMuted(true));
  MakeTutorialAudible();
  EXPECT_EQ(server.VolumePercent(), 25);
  EXPECT_FALSE(server.Muted());
  CloseMixer();
}

TEST_F(TutorialTest, TheCharacterKeepsToTheScreenAndLeavesByHisMenu) {
  AgentCharacter merlin("Merlin", App().AgentCharacterFile);
  merlin.SetFast(true);
  const QRect area = merlin.screen()->availableGeometry();
  merlin.Show();
  // A place off the screen's edge is brought back inside it.
  merlin.MoveTo(area.left() - 35, area.top() - 80);
  merlin.MoveTo(area.right() + 500, area.bottom() + 500);
  merlin.Play("GestureLeft");
  merlin.Play("NoSuchAnimation");
  EXPECT_TRUE(QTest::qWaitFor([&] { return merlin.Idle(); }));
  EXPECT_EQ(merlin.pos(), QPoint(area.right() + 1 - 128, area.bottom() + 1 - 128));
  // An animation he does not have leaves him as he was.
  EXPECT_EQ(merlin.Frame(), "GestureLeft-2");

  // The right button's menu offers "Hide", the user's way out.
  int hidden = 0;
  QObject::connect(&merlin, &AgentCharacter::Hidden, [&] { ++hidden; });
  QString offered;
  QTimer::singleShot(50, [&] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (!menu) return;
    for (QAction* action : menu->actions()) offered += action->text();
    if (!menu->actions().isEmpty()) menu->actions().first()->trigger();
    menu->close();
  });
  QContextMenuEvent click(QContextMenuEvent::Mouse, QPoint(60, 60), merlin.mapToGlobal(QPoint(60, 60)));
  QApplication::sendEvent(&merlin, &click);
  EXPECT_EQ(offered, "Hide");
  EXPECT_TRUE(QTest::qWaitFor([&] { return hidden == 1; }));
  EXPECT_FALSE(merlin.Visible());
  EXPECT_EQ(merlin.Log().mid(5), QStringList{"Hide"});
}
