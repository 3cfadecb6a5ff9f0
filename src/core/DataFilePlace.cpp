#include "core/DataFilePlace.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include "core/AppState.h"
#include "platform/FolderAccess.h"

namespace {

const QString DataFileName = QStringLiteral("Vistrel.VRD");
const QString TempFileName = QStringLiteral("MediaTemp.VRD");

QString InFolder(const QString& folder, const QString& name) {
  if (folder.endsWith(QLatin1Char('/'))) return folder + name;
  return folder + QLatin1Char('/') + name;
}

}  // namespace

QString ProgramFolderFile(const QString& name) { return InFolder(App().ProgramFolder, name); }

bool ProgramFolderIsShared(const QString& folder) {
  // An installed program stands in the system's folders, which the system's
  // package manager owns and replaces at an update: no user's file belongs
  // there, even when this user (the administrator) could write it.
  const QString clean = QDir::cleanPath(folder);
  for (const char* system : {"/usr/", "/opt/"})
    if (clean.startsWith(QLatin1String(system))) return true;
  return !platform::CanWriteFolder(folder);
}

bool DataFileIsPerUser() { return ProgramFolderIsShared(App().ProgramFolder); }

QString DataFileFolder() {
  if (!DataFileIsPerUser()) return App().ProgramFolder;
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
         QStringLiteral("/Vistrel");
}

QString DataFilePath() { return InFolder(DataFileFolder(), DataFileName); }
QString DataFileTempPath() { return InFolder(DataFileFolder(), TempFileName); }

bool MakeUserDataFile() {
  if (!DataFileIsPerUser()) return true;
  const QString target = DataFilePath();
  if (QFileInfo::exists(target)) return true;
  const QString fresh = ProgramFolderFile(DataFileName);
  if (!QFileInfo(fresh).isFile()) return false;
  if (!QDir().mkpath(DataFileFolder())) return false;
  // The copy is made under a name of its own and only then takes the data
  // file's name, which it cannot take from a file standing there: a start
  // cut off mid-copy leaves no half data file, and a file that appeared in
  // the meantime is kept.
  const QString part = target + QStringLiteral(".part");
  QFile::remove(part);
  if (!QFile::copy(fresh, part)) {
    QFile::remove(part);
    return false;
  }
  // The user's albums and captions are theirs alone.
  QFile::setPermissions(part, QFile::ReadOwner | QFile::WriteOwner);
  if (!QFile::rename(part, target)) {
    QFile::remove(part);
    return QFileInfo::exists(target);
  }
  return true;
}
