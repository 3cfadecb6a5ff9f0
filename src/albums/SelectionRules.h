#pragma once
// The plain rules of the selection and sort window: the captions of its
// check boxes, which mask position each box stands for, the masks written
// from the boxes and the boxes read back from the masks.
//
// A mask is 20 characters "0" and "1". The picture boxes 1 to 8 are
// positions 1 to 8 and box 9 (icons and cursors) is position 20; the video
// and audio boxes are the positions of their number. Positions that no box
// stands for are written as "0".

#include <QString>
#include <QStringList>
#include <array>

namespace selectionrules {

inline constexpr int PictureBoxes = 9;
inline constexpr int VideoBoxes = 4;
inline constexpr int AudioBoxes = 6;

using PictureTicks = std::array<bool, PictureBoxes>;
using VideoTicks = std::array<bool, VideoBoxes>;
using AudioTicks = std::array<bool, AudioBoxes>;

// The captions of the boxes, box 1 first.
const QStringList& PictureCaptions();
const QStringList& VideoCaptions();
const QStringList& AudioCaptions();
// The captions of the sort options, option 1 (by name) first.
const QStringList& SortOrderCaptions();

// The mask position of a box (boxes counted from 1).
int PicturePosition(int box);

// The masks written from the boxes.
QString PicturesMaskOf(const PictureTicks& ticks);
QString VideosMaskOf(const VideoTicks& ticks);
QString AudiosMaskOf(const AudioTicks& ticks);

// The boxes read from a mask; a position the mask does not reach, or that
// holds anything but "1", is unticked.
PictureTicks PictureTicksOf(const QString& mask);
VideoTicks VideoTicksOf(const QString& mask);
AudioTicks AudioTicksOf(const QString& mask);

}  // namespace selectionrules
