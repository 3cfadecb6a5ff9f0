#include "platform/SettingsStore.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

namespace platform {

QString SettingsFilePath(const QString& application) {
  const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
  return base + "/" + application + "/" + application + ".ini";
}

QString GetSetting(const QString& application, const QString& section, const QString& key,
                   const QString& defaultValue) {
  QSettings store(SettingsFilePath(application), QSettings::IniFormat);
  const QString path = section + "/" + key;
  if (!store.contains(path)) return defaultValue;
  return store.value(path).toString();
}

void SaveSetting(const QString& application, const QString& section, const QString& key,
                 const QString& value) {
  const QString file = SettingsFilePath(application);
  QDir().mkpath(QFileInfo(file).absolutePath());
  QSettings store(file, QSettings::IniFormat);
  store.setValue(section + "/" + key, value);
  store.sync();
}

void DeleteSetting(const QString& application, const QString& section, const QString& key) {
  QSettings store(SettingsFilePath(application), QSettings::IniFormat);
  store.remove(section + "/" + key);
  store.sync();
}

}  // namespace platform
