#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QUrl>

#include "albums/AlbumEdit.h"
#include "albums/AlbumRules.h"
#include "albums/AlbumSelect.h"
#include "controls/MessageBox.h"
#include "controls/MsgBoxEnhanced.h"
#include "core/AppState.h"
#include "core/DataFile.h"
#include "core/Database.h"
#include "core/Settings.h"
#include "core/Statements.h"
#include "core/WindowRegistry.h"
#include "fileops/FolderTreeView.h"
#include "platform/SiblingPrograms.h"
#include "shell/SharedMessageBox.h"
#include "support/MessageBoxAnswer.h"
#include "support/TestEnv.h"

namespace {

class AlbumTest : public testing::Test {
 protected:
  void SetUp() override {
    testenv::InstallDataFile();
    ASSERT_TRUE(OpenDataFile());
    CreateSharedMsgBox()->SetSoundBeep(false);
    media_ = testenv::Root() + "/media";
  }
  void TearDown() override {
    // Windows left open go without their questions.
    App().ShuttingDown = true;
    Windows().UnloadAllExcept({});
    QCoreApplication::processEvents();
    testenv::FinishMessageBoxWatches();
    ReleaseSharedMsgBox();
    delete App().DatabaseConnection;
    App().DatabaseConnection = nullptr;
  }
  Database& Db() { return *App().DatabaseConnection; }

  QString File(const QString& relative) { return testenv::MakeFile(media_ + "/" + relative, "x"); }

  // The editor on the album with this id (0 for a new one).
  AlbumEdit* OpenEditor(qint32 id) {
    App().SelectedAlbumId = id;
    auto* edit = new AlbumEdit;
    edit->show();
    return edit;
  }

  // A drop of these addresses as a file manager sends it.
  static QMimeData* UriList(const QList<QUrl>& urls) {
    auto* data = new QMimeData;
    data->setUrls(urls);
    return data;
  }
  static QList<QUrl> Locals(const QStringList& paths) {
    QList<QUrl> urls;
    for (const QString& path : paths) urls << QUrl::fromLocalFile(path);
    return urls;
  }

  // Answers the next message box with the button of this caption and
  // keeps its prompt and title.
  void AnswerNextBox(const QString& caption) {
    testenv::WhenMessageBoxShown([this, caption](MessageBox& box) {
      prompt_ = box.MsgText->text();
      title_ = box.TopCaption->text();
      for (QPushButton* button : box.MsgButton)
        if (button && button->isVisible() && button->text() == caption) {
          button->click();
          return;
        }
      ADD_FAILURE() << "no button " << caption.toStdString();
    });
  }

  QString media_, prompt_, title_;
};

QStringList Names(const QList<AlbumHeader>& albums) {
  QStringList names;
  for (const AlbumHeader& album : albums) names << album.PlaylistName;
  return names;
}

TEST(AlbumRules, DuplicatesAreJudgedByTheNameAloneAndTheCountReadsWithThousands) {
  using namespace albumrules;
  EXPECT_FALSE(HoldsName({"/a/x.jpg"}, "/a/x.jpeg"));
  EXPECT_EQ(LaterDuplicates({"/a/x.jpg", "/b/x.jpg", "/c/y.jpg", "/d/X.jpg", "/e/y.jpg", "/f/z.jpg"}),
            QList<int>({1, 3, 4}));
  EXPECT_EQ(CountText(12345), "12,345 record(s) included");
}

TEST_F(AlbumTest, ADropTakesLocalFilesOnlyAndTheSearchListsOwnWord) {
  const QString a = File("a.jpg");
  const QString b = File("sub/b.png");
  const QString track = File("Track01.cda");
  QDir().mkpath(media_ + "/folder");

  std::unique_ptr<QMimeData> mixed(UriList(Locals({a, media_ + "/folder", track, media_ + "/gone.jpg"}) +
                                           QList<QUrl>({QUrl("https://example.com/c.jpg")}) +
                                           Locals({b})));
  const albumrules::DropContents contents = albumrules::ReadDrop(mixed.get());
  EXPECT_FALSE(contents.Internal);
  EXPECT_EQ(contents.Files, QStringList({media_ + "/a.jpg", media_ + "/sub/b.png"}));

  std::unique_ptr<QMimeData> web(UriList({QUrl("https://example.com/c.jpg")}));
  std::unique_ptr<QMimeData> folder(UriList(Locals({media_ + "/folder"})));
  auto text = std::make_unique<QMimeData>();
  text->setText("/media/a.jpg");
  auto internal = std::make_unique<QMimeData>();
  internal->setText("internal");
  EXPECT_FALSE(albumrules::AcceptsDrop(web.get()));
  EXPECT_FALSE(albumrules::AcceptsDrop(folder.get()));
  EXPECT_FALSE(albumrules::AcceptsDrop(text.get()));
  EXPECT_TRUE(albumrules::ReadDrop(internal.get()).Internal);

  // On the window: a real drop event on the album list, then the same file
  // again, which is allowed while duplicates are not prevented.
  AlbumEdit* edit = OpenEditor(0);
  EXPECT_FALSE(edit->replaceButton->isEnabled());
  QWidget* target = edit->AlbumList->viewport();
  QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, mixed.get(), Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(target, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(10, 10), Qt::CopyAction, mixed.get(), Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(target, &drop);
  EXPECT_TRUE(drop.isAccepted());
  EXPECT_EQ(edit->AlbumPaths, QStringList({media_ + "/a.jpg", media_ + "/sub/b.png"}));
  EXPECT_EQ(edit->Label12->text(), "2 record(s) included");
  EXPECT_TRUE(edit->replaceButton->isEnabled());

  QDropEvent refused(QPointF(10, 10), Qt::CopyAction, web.get(), Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(target, &refused);
  EXPECT_FALSE(refused.isAccepted());

  std::unique_ptr<QMimeData> again(UriList(Locals({a})));
  EXPECT_TRUE(edit->AlbumList_Drop(again.get()));
  EXPECT_EQ(edit->AlbumCount(), 3);
  // With duplicates prevented the same name from another folder stays out.
  edit->Check3->click();
  EXPECT_EQ(edit->AlbumPaths, QStringList({media_ + "/a.jpg", media_ + "/sub/b.png"}));
  std::unique_ptr<QMimeData> sameName(UriList(Locals({File("other/A.JPG")})));
  EXPECT_TRUE(edit->AlbumList_Drop(sameName.get()));
  EXPECT_EQ(edit->AlbumCount(), 2);
}

TEST_F(AlbumTest, SavingWritesTheRowsInOrderAndRenamingKeepsTheAlbum) {
  const QStringList files = {File("one.jpg"), File("Bob's two.png"), File("three.gif")};
  AlbumEdit* edit = OpenEditor(0);
  std::unique_ptr<QMimeData> drop(UriList(Locals(files)));
  ASSERT_TRUE(edit->AlbumList_Drop(drop.get()));

  // No name: nothing saved.
  AnswerNextBox("&OK");
  EXPECT_FALSE(edit->replaceButton_Click());
  EXPECT_EQ(prompt_, "An album name must be entered.");
  EXPECT_TRUE(SelectAlbumHeaders(Db()).isEmpty());

  // An apostrophe in the name and in a path is kept as typed.
  edit->AlbumName->setEditText("Mum's birthday");
  ASSERT_TRUE(edit->replaceButton_Click());
  const QList<AlbumHeader> albums = SelectAlbumHeaders(Db());
  ASSERT_EQ(albums.size(), 1);
  const qint32 id = albums[0].PlaylistID;
  EXPECT_EQ(albums[0].PlaylistName, "Mum's birthday");
  EXPECT_EQ(settings::GetSetting("AlbumSelected"), QString::number(id));
  EXPECT_EQ(SelectPlaylistFiles(Db(), id),
            QStringList({media_ + "/one.jpg", media_ + "/Bob's two.png", media_ + "/three.gif"}));
  EXPECT_FALSE(edit->replaceButton->isEnabled());
  EXPECT_EQ(edit->AlbumName->itemText(edit->AlbumName->count() - 1), "(Add New Album)");

  // The last entry moves up twice; saved twice, the rows are rewritten.
  edit->AlbumList->setCurrentRow(2);
  EXPECT_FALSE(edit->downButton->isEnabled());
  edit->upButton_Click();
  edit->upButton_Click();
  EXPECT_FALSE(edit->upButton->isEnabled());
  ASSERT_TRUE(edit->replaceButton_Click());
  ASSERT_TRUE(edit->replaceButton_Click());
  edit->AlbumName->setEditText("Holiday's end");
  ASSERT_TRUE(edit->replaceButton_Click());
  edit->close();

  // Opened again, the window shows the album as saved.
  AlbumEdit* again = OpenEditor(id);
  EXPECT_EQ(again->AlbumName->currentText(), "Holiday's end");
  EXPECT_EQ(again->AlbumPaths,
            QStringList({media_ + "/three.gif", media_ + "/one.jpg", media_ + "/Bob's two.png"}));
  EXPECT_EQ(Names(SelectAlbumHeaders(Db())), QStringList({"Holiday's end"}));
}

TEST_F(AlbumTest, PickingAnotherAlbumAsksToSaveTheChangesFirst) {
  const qint32 first = AddAlbum(Db(), "First", false);
  const qint32 second = AddAlbum(Db(), "Second", true);
  ASSERT_TRUE(SavePlaylistFiles(Db(), first, {"/photos/1.jpg"}));
  ASSERT_TRUE(SavePlaylistFiles(Db(), second, {"/photos/2.jpg", "/photos/3.jpg"}));
  AlbumEdit* edit = OpenEditor(first);
  EXPECT_EQ(edit->AlbumName->count(), 3);
  EXPECT_FALSE(edit->Check3->isChecked());
  std::unique_ptr<QMimeData> drop(UriList(Locals({File("new.jpg")})));
  ASSERT_TRUE(edit->AlbumList_Drop(drop.get()));

  edit->AlbumName->setCurrentIndex(1);
  AnswerNextBox("&No");
  edit->AlbumName_Click();
  EXPECT_EQ(prompt_, "Your album selections have changed.\nDo you wish to save the changes?");
  EXPECT_EQ(title_, "Album Editing");
  EXPECT_EQ(edit->AlbumPaths, QStringList({"/photos/2.jpg", "/photos/3.jpg"}));
  EXPECT_TRUE(edit->Check3->isChecked());
  EXPECT_EQ(SelectPlaylistFiles(Db(), first), QStringList({"/photos/1.jpg"}));

  // Saved on the way: the first album takes the new entry.
  ASSERT_TRUE(edit->AlbumList_Drop(drop.get()));
  edit->AlbumName->setCurrentIndex(0);
  AnswerNextBox("&Yes");
  edit->AlbumName_Click();
  EXPECT_EQ(SelectPlaylistFiles(Db(), second), QStringList({"/photos/2.jpg", "/photos/3.jpg", media_ + "/new.jpg"}));
  EXPECT_EQ(App().SelectedAlbumId, first);
  EXPECT_EQ(edit->AlbumPaths, QStringList({"/photos/1.jpg"}));
}

TEST_F(AlbumTest, AFailingRowLeavesTheAlbumAsItWas) {
  const qint32 id = AddAlbum(Db(), "Trip", false);
  const QStringList before = {"/photos/a.jpg", "/photos/b.jpg"};
  ASSERT_TRUE(SavePlaylistFiles(Db(), id, before));
  ASSERT_TRUE(Db().Execute(
      "CREATE TEMP TRIGGER RefuseBad BEFORE INSERT ON PlaylistFiles WHEN NEW.PlaylistFile LIKE '%/bad.jpg' "
      "BEGIN SELECT RAISE(ABORT, 'refused'); END"));

  AlbumEdit* edit = OpenEditor(id);
  std::unique_ptr<QMimeData> drop(UriList(Locals({File("good.jpg"), File("bad.jpg")})));
  ASSERT_TRUE(edit->AlbumList_Drop(drop.get()));
  edit->AlbumName->setEditText("Trip renamed");
  EXPECT_FALSE(edit->replaceButton_Click());
  EXPECT_EQ(SelectPlaylistFiles(Db(), id), before);
  EXPECT_EQ(Names(SelectAlbumHeaders(Db())), QStringList({"Trip"}));
  // The window keeps its changes to save again.
  EXPECT_TRUE(edit->replaceButton->isEnabled());
  EXPECT_EQ(edit->AlbumCount(), 4);

  // A new album that fails leaves no header behind.
  edit->AlbumName->setCurrentIndex(edit->AlbumName->count() - 1);
  edit->replaceButton->setEnabled(false);
  edit->AlbumName_Click();
  EXPECT_EQ(App().SelectedAlbumId, 0);
  ASSERT_TRUE(edit->AlbumList_Drop(drop.get()));
  edit->AlbumName->setEditText("New");
  EXPECT_FALSE(edit->replaceButton_Click());
  EXPECT_EQ(Names(SelectAlbumHeaders(Db())), QStringList({"Trip"}));
}

TEST_F(AlbumTest, RemovingEntriesAsksAndTouchesNoFile) {
  const QStringList files = {File("1.jpg"), File("2.jpg"), File("3.jpg")};
  AlbumEdit* edit = OpenEditor(0);
  std::unique_ptr<QMimeData> drop(UriList(Locals(files)));
  ASSERT_TRUE(edit->AlbumList_Drop(drop.get()));

  edit->AlbumList->item(1)->setSelected(true);
  AnswerNextBox("&No");
  edit->deleteButton_Click();
  EXPECT_EQ(prompt_, "Are you sure you wish to delete the selected entry/entries?");
  EXPECT_EQ(title_, "Delete Album List File");
  EXPECT_EQ(edit->AlbumCount(), 3);

  AnswerNextBox("&Yes");
  edit->deleteButton_Click();
  EXPECT_EQ(edit->AlbumPaths, QStringList({media_ + "/1.jpg", media_ + "/3.jpg"}));
  EXPECT_TRUE(QFile::exists(media_ + "/2.jpg"));

  AnswerNextBox("&Yes");
  edit->clearButton_Click();
  EXPECT_EQ(prompt_, "Are you sure you wish to remove all entries?");
  EXPECT_EQ(title_, "Delete All Album Files");
  EXPECT_EQ(edit->AlbumCount(), 0);
  EXPECT_EQ(edit->Label12->text(), "0 records included");
  EXPECT_FALSE(edit->clearButton->isEnabled());

  // An empty album is saved only when the user insists.
  edit->AlbumName->setEditText("Empty");
  AnswerNextBox("&No");
  EXPECT_FALSE(edit->replaceButton_Click());
  EXPECT_EQ(prompt_, "Warning: No files have been added to your album.\nDo you wish to save the album anyway?");
  EXPECT_TRUE(SelectAlbumHeaders(Db()).isEmpty());
}

TEST_F(AlbumTest, ClosingWithChangesAsksAndCancelKeepsTheWindow) {
  AlbumEdit* edit = OpenEditor(0);
  std::unique_ptr<QMimeData> drop(UriList(Locals({File("1.jpg")})));
  ASSERT_TRUE(edit->AlbumList_Drop(drop.get()));
  edit->AlbumName->setEditText("Kept");
  AnswerNextBox("Cancel");
  EXPECT_FALSE(Windows().Unload(WindowId::AlbumEdit));
  EXPECT_EQ(title_, "Exit Album Editing");
  EXPECT_TRUE(Windows().IsLoaded(WindowId::AlbumEdit));

  AnswerNextBox("&Yes");
  EXPECT_TRUE(Windows().Unload(WindowId::AlbumEdit));
  const QList<AlbumHeader> albums = SelectAlbumHeaders(Db());
  ASSERT_EQ(Names(albums), QStringList({"Kept"}));
  EXPECT_EQ(SelectPlaylistFiles(Db(), albums[0].PlaylistID), QStringList({media_ + "/1.jpg"}));
}

TEST_F(AlbumTest, SelectionOpensDeletesAndFallsBackToTheFirstAlbum) {
  const qint32 zoo = AddAlbum(Db(), "Zoo", false);
  const qint32 beach = AddAlbum(Db(), "Beach", false);
  ASSERT_TRUE(SavePlaylistFiles(Db(), beach, {"/photos/sand.jpg"}));
  settings::SaveSetting("AlbumSelected", "77");  // an album deleted earlier

  auto* select = new AlbumSelect;
  EXPECT_EQ(select->windowTitle(), " Album Selection");
  ASSERT_EQ(select->AlbumList->count(), 2);
  EXPECT_EQ(select->AlbumList->currentText(), "Beach");

  select->AlbumList->setCurrentIndex(1);
  select->openButton_Click();
  EXPECT_TRUE(App().AlbumMode);
  EXPECT_EQ(App().SelectedAlbumId, zoo);
  EXPECT_EQ(App().CurrentFolder, "Zoo");
  EXPECT_FALSE(Windows().IsLoaded(WindowId::AlbumSelect));

  select = new AlbumSelect;
  EXPECT_EQ(select->AlbumList->currentText(), "Zoo");
  select->AlbumList->setCurrentIndex(0);
  AnswerNextBox("&Yes");
  select->deleteButton_Click();
  EXPECT_EQ(prompt_, "Are you sure you wish to delete this album?");
  EXPECT_EQ(title_, "Delete Album");
  EXPECT_TRUE(SelectPlaylistFiles(Db(), beach).isEmpty());
  EXPECT_EQ(Names(SelectAlbumHeaders(Db())), QStringList({"Zoo"}));
  EXPECT_EQ(select->AlbumList->currentText(), "Zoo");

  AnswerNextBox("&Yes");
  select->deleteButton_Click();
  EXPECT_EQ(settings::GetSetting("AlbumSelected"), "0");
  EXPECT_FALSE(select->openButton->isEnabled());
  EXPECT_TRUE(select->addButton->isEnabled());
  select->close();

  // With no album the selection goes straight on to a new album.
  App().SelectedAlbumId = zoo;
  new AlbumSelect;
  EXPECT_TRUE(QTest::qWaitFor([] { return Windows().IsLoaded(WindowId::AlbumEdit); }));
  EXPECT_FALSE(Windows().IsLoaded(WindowId::AlbumSelect));
  EXPECT_EQ(App().SelectedAlbumId, 0);
}

TEST_F(AlbumTest, SelectionMailsTheAlbumInOrderAndClosesWhenLeft) {
  const qint32 id = AddAlbum(Db(), "Mail", false);
  const QStringList files = {File("b.jpg"), File("a.jpg")};
  ASSERT_TRUE(SavePlaylistFiles(Db(), id, files));
  const QByteArray savedPath = qgetenv("PATH");
  const QString bin = testenv::Root() + "/bin";
  testenv::MakeFile(bin + "/xdg-email", "#!/bin/sh\n");
  QFile::setPermissions(bin + "/xdg-email", QFile::ReadOwner | QFile::ExeOwner);
  qputenv("PATH", bin.toUtf8());
  QStringList arguments;
  platform::SetProgramStarter([&arguments](const QString&, const QStringList& given) {
    arguments = given;
    return true;
  });

  auto* select = new AlbumSelect;
  select->show();
  select->emailButton_Click();
  EXPECT_EQ(arguments, QStringList({"--attach", media_ + "/b.jpg", "--attach", media_ + "/a.jpg"}));

  // Without a mail program the failure is told.
  qputenv("PATH", (testenv::Root() + "/none").toUtf8());
  App().MailSessionId = 0;
  AnswerNextBox("&OK");
  select->emailButton_Click();
  EXPECT_EQ(prompt_, "A problem has occurred while trying to send an e-mail.");
  qputenv("PATH", savedPath);
  platform::SetProgramStarter({});

  // Clicking another window closes the selection.
  select->activateWindow();
  EXPECT_TRUE(QTest::qWaitFor([select] { return select->isActiveWindow(); }));
  QWidget other;
  other.show();
  other.activateWindow();
  EXPECT_TRUE(QTest::qWaitFor([] { return !Windows().IsLoaded(WindowId::AlbumSelect); }));
}

// Needs the shared file search.
TEST_F(AlbumTest, SearchListsTheFoldersMediaAndTheCopyButtonAddsThem) {
  File("find/one.jpg");
  File("find/deep/two.png");
  File("find/notes.txt");
  AlbumEdit* edit = OpenEditor(0);
  edit->FolderTree->SetPath(media_ + "/find");
  edit->FileType->setCurrentIndex(0);
  edit->Check1->setChecked(true);
  edit->Check2->setChecked(true);
  edit->startButton_Click();
  QStringList found = edit->SearchPaths;
  found.sort();
  EXPECT_EQ(found, QStringList({media_ + "/find/deep/two.png", media_ + "/find/one.jpg"}));
  EXPECT_FALSE(edit->stopButton->isEnabled());

  edit->copyButton_Click();
  EXPECT_EQ(edit->AlbumCount(), 2);
  EXPECT_TRUE(edit->FileList->selectedItems().isEmpty());  // taken entries are deselected

  // Subfolders off.
  edit->Check1->setChecked(false);
  edit->startButton_Click();
  EXPECT_EQ(edit->SearchPaths, QStringList({media_ + "/find/one.jpg"}));

  // Popup delete on the search list removes the entry from it alone.
  edit->DragSource = 'F';
  edit->FileList->item(0)->setSelected(true);
  edit->mnuDelete_Click();
  EXPECT_TRUE(edit->SearchPaths.isEmpty());
  EXPECT_EQ(edit->AlbumCount(), 2);

  // A name typed by the user is a change to save.
  edit->replaceButton->setEnabled(false);
  edit->AlbumName->lineEdit()->clear();
  QTest::keyClicks(edit->AlbumName->lineEdit(), "Found");
  EXPECT_TRUE(edit->replaceButton->isEnabled());
}

}  // namespace
