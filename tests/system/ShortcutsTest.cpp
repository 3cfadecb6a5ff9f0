#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QtTest/QTest>

#include "support/TestEnv.h"
#include "system/Shortcuts.h"

// glib's headers use "signals" as a member name, which Qt defines as a
// keyword; nothing below declares a Qt class.
#undef signals
#include <gio/gdesktopappinfo.h>

namespace {

QByteArray ReadAll(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

// The validator's verdict: its exit code and whatever it had to say.
QString Validate(const QString& path) {
  QProcess validator;
  validator.setProcessChannelMode(QProcess::MergedChannels);
  validator.start("desktop-file-validate", {path});
  if (!validator.waitForFinished(-1)) return "did not run";
  return QString::number(validator.exitCode()) + " " + QString::fromUtf8(validator.readAll());
}

// Starts the entry the way the desktop does, and gives the command line
// the program received, one word a line.
QByteArray LaunchAndRecord(const QString& entry, const QString& record) {
  GDesktopAppInfo* info = g_desktop_app_info_new_from_filename(QFile::encodeName(entry).constData());
  if (!info) return "not an application";
  GError* error = nullptr;
  const bool started = g_app_info_launch(G_APP_INFO(info), nullptr, nullptr, &error);
  g_object_unref(info);
  if (error) g_error_free(error);
  if (!started) return "not started";
  if (!QTest::qWaitFor([&] { return ReadAll(record).endsWith("end\n"); })) return "no record";
  return ReadAll(record);
}

class ShortcutsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    oldConfig_ = qgetenv("XDG_CONFIG_HOME");
    oldData_ = qgetenv("XDG_DATA_HOME");
    config_ = testenv::Root() + "/xdg config";
    data_ = testenv::Root() + "/xdg data";
    qputenv("XDG_CONFIG_HOME", config_.toUtf8());
    qputenv("XDG_DATA_HOME", data_.toUtf8());
    record_ = testenv::Root() + "/record";
    // Program folders with the characters that the Exec line reserves.
    viewer_ = MakeViewer(testenv::Root() + "/My \"Media\" $HOME \\back");
    percentViewer_ = MakeViewer(testenv::Root() + "/100% sure");
  }
  // A viewer that writes down how it was called.
  QString MakeViewer(const QString& folder) {
    const QString viewer = folder + "/Lorvane";
    testenv::MakeFile(viewer, "#!/bin/sh\nprintf '%s\\n' \"$0\" \"$@\" end > '" + record_.toUtf8() + "'\n");
    QFile::setPermissions(viewer, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return viewer;
  }
  void TearDown() override {
    qputenv("XDG_CONFIG_HOME", oldConfig_);
    qputenv("XDG_DATA_HOME", oldData_);
  }
  QByteArray oldConfig_, oldData_;
  QString config_, data_, record_, viewer_, percentViewer_;
};

}  // namespace

TEST_F(ShortcutsTest, StartupLinkIsAValidEntryThatStartsTheViewer) {
  const QString link = config_ + "/autostart/Lorvane.desktop";
  EXPECT_EQ(StartupShortcutPath("Lorvane"), link);
  CreateStartupShortcut("ignored", "Lorvane", viewer_, "");
  const QString root = testenv::Root();
  EXPECT_EQ(ReadAll(link), ("[Desktop Entry]\n"
                            "Type=Application\n"
                            "Version=1.0\n"
                            "Name=Lorvane\n"
                            "Exec=\"" + root + "/My \\\\\"Media\\\\\" \\\\$HOME \\\\\\\\back/Lorvane\"\n"
                            "TryExec=" + root + "/My \"Media\" $HOME \\\\back/Lorvane\n"
                            "Terminal=false\n"
                            "Categories=AudioVideo;Player;\n").toUtf8());
  EXPECT_EQ(Validate(link), "0 ");
  EXPECT_EQ(LaunchAndRecord(link, record_), (viewer_ + "\nend\n").toUtf8());
}

TEST_F(ShortcutsTest, QuickLaunchLinkTakesTheViewersNameArgumentsAndIcon) {
  const QString link = data_ + "/applications/Lorvane.desktop";
  EXPECT_EQ(QuickLaunchShortcutPath("Lorvane"), link);
  const QString root = testenv::Root();
  testenv::MakeFile(root + "/100% sure/Lorvane.png", "png");
  // Its caller passes no link name: the link is the viewer's all the same.
  CreateQuickLaunchShortcut("", "", percentViewer_, "//dvd \"two words\" 5%");
  EXPECT_FALSE(QFile::exists(data_ + "/applications/.desktop"));
  EXPECT_EQ(ReadAll(link), ("[Desktop Entry]\n"
                            "Type=Application\n"
                            "Version=1.0\n"
                            "Name=Lorvane\n"
                            // The shell starts a program whose path holds a percent sign.
                            "Exec=/bin/sh -c \"exec \\\\\"\\\\$0\\\\\" \\\\\"\\\\$@\\\\\"\" \"" + root +
                            "/100%% sure/Lorvane\" //dvd \"two words\" 5%%\n"
                            "TryExec=" + root + "/100% sure/Lorvane\n"
                            "Icon=" + root + "/100% sure/Lorvane.png\n"
                            "Terminal=false\n"
                            "Categories=AudioVideo;Player;\n").toUtf8());
  EXPECT_EQ(Validate(link), "0 ");
  EXPECT_EQ(LaunchAndRecord(link, record_), (percentViewer_ + "\n//dvd\ntwo words\n5%\nend\n").toUtf8());

  // Made again, the link is replaced whole.
  CreateQuickLaunchShortcut("", "", "/opt/Vistrel/Lorvane", "");
  EXPECT_TRUE(ReadAll(link).contains("\nExec=\"/opt/Vistrel/Lorvane\"\nTryExec=/opt/Vistrel/Lorvane\nTerminal="));
  EXPECT_EQ(QDir(data_ + "/applications").entryList(QDir::Files | QDir::Hidden), QStringList{"Lorvane.desktop"});
}

TEST_F(ShortcutsTest, RemovingTakesTheLinkAloneAndLeavesWhatIsNotALink) {
  const QString autostart = config_ + "/autostart";
  testenv::MakeFile(autostart + "/Other.desktop", "other");
  CreateStartupShortcut("", "Lorvane", viewer_, "");
  EXPECT_TRUE(QFile::exists(autostart + "/Lorvane.desktop"));
  RemoveStartupShortcut("Lorvane");
  RemoveStartupShortcut("Lorvane");
  EXPECT_EQ(QDir(autostart).entryList(QDir::Files | QDir::Hidden), QStringList{"Other.desktop"});

  // A folder where the link would be is neither replaced nor removed.
  testenv::MakeFile(autostart + "/Lorvane.desktop/keep", "keep");
  CreateStartupShortcut("", "Lorvane", viewer_, "");
  RemoveStartupShortcut("Lorvane");
  EXPECT_EQ(ReadAll(autostart + "/Lorvane.desktop/keep"), "keep");

  // The autostart folder is the user's file: it stays as it was.
  QDir(autostart).removeRecursively();
  testenv::MakeFile(autostart, "the user's notes");
  CreateStartupShortcut("", "Lorvane", viewer_, "");
  RemoveStartupShortcut("Lorvane");
  EXPECT_EQ(ReadAll(autostart), "the user's notes");
}
