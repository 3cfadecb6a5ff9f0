#include "support/TestEnv.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QCoreApplication>
#include <QTemporaryDir>
#include <memory>

#include "platform/Services.h"
#include "platform/SystemMessage.h"
#include "core/AppState.h"
#include "core/Database.h"
#include "shell/SharedMessageBox.h"
#include "support/MessageBoxAnswer.h"

namespace testenv {

namespace {

std::unique_ptr<QTemporaryDir>& Current() {
  static std::unique_ptr<QTemporaryDir> dir;
  return dir;
}

// The program's shared objects that a test made without closing them (the
// main window's start opens the data file and makes the message box, and
// only its close lets them go). Resetting the state would lose them.
void ReleaseSharedObjects() {
  delete App().DatabaseConnection;
  App().DatabaseConnection = nullptr;
  ReleaseSharedMsgBox();
}

// Gives each test its own folders and a clean program state.
class IsolationListener : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo&) override {
    // The system's temporary folder as it was before the first test
    // pointed TMPDIR into its own world.
    static const QString base = QDir::tempPath();
    Current() = std::make_unique<QTemporaryDir>(
        base + "/" + QCoreApplication::applicationName() + "-XXXXXX");
    const QString root = Current()->path();
    for (const char* sub : {"home", "config", "data", "cache", "runtime", "program", "tmp"})
      QDir(root).mkpath(sub);
    QFile::setPermissions(root + "/runtime", QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("HOME", (root + "/home").toUtf8());
    qputenv("XDG_CONFIG_HOME", (root + "/config").toUtf8());
    qputenv("XDG_DATA_HOME", (root + "/data").toUtf8());
    qputenv("XDG_CACHE_HOME", (root + "/cache").toUtf8());
    qputenv("XDG_RUNTIME_DIR", (root + "/runtime").toUtf8());
    qputenv("TMPDIR", (root + "/tmp").toUtf8());
    ResetAppState();
    platform::ResetServices();
    App().ProgramFolder = root + "/program";
    platform::SetSystemMessageSink([](const QString&, const QString&) {});
  }
  void OnTestEnd(const testing::TestInfo&) override {
    // Still within the test: a message box it waited for in vain fails it.
    FinishMessageBoxWatches();
    // Before the test's folders go: the connection still has its file open.
    ReleaseSharedObjects();
    ResetAppState();
    platform::ResetServices();
    if (Current()) {
      // A test may have taken permissions away to make a folder unreadable.
      QDir dir(Current()->path());
      const auto restore = [](const QString& p) {
        QFile::setPermissions(p, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
      };
      restore(dir.path());
      QDirIterator it(dir.path(), QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden,
                      QDirIterator::Subdirectories);
      while (it.hasNext()) restore(it.next());
    }
    Current().reset();
  }
};

}  // namespace

void InstallIsolation() {
  testing::UnitTest::GetInstance()->listeners().Append(new IsolationListener);
}

QString Root() { return Current() ? Current()->path() : QString(); }
QString ProgramFolder() { return Root() + "/program"; }
QString BuildProgramFolder() { return QStringLiteral(VISTREL_BUILD_PROGRAM_DIR); }
QString DataFolder() { return QStringLiteral(VISTREL_TEST_DATA_DIR); }

QString InstallDataFile() {
  const QString target = ProgramFolder() + "/Vistrel.VRD";
  QFile::remove(target);
  QFile::copy(QStringLiteral(VISTREL_FRESH_DATA_FILE), target);
  QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
  return target;
}

QString MakeFile(const QString& path, const QByteArray& bytes) {
  QDir().mkpath(QFileInfo(path).absolutePath());
  QFile file(path);
  if (file.open(QIODevice::WriteOnly)) file.write(bytes);
  return path;
}

}  // namespace testenv
