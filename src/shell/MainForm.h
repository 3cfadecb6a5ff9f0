#pragma once
// The main window: a frame whose inside is a multiple-document area that
// holds the command bar and the browser, and, on demand, the viewers and
// dialogs. It owns the start (load, first activation) and the close of the
// program, and keeps its own position in the settings.

#include <QMainWindow>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <memory>

#include "shell/MainPosition.h"

#include "core/ViewerHost.h"
#include "core/WindowRoles.h"

class BrowserArea;
class ForwardWindowWatch;
class QMdiArea;
class QMdiSubWindow;
class QScreen;
class SizeForm;

class MainForm : public QMainWindow, public ViewerHost {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::MainForm;
  explicit MainForm(SizeForm* sizeForm, QWidget* parent = nullptr);
  ~MainForm() override;

  // Loads the window: measures, splash, data file, tables, position. False
  // when the program must end (the data file could not be opened).
  bool MDIForm_Load();
  void MDIForm_Activate();
  void MDIForm_Resize();
  // The close; false when a window with unsaved changes kept it open.
  bool MDIForm_QueryUnload();
  // Puts the window where the settings say.
  void RestoreMainPosition();

  QMdiArea* ClientArea() const { return area_; }
  // The bar, the browser and the windows placed in the browser's area.
  BrowserArea& Area() { return *browserArea_; }
  // Shows the about box (the command bar's popup menu offers it).
  void ShowAbout();

  // The work area of the screen, in twips.
  QRect WorkAreaTwips() const;
  // The window's outer rectangle in twips.
  QRect OuterTwips() const;
  MainWindowState PresentState() const;

  // The first-run offers and the watch on the tutorial: the browser starts
  // the timer at each activation; the first tick comes after 300 ms.
  void StartTimer1();
  void Timer1_Timer();
  // The check after a burst of resizing: keeps the window at least at the
  // minimum size and inside the work area, one change a tick, and fits the
  // other windows again once the size has settled.
  void Timer2_Timer();
  // A system setting changed (the work area of the screen, as a rule).
  void SysInfo_SettingChanged();
  // Rebuilds the browser for the window's present size and brings every
  // open window back as it was, inside the new area.
  void RefitAllWindows();
  // Keeps a window (a viewer as a rule) inside the browser's area: the
  // first puts it back at the left or top edge when it reaches past, the
  // second cuts its size.
  void PlaceViewerWindow(QWidget* window);
  void SizeForms(QWidget* window);
  // Places the command bar and the browser in the client area.
  void PlaceBrowser();
  void RefitSingleImage();
  void RefitSingleVideo();

  // Where the viewers stand (sub-windows placed from the browser's corner).
  void AddViewer(QWidget* window) override;
  QRect ViewerRect(QWidget* window) override;
  void SetViewerRect(QWidget* window, const QRect& twipsRect) override;
  int BrowserWidthTwips() const override;
  int BrowserHeightTwips() const override;
  QRect MainOuterTwips() const override { return OuterTwips(); }

  // Members of the window.
  bool FirstTimerRun = true;
  bool FirstActivate = true;
  bool WasMinimised = false;
  bool SkipRestart = false;
  MainWindowState LastWindowState = MainWindowState::Normal;
  int LastHeight = 0;
  int LastWidth = 0;
  int BorderWidth = 0;

  // First-run offers (300 ms once, then every minute while the tutorial
  // can be offered), and the one-shot re-fit after a burst of resizing.
  QTimer Timer1;
  QTimer Timer2;

 protected:
  bool event(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void Measure();
  void ApplicationActivated();
  void ApplyOuterSize(const QRect& outerTwips);
  void SetOuterWidth(int widthTwips);
  void SetOuterHeight(int heightTwips);
  void MoveOuter(int leftTwips, int topTwips);
  void WatchScreen(QScreen* screen);

  SizeForm* sizeForm_;
  QMdiArea* area_;
  std::unique_ptr<BrowserArea> browserArea_;
  bool closing_ = false;
  // The first activation loads the browser while letting events run (the
  // splash's pauses, the first listing): a close asked for meanwhile waits
  // until the windows it would unload stand whole.
  bool startingUp_ = false;
  bool closeWhenStarted_ = false;
  QRect restoredOuter_;
  QPointer<QScreen> watchedScreen_;
  ForwardWindowWatch* forward_;
  bool screenChangeWatched_ = false;
};
