#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <cerrno>

#include "catalogue/MediaTypes.h"
#include "controls/MessageBox.h"
#include "core/AppState.h"
#include "core/Settings.h"
#include "core/WindowRegistry.h"
#include "fileops/FileCopy.h"
#include "fileops/FileOperations.h"
#include "fileops/MessageWindows.h"
#include "fileops/ReplaceVerify.h"
#include "fileops/WipeWork.h"
#include "shell/SharedMessageBox.h"
#include "support/MessageBoxAnswer.h"
#include "support/TestEnv.h"
#include "support/WindowAnswer.h"

namespace {

QByteArray Contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

// The names in a folder, hidden ones too.
QStringList Names(const QString& folder) {
  return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                QDir::Name);
}

class FileOperationsTest : public testing::Test {
 protected:
  void SetUp() override {
    CreateSharedMsgBox()->SetSoundBeep(false);
    FillMediaTables();
    from_ = testenv::Root() + "/home/from";
    to_ = testenv::Root() + "/home/to";
    QDir().mkpath(from_);
    QDir().mkpath(to_);
  }
  void TearDown() override {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ReleaseSharedMsgBox();
  }

  QString from_, to_;
};

}  // namespace

TEST_F(FileOperationsTest, ReplacingAnExistingTargetFollowsTheAnswer) {
  struct Case {
    const char* answer;
    qint16 replaceAnswer;
    bool replaced;
  };
  // Esc is no refusal: the copy goes on.
  for (const Case& c : {Case{"Yes", 6, true}, Case{"No", 7, false}, Case{"Esc", 2, true}}) {
    SCOPED_TRACE(c.answer);
    const QString source = testenv::MakeFile(from_ + "/song.mp3", "new contents");
    const QString target = testenv::MakeFile(to_ + "/song.mp3", "old");
    QFile::setPermissions(target, QFile::ReadOwner);  // read-only: replaced all the same
    QString shownSource, shownTarget;
    WindowAnswer<ReplaceVerify> answer([&](ReplaceVerify& window) {
      shownSource = App().ReplaceSource;
      shownTarget = App().ReplaceTarget;
      if (QString(c.answer) == "Esc")
        QTest::keyClick(&window, Qt::Key_Escape);
      else
        QTest::mouseClick(window.MsgButton[QString(c.answer) == "Yes" ? 0 : 1], Qt::LeftButton);
    });

    EXPECT_EQ(CopyMediaFile(source, target), c.replaced);
    EXPECT_TRUE(answer.Ran());
    EXPECT_EQ(shownSource, source);
    EXPECT_EQ(shownTarget, target);
    EXPECT_EQ(App().ReplaceAnswer, c.replaceAnswer);
    EXPECT_EQ(LastCopyComplete(), c.replaced);
    EXPECT_EQ(Contents(target), c.replaced ? "new contents" : "old");
    EXPECT_EQ(Contents(source), "new contents");
    EXPECT_EQ(Names(to_), QStringList{"song.mp3"});
    QFile::remove(target);
  }
}

TEST_F(FileOperationsTest, NewTargetsOfAnyNameAreCopiedWithoutAsking) {
  const QStringList names{"it's \"quoted\".jpg", "a;b c.png", "Ärger über Café.mp3", " lead.txt"};
  for (const QString& name : names) {
    SCOPED_TRACE(name.toStdString());
    const QString source = testenv::MakeFile(from_ + "/" + name, "data of " + name.toUtf8());
    const QDateTime stamp(QDate(2004, 3, 7), QTime(13, 5, 9));
    QFile file(source);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.setFileTime(stamp, QFileDevice::FileModificationTime);
    file.close();
    App().ReplaceAnswer = 0;

    EXPECT_TRUE(CopyMediaFile(source, to_ + "/" + name));
    EXPECT_EQ(App().ReplaceAnswer, 6);
    EXPECT_FALSE(Windows().IsLoaded(WindowId::ReplaceVerify));
    EXPECT_EQ(Contents(to_ + "/" + name), "data of " + name.toUtf8());
    // The copy keeps the source's modified time.
    EXPECT_EQ(QFileInfo(to_ + "/" + name).lastModified(), stamp);
  }
  QStringList sorted = names;
  sorted.sort();
  EXPECT_EQ(Names(to_), sorted);
}

TEST_F(FileOperationsTest, AFolderPartThatIsAFileIsWriteProtected) {
  const QString source = testenv::MakeFile(from_ + "/a.jpg", "picture");
  testenv::MakeFile(to_ + "/plain.txt", "not a folder");
  QString prompt;
  int icon = -1;
  testenv::WhenMessageBoxShown([&](MessageBox& box) {
    prompt = box.MsgText->text();
    icon = App().MsgBox->IconIndex();
    QTest::keyClick(&box, Qt::Key_Return);
  });

  EXPECT_FALSE(CopyMediaFile(source, to_ + "/plain.txt/a.jpg"));
  EXPECT_EQ(prompt, "The destination drive is write protected.");
  EXPECT_EQ(icon, 2);  // exclamation
  EXPECT_EQ(App().ReplaceAnswer, 7);
  EXPECT_FALSE(LastCopyComplete());
  EXPECT_EQ(Names(to_), QStringList{"plain.txt"});
}

TEST_F(FileOperationsTest, AFailedCopyLosesNothing) {
  // The target is a link to a device that is always full: the copy is
  // asked for (the target exists), fails, and is not reported.
  const QString source = testenv::MakeFile(from_ + "/clip.avi", QByteArray(3000, 'v'));
  const QString target = to_ + "/clip.avi";
  ASSERT_EQ(::symlink("/dev/full", QFile::encodeName(target).constData()), 0);
  EXPECT_EQ(CopyFileContents(source, target), ENOSPC);

  WindowAnswer<ReplaceVerify> yes(
      [](ReplaceVerify& window) { QTest::mouseClick(window.MsgButton[0], Qt::LeftButton); });
  EXPECT_FALSE(CopyMediaFile(source, target));
  EXPECT_TRUE(yes.Ran());
  EXPECT_EQ(App().ReplaceAnswer, 6);
  EXPECT_FALSE(LastCopyComplete());
  EXPECT_EQ(QFileInfo(target).symLinkTarget(), "/dev/full");
  EXPECT_EQ(Contents(source), QByteArray(3000, 'v'));
  EXPECT_EQ(Names(to_), QStringList{"clip.avi"});

  // A source that has vanished copies nothing and leaves the old target.
  const QString old = testenv::MakeFile(to_ + "/gone.jpg", "old picture");
  EXPECT_EQ(CopyFileContents(from_ + "/gone.jpg", old), ENOENT);
  EXPECT_FALSE(CopyMediaFile(from_ + "/gone.jpg", to_ + "/new.jpg"));
  EXPECT_EQ(App().ReplaceAnswer, 6);
  EXPECT_EQ(Contents(old), "old picture");
  EXPECT_EQ(Names(to_), (QStringList{"clip.avi", "gone.jpg"}));
}

TEST_F(FileOperationsTest, CopyFollowsALinkToAFile) {
  const QString source = testenv::MakeFile(from_ + "/new.jpg", "new");
  const QString real = testenv::MakeFile(testenv::Root() + "/home/real/photo.jpg", "old");
  const QString link = to_ + "/photo.jpg";
  ASSERT_EQ(::symlink(QFile::encodeName(real).constData(), QFile::encodeName(link).constData()), 0);

  EXPECT_EQ(CopyFileContents(source, link), 0);
  EXPECT_EQ(QFileInfo(link).symLinkTarget(), real);
  EXPECT_EQ(Contents(real), "new");
  EXPECT_EQ(Names(testenv::Root() + "/home/real"), QStringList{"photo.jpg"});
}

TEST_F(FileOperationsTest, DeleteMediaFileFollowsTheDeleteOption) {
  const QString folder = testenv::Root() + "/home/pictures";
  testenv::MakeFile(folder + "/keep.jpg", "stays");

  // "0", the default: into the Trash of the user's data folder.
  const QString recycled = testenv::MakeFile(folder + "/recycled.jpg", "to the bin");
  EXPECT_TRUE(DeleteMediaFile(recycled));
  const QString trash = testenv::Root() + "/data/Trash";
  EXPECT_EQ(Contents(trash + "/files/recycled.jpg"), "to the bin");
  const QString info = QString::fromUtf8(Contents(trash + "/info/recycled.jpg.trashinfo"));
  EXPECT_TRUE(info.contains("\nPath=" + recycled + "\n")) << info.toStdString();

  // "1": gone for good, a read-only file too.
  settings::SaveSetting("DeleteOption", "1");
  const QString removed = testenv::MakeFile(folder + "/removed.jpg", "gone");
  QFile::setPermissions(removed, QFile::ReadOwner);
  EXPECT_TRUE(DeleteMediaFile(removed));
  EXPECT_FALSE(QFileInfo::exists(removed));
  EXPECT_FALSE(QFileInfo::exists(trash + "/files/removed.jpg"));
  EXPECT_EQ(Names(folder), QStringList{"keep.jpg"});
  EXPECT_FALSE(DeleteMediaFile(folder + "/never there.jpg"));
}

TEST_F(FileOperationsTest, WipeOverwritesRenamesAndRemoves) {
  const QString folder = testenv::Root() + "/home/secret";
  testenv::MakeFile(folder + "/keep.txt", "stays");
  // Three buffers' worth and a little more, so the passes cross buffer ends.
  const qint64 length = 3 * (1 << 20) + 5;
  const QString wiped = testenv::MakeFile(folder + "/diary.txt", QByteArray(length, 'x'));
  // A second name of the same file sees what the passes left in it.
  const QString witness = testenv::Root() + "/home/witness";
  ASSERT_EQ(::link(QFile::encodeName(wiped).constData(), QFile::encodeName(witness).constData()), 0);
  settings::SaveSetting("DeleteOption", "2");

  QString message;
  bool waitPointer = false;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&] {
    if (auto* shown = Windows().Get<DeleteMessage>(); shown && shown->isVisible())
      message = shown->Text();
    if (const QCursor* cursor = QApplication::overrideCursor())
      waitPointer = waitPointer || cursor->shape() == Qt::WaitCursor;
  });
  look.start(50);

  EXPECT_TRUE(DeleteMediaFile(wiped));
  EXPECT_EQ(message, "Deleting File");
  EXPECT_TRUE(waitPointer);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  EXPECT_FALSE(Windows().IsLoaded(WindowId::DeleteMessage));
  // No file of the old name and none of a new one.
  EXPECT_EQ(Names(folder), QStringList{"keep.txt"});
  EXPECT_EQ(Contents(witness), QByteArray(length, char(0xAA)));
}

TEST(WipeWork, PassesNameAndRandomBytes) {
  std::vector<double> draws{0.0, 0.5, 0.9999, 0.05, 0.1};
  size_t next = 0;
  EXPECT_EQ(WipeName(5, [&] { return draws[next++]; }), "amybc");
  EXPECT_EQ(WipeName(0, [] { return 0.5; }), "");

  const QString path = testenv::MakeFile(testenv::Root() + "/home/pass.bin", QByteArray(10, 'x'));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  EXPECT_EQ(WriteWipePass(file.handle(), 6, WipePass::Fives), 0);
  EXPECT_EQ(Contents(path), QByteArray("UUUUUUxxxx"));
  EXPECT_EQ(WriteWipePass(file.handle(), 10, WipePass::Random), 0);
  const QByteArray random = Contents(path);
  EXPECT_EQ(random.size(), 10);
  EXPECT_NE(random, QByteArray(10, 'x'));
  EXPECT_EQ(WriteWipePass(-1, 1, WipePass::Tens), EBADF);
}
