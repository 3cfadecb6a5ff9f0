#pragma once
// Sizes of the helper's output.

#include <QSize>

namespace decoder {

// The largest side the helper draws; larger natural sizes are reduced.
constexpr int kMaxSide = 8000;

// The size to draw a picture of the given natural size: the natural size,
// reduced (aspect kept) to fit into fitInto when that is valid and smaller,
// and never larger than kMaxSide on either side nor smaller than 1x1.
QSize OutputSize(const QSize& natural, const QSize& fitInto);

}  // namespace decoder
