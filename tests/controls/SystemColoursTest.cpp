#include <gtest/gtest.h>

#include <QImage>
#include <tuple>

#include "controls/Button.h"
#include "controls/Headings.h"
#include "controls/MessageBox.h"
#include "controls/MsgBoxEnhanced.h"
#include "controls/NewLabel.h"
#include "controls/SystemColours.h"
#include "support/MessageBoxAnswer.h"

namespace {

QColor PixelOf(QWidget* widget, QPoint at) { return widget->grab().toImage().pixelColor(at); }

}  // namespace

TEST(SystemColours, NumbersHoldRedInTheLowByteThenGreenThenBlue) {
  EXPECT_EQ(ColorFromOle(0x000000FF), QColor(255, 0, 0));
  EXPECT_EQ(ColorFromOle(0x00FF8000), QColor(0, 128, 255));
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
