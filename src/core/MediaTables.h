#pragma once
// What the media tables hold; the catalogue fills them.

#include <QStringList>

// The extension tables: lower-case extensions without the dot, filled once
// and never changed afterwards. Each count stands beside its table.
struct MediaTableSet {
  QStringList PictureExtensions;
  int PictureCount = 0;
  QStringList VideoExtensions;
  int VideoCount = 0;
  QStringList AudioExtensions;
  int AudioCount = 0;
  QStringList WebExtensions;
  int WebCount = 0;
  // Filled when the browser loads; empty before that.
  QStringList ExteriorVideoExtensions;
  int ExteriorVideoCount = 0;
  QStringList DocumentExtensions;
  int DocumentCount = 0;
};
