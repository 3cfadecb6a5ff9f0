#include "albums/AlbumRules.h"

#include <QFileInfo>
#include <QMimeData>
#include <QSet>
#include <QUrl>

#include "catalogue/NumberFormat.h"
#include "catalogue/PathParts.h"

namespace albumrules {

QString ChangedPrompt() {
  return QStringLiteral("Your album selections have changed.\nDo you wish to save the changes?");
}

QString EmptyAlbumPrompt() {
  return QStringLiteral(
      "Warning: No files have been added to your album.\nDo you wish to save the album anyway?");
}

QString CountText(int count) { return Format(count, "###,##0") + " record(s) included"; }

bool NameAccepted(const QString& name) { return !name.isEmpty(); }

QString DuplicateKey(const QString& path) { return GetBaseName(path).toLower(); }

bool HoldsName(const QStringList& paths, const QString& path) {
  const QString key = DuplicateKey(path);
  for (const QString& entry : paths)
    if (DuplicateKey(entry) == key) return true;
  return false;
}

QList<int> LaterDuplicates(const QStringList& paths) {
  QList<int> later;
  QSet<QString> seen;
  for (int i = 0; i < paths.size(); ++i) {
    const QString key = DuplicateKey(paths[i]);
    if (seen.contains(key))
      later << i;
    else
      seen.insert(key);
  }
  return later;
}

DropContents ReadDrop(const QMimeData* data) {
  DropContents contents;
  if (!data) return contents;
  if (!data->hasUrls()) {
    contents.Internal = data->hasText() && data->text() == InternalDrag;
    return contents;
  }
  for (const QUrl& url : data->urls()) {
    if (!url.isLocalFile()) continue;
    const QString path = url.toLocalFile();
    const QFileInfo info(path);
    if (!info.isFile()) continue;
    if (GetFileExtension(GetBaseName(path)) == "cda") continue;
    contents.Files << info.absoluteFilePath();
  }
  return contents;
}

bool AcceptsDrop(const QMimeData* data) {
  const DropContents contents = ReadDrop(data);
  return contents.Internal || !contents.Files.isEmpty();
}

}  // namespace albumrules
