#pragma once
// PC Paintbrush pictures: 1, 2 and 4 bits with the header palette, EGA-style
// bit planes, 8 bits with the 256-colour palette at the end of the file,
// and 24 bits as three 8-bit planes (a fourth plane is alpha).

#include <QByteArray>
#include <QImage>

// True when the bytes start like a PC Paintbrush picture.
bool LooksLikePcx(const QByteArray& bytes);
// The decoded picture, or a null image when the bytes are not a picture of
// a supported kind or the data ends too soon.
QImage DecodePcx(const QByteArray& bytes);
