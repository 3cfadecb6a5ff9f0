#pragma once
// The small fixed icons of the list tabs, SVG files under :/cells/: a film
// strip for videos, a note for audios and a page for documents (and any
// other tab), rendered at the given pixel ratio.

#include <QPixmap>

QPixmap CellIcon(int tab, int sizePixels, qreal pixelRatio = 1.0);
