#pragma once
// The small fixed icons that stand for a file without a picture of its
// own: a film strip for videos, a note for audios and a page for documents.
// SVG files under :/cells/, rendered at the given pixel ratio, once for each
// size.

#include <QPixmap>

enum class MediaIconKind { Video, Audio, Document };

QPixmap MediaIcon(MediaIconKind kind, int sizePixels, qreal pixelRatio = 1.0);
