#pragma once
// Windows metafiles, drawn by libwmf into a true-colour picture.

#include <QByteArray>
#include <QImage>
#include <QSize>

namespace decoder {

// The drawn picture, or a null image when the file is not a metafile or
// the library reports an error.
QImage RenderWmf(const QByteArray& bytes, const QSize& fitInto);

}  // namespace decoder
