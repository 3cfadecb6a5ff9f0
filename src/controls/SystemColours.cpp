#include "controls/SystemColours.h"

#include <QGuiApplication>
#include <QPalette>
#include <array>

namespace {

// Where each system colour is taken from in the palette.
struct PaletteEntry {
  QPalette::ColorGroup Group;
  QPalette::ColorRole Role;
};

constexpr QPalette::ColorGroup Active = QPalette::Active;

// Indexed by the low byte of a system colour number.
constexpr std::array<PaletteEntry, 25> SystemColourTable{{
    {Active, QPalette::Midlight},             // 0 scroll bar
    {Active, QPalette::Dark},                 // 1 desktop
    {Active, QPalette::Highlight},            // 2 active caption
    {Active, QPalette::Dark},                 // 3 inactive caption
    {Active, QPalette::Window},               // 4 menu
    {Active, QPalette::Base},                 // 5 window
    {Active, QPalette::Shadow},               // 6 window frame
    {Active, QPalette::WindowText},           // 7 menu text
    {Active, QPalette::Text},                 // 8 window text
    {Active, QPalette::HighlightedText},      // 9 caption text
    {Active, QPalette::Window},               // 10 active border
    {Active, QPalette::Window},               // 11 inactive border
    {Active, QPalette::Dark},                 // 12 application workspace
    {Active, QPalette::Highlight},            // 13 highlight
    {Active, QPalette::HighlightedText},      // 14 highlight text
    {Active, QPalette::Button},               // 15 button face
    {Active, QPalette::Dark},                 // 16 button shadow
    {QPalette::Disabled, QPalette::Text},     // 17 grey text
    {Active, QPalette::ButtonText},           // 18 button text
    {Active, QPalette::Midlight},             // 19 inactive caption text
    {Active, QPalette::Light},                // 20 button highlight
    {Active, QPalette::Shadow},               // 21 dark shadow of 3D edges
    {Active, QPalette::Midlight},             // 22 light of 3D edges
    {Active, QPalette::ToolTipText},          // 23 tooltip text
    {Active, QPalette::ToolTipBase},          // 24 tooltip back
}};

constexpr std::size_t ButtonFaceIndex = 15;

}  // namespace

QColor ColorFromOle(OleColor value) {
  if (value == SysColor::NoColor) return QColor();
  if (value & SysColor::SystemBit) {
    std::size_t index = value & 0xFFu;
    if (index >= SystemColourTable.size()) index = ButtonFaceIndex;
    const PaletteEntry& entry = SystemColourTable[index];
    return QGuiApplication::palette().color(entry.Group, entry.Role);
  }
  return QColor(static_cast<int>(value & 0xFFu), static_cast<int>((value >> 8) & 0xFFu),
                static_cast<int>((value >> 16) & 0xFFu));
}

OleColor ToOleColor(const QColor& color) {
  if (!color.isValid()) return SysColor::NoColor;
  const QColor rgb = color.toRgb();
  return static_cast<OleColor>(rgb.red()) | (static_cast<OleColor>(rgb.green()) << 8) |
         (static_cast<OleColor>(rgb.blue()) << 16);
}
