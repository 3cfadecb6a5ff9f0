#include "shell/MainForm.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>
#include <QWindow>

#include "browser/Thumbnails.h"
#include "catalogue/MediaTypes.h"
#include "cd/Mp3Tags.h"
#include "core/AppState.h"
#include "core/DataFile.h"
#include "core/Settings.h"
#include "core/WindowRegistry.h"
#include "platform/LeftoverFiles.h"
#include "platform/SiblingPrograms.h"
#include "platform/Twips.h"
#include "shell/BrowserArea.h"
#include "shell/FirstRunWatch.h"
#include "shell/ForwardWindowWatch.h"
#include "shell/FrmAbout.h"
#include "shell/Logo.h"
#include "shell/SharedMessageBox.h"
#include "shell/SizeForm.h"
#include "shell/SplashMessage.h"
#include "shell/StartUp.h"
#include "shell/WindowFit.h"
#include "system/Associations.h"

MainForm::MainForm(SizeForm* sizeForm, QWidget* parent)
    : QMainWindow(parent),
      sizeForm_(sizeForm),
      area_(new QMdiArea(this)),
      browserArea_(std::make_unique<BrowserArea>(area_, [this] { return OuterTwips().width(); })),
      forward_(new ForwardWindowWatch(this, area_)) {
  setObjectName("MainForm");
  setWindowTitle("Vistrel");
  setCentralWidget(area_);
  // A window that closes hands the front to the one that was in front
  // before it, as windows stacked on each other do.
  area_->setActivationOrder(QMdiArea::ActivationHistoryOrder);
  // The strip beside the browser takes the colour of the window itself.
  area_->setBackground(palette().window());
  area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setMinimumSize(twips::ToPixels(MainMinimumWidth), twips::ToPixels(MainMinimumHeight));
  Timer1.setInterval(60000);
  connect(&Timer1, &QTimer::timeout, this, &MainForm::Timer1_Timer);
  Timer2.setInterval(600);
  Timer2.setSingleShot(true);
  connect(&Timer2, &QTimer::timeout, this, &MainForm::Timer2_Timer);
  // A screen that goes away takes the window to another one, whose work
  // area may not hold it.
  connect(qApp, &QGuiApplication::screenRemoved, this, [this](QScreen* removed) {
    if (removed != watchedScreen_) return;
    QTimer::singleShot(0, this, [this] {
      WatchScreen(screen());
      SysInfo_SettingChanged();
    });
  });
  connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState s) {
    if (s == Qt::ApplicationActive) ApplicationActivated();
  });
  // The browser runs its activation when it comes forward and its
  // deactivation when another window of the program does.
  connect(forward_, &ForwardWindowWatch::ForwardChanged, this, [](QWidget* previous, QWidget* now) {
    if (App().ShuttingDown) return;
    Thumbnails* browser = Windows().Get<Thumbnails>();
    if (!browser) return;
    if (previous == browser) browser->Form_Deactivate();
    if (now == browser) browser->Form_Activate();
  });
  Windows().Loaded(this);
}

MainForm::~MainForm() = default;

QRect MainForm::WorkAreaTwips() const {
  const QScreen* s = screen() ? screen() : QGuiApplication::primaryScreen();
  const QRect a = s ? s->availableGeometry() : QRect(0, 0, 1024, 768);
  return QRect(twips::FromPixels(a.left()), twips::FromPixels(a.top()),
               twips::FromPixels(a.width()), twips::FromPixels(a.height()));
}

QRect MainForm::OuterTwips() const {
  const QRect f = frameGeometry();
  return QRect(twips::FromPixels(f.left()), twips::FromPixels(f.top()),
               twips::FromPixels(f.width()), twips::FromPixels(f.height()));
}

MainWindowState MainForm::PresentState() const {
  if (isMinimized()) return MainWindowState::Minimised;
  if (isMaximized()) return MainWindowState::Maximised;
  return MainWindowState::Normal;
}

void MainForm::Measure() {
  // The frame of a window is known once the window system has it on
  // screen: until then the hidden measuring window stands in.
  const QWidget* measured = isVisible() ? static_cast<const QWidget*>(this) : sizeForm_;
  BorderWidth = MeasureBorderWidth(measured);
  App().TitleBarHeight = MeasureTitleBarHeight(measured);
}

bool MainForm::MDIForm_Load() {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  AppState& app = App();
  app.IgnoreNextResize = true;
  FirstTimerRun = true;
  FirstActivate = true;
  WasMinimised = false;
  SkipRestart = false;
  // The tutorial's character comes with the program, in its own folder;
  // the tutorial is offered only where the file is.
  app.AgentCharacterFile = app.ProgramFolder + "/tutorial/Merlin.character";
  Measure();

  if (settings::GetInt("ShowSplashScreen", 1) == 1) {
    app.ViewerWindow = platform::FindWindowByCaption(" Lorvane");
    app.PainterWindow = platform::FindWindowByCaption(" Tintara");
    app.SplashShown = app.ViewerWindow == 0 && app.PainterWindow == 0;
  }
  if (app.SplashShown) ShowSplash();

  // Temporary files and half-wiped files of a run that was cut off go
  // before anything else is done.
  platform::CleanLeftovers();
  if (!OpenDataFile(ShowSplashMessage)) {
    QApplication::restoreOverrideCursor();
    Windows().Unload(WindowId::Logo);
    delete Logo::Instance();
    app.SplashShown = false;
    return false;
  }

  CreateSharedMsgBox();
  FillMediaTables();
  FillGenreTable();

  app.ShowPopupData = settings::GetInt("ShowPopupData", 1) == 1;
  app.ShowPopupHelp = settings::GetInt("ShowPopupHelp", 1) == 1;
  app.PendingFile.clear();
  app.SearchResultFile.clear();
  app.SearchResultFolder.clear();

  LastWindowState = MainWindowState::Normal;
  RestoreMainPosition();
  if (settings::GetSetting("MainMaximized", "Yes") == "Yes") {
    app.IgnoreNextResize = true;
    setWindowState(windowState() | Qt::WindowMaximized);
    LastWindowState = MainWindowState::Maximised;
  }

  if (settings::GetSetting("AlarmStatus", "Off") != "Off") StartAlarmWatcher();

  // No window procedure needs installing: folder and activation notices
  // come as Qt events, and the about box is reached from the command bar.
  QCoreApplication::processEvents();
  QApplication::restoreOverrideCursor();
  return true;
}

void MainForm::RestoreMainPosition() {
  restoredOuter_ = RestoredMainRect(WorkAreaTwips());
  App().IgnoreNextResize = true;
  ApplyOuterSize(restoredOuter_);
  move(twips::ToPixels(restoredOuter_.left()), twips::ToPixels(restoredOuter_.top()));
}

void MainForm::ApplyOuterSize(const QRect& outerTwips) {
  // The saved measures are the outer ones, frame included. The frame is
  // known once the window system has the window; until then the measuring
  // window's frame stands in.
  const bool framed = isVisible();
  const int frameWidth = framed ? frameGeometry().width() - width()
                                : twips::ToPixels(2 * BorderWidth);
  const int frameHeight = framed ? frameGeometry().height() - height()
                                 : twips::ToPixels(App().TitleBarHeight + BorderWidth);
  setMinimumSize(twips::ToPixels(MainMinimumWidth) - frameWidth,
                 twips::ToPixels(MainMinimumHeight) - frameHeight);
  resize(twips::ToPixels(outerTwips.width()) - frameWidth,
         twips::ToPixels(outerTwips.height()) - frameHeight);
}

void MainForm::MDIForm_Activate() {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  Measure();
  QRect outer = OuterTwips();
  LastHeight = outer.height();
  LastWidth = outer.width();
  AppState& app = App();
  if (FirstActivate) {
    FirstActivate = false;
    startingUp_ = true;
    // Now that the window has its frame, the restored outer size is made
    // exact, so that a start and a close leave the saved size as it was.
    if (PresentState() == MainWindowState::Normal && restoredOuter_.isValid() &&
        OuterTwips().size() != restoredOuter_.size()) {
      App().IgnoreNextResize = true;
      ApplyOuterSize(restoredOuter_);
      const QRect corrected = OuterTwips();
      LastHeight = corrected.height();
      LastWidth = corrected.width();
      outer = corrected;
    }
    app.MainClientHeight = outer.height() - app.TitleBarHeight - BorderWidth;
    app.MainClientWidth = outer.width() - 2 * BorderWidth;

    Thumbnails* browser = LoadBarAndBrowser(*this).Browser;
    PlaceBrowser();
    if (app.SplashShown) {
      if (Logo* logo = Logo::Instance()) logo->SetMessage("PLEASE WAIT... Adjusting for screen size");
      LetEventsRunFor(1000);
    }
    browser->Form_Load();
    QApplication::changeOverrideCursor(Qt::WaitCursor);
    QCoreApplication::processEvents();
    // Once the options have been saved, every start puts the associations
    // right again, before the browser first comes forward.
    if (settings::GetSetting("Defined", "No") == "Yes" && !app.AssociationsReset) {
      if (app.SplashShown) {
        if (Logo* logo = Logo::Instance()) logo->SetMessage("PLEASE WAIT... Resetting file associations");
        LetEventsRunFor(1000);
      }
      ResetFileAssociations();
      app.AssociationsReset = true;
    }
    if (app.SplashShown) {
      Windows().Unload(WindowId::Logo);
      app.SplashShown = false;
    }
    // The browser's first activation: it becomes the current window, loads
    // its help and starts the first-run watch.
    browserArea_->Activate(browserArea_->BrowserWindow());
    forward_->SetForward(browser);
    forward_->SetEnabled(true);
    browser->Form_Activate();
    startingUp_ = false;
    if (closeWhenStarted_) {
      // The close asked for during the start goes ahead now.
      QApplication::restoreOverrideCursor();
      QTimer::singleShot(0, this, [] { Windows().Unload(WindowId::MainForm); });
      return;
    }
  }
  // The wheel pages the browser again.
  if (Thumbnails* browser = Windows().Get<Thumbnails>()) browser->WheelOnCurrentTab();
  app.MainActivated = true;
  QApplication::restoreOverrideCursor();
}

void MainForm::PlaceBrowser() { browserArea_->PlaceBrowser(); }

void MainForm::MDIForm_Resize() {
  AppState& app = App();
  if (app.IgnoreNextResize) {
    app.IgnoreNextResize = false;
    return;
  }
  if (app.ShuttingDown) return;
  Measure();
  const MainWindowState state = PresentState();
  if (state != MainWindowState::Minimised) {
    QRect outer = OuterTwips();
    if (outer.height() < MainMinimumHeight) {
      resize(width(), twips::ToPixels(MainMinimumHeight) - (frameGeometry().height() - height()));
      return;
    }
    if (outer.width() < MainMinimumWidth) {
      resize(twips::ToPixels(MainMinimumWidth) - (frameGeometry().width() - width()), height());
      return;
    }
    app.MainClientHeight = outer.height() - app.TitleBarHeight - BorderWidth;
    app.MainClientWidth = outer.width() - 2 * BorderWidth;
    LastWindowState = state;
    if (state != MainWindowState::Maximised && (outer.left() < 0 || outer.top() < 0))
      move(std::max(frameGeometry().left(), 0), std::max(frameGeometry().top(), 0));
  }
  if (app.MainActivated) {
    if (state == MainWindowState::Minimised) {
      WasMinimised = true;
      Windows().Unload(WindowId::Magnifier);
      SkipRestart = true;
    } else if (WasMinimised) {
      WasMinimised = false;
      const QWidget* browserWindow = browserArea_->BrowserWindow();
      if (browserWindow && browserWindow->width() != browserArea_->ExpectedBrowserWidth()) {
        RefitAllWindows();
        return;
      }
    } else if (state == MainWindowState::Maximised) {
      RefitAllWindows();
      return;
    }
  }
  if (!SkipRestart) {
    Timer2.start();
  } else {
    SkipRestart = false;
  }
}

// ---- Timers and the work area ----------------------------------------------

void MainForm::StartTimer1() {
  Timer1.setInterval(300);
  Timer1.start();
}

void MainForm::Timer1_Timer() {
  Timer1.setInterval(60000);
  Timer1.stop();
  if (App().ShuttingDown) return;
  const FirstRunActions actions = FirstRunTimerActions(LookForFirstRun(FirstTimerRun));
  ApplyFirstRunActions(actions);
  FirstTimerRun = false;
  if (actions.Restart && !App().ShuttingDown) Timer1.start();
}

bool MainForm::MDIForm_QueryUnload() {
  AppState& app = App();
  app.CloseRefused = false;
  for (WindowId id : WindowsWith([](const WindowRoles& r) { return r.ClosesFirst; }))
    Windows().Unload(id);
  for (WindowId id : WindowsWith({}, RoleOrder::CloseAsk)) {
    Windows().Unload(id);
    if (app.CloseRefused) {
      if (QWidget* refusing = Windows().Find(id)) refusing->setFocus();
      return false;
    }
    QCoreApplication::processEvents();
  }
  app.ShuttingDown = true;
  Timer1.stop();
  Timer2.stop();
  Windows().UnloadAllExcept({WindowId::MainForm});
  browserArea_->Forget();
  ReleaseSharedMsgBox();
  CloseDataFile();
  SaveMainPosition(LastWindowState, PresentState(), OuterTwips(), LastWidth, LastHeight,
                   WorkAreaTwips());
  return true;
}

void MainForm::ShowAbout() {
  if (QWidget* open = Windows().Find(WindowId::frmAbout)) {
    open->activateWindow();
    return;
  }
  auto* about = new frmAbout(this);
  Windows().Loaded(WindowId::frmAbout, about);
  about->show();
  about->activateWindow();
}

void MainForm::ApplicationActivated() {
  // Coming back to the program: options that a sibling program changed are
  // read again, and the current window runs its activation once more.
  AppState& app = App();
  if (!app.MainActivated || app.ShuttingDown) return;
  app.ShowPopupHelp = settings::GetInt("ShowPopupHelp", 1) == 1;
  app.ShowPopupData = settings::GetInt("ShowPopupData", 1) == 1;
  if (auto* browser = qobject_cast<Thumbnails*>(app.CurrentForm)) browser->Form_Activate();
}

bool MainForm::event(QEvent* event) {
  const bool handled = QMainWindow::event(event);
  if (event->type() == QEvent::WindowActivate && !App().ShuttingDown) MDIForm_Activate();
  return handled;
}

void MainForm::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  // The work area is watched on the screen the window stands on.
  if (!screenChangeWatched_ && windowHandle()) {
    screenChangeWatched_ = true;
    connect(windowHandle(), &QWindow::screenChanged, this, &MainForm::WatchScreen);
  }
  WatchScreen(screen());
}

void MainForm::WatchScreen(QScreen* watched) {
  if (watchedScreen_ == watched) return;
  if (watchedScreen_) disconnect(watchedScreen_, nullptr, this, nullptr);
  watchedScreen_ = watched;
  if (watched)
    connect(watched, &QScreen::availableGeometryChanged, this, &MainForm::SysInfo_SettingChanged);
}

void MainForm::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  MDIForm_Resize();
}

void MainForm::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::WindowStateChange && isMinimized()) MDIForm_Resize();
}

void MainForm::closeEvent(QCloseEvent* event) {
  if (closing_) {
    event->accept();
    return;
  }
  if (startingUp_) {
    closeWhenStarted_ = true;
    event->ignore();
    return;
  }
  if (!MDIForm_QueryUnload()) {
    event->ignore();
    return;
  }
  closing_ = true;
  event->accept();
  QCoreApplication::quit();
}
