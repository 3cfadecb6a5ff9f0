#include "browser/PageGeometry.h"

#include <algorithm>

using namespace pagegeometry;

PageLayout LayOutPage(int widthTwips, int heightTwips, int thumbnailTwips) {
  PageLayout l;
  l.Window = QRect(0, 0, std::max(widthTwips, 0), std::max(heightTwips, 0));
  l.Tabs = QRect(TabLeft, TabTop, std::max(l.Window.width() - 2 * TabLeft, 0),
                 std::max(l.Window.height() - 2 * TabTop, 0));
  const int tabRight = l.Tabs.left() + l.Tabs.width();
  const int tabBottom = l.Tabs.top() + l.Tabs.height();
  const int scrollHeight = std::max(l.Tabs.height() - ScrollShortfall, 0);
  l.Scroll = QRect(tabRight - ScrollGap - ScrollWidth, l.Tabs.top() + FirstCellTop - CellMargin,
                   ScrollWidth, scrollHeight);
  // The page's room runs from the tab control's left edge to the scroll bar,
  // as high as the scroll bar.
  l.Box = QRect(l.Tabs.left(), l.Scroll.top(), std::max(l.Scroll.left() - l.Tabs.left(), 0),
                scrollHeight);
  l.CountTop = tabBottom - CountAbove;
  l.PositionLabelX = tabRight - PositionLabelLeft;
  l.SeparatorX = l.Tabs.left() + l.Tabs.width() / 2 - 30;

  const int thumbnail = std::max(thumbnailTwips, CellMargin + 15);
  l.CellEdge = thumbnail - CellMargin;
  l.PictureColumns = std::max((l.Box.width() - 120) / (l.CellEdge + CellMargin), 1);
  l.PictureRows = std::max((l.Box.height() - 120) / (l.CellEdge + CellMargin), 1);
  l.PicturePageSize = std::min(l.PictureColumns * l.PictureRows, 32767);
  l.ListRows = std::max((l.Box.height() - 120) / (IconSize + CellMargin), 1);
  l.ListPageSize = std::min(2 * l.ListRows, 32767);

  l.FirstNameLeft = l.Tabs.left() + FirstCellLeft + IconSize + IconToName;
  l.NameWidth = std::max(l.SeparatorX - l.FirstNameLeft - NameMargin, 0);
  l.SecondColumnLeft = l.SeparatorX + 30 + FirstCellLeft - 60;
  return l;
}

int SizeGroupLeft(const PageLayout& layout, int groupWidth) {
  return layout.Tabs.left() + (layout.Tabs.width() - groupWidth - SizeGroupMargin) / 2;
}

QRect PictureCellRect(const PageLayout& layout, int cell) {
  const int columns = std::max(layout.PictureColumns, 1);
  const int pitch = layout.CellEdge + CellMargin;
  return QRect(layout.Tabs.left() + FirstCellLeft + (cell % columns) * pitch,
               layout.Tabs.top() + FirstCellTop + (cell / columns) * pitch, layout.CellEdge,
               layout.CellEdge);
}

QRect IconCellRect(const PageLayout& layout, int cell) {
  const int rows = std::max(layout.ListRows, 1);
  const int left = cell / rows == 0 ? layout.Tabs.left() + FirstCellLeft : layout.SecondColumnLeft;
  return QRect(left, layout.Tabs.top() + FirstCellTop + (cell % rows) * (IconSize + CellMargin),
               IconSize, IconSize);
}

QRect NameCellRect(const PageLayout& layout, int cell) {
  const QRect icon = IconCellRect(layout, cell);
  return QRect(icon.left() + IconSize + IconToName,
               icon.top() + (FirstNameTop - FirstCellTop), layout.NameWidth, NameHeight);
}

QSizeF PictureCellSize(int pictureWidth, int pictureHeight, int thumbnailTwips) {
  const double edge = thumbnailTwips - CellMargin;
  if (pictureWidth <= 0 || pictureHeight <= 0) return QSizeF(edge, edge);
  if (pictureWidth > pictureHeight)
    return QSizeF(edge, double(pictureHeight) / double(pictureWidth) * edge);
  return QSizeF(double(pictureWidth) / double(pictureHeight) * edge, edge);
}
