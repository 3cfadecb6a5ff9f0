// Opening items of the browser: the program's own viewers through their
// entry points, the desktop's programs for documents and the videos that an
// outside program plays, the viewer sibling for CD tracks.

#include <QSignalSpy>

#include "BrowserFixture.h"
#include "browser/MenuFile.h"
#include "browser/Opening.h"
#include "controls/MessageBox.h"
#include "core/AppState.h"
#include "core/WindowRegistry.h"
#include "core/WindowShow.h"
#include "platform/SiblingPrograms.h"
#include "platform/SoundFont.h"
#include "shell/SharedMessageBox.h"
#include "support/MessageBoxAnswer.h"
#include "support/PulseServer.h"

namespace {

using namespace browsertest;

// A viewer standing in for the ones still to come: it counts how often it
// is told to show the current item.
class FakeViewer : public QWidget, public MediaViewer {
 public:
  void LoadCurrentItem() override { ++reloads; }
  int reloads = 0;
};

class OpeningTest : public BrowserTest {
 protected:
  void SetUp() override {
    BrowserTest::SetUp();
    platform::SetProgramStarter([this](const QString& path, const QStringList& arguments) {
      started << QStringList(QStringList{path} + arguments).join(' ');
      return true;
    });
    CreateSharedMsgBox()->SetSoundBeep(false);
  }
  void TearDown() override {
    ReleaseSharedMsgBox();
    BrowserTest::TearDown();
  }
  // The viewer of id loads as a fake, counting its loads.
  void ViewerComesAs(WindowId id) {
    Windows().SetLoader(id, [this, id] {
      loads << int(id);
      return new FakeViewer;
    });
  }
  QStringList started;
  QList<int> loads;
};

}  // namespace

TEST_F(OpeningTest, DocumentsAndOutsideVideosGoToTheDesktopsProgramOthersToTheViewers) {
  const QString folder = MakeFolderWith("mixed", {"a.pdf", "b.doc", "c d;'é.txt", "clip.mp4",
                                                  "old.mov", "take.avi"});
  Thumbnails window;
  Open(window, folder);
  ViewerComesAs(WindowId::SingleVideo);

  // Documents: the desktop's program for the type, or nothing at all.
  for (qint32 item : {0, 1, 2}) {
    App().CurrentDocument() = item;
    window.OpenItem(DocumentsTab);
  }
  EXPECT_EQ(started, QStringList({"vistrel-test-reader " + folder + "/a.pdf",
                                  "vistrel-test-reader " + folder + "/c d;'é.txt"}));

  // Videos: mp4 to the desktop, mov with no program to nothing, avi to the
  // program's own viewer, which an open audio viewer gives way to.
  started.clear();
  Windows().Loaded(WindowId::SingleAudio, new QWidget);
  App().CurrentVideo() = 0;
  window.OpenVideo();
  EXPECT_FALSE(Windows().IsLoaded(WindowId::SingleAudio));
  App().CurrentVideo() = 1;
  window.OpenVideo();
  EXPECT_EQ(started, QStringList({"vistrel-test-player " + folder + "/clip.mp4"}));
  EXPECT_TRUE(loads.isEmpty());
  App().CurrentVideo() = 2;
  window.OpenVideo();
  EXPECT_EQ(loads, QList<int>({int(WindowId::SingleVideo)}));
  EXPECT_EQ(App().CurrentVideo(), 2);

  // A document closes all three viewers.
  Windows().Loaded(WindowId::SingleImage, new QWidget);
  Windows().Loaded(WindowId::SingleAudio, new QWidget);
  window.OpenDocument();
  EXPECT_TRUE(Windows().LoadedIds().empty());
}

TEST_F(OpeningTest, PicturesOpenTheirViewerAndNothingPretendsWithoutOne) {
  Thumbnails window;
  Open(window, MakePictureFolder("shots", 3));
  QSignalSpy opened(&window, &Thumbnails::ItemOpened);
  window.ThumbImage_Click(1);
  EXPECT_EQ(opened.count(), 1);
  EXPECT_FALSE(Windows().IsLoaded(WindowId::SingleImage));

  ViewerComesAs(WindowId::SingleImage);
  App().PendingFile = "/somewhere/else.png";
  window.ThumbImage_Click(2);
  EXPECT_EQ(App().CurrentPicture(), 2);
  EXPECT_EQ(App().PendingFile, "");
  ASSERT_TRUE(Windows().IsLoaded(WindowId::SingleImage));
  EXPECT_TRUE(Windows().Find(WindowId::SingleImage)->isVisible());
}

TEST_F(OpeningTest, AudiosNeedASoundOutputAndCdTracksGoToTheViewerSibling) {
  const QString folder = MakeFolderWith("songs", {"a.mp3", "Track01.cda"});
  Thumbnails window;
  Open(window, folder);
  ViewerComesAs(WindowId::SingleAudio);
  {
    AbsentPulseServer absent;
    platform::SetGeneralMidiSoundFont(testenv::Root() + "/no-such.sf2");
    QString told;
    testenv::WhenMessageBoxShown([&told](MessageBox& box) {
      told = box.TopCaption->text() + ": " + box.MsgText->text();
      QTest::mouseClick(box.MsgButton[0], Qt::LeftButton);
    });
    App().CurrentAudio() = 0;
    window.OpenAudio();
    EXPECT_EQ(told, "Windows Setup: Your computer is not configured to play audio files");
    EXPECT_TRUE(loads.isEmpty());
    platform::SetGeneralMidiSoundFont(QString());
  }

  // A track never reaches the audio viewer, with or without sound.
  App().CurrentAudio() = 1;
  window.OpenAudio();
  testenv::MakeFile(App().ProgramFolder + "/Lorvane", "#!/bin/sh\n");
  QFile::setPermissions(App().ProgramFolder + "/Lorvane", QFile::ReadOwner | QFile::ExeOwner);
  window.OpenAudio();
  EXPECT_EQ(started, QStringList({QString("vistrel-test-cd"),
                                  App().ProgramFolder + "/Lorvane " + folder + "/Track01.cda"}));
  EXPECT_TRUE(loads.isEmpty());
}

TEST_F(OpeningTest, InAnAlbumTheOutsideProgramIsGivenTheAlbumNameJoinedToThePath) {
  const QString folder = MakeFolderWith("docs", {"a.pdf"});
  Thumbnails window;
  Open(window, folder);
  App().AlbumMode = true;
  App().CurrentFolder = "Trip";
  App().DocumentFiles() = QStringList({folder + "/a.pdf", QString()});
  App().CurrentDocument() = 0;
  window.OpenDocument();
  EXPECT_EQ(started, QStringList({"vistrel-test-reader Trip/" + folder + "/a.pdf"}));
  EXPECT_EQ(GetAssocPgm("x.pdf").section('/', -1), "vistrel-test-reader");
  EXPECT_EQ(GetAssocPgm("x.mov"), "");
}

TEST(OpeningRoutines, TypeTestsAndTheCommandPathOfAnAssociation) {
  FillExteriorTables();
  EXPECT_TRUE(IsExteriorPgmTypeV("a.mp4"));
  EXPECT_FALSE(IsExteriorPgmTypeV("a.avi"));
  EXPECT_TRUE(IsExteriorPgmTypeD("b.docx"));
  EXPECT_FALSE(IsExteriorPgmTypeD("b.rtf"));

  // Quotes go, the text is lower-cased and cut behind the last ".exe"; the
  // system folder is taken to be c:\windows. Paths from the working folder.
  QDir::setCurrent(testenv::Root());
  testenv::MakeFile(testenv::Root() + "/apps/player.exe", "");
  EXPECT_EQ(ParseCommandPath("\"Apps/Player.EXE\" \"%1\""), "apps/player.exe");
  EXPECT_EQ(ParseCommandPath("apps/viewer.exe %1"), "");
  EXPECT_EQ(ParseCommandPath("player %1"), "");
  testenv::MakeFile(testenv::Root() + "/c:\\windows\\system32\\notepad.exe", "");
  EXPECT_EQ(ParseCommandPath("%SystemRoot%\\system32\\notepad.exe %1"),
            "c:\\windows\\system32\\notepad.exe");
}
