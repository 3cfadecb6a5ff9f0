#pragma once
// The pages of the Videos, Audios and Documents tabs: an icon and a name for
// each entry, in two columns, filled from the tab's list, with the data
// popups of the cells. On an audio CD the tracks take the disc's titles.
//
// The cells are children of the browser window; the window routes their keys
// and focus and turns the pages.

#include <QStringList>
#include <QVector>
#include <array>
#include <functional>

#include "browser/Listing.h"
#include "browser/PageGeometry.h"

class QLabel;
class QObject;
class QWidget;

class ListPage {
 public:
  // The pages of `window`, paged by the tab states of `listing` and laid out
  // by `layout`. `inFront(tab)` tells whether a tab's cells show as they
  // fill: the tab is in front and no refit is running.
  ListPage(QWidget* window, Listing& listing, const PageLayout& layout,
           std::function<bool(int tab)> inFront);

  // Icons and names of the three tabs, indexed by tab - 2.
  std::array<QVector<QLabel*>, 3> Icons;
  std::array<QVector<QLabel*>, 3> Names;

  // Makes or drops a tab's cells until `count` stand (at least one). New
  // cells are hidden and out of the focus chain; `filter` sees their events.
  void EnsureCells(int tab, int count, QObject* filter);
  // Puts every icon and name on its place of the layout.
  void PlaceCells();
  int CellCount(int tab) const;
  QLabel* Icon(int tab, int cell) const;
  QLabel* Name(int tab, int cell) const;

  // Looks up the titles of an audio CD when the audios listed are the tracks
  // of one, in the folder given; otherwise forgets any titles.
  void ReadCdTitles(const QString& folder);
  // Fills the page of a tab that begins at its PageStart, and sets PageFirst
  // and PageLast.
  void Fill(int tab);
  // Empties a tab's cells: hidden, out of the focus chain, no popups.
  void Clear(int tab);
  // Fits a name into its cell: cut, without an ellipsis.
  void AdjustFilename(QLabel* label) const;
  // The data popups of a tab's filled cells, or none.
  void SetDataTooltips(int tab, bool on);

 private:
  QWidget* window_;
  Listing& listing_;
  const PageLayout& layout_;
  std::function<bool(int tab)> inFront_;
  QStringList cdTitles_;
  bool cdTitlesKnown_ = false;
};
