#pragma once
// The per-user settings store shared by Vistrel and its sibling programs.
// Values are text addressed by application, section and key; the store is
// an INI file per application under the user's configuration folder
// ($XDG_CONFIG_HOME/<application>/<application>.ini, one group a section).
// Nothing is cached: every call reads or writes the file.

#include <QString>

namespace platform {

// The value of the key, or defaultValue when the key is absent.
QString GetSetting(const QString& application, const QString& section,
                   const QString& key, const QString& defaultValue = QString());
void SaveSetting(const QString& application, const QString& section,
                 const QString& key, const QString& value);
void DeleteSetting(const QString& application, const QString& section, const QString& key);

// Path of the file that holds the application's settings.
QString SettingsFilePath(const QString& application);

}  // namespace platform
