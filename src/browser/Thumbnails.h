#pragma once
// The browser window: four tabs, Pictures, Videos, Audios and Documents, each
// showing one page of its list. The main window puts it into its client
// area under the command bar.
//
// Until the thumbnail cells arrive, a page is a plain list of the names on
// it, and the page size is worked out from the size of that list and the
// thumbnail size.

#include <QColor>
#include <QPoint>
#include <QPointer>
#include <QWidget>
#include <array>

#include "browser/Listing.h"
#include "shell/CommandBar.h"


class QDoubleSpinBox;
class QFrame;
class QLabel;
class QListWidget;
class QScrollBar;
class QSpinBox;
class QTabWidget;

class Thumbnails : public QWidget {
  Q_OBJECT
 public:
  explicit Thumbnails(QWidget* parent = nullptr);
  ~Thumbnails() override;

  // Prepares the window and lists the default folder. Loads the command bar
  // when no command bar is loaded yet.
  void Form_Load();
  // Reads the selection and sort settings, rebuilds the patterns and lists
  // the folder or album again.
  void ChangePattern();
  // Lists the current folder, or the album on display, into the four tabs
  // and brings each to its first page.
  void ChangeDirectory();
  // The one entry point of paging: shows page `value` of tab `index`.
  void VScroll_Change(int index, int value);
  // Brings a tab forward.
  void ThumbnailTabs_Click(int previous, int current);
  // Works out each tab's page size from the window's present size.
  void ChangeFormSize();

  Listing& Lists() { return listing_; }
  TabState& Tab(int tab) { return listing_.Tab(tab); }
  CommandBar* Bar() const { return commandBar_; }
  // The tab in front (1 to 4).
  int CurrentTab() const;

  // Controls, indexed by tab - 1.
  QTabWidget* ThumbnailTabs;
  std::array<QListWidget*, TabCount> Pages;
  std::array<QScrollBar*, TabCount> VScroll;
  std::array<QLabel*, TabCount> CountLabel;
  std::array<QLabel*, TabCount> PositionLabel;
  std::array<QSpinBox*, TabCount> PositionNumber;
  QFrame* Separator;
  QLabel* SizeLabel;
  QDoubleSpinBox* ThumbnailSize;
  QLabel* InchLabel;

  // Where the first icon and name of the list tabs stand (twips), and the
  // colour of the highlight frame; the thumbnail cells take them up.
  QPoint FirstIconPosition;
  QPoint FirstNamePosition;
  QColor HighlightColor;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void PlaceColumns();
  void FillPage(int tab);
  void ClearPage(int tab);
  void SetCurrentItem(int tab, qint32 index);
  void TabsCurrentChanged(int index);

  Listing listing_;
  QPointer<CommandBar> commandBar_;
  bool ownsCommandBar_ = false;
  int currentTab_ = PicturesTab;
};

// Page sizes from the room of a page (twips) and the thumbnail size: picture
// cells across times down, and two columns of icon rows for the list tabs.
// At least one picture cell, and one row of names in each column.
struct PageSizes {
  qint16 Pictures = 1;
  qint16 Lists = 1;
};
PageSizes PageSizesFor(int widthTwips, int heightTwips, int thumbnailTwips);
