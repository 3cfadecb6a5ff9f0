#include <gtest/gtest.h>

#include <QImage>
#include <tuple>

#include "controls/Button.h"
#include "controls/Headings.h"
#include "controls/Label3D.h"
#include "controls/MessageBox.h"
#include "controls/MsgBoxEnhanced.h"
#include "controls/NewLabel.h"
#include "controls/NewSlider.h"
#include "controls/SystemColours.h"
#include "controls/TransCheck.h"
#include "support/MessageBoxAnswer.h"

namespace {

QColor PixelOf(QWidget* widget, QPoint at) { return widget->grab().toImage().pixelColor(at); }

// What a colour property reads after it was given a colour and then -1.
template <class Control>
OleColor AfterMinusOne(void (Control::*set)(OleColor), OleColor (Control::*get)() const) {
  Control control;
  (control.*set)(0x00123456);
  (control.*set)(0xFFFFFFFF);
  return (control.*get)();
}
#define AFTER_MINUS_ONE(Control, Property) \
  AfterMinusOne<Control>(&Control::Set##Property, &Control::Property)

}  // namespace

TEST(SystemColours, NumbersHoldRedInTheLowByteThenGreenThenBlue) {
  EXPECT_EQ(ColorFromOle(0x000000FF), QColor(255, 0, 0));
  EXPECT_EQ(ColorFromOle(0x00FF8000), QColor(0, 128, 255));
  EXPECT_EQ(ColorFromOle(0x00000000), QColor(0, 0, 0));
  EXPECT_EQ(ToOleColor(QColor(255, 0, 0)), 0x000000FFu);
  EXPECT_EQ(ToOleColor(QColor(0, 128, 255)), 0x00FF8000u);
  EXPECT_EQ(ToOleColor(QColor(0x12, 0x34, 0x56)), 0x00563412u);
  // -1 is no colour either way.
  EXPECT_FALSE(ColorFromOle(0xFFFFFFFF).isValid());
  EXPECT_EQ(ToOleColor(QColor()), 0xFFFFFFFFu);
  // A system colour is read from the palette, never as blue-green-red.
  EXPECT_NE(ColorFromOle(0x80000002), QColor(2, 0, 0));
  // An index beyond the table is the button face.
  EXPECT_EQ(ColorFromOle(0x800000FF), ColorFromOle(0x8000000F));
}

TEST(SystemColours, ActiveCaptionIsOneColourInTheMessageBoxALabelAndAButton) {
  const QColor expected = ColorFromOle(0x80000002);
  ASSERT_TRUE(expected.isValid());
  NewLabel label;
  Button button;
  Headings heading;
  label.SetBackColor(0x80000002);
  button.SetBackColor(0x80000002);
  heading.SetBackColor(0x80000002);
  const std::tuple<QWidget*, QSize, QPoint> painted[] = {
      {&label, {40, 20}, {30, 10}}, {&button, {40, 30}, {20, 15}}, {&heading, {60, 24}, {58, 4}}};
  for (const auto& [widget, size, at] : painted) {
    widget->resize(size);
    EXPECT_EQ(PixelOf(widget, at), expected) << widget->metaObject()->className();
  }

  MsgBoxEnhanced box;
  box.SetSoundBeep(false);
  box.SetBackColorBody(0x80000002);
  QColor body;
  testenv::WhenMessageBoxShown([&](MessageBox& form) {
    body = PixelOf(form.Background, QPoint(3, 3));
    form.Unload();
  });
  box.MsgBox("Ready.", 0, "Colours");
  EXPECT_EQ(body, expected);
}

TEST(SystemColours, MinusOnePutsBackEachColourSettersDefault) {
  EXPECT_EQ(AFTER_MINUS_ONE(MsgBoxEnhanced, BackColorBody), 0x8000000Fu);
  EXPECT_EQ(AFTER_MINUS_ONE(MsgBoxEnhanced, ForeColorBody), 0x80000012u);
  EXPECT_EQ(AFTER_MINUS_ONE(MsgBoxEnhanced, BackColorButtons), 0x8000000Fu);
  EXPECT_EQ(AFTER_MINUS_ONE(MsgBoxEnhanced, BackColorHeading), 0x80000002u);
  EXPECT_EQ(AFTER_MINUS_ONE(MsgBoxEnhanced, ForeColorHeading), 0x8000000Eu);
  EXPECT_EQ(AFTER_MINUS_ONE(NewLabel, BackColor), 0x8000000Fu);
  EXPECT_EQ(AFTER_MINUS_ONE(Button, BackColor), 0x8000000Fu);
  EXPECT_EQ(AFTER_MINUS_ONE(Label3D, Color1), 0x000000FFu);
  EXPECT_EQ(AFTER_MINUS_ONE(Label3D, Color2), 0x00000000u);
  EXPECT_EQ(AFTER_MINUS_ONE(Headings, ForeColor), 0x80000012u);
  EXPECT_EQ(AFTER_MINUS_ONE(NewSlider, BackColor), 0x8000000Fu);
  EXPECT_EQ(AFTER_MINUS_ONE(TransCheck, ForeColor), 0x80000012u);
  EXPECT_EQ(AFTER_MINUS_ONE(TransCheck, BackColor), 0x8000000Fu);
}
