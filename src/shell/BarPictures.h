#pragma once
// The pictures of the command bar's buttons: SVG files under :/bar/, each
// named after its button ("Picture1" is the loudspeaker with sound,
// "Picture2" the silenced one). A picture is rendered square at the given
// size in logical pixels and sharp at the pixel ratio, by default the
// screen's; a name without a picture gives a transparent square.

#include <QPixmap>
#include <QString>

QPixmap BarPicture(const QString& name, int sizePixels);
QPixmap BarPicture(const QString& name, int sizePixels, qreal pixelRatio);
