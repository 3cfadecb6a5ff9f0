#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "platform/DesktopHandlers.h"
#include "support/TestEnv.h"

namespace {

constexpr const char* Dvd = "x-content/video-dvd";

// The desktop's folders inside the test's world: the user's data and
// configuration, and one system data folder and one system configuration
// folder, so that the applications of the machine stay out of it.
class DesktopHandlersTest : public testing::Test {
 protected:
  void SetUp() override {
    savedDataDirs_ = qgetenv("XDG_DATA_DIRS");
    savedConfigDirs_ = qgetenv("XDG_CONFIG_DIRS");
    qputenv("XDG_DATA_DIRS", system.toUtf8());
    qputenv("XDG_CONFIG_DIRS", (testenv::Root() + "/etc-xdg").toUtf8());
  }
  void TearDown() override {
    qputenv("XDG_DATA_DIRS", savedDataDirs_);
    qputenv("XDG_CONFIG_DIRS", savedConfigDirs_);
  }

  static void Application(const QString& path, const QString& extra) {
    testenv::MakeFile(path, ("[Desktop Entry]\nType=Application\nName=Player\nExec=player %U\n" +
                             extra)
                                .toUtf8());
  }

  const QString user = qEnvironmentVariable("XDG_DATA_HOME") + "/applications";
  const QString system = testenv::Root() + "/usr-share";
  const QString config = qEnvironmentVariable("XDG_CONFIG_HOME");

 private:
  QByteArray savedDataDirs_, savedConfigDirs_;
};

}  // namespace

TEST_F(DesktopHandlersTest, AnApplicationThatDeclaresTheTypeHandlesItUnlessTakenAway) {
  EXPECT_FALSE(platform::HasDefaultApplicationFor(Dvd));
  Application(system + "/applications/other.desktop", "MimeType=video/mpeg;x-content/video-dvdx;\n");
  EXPECT_FALSE(platform::HasDefaultApplicationFor(Dvd));

  Application(system + "/applications/kde/discs.desktop", "MimeType=video/mpeg;X-Content/Video-DVD;\n");
  EXPECT_TRUE(platform::HasDefaultApplicationFor(Dvd));
  EXPECT_TRUE(platform::HasDefaultApplicationFor("video/mpeg"));
  EXPECT_FALSE(platform::HasDefaultApplicationFor(""));

  // The user's list takes the association away, by the application's id.
  testenv::MakeFile(config + "/mimeapps.list",
                    "[Removed Associations]\nx-content/video-dvd=kde-discs.desktop;\n");
  EXPECT_FALSE(platform::HasDefaultApplicationFor(Dvd));
  EXPECT_TRUE(platform::HasDefaultApplicationFor("video/mpeg"));

  // A user's copy that hides the application removes it altogether.
  QFile::remove(config + "/mimeapps.list");
  Application(user + "/kde-discs.desktop", "Hidden=true\nMimeType=x-content/video-dvd;\n");
  EXPECT_FALSE(platform::HasDefaultApplicationFor(Dvd));
}

TEST_F(DesktopHandlersTest, ADefaultCountsOnlyWhenItsApplicationIsInstalled) {
  testenv::MakeFile(system + "/applications/mimeapps.list",
                    "[Default Applications]\nx-content/video-dvd=missing.desktop;\n");
  EXPECT_FALSE(platform::HasDefaultApplicationFor(Dvd));

  // An installed default answers even when it does not declare the type.
  Application(user + "/viewer.desktop", "");
  testenv::MakeFile(config + "/mimeapps.list",
                    "# the user's choices\n[Default Applications]\n"
                    "x-content/video-dvd=missing.desktop;viewer.desktop;\n");
  EXPECT_TRUE(platform::HasDefaultApplicationFor(Dvd));

  // An added association counts the same; a link is no application.
  testenv::MakeFile(config + "/mimeapps.list",
                    "[Added Associations]\nx-content/video-dvd=link.desktop;\n");
  testenv::MakeFile(user + "/link.desktop", "[Desktop Entry]\nType=Link\nURL=http://x\n");
  EXPECT_FALSE(platform::HasDefaultApplicationFor(Dvd));
  testenv::MakeFile(config + "/mimeapps.list",
                    "[Added Associations]\nx-content/video-dvd=viewer.desktop\n");
  EXPECT_TRUE(platform::HasDefaultApplicationFor(Dvd));
}
