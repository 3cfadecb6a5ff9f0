#pragma once
// The strip under the browser's page. Per tab: the count text, and the
// position label and box that jump to an item. On the Pictures tab the
// thumbnail size box between its two labels; on the list tabs the separator
// between the two columns of names.
//
// The controls are children of the browser window, made at its places in the
// window's stacking and focus order; the window routes their keys and focus.

#include <QtGlobal>
#include <array>

#include "browser/PageGeometry.h"
#include "browser/TabState.h"

class BalloonHelp;
class NumberBox;
class QFrame;
class QLabel;
class QObject;
class QWidget;

class BottomStrip {
 public:
  // Indexed by tab - 1.
  std::array<QLabel*, TabCount> CountLabel{};
  std::array<QLabel*, TabCount> PositionLabel{};
  std::array<NumberBox*, TabCount> PositionNumber{};
  QFrame* Separator = nullptr;
  QLabel* SizeLabel = nullptr;
  NumberBox* ThumbnailSize = nullptr;
  QLabel* InchLabel = nullptr;
  // The help popups of the boxes.
  BalloonHelp* Balloons = nullptr;

  // Makes the count text, position label and position box of a tab, hidden;
  // `filter` sees the events of the box.
  void MakeTab(QWidget* window, int tab, QObject* filter);
  // Makes the separator and the size group, hidden, and the help popups;
  // `filter` sees the events of the size box.
  void MakeSizeGroup(QWidget* window, QObject* filter);
  // Places every control for the layout; textHeight is a label's height in
  // twips.
  void Place(const PageLayout& layout, int textHeight);

  // Hides the count, position label and position box of a tab.
  void HideTab(int tab);
  // Hides the separator and the size group.
  void HideSizeGroup();
  // What a new layout hides: the count and position of each tab and the
  // labels of the size group; the size box and the separator stay.
  void HideForLayout();
  // The strip of the tab that came forward: its count; the separator on a
  // list tab with entries; the size group on Pictures with entries; the
  // position when the list is longer than a page.
  void ShowTab(int tab, const TabState& state);

  void ShowPageCount(int tab, const TabState& state);
  void ShowEmptyCount(int tab);
  // The position box shows the item's number, counted from 1.
  void ShowPosition(int tab, qint32 item);
  // The size box shows the thumbnail size in inches.
  void ShowThumbnailSize(int twips);
  // What the boxes hold as typed: inches, and an item's number.
  double TypedThumbnailSize() const;
  qint64 TypedPosition(int tab) const;

  // The tab whose position box (or its text box) `object` is; 0 for any other.
  int PositionBoxTab(const QObject* object) const;
  // Gives the position boxes of the first three tabs and the size box their
  // help popups, or takes them away.
  void SetHelp(bool on);

  // Whether `object` is the size box or its text box.
  bool IsSizeBox(const QObject* object) const;
 private:
  void SetCount(int tab, const QString& text);
};
