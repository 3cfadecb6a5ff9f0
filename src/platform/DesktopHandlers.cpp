#include "platform/DesktopHandlers.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QStringList>
#include <QTextStream>

namespace platform {

namespace {

QString EnvOr(const char* name, const QString& fallback) {
  const QString value = qEnvironmentVariable(name);
  return value.isEmpty() ? fallback : value;
}

QStringList SplitDirs(const QString& list) {
  QStringList dirs;
  for (const QString& dir : list.split(':', Qt::SkipEmptyParts))
    if (QDir::isAbsolutePath(dir)) dirs << QDir::cleanPath(dir);
  return dirs;
}

QString ConfigHome() { return EnvOr("XDG_CONFIG_HOME", QDir::homePath() + "/.config"); }
QString DataHome() { return EnvOr("XDG_DATA_HOME", QDir::homePath() + "/.local/share"); }
QStringList ConfigDirs() { return SplitDirs(EnvOr("XDG_CONFIG_DIRS", "/etc/xdg")); }
QStringList DataDirs() {
  return SplitDirs(EnvOr("XDG_DATA_DIRS", "/usr/local/share:/usr/share"));
}

// The mimeapps.list files, most important first.
QStringList MimeAppsLists() {
  QStringList desktops;
  for (const QString& desktop :
       qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(':', Qt::SkipEmptyParts))
    desktops << desktop.toLower();
  QStringList folders;
  folders << ConfigHome() << ConfigDirs() << DataHome() + "/applications";
  for (const QString& dir : DataDirs()) folders << dir + "/applications";
  QStringList files;
  for (const QString& folder : folders) {
    for (const QString& desktop : desktops) files << folder + "/" + desktop + "-mimeapps.list";
    files << folder + "/mimeapps.list";
  }
  return files;
}

// The values of one key of a group in a key file, split at ";".
struct KeyFile {
  QHash<QString, QHash<QString, QString>> groups;

  static KeyFile Read(const QString& path) {
    KeyFile file;
    QFile in(path);
    if (!in.open(QIODevice::ReadOnly | QIODevice::Text)) return file;
    QTextStream stream(&in);
    QString group;
    while (!stream.atEnd()) {
      const QString line = stream.readLine().trimmed();
      if (line.isEmpty() || line.startsWith('#')) continue;
      if (line.startsWith('[') && line.endsWith(']')) {
        group = line.mid(1, line.size() - 2);
        continue;
      }
      const qsizetype eq = line.indexOf('=');
      if (eq <= 0 || group.isEmpty()) continue;
      const QString key = line.left(eq).trimmed();
      if (!file.groups[group].contains(key)) file.groups[group].insert(key, line.mid(eq + 1).trimmed());
    }
    return file;
  }

  QStringList List(const QString& group, const QString& key) const {
    return groups.value(group).value(key).split(';', Qt::SkipEmptyParts);
  }
  QString Value(const QString& group, const QString& key) const {
    return groups.value(group).value(key);
  }
};

// The installed applications by desktop file id ("sub-name.desktop" for
// "applications/sub/name.desktop"); the first folder that has an id wins.
QHash<QString, QString> InstalledApplications() {
  QStringList folders;
  folders << DataHome() + "/applications";
  for (const QString& dir : DataDirs()) folders << dir + "/applications";
  QHash<QString, QString> installed;
  for (const QString& folder : folders) {
    const QDir root(folder);
    if (!root.exists()) continue;
    QDirIterator it(folder, {"*.desktop"}, QDir::Files | QDir::Readable,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
      const QString path = it.next();
      QString id = root.relativeFilePath(path);
      id.replace('/', '-');
      if (!installed.contains(id)) installed.insert(id, path);
    }
  }
  return installed;
}

// An entry that is hidden (deleted by the user) or no application at all
// does not count.
bool UsableApplication(const KeyFile& entry) {
  const QString group = "Desktop Entry";
  if (!entry.groups.contains(group)) return false;
  if (entry.Value(group, "Hidden").compare("true", Qt::CaseInsensitive) == 0) return false;
  const QString type = entry.Value(group, "Type");
  return type.isEmpty() || type == "Application";
}

}  // namespace

bool HasDefaultApplicationFor(const QString& mimeType) {
  const QString type = mimeType.trimmed().toLower();
  if (type.isEmpty()) return false;
  const QHash<QString, QString> installed = InstalledApplications();
  QHash<QString, bool> usable;
  const auto isUsable = [&](const QString& id) {
    if (!installed.contains(id)) return false;
    if (!usable.contains(id)) usable.insert(id, UsableApplication(KeyFile::Read(installed.value(id))));
    return usable.value(id);
  };

  // Associations named in the lists: a default or an added association of
  // an installed application answers at once; removed ones are remembered
  // so that the applications' own claims below leave them out.
  QSet<QString> removed;
  for (const QString& path : MimeAppsLists()) {
    if (!QFileInfo::exists(path)) continue;
    const KeyFile list = KeyFile::Read(path);
    for (const QString& group : {QString("Default Applications"), QString("Added Associations")}) {
      for (const QString& id : list.List(group, type))
        if (!removed.contains(id) && isUsable(id)) return true;
    }
    for (const QString& id : list.List("Removed Associations", type)) removed.insert(id);
  }

  // The applications that declare the type themselves.
  for (auto it = installed.constBegin(); it != installed.constEnd(); ++it) {
    if (removed.contains(it.key())) continue;
    const KeyFile entry = KeyFile::Read(it.value());
    if (!UsableApplication(entry)) continue;
    for (const QString& declared : entry.List("Desktop Entry", "MimeType"))
      if (declared.trimmed().toLower() == type) return true;
  }
  return false;
}

}  // namespace platform
