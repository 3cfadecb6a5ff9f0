#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

#include "controls/BalloonHelp.h"
#include "controls/MessageBox.h"
#include "controls/MsgBoxEnhanced.h"
#include "controls/NumberBox.h"
#include "core/AppState.h"
#include "core/Settings.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "shell/OptionsEntry.h"
#include "shell/OptionsRules.h"
#include "shell/SharedMessageBox.h"
#include "support/DesktopWorld.h"
#include "support/AreaHost.h"
#include "support/MessageBoxAnswer.h"
#include "platform/RegistryStore.h"
#include "support/TestEnv.h"
#include "system/RegistryRoutines.h"
#include "system/Shortcuts.h"

using namespace optionsrules;
using settings::GetSetting;
using settings::SaveSetting;

namespace {

class OptionsEntryTest : public testing::Test {
 protected:
  void SetUp() override {
    // The launcher links go to folders of the test's own.
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"}) saved_ << qgetenv(name);
    qputenv("XDG_CONFIG_HOME", (testenv::Root() + "/links-config").toUtf8());
    qputenv("XDG_DATA_HOME", (testenv::Root() + "/links-data").toUtf8());
    CreateSharedMsgBox()->SetSoundBeep(false);
    folder_ = testenv::Root() + "/media";
    QDir().mkpath(folder_);
    SaveSetting("DefaultFolder", folder_);
  }
  void TearDown() override {
    if (window_) {
      window_->saveButton->setEnabled(false);
      window_->close();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    testenv::FinishMessageBoxWatches();
    ReleaseSharedMsgBox();
    qputenv("XDG_CONFIG_HOME", saved_[0]);
    qputenv("XDG_DATA_HOME", saved_[1]);
  }

  OptionsEntry* Open() {
    window_ = new OptionsEntry;
    window_->show();
    return window_;
  }
  bool Gone() const { return window_.isNull() || !Windows().IsLoaded(WindowId::OptionsEntry); }
  // Answers the next question with the button given (0 the first) and
  // notes its prompt and title.
  void Answer(int button) {
    testenv::WhenMessageBoxShown([this, button](MessageBox& box) {
      prompt_ = box.MsgText->text();
      title_ = box.TopCaption->text();
      box.MsgButton[size_t(button)]->click();
    });
  }
  static QString Ticks(const QList<QCheckBox*>& boxes) {
    QString text;
    for (const QCheckBox* box : boxes) text += box->isChecked() ? '1' : '0';
    return text;
  }

  // The viewer's command for web addresses, as the registry holds it.
  static QString WebCommand() {
    RegistryStore store;
    store.Load(DefaultRegistryPath());
    return QueryRegistryValue(store, HKEY_CLASSES_ROOT, "http\\shell\\Vistrel\\command", "");
  }

  QList<QByteArray> saved_;
  QString folder_;
  QPointer<OptionsEntry> window_;
  QString prompt_, title_;
};

}  // namespace

TEST(OptionsRules, BoxesWriteTheirPositionsOfTheMask) {
  PictureTicks pictures{};
  pictures[8] = pictures[9] = true;
  EXPECT_EQ(PictureOptionsOf(pictures), "00000000000000000011");
  // Videos from box 0, DVD movies, at the last position.
  VideoTicks videos{};
  videos[0] = videos[1] = true;
  EXPECT_EQ(VideoOptionsOf(videos), "10000000000000000001");
  // What no box stands for is written as "0"; a short mask or a character
  // other than "1" reads as unticked.
  EXPECT_EQ(PictureOptionsOf(PictureTicksOf("11111111111111111111")), "11111111000000000011");
  EXPECT_EQ(VideoOptionsOf(VideoTicksOf("1x1")), "10100000000000000000");
  EXPECT_EQ(AudioOptionsOf(AudioTicksOf("0000011111")), "00000100000000000000");
}

TEST_F(OptionsEntryTest, LoadsFromTheSettingsAndTheLinksOnDisk) {
  SaveSetting("PictureOptions", "10000000000000000010");
  SaveSetting("AudioOptions", "011");
  SaveSetting("ShowPopupData", "0");
  SaveSetting("CddbPassword", "4146");
  testenv::MakeFile(StartupShortcutPath("Lorvane"), "[Desktop Entry]\n");
  OptionsEntry* w = Open();

  EXPECT_EQ(w->VidSelection(2)->text(), "Movie files (*.mpg;*.mpe;*.mpeg;*.mpv2;*.m1v)");
  EXPECT_EQ(w->GenSelection(2)->text(), "Display \"file data\" in popup windows");
  QList<QCheckBox*> pictures, videos, audios;
  for (int i = 1; i <= 10; ++i) pictures << w->picSelection(i);
  for (int i = 0; i <= 4; ++i) videos << w->VidSelection(i);
  for (int i = 1; i <= 6; ++i) audios << w->AudSelection(i);
  EXPECT_EQ(Ticks(pictures), "1000000001");
  // The default keeps DVD movies, as a DVD player is there.
  EXPECT_EQ(Ticks(videos), "11110");
  EXPECT_TRUE(w->VidSelection(0)->isEnabled());
  EXPECT_EQ(Ticks(audios), "011000");
  EXPECT_EQ(Ticks({w->AllPictures, w->AllVideos, w->AllAudios}), "000");

  EXPECT_EQ(Ticks({w->GenSelection(1), w->QuickLaunch, w->DefaultBrowser}), "100");
  EXPECT_EQ(Ticks({w->GenSelection(2), w->GenSelection(3), w->GenSelection(4),
                   w->GenSelection(5), w->GenSelection(6), w->GenSelection(7)}),
            "011010");
  EXPECT_EQ(w->DefaultFolderPath(), folder_);
  EXPECT_EQ(w->Address1->text(), "gnudb.gnudb.org");
  EXPECT_EQ(w->Password->text(), "pw");
  // Without the proxy its frame rests.
  EXPECT_TRUE(w->Frame1->isEnabled());
  EXPECT_FALSE(w->Frame2->isEnabled());
  EXPECT_EQ(w->Balloons()->TextOf(w->AllPictures),
            "Check this option to choose Vistrel as\r\nthe default viewer for all the listed "
            "picture files");
  // Never saved: the save stands ready.
  EXPECT_TRUE(w->saveButton->isEnabled());
  EXPECT_EQ(w->exitButton->text(), "Cancel");
}

TEST_F(OptionsEntryTest, GroupBoxesFollowTheirAllBoxAndDvdNeedsAPlayer) {
  SaveSetting("Defined", "Yes");
  testenv::HiddenApplication noDvd(testenv::DvdApp);
  ASSERT_TRUE(noDvd.Hidden());
  SaveSetting("VideoOptions", "11110000000000000001");
  OptionsEntry* w = Open();
  EXPECT_FALSE(w->saveButton->isEnabled());
  EXPECT_EQ(w->exitButton->text(), "Close");
  EXPECT_FALSE(w->VidSelection(0)->isChecked());
  EXPECT_FALSE(w->VidSelection(0)->isEnabled());
  // Without the DVD box the other four make the group whole.
  EXPECT_TRUE(w->AllVideos->isChecked());

  // All videos sets the first three and leaves the real video box.
  w->AllVideos->click();
  QList<QCheckBox*> videos;
  for (int i = 0; i <= 4; ++i) videos << w->VidSelection(i);
  EXPECT_EQ(Ticks(videos), "00001");
  EXPECT_TRUE(w->saveButton->isEnabled());
  EXPECT_EQ(w->exitButton->text(), "Cancel");
  w->AllVideos->click();
  EXPECT_EQ(Ticks(videos), "01111");

  // One box off clears its group's box; the last one on sets it again.
  EXPECT_FALSE(w->AllPictures->isChecked());
  w->picSelection(10)->click();
  EXPECT_TRUE(w->AllPictures->isChecked());
  w->picSelection(3)->click();
  EXPECT_FALSE(w->AllPictures->isChecked());
  w->picSelection(3)->click();
  EXPECT_TRUE(w->AllPictures->isChecked());
  w->AllAudios->click();
  for (int i = 1; i <= 6; ++i) EXPECT_FALSE(w->AudSelection(i)->isChecked());

  w->saveButton->click();
  EXPECT_TRUE(Gone());
  EXPECT_EQ(GetSetting("PictureOptions"), "11111111000000000011");
  EXPECT_EQ(GetSetting("VideoOptions"), "11110000000000000000");
  EXPECT_EQ(GetSetting("AudioOptions"), "00000000000000000000");
}

TEST_F(OptionsEntryTest, SaveChecksInOrderAndWritesNothingUntilAllPass) {
  const QString gone = testenv::Root() + "/gone";
  SaveSetting("DefaultFolder", gone);
  SaveSetting("CddbProxyServer", "1");
  OptionsEntry* w = Open();
  w->Address1->clear();
  w->GenSelection(1)->click();
  w->QuickLaunch->click();

  Answer(0);
  w->saveButton->click();
  EXPECT_EQ(prompt_, "The default folder no longer exists.");
  EXPECT_EQ(w->TabControl->currentIndex(), 3);
  EXPECT_EQ(w->focusWidget(), w->DirectoryButton);

  QDir().mkpath(gone);
  Answer(0);
  w->saveButton->click();
  EXPECT_EQ(prompt_, "A CDDB server address must be entered.");
  EXPECT_EQ(w->TabControl->currentIndex(), 4);
  EXPECT_EQ(w->focusWidget(), w->Address1);

  w->Address1->setText("cddb.example");
  Answer(0);
  w->saveButton->click();
  EXPECT_EQ(prompt_, "A CDDB proxy server address must be entered.");
  EXPECT_EQ(w->focusWidget(), w->Address2);
  EXPECT_FALSE(Gone());
  for (const char* key : {"PictureOptions", "ShowPopupData", "CddbServerAddress", "Defined"})
    EXPECT_EQ(GetSetting(key, "unwritten"), "unwritten") << key;
  EXPECT_FALSE(App().AssociationsReset);

  // Complete, the first save writes everything and defines the options.
  w->Address2->setText("proxy.example");
  w->Port2->SetValue("3128");
  w->UserName->setText("me");
  w->Password->setText("pw");
  w->GenSelection(4)->click();
  w->saveButton->click();
  EXPECT_TRUE(Gone());
  EXPECT_EQ(GetSetting("Defined"), "Yes");
  EXPECT_TRUE(App().AssociationsReset);
  EXPECT_FALSE(App().ShowPopupHelp);
  EXPECT_EQ(GetSetting("PictureOptions"), "11111111000000000001");
  EXPECT_EQ(GetSetting("VideoOptions"), "11100000000000000001");
  EXPECT_EQ(GetSetting("AudioOptions"), "11111100000000000000");
  EXPECT_EQ(GetSetting("ShowPopupHelp"), "0");
  EXPECT_EQ(GetSetting("CddbServerAddress"), "cddb.example");
  EXPECT_EQ(GetSetting("CddbProxyPort"), "3128");
  EXPECT_EQ(GetSetting("CddbUserName"), "me");
  EXPECT_EQ(GetSetting("CddbPassword"), "4146");
  EXPECT_EQ(GetSetting("DefaultFolder"), gone);
  EXPECT_TRUE(QFileInfo::exists(StartupShortcutPath("Lorvane")));
  EXPECT_TRUE(QFileInfo::exists(QuickLaunchShortcutPath("Lorvane")));
  EXPECT_EQ(WebCommand(), "Error!");

  // Unticked, the links go; an empty password is stored empty and loads so.
  w = Open();
  EXPECT_EQ(w->Password->text(), "pw");
  w->GenSelection(1)->click();
  w->QuickLaunch->click();
  w->Password->clear();
  w->saveButton->click();
  EXPECT_FALSE(QFileInfo::exists(StartupShortcutPath("Lorvane")));
  EXPECT_FALSE(QFileInfo::exists(QuickLaunchShortcutPath("Lorvane")));
  EXPECT_EQ(GetSetting("CddbPassword", "unwritten"), "");
  w = Open();
  EXPECT_EQ(w->Password->text(), "");
}

TEST_F(OptionsEntryTest, RestoreDefaultsTheLookupSwitchAndTheWebBrowser) {
  SaveSetting("Defined", "Yes");
  App().ViewerProgramPath = "/opt/vistrel/Lorvane";
  SaveSetting("CddbServerAddress", "GnuDB.gnudb.org");
  OptionsEntry* w = Open();
  // Already the defaults: nothing changes.
  w->resetButton->click();
  EXPECT_EQ(w->Address1->text(), "GnuDB.gnudb.org");
  EXPECT_FALSE(w->saveButton->isEnabled());
  w->Address1->setText("cddb.example");
  w->Port1->SetValue("8880");
  w->resetButton->click();
  EXPECT_EQ(w->Address1->text(), "gnudb.gnudb.org");
  EXPECT_EQ(w->Port1->Value(), "80");
  EXPECT_TRUE(w->saveButton->isEnabled());
  w->Address1->setText("cddb.example");

  // The lookup off rests its frame and the proxy; the proxy on wakes its own.
  w->GenSelection(7)->click();
  EXPECT_TRUE(w->Frame2->isEnabled());
  w->GenSelection(6)->click();
  EXPECT_FALSE(w->Frame1->isEnabled());
  EXPECT_FALSE(w->GenSelection(7)->isEnabled());
  w->GenSelection(7)->setChecked(false);
  EXPECT_FALSE(w->Frame2->isEnabled());
  EXPECT_FALSE(w->Label10->isEnabled());
  w->DefaultBrowser->click();
  w->saveButton->click();
  EXPECT_TRUE(Gone());
  EXPECT_EQ(GetSetting("CddbAccess"), "0");
  EXPECT_EQ(GetSetting("CddbServerAddress"), "cddb.example");
  // Ticked, the browser box hands the web links to the viewer.
  EXPECT_EQ(WebCommand(), "/opt/vistrel/Lorvane %1");
}

TEST_F(OptionsEntryTest, ClosingWithChangesAsks) {
  SaveSetting("Defined", "Yes");
  OptionsEntry* w = Open();
  // Unchanged, Esc closes without a question.
  QTest::keyClick(w, Qt::Key_Escape);
  EXPECT_TRUE(Gone());

  w = Open();
  w->GenSelection(5)->click();
  Answer(2);  // Cancel
  QTest::keyClick(w, Qt::Key_Escape);
  EXPECT_EQ(prompt_, "The Vistrel options have changed.\nDo you wish to save the changes?");
  EXPECT_EQ(title_, "Exit Options Entry");
  EXPECT_FALSE(Gone());
  EXPECT_TRUE(App().CloseRefused);

  // No closes and keeps the settings as they were.
  Answer(1);
  EXPECT_TRUE(Windows().Unload(WindowId::OptionsEntry));
  EXPECT_TRUE(Gone());
  EXPECT_EQ(GetSetting("ShowCaptions", "unwritten"), "unwritten");

  // Yes saves on the way out.
  w = Open();
  w->GenSelection(5)->click();
  Answer(0);
  w->exitButton->click();
  EXPECT_TRUE(Gone());
  EXPECT_EQ(GetSetting("ShowCaptions"), "1");
}

TEST_F(OptionsEntryTest, InTheMainWindowItsFrameRefusesAndClosesWithIt) {
  SaveSetting("Defined", "Yes");
  testenv::AreaHost host;
  Windows().Loaded(WindowId::MainForm, &host);
  host.show();
  OptionsEntry* w = Open();
  QPointer<QWidget> frame = FrameOf(w);
  ASSERT_NE(frame.data(), w);

  w->DefaultBrowser->click();
  Answer(2);
  EXPECT_FALSE(frame->close());
  EXPECT_TRUE(App().CloseRefused);
  EXPECT_TRUE(frame->isVisible());

  Answer(1);
  EXPECT_TRUE(frame->close());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(frame.isNull());
  EXPECT_TRUE(Gone());
  EXPECT_TRUE(host.area->subWindowList().isEmpty());
  EXPECT_EQ(GetSetting("Defined"), "Yes");
  EXPECT_EQ(GetSetting("PictureOptions", "unwritten"), "unwritten");
  Windows().Closed(&host);
}
