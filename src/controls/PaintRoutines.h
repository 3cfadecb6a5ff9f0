#pragma once
// The program's shaded window backgrounds and window captures.

#include <QPixmap>

class QPainter;
class QWidget;

// Paints the 85-band gradient over a surface of the given size (pixels):
// each band 3 darker in red, green and blue than the one before, starting
// 3 below the given values. Direction 1 runs from the top down, 2 from the
// bottom up, 3 from left to right, 4 from right to left; others become 1.
// Band thickness is the height (1, 2) or width (3, 4) in twips / 85, rounded
// to whole twips; in directions 1 and 3 a rest at the far edge stays
// unpainted, in 2 and 4 the last band starts at 0.
void PaintFormGradient(QPainter& painter, const QSize& sizePixels, int red, int green, int blue,
                       int direction);

// What the widget shows in the rectangle (pixels), as a picture. With
// client false the window's frame is included where the toolkit has it.
QPixmap CaptureWindow(QWidget* window, bool client, int left, int top, int width, int height);
