#include "controls/ScrollTrack.h"

#include <algorithm>

namespace scrolltrack {

int SlotSize(int trackLength, int max) {
  if (max < 0) max = 0;
  return trackLength / (max + 1);
}

int ThumbHeight(int trackLength, int max) {
  return std::max(SlotSize(trackLength, max), MinimumThumb);
}

int ThumbTop(int value, int max, int height, int trackLength, int thumbHeight) {
  if (value == max) return height - ArrowHeight - thumbHeight;
  return value * SlotSize(trackLength, max) + ArrowHeight;
}

int HighestThumbTop() { return ArrowHeight; }

int LowestThumbTop(int height, int thumbHeight) { return height - ArrowHeight - thumbHeight; }

int ValueAt(int y, int max, int height, int trackLength, int thumbHeight, int skipValue) {
  y = std::max(y, ArrowHeight);
  if (y > LowestThumbTop(height, thumbHeight)) return std::max(max, 0);
  const int slot = SlotSize(trackLength, max);
  for (int i = 0; i <= max; ++i) {
    if (i == skipValue) continue;
    const int start = i * slot + ArrowHeight;
    if (y >= start && y < start + thumbHeight) return i;
  }
  return -1;
}

}  // namespace scrolltrack
