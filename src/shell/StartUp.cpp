#include "shell/StartUp.h"

#include <QAction>
#include <QCoreApplication>
#include <QEventLoop>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include "browser/Thumbnails.h"
#include "core/AppState.h"
#include "core/WindowRegistry.h"
#include "platform/SiblingPrograms.h"
#include "shell/BrowserArea.h"
#include "shell/CommandBar.h"
#include "shell/Logo.h"
#include "shell/MainForm.h"

void LetEventsRunFor(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

void ShowSplash() {
  auto* logo = new Logo;
  logo->setAttribute(Qt::WA_DeleteOnClose);
  Windows().Loaded(logo);
  logo->setWindowFlag(Qt::WindowStaysOnTopHint);
  if (const QScreen* s = QGuiApplication::primaryScreen())
    logo->move(s->availableGeometry().center() - logo->rect().center());
  logo->show();
  logo->SetMessage("PLEASE WAIT... Setting up display data");
  QCoreApplication::processEvents();
  LetEventsRunFor(1000);
}

void StartAlarmWatcher() {
  App().ViewerWindow = platform::FindWindowByCaption(" Lorvane");
  if (App().ViewerWindow != 0) return;
  platform::StartProgram(App().ProgramFolder + "/Lorvane", {});
}

BarAndBrowser LoadBarAndBrowser(MainForm& main) {
  auto* bar = new CommandBar;
  Windows().Loaded(bar);
  // The window system's menu of the window takes no entries of a program
  // here: "About Vistrel" stands in the command bar's own popup menu.
  auto* about = new QAction("About Vistrel", bar);
  QObject::connect(about, &QAction::triggered, &main, &MainForm::ShowAbout);
  bar->addAction(about);
  bar->setContextMenuPolicy(Qt::ActionsContextMenu);
  main.Area().AddBar(bar);

  auto* browser = new Thumbnails;
  Windows().Loaded(browser);
  bar->Follow(browser);
  QObject::connect(browser, &Thumbnails::Activated, &main, &MainForm::StartTimer1);
  main.Area().AddBrowser(browser);
  return {bar, browser};
}
