// The browser coming forward and losing it: the wheel of its scroll bars,
// the viewers it sends to the background, and its help and data popups.

#include "browser/Thumbnails.h"

#include <QLabel>

#include "browser/Listing.h"
#include "controls/BalloonHelp.h"
#include "controls/NumberBox.h"
#include "controls/ThumbnailScroll.h"
#include "core/AppState.h"
#include "core/HelpTexts.h"
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
    balloons_->Clear();
    if (app.ShowPopupHelp) {
      for (int tab = PicturesTab; tab <= AudiosTab; ++tab) {
        const QString control = QString("PositionNumber(%1)").arg(tab);
        balloons_->SetBalloon(PositionNumber[size_t(tab - 1)], HelpText(control), HelpTitle(control));
      }
      balloons_->SetBalloon(ThumbnailSize, HelpText("ThumbnailSize"), HelpTitle("ThumbnailSize"));
    }
    emit PopupHelpChanged();
  }
  if (!helpLoaded_ || app.ShowPopupData != dataShown_) SetDataTooltips(app.ShowPopupData);
  helpLoaded_ = true;
  dataShown_ = app.ShowPopupData;
  helpShown_ = app.ShowPopupHelp;
}

void Thumbnails::SetDataTooltips(bool on) {
  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab) {
    const TabState& state = Tab(tab);
    const QStringList& files = Listing::Files(tab);
    for (int cell = 0; cell < CellCount(tab); ++cell) {
      const qint32 index = state.PageFirst + cell;
      QString tip;
      if (on && index < state.Count && index <= state.PageLast && index < files.size()) {
        const QString& entry = files[index];
        const bool skip = entry.isEmpty() || (tab == PicturesTab && entry == "(Deleted)");
        if (!skip) tip = CellTooltip(tab, index);
      }
      Cell(tab, cell)->setToolTip(tip);
      if (QLabel* name = Name(tab, cell)) name->setToolTip(tip);
    }
  }
}

