// The refit of the windows after the main window's size changed: the
// browser is laid out for the new size and every open window comes back as
// it was, each treated as its row of the window table says.

#include "shell/WindowRefit.h"

#include <QCoreApplication>
#include <QHash>
#include <QPointer>
#include <array>

#include "browser/Thumbnails.h"
#include "core/AppState.h"
#include "core/BarCommands.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "shell/BrowserArea.h"
#include "shell/MainForm.h"

namespace {

std::vector<WindowId> WindowsThat(OnRefit refit) {
  return WindowsWith([refit](const WindowRoles& r) { return r.Refit == refit; },
                     refit == OnRefit::Kept ? RoleOrder::Refit : RoleOrder::Table);
}

}  // namespace

void RefitOpenWindows(MainForm& main) {
  AppState& app = App();
  // What is to come back afterwards.
  const std::array<qint32, TabCount> noted{app.CurrentPicture(), app.CurrentVideo(),
                                           app.CurrentAudio(), app.CurrentDocument()};
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
  main.Area().PlaceBrowser();
  if (browser) browser->ChangeFormSize();

  // Each tab back on the page of its item; a file about to be shown, or
  // an item of the tab in front that lies beyond the first page of the new
  // size, takes a new listing instead.
  if (browser) {
    const qint32 item = noted[size_t(tab - 1)];
    if (!pendingFile.isEmpty() || item >= browser->Tab(tab).PageSize) {
      BarCommands* bar = CommandBarCommands();
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
      main.Area().CentreOnBrowser(frame);
    }
  }

  // The window to show last, and its state.
  QPointer<QWidget> showLast;
  Qt::WindowStates showLastState = Qt::WindowNoState;
  for (WindowId id : reloaded) {
    // The album selection comes back as its button brings it: above it.
    if (BarCommands* bar = CommandBarCommands(); bar && id == WindowId::AlbumSelect)
      bar->Click(BarButton::albumButton);
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
      app.Current(shown) = item;
      if (browser) {
        const TabState& s = browser->Tab(shown);
        const qint32 page = s.PageSize > 0 ? item / s.PageSize : 0;
        if (page != browser->PageShown(shown)) {
          browser->ShowItemPage(shown, item);
          app.Current(shown) = item;
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
      main.Area().PlaceViewerWindow(window);
      if (roles.SizedOnRefit) main.Area().SizeForms(window);
      showLast = window;
      showLastState = was;
      if (roles.ShowsTab == PicturesTab) main.RefitSingleImage();
      if (roles.ShowsTab == VideosTab) main.RefitSingleVideo();
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
    main.Area().Activate(frame);
    showLast->setFocus();
    QCoreApplication::processEvents();
    if (showLast) FrameOf(showLast)->setWindowState(showLastState);
  }
}
