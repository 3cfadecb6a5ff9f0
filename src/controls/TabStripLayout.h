#pragma once
// The arithmetic of the tab control: where the tab boundaries fall, the
// polygon that gives the control its notched outline, where the tab labels
// sit and which tab a press on the bottom strip means. All measures are
// twips; nothing here touches a widget.

#include <QPoint>
#include <QPair>
#include <QRect>
#include <array>

namespace tabstrip {

// Height of the strip at the bottom that holds the tabs.
constexpr int StripHeight = 300;
// The labels stand this far above the bottom edge and this far in from the
// left of their tab, and are this much narrower than a tab.
constexpr int LabelRise = 285;
constexpr int LabelInset = 75;
constexpr int LabelNarrowing = 120;
constexpr int LabelHeight = 255;

// Whole-number division as the layout rounds it: to the nearest, halves to
// the even neighbour.
int RoundedDivide(int numerator, int denominator);

// The three tab boundaries for a control of the given width divided into
// `tabs` tabs: the width / tabs, rounded, and twice and three times that.
std::array<int, 3> Edges(int width, int tabs);

// The 15 points of the outline, in twips, for a control of width w and
// height h with the given boundaries: a rectangle whose bottom edge has a
// bevelled corner on each side and a notch at each tab boundary.
std::array<QPoint, 15> Outline(int w, int h, const std::array<int, 3>& edges);

// The rectangle of the label of tab `index` (1 to 4).
QRect LabelRect(int index, int h, const std::array<int, 3>& edges);

// The tab that a press at (x, y) on the control's own surface selects: 0
// when above the strip, otherwise 1, 2 or 3. The surface never gives 4: the
// fourth tab is reached through its label, which covers nearly all of it.
int SurfaceTabAt(int x, int y, int h, const std::array<int, 3>& edges);

// The horizontal span [from, to) of tab `tab` (1 to 4); the fourth runs on
// to the given width.
QPair<int, int> TabSpan(int tab, int width, const std::array<int, 3>& edges);

}  // namespace tabstrip
