#include "platform/LeftoverFiles.h"
#include "platform/FileDescriptors.h"

#include <dirent.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <cerrno>

namespace platform {

namespace {

// Notes are named "note-XXXXXX"; nothing else in the folder is read.
constexpr const char* NotePrefix = "note-";

QString NotesFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
         QStringLiteral("/Vistrel/leftovers");
}

// Writes a note of one line (ended by a line break, so that a note cut short
// is recognised and ignored). Its path, or "".
QString WriteNote(const QByteArray& line) {
  const QString folder = NotesFolder();
  if (!QDir().mkpath(folder)) return QString();
  QByteArray name = QFile::encodeName(folder + QLatin1Char('/') + QLatin1String(NotePrefix) +
                                      QLatin1String("XXXXXX"));
  const int fd = ::mkostemp(name.data(), O_CLOEXEC);
  if (fd < 0) return QString();
  const QByteArray text = line + '\n';
  const bool written = WriteAll(fd, text.constData(), text.size());
  if (::close(fd) != 0 || !written) {
    ::unlink(name.constData());
    return QString();
  }
  return QFile::decodeName(name);
}

// Fields of a note are separated by tabs; a path holding a tab or a line
// break is escaped so that the line stays one line.
QByteArray Escaped(const QByteArray& path) {
  QByteArray out;
  for (const char ch : path) {
    if (ch == '\\') out += "\\\\";
    else if (ch == '\t') out += "\\t";
    else if (ch == '\n') out += "\\n";
    else out += ch;
  }
  return out;
}

QByteArray Unescaped(const QByteArray& field) {
  QByteArray out;
  for (qsizetype i = 0; i < field.size(); ++i) {
    if (field[i] != '\\' || i + 1 == field.size()) {
      out += field[i];
      continue;
    }
    const char next = field[++i];
    out += next == 't' ? '\t' : next == 'n' ? '\n' : next;
  }
  return out;
}

bool IsOwnPrefix(const QByteArray& prefix) {
  return prefix.startsWith(LeftoverPrefix) && !prefix.contains('/') &&
         prefix.size() > qsizetype(qstrlen(LeftoverPrefix));
}

// Removes the regular files of the folder whose names start with prefix.
int RemoveTemporaries(const QByteArray& folder, const QByteArray& prefix) {
  if (!IsOwnPrefix(prefix)) return 0;
  DIR* dir = ::opendir(folder.constData());
  if (!dir) return 0;
  int removed = 0;
  while (const dirent* entry = ::readdir(dir)) {
    const QByteArray name(entry->d_name);
    if (!name.startsWith(prefix)) continue;
    const QByteArray path = folder + (folder.endsWith('/') ? "" : "/") + name;
    struct stat info {};
    if (::lstat(path.constData(), &info) == 0 && S_ISREG(info.st_mode) &&
        ::unlink(path.constData()) == 0)
      ++removed;
  }
  ::closedir(dir);
  return removed;
}

// What tells one file from another that later takes its place: the device,
// the inode and, where the file system keeps it, the time the file was made
// (an inode number is soon given to a new file). "" when there is no file.
QByteArray Identity(const QByteArray& path) {
  struct statx info {};
  if (::statx(AT_FDCWD, path.constData(), AT_SYMLINK_NOFOLLOW, STATX_INO | STATX_BTIME, &info) != 0)
    return QByteArray();
  QByteArray identity = QByteArray::number(info.stx_dev_major) + ':' +
                        QByteArray::number(info.stx_dev_minor) + '\t' + QByteArray::number(info.stx_ino);
  if (info.stx_mask & STATX_BTIME)
    identity += ':' + QByteArray::number(qint64(info.stx_btime.tv_sec)) + '.' +
                QByteArray::number(info.stx_btime.tv_nsec);
  return identity;
}

// Removes the file when it is still the one that was noted.
int RemoveNotedFile(const QByteArray& identity, const QByteArray& path) {
  if (Identity(path) != identity) return 0;
  return ::unlink(path.constData()) == 0 ? 1 : 0;
}

// Carries out one note; the number of files removed.
int CarryOut(const QByteArray& note) {
  if (!note.endsWith('\n')) return 0;  // cut short: the work had not begun
  const QList<QByteArray> fields = note.chopped(1).split('\t');
  if (fields.size() == 3 && fields[0] == "T")
    return RemoveTemporaries(Unescaped(fields[1]), Unescaped(fields[2]));
  if (fields.size() == 2 && fields[0] == "D")
    return ::rmdir(Unescaped(fields[1]).constData()) == 0 ? 1 : 0;
  int removed = 0;
  if (fields.size() >= 4 && fields[0] == "F")
    for (qsizetype i = 3; i < fields.size(); ++i)
      removed += RemoveNotedFile(fields[1] + '\t' + fields[2], Unescaped(fields[i]));
  return removed;
}

}  // namespace

QString NoteTemporaries(const QString& folder, const QString& prefix) {
  const QByteArray ownPrefix = QFile::encodeName(prefix);
  if (!IsOwnPrefix(ownPrefix)) return QString();
  return WriteNote("T\t" + Escaped(QFile::encodeName(QDir(folder).absolutePath())) + "\t" +
                   Escaped(ownPrefix));
}

QString NoteFileToRemove(const QString& path, const QString& nextPath) {
  const QByteArray name = QFile::encodeName(QFileInfo(path).absoluteFilePath());
  const QByteArray identity = Identity(name);
  if (identity.isEmpty()) return QString();
  QByteArray line = "F\t" + identity + "\t" + Escaped(name);
  if (!nextPath.isEmpty())
    line += "\t" + Escaped(QFile::encodeName(QFileInfo(nextPath).absoluteFilePath()));
  return WriteNote(line);
}

QString NoteProbeFolder(const QString& path) {
  return WriteNote("D\t" + Escaped(QFile::encodeName(QFileInfo(path).absoluteFilePath())));
}

void ForgetLeftover(const QString& note) {
  if (!note.isEmpty()) ::unlink(QFile::encodeName(note).constData());
}

int CleanLeftovers() {
  const QDir folder(NotesFolder());
  int removed = 0;
  const QStringList notes =
      folder.entryList({QLatin1String(NotePrefix) + QLatin1Char('*')}, QDir::Files | QDir::Hidden);
  for (const QString& name : notes) {
    const QString path = folder.filePath(name);
    QFile note(path);
    if (note.open(QIODevice::ReadOnly)) removed += CarryOut(note.read(64 * 1024));
    note.close();
    QFile::remove(path);
  }
  return removed;
}

}  // namespace platform
