#pragma once
// The program's shaded window backgrounds and window captures.

#include <QColor>
#include <QCursor>
#include <QPixmap>
#include <QtGlobal>

// The controls that paint with these routines take their colours as colour
// numbers.
#include "controls/SystemColours.h"

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

// What the widget shows in the rectangle (pixels, from the widget's own
// top left), as a picture; an empty picture for no widget or an empty
// rectangle. A widget has no frame of its own to capture here, so the
// client flag changes nothing.
QPixmap CaptureWindow(QWidget* window, bool client, int left, int top, int width, int height);

// The mouse pointer of a control's MousePointer number: 0 the default,
// 1 arrow, 2 cross, 3 I-beam, 5 and 15 size all, 6 to 9 the sizing arrows,
// 10 up arrow, 11 hourglass, 12 no drop, 13 arrow and hourglass, 14 arrow
// and question mark, 99 the custom MouseIcon. Unknown numbers are the
// default pointer.
QCursor CursorForMousePointer(int pointer, const QPixmap& mouseIcon = QPixmap());
// Gives the widget that pointer; 0 leaves it the pointer of its parent.
void ApplyMousePointer(QWidget* widget, int pointer, const QPixmap& mouseIcon = QPixmap());
