// The browser coming forward and losing it: the wheel of its scroll bars,
// the viewers it sends to the background, and its help and data popups.

#include "browser/Thumbnails.h"

#include "controls/ThumbnailScroll.h"
#include "core/AppState.h"
#include "core/WindowRegistry.h"

void Thumbnails::Form_Activate() {
  AppState& app = App();
  Windows().Unload(WindowId::RenameFile);
  if (!app.RefitInProgress) {
    if (!app.RefitDone) {
      for (WindowId id : WindowsWith([](const WindowRoles& r) { return r.MinimisedByBrowser; }))
        if (QWidget* window = Windows().Find(id)) window->showMinimized();
    } else {
      app.RefitDone = false;
    }
  }
  HideHighlight();
  WheelOnCurrentTab();
  app.CurrentForm = this;
  LoadHelp();
  // Each activation of the browser starts the main window's watch, which
  // makes the first-run offers.
  emit Activated();
}

void Thumbnails::Form_Deactivate() {
  for (ThumbnailScroll* bar : VScroll) bar->SetMouseWheel(false);
}

void Thumbnails::WheelOnCurrentTab() { VScroll[size_t(currentTab_ - 1)]->SetMouseWheel(true); }

void Thumbnails::SuspendMouseWheel() {
  for (size_t i = 0; i < suspendedWheel_.size(); ++i) {
    suspendedWheel_[i] = VScroll[i]->MouseWheel();
    VScroll[i]->SetMouseWheel(false);
  }
}

void Thumbnails::ResumeMouseWheel() {
  for (size_t i = 0; i < suspendedWheel_.size(); ++i) VScroll[i]->SetMouseWheel(suspendedWheel_[i]);
}

void Thumbnails::LoadHelp() {
  const AppState& app = App();
  if (!helpLoaded_ || app.ShowPopupHelp != helpShown_) {
    // The help popups of the browser's boxes, and those of the command bar.
    strip_.SetHelp(app.ShowPopupHelp);
    emit PopupHelpChanged();
  }
  if (!helpLoaded_ || app.ShowPopupData != dataShown_) {
    pictures_.SetDataTooltips(app.ShowPopupData);
    for (int tab = VideosTab; tab <= DocumentsTab; ++tab)
      lists_.SetDataTooltips(tab, app.ShowPopupData);
  }
  helpLoaded_ = true;
  dataShown_ = app.ShowPopupData;
  helpShown_ = app.ShowPopupHelp;
}
