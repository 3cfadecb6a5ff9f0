#pragma once
// The painting that only the message box uses: its 85-band gradient and its
// rectangle and circle patterns, in colours that may name a system colour.
// Also the window helper that keeps a window on top.

#include <QColor>
#include <QImage>
#include <QString>
#include <QtGlobal>

#include "controls/SystemColours.h"

class QWidget;

namespace MsgDefs {

// A drawing surface with retained drawing: the picture it shows and the
// colour that clearing it leaves.
struct Surface {
  QImage Picture;
  QColor BackColor{Qt::white};
};

// Clears the surface and paints 85 bands of the colour, each changed by 3
// per channel from the one before. Directions 1 (from the top) and 2 (from
// the bottom) stack the bands down the height, 3 (from the left) and 4 (from
// the right) across the width; others become 1. Without lighten every band
// is darker; with lighten and alternate the bands lighten but for the odd
// steps below 30; with lighten alone every third step lightens.
void PaintBandGradient(Surface& surface, OleColor color, int direction, bool lighten,
                       bool alternate);

// Clears the surface and paints 256 nested outlines whose colour rises from
// black to the colour (or falls from it): rectangles about the middle for
// directions 5 and 6, circles about the middle (7, 8), the top left (9, 10),
// top right (11, 12), bottom left (13, 14) or bottom right corner (15, 16).
// Odd directions run up from black on a back of the colour; even ones down
// from the colour on black.
void PaintPatternGradient(Surface& surface, OleColor color, int direction);

// The colour text (decimal, or hexadecimal after "&H") as nine decimal
// digits: red, green and blue, three digits each.
QString ColorToDigits(const QString& colorText);
// Upper-case hexadecimal digits of a value; "0" for 0.
QString DecimalToHex(quint32 value);

}  // namespace MsgDefs

// Keeps the window above all others, or lets it go back among them.
void SetWindowOnTop(QWidget* form, bool on);
