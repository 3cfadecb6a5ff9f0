#pragma once
// The pictures of the command bar's buttons, drawn rather than loaded: each
// button's name gives its picture, drawn square at the given size in logical
// pixels and sharp on high-density screens. "Picture1" is the loudspeaker
// with sound, "Picture2" the silenced one.

#include <QPixmap>
#include <QString>

QPixmap BarPicture(const QString& name, int sizePixels);
