#pragma once
// The main window: a frame whose inside is a multiple-document area that
// holds the command bar and the browser, and, on demand, the viewers and
// dialogs. It owns the start (load, first activation) and the close of the
// program, and keeps its own position in the settings.

#include <QMainWindow>
#include <QTimer>

#include "shell/MainPosition.h"

class QMdiArea;
class QMdiSubWindow;
class SizeForm;

class MainForm : public QMainWindow {
  Q_OBJECT
 public:
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
  // Shows the about box (the command bar's popup menu offers it).
  void ShowAbout();
  // Places the command bar and the browser in the client area.
  void PlaceBrowser();

  // The work area of the screen, in twips.
  QRect WorkAreaTwips() const;
  // The window's outer rectangle in twips.
  QRect OuterTwips() const;
  MainWindowState PresentState() const;

  // Members of the window.
  bool FirstTimerRun = true;
  bool FirstActivate = true;
  bool WasMinimised = false;
  bool SkipRestart = false;
  MainWindowState LastWindowState = MainWindowState::Normal;
  int LastHeight = 0;
  int LastWidth = 0;
  int BorderWidth = 0;

  // The one-shot re-fit after a burst of resizing.
  QTimer Timer2;

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void Measure();
  void ApplicationActivated();
  void StartAlarmWatcher();
  void ShowSplash();
  void Refit();
  void ApplyOuterSize(const QRect& outerTwips);

  SizeForm* sizeForm_;
  QMdiArea* area_;
  QMdiSubWindow* commandBarWindow_ = nullptr;
  QMdiSubWindow* thumbnailsWindow_ = nullptr;
  bool closing_ = false;
  QRect restoredOuter_;
};
