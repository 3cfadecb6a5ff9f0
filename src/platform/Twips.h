#pragma once
// Window measures are kept in twips (1440 to the inch). These helpers turn
// them into Qt's logical pixels at the edge: 15 twips to a pixel at 96 dpi,
// and Qt scales logical pixels for high-dpi screens itself.

namespace twips {

constexpr int PerPixel = 15;

constexpr int ToPixels(int twips) { return twips / PerPixel; }
constexpr double ToPixelsF(double twips) { return twips / PerPixel; }
constexpr int FromPixels(int pixels) { return pixels * PerPixel; }

}  // namespace twips
