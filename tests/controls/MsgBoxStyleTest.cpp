#include <gtest/gtest.h>

#include "controls/MsgBoxLayout.h"
#include "controls/MsgBoxStyle.h"

using namespace msgbox;

TEST(MsgBoxStyle, StyleWordGivesButtonsIconAndDefault) {
  // The default only counts within the set; unknown sets and negative words
  // show no button and no icon.
  const QStringList ok{"&OK"}, yesNo{"&Yes", "&No"}, yesNoCancel{"&Yes", "&No", "Cancel"};
  const struct {
    int word;
    QStringList captions;
    int icon, effectiveDefault;
  } cases[] = {
      {256 + 32 + 4, yesNo, 1, 1}, {36, yesNo, 1, 0}, {35, yesNoCancel, 1, 0}, {16, ok, 0, 0},
      {2 + 48, {"&Abort", "&Retry", "&Ignore"}, 2, 0}, {5 + 64, {"&Retry", "Cancel"}, 3, 0},
      {80, ok, -1, 0},  // beyond the four icons
      {512 + 4, yesNo, -1, -1}, {512 + 3, yesNoCancel, -1, 2}, {6, {}, -1, -1}, {-1, {}, -1, -1}};
  for (const auto& c : cases) {
    const Style style = DecodeStyle(c.word);
    EXPECT_EQ(style.Captions, c.captions) << c.word;
    EXPECT_EQ(style.IconIndex, c.icon) << c.word;
    EXPECT_EQ(style.EffectiveDefault(), c.effectiveDefault) << c.word;
  }

  // Results are read from the exact captions.
  const QStringList captions = {"&OK", "Cancel", "&Abort", "&Retry", "&Ignore", "&Yes", "&No"};
  for (int i = 0; i < captions.size(); ++i) EXPECT_EQ(ResultOfCaption(captions[i]), i + 1);
  EXPECT_EQ(ResultOfCaption("OK"), 0);
  EXPECT_EQ(ResultOfCaption("cancel"), 0);
}

TEST(MsgBoxLayout, WidthIsDecidedByTitleTextOrButtonRow) {
  LayoutInput in;
  in.CaptionWidth = 3000;
  in.ButtonCount = 1;
  in.TextWidth = 600;
  in.TextHeight = 195;
  in.ScreenWidth = 12000;
  // A short prompt under a long title: the heading decides.
  Layout out = ComputeLayout(in);
  EXPECT_EQ(out.HeadingWidth, 3570);
  EXPECT_EQ(out.RowWidth, 1665);
  EXPECT_EQ(out.FormWidth, 3570);
  in.ControlBox = false;
  EXPECT_EQ(ComputeLayout(in).FormWidth, 3300);

  // A long prompt decides; three buttons centred below it, 1200 apart.
  in.CaptionWidth = 600;
  in.TextWidth = 4000;
  in.ButtonCount = 3;
  out = ComputeLayout(in);
  EXPECT_EQ(out.RowWidth, 4065);
  EXPECT_EQ(out.FormWidth, 4405);
  EXPECT_EQ(out.ButtonLeft[0], 455);
  EXPECT_EQ(out.ButtonLeft[2], 2855);
  EXPECT_EQ(out.CloseBoxLeft, 4045);

  // The row wins over a shorter prompt, a longer title over the row.
  in.TextWidth = 1000;
  EXPECT_EQ(ComputeLayout(in).FormWidth, 4065);
  in.CaptionWidth = 4000;
  EXPECT_EQ(ComputeLayout(in).FormWidth, 4300);
}

TEST(MsgBoxLayout, TextPositionFollowsAlignmentAndIcon) {
  LayoutInput in;
  in.CaptionWidth = 600;
  in.ButtonCount = 3;
  in.TextWidth = 1000;
  in.TextHeight = 195;
  in.ScreenWidth = 12000;
  in.TextAlignment = 2;  // (4065 - 1000) / 2 = 1532, down to 1530, less 30
  EXPECT_EQ(ComputeLayout(in).TextX, 1500);
  in.TextWidth = 4000;  // the form is as wide as the text asks: right edge no less than TextLeft
  in.TextAlignment = 1;
  EXPECT_EQ(ComputeLayout(in).TextX, 150);

  // Without icon: text at 150, buttons 180 below it; form height adds 570.
  in.TextAlignment = 0;
  in.TextHeight = 600;
  Layout out = ComputeLayout(in);
  EXPECT_EQ(out.TextY, 150);
  EXPECT_EQ(out.ButtonTop, 930);
  EXPECT_EQ(out.FormHeight, 930 + 375 + 570);

  // An icon taller than the text centres the text on it.
  in.HasIcon = true;
  in.IconWidth = in.IconHeight = 480;
  in.TextHeight = 195;
  out = ComputeLayout(in);
  EXPECT_EQ(out.TextLeft, 750);
  EXPECT_EQ(out.TextX, 750);
  EXPECT_EQ(out.TextNeedsWidth, 4000 + 750 + 255);
  EXPECT_EQ(out.TextY, 142 + 165);
  EXPECT_EQ(out.ButtonTop, 810);
  EXPECT_EQ(out.FormHeight, 1755);

  // A text taller than the icon goes back to the plain rule.
  in.TextHeight = 600;
  out = ComputeLayout(in);
  EXPECT_EQ(out.TextY, 150);
  EXPECT_EQ(out.ButtonTop, 930);
}
