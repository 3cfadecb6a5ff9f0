#include "fileops/RenameRules.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>

#include "core/AppState.h"
#include "core/Database.h"
#include "core/Statements.h"
#include "fileops/NameCharacters.h"
#include "platform/FileTimes.h"

RenameSplit SplitRenameName(const QString& name) {
  RenameSplit split{QString(), QString::fromLatin1(InitialRenameExtension)};
  const qsizetype length = name.size();
  if (length < 4) return split;
  // The dot stands 4, 3 or 2 places before the last character, counting
  // the first character as place 1; the extension is the rest with its dot.
  for (const qsizetype back : {4, 3, 2}) {
    const qsizetype dot = length - back - 1;  // index of that place
    if (dot < 0 || name.at(dot) != QLatin1Char('.')) continue;
    split.NewFile = name.left(dot);
    split.Extension = name.mid(dot);
    return split;
  }
  return split;
}

bool IsDroppedRenameCharacter(QChar c) {
  static const QString dropped = QStringLiteral("\"*/:<>?\\|");
  return dropped.contains(c);
}

QString DropInsertedRenameCharacters(const QString& before, const QString& after, int& cursor) {
  return DropInsertedCharacters(before, after, cursor, IsDroppedRenameCharacter);
}

QString RenamedListEntry(const QString& newFileText, const QString& extension) {
  // Only blanks go, as the list has always trimmed them; other white space
  // cannot be typed into the box.
  qsizetype first = 0, last = newFileText.size();
  while (first < last && newFileText.at(first) == QLatin1Char(' ')) ++first;
  while (last > first && newFileText.at(last - 1) == QLatin1Char(' ')) --last;
  return newFileText.mid(first, last - first) + extension;
}

RenamePlacement FitRenameWindow(int left, int top, int boxWidth, int otherWidth, int height,
                                int clientWidth, int clientHeight) {
  constexpr int Margin = 60;
  RenamePlacement placed{left, top, boxWidth};
  if (clientWidth > 0) {
    const int right = clientWidth - Margin;
    if (placed.Left + otherWidth + placed.BoxWidth > right)
      placed.BoxWidth = std::max(SmallestRenameBox, right - placed.Left - otherWidth);
    if (placed.Left + otherWidth + placed.BoxWidth > right)
      placed.Left = std::max(0, right - otherWidth - placed.BoxWidth);
  }
  if (clientHeight > 0) {
    const int bottom = clientHeight - Margin;
    if (placed.Top + height > bottom) placed.Top = std::max(0, bottom - height);
  }
  return placed;
}

namespace {

// The error number of the last failed call.
int LastError() { return platform::ErrorNumberOf(errno); }

bool Exists(const QByteArray& path) {
  struct stat info {};
  return ::lstat(path.constData(), &info) == 0;
}

}  // namespace

int RenameWithoutReplacing(const QString& source, const QString& target) {
  const QByteArray from = QFile::encodeName(source);
  const QByteArray to = QFile::encodeName(target);
  if (from.isEmpty() || to.isEmpty()) return platform::ErrorNumberOf(ENOENT);

  // A plain rename replaces what stands at the target, so the kernel is
  // asked to refuse that instead.
  if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
    return 0;
  if (errno != EINVAL && errno != ENOSYS && errno != ENOTSUP) return LastError();

  // A file system that cannot refuse in the rename: a second link refuses
  // an existing target just as well; then the old name goes.
  if (::link(from.constData(), to.constData()) == 0) {
    ::unlink(from.constData());
    return 0;
  }
  if (errno == EEXIST || errno == ENOENT || errno == EACCES || errno == EROFS) return LastError();

  // Nor links (FAT and the like): look first, then rename.
  if (Exists(to)) return platform::ErrorNumberOf(EEXIST);
  if (::rename(from.constData(), to.constData()) == 0) return 0;
  return LastError();
}

void FollowRenameInDataFile(const QString& source, const QString& target) {
  Database* db = App().DatabaseConnection;
  if (!db || !db->IsOpen()) return;
  FollowRenamedFile(*db, QFileInfo(source).absoluteFilePath(), QFileInfo(target).absoluteFilePath());
}
