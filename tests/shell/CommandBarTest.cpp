#include <gtest/gtest.h>
#include <signal.h>

#include <QAccessible>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <functional>

#include "browser/BrowserFixture.h"
#include "browser/Thumbnails.h"
#include "catalogue/MediaTypes.h"
#include "controls/BalloonHelp.h"
#include "controls/Button.h"
#include "controls/MessageBox.h"
#include "controls/NewSlider.h"
#include "controls/ThumbnailScroll.h"
#include "fileops/ChooseDirectory.h"
#include "platform/CdDevices.h"
#include "platform/KeyCodes.h"
#include "platform/SiblingPrograms.h"
#include "platform/SoundFont.h"
#include "core/AppState.h"
#include "shell/CommandBar.h"
#include "shell/SharedMessageBox.h"
#include "core/Settings.h"
#include "core/WindowRegistry.h"
#include "support/MessageBoxAnswer.h"
#include "support/DesktopWorld.h"
#include "support/PulseServer.h"
#include "support/TestEnv.h"
#include "system/MixerModule.h"

namespace {

constexpr int F1 = keys::F1, F2 = keys::F1 + 1, F6 = keys::F1 + 5, F7 = keys::F1 + 6,
              F8 = keys::F1 + 7;

// Runs the action, answering the message box it shows with OK; the box's
// "title: text".
QString BoxAfter(const std::function<void()>& action) {
  QString told;
  testenv::WhenMessageBoxShown([&told](MessageBox& form) {
    told = form.TopCaption->text() + ": " + form.MsgText->text();
    QTest::mouseClick(form.MsgButton[0], Qt::LeftButton);
  });
  action();
  return told;
}

bool SameImage(const QPixmap& a, const QPixmap& b) { return a.toImage() == b.toImage(); }

// The process of a test's sound server, from the pid file it keeps in its
// runtime folder beside its socket; 0 when there is none.
qint64 DaemonPid(const PulseServer& server) {
  QString folder = server.Address().mid(int(qstrlen("unix:")));
  folder.chop(int(qstrlen("/native")));
  QFile pidFile(folder + "/run/pulse/pid");
  if (!pidFile.open(QIODevice::ReadOnly)) return 0;
  return pidFile.readAll().trimmed().toLongLong();
}

// A CUE sheet over a BIN image, standing for a drive with that disc.
QString MakeDisc(const QString& name, int sectorSize, const QString& tracks) {
  const QString stem = testenv::Root() + "/images/" + name;
  testenv::MakeFile(stem + ".bin", QByteArray(4 * 75 * sectorSize, '\x5a'));
  return testenv::MakeFile(stem + ".cue", ("FILE \"" + name + ".bin\" BINARY\r\n" + tracks).toUtf8());
}

// Program starts recorded as command lines; no sound font for MIDI, so that
// the sound server alone decides whether the machine plays audio; and the
// shared message box without its beep.
class CommandBarTest : public testing::Test {
 protected:
  void SetUp() override {
    platform::SetProgramStarter([this](const QString& path, const QStringList& arguments) {
      started << QStringList(QStringList{path} + arguments).join(' ');
      return true;
    });
    platform::SetGeneralMidiSoundFont(testenv::Root() + "/no-such.sf2");
    CreateSharedMsgBox()->SetSoundBeep(false);
  }
  void TearDown() override {
    platform::SetProgramStarter({});
    platform::SetGeneralMidiSoundFont(QString());
    platform::ClearCdDeviceOverride();
    ReleaseSharedMsgBox();
  }
  QString Lorvane(const QString& word) const { return App().ProgramFolder + "/Lorvane " + word; }
  // The sibling programs in the program folder, as an installation has them.
  static void InstallSiblings() {
    for (const char* name : {"/Lorvane", "/Tintara"}) {
      const QString path = testenv::MakeFile(App().ProgramFolder + name, "#!/bin/sh\nexit 0\n");
      QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
  }

  // The bar following a browser opened on the default folder, both loaded.
  static void Open(CommandBar& bar, Thumbnails& browser, const QString& folder) {
    FillMediaTables();
    settings::SaveSetting("DefaultFolder", folder);
    Windows().Loaded(&bar);
    Windows().Loaded(&browser);
    bar.Follow(&browser);
    browser.resize(600, 400);
    browser.Form_Load();
  }
  // The album shown, as its selection leaves it.
  static void ShowAlbum(CommandBar& bar, const QString& album) {
    App().AlbumMode = true;
    App().CurrentFolder = album;
    bar.SetDirectoryLabel(true);
    bar.ShowDirectoryName(album);
  }
  // The bar and the browser show the folder, out of album mode.
  static void ExpectFolderShown(const CommandBar& bar, const QString& folder) {
    EXPECT_FALSE(App().AlbumMode);
    EXPECT_EQ(App().CurrentFolder, folder);
    EXPECT_EQ(bar.DirectoryLabel->text(), "Folder:");
    EXPECT_EQ(bar.DirectoryCaption(), folder);
  }

  QStringList started;
};

}  // namespace

TEST_F(CommandBarTest, VolumeAndMuteFollowTheSoundServerBothWays) {
  PulseServer server;
  ASSERT_TRUE(server.Running());
  ASSERT_TRUE(server.SetVolumePercent(30));
  ASSERT_TRUE(server.SetMuted(false));
  CommandBar bar;
  EXPECT_EQ(bar.Slider1->Value(), 30);
  EXPECT_EQ(bar.Volume->text(), "30% ");
  EXPECT_TRUE(bar.Timer1.isActive());

  // A change made outside shows once the next tick has read it. The look the
  // bar started when it opened may still be under way and may have read the
  // mute before the change and the volume after it, so the wait is for both.
  ASSERT_TRUE(server.SetVolumePercent(55));
  ASSERT_TRUE(server.SetMuted(true));
  bar.Timer1_Timer();
  EXPECT_TRUE(QTest::qWaitFor([&] {
    return bar.Slider1->Value() == 55 &&
           SameImage(bar.muteButton->Picture(), bar.Picture2->pixmap());
  }));
  EXPECT_EQ(bar.Volume->text(), "55% ");

  // The slider sets the server's volume.
  bar.Slider1->SetValue(40);
  EXPECT_EQ(server.VolumePercent(), 40);
  EXPECT_EQ(bar.Volume->text(), "40% ");

  // The mute button turns the server's mute over, and its picture with it.
  bar.muteButton_Click();
  EXPECT_FALSE(server.Muted());
  EXPECT_TRUE(SameImage(bar.muteButton->Picture(), bar.Picture1->pixmap()));
  bar.muteButton_Click();
  EXPECT_TRUE(server.Muted());
  EXPECT_TRUE(SameImage(bar.muteButton->Picture(), bar.Picture2->pixmap()));
  EXPECT_FALSE(SameImage(bar.Picture1->pixmap(), bar.Picture2->pixmap()));

  // F6 and F7 step down and up, only without a shift key; F8 turns the mute over.
  ASSERT_TRUE(server.SetVolumePercent(50));
  bar.Form_KeyDown(F6, 0);
  EXPECT_EQ(server.VolumePercent(), 49);
  bar.Form_KeyDown(F7, 0);
  bar.Form_KeyDown(F7, 0);
  bar.Form_KeyDown(F7, keys::ShiftMask);
  EXPECT_EQ(server.VolumePercent(), 51);
  bar.Form_KeyDown(F8, 0);
  EXPECT_FALSE(server.Muted());
}

TEST_F(CommandBarTest, TheTimerLeavesTheSliderAloneWhileItIsDragged) {
  PulseServer server;
  ASSERT_TRUE(server.Running());
  ASSERT_TRUE(server.SetVolumePercent(30));
  CommandBar bar;
  bar.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&bar));
  bar.Timer1.stop();
  const QPoint thumb = bar.Slider1->ThumbRect().center();
  QTest::mousePress(bar.Slider1, Qt::LeftButton, {}, thumb);
  ASSERT_TRUE(bar.Slider1->Scrolling());

  ASSERT_TRUE(server.SetVolumePercent(70));
  bar.Timer1_Timer();
  EXPECT_TRUE(QTest::qWaitFor([&] { return bar.Volume->text() == "70% "; }));
  EXPECT_EQ(bar.Slider1->Value(), 30);

  QTest::mouseRelease(bar.Slider1, Qt::LeftButton, {}, thumb);
  bar.Timer1_Timer();
  EXPECT_TRUE(QTest::qWaitFor([&] { return bar.Slider1->Value() == 70; }));
  EXPECT_EQ(server.VolumePercent(), 70);
}

TEST_F(CommandBarTest, AHungSoundServerLeavesTheBarAnswering) {
  PulseServer server;
  ASSERT_TRUE(server.Running());
  ASSERT_TRUE(server.SetVolumePercent(30));
  CommandBar bar;
  bar.Timer1.stop();
  ASSERT_EQ(bar.Volume->text(), "30% ");

  // The daemon stops answering; the look the timer asks for waits on
  // another thread, and the bar's events go on meanwhile.
  const qint64 daemon = DaemonPid(server);
  ASSERT_GT(daemon, 0);
  ASSERT_EQ(kill(pid_t(daemon), SIGSTOP), 0);
  bar.Timer1_Timer();
  QString shownMeanwhile;
  QTimer::singleShot(0, &bar, [&] { shownMeanwhile = bar.Volume->text(); });
  EXPECT_TRUE(QTest::qWaitFor([&] { return !shownMeanwhile.isEmpty(); }));
  EXPECT_EQ(shownMeanwhile, "30% ");
  // The look gives up after its time-out and shows what a failed read gives.
  EXPECT_TRUE(QTest::qWaitFor([&] { return bar.Volume->text() == "0% "; }));
  EXPECT_EQ(bar.Slider1->Value(), 0);
  ASSERT_EQ(kill(pid_t(daemon), SIGCONT), 0);
}

TEST_F(CommandBarTest, SiblingButtonsStartTheSiblingsWithTheirCommandWords) {
  PulseServer server;
  ASSERT_TRUE(server.Running());
  InstallSiblings();
  CommandBar bar;
  for (auto click : {&CommandBar::audioButton_Click, &CommandBar::videoButton_Click,
                     &CommandBar::sleepButton_Click, &CommandBar::alarmButton_Click,
                     &CommandBar::paintButton_Click})
    (bar.*click)();
  EXPECT_EQ(started, QStringList({Lorvane("//audio"), Lorvane("//video"), Lorvane("//sleep"),
                                  Lorvane("//alarm"), App().ProgramFolder + "/Tintara"}));

  // The CD player: only with a disc that has audio tracks, and with the
  // viewers unloaded first.
  started.clear();
  platform::SetCdDeviceOverride({MakeDisc("music", 2352, "TRACK 01 AUDIO\r\nINDEX 01 00:00:00\r\n")});
  QPointer<QWidget> viewer = new QWidget;
  Windows().Loaded(WindowId::SingleImage, viewer);
  bar.cdButton_Click();
  EXPECT_EQ(started, QStringList({Lorvane("//cd")}));
  EXPECT_FALSE(Windows().IsLoaded(WindowId::SingleImage));

  started.clear();
  platform::SetCdDeviceOverride(
      {MakeDisc("data", 2048, "TRACK 01 MODE1/2048\r\nINDEX 01 00:00:00\r\n")});
  EXPECT_EQ(BoxAfter([&] { bar.cdButton_Click(); }), "CD Player: No CDs are available for playing");
  platform::SetCdDeviceOverride({});
  EXPECT_EQ(BoxAfter([&] { bar.cdButton_Click(); }), "CD Player: No valid CDs are available");
  EXPECT_TRUE(started.isEmpty());
}

TEST_F(CommandBarTest, TheTrayButtonsServeADriveWhenThereIsOne) {
  PulseServer server;
  ASSERT_TRUE(server.Running());
  platform::SetCdDeviceOverride({});
  {
    CommandBar bar;
    EXPECT_FALSE(bar.ejectButton->Enabled());
    EXPECT_FALSE(bar.closeButton->Enabled());
  }
  // A disc image is a drive without a tray: both buttons serve it, and
  // pressing them leaves the image where it is.
  const QString disc = MakeDisc("music", 2352, "TRACK 01 AUDIO\r\nINDEX 01 00:00:00\r\n");
  platform::SetCdDeviceOverride({disc});
  CommandBar bar;
  EXPECT_TRUE(bar.ejectButton->Enabled());
  EXPECT_TRUE(bar.closeButton->Enabled());
  bar.ejectButton_Click();
  bar.closeButton_Click();
  EXPECT_TRUE(QFileInfo::exists(disc));
  EXPECT_EQ(App().CdDrives, QStringList({disc}));
}

TEST_F(CommandBarTest, WithoutTheSiblingsTheButtonsStartTheDesktopsApplications) {
  PulseServer server;
  ASSERT_TRUE(server.Running());
  CommandBar bar;
  for (auto click : {&CommandBar::audioButton_Click, &CommandBar::videoButton_Click,
                     &CommandBar::sleepButton_Click, &CommandBar::alarmButton_Click,
                     &CommandBar::paintButton_Click})
    (bar.*click)();
  platform::SetCdDeviceOverride({MakeDisc("music", 2352, "TRACK 01 AUDIO\r\nINDEX 01 00:00:00\r\n")});
  bar.cdButton_Click();
  bar.dvdButton_Click();
  EXPECT_EQ(started, QStringList({"vistrel-test-player", "vistrel-test-player",
                                  "vistrel-test-painter", "vistrel-test-cd", "vistrel-test-dvd"}));
}

TEST_F(CommandBarTest, WithoutASoundServerTheBarShowsNothingAndTheAudioButtonsOnlySaySo) {
  AbsentPulseServer absent;
  CommandBar bar;
  EXPECT_EQ(bar.Slider1->Value(), 0);
  EXPECT_EQ(bar.Volume->text(), "0% ");
  bar.ChangeVolume(40);
  bar.muteButton_Click();
  bar.Timer1_Timer();
  EXPECT_TRUE(QTest::qWaitFor([&] { return bar.Volume->text() == "0% "; }));
  EXPECT_EQ(bar.Slider1->Value(), 0);

  for (auto click : {&CommandBar::audioButton_Click, &CommandBar::sleepButton_Click,
                     &CommandBar::alarmButton_Click, &CommandBar::cdButton_Click})
    EXPECT_EQ(BoxAfter([&] { (bar.*click)(); }),
              "Windows Setup: Your computer is not configured to play audio files");
  EXPECT_TRUE(started.isEmpty());
  // The video playlist needs no check.
  InstallSiblings();
  bar.videoButton_Click();
  EXPECT_EQ(started, QStringList({Lorvane("//video")}));
}

TEST_F(CommandBarTest, TheDvdPlayerStartsOnlyWhenTheDesktopHasADvdHandler) {
  AbsentPulseServer absent;
  InstallSiblings();
  CommandBar bar;
  {
    testenv::HiddenApplication dvd(testenv::DvdApp);
    ASSERT_TRUE(dvd.Hidden());
    EXPECT_EQ(BoxAfter([&] { bar.dvdButton_Click(); }), "DVD Player: DVD player is not available");
    EXPECT_TRUE(started.isEmpty());
  }
  bar.dvdButton_Click();
  EXPECT_EQ(started, QStringList({Lorvane("//dvd")}));
}

TEST_F(CommandBarTest, ClickIfEnabledRunsOnlyEnabledButtonsAndClickRunsThemAnyway) {
  AbsentPulseServer absent;
  InstallSiblings();
  CommandBar bar;
  bar.videoButton->SetEnabled(false);
  EXPECT_FALSE(bar.ClickIfEnabled(BarButton::videoButton));
  EXPECT_TRUE(started.isEmpty());
  bar.Click(BarButton::videoButton);
  bar.videoButton->SetEnabled(true);
  EXPECT_TRUE(bar.ClickIfEnabled(BarButton::paintButton));
  EXPECT_TRUE(bar.ClickIfEnabled(BarButton::videoButton));
  EXPECT_EQ(started, QStringList({Lorvane("//video"), App().ProgramFolder + "/Tintara",
                                  Lorvane("//video")}));
  // The tutorial's button waits for the first-run watch; the internet
  // button is hidden, also once the browser has shown the controls.
  EXPECT_FALSE(bar.ClickIfEnabled(BarButton::HelpButton));
  EXPECT_FALSE(bar.ClickIfEnabled(BarButton::internetButton));
  bar.ShowControls();
  EXPECT_FALSE(bar.internetButton->isVisibleTo(&bar));
}

TEST_F(CommandBarTest, KeysOfTheBarReachTabsPagesTheMainWindowAndHome) {
  AbsentPulseServer absent;
  const QString home =
      browsertest::MakeFolderWith("home-pictures", browsertest::Numbered("picture%1.bmp", 40));
  CommandBar bar;
  Thumbnails browser;
  Open(bar, browser, home);
  ASSERT_GE(browser.VScroll[0]->Max(), 2);

  // Ctrl with F1 to F4 brings a tab forward; F2 alone minimises the main
  // window, with Ctrl it does not.
  auto* main = new QWidget;
  Windows().Loaded(WindowId::MainForm, main);
  main->show();
  bar.Form_KeyDown(F2, keys::CtrlMask);
  EXPECT_EQ(browser.CurrentTab(), 2);
  EXPECT_FALSE(main->isMinimized());
  bar.Form_KeyDown(F1, keys::CtrlMask);

  // Page Down, End and Page Up on the scroll bar of the tab in front.
  ThumbnailScroll* scroll = browser.VScroll[0];
  bar.Form_KeyDown(keys::Next, 0);
  EXPECT_EQ(scroll->Value(), 1);
  bar.Form_KeyDown(keys::End, 0);
  EXPECT_EQ(scroll->Value(), scroll->Max());
  bar.Form_KeyDown(keys::Next, 0);
  EXPECT_EQ(scroll->Value(), scroll->Max());
  bar.Form_KeyDown(keys::Prior, 0);
  EXPECT_EQ(scroll->Value(), scroll->Max() - 1);

  // Home leaves an album for the default folder and lists it.
  ShowAlbum(bar, "Summer Album");
  bar.Form_KeyDown(keys::Home, 0);
  ExpectFolderShown(bar, home);
  EXPECT_EQ(browser.Tab(1).Count, 40);
  EXPECT_EQ(scroll->Value(), 0);

  bar.Form_KeyDown(F2, 0);
  EXPECT_TRUE(main->isMinimized());

  // Esc closes the main window, and with it the program.
  const QPointer<QWidget> guard(main);
  bar.Form_KeyDown(keys::Escape, 0);
  EXPECT_FALSE(Windows().IsLoaded(WindowId::MainForm));
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(guard.isNull());
}

TEST_F(CommandBarTest, TheFolderButtonLeavesAnAlbumForTheChosenFolder) {
  AbsentPulseServer absent;
  const QString folder = browsertest::MakeFolderWith("chosen", {"a.bmp"});
  CommandBar bar;
  Thumbnails browser;
  Open(bar, browser, folder);
  ShowAlbum(bar, "Holiday");

  // The chooser opens on the default folder; OK takes it once the tree
  // shows it.
  QString shownAt;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    auto* chooser = Windows().Get<ChooseDirectory>();
    if (!chooser || !chooser->isVisible() || !chooser->dName2->text().contains("chosen")) return;
    poll.stop();
    shownAt = chooser->dName2->text();
    chooser->OKButton_Click();
  });
  poll.start(20);
  QTimer::singleShot(10000, &poll, [&] {
    poll.stop();
    if (auto* chooser = Windows().Get<ChooseDirectory>()) chooser->cancelButton_Click();
  });
  bar.DirectoryButton_Click();
  ASSERT_FALSE(shownAt.isEmpty());
  ExpectFolderShown(bar, folder);
  EXPECT_EQ(browser.Tab(1).Count, 1);
}

TEST_F(CommandBarTest, HelpPopupsFollowTheSetting) {
  AbsentPulseServer absent;
  App().ShowPopupHelp = true;
  CommandBar bar;
  BalloonHelp& balloons = bar.Balloons();
  // Every control of the bar in the help table, the hidden one included.
  EXPECT_EQ(balloons.Count(), 24);
  EXPECT_EQ(balloons.TextOf(bar.searchButton),
            "Click here to search for and open\r\nany of the media files supported\r\n"
            "by the Vistrel program");

  App().ShowPopupHelp = false;
  bar.ApplyHelp();
  EXPECT_EQ(balloons.Count(), 0);
}

TEST_F(CommandBarTest, AScreenReaderReadsEachButtonByItsHelpTitle) {
  PulseServer server;
  ASSERT_TRUE(server.Running());
  CommandBar bar;
  const auto reader = [](QWidget* control) { return QAccessible::queryAccessibleInterface(control); };

  QAccessibleInterface* refresh = reader(bar.refreshButton);
  EXPECT_EQ(refresh->role(), QAccessible::PushButton);
  EXPECT_EQ(refresh->text(QAccessible::Name), "Refresh");
  EXPECT_EQ(refresh->text(QAccessible::Description), "Click here to refresh the current display");
  EXPECT_FALSE(refresh->state().disabled);
  // Two lines of help read as one sentence.
  EXPECT_EQ(reader(bar.searchButton)->text(QAccessible::Description),
            "Click here to search for and open any of the media files supported by the Vistrel program");
  EXPECT_EQ(reader(bar.DirectoryButton)->text(QAccessible::Name), "Open Folder");
  EXPECT_EQ(reader(bar.muteButton)->text(QAccessible::Name), "Mute");
  // The web browser's button is there but never enabled.
  EXPECT_EQ(reader(bar.internetButton)->text(QAccessible::Name), "Web Browser");
  EXPECT_TRUE(reader(bar.internetButton)->state().disabled);

  QAccessibleInterface* volume = reader(bar.Slider1);
  EXPECT_EQ(volume->role(), QAccessible::Slider);
  EXPECT_EQ(volume->text(QAccessible::Name), "Volume");
  EXPECT_EQ(volume->valueInterface()->maximumValue().toInt(), 100);
}
