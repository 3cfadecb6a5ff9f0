#pragma once
// The colour numbers of the controls' colour properties, and the one table
// of system colours such a number may name.
//
// A colour number holds red in its lowest byte, then green, then blue
// (0x00BBGGRR). With the top bit set, 0x80000000 | index, it names a system
// colour instead: an entry of the desktop's palette, so that the controls
// follow the desktop's theme. -1 (0xFFFFFFFF) is no colour at all; a colour
// setter takes it as "put back the default".

#include <QColor>
#include <QtGlobal>

using OleColor = quint32;

namespace SysColor {

inline constexpr OleColor NoColor = 0xFFFFFFFFu;  // -1
inline constexpr OleColor SystemBit = 0x80000000u;

// The system colours, by their index.
inline constexpr OleColor ScrollBar = 0x80000000u;
inline constexpr OleColor Desktop = 0x80000001u;
inline constexpr OleColor ActiveCaption = 0x80000002u;
inline constexpr OleColor InactiveCaption = 0x80000003u;
inline constexpr OleColor Menu = 0x80000004u;
inline constexpr OleColor Window = 0x80000005u;
inline constexpr OleColor WindowFrame = 0x80000006u;
inline constexpr OleColor MenuText = 0x80000007u;
inline constexpr OleColor WindowText = 0x80000008u;
inline constexpr OleColor CaptionText = 0x80000009u;
inline constexpr OleColor ActiveBorder = 0x8000000Au;
inline constexpr OleColor InactiveBorder = 0x8000000Bu;
inline constexpr OleColor AppWorkspace = 0x8000000Cu;
inline constexpr OleColor Highlight = 0x8000000Du;
inline constexpr OleColor HighlightText = 0x8000000Eu;
inline constexpr OleColor ButtonFace = 0x8000000Fu;
inline constexpr OleColor ButtonShadow = 0x80000010u;
inline constexpr OleColor GrayText = 0x80000011u;
inline constexpr OleColor ButtonText = 0x80000012u;
inline constexpr OleColor InactiveCaptionText = 0x80000013u;
inline constexpr OleColor ButtonHighlight = 0x80000014u;
inline constexpr OleColor DarkShadow = 0x80000015u;
inline constexpr OleColor LightEdge = 0x80000016u;
inline constexpr OleColor InfoText = 0x80000017u;
inline constexpr OleColor InfoBack = 0x80000018u;

// What a colour setter keeps: the value, or the default for -1.
constexpr OleColor OrDefault(OleColor value, OleColor defaultValue) {
  return value == NoColor ? defaultValue : value;
}

}  // namespace SysColor

// The colour a colour number stands for. A system colour comes from the
// application's palette at the time of the call; an index outside the table
// gives the button face. -1 gives an invalid colour.
QColor ColorFromOle(OleColor value);

// The colour number (0x00BBGGRR) of a colour; -1 for an invalid colour.
OleColor ToOleColor(const QColor& color);
