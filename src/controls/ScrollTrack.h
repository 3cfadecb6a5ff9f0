#pragma once
// The arithmetic of the thumbnail scroll bar, in twips: how tall the thumb
// is, where it stands for a value, which value a pointer position means,
// and how far a dragged thumb may go. No widget is involved.

namespace scrolltrack {

// Each arrow takes this much at the top and at the bottom of the bar.
constexpr int ArrowHeight = 225;
// The bar is always this wide and never lower than this.
constexpr int BarWidth = 300;
constexpr int MinimumHeight = 855;
// The thumb is never shorter than this.
constexpr int MinimumThumb = 120;

// The room between the two arrows of a bar of the given height.
constexpr int TrackLength(int height) { return height - 2 * ArrowHeight; }

// The share of the track that one value takes, in whole twips.
int SlotSize(int trackLength, int max);

// The thumb's height: one slot, but at least MinimumThumb.
int ThumbHeight(int trackLength, int max);

// The thumb's top for a value. The last value puts the thumb's bottom on
// the lower arrow; the others stand at their slot.
int ThumbTop(int value, int max, int height, int trackLength, int thumbHeight);

// The lowest top a dragged thumb may reach, and the highest.
int HighestThumbTop();
int LowestThumbTop(int height, int thumbHeight);

// The value under a pointer at y. A y above the track counts as its top; a
// y below where the last slot's thumb would start gives max. Otherwise the
// first value whose slot (one thumb height from its start) holds y; with
// skipValue set that value is passed over. Gives -1 when no slot holds y.
int ValueAt(int y, int max, int height, int trackLength, int thumbHeight, int skipValue = -1);

}  // namespace scrolltrack
