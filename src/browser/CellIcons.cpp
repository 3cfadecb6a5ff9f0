#include "browser/CellIcons.h"

#include "browser/TabState.h"
#include "catalogue/MediaIcons.h"

QPixmap CellIcon(int tab, int sizePixels, qreal pixelRatio) {
  // Pictures have no icon cells; they, and any other number, take the page
  // of the documents.
  const MediaIconKind kind = tab == VideosTab   ? MediaIconKind::Video
                             : tab == AudiosTab ? MediaIconKind::Audio
                                                : MediaIconKind::Document;
  return MediaIcon(kind, sizePixels, pixelRatio);
}
