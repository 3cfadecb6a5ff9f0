#include "system/Associations.h"

#include <QList>

#include "core/AppState.h"
#include "core/Settings.h"
#include "platform/RegistryStore.h"
#include "system/RegistryRoutines.h"

namespace {

const QString Failure = QStringLiteral("Error!");
const QString OwnClass = QStringLiteral("Vistrel.File");

// One row of the association table: the mask setting and the position in
// it that govern the row, and its extensions with the word that stands in
// front of each in "Content Type".
struct AssociationRow {
  const char* Setting;
  int Position;
  QList<QPair<QString, QString>> Extensions;
};

QList<QPair<QString, QString>> All(std::initializer_list<const char*> extensions,
                                   const QString& word) {
  QList<QPair<QString, QString>> entries;
  for (const char* extension : extensions) entries.append({QString::fromLatin1(extension), word});
  return entries;
}

// In processing order. "mpa" is filed as a video inside the audio row, and
// the DVD row stands between the audio rows: both are meant so.
const QList<AssociationRow>& AssociationTable() {
  static const QString image = QStringLiteral("image"), video = QStringLiteral("video"),
                       audio = QStringLiteral("audio");
  static const QList<AssociationRow> table = {
      {"PictureOptions", 1, All({"bmp", "dib", "rle", "xbm"}, image)},
      {"PictureOptions", 2, All({"gif"}, image)},
      {"PictureOptions", 3, All({"jpg", "jpe", "jpeg"}, image)},
      {"PictureOptions", 4, All({"wmf", "emf"}, image)},
      {"PictureOptions", 5, All({"png", "mng"}, image)},
      {"PictureOptions", 6, All({"tif", "tiff", "jfx"}, image)},
      {"PictureOptions", 7, All({"pcx"}, image)},
      {"PictureOptions", 8, All({"xif"}, image)},
      {"PictureOptions", 20, All({"ico", "cur"}, image)},
      {"PictureOptions", 19, All({"art"}, image)},
      {"VideoOptions", 1, All({"avi", "ivf"}, video)},
      {"VideoOptions", 2, All({"mpg", "mpe", "mpeg", "mpv2", "m1v", "mps"}, video)},
      {"VideoOptions", 3, All({"wmv", "asx"}, video)},
      {"VideoOptions", 4, All({"rm"}, video)},
      {"AudioOptions", 1, All({"mp3", "mp2", "mp1"}, audio) + All({"mpa"}, video)},
      {"VideoOptions", 20, All({"dvd"}, video)},
      {"AudioOptions", 2, All({"wav"}, audio)},
      {"AudioOptions", 3, All({"wma", "asf"}, audio)},
      {"AudioOptions", 4, All({"cda"}, audio)},
      {"AudioOptions", 5, All({"mid", "rmi", "midi"}, audio)},
  };
  return table;
}

// The masks' defaults when a setting is absent. DVD is not taken over
// until the user has saved the options.
QString MaskDefault(const QString& setting) {
  if (setting == u"PictureOptions") return QStringLiteral("11111111000000000001");
  if (setting == u"VideoOptions") return QStringLiteral("11100000000000000000");
  return QStringLiteral("00000000000000000000");
}

// The classes a web link may be opened through.
const QStringList& WebClasses() {
  static const QStringList classes = {"file", "htmlfile", "http", "https", "InternetShortcut"};
  return classes;
}

QString Viewer() { return App().ViewerProgramPath; }
QString Manager() { return App().ManagerProgramPath; }

// Writes a text as the key's default value; the result is passed over, as
// every write here is.
void SetDefault(RegistryStore& store, quint32 hive, const QString& key, const QString& text) {
  SetRegistryValue(store, hive, key, QString(), REG_SZ, text);
}

// One value of SavePriorAssociation: kept in the setting unless the setting
// holds one already, the key can't be read, or the value, lower-cased, is
// the program's own text.
void SavePrior(RegistryStore& store, const QString& setting, const QString& key,
               const QString& ownText) {
  if (!settings::GetSetting(setting).isEmpty()) return;
  const QString value = QueryRegistryValue(store, HKEY_CLASSES_ROOT, key, QString());
  if (value == Failure) return;
  if (value.toLower() != ownText) settings::SaveSetting(setting, value);
}

// The current default value of a key in the classes, lower-cased, equals
// the text, and the key could be read.
bool Holds(RegistryStore& store, const QString& key, const QString& lowerText) {
  const QString value = QueryRegistryValue(store, HKEY_CLASSES_ROOT, key, QString());
  return value != Failure && value.toLower() == lowerText;
}

// The AudioCD class, in the classes, for the current user and for the
// machine, bound to the viewer.
void WriteAudioCdClass(RegistryStore& store) {
  const QList<QPair<quint32, QString>> roots = {
      {HKEY_CLASSES_ROOT, QStringLiteral("AudioCD")},
      {HKEY_CURRENT_USER, QStringLiteral("Software\\CLASSES\\AudioCD")},
      {HKEY_LOCAL_MACHINE, QStringLiteral("Software\\CLASSES\\AudioCD")}};
  for (const auto& [hive, root] : roots)
    CreateRegistryKey(store, hive, root + "\\shell\\Play\\command");
  for (const auto& [hive, root] : roots) {
    SetDefault(store, hive, root, QStringLiteral("AudioCD"));
    SetRegistryValue(store, hive, root, QStringLiteral("BaseClass"), REG_SZ,
                     QStringLiteral("Drive"));
    SetDefault(store, hive, root + "\\shell", QStringLiteral("play"));
    SetDefault(store, hive, root + "\\shell\\Play", QStringLiteral("&Play"));
  }
  if (!Viewer().isEmpty())
    for (const auto& [hive, root] : roots)
      SetDefault(store, hive, root + "\\shell\\play\\command", Viewer() + " %1");
  for (const auto& [hive, root] : roots) CreateRegistryKey(store, hive, root + "\\DefaultIcon");
  if (!Viewer().isEmpty())
    for (const auto& [hive, root] : roots)
      SetDefault(store, hive, root + "\\DefaultIcon", Manager() + ",0");
}

void SetWebAssociation(RegistryStore& store) {
  for (const QString& name : WebClasses())
    CreateRegistryKey(store, HKEY_CLASSES_ROOT, name + "\\shell\\Vistrel\\command");
  for (const QString& name : WebClasses())
    CreateRegistryKey(store, HKEY_LOCAL_MACHINE,
                      "Software\\Classes\\" + name + "\\shell\\Vistrel\\command");
  if (Viewer().isEmpty()) return;
  const QString command = Viewer() + " %1";
  SetDefault(store, HKEY_CLASSES_ROOT, QStringLiteral("ftp\\shell\\open\\command"), command);
  for (const QString& name : WebClasses()) {
    SetDefault(store, HKEY_CLASSES_ROOT, name + "\\shell", QStringLiteral("Vistrel"));
    SetDefault(store, HKEY_CLASSES_ROOT, name + "\\shell\\Vistrel", QStringLiteral("Vistrel"));
    // Two of the classes name their command key without "shell", a key
    // that does not exist: those writes fail quietly, and stay so.
    const bool withoutShell = name == u"htmlfile" || name == u"InternetShortcut";
    SetDefault(store, HKEY_CLASSES_ROOT,
               name + (withoutShell ? "\\Vistrel\\command" : "\\shell\\Vistrel\\command"), command);
  }
  const QString machine = QStringLiteral("Software\\Classes\\");
  SetDefault(store, HKEY_LOCAL_MACHINE, machine + "ftp\\shell\\open\\command", command);
  for (const QString& name : WebClasses()) {
    SetDefault(store, HKEY_LOCAL_MACHINE, machine + name + "\\shell", QStringLiteral("Vistrel"));
    SetDefault(store, HKEY_LOCAL_MACHINE, machine + name + "\\shell\\Vistrel",
               QStringLiteral("Vistrel"));
    SetDefault(store, HKEY_LOCAL_MACHINE, machine + name + "\\shell\\Vistrel\\command", command);
  }
}

void SetDvdAssociation(RegistryStore& store) {
  CreateRegistryKey(store, HKEY_CLASSES_ROOT, QStringLiteral("DVD\\shell\\Play\\command"));
  CreateRegistryKey(store, HKEY_LOCAL_MACHINE,
                    QStringLiteral("Software\\CLASSES\\DVD\\shell\\Play\\command"));
  if (Viewer().isEmpty()) return;
  // One slash before "dvd", as the viewer has always been registered.
  const QString command = Viewer() + " /dvd";
  SetDefault(store, HKEY_CLASSES_ROOT, QStringLiteral("DVD\\shell"), QStringLiteral("play"));
  SetDefault(store, HKEY_CLASSES_ROOT, QStringLiteral("DVD\\shell\\Play\\command"), command);
  SetDefault(store, HKEY_LOCAL_MACHINE, QStringLiteral("Software\\CLASSES\\DVD\\shell"),
             QStringLiteral("play"));
  SetDefault(store, HKEY_LOCAL_MACHINE,
             QStringLiteral("Software\\CLASSES\\DVD\\shell\\Play\\command"), command);
  CreateRegistryKey(store, HKEY_CLASSES_ROOT, QStringLiteral("DVD\\DefaultIcon"));
  SetDefault(store, HKEY_CLASSES_ROOT, QStringLiteral("DVD\\DefaultIcon"), Manager() + ",0");
  CreateRegistryKey(store, HKEY_LOCAL_MACHINE,
                    QStringLiteral("Software\\CLASSES\\DVD\\DefaultIcon"));
  SetDefault(store, HKEY_LOCAL_MACHINE, QStringLiteral("Software\\CLASSES\\DVD\\DefaultIcon"),
             Manager() + ",0");
}

// Where the classes of the DVD and audio CD restores write to.
struct ClassPlace {
  quint32 Hive;
  QString Root;  // the class's key, "DVD" or "Software\Classes\DVD"
};

// The three steps shared by the DVD and audio CD restores. `playKey` is the
// key read for the verb, as it is spelled in the classes.
void RestoreDeviceClass(RegistryStore& store, const QString& prefix, const QString& playKey,
                        bool playNeedsSetting, const QString& commandTail,
                        const QList<ClassPlace>& places) {
  const QString viewer = Viewer().toLower();
  const auto writeAll = [&](const QString& sub, const QString& text, bool spellAsRead) {
    for (const ClassPlace& place : places) {
      const bool classes = place.Hive == HKEY_CLASSES_ROOT;
      SetDefault(store, place.Hive, classes && spellAsRead ? playKey : place.Root + sub, text);
    }
  };

  const QString playSetting = "Prior" + prefix + "Play";
  const QString play = settings::GetSetting(playSetting);
  if (Holds(store, playKey, QStringLiteral("play")) && (!playNeedsSetting || !play.isEmpty()))
    writeAll(QStringLiteral("\\shell"), play, true);
  settings::SaveSetting(playSetting, QString());

  const QString commandSetting = "Prior" + prefix;
  const QString commandKey = places.first().Root + "\\shell\\Play\\command";
  if (Holds(store, commandKey, viewer + commandTail))
    writeAll(QStringLiteral("\\shell\\Play\\command"), settings::GetSetting(commandSetting), false);
  settings::SaveSetting(commandSetting, QString());

  const QString iconSetting = "Prior" + prefix + "Icon";
  const QString icon = settings::GetSetting(iconSetting);
  if (Holds(store, places.first().Root + "\\DefaultIcon", viewer + ",0")) {
    if (!icon.isEmpty()) {
      writeAll(QStringLiteral("\\DefaultIcon"), icon, false);
    } else {
      for (const ClassPlace& place : places)
        DeleteRegistryKey(store, place.Hive, place.Root, QStringLiteral("DefaultIcon"));
    }
  }
  settings::SaveSetting(iconSetting, QString());
}

}  // namespace

void SavePriorAssociation(RegistryStore& store, const QString& extension) {
  if (Viewer().isEmpty()) return;
  const QString viewer = Viewer().toLower();
  if (extension == u"cda") {
    SavePrior(store, QStringLiteral("PriorAudioCD"),
              QStringLiteral("AudioCD\\shell\\Play\\command"), viewer + " %1");
    SavePrior(store, QStringLiteral("PriorAudioCDIcon"), QStringLiteral("AudioCD\\DefaultIcon"),
              viewer + ",0");
    SavePrior(store, QStringLiteral("PriorAudioCDPlay"), QStringLiteral("AudioCD\\Shell"),
              QStringLiteral("play"));
  } else if (extension == u"dvd") {
    SavePrior(store, QStringLiteral("PriorDVD"), QStringLiteral("DVD\\shell\\Play\\command"),
              viewer + " /dvd");
    SavePrior(store, QStringLiteral("PriorDVDIcon"), QStringLiteral("DVD\\DefaultIcon"),
              viewer + ",0");
    SavePrior(store, QStringLiteral("PriorDVDPlay"), QStringLiteral("DVD\\shell"),
              QStringLiteral("play"));
  } else if (extension == u"web") {
    SavePrior(store, QStringLiteral("PriorWeb"), QStringLiteral("htmlfile\\shell"),
              QStringLiteral("vistrel"));
    SavePrior(store, QStringLiteral("PriorFTP"), QStringLiteral("ftp\\shell\\open\\command"),
              viewer + " %1");
  } else {
    // The lower-cased value is compared with the mixed-case class name, so
    // even the program's own class is kept as the earlier value.
    SavePrior(store, "Prior" + extension.toUpper(), "." + extension.toLower(), OwnClass);
  }
}

void SetAssociation(RegistryStore& store, const QString& extension, const QString& contentWord) {
  if (extension == u"dvd") return SetDvdAssociation(store);
  if (extension == u"web") return SetWebAssociation(store);
  const QString classesKey = "." + extension;
  const QString machineKey = "Software\\Classes\\." + extension;
  const QString contentType = contentWord + "/" + extension;
  CreateRegistryKey(store, HKEY_CLASSES_ROOT, classesKey);
  CreateRegistryKey(store, HKEY_LOCAL_MACHINE, machineKey);
  SetDefault(store, HKEY_CLASSES_ROOT, classesKey, OwnClass);
  SetRegistryValue(store, HKEY_CLASSES_ROOT, classesKey, QStringLiteral("Content Type"), REG_SZ,
                   contentType);
  SetDefault(store, HKEY_LOCAL_MACHINE, machineKey, OwnClass);
  SetRegistryValue(store, HKEY_LOCAL_MACHINE, machineKey, QStringLiteral("Content Type"), REG_SZ,
                   contentType);
}

void RestoreAssociation(RegistryStore& store, const QString& extension) {
  if (extension == u"dvd") {
    RestoreDeviceClass(store, QStringLiteral("DVD"), QStringLiteral("DVD\\shell"), true,
                       QStringLiteral(" /dvd"),
                       {{HKEY_CLASSES_ROOT, QStringLiteral("DVD")},
                        {HKEY_LOCAL_MACHINE, QStringLiteral("Software\\Classes\\DVD")}});
  } else if (extension == u"cda") {
    // The verb's key is read and written with a separator at its end.
    RestoreDeviceClass(store, QStringLiteral("AudioCD"), QStringLiteral("AudioCD\\shell\\"), false,
                       QStringLiteral(" %1"),
                       {{HKEY_CLASSES_ROOT, QStringLiteral("AudioCD")},
                        {HKEY_CURRENT_USER, QStringLiteral("Software\\Classes\\AudioCD")},
                        {HKEY_LOCAL_MACHINE, QStringLiteral("Software\\Classes\\AudioCD")}});
  } else if (extension == u"web") {
    for (const QString& name : WebClasses())
      SetDefault(store, HKEY_CLASSES_ROOT, name + "\\shell", QStringLiteral("open"));
    for (const QString& name : WebClasses())
      SetDefault(store, HKEY_LOCAL_MACHINE, "Software\\Classes\\" + name + "\\shell",
                 QStringLiteral("open"));
    settings::SaveSetting(QStringLiteral("PriorWeb"), QString());
    const QString ftp = settings::GetSetting(QStringLiteral("PriorFTP"));
    if (!ftp.isEmpty() && ftp.toLower() != Viewer().toLower() + " %1") {
      SetDefault(store, HKEY_CLASSES_ROOT, QStringLiteral("ftp\\shell\\open\\command"), ftp);
      SetDefault(store, HKEY_LOCAL_MACHINE,
                 QStringLiteral("Software\\Classes\\ftp\\shell\\open\\command"), ftp);
    }
    settings::SaveSetting(QStringLiteral("PriorFTP"), QString());
  } else {
    // As when the value was saved, the lower-cased value never equals the
    // class name: the type stays bound and only the saved value is
    // forgotten.
    const QString setting = "Prior" + extension.toUpper();
    const QString key = "." + extension.toLower();
    if (Holds(store, key, OwnClass))
      SetDefault(store, HKEY_CLASSES_ROOT, key, settings::GetSetting(setting));
    settings::SaveSetting(setting, QString());
  }
}

void ResetFileAssociations(RegistryStore& store) {
  const AppState& app = App();
  if (!app.ViewerProgramPath.isEmpty()) {
    const QString command = app.ViewerProgramPath + " %1";
    CreateRegistryKey(store, HKEY_CLASSES_ROOT,
                      QStringLiteral("Vistrel.File\\shell\\Open\\command"));
    CreateRegistryKey(store, HKEY_CLASSES_ROOT,
                      QStringLiteral("Vistrel.File\\shell\\Play\\command"));
    SetDefault(store, HKEY_CLASSES_ROOT, QStringLiteral("Vistrel.File"),
               QStringLiteral("Vistrel File"));
    SetDefault(store, HKEY_CLASSES_ROOT, QStringLiteral("Vistrel.File\\shell\\Open\\command"),
               command);
    SetDefault(store, HKEY_CLASSES_ROOT, QStringLiteral("Vistrel.File\\shell\\Play\\command"),
               command);
    CreateRegistryKey(store, HKEY_CLASSES_ROOT, QStringLiteral("Vistrel.File\\DefaultIcon"));
    SetDefault(store, HKEY_CLASSES_ROOT, QStringLiteral("Vistrel.File\\DefaultIcon"),
               app.ManagerProgramPath + ",4");
    if (!app.ProgramFolder.isEmpty()) {
      // "AppPaths" as one word: that is the key the siblings know.
      const QString appPath =
          QStringLiteral("Software\\Microsoft\\Windows\\CurrentVersion\\AppPaths\\Lorvane.exe");
      CreateRegistryKey(store, HKEY_LOCAL_MACHINE, appPath);
      SetDefault(store, HKEY_LOCAL_MACHINE, appPath, app.ViewerProgramPath);
      SetRegistryValue(store, HKEY_LOCAL_MACHINE, appPath, QStringLiteral("Path"), REG_SZ,
                       app.ProgramFolder);
    }
    if (app.IsNtPlatform) {
      const QString handler = QStringLiteral(
          "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\AutoPlayHandlers\\Handlers\\Vist"
          "relHandler");
      CreateRegistryKey(store, HKEY_LOCAL_MACHINE, handler);
      const QList<QPair<QString, QString>> values = {
          {QStringLiteral("Action"), QStringLiteral("Open or Play Media Files")},
          {QStringLiteral("DefaultIcon"), app.ManagerProgramPath + ",0"},
          {QStringLiteral("InvokeProgID"), OwnClass},
          {QStringLiteral("InvokeVerb"), QStringLiteral("Open")},
          {QStringLiteral("Provider"), QStringLiteral("Vistrel")}};
      for (const auto& [name, text] : values)
        SetRegistryValue(store, HKEY_LOCAL_MACHINE, handler, name, REG_SZ, text);
    }
  }

  for (const AssociationRow& row : AssociationTable()) {
    const QString setting = QString::fromLatin1(row.Setting);
    // A mask too short for the position gives no character, which is not
    // "0": the row is taken over.
    const QString mark =
        settings::GetSetting(setting, MaskDefault(setting)).mid(row.Position - 1, 1);
    if (mark == u"0") {
      for (const auto& entry : row.Extensions) RestoreAssociation(store, entry.first);
      continue;
    }
    for (const auto& entry : row.Extensions) SavePriorAssociation(store, entry.first);
    for (const auto& entry : row.Extensions) SetAssociation(store, entry.first, entry.second);
    if (row.Extensions.first().first == u"cda") WriteAudioCdClass(store);
  }

  // The data file is always the program's, whatever the masks say.
  SetAssociation(store, QStringLiteral("vrd"), QStringLiteral("Vistrel data"));
}

void ResetFileAssociations() {
  UpdateRegistryFile(DefaultRegistryPath(), [](RegistryStore& store) {
    ResetFileAssociations(store);
    return QString();
  });
}

bool DvdPlayerPresent() {
  RegistryStore store;
  store.Load(DefaultRegistryPath());
  if (RegistryKeyExists(store, HKEY_CLASSES_ROOT, QStringLiteral("DVD\\shell")) != u"Success!")
    return false;
  const QString verb =
      QueryRegistryValue(store, HKEY_CLASSES_ROOT, QStringLiteral("DVD\\shell"), QString());
  if (verb.isEmpty() || verb == Failure) return false;
  const QString command =
      QueryRegistryValue(store, HKEY_CLASSES_ROOT, "DVD\\shell\\" + verb + "\\command", QString());
  return !command.isEmpty() && command != Failure;
}
