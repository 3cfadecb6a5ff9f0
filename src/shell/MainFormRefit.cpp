// The refit of every window after the main window's size changed, and the
// placing of windows inside the browser's area.

#include <QApplication>
#include <QHash>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <array>

#include "browser/PageGeometry.h"
#include "browser/Thumbnails.h"
#include "controls/ThumbnailScroll.h"
#include "platform/Twips.h"
#include "core/AppState.h"
#include "shell/CommandBar.h"
#include "shell/MainForm.h"
#include "shell/WindowFit.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"

namespace {

constexpr Qt::WindowStates MinMax = Qt::WindowMinimized | Qt::WindowMaximized;

void SetNormal(QWidget* frame) {
  if (frame->windowState() & MinMax) frame->setWindowState(frame->windowState() & ~MinMax);
}

std::vector<WindowId> WindowsThat(OnRefit refit) {
  return WindowsWith([refit](const WindowRoles& r) { return r.Refit == refit; },
                     refit == OnRefit::Kept ? RoleOrder::Refit : RoleOrder::Table);
}

}  // namespace

// ---- Windows inside the browser's area ---------------------------------------

int MainForm::BrowserWidthTwips() const {
  if (const QWidget* browser = Windows().Find(WindowId::Thumbnails))
    return twips::FromPixels(browser->width());
  return OuterTwips().width() - pagegeometry::BrowserWidthMargin;
}

namespace {

// The browser's top left corner on the screen; below the command bar when
// there is no browser.
QPoint BrowserOrigin(const QMdiArea* area) {
  if (const QWidget* browser = Windows().Find(WindowId::Thumbnails))
    return browser->mapToGlobal(QPoint(0, 0));
  return area->viewport()->mapToGlobal(QPoint(0, twips::ToPixels(pagegeometry::CommandBarStrip)));
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
  const QWidget* browser = Windows().Find(WindowId::Thumbnails);
  const int browserHeight = browser ? twips::FromPixels(browser->height())
                                    : App().MainClientHeight - pagegeometry::CommandBarStrip;
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
  if (Windows().IsLoaded(WindowId::SingleImage) && RefitPicture) RefitPicture();
}

void MainForm::RefitSingleVideo() {
  QWidget* viewer = Windows().Find(WindowId::SingleVideo);
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
  QHash<WindowId, Qt::WindowStates> notedStates;
  for (WindowId id : WindowsThat(OnRefit::Kept))
    if (QWidget* frame = FrameOf(Windows().Find(id))) notedStates.insert(id, frame->windowState());
  const auto notedState = [&notedStates](WindowId id, QWidget* frame) {
    return notedStates.value(id, frame->windowState());
  };

  app.RefitInProgress = true;

  for (WindowId id : WindowsThat(OnRefit::Passes)) Windows().Unload(id);
  std::vector<WindowId> reloaded;
  for (WindowId id : WindowsThat(OnRefit::Reloaded)) {
    if (!Windows().IsLoaded(id)) continue;
    Windows().Unload(id);
    reloaded.push_back(id);
  }

  // The browser for the new size.
  QCoreApplication::processEvents();
  QPointer<Thumbnails> browser = Windows().Get<Thumbnails>();
  const int tab = browser ? browser->CurrentTab() : PicturesTab;
  PlaceBrowser();
  if (browser) browser->ChangeFormSize();

  // Each tab back on the page of its item; a file about to be shown, or
  // an item of the tab in front that lies beyond the first page of the new
  // size, takes a new listing instead.
  if (browser) {
    const qint32 item = noted[size_t(tab - 1)];
    if (!pendingFile.isEmpty() || item >= browser->Tab(tab).PageSize) {
      QPointer<CommandBar> bar = Windows().Get<CommandBar>();
      if (!bar || !bar->ClickIfEnabled(BarButton::refreshButton)) {
        if (browser) browser->ChangePattern();
      }
    } else {
      for (int t = PicturesTab; t <= DocumentsTab && browser; ++t)
        browser->ShowItemPage(t, noted[size_t(t - 1)]);
    }
  }

  QCoreApplication::processEvents();
  if (browser) browser->SetCurrentTab(tab);
  for (WindowId id : WindowsThat(OnRefit::Centred)) {
    if (QWidget* frame = FrameOf(Windows().Find(id))) {
      SetNormal(frame);
      CentreOnBrowser(frame);
    }
  }

  // The window to show last, and its state.
  QPointer<QWidget> showLast;
  Qt::WindowStates showLastState = Qt::WindowNoState;
  for (WindowId id : reloaded) {
    if (QWidget* window = Windows().Load(id)) {
      showLast = window;
      showLastState = Qt::WindowNoState;
    }
  }

  // The kept windows, each on its item and as it was.
  for (WindowId id : WindowsThat(OnRefit::Kept)) {
    const WindowRoles& roles = RolesOf(id);
    QWidget* window = Windows().Find(id);
    if (!window) continue;
    if (const int shown = roles.ShowsTab; shown != 0) {
      const qint32 item = noted[size_t(shown - 1)];
      Thumbnails::CurrentIndex(shown) = item;
      if (browser) {
        const TabState& s = browser->Tab(shown);
        const qint32 page = s.PageSize > 0 ? item / s.PageSize : 0;
        if (page != browser->VScroll[size_t(shown - 1)]->Value()) {
          browser->ShowItemPage(shown, item);
          Thumbnails::CurrentIndex(shown) = item;
        }
      }
      // The page change may have closed the window.
      window = Windows().Find(id);
      if (!window) continue;
    }
    QWidget* frame = FrameOf(window);
    const Qt::WindowStates was = notedState(id, frame);
    if (was & Qt::WindowMinimized) {
      frame->showMinimized();
    } else {
      PlaceViewerWindow(window);
      if (roles.SizedOnRefit) SizeForms(window);
      showLast = window;
      showLastState = was;
      if (roles.ShowsTab == PicturesTab) RefitSingleImage();
      if (roles.ShowsTab == VideosTab) RefitSingleVideo();
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
