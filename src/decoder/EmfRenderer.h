#pragma once
// Enhanced metafiles: turned into SVG by libemf2svg and drawn by QtSvg, at
// the natural size given by the header's frame.

#include <QByteArray>
#include <QImage>
#include <QSize>

namespace decoder {

// True when the bytes start with an enhanced metafile header.
bool LooksLikeEmf(const QByteArray& bytes);
// The natural size in pixels at 96 dpi, from the header's frame (in
// hundredths of a millimetre); an invalid size when there is no header.
QSize EmfNaturalSize(const QByteArray& bytes);
// The drawn picture, or a null image on any failure.
QImage RenderEmf(const QByteArray& bytes, const QSize& fitInto);

}  // namespace decoder
