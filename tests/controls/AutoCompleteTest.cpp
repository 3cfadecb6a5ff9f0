#include <gtest/gtest.h>

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <vector>

#include "controls/AutoComplete.h"
#include "controls/AutoCompleteFilter.h"

namespace {

const QStringList Fruit{"Apple", "Banana", "Pineapple", "", "APPLE", "Grape", "Crab apple"};

struct Box {
  QWidget window;
  AutoComplete* box = new AutoComplete(&window);
  QPushButton* other = new QPushButton("Other", &window);
  std::vector<int> chosen;
  std::vector<int> keyUps;
  int changes = 0;

  Box() {
    window.resize(300, 300);
    box->setGeometry(10, 10, 200, 0);
    other->setGeometry(10, 250, 80, 30);
    for (int i = 0; i < Fruit.size(); ++i) box->AddItem(Fruit[i], 100 + i);
    QObject::connect(box, &AutoComplete::ItemChosen, [this](int row) { chosen.push_back(row); });
    QObject::connect(box, &AutoComplete::KeyUp, [this](int key, int) { keyUps.push_back(key); });
    QObject::connect(box, &AutoComplete::Change, [this] { ++changes; });
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    box->txtAutoComplete()->setFocus();
  }
  QStringList Rows() const {
    QStringList rows;
    for (int i = 0; i < box->ListCount(); ++i) rows << box->List(i);
    return rows;
  }
  QList<int> RowData() const {
    QList<int> data;
    for (int i = 0; i < box->ListCount(); ++i) data << box->ItemData(i);
    return data;
  }
  int TextHeight() const { return box->txtAutoComplete()->height(); }
  bool Open() const { return box->lstItems()->isVisible(); }
};

}  // namespace

TEST(AutoCompleteFilter, EntriesHoldingTheTextAnywhereMatchOnceEachInMasterOrder) {
  EXPECT_EQ(autocomplete::Matches(Fruit, "app"), (QList<int>{0, 2, 6}));  // not "APPLE" again
  EXPECT_EQ(autocomplete::Matches(Fruit, "e a"), (QList<int>{}));
  EXPECT_EQ(autocomplete::Matches(Fruit, "b a"), (QList<int>{6}));
  EXPECT_TRUE(autocomplete::Matches(Fruit, "").isEmpty());
  EXPECT_FALSE(autocomplete::IsMatch("", ""));
}

TEST(AutoComplete, TypingNarrowsTheListAndTheControlGrowsAndShrinksWithIt) {
  Box b;
  const int closedHeight = b.box->height();
  EXPECT_EQ(closedHeight, b.TextHeight());

  QTest::keyClicks(b.box->txtAutoComplete(), "pp");
  EXPECT_TRUE(b.Open());
  EXPECT_EQ(b.Rows(), (QStringList{"Apple", "Pineapple", "Crab apple"}));
  EXPECT_EQ(b.RowData(), (QList<int>{100, 102, 106}));
  EXPECT_EQ(b.box->height(), b.TextHeight() + b.box->lstItems()->height());

  QTest::keyClicks(b.box->txtAutoComplete(), "le ");
  EXPECT_EQ(b.Rows(), (QStringList{}));
  EXPECT_FALSE(b.Open());
  EXPECT_EQ(b.box->height(), closedHeight);

  QTest::keyClick(b.box->txtAutoComplete(), Qt::Key_Backspace);
  EXPECT_EQ(b.Rows(), (QStringList{"Apple", "Pineapple", "Crab apple"}));
  b.box->SetText("");
  QTest::keyClick(b.box->txtAutoComplete(), Qt::Key_Right);
  EXPECT_FALSE(b.Open());
  EXPECT_EQ(b.keyUps, (std::vector<int>{80, 80, 76, 69, 32, 8, 39}));
}

TEST(AutoComplete, DownEntersTheListAndEnterOrAClickChoosesTheRow) {
  Box b;
  QTest::keyClicks(b.box->txtAutoComplete(), "app");
  QTest::keyClick(b.box->txtAutoComplete(), Qt::Key_Down);
  EXPECT_TRUE(b.box->lstItems()->hasFocus());
  EXPECT_EQ(b.box->Text(), "app");  // the highlight alone does not fill the box

  // Moving in the list shows the row in the text box; the list stays open.
  QTest::keyClick(b.box->lstItems(), Qt::Key_Down);
  EXPECT_EQ(b.box->Text(), "Pineapple");
  EXPECT_TRUE(b.Open());
  QTest::keyClick(b.box->lstItems(), Qt::Key_Down);
  QTest::keyClick(b.box->lstItems(), Qt::Key_Enter);
  EXPECT_EQ(b.box->Text(), "Crab apple");
  EXPECT_FALSE(b.Open());
  EXPECT_EQ(b.box->height(), b.TextHeight());
  EXPECT_TRUE(b.box->txtAutoComplete()->hasFocus());
  EXPECT_EQ(b.box->SelectedItem(), 2);

  b.box->SetText("");
  QTest::keyClicks(b.box->txtAutoComplete(), "an");
  ASSERT_EQ(b.Rows(), (QStringList{"Banana"}));
  const QRect first = b.box->lstItems()->visualItemRect(b.box->lstItems()->item(0));
  QTest::mouseClick(b.box->lstItems()->viewport(), Qt::LeftButton, {}, first.center());
  EXPECT_EQ(b.box->Text(), "Banana");
  EXPECT_EQ(b.chosen, (std::vector<int>{2, 0}));
}

TEST(AutoComplete, TheArrowOrPageDownOpensTheWholeListAndLeavingClosesIt) {
  Box b;
  QTest::mouseClick(b.box->ArrowButton(), Qt::LeftButton);
  EXPECT_EQ(b.Rows(), Fruit);  // every entry, "APPLE" and the empty one too
  EXPECT_TRUE(b.box->lstItems()->hasFocus());
  QTest::mouseClick(b.box->ArrowButton(), Qt::LeftButton);
  EXPECT_FALSE(b.Open());
  EXPECT_TRUE(b.box->txtAutoComplete()->hasFocus());

  QTest::keyClick(b.box->txtAutoComplete(), Qt::Key_PageDown);
  EXPECT_TRUE(b.Open());
  b.other->setFocus();
  EXPECT_FALSE(b.Open());
  EXPECT_EQ(b.box->height(), b.TextHeight());

  // An empty master list: the arrow shows nothing.
  b.box->Clear();
  QTest::mouseClick(b.box->ArrowButton(), Qt::LeftButton);
  EXPECT_FALSE(b.Open());
  EXPECT_TRUE(b.chosen.empty());
}

TEST(AutoComplete, TheMasterListKeepsItemDataWithItsEntries) {
  AutoComplete box;
  EXPECT_EQ(box.AddArrayOrCollection(QStringList{"Red", "Green"}), "");
  EXPECT_EQ(box.AddArrayOrCollection(QVariantList{"Blue", 7}),
            "An invalid element is present in the list");
  EXPECT_EQ(box.AddArrayOrCollection(QVariant(42)), "Expected: Array or Collection");
  box.AddItem("Black", 9);
  EXPECT_EQ(box.MasterListCount(), 3);
  box.SetMasterItemData(2, 5);

  box.RemoveItem(1);
  EXPECT_EQ(box.MasterListValue(1), "Green");
  EXPECT_EQ(box.MasterItemData(1), 5);
  EXPECT_EQ(box.MasterItemData(2), 9);
  box.RemoveItem(0);
  box.RemoveItem(3);
  EXPECT_EQ(box.MasterListCount(), 2);
  EXPECT_EQ(box.MasterListValue(3), "");
}
