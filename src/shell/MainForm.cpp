#include "shell/MainForm.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QHash>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>
#include <QWindow>
#include <array>

#include "browser/Thumbnails.h"
#include "catalogue/MediaTypes.h"
#include "controls/Button.h"
#include "controls/MessageBoxAppearance.h"
#include "controls/MsgBoxEnhanced.h"
#include "controls/ThumbnailScroll.h"
#include "platform/SiblingPrograms.h"
#include "platform/SpeechEngine.h"
#include "platform/Twips.h"
#include "shell/AppState.h"
#include "shell/CommandBar.h"
#include "shell/DataFile.h"
#include "shell/ForwardWindowWatch.h"
#include "shell/FrmAbout.h"
#include "shell/Logo.h"
#include "shell/Settings.h"
#include "shell/SizeForm.h"
#include "shell/WindowFit.h"
#include "shell/WindowRegistry.h"

namespace {

// Height of the command bar strip at the top of the client area: the
// browser takes the client height less 1230 twips.
constexpr int CommandBarTwips = 1230;
// The browser is the main window's width less this.
constexpr int BrowserWidthMarginTwips = 195;

// Holds the thread for the given time while letting events run.
void LetEventsRunFor(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

// The window that carries a loaded window's frame: its sub-window in the
// client area, or the window itself.
QWidget* FrameOf(QWidget* window) {
  if (!window) return nullptr;
  if (auto* sub = qobject_cast<QMdiSubWindow*>(window)) return sub;
  if (auto* sub = qobject_cast<QMdiSubWindow*>(window->parentWidget())) return sub;
  return window;
}

constexpr Qt::WindowStates MinMax = Qt::WindowMinimized | Qt::WindowMaximized;

void SetNormal(QWidget* frame) {
  if (frame->windowState() & MinMax) frame->setWindowState(frame->windowState() & ~MinMax);
}

// The windows that a refit closes and does not bring back.
const char* const PassingWindows[] = {
    "Background",    "ChangeMP3",    "ChooseDirectory", "CleaningMessage", "CopyMessage",
    "DeleteMessage", "DeleteVerify", "frmAbout",        "LoadingMessage",  "MessageBox",
    "PrinterSetup",  "RenameFile",   "ReplaceVerify",   "SlideshowController", "Target"};

// The windows whose state a refit notes and puts back.
const char* const KeptWindows[] = {"AlbumEdit", "FindFiles", "SingleImage", "SingleVideo",
                                   "SingleAudio"};

QMdiSubWindow* AddFixedSubWindow(QMdiArea* area, QWidget* content) {
  QMdiSubWindow* sub = area->addSubWindow(content, Qt::FramelessWindowHint | Qt::SubWindow);
  sub->setOption(QMdiSubWindow::RubberBandMove, false);
  sub->setAttribute(Qt::WA_DeleteOnClose);
  sub->show();
  return sub;
}

}  // namespace

MainForm::MainForm(SizeForm* sizeForm, QWidget* parent)
    : QMainWindow(parent),
      sizeForm_(sizeForm),
      area_(new QMdiArea(this)),
      forward_(new ForwardWindowWatch(this, area_)) {
  setObjectName("MainForm");
  setWindowTitle("Vistrel");
  setCentralWidget(area_);
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
    Thumbnails* browser = Windows().Get<Thumbnails>("Thumbnails");
    if (!browser) return;
    if (previous == browser) browser->Form_Deactivate();
    if (now == browser) browser->Form_Activate();
  });
  Windows().Loaded("MainForm", this);
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

  if (!OpenDataFile()) {
    QApplication::restoreOverrideCursor();
    Windows().Unload("Logo");
    delete Logo::Instance();
    app.SplashShown = false;
    return false;
  }

  CreateMsgBox();
  SetMessageBoxAppearance();
  FillMediaTables();
  // The genre table of the tag editor is filled by the tag editor's own
  // module when it arrives.

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

void MainForm::ShowSplash() {
  auto* logo = new Logo;
  logo->setAttribute(Qt::WA_DeleteOnClose);
  Windows().Loaded("Logo", logo);
  logo->setWindowFlag(Qt::WindowStaysOnTopHint);
  if (const QScreen* s = QGuiApplication::primaryScreen())
    logo->move(s->availableGeometry().center() - logo->rect().center());
  logo->show();
  logo->SetMessage("PLEASE WAIT... Setting up display data");
  QCoreApplication::processEvents();
  LetEventsRunFor(1000);
}

void MainForm::StartAlarmWatcher() {
  // An armed alarm survives a restart: the viewer program that rings it is
  // started when it is not running.
  App().ViewerWindow = platform::FindWindowByCaption(" Lorvane");
  if (App().ViewerWindow != 0) return;
  const QString path = App().ProgramFolder + "/Lorvane";
  platform::StartProgram(path, {});
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

    auto* bar = new CommandBar;
    Windows().Loaded("CommandBar", bar);
    // The window system's menu of the window takes no entries of a program
    // here: "About Vistrel" stands in the command bar's own popup menu.
    auto* about = new QAction("About Vistrel", bar);
    connect(about, &QAction::triggered, this, &MainForm::ShowAbout);
    bar->addAction(about);
    bar->setContextMenuPolicy(Qt::ActionsContextMenu);
    commandBarWindow_ = AddFixedSubWindow(area_, bar);
    auto* browser = new Thumbnails;
    Windows().Loaded("Thumbnails", browser);
    thumbnailsWindow_ = AddFixedSubWindow(area_, browser);
    PlaceBrowser();
    if (app.SplashShown) {
      if (Logo* logo = Logo::Instance()) logo->SetMessage("PLEASE WAIT... Adjusting for screen size");
      LetEventsRunFor(1000);
    }
    browser->Form_Load();
    QApplication::changeOverrideCursor(Qt::WaitCursor);
    QCoreApplication::processEvents();
    if (app.SplashShown) {
      Windows().Unload("Logo");
      app.SplashShown = false;
    }
    // The browser's first activation: it becomes the current window, loads
    // its help and starts the first-run watch.
    area_->setActiveSubWindow(thumbnailsWindow_);
    forward_->SetForward(browser);
    forward_->SetEnabled(true);
    browser->Form_Activate();
  }
  // The wheel pages the browser again.
  if (Thumbnails* browser = Windows().Get<Thumbnails>("Thumbnails")) browser->WheelOnCurrentTab();
  app.MainActivated = true;
  QApplication::restoreOverrideCursor();
}

void MainForm::PlaceBrowser() {
  const AppState& app = App();
  const int barHeight = twips::ToPixels(CommandBarTwips);
  const int width = std::max(area_->width(), twips::ToPixels(app.MainClientWidth));
  if (commandBarWindow_) commandBarWindow_->setGeometry(0, 0, width, barHeight);
  if (thumbnailsWindow_) {
    const int browserWidth = twips::ToPixels(OuterTwips().width() - BrowserWidthMarginTwips);
    const int browserHeight = twips::ToPixels(app.MainClientHeight - CommandBarTwips);
    thumbnailsWindow_->setGeometry(0, barHeight, std::max(browserWidth, 1),
                                   std::max(browserHeight, 1));
  }
}

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
      Windows().Unload("Magnifier");
      SkipRestart = true;
    } else if (WasMinimised) {
      WasMinimised = false;
      const int expected = twips::ToPixels(OuterTwips().width() - BrowserWidthMarginTwips);
      if (thumbnailsWindow_ && thumbnailsWindow_->width() != expected) {
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
  const QString character = App().AgentCharacterFile;
  FirstRunCheck check;
  check.CharacterPresent = !character.isEmpty() && QFileInfo(character).isFile();
  check.SpeechEnginePresent = check.CharacterPresent && platform::SpeechEngineAvailable();
  check.FirstRun = FirstTimerRun;
  check.Defined = settings::GetSetting("Defined", "No") == "Yes";
  check.MerlinShown = settings::GetSetting("MerlinShown", "") == "Yes";
  const FirstRunActions actions = FirstRunTimerActions(check);

  QPointer<CommandBar> bar = Windows().Get<CommandBar>("CommandBar");
  if (bar) bar->HelpButton->setEnabled(actions.HelpEnabled);
  if (actions.PressHelp && bar) bar->ClickIfEnabled("HelpButton");
  if (actions.ShowOptionsEntry)
    if (QWidget* options = FrameOf(Windows().Find("OptionsEntry"))) options->show();
  if (actions.PressOptions && bar) bar->ClickIfEnabled("optionsButton");
  FirstTimerRun = false;
  if (actions.Restart && !App().ShuttingDown) Timer1.start();
}

void MainForm::SetOuterWidth(int widthTwips) {
  const int frameWidth = frameGeometry().width() - width();
  resize(std::max(twips::ToPixels(widthTwips) - frameWidth, 1), height());
}

void MainForm::SetOuterHeight(int heightTwips) {
  const int frameHeight = frameGeometry().height() - height();
  resize(width(), std::max(twips::ToPixels(heightTwips) - frameHeight, 1));
}

void MainForm::MoveOuter(int leftTwips, int topTwips) {
  // The position of a window is the position of its frame.
  move(twips::ToPixels(leftTwips), twips::ToPixels(topTwips));
}

void MainForm::Timer2_Timer() {
  Timer2.stop();
  if (App().ShuttingDown) return;
  const MainWindowState state = PresentState();
  if (state == MainWindowState::Minimised) return;
  const QRect outer = OuterTwips();
  if (state == MainWindowState::Maximised) {
    // A maximised window is neither sized nor moved; it is only fitted to.
    if (outer.width() != LastWidth || outer.height() != LastHeight) RefitAllWindows();
    return;
  }
  const MainFitStep step = MainFitAfterResize(outer, WorkAreaTwips(), LastWidth, LastHeight);
  // A size set raises a resize, which starts this timer again.
  if (step.Width) {
    SetOuterWidth(*step.Width);
    return;
  }
  if (step.Height) {
    SetOuterHeight(*step.Height);
    return;
  }
  if (step.Left || step.Top)
    MoveOuter(step.Left.value_or(outer.left()), step.Top.value_or(outer.top()));
  if (step.Refit) RefitAllWindows();
}

void MainForm::SysInfo_SettingChanged() {
  if (App().ShuttingDown || !isVisible()) return;
  const MainWindowState state = PresentState();
  if (state == MainWindowState::Maximised) return;
  const QRect outer = OuterTwips();
  const WorkAreaFit fit = FitToChangedWorkArea(state, outer, WorkAreaTwips());
  if (state == MainWindowState::Minimised) showNormal();
  if (fit.Window.topLeft() != outer.topLeft()) MoveOuter(fit.Window.left(), fit.Window.top());
  if (fit.Window.width() != outer.width()) SetOuterWidth(fit.Window.width());
  if (fit.Window.height() != outer.height()) SetOuterHeight(fit.Window.height());
  if (fit.Refit) RefitAllWindows();
}

// ---- Windows inside the browser's area ---------------------------------------

int MainForm::BrowserWidthTwips() const {
  if (const QWidget* browser = Windows().Find("Thumbnails"))
    return twips::FromPixels(browser->width());
  return OuterTwips().width() - BrowserWidthMarginTwips;
}

namespace {

// The browser's top left corner on the screen; below the command bar when
// there is no browser.
QPoint BrowserOrigin(const QMdiArea* area) {
  if (const QWidget* browser = Windows().Find("Thumbnails"))
    return browser->mapToGlobal(QPoint(0, 0));
  return area->viewport()->mapToGlobal(QPoint(0, twips::ToPixels(CommandBarTwips)));
}

}  // namespace

QRect MainForm::RectInBrowser(QWidget* frame) const {
  QRect r = frame->isWindow()
                ? frame->frameGeometry()
                : QRect(frame->parentWidget()->mapToGlobal(frame->pos()), frame->size());
  r.translate(-BrowserOrigin(area_));
  return QRect(twips::FromPixels(r.x()), twips::FromPixels(r.y()), twips::FromPixels(r.width()),
               twips::FromPixels(r.height()));
}

void MainForm::SetRectInBrowser(QWidget* frame, const QRect& twipsRect) {
  const QPoint global =
      BrowserOrigin(area_) + QPoint(twips::ToPixels(twipsRect.x()), twips::ToPixels(twipsRect.y()));
  const QSize size(std::max(twips::ToPixels(twipsRect.width()), 1),
                   std::max(twips::ToPixels(twipsRect.height()), 1));
  if (frame->isWindow()) {
    const QSize frameExtra = frame->frameGeometry().size() - frame->size();
    frame->move(global);
    frame->resize((size - frameExtra).expandedTo(QSize(1, 1)));
  } else {
    frame->setGeometry(QRect(frame->parentWidget()->mapFromGlobal(global), size));
  }
}

void MainForm::CentreOnBrowser(QWidget* frame) {
  const QRect r = RectInBrowser(frame);
  const QWidget* browser = Windows().Find("Thumbnails");
  const int browserHeight = browser ? twips::FromPixels(browser->height())
                                    : App().MainClientHeight - CommandBarTwips;
  SetRectInBrowser(frame, QRect((BrowserWidthTwips() - r.width()) / 2,
                                (browserHeight - r.height()) / 2, r.width(), r.height()));
}

void MainForm::PlaceViewerWindow(QWidget* window) {
  QWidget* frame = FrameOf(window);
  if (!frame) return;
  SetNormal(frame);
  const QRect present = RectInBrowser(frame);
  const QRect placed = PlacedViewerRect(present, BrowserWidthTwips(), App().MainClientHeight);
  if (placed != present) SetRectInBrowser(frame, placed);
}

void MainForm::SizeForms(QWidget* window) {
  QWidget* frame = FrameOf(window);
  if (!frame) return;
  const QRect present = RectInBrowser(frame);
  const QRect sized = SizedFormRect(present, BrowserWidthTwips(), App().MainClientHeight);
  if (sized != present) SetRectInBrowser(frame, sized);
}

void MainForm::RefitSingleImage() {
  // The picture viewer sizes its own picture control: to its largest size,
  // unless it shows an animated picture, and the picture with it.
  if (Windows().IsLoaded("SingleImage") && RefitPicture) RefitPicture();
}

void MainForm::RefitSingleVideo() {
  QWidget* viewer = Windows().Find("SingleVideo");
  if (!viewer) return;
  PlaceViewerWindow(viewer);
  SizeForms(viewer);
}

void MainForm::RefitAllWindows() {
  AppState& app = App();
  if (app.ShuttingDown) return;
  if (app.RefitInProgress) {
    // Events let run by a refit brought another: it is checked again
    // once this one is done.
    Timer2.start();
    return;
  }
  // The size the windows are fitted to.
  Timer2.stop();
  const MainWindowState state = PresentState();
  const QRect outer = OuterTwips();
  LastHeight = outer.height();
  LastWidth = outer.width();
  if (state != MainWindowState::Maximised && (outer.left() < 0 || outer.top() < 0))
    MoveOuter(std::max(outer.left(), 0), std::max(outer.top(), 0));
  if (state != MainWindowState::Minimised) {
    app.MainClientHeight = outer.height() - app.TitleBarHeight - BorderWidth;
    app.MainClientWidth = outer.width() - 2 * BorderWidth;
  }

  // What is to come back afterwards.
  const std::array<qint32, TabCount> noted{app.CurrentPicture, app.CurrentVideo,
                                           app.CurrentAudio, app.CurrentDocument};
  const QString pendingFile = app.PendingFile;
  QHash<QString, Qt::WindowStates> notedStates;
  for (const char* name : KeptWindows)
    if (QWidget* frame = FrameOf(Windows().Find(name)))
      notedStates.insert(name, frame->windowState());
  const auto notedState = [&notedStates](const QString& name, QWidget* frame) {
    return notedStates.value(name, frame->windowState());
  };

  app.RefitInProgress = true;

  for (const char* name : PassingWindows) Windows().Unload(name);
  const bool albumSelectWasOpen = app.AlbumSelectOpen || Windows().IsLoaded("AlbumSelect");
  if (albumSelectWasOpen) Windows().Unload("AlbumSelect");

  // The browser for the new size.
  QCoreApplication::processEvents();
  QPointer<Thumbnails> browser = Windows().Get<Thumbnails>("Thumbnails");
  const int tab = browser ? browser->CurrentTab() : PicturesTab;
  PlaceBrowser();
  if (browser) browser->ChangeFormSize();

  // Each tab back on the page of its item; a file about to be shown, or
  // an item of the tab in front that lies beyond the first page of the new
  // size, takes a new listing instead.
  if (browser) {
    const qint32 item = noted[size_t(tab - 1)];
    if (!pendingFile.isEmpty() || item >= browser->Tab(tab).PageSize) {
      QPointer<CommandBar> bar = Windows().Get<CommandBar>("CommandBar");
      if (!bar || !bar->ClickIfEnabled("refreshButton")) {
        if (browser) browser->ChangePattern();
      }
    } else {
      for (int t = PicturesTab; t <= DocumentsTab && browser; ++t)
        browser->ShowItemPage(t, noted[size_t(t - 1)]);
    }
  }

  QCoreApplication::processEvents();
  if (browser) browser->SetCurrentTab(tab);
  for (const char* name : {"SelectionSort", "OptionsEntry"}) {
    if (QWidget* frame = FrameOf(Windows().Find(name))) {
      SetNormal(frame);
      CentreOnBrowser(frame);
    }
  }

  // The window to show last, and its state.
  QPointer<QWidget> showLast;
  Qt::WindowStates showLastState = Qt::WindowNoState;
  if (albumSelectWasOpen && LoadAlbumSelect) {
    if (QWidget* select = LoadAlbumSelect()) {
      showLast = select;
      showLastState = Qt::WindowNoState;
    }
  }
  if (QWidget* edit = Windows().Find("AlbumEdit")) {
    QWidget* frame = FrameOf(edit);
    const Qt::WindowStates was = notedState("AlbumEdit", frame);
    if (was & Qt::WindowMinimized) {
      frame->setWindowState((frame->windowState() & ~Qt::WindowMaximized) | Qt::WindowMinimized);
    } else {
      PlaceViewerWindow(edit);
      showLast = edit;
      showLastState = was;
    }
  }

  // The viewers and the search, each on its item and as it was.
  struct Kept {
    const char* name;
    int tab;  // whose current item it shows; 0 for none
  };
  for (const Kept kept : {Kept{"SingleImage", PicturesTab}, Kept{"SingleVideo", VideosTab},
                          Kept{"SingleAudio", AudiosTab}, Kept{"FindFiles", 0}}) {
    QWidget* window = Windows().Find(kept.name);
    if (!window) continue;
    if (kept.tab != 0) {
      const qint32 item = noted[size_t(kept.tab - 1)];
      Thumbnails::CurrentIndex(kept.tab) = item;
      if (browser) {
        const TabState& s = browser->Tab(kept.tab);
        const qint32 page = s.PageSize > 0 ? item / s.PageSize : 0;
        if (page != browser->VScroll[size_t(kept.tab - 1)]->Value()) {
          browser->ShowItemPage(kept.tab, item);
          Thumbnails::CurrentIndex(kept.tab) = item;
        }
      }
      // The page change may have closed the window.
      window = Windows().Find(kept.name);
      if (!window) continue;
    }
    QWidget* frame = FrameOf(window);
    const Qt::WindowStates was = notedState(kept.name, frame);
    if (was & Qt::WindowMinimized) {
      frame->showMinimized();
    } else {
      PlaceViewerWindow(window);
      SizeForms(window);
      showLast = window;
      showLastState = was;
      if (kept.tab == PicturesTab) RefitSingleImage();
      if (kept.tab == VideosTab) RefitSingleVideo();
    }
    QCoreApplication::processEvents();
  }

  app.PendingFile = pendingFile;
  app.RefitInProgress = false;
  app.RefitDone = true;

  if (showLast) {
    QWidget* frame = FrameOf(showLast);
    frame->show();
    frame->raise();
    if (auto* sub = qobject_cast<QMdiSubWindow*>(frame)) area_->setActiveSubWindow(sub);
    showLast->setFocus();
    QCoreApplication::processEvents();
    if (showLast) FrameOf(showLast)->setWindowState(showLastState);
  }
}

bool MainForm::MDIForm_QueryUnload() {
  AppState& app = App();
  app.CloseRefused = false;
  Windows().Unload("frmAbout");
  for (const char* name : {"OptionsEntry", "SelectionSort", "AlbumEdit"}) {
    Windows().Unload(name);
    if (app.CloseRefused) {
      if (QWidget* refusing = Windows().Find(name)) refusing->setFocus();
      return false;
    }
    QCoreApplication::processEvents();
  }
  app.ShuttingDown = true;
  Timer1.stop();
  Timer2.stop();
  Windows().UnloadAllExcept({"MainForm"});
  commandBarWindow_ = nullptr;
  thumbnailsWindow_ = nullptr;
  ReleaseMsgBox();
  CloseDataFile();
  SaveMainPosition(LastWindowState, PresentState(), OuterTwips(), LastWidth, LastHeight,
                   WorkAreaTwips());
  return true;
}

void MainForm::ShowAbout() {
  if (QWidget* open = Windows().Find("frmAbout")) {
    open->activateWindow();
    return;
  }
  auto* about = new frmAbout(this);
  Windows().Loaded("frmAbout", about);
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
  if (!MDIForm_QueryUnload()) {
    event->ignore();
    return;
  }
  closing_ = true;
  event->accept();
  QCoreApplication::quit();
}
