#include <gtest/gtest.h>

#include <QStringList>

#include "browser/CellNavigation.h"
#include "browser/HighlightFrame.h"
#include "platform/KeyCodes.h"

// Frame lines read as x, y, width, height in failure messages.
static void PrintTo(const QRect& rect, std::ostream* os) {
  *os << '(' << rect.x() << ", " << rect.y() << ", " << rect.width() << ", " << rect.height() << ')';
}

namespace {

// One tab's page over a list of entries: turning the page refills it, cells
// beyond the end of the list are hidden, and focus and actions are recorded.
class FakePage : public CellPage {
 public:
  FakePage(QStringList entries, int pageSize, int columns = 1)
      : entries_(std::move(entries)), pageSize_(pageSize), columns_(columns) {}

  int PageSize() const override { return pageSize_; }
  int Columns() const override { return columns_; }
  qint32 PageFirst() const override { return pageFirst_; }
  qint32 Count() const override { return qint32(entries_.size()); }
  int ScrollValue() const override { return value_; }
  // As the listing sets it: whole pages less one, and at a page size of 1
  // one less again.
  int ScrollMax() const override {
    const int count = Count();
    if (count == 0) return 0;
    int max = count / pageSize_ - (count % pageSize_ == 0 ? 1 : 0);
    if (pageSize_ == 1 && max >= 1) --max;
    return max;
  }
  void SetScrollValue(int value) override {
    value_ = value;
    Log << QStringLiteral("page %1").arg(value);
    if (Count() < 1) return;
    pageFirst_ = value * pageSize_;
    current_ = pageFirst_;
  }
  bool FocusCell(int cell) override {
    if (cell < 0 || cell >= pageSize_ || Hidden.contains(cell) || pageFirst_ + cell >= Count()) {
      ++Refused;
      return false;
    }
    current_ = pageFirst_ + cell;
    Focused = cell;
    Log << QStringLiteral("focus %1").arg(cell);
    return true;
  }
  bool EntryEmpty(qint32 index) const override {
    return index < 0 || index >= Count() || entries_[index].isEmpty();
  }
  // Cells beyond the end have empty names, unless the label kept an old one.
  bool NameEmpty(int cell) const override {
    if (pageFirst_ + cell < Count()) return false;
    return !StaleNames.contains(cell);
  }
  qint32 CurrentEntry() const override { return current_; }
  void ShowHighlight() override { Log << QStringLiteral("highlight"); }
  void Delete() override { Log << QStringLiteral("delete %1").arg(current_); }
  void Move() override { Log << QStringLiteral("move %1").arg(current_); }
  void Copy() override { Log << QStringLiteral("copy %1").arg(current_); }
  void Rename() override { Log << QStringLiteral("rename %1").arg(current_); }

  // Puts the focus on a cell as a click would, without recording it.
  void Start(int value, int cell) {
    value_ = value;
    pageFirst_ = value * pageSize_;
    current_ = pageFirst_ + cell;
    Focused = cell;
  }
  qint32 Current() const { return current_; }

  QStringList Log;
  int Focused = -1;
  int Refused = 0;
  QList<int> Hidden;      // cells that refuse the focus although filled
  QList<int> StaleNames;  // hidden cells whose name label still holds a name

 private:
  QStringList entries_;
  int pageSize_;
  int columns_;
  qint32 pageFirst_ = 0;
  int value_ = 0;
  qint32 current_ = 0;
};

QStringList Names(int count) {
  QStringList names;
  for (int i = 0; i < count; ++i) names << QStringLiteral("file%1.jpg").arg(i);
  return names;
}

// Presses one key on the focused picture cell.
void PressPicture(FakePage& page, int key, int shift = 0) {
  page.Log.clear();
  ThumbImage_KeyDown(page, page.Focused, key, shift);
}

void PressIcon(FakePage& page, int key, int shift = 0) {
  page.Log.clear();
  IconCell_KeyDown(page, page.Focused, key, shift);
}

}  // namespace

TEST(PictureKeys, RightWalksOnAndWrapsToTheFirstCellOfTheLastPage) {
  // 14 pictures, pages of 6 in 3 columns: pages 0, 1 and a last page of 2.
  FakePage page(Names(14), 6, 3);
  page.Start(0, 4);
  PressPicture(page, keys::Right);
  EXPECT_EQ(page.Log, QStringList({"focus 5"}));
  PressPicture(page, keys::Right);
  EXPECT_EQ(page.Log, QStringList({"page 1", "focus 0"}));
  EXPECT_EQ(page.Current(), 6);

  page.Start(2, 1);  // entry 13, the last one
  PressPicture(page, keys::Right);
  EXPECT_EQ(page.Log, QStringList({"focus 0"}));
  EXPECT_EQ(page.Current(), 12);
  EXPECT_EQ(page.Refused, 4);  // cells 2 to 5 are hidden and were tried in turn
}

TEST(PictureKeys, LeftFromTheFirstCellOfTheFirstPageGoesToTheLastEntryLeft) {
  // Five pictures on a page of 6; the last two were deleted.
  QStringList entries = Names(5);
  entries[3].clear();
  entries[4].clear();
  FakePage page(entries, 6, 3);
  page.Start(0, 0);
  PressPicture(page, keys::Left);
  EXPECT_EQ(page.Log, QStringList({"focus 2"}));

  // On a later page Left from cell 0 turns back and lands on the last cell.
  FakePage paged(Names(14), 6, 3);
  paged.Start(2, 0);
  PressPicture(paged, keys::Left);
  EXPECT_EQ(paged.Log, QStringList({"page 1", "focus 5"}));
  EXPECT_EQ(paged.Current(), 11);
  PressPicture(paged, keys::Left);
  EXPECT_EQ(paged.Log, QStringList({"focus 4"}));
}

TEST(PictureKeys, LeftGoesOnDownwardPastRefusingCells) {
  FakePage page(Names(14), 6, 3);
  page.Start(1, 3);
  page.Hidden = {1, 2};
  PressPicture(page, keys::Left);
  EXPECT_EQ(page.Log, QStringList({"focus 0"}));
  // Every lower cell refuses: back a page, to its last cell.
  page.Hidden = {0, 1, 2};
  page.Start(1, 3);
  PressPicture(page, keys::Left);
  EXPECT_EQ(page.Log, QStringList({"page 0", "focus 5"}));
}

TEST(PictureKeys, DownAndUpWrapWithinThePageAndStopOnePastTheEnd) {
  // A last page holding entries 12 and 13 of 14 in cells 0 and 1 (3 columns).
  FakePage page(Names(14), 6, 3);
  page.Start(2, 0);
  // Down from cell 0: cell 3 is entry 15, above Count; wrapping brings it
  // back to cell 0, which is at most Count, and takes the focus again.
  PressPicture(page, keys::Down);
  EXPECT_EQ(page.Log, QStringList({"focus 0"}));

  // 15 entries: the last page holds 12, 13 and 14 in cells 0 to 2. Down from
  // cell 0 reaches cell 3, entry 15 = Count: it passes the test, is hidden,
  // and the focus stays on cell 0.
  FakePage onePast(Names(15), 6, 3);
  onePast.Start(2, 0);
  PressPicture(onePast, keys::Down);
  EXPECT_TRUE(onePast.Log.isEmpty());
  EXPECT_EQ(onePast.Refused, 1);
  EXPECT_EQ(onePast.Focused, 0);
  EXPECT_EQ(onePast.Current(), 12);

  // Up from cell 1 of the first page wraps to the bottom row of that page.
  FakePage full(Names(14), 6, 3);
  full.Start(0, 1);
  PressPicture(full, keys::Up);
  EXPECT_EQ(full.Log, QStringList({"focus 4"}));
  PressPicture(full, keys::Down);
  EXPECT_EQ(full.Log, QStringList({"focus 1"}));
}

TEST(PictureKeys, DownFromTheLastCellTurnsThePageAndUpFromTheFirstTurnsBack) {
  FakePage page(Names(14), 6, 3);
  page.Start(0, 5);
  PressPicture(page, keys::Down);
  EXPECT_EQ(page.Log, QStringList({"page 1", "focus 0"}));
  PressPicture(page, keys::Up);
  EXPECT_EQ(page.Log, QStringList({"page 0", "focus 5"}));
  // On the first page Up from cell 0 stays on the page: the bottom row.
  PressPicture(page, keys::Up);
  EXPECT_EQ(page.Log, QStringList({"focus 2"}));
  page.Start(0, 0);
  PressPicture(page, keys::Up);
  EXPECT_EQ(page.Log, QStringList({"focus 3"}));
}

TEST(PictureKeys, PageUpAndDownKeepTheEndPagesAndFocusTheFirstCell) {
  FakePage page(Names(14), 6, 3);
  page.Start(0, 4);
  PressPicture(page, keys::Prior);
  EXPECT_EQ(page.Log, QStringList({"focus 0", "highlight"}));
  EXPECT_EQ(page.Current(), 0);
  PressPicture(page, keys::Next);
  EXPECT_EQ(page.Log, QStringList({"page 1", "focus 0", "highlight"}));
  page.Start(2, 1);
  PressPicture(page, keys::Next);
  EXPECT_EQ(page.Log, QStringList({"focus 0", "highlight"}));
  PressPicture(page, keys::Prior);
  EXPECT_EQ(page.Log, QStringList({"page 1", "focus 0", "highlight"}));

  // An empty tab neither turns nor focuses.
  FakePage empty(QStringList(), 6, 3);
  PressPicture(empty, keys::Next);
  PressPicture(empty, keys::Prior);
  EXPECT_TRUE(empty.Log.isEmpty());
}

TEST(PictureKeys, FileKeysActOnlyOnAnEntryStillThereAndLettersOnlyWithoutShift) {
  QStringList entries = Names(4);
  entries[2].clear();
  FakePage page(entries, 6, 3);
  page.Start(0, 1);
  const int M = keys::KeyA + 12, C = keys::KeyA + 2, R = keys::KeyA + 17;
  ThumbImage_KeyDown(page, 1, keys::Delete, 0);
  ThumbImage_KeyDown(page, 1, keys::Delete, keys::ShiftMask);
  ThumbImage_KeyDown(page, 1, keys::Delete, keys::CtrlMask);
  ThumbImage_KeyDown(page, 1, M, 0);
  ThumbImage_KeyDown(page, 1, C, 0);
  ThumbImage_KeyDown(page, 1, R, 0);
  ThumbImage_KeyDown(page, 1, M, keys::ShiftMask);
  ThumbImage_KeyDown(page, 1, C, keys::CtrlMask);
  ThumbImage_KeyDown(page, 1, R, keys::ShiftMask);
  EXPECT_EQ(page.Log,
            QStringList({"delete 1", "delete 1", "delete 1", "move 1", "copy 1", "rename 1"}));

  page.Start(0, 2);  // the deleted entry
  page.Log.clear();
  for (int key : {int(keys::Delete), M, C, R}) ThumbImage_KeyDown(page, 2, key, 0);
  IconCell_KeyDown(page, 2, keys::Delete, 0);
  EXPECT_TRUE(page.Log.isEmpty());
}

TEST(PictureKeys, NoPageMakesAnyKeyHang) {
  const int keyList[] = {keys::Right, keys::Left, keys::Down, keys::Up, keys::Prior, keys::Next};
  // Every cell refusing the focus, a page of one cell, an empty list, no
  // columns and a column count above the page size.
  FakePage allHidden(Names(6), 6, 3);
  allHidden.Hidden = {0, 1, 2, 3, 4, 5};
  FakePage single(Names(3), 1, 1);
  FakePage empty(QStringList(), 6, 3);
  FakePage noColumns(Names(2), 4, 0);
  FakePage wide(Names(2), 4, 9);
  for (FakePage* page : {&allHidden, &single, &empty, &noColumns, &wide}) {
    for (int cell : {0, 1, page->PageSize() - 1, -1, 50}) {
      for (int key : keyList) {
        ThumbImage_KeyDown(*page, cell, key, 0);
        IconCell_KeyDown(*page, cell, key, 0);
      }
    }
  }
  // A page of one cell still walks: Right and Down turn the page.
  FakePage walk(Names(3), 1, 1);
  walk.Start(0, 0);
  PressPicture(walk, keys::Down);
  EXPECT_EQ(walk.Log, QStringList({"page 1", "focus 0"}));
  // At a page size of 1 the scroll bar stops one short of the last entry.
  PressPicture(walk, keys::Right);
  EXPECT_EQ(walk.Log, QStringList({"focus 0"}));
  EXPECT_EQ(walk.Current(), 1);
}

TEST(IconKeys, DownIsRightAndWrapsToTheFirstCell) {
  FakePage page(Names(10), 4);
  page.Start(0, 2);
  PressIcon(page, keys::Down);
  EXPECT_EQ(page.Log, QStringList({"focus 3"}));
  PressIcon(page, keys::Right);
  EXPECT_EQ(page.Log, QStringList({"page 1", "focus 0"}));
  // The last page holds entries 8 and 9: past the last entry back to cell 0,
  // and from the page's last cell too.
  page.Start(2, 1);
  PressIcon(page, keys::Down);
  EXPECT_EQ(page.Log, QStringList({"focus 0"}));
  EXPECT_EQ(page.Current(), 8);
  page.Start(2, 3);
  PressIcon(page, keys::Right);
  EXPECT_EQ(page.Log, QStringList({"focus 0"}));
}

TEST(IconKeys, UpOnTheFirstCellGoesToTheHighestNamedCellOrBackAPage) {
  // Three files, one deleted: its cell reads "(Deleted)" and still counts.
  QStringList entries = Names(3);
  entries[2].clear();
  FakePage page(entries, 4);
  page.Start(0, 0);
  PressIcon(page, keys::Up);
  EXPECT_EQ(page.Log, QStringList({"focus 2"}));
  PressIcon(page, keys::Left);
  EXPECT_EQ(page.Log, QStringList({"focus 1"}));

  // A hidden cell whose label kept an old name is passed over.
  page.StaleNames = {3};
  page.Start(0, 0);
  PressIcon(page, keys::Left);
  EXPECT_EQ(page.Log, QStringList({"focus 2"}));

  FakePage paged(Names(10), 4);
  paged.Start(1, 0);
  PressIcon(paged, keys::Up);
  EXPECT_EQ(paged.Log, QStringList({"page 0", "focus 3"}));
  EXPECT_EQ(paged.Current(), 3);
}

TEST(HighlightFrame, LinesOfAPictureCell) {
  // A cell at (600, 300) of 1380 by 690 twips: the frame runs 30 twips
  // outside it, from (570, 270), 1440 wide and 750 high.
  const FrameLines frame = PictureFrame(QRect(600, 300, 1380, 690));
  EXPECT_EQ(frame.Lines[0], QRect(570, 270, 1410, 15));   // top, to 1980
  EXPECT_EQ(frame.Lines[1], QRect(570, 270, 15, 720));    // left, to 990
  EXPECT_EQ(frame.Lines[2], QRect(570, 1005, 1440, 15));  // bottom, to 2010
  EXPECT_EQ(frame.Lines[3], QRect(1995, 270, 15, 750));   // right, to 1020
}

TEST(HighlightFrame, LinesOfAnIconHoldTheName) {
  // An icon at (120, 600); its name label ends at 2400.
  const FrameLines frame = IconFrame(QRect(120, 600, 240, 240), 2400);
  EXPECT_EQ(frame.Lines[0], QRect(90, 570, 2310, 15));
  EXPECT_EQ(frame.Lines[1], QRect(90, 570, 15, 315));
  EXPECT_EQ(frame.Lines[2], QRect(90, 900, 2340, 15));
  EXPECT_EQ(frame.Lines[3], QRect(2415, 570, 15, 345));
}
