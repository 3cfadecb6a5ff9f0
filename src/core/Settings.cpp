#include "core/Settings.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QStandardPaths>

#include "platform/SettingsStore.h"
#include "core/AppState.h"
#include "core/DataFilePlace.h"

namespace settings {

QString GetSetting(const QString& key, const QString& defaultValue) {
  return platform::GetSetting(Application, Section, key, defaultValue);
}

void SaveSetting(const QString& key, const QString& value) {
  platform::SaveSetting(Application, Section, key, value);
}

int GetInt(const QString& key, int defaultValue) {
  bool ok = false;
  const int value = GetSetting(key, QString::number(defaultValue)).trimmed().toInt(&ok);
  return ok ? value : defaultValue;
}

bool GetTrueFalse(const QString& key, bool defaultValue) {
  const QString text = GetSetting(key, defaultValue ? "True" : "False").trimmed();
  if (text.compare("True", Qt::CaseInsensitive) == 0) return true;
  if (text.compare("False", Qt::CaseInsensitive) == 0) return false;
  bool ok = false;
  const int number = text.toInt(&ok);
  return ok ? number != 0 : defaultValue;
}

void SaveTrueFalse(const QString& key, bool value) { SaveSetting(key, value ? "True" : "False"); }

QString MyMediaFolder() {
  const QString folder = App().ProgramFolder;
  if (!ProgramFolderIsShared(folder))
    return folder.endsWith('/') ? folder + "MyMedia" : folder + "/MyMedia";
  // No "MyMedia" can be made in a read-only program folder: the user's own
  // pictures folder stands in, or the home folder when there is none.
  const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
  if (!pictures.isEmpty() && QFileInfo(pictures).isDir()) return pictures;
  return QDir::homePath();
}

QString DefaultOf(const QString& key) {
  static const QHash<QString, QString> defaults = {
      {"ShowSplashScreen", "1"},
      {"ShowPopupData", "1"},
      {"ShowPopupHelp", "1"},
      {"ShowCaptions", "0"},
      {"MainMaximized", "Yes"},
      {"MainWidth", "9600"},
      {"MainHeight", "6780"},
      {"Defined", "No"},
      {"ThumbnailSize", "1440"},
      {"SelectPictures", "11111111000000000001"},
      {"SelectVideos", "11110000000000000000"},
      {"SelectAudios", "11111100000000000000"},
      {"SortOrder", "1"},
      {"SortDescending", "False"},
      {"PictureOptions", "11111111000000000001"},
      {"SearchSubfolders", "True"},
      {"SelectAll", "True"},
      {"AlbumSelected", "0"},
      {"ContinuousPlayAudio", "False"},
      {"ContinuousPlayVideo", "False"},
      {"DeleteOption", "0"},
      {"DirectoryHeight", "4920"},
      {"DirectoryWidth", "4740"},
      {"MagnifierWidth", "3600"},
      {"MagnifierHeight", "2175"},
      {"MagnifierValue", "2"},
      {"SlideshowDelay", "3"},
      {"SlideshowOrder", "0"},
      {"SlideshowFullSize", "0"},
      {"AlarmStatus", "Off"},
      {"AlarmSnoozeMinutes", "10"},
      {"AlarmVolume", "100"},
      {"MerlinShown", ""},
      {"CddbAccess", "1"},
      {"CddbServerAddress", "gnudb.gnudb.org"},
      {"CddbServerPort", "80"},
      {"CddbProxyServer", "0"},
      {"CddbProxyAddress", ""},
      {"CddbProxyPort", "0"},
      {"CddbUserName", ""},
      {"CddbPassword", ""},
      {"PriorWeb", ""},
      {"PriorFTP", ""},
  };
  if (key == "DefaultFolder") return MyMediaFolder();
  if (key == "LastAlbumFolder") return GetSetting("DefaultFolder", MyMediaFolder());
  return defaults.value(key);
}

}  // namespace settings
