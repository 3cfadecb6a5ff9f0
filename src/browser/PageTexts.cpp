#include "browser/PageTexts.h"

#include <algorithm>

#include "browser/TabState.h"
#include "catalogue/FileInfoText.h"
#include "catalogue/NumberFormat.h"
#include "catalogue/PathParts.h"
#include "core/AppState.h"

namespace {

// The words of each tab, by tab - 1; a number outside 1 to 4 takes those of
// Pictures.
struct TabWords {
  const char* Caption;
  const char* Kind;
};
constexpr TabWords Words[TabCount] = {
    {"Pictures", "picture"}, {"Videos", "video"}, {"Audios", "audio"}, {"Documents", "document"}};

const TabWords& WordsOf(int tab) {
  return Words[tab >= PicturesTab && tab <= DocumentsTab ? tab - PicturesTab : 0];
}

QString KindWord(int tab) { return QLatin1String(WordsOf(tab).Kind); }

QString Counted(qint64 value) { return Format(value, QStringLiteral("##,##0")); }

}  // namespace

QString TabWord(int tab) { return QLatin1String(WordsOf(tab).Caption); }

QString TabCaption(int tab, qint32 count) { return TabWord(tab) + " (" + Counted(count) + ")"; }

QString EmptyCountText(int tab) { return "0 " + KindWord(tab) + " files available"; }

QString PageCountText(int tab, qint32 pageStart, qint32 pageSize, qint32 count) {
  const qint64 last = std::min<qint64>(count, qint64(pageStart) + pageSize);
  return Counted(qint64(pageStart) + 1) + " to " + Counted(last) + " of " + Counted(count) + " " +
         KindWord(tab) + " files";
}

QString EntryPath(const QString& entry) {
  const AppState& app = App();
  if (app.AlbumMode) return entry;
  return JoinPath(app.CurrentFolder, entry);
}

QString CellTooltip(int tab, qint32 index) {
  const AppState& app = App();
  const QStringList& files = app.List(tab);
  if (index < 0 || index >= files.size()) return QString();
  const QString& entry = files[index];
  if (tab == AudiosTab && GetFileExtension(entry).compare("cda", Qt::CaseInsensitive) == 0)
    return "File:    " + entry + "\nType: CD Audio";
  // The name shown is the bare file name; the text is read from the file
  // itself, by its full path.
  if (app.AlbumMode) return FileInfoText(GetBaseName(entry), entry);
  return FileInfoText(entry, EntryPath(entry));
}
