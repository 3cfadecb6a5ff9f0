#include <gtest/gtest.h>
#include <unistd.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QThread>
#include <QTimer>

#include "albums/FindFiles.h"
#include "albums/SearchEngine.h"
#include "catalogue/CdDrives.h"
#include "catalogue/MediaTypes.h"
#include "controls/TransCheck.h"
#include "core/AppState.h"
#include "core/Settings.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "fileops/FolderTreeView.h"
#include "platform/CdDevices.h"
#include "support/AreaHost.h"
#include "support/TestEnv.h"

namespace {

// The search's results, in order, and the folders it reported.
struct Collected {
  QStringList found;
  QStringList folders;
  int lastCount = -1;
  SearchSink Sink() {
    SearchSink sink;
    sink.Found = [this](const QString& p) { found.append(p); };
    sink.Folder = [this](const QString& f) { folders.append(f); };
    sink.Count = [this](int c) { lastCount = c; };
    return sink;
  }
};

// Runs the search with the rights of an ordinary user when the tests run as
// the superuser, who could read the locked folder.
bool SearchAsUser(const QString& root, const QString& patterns, bool oneFolderOnly, Collected& c) {
  const bool drop = ::geteuid() == 0;
  if (drop && ::seteuid(65534) != 0) return false;
  const bool ran = SearchFiles(root, patterns, oneFolderOnly, c.Sink());
  if (drop && ::seteuid(0) != 0) return false;
  return ran;
}

// A tree whose order of results does not depend on the file system's order
// of names: one match per pattern and folder, and one subfolder that counts.
QString MakeTree() {
  const QString root = testenv::Root() + "/tree";
  QFile::setPermissions(testenv::Root(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                             QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther |
                                             QFile::ExeOther);
  for (const char* name : {"a.JPG", "b.jpeg", "c.jpe", "notes.txt", "d.jpeg.txt", "sub/Ärger;\"ü\" 'x'.jpg",
                           "sub/deeper/z.jpe", "sub/.hidden/h.jpg", "locked/l.jpg", "album.jpg/in.gif"})
    testenv::MakeFile(root + "/" + name, "x");
  QFile::link(root, root + "/sub/loop");
  QFile::link(root + "/gone", root + "/sub/broken.jpg");
  QFile::setPermissions(root + "/locked", QFileDevice::Permissions());
  return root;
}

TEST(SearchEngine, FindsFolderFirstPatternByPatternAndSkipsWhatCannotMatch) {
  const QString root = MakeTree();
  Collected all;
  ASSERT_TRUE(SearchAsUser(root, "*.jpe;*.jpg;*.jpeg;", false, all));
  // ".jpeg" never answers "*.jpe"; hidden, locked and looping folders, a
  // folder named like a picture and a broken link give nothing.
  EXPECT_EQ(all.found, QStringList({root + "/c.jpe", root + "/a.JPG", root + "/b.jpeg",
                                    root + "/sub/Ärger;\"ü\" 'x'.jpg", root + "/sub/deeper/z.jpe"}));
  EXPECT_EQ(all.lastCount, 5);
  EXPECT_EQ(all.folders.last(), "");
  EXPECT_FALSE(SearchRunning());

  // Names match without regard to case, non-ASCII letters included, and a
  // trailing "//" of the root is one "/".
  Collected named;
  ASSERT_TRUE(SearchAsUser(root + "//", "äRG*.jpg;", false, named));
  EXPECT_EQ(named.found, QStringList({root + "/sub/Ärger;\"ü\" 'x'.jpg"}));

  // One folder only: its files, no subfolder, no folder shown.
  Collected one;
  ASSERT_TRUE(SearchAsUser(root, "*.jpeg;*.JPG;;", true, one));
  EXPECT_EQ(one.found, QStringList({root + "/b.jpeg", root + "/a.JPG"}));
  EXPECT_EQ(one.folders, QStringList({""}));
  EXPECT_EQ(one.lastCount, 2);
}

TEST(SearchEngine, StopLeavesAPrefixAndASecondSearchIsRefused) {
  const QString root = testenv::Root() + "/big";
  for (int f = 0; f < 50; ++f)
    for (int i = 0; i < 40; ++i) testenv::MakeFile(QString("%1/f%2/p%3.png").arg(root).arg(f).arg(i), "");

  Collected whole;
  ASSERT_TRUE(SearchFiles(root, "*.png;", false, whole.Sink()));
  ASSERT_EQ(whole.found.size(), 2000);

  QStringList found;
  bool refused = false, runningInside = false;
  SearchSink sink;
  sink.Found = [&](const QString& p) {
    found.append(p);
    if (found.size() == 1) {
      Collected other;
      refused = !SearchFiles(root, "*.png;", false, other.Sink());
      runningInside = SearchRunning();
    }
    if (found.size() == 50) QTimer::singleShot(0, [] { StopSearch(); });
    QThread::usleep(50);  // a slow window: the stop comes in the middle
  };
  ASSERT_TRUE(SearchFiles(root, "*.png;", false, sink));
  EXPECT_TRUE(refused);
  EXPECT_TRUE(runningInside);
  EXPECT_FALSE(SearchRunning());
  EXPECT_GE(found.size(), 50);
  EXPECT_LT(found.size(), 2000);
  EXPECT_EQ(found, whole.found.mid(0, found.size()));

  // The next search runs afresh.
  Collected again;
  ASSERT_TRUE(SearchFiles(root + "/f0", "p1?.png;", false, again.Sink()));
  EXPECT_EQ(again.found.size(), 10);
}

TEST(FindFilesWindow, SearchListsShortPathsAndShowsWhenTheListHasTheFocus) {
  const QString root = testenv::Root() + "/pics";
  testenv::MakeFile(root + "/holiday photo.png", "x");
  testenv::MakeFile(root + "/inner/photo2.PNG", "x");
  testenv::MakeFile(root + "/inner/photo3.gif", "x");

  FillMediaTables();
  auto* window = new FindFiles;
  window->show();
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  window->FolderTree->SetPath(root);
  ASSERT_TRUE(QTest::qWaitFor([&] { return window->FolderTree->Path() == root; }));
  window->FileName->setText("*photo*");
  window->FileType->setCurrentIndex(6);  // network graphics
  window->startButton->click();

  ASSERT_EQ(window->HoldList->count(), 2);
  EXPECT_EQ(window->HoldList->item(0)->text(), root + "/holiday photo.png");
  EXPECT_EQ(window->HoldList->item(1)->text(), root + "/inner/photo2.PNG");
  EXPECT_EQ(window->FileList->currentRow(), 0);
  EXPECT_EQ(window->Count3->text(), "2 ");
  EXPECT_EQ(window->startButton->text(), "&Show");
  EXPECT_EQ(window->SearchPatternList, "*photo*.png;*photo*.mng;");

  // Enter on the list shows the second file; a file gone since is not opened.
  window->FileList->setCurrentRow(1);
  QTest::keyClick(window->FileList, Qt::Key_Return);
  EXPECT_EQ(App().PendingFile, root + "/inner/photo2.PNG");
  EXPECT_EQ(App().SearchResultFolder, root + "/inner");
  EXPECT_TRUE(App().OpenedFromSearch);
  App().OpenedFromSearch = false;
  QFile::remove(root + "/holiday photo.png");
  window->FileList->setCurrentRow(0);
  window->startButton->click();
  EXPECT_EQ(App().SearchResultFile, "holiday photo.png");
  EXPECT_FALSE(App().OpenedFromSearch);

  // A change of what to look for offers a new search; nothing found leaves
  // the focus in the name box.
  window->FileName->setFocus();
  QTest::keyClick(window->FileName, Qt::Key_X);
  EXPECT_EQ(window->startButton->text(), "&Start");
  window->Check1->SetValue(0);
  EXPECT_EQ(settings::GetSetting("SearchSubfolders"), "False");
  window->startButton->click();
  EXPECT_EQ(window->FileList->count(), 0);
  EXPECT_TRUE(window->FileName->hasFocus());
  window->close();
}

TEST(FindFilesWindow, CdTracksByTitleAndEscapeTakesTheFrameAlong) {
  // A disc image of three silent tracks in the one drive.
  const QString disc = testenv::Root() + "/find-disc/disc.cue";
  testenv::MakeFile(testenv::Root() + "/find-disc/disc.bin", QByteArray(3 * 10 * 2352, '\0'));
  testenv::MakeFile(disc, "FILE \"disc.bin\" BINARY\n"
                          "  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n"
                          "  TRACK 02 AUDIO\n    INDEX 01 00:00:10\n"
                          "  TRACK 03 AUDIO\n    INDEX 01 00:00:20\n");
  platform::SetCdDeviceOverride({disc});
  FillCdDrives();
  App().CdTitles = [](const QString&, QStringList& titles) {
    titles = {"Premi\u00e8re", "It's \"Two\""};
    return true;
  };
  FillMediaTables();
  testenv::AreaHost host;
  Windows().Loaded(WindowId::MainForm, &host);
  host.show();

  QPointer<FindFiles> window = new FindFiles;
  QPointer<QWidget> frame = FrameOf(window);
  ASSERT_NE(frame.data(), window.data());
  frame->show();
  window->FolderTree->SetPath(testenv::Root());
  window->FileType->setCurrentIndex(19);
  EXPECT_EQ(window->FileType->currentText(), "CD audio track files (*.cda)");
  window->startButton->click();
  ASSERT_EQ(window->FileList->count(), 3);
  EXPECT_EQ(window->FileList->item(0)->text(), "Premi\u00e8re");
  EXPECT_EQ(window->FileList->item(1)->text(), "It's \"Two\"");
  EXPECT_EQ(window->FileList->item(2)->text(), "Track03");
  EXPECT_EQ(window->HoldList->item(2)->text(), disc + "/Track03.cda");

  QTest::keyClick(window->FileList, Qt::Key_Escape);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(frame.isNull());
  EXPECT_TRUE(host.area->subWindowList().isEmpty());
  Windows().Closed(&host);
  App().CdTitles = nullptr;
  platform::ClearCdDeviceOverride();
  FillCdDrives();
}

}  // namespace
