#pragma once
// The one routine that turns a picture file into a displayable picture.

#include <QImage>
#include <QSize>
#include <QString>

// Decodes the picture file at path into picture. With a valid fitInto the
// picture is decoded at reduced size to fit into it, aspect kept (never
// enlarged). True on success; on failure picture becomes the InvalidImage
// marker and the result is false. Never shows a message.
bool LoadMediaPicture(const QString& path, QImage& picture, const QSize& fitInto = QSize());

// The marker picture shown for a file that cannot be decoded.
const QImage& InvalidImagePicture();
