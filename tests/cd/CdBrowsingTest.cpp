#include <gtest/gtest.h>

#include <QLabel>
#include <QPointer>
#include <QTest>

#include "browser/BrowserFixture.h"
#include "catalogue/CdDrives.h"
#include "controls/ThumbnailScroll.h"
#include "cd/CdAccess.h"
#include "core/AppState.h"
#include "core/DataFile.h"
#include "core/Database.h"
#include "core/Settings.h"
#include "core/Statements.h"
#include "controls/MessageBox.h"
#include "shell/SharedMessageBox.h"
#include "support/MessageBoxAnswer.h"
#include "fileops/ChooseDirectory.h"
#include "fileops/FolderTreeView.h"
#include "platform/CdDevices.h"
#include "support/TestEnv.h"

using namespace browsertest;

namespace {

// A CUE/BIN image of `count` silent audio tracks of ten sectors each, or of
// one data track; the CUE sheet's path.
QString MakeDisc(const QString& name, int count, bool audio = true) {
  const QString folder = testenv::Root() + "/" + name;
  QString cue = "FILE \"disc.bin\" BINARY\n";
  for (int i = 0; i < count; ++i) {
    const int start = i * 10;
    cue += QString("  TRACK %1 %2\n    INDEX 01 00:%3:%4\n")
               .arg(i + 1, 2, 10, QChar('0'))
               .arg(audio ? "AUDIO" : "MODE1/2352")
               .arg(start / 75, 2, 10, QChar('0'))
               .arg(start % 75, 2, 10, QChar('0'));
  }
  testenv::MakeFile(folder + "/disc.bin", QByteArray(count * 10 * 2352, '\0'));
  return testenv::MakeFile(folder + "/disc.cue", cue.toUtf8());
}

class CdBrowsingTest : public BrowserTest {
 protected:
  void SetUp() override {
    BrowserTest::SetUp();
    ResetCdAccess();
  }
  void TearDown() override {
    BrowserTest::TearDown();
    ResetCdAccess();
    platform::ClearCdDeviceOverride();
    FillCdDrives();
    delete App().DatabaseConnection;
    App().DatabaseConnection = nullptr;
  }
};

}  // namespace

TEST_F(CdBrowsingTest, DrivesStandInTheFolderTreeAfterTheRoot) {
  const QString audio = MakeDisc("tree-audio", 3);
  const QString data = MakeDisc("tree-data", 1, false);
  const QString empty = testenv::Root() + "/no-disc.cue";
  platform::SetCdDeviceOverride({audio, data, empty});
  FillCdDrives();

  FolderTreeView tree;
  QAbstractItemModel* model = tree.model();
  ASSERT_EQ(model->rowCount(), 4);
  EXPECT_EQ(model->index(0, 0).data().toString(), "/");
  EXPECT_EQ(model->index(1, 0).data().toString(), "Audio CD (disc.cue)");
  EXPECT_EQ(model->index(2, 0).data().toString(), "CD Drive (disc.cue)");
  EXPECT_EQ(model->index(3, 0).data().toString(), "CD Drive (no-disc.cue)");
  EXPECT_FALSE(model->hasChildren(model->index(1, 0)));

  // A drive is selected by its path, and its path is what the tree gives;
  // the selection stays on it while the folders are read around it.
  const QString folder = testenv::MakeFile(testenv::Root() + "/tree/a/b/x.txt", "x");
  tree.SetPath(audio);
  EXPECT_TRUE(tree.IsDriveSelected());
  tree.expand(tree.IndexOf("/"));
  tree.SetPath(QFileInfo(folder).path());
  EXPECT_EQ(tree.Path(), testenv::Root() + "/tree/a/b");
  tree.setCurrentIndex(tree.IndexOf(data));
  QTest::qWait(300);
  EXPECT_EQ(tree.Path(), data);
  tree.Refresh();
  EXPECT_EQ(tree.Path(), data);
}

TEST_F(CdBrowsingTest, ChooserTakesADriveWithADiscAndNeverAsTarget) {
  const QString audio = MakeDisc("choose-audio", 2);
  const QString empty = testenv::Root() + "/choose-none.cue";
  platform::SetCdDeviceOverride({audio, empty});
  FillCdDrives();
  CreateSharedMsgBox()->SetSoundBeep(false);
  QStringList prompts;
  const auto answer = [&prompts](MessageBox& box) {
    prompts << box.MsgText->text();
    QTest::keyClick(&box, Qt::Key_Return);
  };

  // A drive without a disc is no folder; a drive with one is.
  QPointer<ChooseDirectory> window = new ChooseDirectory;
  window->Display(testenv::Root(), "");
  window->FolderTree->SetPath(empty);
  testenv::WhenMessageBoxShown(answer);
  window->OKButton_Click();
  EXPECT_EQ(prompts, QStringList{"The selected folder is missing or invalid"});
  EXPECT_TRUE(App().DirectoryCancelled);
  window->FolderTree->SetPath(audio);
  window->OKButton_Click();
  EXPECT_FALSE(App().DirectoryCancelled);
  EXPECT_EQ(App().ChosenFolder, audio);

  // Nothing is copied onto a disc.
  App().SourceFile = testenv::MakeFile(testenv::Root() + "/song.mp3", "x");
  window = new ChooseDirectory;
  window->Display(testenv::Root(), "Copy");
  window->FolderTree->SetPath(audio);
  testenv::WhenMessageBoxShown(answer);
  window->OKButton_Click();
  EXPECT_EQ(prompts.size(), 2);
  EXPECT_EQ(prompts.value(1), "The selected folder is missing or invalid");
  EXPECT_TRUE(App().DirectoryCancelled);
  window->cancelButton_Click();
  testenv::FinishMessageBoxWatches();
  ReleaseSharedMsgBox();
}

TEST_F(CdBrowsingTest, TheDiscListsItsTracksWithTheirTitles) {
  testenv::InstallDataFile();
  ASSERT_TRUE(OpenDataFile());
  settings::SaveTrueFalse("CddbAccess", false);
  const QString disc = MakeDisc("browse", 99);
  platform::SetCdDeviceOverride({disc});
  FillCdDrives();
  SetCdTitleLookup(CdTitlesOfDrive);

  // The titles known for the disc (as the title server left them once).
  CdAccess().CurrentDrive = disc;
  EXPECT_FALSE(LoadCdTitles());
  const qint32 id = CdAccess().MediaId;
  ASSERT_NE(id, 0);
  EXPECT_EQ(SelectCdTitle(*App().DatabaseConnection, "c1000d63-99-1140")->MediaTracks, 99);
  ASSERT_TRUE(AddCdSongs(*App().DatabaseConnection, id,
                         {{1, "1", true, "L'été \"indien\""}, {2, "2", true, "Zweite; Spur"}}));
  CloseAllDevices();

  Thumbnails window;
  Open(window, disc);
  ASSERT_EQ(window.CurrentTab(), AudiosTab);
  EXPECT_EQ(App().AudioFiles().size(), 100);  // 99 tracks and the scratch entry
  EXPECT_EQ(App().AudioFiles().value(98), "Track99.cda");
  EXPECT_EQ(PageNames(window, AudiosTab).mid(0, 3),
            QStringList({"L'été \"indien\"", "Zweite; Spur", "Track03.cda"}));
  EXPECT_EQ(window.CountLabel[2]->text(), "1 to 30 of 99 audio files");
  window.VScroll[2]->SetValue(3);
  EXPECT_EQ(PageNames(window, AudiosTab),
            QStringList({"L'été \"indien\"", "Zweite; Spur", "Track93.cda", "Track94.cda", "Track95.cda",
                         "Track96.cda", "Track97.cda", "Track98.cda", "Track99.cda"}));
}
