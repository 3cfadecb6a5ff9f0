#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>
#include <memory>

#include "controls/NumberBox.h"

namespace {

// A window with a number box and a second field to take the focus away.
struct Form {
  std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
  NumberBox* box = new NumberBox(window.get());
  QLineEdit* other = new QLineEdit(window.get());
  QStringList events;

  Form() {
    auto* layout = new QVBoxLayout(window.get());
    layout->addWidget(box);
    layout->addWidget(other);
    window->show();
    QApplication::setActiveWindow(window.get());
    other->setFocus();
    QObject::connect(box, &NumberBox::Change, [this] { events << "Change:" + box->Value(); });
    QObject::connect(box, &NumberBox::KeyPress,
                     [this](int ascii) { events << QString("KeyPress:%1").arg(ascii); });
  }
  QString Shown() const { return box->txtNumber()->text(); }
  void Enter() { box->txtNumber()->setFocus(Qt::TabFocusReason); }
  void Leave() { other->setFocus(Qt::TabFocusReason); }
  void Type(const char* text) { QTest::keyClicks(box->txtNumber(), text); }
};

}  // namespace

TEST(NumberBox, ShowsThePlainNumberWhileFocusedAndTheFormattedOneOtherwise) {
  Form f;
  f.box->SetValue("1234.5");
  EXPECT_EQ(f.Shown(), "1,234.50");
  EXPECT_TRUE(f.box->txtNumber()->alignment() & Qt::AlignRight);

  f.Enter();
  EXPECT_TRUE(f.box->GotFocus());
  EXPECT_EQ(f.Shown(), "1234.50");
  EXPECT_EQ(f.box->txtNumber()->selectedText(), "1234.50");
  EXPECT_TRUE(f.box->txtNumber()->alignment() & Qt::AlignLeft);

  f.Type("-1234.5");
  EXPECT_EQ(f.Shown(), "-1234.5");
  f.Leave();
  EXPECT_FALSE(f.box->GotFocus());
  EXPECT_EQ(f.Shown(), "(1,234.50)");
  EXPECT_EQ(f.box->Value(), "-1234.50");
  EXPECT_TRUE(f.box->txtNumber()->alignment() & Qt::AlignRight);
  // The value went from 1234.5 to -1234.5 through the typed characters
  // ("-1234." is no new number); the formatting on entry and exit raised
  // nothing.
  EXPECT_EQ(f.events.filter("Change").join(","),
            "Change:1234.5,Change:,Change:-1,Change:-12,Change:-123,Change:-1234,Change:-1234.5");
}

TEST(NumberBox, KeyFilterLetsOnlyNumberCharactersThrough) {
  Form f;
  f.Enter();
  f.Type("a1b.2.c3");
  EXPECT_EQ(f.Shown(), "1.23");
  // A minus only at the start, and only once.
  f.Type("-");
  EXPECT_EQ(f.Shown(), "1.23");
  f.box->txtNumber()->setCursorPosition(0);
  f.Type("-");
  EXPECT_EQ(f.Shown(), "-1.23");
  f.box->txtNumber()->setCursorPosition(0);
  f.Type("-");
  EXPECT_EQ(f.Shown(), "-1.23");
  // A selection that holds the point or the minus lets a new one in.
  f.box->txtNumber()->setSelection(0, 3);
  f.Type("-");
  EXPECT_EQ(f.Shown(), "-23");
  f.box->txtNumber()->selectAll();
  f.Type(".5");
  EXPECT_EQ(f.Shown(), ".5");
  QTest::keyClick(f.box->txtNumber(), Qt::Key_Backspace);
  EXPECT_EQ(f.Shown(), ".");
  EXPECT_EQ(f.events.filter("KeyPress").join(","),
            "KeyPress:49,KeyPress:46,KeyPress:50,KeyPress:51,KeyPress:45,KeyPress:45,"
            "KeyPress:46,KeyPress:53,KeyPress:8");

  // PositiveOnly drops the minus wherever it is typed.
  f.box->SetPositiveOnly(true);
  f.box->txtNumber()->selectAll();
  f.Type("-7");
  EXPECT_EQ(f.Shown(), "7");
}

TEST(NumberBox, DigitsStopAtTheLengthOfTheFormatSection) {
  Form f;
  f.Enter();
  f.Type("123456789012");
  EXPECT_EQ(f.Shown(), "1234567890");
  // A selected digit makes room for one more.
  f.box->txtNumber()->setSelection(9, 1);
  f.Type("55");
  EXPECT_EQ(f.Shown(), "1234567895");

  f.box->SetFormat("##,###");
  f.box->txtNumber()->selectAll();
  f.Type("12345678");
  EXPECT_EQ(f.Shown(), "123456");
  f.Leave();
  EXPECT_EQ(f.Shown(), "123,456");
}

TEST(NumberBox, LimitsApplyOnLeavingTheBoxOnlyWhenSwitchedOnAndNotToAnEmptyBox) {
  Form f;
  f.Enter();
  f.Type("5000000");
  f.Leave();
  EXPECT_EQ(f.Shown(), "5,000,000.00");  // limits off: kept

  f.box->SetUseMaxMinValues(true);
  f.Enter();
  f.Leave();
  EXPECT_EQ(f.Shown(), "999,999.99");
  EXPECT_EQ(f.box->Value(), "999999.99");

  f.box->SetMinValue(10);
  f.Enter();
  f.Type("-3");
  f.Leave();
  EXPECT_EQ(f.Shown(), "10.00");

  f.box->SetMaxValue(50);
  f.Enter();
  f.Type("50.004");
  f.Leave();
  EXPECT_EQ(f.Shown(), "50.00");  // within the limit, rounded only by the format

  f.Enter();
  QTest::keyClick(f.box->txtNumber(), Qt::Key_Backspace);
  EXPECT_EQ(f.Shown(), "");
  f.Leave();
  EXPECT_EQ(f.Shown(), "");

  // A value held to a limit is a change of value.
  f.events.clear();
  f.Enter();
  f.Type("75");
  f.Leave();
  EXPECT_EQ(f.events.filter("Change").join(","), "Change:7,Change:75,Change:50");
}

TEST(NumberBox, CtrlKeysCopyPasteAndCutThroughTheClipboard) {
  Form f;
  QClipboard* clipboard = QApplication::clipboard();
  f.box->SetValue("42.5");
  f.Enter();
  QTest::keyClick(f.box->txtNumber(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(clipboard->text(), "42.50");

  clipboard->setText("  -1,234.567 ");
  QTest::keyClick(f.box->txtNumber(), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(f.Shown(), "(1,234.57)");
  EXPECT_EQ(f.box->txtNumber()->selectedText(), "(1,234.57)");
  EXPECT_EQ(f.box->Value(), "-1234.57");

  clipboard->setText("abc");
  QTest::keyClick(f.box->txtNumber(), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(f.Shown(), "");
  EXPECT_EQ(f.box->Value(), "");

  f.Type("123");
  f.box->txtNumber()->setSelection(1, 1);
  QTest::keyClick(f.box->txtNumber(), Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(clipboard->text(), "2");
  EXPECT_EQ(f.Shown(), "");  // cut empties the whole box

  // A locked box keeps its number but still copies.
  f.box->SetValue("8");
  f.box->SetLocked(true);
  f.box->txtNumber()->selectAll();
  QTest::keyClick(f.box->txtNumber(), Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(clipboard->text(), "8");
  EXPECT_EQ(f.box->Value(), "8");
  f.Type("9");
  EXPECT_EQ(f.box->Value(), "8");
}

TEST(NumberBox, ChangeComesOnlyWhenTheNumberDiffersInValue) {
  Form f;
  f.box->SetValue("5");
  f.box->SetValue("5.000");
  f.box->SetValue("(5)");
  f.box->SetFormat("0.0");
  EXPECT_EQ(f.Shown(), "-5.0");
  EXPECT_EQ(f.events.join(","), "Change:5,Change:-5");
  // Empty and zero are the same number.
  f.box->SetValue("");
  f.box->SetValue("0");
  EXPECT_EQ(f.events.join(","), "Change:5,Change:-5,Change:");
}
