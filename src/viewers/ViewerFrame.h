#pragma once
// Where a viewer stands, as its arithmetic sees it: the frame's place (from
// the browser's corner, through the main window; on the screen without
// one) and width, and a height of the inside plus the main window's title
// bar, so that what the viewer shows gets the room reckoned for it
// whatever the height of the frame's own title bar.

#include <QPixmap>
#include <QRect>
#include <QString>

class QWidget;

QRect ViewerFrameTwips(const QWidget* viewer);
void SetViewerFrameTwips(QWidget* viewer, const QRect& twipsRect);

// The state of the viewer's frame, and its close (the frame, then the
// viewer within it).
bool IsViewerMaximised(const QWidget* viewer);
bool IsViewerMinimised(const QWidget* viewer);
void CloseViewerFrame(QWidget* viewer);

// The picture of a viewer's button, drawn from the program's art.
QPixmap ViewerButtonPicture(const QString& name, qreal ratio);

// A rectangle in twips as pixels, at least one pixel each way.
QRect TwipsRect(int left, int top, int width, int height);
