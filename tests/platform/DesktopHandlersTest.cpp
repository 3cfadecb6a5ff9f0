#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTest>
#include <utility>

#include "platform/DesktopHandlers.h"
#include "platform/SiblingPrograms.h"
#include "support/DesktopWorld.h"
#include "support/TestEnv.h"

namespace {

using Started = QList<QStringList>;

// The desktop of the test binary (see DesktopWorld.h), with every program
// start recorded, program first, instead of made.
class DesktopHandlersTest : public testing::Test {
 protected:
  void SetUp() override {
    platform::SetProgramStarter([this](const QString& path, const QStringList& arguments) {
      started << (QStringList{path} + arguments);
      return true;
    });
  }
  void TearDown() override { platform::SetProgramStarter({}); }

  static void MakeExecutable(const QString& path) {
    testenv::MakeFile(path, "#!/bin/sh\nexit 0\n");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }

  Started started;
};

}  // namespace

TEST_F(DesktopHandlersTest, TypesOfNamesAndTheirDefaultApplications) {
  const std::pair<QString, QString> types[] = {{"clip.MP4", "video/mp4"},
                                               {"/my files.d/a b.pdf", "application/pdf"},
                                               {"Track01.cda", "application/octet-stream"},
                                               {"plain-name", "application/octet-stream"},
                                               {"", "application/octet-stream"}};
  for (const auto& [name, type] : types)
    EXPECT_EQ(platform::MimeTypeOfName(name), type) << name.toStdString();

  const platform::DesktopApplication player = platform::DefaultApplicationFor("video/mp4");
  EXPECT_EQ(player.Id, "vistrel-test-player.desktop");
  EXPECT_EQ(player.Executable, testenv::DesktopWorldDir() + "/bin/vistrel-test-player");
  EXPECT_EQ(player.Exec, "vistrel-test-player %U");

  const std::pair<QString, QString> defaults[] = {
      {" Audio/MPEG ", "vistrel-test-player.desktop"},
      {"text/plain", "vistrel-test-reader.desktop"},
      {"x-content/video-dvd", "vistrel-test-dvd.desktop"},
      {"x-content/audio-cdda", "vistrel-test-cd.desktop"},
      {"video/quicktime", ""},
      {"", ""}};
  for (const auto& [type, id] : defaults) {
    EXPECT_EQ(platform::DefaultApplicationFor(type).Id, id) << type.toStdString();
    EXPECT_EQ(platform::HasDefaultApplicationFor(type), !id.isEmpty()) << type.toStdString();
  }
}

TEST_F(DesktopHandlersTest, TheRasterEditorIsNeverTheDefaultViewerAndGoesWhenUninstalled) {
  EXPECT_EQ(platform::RasterEditorFor("image/png").Id, "vistrel-test-painter.desktop");
  EXPECT_FALSE(platform::RasterEditorFor("video/mp4").IsValid());
  EXPECT_FALSE(platform::RasterEditorFor("image/bmp").IsValid());
  {
    testenv::HiddenApplication painter(testenv::PainterApp);
    ASSERT_TRUE(painter.Hidden());
    EXPECT_FALSE(platform::RasterEditorFor("image/png").IsValid());
    EXPECT_EQ(platform::DefaultApplicationFor("image/png").Id, "vistrel-test-viewer.desktop");
  }
  EXPECT_EQ(platform::RasterEditorFor("image/png").Id, "vistrel-test-painter.desktop");
}

TEST_F(DesktopHandlersTest, AnEntryTheUserDeletedIsNoDefault) {
  // A user's copy of the viewer's entry with Hidden=true deletes it; the
  // next application for pictures takes its place.
  const QString copy = testenv::DesktopWorldDir() + "/home/data/applications/" + testenv::ViewerApp;
  testenv::MakeFile(copy, "[Desktop Entry]\nType=Application\nName=Gone\nExec=sh\nHidden=true\n");
  EXPECT_TRUE(QTest::qWaitFor([] {
    return platform::DefaultApplicationFor("image/png").Id != "vistrel-test-viewer.desktop";
  }));
  EXPECT_EQ(platform::DefaultApplicationFor("image/png").Id, "vistrel-test-painter.desktop");
  QFile::remove(copy);
  EXPECT_TRUE(QTest::qWaitFor([] {
    return platform::DefaultApplicationFor("image/png").Id == "vistrel-test-viewer.desktop";
  }));
}

TEST_F(DesktopHandlersTest, FieldCodesExpandAndEveryFileStaysOneArgument) {
  const QString first = "/pics/a \"b\" ; c'd Ölbild.png";
  const QString second = "/pics/zwei Wörter.jpg";
  platform::DesktopApplication viewer = platform::DefaultApplicationFor("image/png");
  viewer.Exec =
      "vistrel-test-viewer --title %c %i --entry %k 100%% \"two words\" --first=%f %F "
      "%d %D %n %N %v %m %u";
  EXPECT_EQ(
      platform::CommandLineFor(viewer, {first, second}),
      QStringList({"vistrel-test-viewer", "--title", "Test viewer", "--icon", "vistrel-test-viewer",
                   "--entry", testenv::DesktopApplicationsDir() + "/vistrel-test-viewer.desktop",
                   "100%", "two words", "--first=" + first, first, second, first}));
  // Without files a code that stands alone leaves nothing.
  viewer.Exec = "vistrel-test-viewer %f --first=%f %U";
  EXPECT_EQ(platform::CommandLineFor(viewer, {}), QStringList({"vistrel-test-viewer", "--first="}));

  // %U takes every file, %f only the first.
  const platform::DesktopApplication player = platform::DefaultApplicationFor("video/mp4");
  const platform::DesktopApplication reader = platform::DefaultApplicationFor("text/plain");
  EXPECT_TRUE(platform::StartApplication(player, {first, second}));
  EXPECT_TRUE(platform::StartApplication(reader, {first, second}));
  EXPECT_FALSE(
      platform::StartApplication(platform::DefaultApplicationFor("video/quicktime"), {first}));
  EXPECT_EQ(started,
            Started({{"vistrel-test-player", first, second}, {"vistrel-test-reader", first}}));
}

TEST_F(DesktopHandlersTest, WithoutTheSiblingsTheDesktopTakesTheirWork) {
  const QString folder = testenv::ProgramFolder();
  const QString pdf = "/docs/a b.pdf";
  const std::pair<QString, Started> viewer[] = {
      {"//audio", {{"vistrel-test-player"}}},
      {"//cd", {{"vistrel-test-cd"}}},
      {"//dvd", {{"vistrel-test-dvd"}}},
      {"//sleep", {}},
      {"", {}},
      {"/media/cd/Track07.CDA", {{"vistrel-test-cd"}}},
      {"/media/cd/Track7.cda", {}},
      {pdf, {{"vistrel-test-reader", pdf}}},
      {"/videos/clip.mov", {}},
  };
  for (const auto& [argument, expected] : viewer) {
    started.clear();
    EXPECT_EQ(platform::StartViewerProgram(folder, argument), !expected.isEmpty())
        << argument.toStdString();
    EXPECT_EQ(started, expected) << argument.toStdString();
  }

  started.clear();
  EXPECT_TRUE(platform::StartPaintProgram(folder, QString()));
  EXPECT_TRUE(platform::StartPaintProgram(folder, "/pics/my photo.JPG"));
  EXPECT_FALSE(platform::StartPaintProgram(folder, "/pics/old.bmp"));
  EXPECT_EQ(started,
            Started({{"vistrel-test-painter"}, {"vistrel-test-painter", "/pics/my photo.JPG"}}));

  // A file of the sibling's name that cannot run is no sibling.
  testenv::MakeFile(folder + "/Lorvane", "not a program");
  started.clear();
  EXPECT_TRUE(platform::StartViewerProgram(folder, "//audio"));
  EXPECT_EQ(started, Started({{"vistrel-test-player"}}));
}

TEST_F(DesktopHandlersTest, TheSiblingsInTheProgramFolderTakeEveryArgument) {
  const QString folder = testenv::ProgramFolder();
  MakeExecutable(folder + "/Lorvane");
  MakeExecutable(folder + "/Tintara");
  EXPECT_TRUE(platform::StartViewerProgram(folder, "//sleep"));
  EXPECT_TRUE(platform::StartViewerProgram(folder + "/", "/media/cd/Track01.cda"));
  EXPECT_TRUE(platform::StartViewerProgram(folder, QString()));
  EXPECT_TRUE(platform::StartPaintProgram(folder, "/pics/a b.bmp"));
  EXPECT_TRUE(platform::StartPaintProgram(folder, QString()));
  const QString lorvane = folder + "/Lorvane", tintara = folder + "/Tintara";
  EXPECT_EQ(started, Started({{lorvane, "//sleep"},
                              {lorvane, "/media/cd/Track01.cda"},
                              {lorvane},
                              {tintara, "/pics/a b.bmp"},
                              {tintara}}));
}
