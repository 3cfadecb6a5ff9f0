// What the file windows ask of the browser: the current item renamed, its
// tooltip read again, and its cell marked when its file is deleted.

#include "browser/Thumbnails.h"

#include "browser/PageTexts.h"
#include "controls/NewImage.h"
#include "core/AppState.h"

namespace {

// The cell of the current item of a tab on the page on display; -1 when
// the item is not on it.
int CurrentCell(const TabState& state, qint32 current) {
  if (current < state.PageFirst || current > state.PageLast) return -1;
  return current - state.PageFirst;
}

}  // namespace

void Thumbnails::RefreshCurrentTooltip() {
  const AppState& app = App();
  const int tab = currentTab_;
  const qint32 current = app.Current(tab);
  const int cell = CurrentCell(Tab(tab), current);
  if (cell < 0 || !app.ShowPopupData) return;
  const QString tip = app.Entry(tab, current).isEmpty() ? QString() : CellTooltip(tab, current);
  if (QWidget* widget = Cell(tab, cell)) widget->setToolTip(tip);
  if (tab != PicturesTab)
    if (QLabel* name = Name(tab, cell)) name->setToolTip(tip);
}

void Thumbnails::CurrentEntryRenamed(const QString& entry) {
  AppState& app = App();
  const int tab = currentTab_;
  // The documents list keeps its names: its rename never reaches here with
  // a file of the list.
  if (tab == DocumentsTab) return;
  const qint32 current = app.Current(tab);
  QStringList& files = app.List(tab);
  if (current < 0 || current >= files.size()) return;
  files[current] = entry;
  const int cell = CurrentCell(Tab(tab), current);
  if (cell < 0) return;
  const QString tip = app.ShowPopupData ? CellTooltip(tab, current) : QString();
  Cell(tab, cell)->setToolTip(tip);
  if (tab == PicturesTab) return;
  QLabel* name = Name(tab, cell);
  name->setText(entry);
  AdjustFilename(name);
  name->setToolTip(tip);
  ShowHighlight(tab);
}

void Thumbnails::MarkCurrentDeleted(int tab) {
  AppState& app = App();
  const qint32 current = app.Current(tab);
  QStringList& files = app.List(tab);
  // On the Documents tab the name is found with the first item of the
  // Audios tab's page, so that on another page the word lands on another
  // cell or on none; the tooltip goes from the right one.
  const TabState& state = Tab(tab);
  const qint32 pageFirst = tab == DocumentsTab ? Tab(AudiosTab).PageFirst : state.PageFirst;
  const int cell = CurrentCell(state, current);
  if (tab == PicturesTab) {
    if (cell >= 0) pictures_.MarkDeleted(cell);
  } else {
    const qint32 labelCell = current - pageFirst;
    if (labelCell >= 0 && labelCell < CellCount(tab))
      if (QLabel* name = Name(tab, int(labelCell))) name->setText("(Deleted)");
  }
  if (current >= 0 && current < files.size()) files[current] = QString();
  HideHighlight();
  if (cell >= 0) {
    Cell(tab, cell)->setToolTip(QString());
    if (tab != PicturesTab) Name(tab, cell)->setToolTip(QString());
  }
}

void Thumbnails::HighlightItem(int tab, qint32 index) {
  App().Current(tab) = index;
  if (tab == currentTab_ && CurrentCell(Tab(tab), index) >= 0) ShowHighlight(tab);
}

void Thumbnails::MarkItemDeleted(int tab, qint32 index) {
  const int cell = CurrentCell(Tab(tab), index);
  if (cell < 0) return;
  if (tab == PicturesTab) {
    pictures_.MarkDeleted(cell);
  } else if (QLabel* name = Name(tab, cell)) {
    name->setText("(Deleted)");
    name->setToolTip(QString());
  }
  if (QWidget* widget = Cell(tab, cell)) widget->setToolTip(QString());
}

void Thumbnails::FocusCurrentItem() { FocusCurrentCell(); }
