#include "viewers/PlayerRules.h"

#include <cmath>

namespace {

// Halves go to the even neighbour, as the slider's arithmetic always did.
int Rounded(double value) { return int(std::nearbyint(value)); }

}  // namespace

int SliderStep(int max, int scale) {
  if (max < 6 * scale) return 2 * scale;
  if (max < 10 * scale) return Rounded(max / 3.0);
  if (max < 30 * scale) return Rounded(max / 5.0);
  return Rounded(max / 10.0);
}

FilmWindow FilmWindowSize(int playerWidth, int playerHeight, int left, int top, int presentWidth,
                          int browserWidth, int lowestBottom, int titleBarHeight) {
  FilmWindow window{presentWidth, playerHeight + titleBarHeight + 1335};
  const int wanted = playerWidth + 90;
  if (wanted >= 4171) window.Width = left + wanted > browserWidth ? browserWidth - left : wanted;
  if (top + window.Height > lowestBottom) window.Height = lowestBottom - top;
  return window;
}
