#pragma once
// The one routine that turns a picture file into a displayable picture.

#include <QImage>
#include <QSize>
#include <QString>
#include <functional>

#include "platform/MetafileDecoder.h"

using platform::DecodeOutcome;

// Decodes the picture file at path into picture. With a valid fitInto the
// picture is decoded at reduced size to fit into it, aspect kept (never
// enlarged). True on success; on failure picture becomes the InvalidImage
// marker and the result is false. Never shows a message.
bool LoadMediaPicture(const QString& path, QImage& picture, const QSize& fitInto = QSize());

// The same, telling why a picture failed. stillWanted, when given, is asked
// while a metafile's helper runs; once it answers false the helper is
// killed and the result is Cancelled.
DecodeOutcome DecodeMediaPicture(const QString& path, QImage& picture, const QSize& fitInto = QSize(),
                                 const std::function<bool()>& stillWanted = {});

// True for the one failure that will come again for as long as the file
// stays as it is: the decoder read it and refused it.
bool IsDefiniteFailure(DecodeOutcome outcome);

// The size the picture has when decoded whole and shown upright, read from
// the file's header without decoding it; an invalid size when the header
// does not tell (a metafile, an animated network graphic, a paintbrush
// picture, a file that is no picture).
QSize MediaPictureSize(const QString& path);

// The marker picture shown for a file that cannot be decoded.
const QImage& InvalidImagePicture();
