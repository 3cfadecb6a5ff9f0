#pragma once
// The browser's layout, worked out by hand from the window's inner size, all
// in twips. The window turns these rectangles into pixels when it places its
// controls; nothing here knows about widgets.

#include <QRect>
#include <QSizeF>

// Fixed measures of the browser's design (twips).
namespace pagegeometry {
// The browser is the main window's width less this, and the main window's
// client height less the command bar's strip.
inline constexpr int BrowserWidthMargin = 195;
inline constexpr int CommandBarStrip = 1230;
// Room between the window's edges and the tab control.
inline constexpr int TabLeft = 60;
inline constexpr int TabTop = 45;
// Gap right of the scroll bar, inside the tab control.
inline constexpr int ScrollGap = 180;
// The scroll bar is the tab control's height less this.
inline constexpr int ScrollShortfall = 1095;
inline constexpr int ScrollWidth = 255;
// The bottom strip: labels this far above the tab control's bottom, and the
// position label this far left of its right edge.
inline constexpr int CountAbove = 795;
inline constexpr int PositionLabelLeft = 3240;
inline constexpr int LabelHeightMargin = 15;
// Width of the position label and of the position box, and the gap between.
inline constexpr int PositionLabelWidth = 1200;
inline constexpr int PositionBoxWidth = 1215;
inline constexpr int LabelGap = 60;
// Taken from the room before the size group is centred in it.
inline constexpr int SizeGroupMargin = 75;
// A cell is the thumbnail size less this, both ways; cells stand this far
// apart.
inline constexpr int CellMargin = 60;
// First cell and first name below the tab control's top.
inline constexpr int FirstCellTop = 270;
inline constexpr int FirstNameTop = 300;
inline constexpr int FirstCellLeft = 150;
// Icons of the list tabs, and the room between an icon and its name.
inline constexpr int IconSize = 240;
inline constexpr int IconToName = 90;
// Margin left of the separator for the width of a name.
inline constexpr int NameMargin = 90;
// Height of a name label.
inline constexpr int NameHeight = 225;
// Height of the frame around an icon and its name.
inline constexpr int IconFrameHeight = 345;
// Thumbnail size limits, in twips (0.5 and 3 inches).
inline constexpr int MinThumbnail = 720;
inline constexpr int MaxThumbnail = 4320;
}  // namespace pagegeometry

struct PageLayout {
  QRect Window;      // the browser, from the main window's measures
  QRect Tabs;        // the tab control
  QRect Scroll;      // each tab's scroll bar
  QRect Box;         // the room of one page: where cells may stand
  int CountTop = 0;  // top of the count, position and size labels
  int PositionLabelX = 0;
  int SeparatorX = 0;
  int CellEdge = 0;  // width and height of an empty picture cell
  int PictureColumns = 1;
  int PictureRows = 1;
  int ListRows = 1;
  int PicturePageSize = 1;
  int ListPageSize = 2;
  int NameWidth = 0;  // the widest name of a list tab
  int FirstNameLeft = 0;
  int SecondColumnLeft = 0;  // left of the icons of the second column
};

// The layout of a browser of the given size (twips) at the given thumbnail
// size. Every count is at least 1, so that a very small window still has a
// page.
PageLayout LayOutPage(int widthTwips, int heightTwips, int thumbnailTwips);

// Left edge of the thumbnail size group (label, box and unit) of the given
// width: centred under the tab control.
int SizeGroupLeft(const PageLayout& layout, int groupWidth);

// Where picture cell i of a page stands (its empty square), row after row.
QRect PictureCellRect(const PageLayout& layout, int cell);
// Where icon cell i and its name stand: the first column runs down the page,
// then the second.
QRect IconCellRect(const PageLayout& layout, int cell);
QRect NameCellRect(const PageLayout& layout, int cell);

// The size a picture of width w and height h takes in a cell of the given
// thumbnail size: a wide picture keeps the cell's width, any other its
// height; the other side shrinks in proportion. Not rounded.
QSizeF PictureCellSize(int pictureWidth, int pictureHeight, int thumbnailTwips);
