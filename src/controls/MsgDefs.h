#pragma once
// The painting that only the message box uses: its 85-band gradient, its
// rectangle and circle patterns, and the colour values it is given, which
// may name a system colour. Also the window helper that keeps a window on top.

#include <QColor>
#include <QImage>
#include <QString>
#include <QtGlobal>

class QWidget;

// A colour as the program's colour properties hold it: red in the lowest
// byte, then green, then blue; a value with the top bit set is the index of
// a system colour in the low byte, and -1 means "the default".
using OleColor = quint32;

namespace MsgDefs {

inline constexpr OleColor NoColor = 0xFFFFFFFFu;  // -1
inline constexpr OleColor SystemColorBit = 0x80000000u;

// System colour values the box uses.
inline constexpr OleColor ActiveCaption = 0x80000002u;
inline constexpr OleColor InactiveCaption = 0x80000003u;
inline constexpr OleColor HighlightText = 0x8000000Eu;
inline constexpr OleColor ButtonFace = 0x8000000Fu;
inline constexpr OleColor ButtonText = 0x80000012u;

// A drawing surface with retained drawing: the picture it shows and the
// colour that clearing it leaves.
struct Surface {
  QImage Picture;
  QColor BackColor{Qt::white};
};

// The colour a value stands for; system colours come from the desktop's
// palette. -1 gives an invalid colour.
QColor ResolveColor(OleColor value);
OleColor ToOleColor(const QColor& color);

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
