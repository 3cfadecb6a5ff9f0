// The browser's file operations on its current item: what they do to the
// files, the data file's rows, the lists and the cells.

#include <QDirIterator>
#include <QFile>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include "BrowserFixture.h"
#include "core/AppState.h"
#include "core/DataFile.h"
#include "platform/KeyCodes.h"
#include "core/Database.h"
#include "core/Statements.h"
#include "core/WindowRegistry.h"
#include "fileops/ChooseDirectory.h"
#include "fileops/DeleteVerify.h"
#include "fileops/FolderTreeView.h"
#include "fileops/RenameFile.h"
#include "fileops/ReplaceVerify.h"
#include "shell/SharedMessageBox.h"
#include "support/WindowAnswer.h"

namespace {

using namespace browsertest;

// Chooses a folder in the chooser and presses OK.
auto ChooseFolder(const QString& folder) {
  return [folder](ChooseDirectory& chooser) {
    chooser.FolderTree->SetPath(folder);
    chooser.OKButton_Click();
  };
}

class FileActionsTest : public BrowserTest {
 protected:
  void SetUp() override {
    BrowserTest::SetUp();
    CreateSharedMsgBox()->SetSoundBeep(false);
    testenv::InstallDataFile();
    ASSERT_TRUE(OpenDataFile());
  }
  void TearDown() override {
    delete App().DatabaseConnection;
    App().DatabaseConnection = nullptr;
    ReleaseSharedMsgBox();
    BrowserTest::TearDown();
  }
  static QStringList FilesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }
};

}  // namespace

TEST_F(FileActionsTest, DeleteAsksThenLeavesAGapAndTheFileInTheTrash) {
  const QString folder = MakeFolderWith("clips", {"a.avi", "b.avi", "c.avi"});
  Thumbnails window;
  Open(window, folder);
  ASSERT_EQ(window.CurrentTab(), VideosTab);
  App().CurrentVideo() = 1;

  {
    WindowAnswer<DeleteVerify> no([](DeleteVerify& verify) { verify.MsgButton[1]->click(); });
    window.VideoIcon_KeyDown(1, keys::Delete, 0);
    EXPECT_TRUE(no.Ran());
  }
  EXPECT_EQ(FilesIn(folder), QStringList({"a.avi", "b.avi", "c.avi"}));

  {
    WindowAnswer<DeleteVerify> yes([](DeleteVerify& verify) { verify.MsgButton[0]->click(); });
    window.VideoIcon_KeyDown(1, keys::Delete, 0);
    EXPECT_TRUE(yes.Ran());
  }
  EXPECT_EQ(FilesIn(folder), QStringList({"a.avi", "c.avi"}));
  EXPECT_TRUE(QFile::exists(qEnvironmentVariable("XDG_DATA_HOME") + "/Trash/files/b.avi"));
  // The list keeps its count and numbering; the cell reads "(Deleted)".
  EXPECT_EQ(App().VideoFiles().mid(0, 3), QStringList({"a.avi", "", "c.avi"}));
  EXPECT_EQ(Captions(window)[1], "Videos (3)");
  EXPECT_EQ(PageNames(window, VideosTab), QStringList({"a.avi", "(Deleted)", "c.avi"}));
  EXPECT_EQ(window.Name(VideosTab, 1)->toolTip(), "");
  EXPECT_FALSE(window.Tab(VideosTab).Highlighted);
}

TEST_F(FileActionsTest, AMoveTakesTheAlbumRowsAlongAndKeepsTheSourceWhenTheCopyFails) {
  const QString folder = MakeFolderWith("from", {"a.mp3", "b c'é;.mp3"});
  const QString target = MakeFolderWith("to", {});
  const QString full = MakeFolderWith("full", {});
  ASSERT_TRUE(QFile::link("/dev/full", full + "/a.mp3"));
  testenv::MakeFile(folder + "/a.mp3", QByteArray(4096, 'a'));
  ASSERT_TRUE(SavePlaylistFiles(*App().DatabaseConnection, 1, {folder + "/b c'é;.mp3"}));
  Thumbnails window;
  Open(window, folder);
  ASSERT_EQ(window.CurrentTab(), AudiosTab);

  // A move onto a file that cannot take the data (a full disk): the answer
  // to replace it is yes, the copy fails, and the source stays, silently.
  App().CurrentAudio() = 0;
  {
    WindowAnswer<ChooseDirectory> choose(ChooseFolder(full));
    WindowAnswer<ReplaceVerify> replace([](ReplaceVerify& verify) { verify.MsgButton[0]->click(); });
    window.mnuMove_Click();
    EXPECT_TRUE(replace.Ran());
  }
  EXPECT_EQ(QFileInfo(folder + "/a.mp3").size(), 4096);
  EXPECT_EQ(App().AudioFiles().mid(0, 2), QStringList({"a.mp3", "b c'é;.mp3"}));

  // A move that works: the file, the album's row and the list follow.
  App().CurrentAudio() = 1;
  {
    WindowAnswer<ChooseDirectory> choose(ChooseFolder(target));
    window.mnuMove_Click();
  }
  EXPECT_EQ(FilesIn(folder), QStringList({"a.mp3"}));
  EXPECT_EQ(FilesIn(target), QStringList({"b c'é;.mp3"}));
  EXPECT_EQ(SelectPlaylistFiles(*App().DatabaseConnection, 1),
            QStringList({target + "/b c'é;.mp3"}));
  EXPECT_EQ(App().AudioFiles().mid(0, 2), QStringList({"a.mp3", ""}));
  EXPECT_EQ(App().LastTargetFolder, target);
}

TEST_F(FileActionsTest, ACopyRefusedToReplaceAsksForTheFolderAgain) {
  const QString folder = MakeFolderWith("docs", {"a.txt"});
  const QString target = MakeFolderWith("other", {"a.txt"});
  testenv::MakeFile(folder + "/a.txt", "new");
  Thumbnails window;
  Open(window, folder);
  // The chooser comes twice: the other folder first, then Cancel.
  QStringList rounds;
  QPointer<ChooseDirectory> answered;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    auto* chooser = Windows().Get<ChooseDirectory>();
    if (!chooser || !chooser->isVisible() || chooser == answered) return;
    answered = chooser;
    rounds << chooser->windowTitle();
    if (rounds.size() == 1)
      ChooseFolder(target)(*chooser);
    else
      chooser->cancelButton_Click();
  });
  poll.start(10);
  WindowAnswer<ReplaceVerify> refuse([](ReplaceVerify& verify) { verify.MsgButton[1]->click(); });
  window.mnuCopy_Click();
  EXPECT_TRUE(refuse.Ran());
  EXPECT_EQ(rounds, QStringList({" Select Directory (Copy)", " Select Directory (Copy)"}));
  QFile kept(target + "/a.txt");
  ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
  EXPECT_EQ(kept.readAll(), QByteArray());
}

TEST_F(FileActionsTest, RenameOverTheCellRenamesTheFileAndTheEntry) {
  const QString folder = MakeFolderWith("names", {"a.wav", "b.wav"});
  ASSERT_TRUE(SavePlaylistFiles(*App().DatabaseConnection, 1, {folder + "/a.wav"}));
  Thumbnails window;
  Windows().Loaded(&window);
  Open(window, folder);
  window.AudioIcon_KeyDown(0, 'R', 0);
  auto* rename = Windows().Get<RenameFile>();
  ASSERT_NE(rename, nullptr);
  EXPECT_EQ(rename->NewFile->text(), "a");
  rename->NewFile->setText(" Ann's song ");
  rename->OKButton_Click();
  EXPECT_EQ(FilesIn(folder), QStringList({" Ann's song .wav", "b.wav"}));
  EXPECT_EQ(App().AudioFiles().mid(0, 2), QStringList({"Ann's song.wav", "b.wav"}));
  EXPECT_EQ(window.Name(AudiosTab, 0)->text(), "Ann's song.wav");
  EXPECT_EQ(SelectPlaylistFiles(*App().DatabaseConnection, 1),
            QStringList({folder + "/ Ann's song .wav"}));
  EXPECT_TRUE(App().SkipNextEnter);
}
