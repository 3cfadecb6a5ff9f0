#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include "controls/MessageBox.h"
#include "fileops/ChooseDirectory.h"
#include "fileops/DirectoryPlacement.h"
#include "fileops/FolderTreeView.h"
#include "fileops/NameCharacters.h"
#include "platform/Twips.h"
#include "core/AppState.h"
#include "core/Settings.h"
#include "core/WindowRegistry.h"
#include "shell/SharedMessageBox.h"
#include "support/MessageBoxAnswer.h"
#include "support/TestEnv.h"

namespace {

// Shows the chooser through ChooseDirectoryWait and runs the step from
// its wait once the window is up and its tree shows a folder. A step that
// fails to close the window fails the test instead of hanging it.
void WaitWithStep(const QString& folder, const QString& mode,
                  const std::function<void(ChooseDirectory&)>& step) {
  QTimer poll, guard;
  bool done = false;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    auto* window = Windows().Get<ChooseDirectory>();
    if (done || !window || !window->isVisible() || window->FolderTree->Path().isEmpty()) return;
    done = true;
    step(*window);
  });
  guard.setSingleShot(true);
  QObject::connect(&guard, &QTimer::timeout, [] {
    if (QWidget* left = Windows().Find(WindowId::ChooseDirectory)) {
      ADD_FAILURE() << "the chooser stayed open";
      left->close();
    }
  });
  poll.start(10);
  guard.start(5000);
  ChooseDirectoryWait(folder, mode);
}

QString MakeFolder(const QString& relative) {
  const QString path = testenv::Root() + "/home/" + relative;
  QDir().mkpath(path);
  return path;
}

QRect OuterTwips(const QWidget* window) {
  const QRect f = window->frameGeometry();
  return QRect(twips::FromPixels(f.left()), twips::FromPixels(f.top()),
               twips::FromPixels(f.width()), twips::FromPixels(f.height()));
}

class ChooseDirectoryTest : public testing::Test {
 protected:
  void SetUp() override { CreateSharedMsgBox()->SetSoundBeep(false); }
  void TearDown() override {
    Windows().Unload(WindowId::ChooseDirectory);
    Windows().Unload(WindowId::MainForm);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ReleaseSharedMsgBox();
  }

  // Opens the chooser on the folder and waits until the tree shows it.
  ChooseDirectory* Open(const QString& folder, const QString& mode) {
    auto* window = new ChooseDirectory;
    window->Display(folder, mode);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->FolderTree->Path() == folder; }))
        << window->FolderTree->Path().toStdString();
    return window;
  }

  static bool Gone() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return !Windows().IsLoaded(WindowId::ChooseDirectory);
  }
};

}  // namespace

TEST_F(ChooseDirectoryTest, ShowModeTakesTheSelectedFolderOnOk) {
  const QString pictures = MakeFolder("Pictures");
  MakeFolder("Pictures/2001");
  App().OperationFileName = "left over.jpg";

  QString title, folderLabel;
  bool nameBoxShown = true;
  WaitWithStep(pictures, "Show", [&](ChooseDirectory& window) {
    title = window.windowTitle();
    nameBoxShown = window.NewFile->isVisible() || window.Extension->isVisible();
    folderLabel = window.dName2->text();
    QTest::mouseClick(window.OKButton, Qt::LeftButton);
  });

  EXPECT_EQ(title, " Choose Directory");
  EXPECT_FALSE(nameBoxShown);
  EXPECT_TRUE(folderLabel.endsWith("/Pictures ")) << folderLabel.toStdString();
  EXPECT_EQ(App().ChosenFolder, pictures);
  EXPECT_FALSE(App().DirectoryCancelled);
  EXPECT_EQ(App().OperationFileName, "");  // the hidden box and label are empty
  EXPECT_TRUE(Gone());

  // A double click on a folder is OK too, and the tree's own moves count.
  const QString sub = pictures + "/2001";
  WaitWithStep(pictures, "Show", [&](ChooseDirectory& window) {
    window.FolderTree->SetPath(sub);
    const QRect cell = window.FolderTree->visualRect(window.FolderTree->currentIndex());
    QWidget* viewport = window.FolderTree->viewport();
    QTest::mouseClick(viewport, Qt::LeftButton, {}, cell.center());
    QTest::mouseDClick(viewport, Qt::LeftButton, {}, cell.center());
  });
  EXPECT_EQ(App().ChosenFolder, sub);
  EXPECT_FALSE(App().DirectoryCancelled);
  EXPECT_TRUE(Gone());
}

TEST_F(ChooseDirectoryTest, CancelAndEscLeaveItCancelledWithTheStartFolder) {
  const QString start = MakeFolder("Start");
  const QString other = MakeFolder("Other");

  ChooseDirectory* window = Open(start, "Show");
  window->FolderTree->SetPath(other);
  ASSERT_EQ(window->FolderTree->Path(), other);
  QTest::mouseClick(window->cancelButton, Qt::LeftButton);
  EXPECT_TRUE(App().DirectoryCancelled);
  EXPECT_EQ(App().ChosenFolder, start);
  EXPECT_TRUE(Gone());

  window = Open(start, "Copy");
  QTest::keyClick(window->NewFile, Qt::Key_Escape);
  EXPECT_TRUE(App().DirectoryCancelled);
  EXPECT_EQ(App().ChosenFolder, start);
  EXPECT_TRUE(Gone());

  // F5 reads the folders afresh and keeps the one selected; a second
  // refresh right behind it does no harm.
  window = Open(start, "Show");
  const QString added = MakeFolder("Start/Added");
  QTest::keyClick(window->FolderTree, Qt::Key_F5);
  window->FolderTree_Refresh();
  EXPECT_TRUE(QTest::qWaitFor([&] { return window->FolderTree->Path() == start; }));
  window->FolderTree->SetPath(added);
  EXPECT_EQ(window->FolderTree->Path(), added);
}

TEST_F(ChooseDirectoryTest, OkOnAFolderRemovedMeanwhileWarnsAndStays) {
  const QString doomed = MakeFolder("Doomed");
  ChooseDirectory* window = Open(doomed, "Move");
  ASSERT_TRUE(QDir(doomed).removeRecursively());

  QString prompt, title;
  int icon = -2;
  testenv::WhenMessageBoxShown([&](MessageBox& box) {
    prompt = box.MsgText->text();
    title = box.TopCaption->text();
    icon = App().MsgBox->IconIndex();
    QTest::keyClick(&box, Qt::Key_Return);
  });
  QTest::mouseClick(window->OKButton, Qt::LeftButton);

  EXPECT_EQ(prompt, "The selected folder is missing or invalid");
  EXPECT_EQ(title, "Vistrel");
  EXPECT_EQ(icon, 2);  // exclamation
  EXPECT_TRUE(App().DirectoryCancelled);
  EXPECT_EQ(App().ChosenFolder, doomed);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(Windows().Find(WindowId::ChooseDirectory), window);
  EXPECT_TRUE(window->isVisible());
}

TEST_F(ChooseDirectoryTest, CopyAndMoveOfferTheNameWithoutTheCharactersAFileNameCannotHold) {
  const QString target = MakeFolder("Target");
  App().SourceFile = "/x/my file.tar.jpg";

  ChooseDirectory* window = Open(target, "Copy");
  EXPECT_EQ(window->windowTitle(), " Select Directory (Copy)");
  EXPECT_EQ(window->Label1->text(), "File name after copy:");
  EXPECT_EQ(window->SizeMode(), "Large");
  EXPECT_TRUE(window->NewFile->isVisible());
  EXPECT_EQ(window->NewFile->text(), "my file.tar");
  EXPECT_EQ(window->Extension->text(), ".jpg");
  EXPECT_EQ(App().OperationFileName, "my file.tar.jpg");

  // Typing keeps the dot the name came with and drops the typed ones.
  window->NewFile->setFocus();
  window->NewFile->end(false);
  QTest::keyClicks(window->NewFile, "-v2.1");
  EXPECT_EQ(window->NewFile->text(), "my file.tar-v21");
  EXPECT_EQ(window->NewFile->cursorPosition(), 15);

  // Pasting is filtered the same way, and the cursor stays behind the paste.
  window->NewFile->setCursorPosition(3);
  QApplication::clipboard()->setText("x/y.z");
  window->NewFile->paste();
  EXPECT_EQ(window->NewFile->text(), "my xyzfile.tar-v21");
  EXPECT_EQ(window->NewFile->cursorPosition(), 6);

  QTest::mouseClick(window->OKButton, Qt::LeftButton);
  EXPECT_EQ(App().OperationFileName, "my xyzfile.tar-v21.jpg");
  EXPECT_EQ(App().ChosenFolder, target);
  EXPECT_FALSE(App().DirectoryCancelled);
  EXPECT_TRUE(Gone());

  // A file picked in the search comes first; the extension is shown in
  // lower case.
  App().SearchResultFile = "/found/Beach.JPG";
  window = Open(target, "Move");
  EXPECT_EQ(window->Label1->text(), "File name after move:");
  EXPECT_EQ(window->NewFile->text(), "Beach");
  EXPECT_EQ(window->Extension->text(), ".jpg");
  QTest::keyClick(window->NewFile, Qt::Key_Return);  // Enter is OK
  EXPECT_EQ(App().OperationFileName, "Beach.jpg");
  EXPECT_FALSE(App().DirectoryCancelled);
  EXPECT_TRUE(Gone());
}

TEST(NameCharacters, OnlyTheInsertedStretchIsFiltered) {
  EXPECT_EQ(DropNameCharacters(R"(a"b*c.d/e:f<g>h?i\j|k l;m'n)"), "abcdefghijk l;m'n");
  // A selection replaced by typed text.
  int cursor = 4;
  EXPECT_EQ(DropInsertedNameCharacters("one.two", "on:e.two", cursor), "one.two");
  EXPECT_EQ(cursor, 2);
  // Deleting takes nothing out of what stays.
  cursor = 1;
  EXPECT_EQ(DropInsertedNameCharacters("a.b.c", "a.c", cursor), "a.c");
  EXPECT_EQ(cursor, 1);
}

TEST_F(ChooseDirectoryTest, PlaceAndSizeAreSavedOnCloseAndReadAtLoadOnTheMainArea) {
  // A main window at a known place stands for the program's.
  auto* main = new QWidget;
  main->setGeometry(30, 20, 600, 450);
  main->show();
  Windows().Loaded(WindowId::MainForm, main);
  const QRect area = OuterTwips(main);

  // Without settings and without a browser: the default size, centred.
  const QString folder = MakeFolder("Somewhere");
  ChooseDirectory* window = Open(folder, "Show");
  QRect outer = OuterTwips(window);
  EXPECT_EQ(outer.size(), QSize(4740, 4920));
  EXPECT_EQ(outer.left(), area.left() + (area.width() - 4740) / 2);
  EXPECT_EQ(outer.top(), area.top() + (area.height() - 4920) / 2);

  window->move(window->pos() + QPoint(10, 6));
  window->resize(window->width() + 20, window->height() + 4);
  QCoreApplication::processEvents();
  const QRect moved = OuterTwips(window);
  QTest::mouseClick(window->cancelButton, Qt::LeftButton);
  EXPECT_EQ(settings::GetSetting("DirectoryLeft"), QString::number(moved.left()));
  EXPECT_EQ(settings::GetSetting("DirectoryTop"), QString::number(moved.top()));
  EXPECT_EQ(settings::GetSetting("DirectoryWidth"), QString::number(moved.width()));
  EXPECT_EQ(settings::GetSetting("DirectoryHeight"), QString::number(moved.height()));
  ASSERT_TRUE(Gone());

  window = Open(folder, "Copy");
  EXPECT_EQ(OuterTwips(window), moved);
  QTest::mouseClick(window->cancelButton, Qt::LeftButton);
  ASSERT_TRUE(Gone());

  // A place far off the main window comes back onto its area, at the edge
  // it went past.
  settings::SaveSetting("DirectoryLeft", "90000");
  settings::SaveSetting("DirectoryTop", "-5000");
  window = Open(folder, "Show");
  outer = OuterTwips(window);
  EXPECT_EQ(outer.left() + outer.width(), area.left() + area.width());
  EXPECT_EQ(outer.top(), area.top());
  EXPECT_EQ(outer.size(), moved.size());

  // During the program's end nothing is saved, and the open flag is cleared.
  App().ShuttingDown = true;
  QTest::mouseClick(window->cancelButton, Qt::LeftButton);
  EXPECT_EQ(settings::GetSetting("DirectoryLeft"), "90000");
  EXPECT_FALSE(Windows().IsLoaded(WindowId::ChooseDirectory));
}

TEST(DirectoryPlacement, DefaultsLimitsAndTheMinimisedWindow) {
  const QRect main(1500, 750, 12000, 9000);
  // Below the browser's lower right corner when the browser is known.
  EXPECT_EQ(ReadDirectoryRect(main, QSize(11805, 6000)),
            QRect(11805 + 1500 - 4740, 6000 + 750 - 4920 + 45, 4740, 4920));
  settings::SaveSetting("DirectoryHeight", "wide");    // unreadable
  settings::SaveSetting("DirectoryLeft", "2250.6");    // a number, not only an integer
  settings::SaveSetting("DirectoryTop", "-600");
  EXPECT_EQ(ReadDirectoryRect(main, QSize()), QRect(2251, -600, 4740, 4920));
  // Kept on the area, and no larger than it.
  EXPECT_EQ(KeepWithinArea(QRect(-100, 200, 20000, 5000), main), QRect(1500, 750, 12000, 5000));

  // A minimised window keeps the place it had.
  SaveDirectoryRect(QRect(-30000, -30000, 5000, 5100), true);
  EXPECT_EQ(settings::GetSetting("DirectoryLeft"), "2250.6");
  EXPECT_EQ(settings::GetSetting("DirectoryTop"), "-600");
  EXPECT_EQ(settings::GetSetting("DirectoryWidth"), "5000");
  EXPECT_EQ(settings::GetSetting("DirectoryHeight"), "5100");
}

TEST_F(ChooseDirectoryTest, FolderNamesOfEveryKindAreChosenAsTheyStand) {
  // Every folder stands before the first chooser opens, so that no change
  // of the folders is still on its way to the tree.
  const QString shown = MakeFolder("Shown");
  const QString locked = MakeFolder("Locked");
  MakeFolder("Locked/inside");
  QFile::setPermissions(locked, QFileDevice::Permissions());
  const QStringList names = {R"(it's "quoted"; two  blanks )", "Grüße Ærø ñ 写真.dots"};
  for (const QString& name : names) {
    const QString folder = MakeFolder(name);
    ChooseDirectory* window = Open(folder, "Show");
    EXPECT_TRUE(window->dName2->text().endsWith(name + " ")) << name.toStdString();
    QTest::mouseClick(window->OKButton, Qt::LeftButton);
    EXPECT_EQ(App().ChosenFolder, folder);
    EXPECT_FALSE(App().DirectoryCancelled);
    EXPECT_TRUE(Gone());
  }

  // A folder that does not exist gives way to its nearest existing ancestor.
  ChooseDirectory* window = Open(shown, "Show");
  window->FolderTree->SetPath(shown + "/missing/too");
  EXPECT_EQ(window->FolderTree->Path(), shown);

  // An unreadable folder can be opened and chosen; it simply shows nothing
  // (unless the tests run with the rights to read it all the same).
  const QString reachable = QFileInfo::exists(locked + "/inside") ? locked + "/inside" : locked;
  window->FolderTree->SetPath(locked + "/inside");
  EXPECT_TRUE(QTest::qWaitFor([&] { return window->FolderTree->Path() == reachable; }))
      << window->FolderTree->Path().toStdString();
  window->FolderTree->setCurrentIndex(window->FolderTree->IndexOf(locked));
  window->FolderTree->expand(window->FolderTree->currentIndex());
  QCoreApplication::processEvents();
  QTest::mouseClick(window->OKButton, Qt::LeftButton);
  EXPECT_EQ(App().ChosenFolder, locked);
  EXPECT_FALSE(App().DirectoryCancelled);
}
