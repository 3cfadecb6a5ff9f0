#include <gtest/gtest.h>

#include <QStringList>

#include "browser/CellNavigation.h"
#include "browser/Listing.h"
#include "platform/KeyCodes.h"

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
  int ScrollMax() const override { return ::ScrollMax(Count(), qint16(pageSize_)); }
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

// One key on one cell: the list (count entries, those in `deleted` empty),
// the page (size and columns), where the focus stands, the cells that
// refuse it; then what the key did, the current entry afterwards and the
// cells that refused the focus on the way (-1: not looked at).
struct KeyCase {
  const char* What;
  int Count;
  QList<int> Deleted;
  int PageSize, Columns, Value, Cell;
  QList<int> Hidden;
  int Key;
  QStringList Log;
  int Current = -1;
  int Refused = -1;
};

void RunCases(const QList<KeyCase>& cases, bool icons) {
  for (const KeyCase& c : cases) {
    QStringList entries = Names(c.Count);
    for (int deleted : c.Deleted) entries[deleted].clear();
    FakePage page(entries, c.PageSize, c.Columns);
    page.Hidden = c.Hidden;
    page.Start(c.Value, c.Cell);
    if (icons)
      IconCell_KeyDown(page, page.Focused, c.Key, 0);
    else
      ThumbImage_KeyDown(page, page.Focused, c.Key, 0);
    EXPECT_EQ(page.Log, c.Log) << c.What;
    if (c.Current >= 0) {
      EXPECT_EQ(page.Current(), c.Current) << c.What;
    }
    if (c.Refused >= 0) {
      EXPECT_EQ(page.Refused, c.Refused) << c.What;
    }
  }
}

}  // namespace

TEST(PictureKeys, ArrowsAndPageKeysWalkTheGridAndTurnThePages) {
  using keys::Down, keys::Left, keys::Next, keys::Prior, keys::Right, keys::Up;
  const QStringList toNextPage = {"page 1", "focus 0"};
  // 14 pictures in pages of 6 in 3 columns: pages 0, 1 and a last page of 2.
  RunCases({
      {"Right on the last cell turns the page", 14, {}, 6, 3, 0, 5, {}, Right, toNextPage, 6},
      {"Right past the last entry tries every hidden cell, then wraps on the last page", 14, {},
       6, 3, 2, 1, {}, Right, {"focus 0"}, 12, 4},
      {"Left on the first page wraps to the last entry left", 5, {3, 4}, 6, 3, 0, 0, {}, Left,
       {"focus 2"}},
      {"Left on cell 0 of a later page turns back to its last cell", 14, {}, 6, 3, 2, 0, {}, Left,
       {"page 1", "focus 5"}, 11},
      {"Left with every lower cell refusing turns back", 14, {}, 6, 3, 1, 3, {0, 1, 2}, Left,
       {"page 0", "focus 5"}},
      {"Down wraps within the last page", 14, {}, 6, 3, 2, 0, {}, Down, {"focus 0"}},
      // Entry 15 = Count passes the test "at most Count", is hidden, and the
      // focus stays where it was.
      {"Down stops one past the end", 15, {}, 6, 3, 2, 0, {}, Down, {}, 12, 1},
      {"Up wraps to the bottom row", 14, {}, 6, 3, 0, 1, {}, Up, {"focus 4"}},
      {"Down on the last cell turns the page", 14, {}, 6, 3, 0, 5, {}, Down, toNextPage},
      {"Up on cell 0 of a later page turns back", 14, {}, 6, 3, 1, 0, {}, Up, {"page 0", "focus 5"}},
      {"Up on cell 0 of the first page", 14, {}, 6, 3, 0, 0, {}, Up, {"focus 3"}},
      {"Page Up on the first page", 14, {}, 6, 3, 0, 4, {}, Prior, {"focus 0", "highlight"}, 0},
      {"Page Down", 14, {}, 6, 3, 0, 0, {}, Next, {"page 1", "focus 0", "highlight"}},
      {"Page Down on the last page", 14, {}, 6, 3, 2, 1, {}, Next, {"focus 0", "highlight"}},
      {"Page Up", 14, {}, 6, 3, 2, 0, {}, Prior, {"page 1", "focus 0", "highlight"}},
      {"Page Down on an empty tab", 0, {}, 6, 3, 0, 0, {}, Next, {}},
      {"a page of one cell still turns", 3, {}, 1, 1, 0, 0, {}, Down, toNextPage},
      // At a page size of 1 the scroll bar stops one short of the last entry.
      {"a page of one cell stops short of the last", 3, {}, 1, 1, 1, 0, {}, Right, {"focus 0"}, 1},
  }, false);
}

TEST(IconKeys, DownIsRightAndUpIsLeftDownTheColumns) {
  using keys::Down, keys::Left, keys::Right, keys::Up;
  RunCases({
      {"Right on the last cell turns the page", 10, {}, 4, 1, 0, 3, {}, Right, {"page 1", "focus 0"}},
      {"Down past the last entry goes to cell 0", 10, {}, 4, 1, 2, 1, {}, Down, {"focus 0"}, 8},
      {"Right on the last cell of the last page", 10, {}, 4, 1, 2, 3, {}, Right, {"focus 0"}},
      // A deleted file's cell reads "(Deleted)" and still counts.
      {"Up on the first cell goes to the highest named cell", 3, {2}, 4, 1, 0, 0, {}, Up, {"focus 2"}},
      {"Up on cell 0 of a later page turns back", 10, {}, 4, 1, 1, 0, {}, Up, {"page 0", "focus 3"}, 3},
  }, true);
  // A hidden cell whose label kept an old name is passed over.
  QStringList entries = Names(3);
  entries[2].clear();
  FakePage page(entries, 4);
  page.StaleNames = {3};
  page.Start(0, 0);
  IconCell_KeyDown(page, 0, keys::Left, 0);
  EXPECT_EQ(page.Log, QStringList({"focus 2"}));
}

TEST(PictureKeys, FileKeysActOnlyOnAnEntryStillThereAndLettersOnlyWithoutShift) {
  QStringList entries = Names(4);
  entries[2].clear();
  FakePage page(entries, 6, 3);
  page.Start(0, 1);
  const int M = keys::KeyA + 12, C = keys::KeyA + 2, R = keys::KeyA + 17;
  const int shift = keys::ShiftMask, ctrl = keys::CtrlMask;
  for (const auto& [key, mask] : {std::pair{int(keys::Delete), 0}, {keys::Delete, shift}, {keys::Delete, ctrl},
                                  {M, 0}, {C, 0}, {R, 0}, {M, shift}, {C, ctrl}, {R, shift}})
    ThumbImage_KeyDown(page, 1, key, mask);
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
}
