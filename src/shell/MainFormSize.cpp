// The main window's size: setting its outer measures, the check after a
// burst of resizing, a changed work area, and the refit of every window.

#include <QScreen>
#include <algorithm>

#include "browser/PageGeometry.h"
#include "core/AppState.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "core/WindowShow.h"
#include "platform/Twips.h"
#include "shell/BrowserArea.h"
#include "shell/MainForm.h"
#include "shell/WindowFit.h"
#include "shell/WindowRefit.h"

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

  RefitOpenWindows(*this);
}

void MainForm::PlaceViewerWindow(QWidget* window) { browserArea_->PlaceViewerWindow(window); }

void MainForm::SizeForms(QWidget* window) { browserArea_->SizeForms(window); }

void MainForm::RefitSingleImage() {
  // The picture viewer sizes its own picture control: to its largest size,
  // unless it shows an animated picture, and the picture with it.
  if (auto* viewer = dynamic_cast<PictureRefit*>(Windows().Find(WindowId::SingleImage))) viewer->RefitPicture();
}

void MainForm::AddViewer(QWidget* window) { browserArea_->AddViewer(window); }

QRect MainForm::ViewerRect(QWidget* window) { return browserArea_->RectInBrowser(FrameOf(window)); }

void MainForm::SetViewerRect(QWidget* window, const QRect& twipsRect) {
  browserArea_->SetRectInBrowser(FrameOf(window), twipsRect);
}

int MainForm::BrowserWidthTwips() const { return browserArea_->BrowserWidthTwips(); }

int MainForm::BrowserHeightTwips() const {
  if (const QWidget* browser = Windows().Find(WindowId::Thumbnails)) return twips::FromPixels(browser->height());
  return App().MainClientHeight - pagegeometry::CommandBarStrip;
}

void MainForm::RefitSingleVideo() {
  QWidget* viewer = Windows().Find(WindowId::SingleVideo);
  if (!viewer) return;
  PlaceViewerWindow(viewer);
  SizeForms(viewer);
}
