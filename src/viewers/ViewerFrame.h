#pragma once
// Where a viewer stands, as its arithmetic sees it: the frame's place (from
// the browser's corner, through the main window; on the screen without
// one) and width, and a height of the inside plus the main window's title
// bar, so that what the viewer shows gets the room reckoned for it
// whatever the height of the frame's own title bar.

#include <QRect>

class QWidget;

QRect ViewerFrameTwips(const QWidget* viewer);
void SetViewerFrameTwips(QWidget* viewer, const QRect& twipsRect);
