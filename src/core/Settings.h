#pragma once
// The program's settings: application "Vistrel", section "Settings". Every
// key is read again at each use; the defaults stand here, one place each.

#include <QString>

namespace settings {

inline constexpr const char* Application = "Vistrel";
inline constexpr const char* Section = "Settings";

// Raw access under the program's application and section.
QString GetSetting(const QString& key, const QString& defaultValue = QString());
void SaveSetting(const QString& key, const QString& value);

// Typed readers for the keys with fixed defaults. Booleans follow the form
// each key is stored in: "0"/"1", "Yes"/"No" or "True"/"False".
int GetInt(const QString& key, int defaultValue);
bool GetTrueFalse(const QString& key, bool defaultValue);
void SaveTrueFalse(const QString& key, bool value);

// Default values of the keys whose default is a fixed text.
QString DefaultOf(const QString& key);

// The folder shown at start when DefaultFolder is absent: the program
// folder plus "/MyMedia"; for a program folder that cannot be written, the
// user's pictures folder (XDG_PICTURES_DIR), else the home folder.
QString MyMediaFolder();

}  // namespace settings
