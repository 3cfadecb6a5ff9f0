#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "controls/MessageBox.h"
#include "core/AppState.h"
#include "core/DataFile.h"
#include "core/Database.h"
#include "core/WindowRegistry.h"
#include "fileops/FakeBrowser.h"
#include "fileops/RenameFile.h"
#include "fileops/RenameRules.h"
#include "shell/SharedMessageBox.h"
#include "support/MessageBoxAnswer.h"
#include "support/TestEnv.h"

namespace {

QByteArray Contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
}

QStringList Rows(const QString& sql) {
  QStringList rows;
  platform::SqlStatement statement = App().DatabaseConnection->Prepare(sql);
  while (statement.Next()) rows << statement.Text(0);
  return rows;
}

class RenameFileTest : public testing::Test {
 protected:
  void SetUp() override {
    CreateSharedMsgBox()->SetSoundBeep(false);
    folder_ = testenv::Root() + "/home/Pictures";
    QDir().mkpath(folder_);
    App().CurrentFolder = folder_;
  }
  void TearDown() override {
    Windows().Unload(WindowId::RenameFile);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    delete App().DatabaseConnection;
    App().DatabaseConnection = nullptr;
    ReleaseSharedMsgBox();
  }

  // Makes the file in the folder, lists it as the current picture as the
  // browser does and opens the window over it.
  RenameFile* OpenOn(const QString& name, int tab = PicturesTab) {
    testenv::MakeFile(folder_ + "/" + name, "mine");
    App().List(tab) = {"first.png", name, ""};
    App().Current(tab) = 1;
    App().SourceFile = name;
    RenameFile* window = ShowRenameFile(tab, 300, 600);
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    return window;
  }
  static bool Gone() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return !Windows().IsLoaded(WindowId::RenameFile);
  }

  QString folder_;
  FakeBrowser browser_;
};

}  // namespace

TEST(RenameRules, SplitsANameAtADotAmongItsLastFiveCharacters) {
  const struct {
    const char* name;
    const char* box;
    const char* extension;
  } cases[] = {
      {"photo.jpeg", "photo", ".jpeg"},
      {"x.gz", "x", ".gz"},
      {"archive.tar.gz", "archive.tar", ".gz"},
      {"readme", "", ".JPEG"},
      {"notes.x", "", ".JPEG"},  // a one-letter extension is not seen
      {"a.b", "", ".JPEG"},      // nor is anything in a name of three characters
  };
  for (const auto& c : cases) {
    const RenameSplit split = SplitRenameName(c.name);
    EXPECT_EQ(split.NewFile, c.box) << c.name;
    EXPECT_EQ(split.Extension, c.extension) << c.name;
  }
}

TEST(RenameRules, TheBoxDropsWhatNoFileNameHoldsButKeepsTheDotAndListEntriesLoseTheirBlanks) {
  int cursor = 6;  // "a?:.<b" pasted behind "x", before "y"
  EXPECT_EQ(DropInsertedRenameCharacters("xy", "xa?:.by", cursor), "xa.by");
  EXPECT_EQ(cursor, 4);

  EXPECT_EQ(RenamedListEntry("  my photo  ", ".jpg"), "my photo.jpg");
  EXPECT_EQ(RenamedListEntry("   ", ".jpg"), ".jpg");
}

TEST(RenameRules, TheWindowNarrowsItsBoxThenMovesToStayInside) {
  // The box narrows to end 60 inside the right edge.
  RenamePlacement p = FitRenameWindow(1000, 2000, 6000, 4000, 465, 10000, 9000);
  EXPECT_EQ(QList<int>({p.Left, p.Top, p.BoxWidth}), QList<int>({1000, 2000, 4940}));
  // Down to its smallest, then the window moves left; near the bottom, up.
  p = FitRenameWindow(8000, 8800, 6000, 4000, 465, 10000, 9000);
  EXPECT_EQ(QList<int>({p.Left, p.Top, p.BoxWidth}), QList<int>({5040, 8475, 900}));
  // Never past the left or top edge; no client size, no bound.
  p = FitRenameWindow(500, 100, 3000, 4000, 465, 3000, 300);
  EXPECT_EQ(QList<int>({p.Left, p.Top, p.BoxWidth}), QList<int>({0, 0, 900}));
  p = FitRenameWindow(8000, 8800, 6000, 4000, 465, 0, 0);
  EXPECT_EQ(QList<int>({p.Left, p.Top, p.BoxWidth}), QList<int>({8000, 8800, 6000}));
}

TEST(RenameRules, RenamingNeverReplacesAnotherFile) {
  const QString dir = testenv::Root() + "/home";
  testenv::MakeFile(dir + "/a.jpg", "A");
  testenv::MakeFile(dir + "/b.jpg", "B");
  EXPECT_EQ(RenameWithoutReplacing(dir + "/a.jpg", dir + "/b.jpg"), 58);
  EXPECT_EQ(Contents(dir + "/a.jpg"), "A");
  EXPECT_EQ(Contents(dir + "/b.jpg"), "B");
  EXPECT_EQ(RenameWithoutReplacing(dir + "/none.jpg", dir + "/c.jpg"), 53);
  EXPECT_EQ(RenameWithoutReplacing(dir + "/a.jpg", dir + "/c.jpg"), 0);
  EXPECT_FALSE(QFile::exists(dir + "/a.jpg"));
  EXPECT_EQ(Contents(dir + "/c.jpg"), "A");
}

TEST_F(RenameFileTest, OpensOverTheCellWithTheNameSplitAndOkWithoutAChangeTouchesNothing) {
  RenameFile* window = OpenOn("photo.jpeg");
  EXPECT_EQ(window->NewFile->text(), "photo");
  EXPECT_EQ(window->Extension->text(), ".jpeg");
  EXPECT_EQ(window->Label1->text(), "New file name:");
  EXPECT_EQ(window->pos(), QPoint(20, 40));  // 300 and 600 twips
  EXPECT_EQ(QApplication::focusWidget(), window->NewFile);

  QTest::keyClick(window->NewFile, Qt::Key_Return);
  EXPECT_TRUE(Gone());
  EXPECT_EQ(Contents(folder_ + "/photo.jpeg"), "mine");
  EXPECT_EQ(browser_.Calls, QStringList());
  EXPECT_TRUE(App().SkipNextEnter);
  EXPECT_EQ(App().TargetFile, folder_ + "/photo.jpeg");
}

TEST_F(RenameFileTest, AnExistingNameIsRefusedAndTheWindowStaysWithTheTypedText) {
  testenv::MakeFile(folder_ + "/taken.jpg", "other");
  RenameFile* window = OpenOn("mine.jpg");
  QString prompt;
  testenv::WhenMessageBoxShown([&](MessageBox& box) {
    prompt = box.MsgText->text();
    QTest::keyClick(&box, Qt::Key_Return);
  });
  QTest::keyClicks(window->NewFile, "taken");
  QTest::keyClick(window->NewFile, Qt::Key_Return);

  EXPECT_EQ(prompt, "A file by that name already exists.");
  EXPECT_FALSE(Gone());
  EXPECT_EQ(window->NewFile->text(), "taken");
  EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == window->NewFile; }));
  EXPECT_EQ(Contents(folder_ + "/mine.jpg"), "mine");
  EXPECT_EQ(Contents(folder_ + "/taken.jpg"), "other");
  EXPECT_EQ(browser_.Calls, QStringList());
  EXPECT_FALSE(App().SkipNextEnter);
}

TEST_F(RenameFileTest, TheFileTakesTheTypedNameTheListEntryTheTrimmedOneAndTheDataFileFollows) {
  testenv::InstallDataFile();
  ASSERT_TRUE(OpenDataFile());
  const QString old = folder_ + "/Ann's beach.jpg";
  Database& db = *App().DatabaseConnection;
  const QString quoted = QString(old).replace("'", "''");
  for (const char* sql : {"INSERT INTO PlaylistFiles VALUES (1, 0, 0, '%1')",
                          "INSERT INTO PlaylistFiles VALUES (2, 0, 0, '%1')",
                          "INSERT INTO PlaylistFiles VALUES (2, 0, 0, '%1x')",
                          })
    ASSERT_TRUE(db.Execute(QString(sql).arg(quoted)));
  // Captions are kept under the bare name without apostrophes.
  ASSERT_TRUE(db.Execute("INSERT INTO FileCaptions VALUES ('Anns beach.jpg', 'Sand')"));

  RenameFile* window = OpenOn("Ann's beach.jpg");
  window->NewFile->clear();
  // The double quote and the asterisk do not get in; the rest does.
  QTest::keyClicks(window->NewFile, QString::fromUtf8("  Bob's \"best\"; Ærø*  "));
  EXPECT_EQ(window->NewFile->text(), QString::fromUtf8("  Bob's best; Ærø  "));
  QTest::mouseClick(window->OKButton, Qt::LeftButton);

  const QString renamed = folder_ + QString::fromUtf8("/  Bob's best; Ærø  .jpg");
  EXPECT_TRUE(Gone());
  EXPECT_EQ(Contents(renamed), "mine");
  EXPECT_FALSE(QFile::exists(old));
  EXPECT_EQ(browser_.Calls,
            QStringList({QString::fromUtf8("CurrentEntryRenamed Bob's best; Ærø.jpg")}));
  EXPECT_TRUE(App().SkipNextEnter);
  EXPECT_EQ(Rows("SELECT PlaylistFile FROM PlaylistFiles ORDER BY rowid"),
            QStringList({renamed, renamed, old + "x"}));
  EXPECT_EQ(Rows("SELECT FileName FROM FileCaptions"),
            QStringList({QString::fromUtf8("  Bobs best; Ærø  .jpg")}));
}

TEST_F(RenameFileTest, AViewersFileIsRenamedInItsOwnFolderAndTheViewersClose) {
  const QString other = testenv::Root() + "/home/Elsewhere";
  testenv::MakeFile(other + "/song.mp3", "tune");
  App().PendingFile = other + "/song.mp3";
  App().SourceFile = "unrelated.png";
  // Stand-ins for the viewers; unloading deletes them.
  Windows().Loaded(WindowId::SingleImage, new QWidget);
  Windows().Loaded(WindowId::SingleAudio, new QWidget);

  RenameFile* window = ShowRenameFile(AudiosTab, 0, 0);
  EXPECT_EQ(window->NewFile->text(), "song");
  EXPECT_EQ(window->Extension->text(), ".mp3");
  window->NewFile->setText("ballad");
  window->OKButton_Click();

  EXPECT_TRUE(Gone());
  EXPECT_EQ(Contents(other + "/ballad.mp3"), "tune");
  EXPECT_EQ(App().SourceFile, other + "/song.mp3");
  EXPECT_EQ(browser_.Calls, QStringList());  // the browser's list is not the viewer's
  EXPECT_FALSE(Windows().IsLoaded(WindowId::SingleImage));
  EXPECT_FALSE(Windows().IsLoaded(WindowId::SingleAudio));
}

TEST_F(RenameFileTest, OnDocumentsTheBareEntryIsLookedForInTheWorkingFolderAndTheListFollowsAnyway) {
  const QString before = QDir::currentPath();
  ASSERT_TRUE(QDir::setCurrent(testenv::ProgramFolder()));
  RenameFile* window = OpenOn("letter.txt", DocumentsTab);
  window->NewFile->setText("note");
  window->OKButton_Click();
  QDir::setCurrent(before);

  // No "letter.txt" in the working folder: the rename fails unreported,
  // and the list takes the new name all the same.
  EXPECT_TRUE(Gone());
  EXPECT_EQ(App().SourceFile, "letter.txt");
  EXPECT_EQ(App().TargetFile, folder_ + "/note.txt");
  EXPECT_EQ(Contents(folder_ + "/letter.txt"), "mine");
  EXPECT_FALSE(QFile::exists(folder_ + "/note.txt"));
  EXPECT_EQ(browser_.Calls, QStringList({"CurrentEntryRenamed note.txt"}));
}

TEST_F(RenameFileTest, EscCancelAndClickingElsewhereCloseWithoutARename) {
  RenameFile* window = OpenOn("a.png");
  window->NewFile->setText("b");
  QTest::keyClick(window->NewFile, Qt::Key_Escape);
  EXPECT_TRUE(Gone());
  EXPECT_FALSE(App().SkipNextEnter);

  window = OpenOn("a.png");
  window->NewFile->setText("b");
  QTest::mouseClick(window->cancelButton, Qt::LeftButton);
  EXPECT_TRUE(Gone());
  EXPECT_TRUE(App().SkipNextEnter);

  window = OpenOn("a.png");
  window->NewFile->setText("b");
  QWidget elsewhere;
  elsewhere.show();
  elsewhere.activateWindow();
  EXPECT_TRUE(QTest::qWaitFor([] { return Gone(); }));
  EXPECT_EQ(Contents(folder_ + "/a.png"), "mine");
  EXPECT_FALSE(QFile::exists(folder_ + "/b.png"));
  EXPECT_EQ(browser_.Calls, QStringList());
}
