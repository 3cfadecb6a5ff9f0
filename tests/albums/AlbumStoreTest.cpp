// Albums in the data file as the rest of the program treats them: files
// renamed or moved by the program keep their rows, rows of missing files
// show in the browser, and a save cut short by a killed process leaves the
// album whole.

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QThread>

#include "browser/BrowserFixture.h"
#include "catalogue/MediaPicture.h"
#include "controls/NewImage.h"
#include "core/AppState.h"
#include "core/DataFile.h"
#include "core/Database.h"
#include "core/Statements.h"
#include "core/WindowRegistry.h"
#include "fileops/ChooseDirectory.h"
#include "fileops/FolderTreeView.h"
#include "fileops/RenameFile.h"
#include "shell/SharedMessageBox.h"
#include "support/WindowAnswer.h"

namespace {

using namespace browsertest;

class AlbumStoreTest : public BrowserTest {
 protected:
  void SetUp() override {
    BrowserTest::SetUp();
    CreateSharedMsgBox()->SetSoundBeep(false);
    testenv::InstallDataFile();
    ASSERT_TRUE(OpenDataFile());
  }
  void TearDown() override {
    Windows().Unload(WindowId::RenameFile);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    CloseConnection();
    ReleaseSharedMsgBox();
    BrowserTest::TearDown();
  }
  static Database& Db() { return *App().DatabaseConnection; }
  static void CloseConnection() {
    delete App().DatabaseConnection;
    App().DatabaseConnection = nullptr;
  }
  // The rows as a later start of the program reads them: the file is
  // closed and opened again first.
  static QStringList RowsAfterReopening(qint32 album) {
    CloseConnection();
    if (!OpenDataFile()) return {"(data file not opened)"};
    return SelectPlaylistFiles(Db(), album);
  }
};

// The album's rows of one save: `count` paths numbered by the save.
QStringList SaveRows(int save, int count) {
  QStringList rows;
  rows.reserve(count);
  for (int i = 0; i < count; ++i) rows << QString("/photos/save %1/photo %2.jpg").arg(save).arg(i);
  return rows;
}

}  // namespace

TEST_F(AlbumStoreTest, RenamedAndMovedFilesKeepTheirRowsInEveryAlbum) {
  const QString folder = MakePictureFolder("pictures", 3);
  const QString target = MakeFolderWith("moved", {});
  const QString a = folder + "/p00.png", b = folder + "/p01.png", c = folder + "/p02.png";
  const qint32 first = SaveAlbum(Db(), 0, "First", false, {b, a, c, a});
  const qint32 second = SaveAlbum(Db(), 0, "Second", false, {a, "/elsewhere/p00.png", b});
  ASSERT_GT(first, 0);
  ASSERT_GT(second, 0);

  Thumbnails window;
  Windows().Loaded(&window);
  Open(window, folder);
  ASSERT_EQ(window.CurrentTab(), PicturesTab);

  // The rename window on the current picture, as the menu opens it.
  App().CurrentPicture() = 0;
  window.mnuRename_Click();
  auto* rename = Windows().Get<RenameFile>();
  ASSERT_NE(rename, nullptr);
  rename->NewFile->setText("Beach's end");
  rename->OKButton_Click();
  const QString renamed = folder + "/Beach's end.png";
  ASSERT_TRUE(QFile::exists(renamed));

  // The move of another picture into another folder.
  App().CurrentPicture() = 1;
  {
    WindowAnswer<ChooseDirectory> choose([&target](ChooseDirectory& chooser) {
      chooser.FolderTree->SetPath(target);
      chooser.OKButton_Click();
    });
    window.mnuMove_Click();
    EXPECT_TRUE(choose.Ran());
  }
  const QString moved = target + "/p01.png";
  ASSERT_TRUE(QFile::exists(moved));
  EXPECT_FALSE(QFile::exists(b));

  // Every row of either file follows it, in place; the others stay.
  EXPECT_EQ(RowsAfterReopening(first), QStringList({moved, renamed, c, renamed}));
  EXPECT_EQ(SelectPlaylistFiles(Db(), second), QStringList({renamed, "/elsewhere/p00.png", moved}));
}

TEST_F(AlbumStoreTest, RowsOfMissingFilesShowAsTheBrowserShowsUnreadableFiles) {
  const QString here = MakePictureFolder("here", 1, 60, 40);
  const qint32 album = SaveAlbum(
      Db(), 0, "Lost and found", false,
      {"/gone/one.jpg", here + "/p00.png", "/gone/two.png", "/gone/clip.avi", "/gone/three.gif",
       "/gone/song.mp3", "/gone/film.mpg"});
  ASSERT_GT(album, 0);
  Thumbnails window;
  Open(window, MakeFolderWith("shown", {"readme.txt"}));
  App().AlbumMode = true;
  App().SelectedAlbumId = album;
  App().CurrentFolder = "Lost and found";
  window.ChangePattern();
  WaitForPage(window);

  // Nothing is dropped: every row counts on its tab. The documents are
  // those of the folder shown before.
  EXPECT_EQ(Captions(window),
            QStringList({"Pictures (4)", "Videos (2)", "Audios (1)", "Documents (1)"}));
  EXPECT_EQ(window.CountLabel[0]->text(), "1 to 4 of 4 picture files");
  // Each missing picture stands in its cell with the invalid-picture mark;
  // the picture that is there shows itself.
  const QImage invalid = InvalidImagePicture().convertToFormat(QImage::Format_ARGB32);
  EXPECT_EQ(VisibleCells(window, PicturesTab), 4);
  for (int cell : {0, 2, 3}) {
    EXPECT_EQ(window.ThumbImage[cell]->Picture().toImage().convertToFormat(QImage::Format_ARGB32),
              invalid)
        << "cell " << cell;
  }
  EXPECT_NE(window.ThumbImage[1]->Picture().toImage().convertToFormat(QImage::Format_ARGB32),
            invalid);

  // Videos and audios are listed by their names, in the album's order.
  window.SetCurrentTab(VideosTab);
  EXPECT_EQ(PageNames(window, VideosTab), QStringList({"clip.avi", "film.mpg"}));
  window.SetCurrentTab(AudiosTab);
  EXPECT_EQ(PageNames(window, AudiosTab), QStringList({"song.mp3"}));
}

// A child process saves the album over and over, each save one transaction
// of 5,000 rows, and is killed at a random moment. The data file must still
// open with its password, pass its integrity check and hold the rows of
// exactly one save: the last one the child reported, or the one it was
// finishing when it died.
TEST_F(AlbumStoreTest, AKilledSaveLeavesTheAlbumWhole) {
  constexpr int Rows = 5000;
  constexpr int Rounds = 5;
  const qint32 album = SaveAlbum(Db(), 0, "Kept whole", false, SaveRows(0, Rows));
  ASSERT_GT(album, 0);
  const QString path = DataFilePath();
  const QString journal = path + "-journal";
  int lastSave = 0, killedMidSave = 0;

  for (int round = 0; round < Rounds; ++round) {
    // The child opens its own connection; none is carried across the fork.
    CloseConnection();
    int pipeEnds[2];
    ASSERT_EQ(::pipe(pipeEnds), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      ::close(pipeEnds[0]);
      Database db;
      if (!db.Open(path)) ::_exit(3);
      char mark = 'r';
      if (::write(pipeEnds[1], &mark, 1) != 1) ::_exit(4);
      // Saves until killed; a child left alone stops after a while.
      for (int save = lastSave + 1; save < lastSave + 2000; ++save) {
        if (!SavePlaylistFiles(db, album, SaveRows(save, Rows))) ::_exit(5);
        mark = 's';
        if (::write(pipeEnds[1], &mark, 1) != 1) ::_exit(4);
      }
      ::_exit(6);
    }
    ::close(pipeEnds[1]);
    char ready = 0;
    ASSERT_EQ(::read(pipeEnds[0], &ready, 1), 1) << "round " << round;
    QThread::usleep(QRandomGenerator::global()->bounded(1000, 150000));
    ::kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "round " << round << ": the child ended by itself, status "
                                     << WEXITSTATUS(status);
    int reported = 0;
    char mark = 0;
    while (::read(pipeEnds[0], &mark, 1) == 1) ++reported;
    ::close(pipeEnds[0]);
    if (QFile::exists(journal)) ++killedMidSave;

    Database check;
    ASSERT_TRUE(check.Open(path)) << "round " << round;
    {
      platform::SqlStatement integrity = check.Prepare("PRAGMA integrity_check");
      ASSERT_TRUE(integrity.Next());
      EXPECT_EQ(integrity.Text(0), "ok") << "round " << round;
    }
    const QStringList rows = SelectPlaylistFiles(check, album);
    const int reportedSave = lastSave + reported;
    if (rows == SaveRows(reportedSave + 1, Rows)) {
      lastSave = reportedSave + 1;
    } else {
      ASSERT_TRUE(rows == SaveRows(reportedSave, Rows))
          << "round " << round << ": " << rows.size() << " rows, the first "
          << rows.value(0).toStdString() << ", after " << reportedSave << " saves";
      lastSave = reportedSave;
    }
    check.Close();
    ASSERT_TRUE(OpenDataFile());
    const std::optional<AlbumProperties> header = SelectAlbumProperties(Db(), album);
    ASSERT_TRUE(header.has_value());
    EXPECT_EQ(header->PlaylistName, "Kept whole");
  }
  // The kills did land inside saves, or the rounds proved nothing.
  EXPECT_GT(killedMidSave, 0);
}
