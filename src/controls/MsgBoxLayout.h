#pragma once
// The message box's measures, worked out in twips from what its parts need:
// the width of the title, of the prompt and of the row of buttons decide the
// form's width; the icon and the prompt decide where the buttons stand.

#include <array>

namespace msgbox {

// Fixed measures of the form, in twips.
inline constexpr int ButtonWidth = 1095;
inline constexpr int ButtonHeight = 375;
inline constexpr int ButtonPitch = 1200;   // from one button's left edge to the next
inline constexpr int HeadingHeight = 360;  // the heading bar; the body starts below it
inline constexpr int CaptionLeft = 150;
inline constexpr int CloseBoxSize = 240;
inline constexpr int IconLeft = 120;  // the icon on the body
inline constexpr int IconTop = 180;

struct LayoutInput {
  int CaptionWidth = 0;  // the title as shown in the heading
  bool ControlBox = true;
  int ButtonCount = 0;
  bool HasIcon = false;
  int IconWidth = 0, IconHeight = 0;
  int TextWidth = 0, TextHeight = 0;  // the prompt's label, sized to its text
  int TextAlignment = 0;              // 0 left, 1 right, 2 centre
  int ScreenWidth = 0;
};

struct Layout {
  int HeadingWidth = 0;
  int RowWidth = 0;
  int TextLeft = 0;        // the least left edge of the prompt
  int TextNeedsWidth = 0;  // what the prompt asks of the form's width
  int FormWidth = 0;
  int FormHeight = 0;
  int TextX = 0, TextY = 0;  // the prompt on the body
  int ButtonTop = 0;         // on the body
  std::array<int, 4> ButtonLeft{};
  int CloseBoxLeft = 0;
};

Layout ComputeLayout(const LayoutInput& in);

}  // namespace msgbox
