#include "controls/MsgBoxLayout.h"

#include <algorithm>

namespace msgbox {

Layout ComputeLayout(const LayoutInput& in) {
  Layout out;
  out.HeadingWidth = in.CaptionWidth + 300 + (in.ControlBox ? 270 : 0);
  out.RowWidth = ButtonWidth * in.ButtonCount + 570 + 105 * (in.ButtonCount - 1);
  out.TextLeft = in.HasIcon ? in.IconWidth + 120 + 150 : 150;
  out.TextNeedsWidth = in.TextWidth + out.TextLeft + 255;

  if (out.TextNeedsWidth > out.RowWidth && out.TextNeedsWidth > out.HeadingWidth)
    out.FormWidth = out.TextNeedsWidth;
  else if (out.RowWidth <= out.HeadingWidth)
    out.FormWidth = out.HeadingWidth;
  else
    out.FormWidth = out.RowWidth;
  // A box never gets wider than the screen less a small margin; the prompt
  // is not wrapped again for it.
  if (out.FormWidth > in.ScreenWidth - 240) out.FormWidth = in.ScreenWidth - 240;

  switch (in.TextAlignment) {
    case 1:
      out.TextX = std::max(out.FormWidth - in.TextWidth - 270, out.TextLeft);
      break;
    case 2: {
      int half = (out.FormWidth - in.TextWidth) / 2;
      half -= ((half % 15) + 15) % 15;  // down to a whole multiple of 15
      out.TextX = std::max(half - 30, out.TextLeft);
      break;
    }
    default:
      out.TextX = out.TextLeft;
      break;
  }

  if (in.HasIcon && in.IconHeight > in.TextHeight) {
    out.TextY = (in.IconHeight - in.TextHeight) / 2 + 180 - 15;
    out.ButtonTop = in.IconHeight + 180 + 150;
  } else {
    out.TextY = 150;
    out.ButtonTop = out.TextY + in.TextHeight + 180;
  }

  const int firstLeft = (out.FormWidth - (out.RowWidth - 570)) / 2;
  for (int i = 0; i < 4; ++i) out.ButtonLeft[i] = firstLeft + ButtonPitch * i;

  // The buttons' top is counted on the body; the 570 below them takes in the
  // heading above the body and the margin under the buttons.
  out.FormHeight = out.ButtonTop + ButtonHeight + 570;
  out.CloseBoxLeft = out.FormWidth - 360;
  return out;
}

}  // namespace msgbox
