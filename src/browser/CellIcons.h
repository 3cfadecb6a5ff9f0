#pragma once
// The small fixed icons of the list tabs: a film strip for videos, a note
// for audios and a page for documents, drawn at the screen's pixel ratio.

#include <QPixmap>

QPixmap CellIcon(int tab, int sizePixels, qreal pixelRatio = 1.0);
