#include "browser/PageTexts.h"

#include <algorithm>

#include "browser/TabState.h"
#include "catalogue/NumberFormat.h"

namespace {

QString KindWord(int tab) {
  switch (tab) {
    case VideosTab:
      return QStringLiteral("video");
    case AudiosTab:
      return QStringLiteral("audio");
    case DocumentsTab:
      return QStringLiteral("document");
    default:
      return QStringLiteral("picture");
  }
}

QString Counted(qint64 value) { return Format(value, QStringLiteral("##,##0")); }

}  // namespace

QString TabWord(int tab) {
  switch (tab) {
    case VideosTab:
      return QStringLiteral("Videos");
    case AudiosTab:
      return QStringLiteral("Audios");
    case DocumentsTab:
      return QStringLiteral("Documents");
    default:
      return QStringLiteral("Pictures");
  }
}

QString TabCaption(int tab, qint32 count) { return TabWord(tab) + " (" + Counted(count) + ")"; }

QString EmptyCountText(int tab) { return "0 " + KindWord(tab) + " files available"; }

QString PageCountText(int tab, qint32 pageStart, qint32 pageSize, qint32 count) {
  const qint64 last = std::min<qint64>(count, qint64(pageStart) + pageSize);
  return Counted(qint64(pageStart) + 1) + " to " + Counted(last) + " of " + Counted(count) + " " +
         KindWord(tab) + " files";
}
