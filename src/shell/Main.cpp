#include "shell/Main.h"

#include <QApplication>
#include <QDir>
#include <QPointer>
#include <QTimer>
#include <clocale>

#include "platform/SingleInstance.h"
#include "platform/SystemMessage.h"
#include "core/AppState.h"
#include "shell/MainForm.h"
#include "shell/SizeForm.h"

int Main(QApplication& application) {
  // Number parsing in the media libraries needs the C numeric locale.
  std::setlocale(LC_NUMERIC, "C");

  platform::SingleInstance instance("Vistrel");
  if (!instance.Acquired()) {
    platform::ShowSystemMessage("The Vistrel program is already running", "Vistrel",
                                platform::MessageIcon::Information);
    return 0;
  }

  AppState& app = App();
  app.ColorDarkGrey = QColor(150, 150, 150);
  app.ColorLightGrey = QColor(192, 192, 192);

  // The windows live on the heap: unloading a window deletes it later, and
  // the main window is unloaded, like any other, when the program ends.
  QPointer<SizeForm> sizeForm = new SizeForm;

  app.MainActivated = false;
  app.ShuttingDown = false;
  app.FindFilesTreeLive = false;
  app.IsNtPlatform = true;
  app.IsNotNtPlatform = !app.IsNtPlatform;

  // Everything relative in the program, the data file and the sibling
  // programs included, is relative to the program's own folder.
  const QString programFolder = QCoreApplication::applicationDirPath();
  QDir::setCurrent(programFolder);
  app.ProgramFolder = programFolder;
  app.TempFolder = QDir::tempPath().left(64);
  app.CurrentForm = nullptr;

  QPointer<MainForm> mainForm = new MainForm(sizeForm);
  const auto release = [&] {
    delete mainForm.data();
    delete sizeForm.data();
  };
  if (!mainForm->MDIForm_Load()) {
    release();
    return 1;
  }
  mainForm->show();
  mainForm->activateWindow();
  // Without a window manager no activation ever comes; the first one is
  // then run by hand once the window is up.
  QTimer::singleShot(300, mainForm, [mainForm] {
    if (mainForm && mainForm->FirstActivate) mainForm->MDIForm_Activate();
  });
  application.setQuitOnLastWindowClosed(false);
  const int code = application.exec();
  release();
  return code;
}
