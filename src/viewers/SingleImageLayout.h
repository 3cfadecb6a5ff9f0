#pragma once
// Places inside the picture viewer and the size a picture is decoded for,
// shared by the files of the window.

#include <QRect>
#include <QSize>
#include <algorithm>

#include "platform/Twips.h"
#include "viewers/PictureFit.h"

namespace singleimage {

// Places inside the window, in twips.
constexpr int ButtonTop = 30;
constexpr int ButtonLeft = 45;
constexpr int ButtonSize = 360;
constexpr int DescriptionTop = 435;
constexpr int DescriptionHeight = 225;
constexpr int PictureTop = 675;
constexpr int SlideshowPictureTop = 240;
constexpr int CaptionLabelWidth = 600;

// The box in device pixels a picture is decoded for: the size it is shown
// at, reckoned on a worker from a copy of the window's room.
inline QSize BoxFor(QSize natural, const PictureRoom& room, bool fullSize, qreal ratio) {
  const QSize naturalTwips(twips::FromPixels(natural.width()), twips::FromPixels(natural.height()));
  QSize shown = FitPicture(naturalTwips, room);
  if (fullSize) shown = FullSizePicture(naturalTwips, room).Picture;
  return (QSizeF(twips::ToPixelsF(shown.width()), twips::ToPixelsF(shown.height())) * ratio)
      .toSize()
      .expandedTo(QSize(1, 1));
}

}  // namespace singleimage
