#include <gtest/gtest.h>

#include <QtEndian>

#include "core/AppState.h"
#include "core/Settings.h"
#include "platform/RegistryStore.h"
#include "support/DesktopWorld.h"
#include "support/TestEnv.h"
#include "system/Associations.h"
#include "system/RegistryRoutines.h"

namespace {

const char* HiveName(quint32 hive) {
  return hive == HKEY_CLASSES_ROOT ? "HKCR" : hive == HKEY_CURRENT_USER ? "HKCU" : "HKLM";
}

// One line per value ("HKCR\.gif [Content Type] = image/gif", the default
// value without a name), and one per key that holds no value; a number
// reads "#" and its value.
void DumpKey(const RegistryStore& store, quint32 hive, const QString& path, QStringList& lines) {
  const QString where = QString(HiveName(hive)) + (path.isEmpty() ? "" : "\\" + path);
  const QStringList names = store.ValueNames(hive, path);
  if (names.isEmpty() && !path.isEmpty()) lines << where;
  for (const QString& name : names) {
    const RegistryStore::Value value = *store.QueryValue(hive, path, name);
    QString text = value.Type == 4 ? "#" + QString::number(qFromLittleEndian<qint32>(value.Data.constData()))
                                   : QString::fromUtf8(value.Data.chopped(value.Data.isEmpty() ? 0 : 1));
    lines << where + (name.isEmpty() ? "" : " [" + name + "]") + " = " + text;
  }
  for (const QString& key : store.SubKeys(hive, path))
    DumpKey(store, hive, path.isEmpty() ? key : path + "\\" + key, lines);
}

QStringList Dump(const RegistryStore& store) {
  QStringList lines;
  for (quint32 hive : {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE})
    DumpKey(store, hive, "", lines);
  return lines;
}

void Set(RegistryStore& store, quint32 hive, const QString& key, const QString& text,
         const QString& name = {}) {
  store.CreateKey(hive, key);
  store.SetValue(hive, key, name, {1, text.toUtf8() + '\0'});
}

QString Default(const RegistryStore& store, quint32 hive, const QString& key) {
  return QueryRegistryValue(store, hive, key, "");
}

class AssociationsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    App().ProgramFolder = "/opt/My Media";
    App().ViewerProgramPath = "/opt/My Media/Lorvane";
    App().ManagerProgramPath = "/opt/My Media/Vistrel";
  }
  static void Masks(const QString& pictures, const QString& videos, const QString& audios) {
    settings::SaveSetting("PictureOptions", pictures);
    settings::SaveSetting("VideoOptions", videos);
    settings::SaveSetting("AudioOptions", audios);
  }
};

}  // namespace

TEST_F(AssociationsTest, ResetWritesTheClassesTheTickedTypesAndTheDataFile) {
  RegistryStore store;
  Set(store, HKEY_CLASSES_ROOT, ".gif", "giffile");
  Set(store, HKEY_CLASSES_ROOT, ".bmp", "Paint.Picture");
  Set(store, HKEY_CLASSES_ROOT, "AudioCD\\shell", "cdplay");
  Set(store, HKEY_CLASSES_ROOT, "AudioCD\\shell\\Play\\command", "cdplayer.exe /play \"%1\"");
  Set(store, HKEY_CLASSES_ROOT, "DVD\\DefaultIcon", "dvdplay.exe,0");
  settings::SaveSetting("PriorBMP", "Paint.Picture");
  // gif ticked (position 2), DVD ticked (20), audio CD ticked (4), the rest not.
  Masks("01000000000000000000", "00000000000000000001", "00010000000000000000");

  ResetFileAssociations(store);

  // The classes written alike under the three roots.
  const QStringList ours = {
      ".cda = Vistrel.File",
      ".cda [Content Type] = audio/cda",
      ".gif = Vistrel.File",
      ".gif [Content Type] = image/gif",
      ".vrd = Vistrel.File",
      ".vrd [Content Type] = Vistrel data/vrd",
      "AudioCD = AudioCD",
      "AudioCD [BaseClass] = Drive",
      "AudioCD\\DefaultIcon = /opt/My Media/Vistrel,0",
      "AudioCD\\shell = play",
      "AudioCD\\shell\\Play = &Play",
      "AudioCD\\shell\\Play\\command = /opt/My Media/Lorvane %1",
      "DVD",
      "DVD\\DefaultIcon = /opt/My Media/Vistrel,0",
      "DVD\\shell = play",
      "DVD\\shell\\Play",
      "DVD\\shell\\Play\\command = /opt/My Media/Lorvane /dvd",
  };
  const auto under = [](const QString& root, const QStringList& lines) {
    QStringList rooted;
    for (const QString& line : lines) rooted << root + line;
    return rooted;
  };
  const QString version = "HKLM\\Software\\Microsoft\\Windows\\CurrentVersion";
  const QString handler = version + "\\Explorer\\AutoPlayHandlers\\Handlers\\VistrelHandler";
  EXPECT_EQ(Dump(store),
            (QStringList{"HKCR\\.bmp = Paint.Picture"} + under("HKCR\\", ours) + QStringList{
                "HKCR\\Vistrel.File = Vistrel File",
                "HKCR\\Vistrel.File\\DefaultIcon = /opt/My Media/Vistrel,4",
                "HKCR\\Vistrel.File\\shell",
                "HKCR\\Vistrel.File\\shell\\Open",
                "HKCR\\Vistrel.File\\shell\\Open\\command = /opt/My Media/Lorvane %1",
                "HKCR\\Vistrel.File\\shell\\Play",
                "HKCR\\Vistrel.File\\shell\\Play\\command = /opt/My Media/Lorvane %1",
                "HKCU\\Software", "HKCU\\Software\\CLASSES"} +
                under("HKCU\\Software\\CLASSES\\", ours.mid(6, 6)) +
                QStringList{"HKLM\\Software", "HKLM\\Software\\Classes"} +
                under("HKLM\\Software\\Classes\\", ours) + QStringList{
                "HKLM\\Software\\Microsoft",
                "HKLM\\Software\\Microsoft\\Windows",
                version,
                version + "\\AppPaths",
                version + "\\AppPaths\\Lorvane.exe = /opt/My Media/Lorvane",
                version + "\\AppPaths\\Lorvane.exe [Path] = /opt/My Media",
                version + "\\Explorer",
                version + "\\Explorer\\AutoPlayHandlers",
                version + "\\Explorer\\AutoPlayHandlers\\Handlers",
                handler + " [Action] = Open or Play Media Files",
                handler + " [DefaultIcon] = /opt/My Media/Vistrel,0",
                handler + " [InvokeProgID] = Vistrel.File",
                handler + " [InvokeVerb] = Open",
                handler + " [Provider] = Vistrel"}));

  // What stood before is kept: the foreign values, and the desktop's DVD
  // handler, which the registry reads from the desktop itself.
  EXPECT_EQ(settings::GetSetting("PriorGIF"), "giffile");
  EXPECT_EQ(settings::GetSetting("PriorAudioCD"), "cdplayer.exe /play \"%1\"");
  EXPECT_EQ(settings::GetSetting("PriorAudioCDIcon"), "");
  EXPECT_EQ(settings::GetSetting("PriorAudioCDPlay"), "cdplay");
  EXPECT_EQ(settings::GetSetting("PriorDVD"), "vistrel-test-dvd %U");
  EXPECT_EQ(settings::GetSetting("PriorDVDIcon"), "dvdplay.exe,0");
  EXPECT_EQ(settings::GetSetting("PriorDVDPlay"), "");
  // bmp is unticked: its saved value is forgotten, its key left alone.
  EXPECT_EQ(settings::GetSetting("PriorBMP", "absent"), "");
  EXPECT_EQ(settings::GetSetting("PriorVRD", "absent"), "absent");
}

TEST_F(AssociationsTest, PriorValueIsTakenOnceAndUntickingLeavesTheTypeBound) {
  RegistryStore store;
  Set(store, HKEY_CLASSES_ROOT, ".wav", "\"C:\\Program Files\\Player\\play.exe\" /open \"%1\"");
  Set(store, HKEY_CLASSES_ROOT, ".mid", "Vistrel.File");
  Masks("00000000000000000000", "00000000000000000000", "01001000000000000000");
  ResetFileAssociations(store);
  EXPECT_EQ(settings::GetSetting("PriorWAV"), "\"C:\\Program Files\\Player\\play.exe\" /open \"%1\"");
  // The class's own name counts as foreign while the setting is empty.
  EXPECT_EQ(settings::GetSetting("PriorMID"), "Vistrel.File");
  EXPECT_EQ(settings::GetSetting("PriorRMI", "absent"), "absent");
  EXPECT_EQ(Default(store, HKEY_CLASSES_ROOT, ".rmi"), "Vistrel.File");

  // Taken over again by another program: the first value stays.
  Set(store, HKEY_CLASSES_ROOT, ".wav", "Other.Player");
  ResetFileAssociations(store);
  EXPECT_EQ(settings::GetSetting("PriorWAV"), "\"C:\\Program Files\\Player\\play.exe\" /open \"%1\"");
  EXPECT_EQ(Default(store, HKEY_CLASSES_ROOT, ".wav"), "Vistrel.File");

  // Unticked: the value is forgotten and the type stays with the viewer,
  // in both hives.
  Masks("00000000000000000000", "00000000000000000000", "00000000000000000000");
  ResetFileAssociations(store);
  EXPECT_EQ(settings::GetSetting("PriorWAV", "absent"), "");
  EXPECT_EQ(Default(store, HKEY_CLASSES_ROOT, ".wav"), "Vistrel.File");
  EXPECT_EQ(Default(store, HKEY_LOCAL_MACHINE, "Software\\Classes\\.wav"), "Vistrel.File");
  EXPECT_EQ(QueryRegistryValue(store, HKEY_CLASSES_ROOT, ".wav", "Content Type"), "audio/wav");
}

TEST_F(AssociationsTest, DataFileIsAlwaysBoundAndShortMasksTakeRowsOver) {
  RegistryStore store;
  Masks("0", "00000000000000000000", "00000000000000000000");
  ResetFileAssociations(store);
  EXPECT_EQ(Default(store, HKEY_CLASSES_ROOT, ".vrd"), "Vistrel.File");
  EXPECT_EQ(QueryRegistryValue(store, HKEY_LOCAL_MACHINE, "Software\\Classes\\.vrd", "Content Type"),
            "Vistrel data/vrd");
  EXPECT_EQ(RegistryKeyExists(store, HKEY_CLASSES_ROOT, ".bmp"), "Error!");
  // Positions past the end of "0" are no "0": gif to art are taken over,
  // mpa among them as a video.
  EXPECT_EQ(QueryRegistryValue(store, HKEY_CLASSES_ROOT, ".art", "Content Type"), "image/art");
  EXPECT_EQ(RegistryKeyExists(store, HKEY_CLASSES_ROOT, ".mpa"), "Error!");
  Masks("0", "0", "1");
  ResetFileAssociations(store);
  EXPECT_EQ(QueryRegistryValue(store, HKEY_CLASSES_ROOT, ".mpa", "Content Type"), "video/mpa");
}

TEST_F(AssociationsTest, DvdAndCdClassesAreGivenBackAsFarAsTheyAreOurs) {
  RegistryStore store;
  Set(store, HKEY_CLASSES_ROOT, "DVD\\DefaultIcon", "/opt/my media/lorvane,0");
  Set(store, HKEY_LOCAL_MACHINE, "Software\\Classes\\DVD\\DefaultIcon", "/opt/My Media/Lorvane,0");
  Set(store, HKEY_CLASSES_ROOT, "DVD\\shell", "play");
  Set(store, HKEY_LOCAL_MACHINE, "Software\\Classes\\DVD\\shell", "play");
  settings::SaveSetting("PriorDVDPlay", "open");
  settings::SaveSetting("PriorDVD", "old dvd player");
  settings::SaveSetting("PriorDVDIcon", "");
  // The desktop's handler answers "DVD\shell" ("play"), but its command is
  // not the viewer's: the verb goes back, the command does not, and our
  // icon with no saved one is deleted.
  RestoreAssociation(store, "dvd");
  EXPECT_EQ(Dump(store), (QStringList{
      "HKCR\\DVD",
      "HKCR\\DVD\\shell = open",
      "HKLM\\Software",
      "HKLM\\Software\\Classes",
      "HKLM\\Software\\Classes\\DVD",
      "HKLM\\Software\\Classes\\DVD\\shell = open",
  }));
  for (const char* key : {"PriorDVDPlay", "PriorDVD", "PriorDVDIcon"})
    EXPECT_EQ(settings::GetSetting(key, "absent"), "") << key;

  RegistryStore cd;
  Set(cd, HKEY_CLASSES_ROOT, "AudioCD\\shell", "Play");
  Set(cd, HKEY_CLASSES_ROOT, "AudioCD\\shell\\Play\\command", "/opt/My Media/Lorvane %1");
  Set(cd, HKEY_CLASSES_ROOT, "AudioCD\\DefaultIcon", "/opt/My Media/Vistrel,0");
  for (quint32 hive : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE})
    Set(cd, hive, "Software\\Classes\\AudioCD\\shell\\Play\\command", "x");
  settings::SaveSetting("PriorAudioCD", "C:\\cd\\player.exe \"%1\"");
  settings::SaveSetting("PriorAudioCDIcon", "cdicon.dll,3");
  // The verb is written back in three places even when nothing was saved;
  // the icon is the program's, not the viewer's, so it stays.
  RestoreAssociation(cd, "cda");
  for (const auto& [hive, root] : {std::pair{HKEY_CLASSES_ROOT, "AudioCD"},
                                   {HKEY_CURRENT_USER, "Software\\Classes\\AudioCD"},
                                   {HKEY_LOCAL_MACHINE, "Software\\Classes\\AudioCD"}}) {
    EXPECT_EQ(Default(cd, hive, root + QString("\\shell")), "") << root;
    EXPECT_EQ(Default(cd, hive, root + QString("\\shell\\Play\\command")), "C:\\cd\\player.exe \"%1\"");
  }
  EXPECT_EQ(Default(cd, HKEY_CLASSES_ROOT, "AudioCD\\DefaultIcon"), "/opt/My Media/Vistrel,0");
  EXPECT_EQ(settings::GetSetting("PriorAudioCDIcon", "absent"), "");
}

TEST_F(AssociationsTest, WebBranchWritesWhatItCanAndGivesBackTheFtpHandler) {
  RegistryStore store;
  SetAssociation(store, "web", "");
  // The two command keys spelled without "shell" do not exist: no value.
  EXPECT_EQ(Default(store, HKEY_CLASSES_ROOT, "http\\shell\\Vistrel\\command"), "/opt/My Media/Lorvane %1");
  EXPECT_EQ(Default(store, HKEY_CLASSES_ROOT, "htmlfile\\shell"), "Vistrel");
  EXPECT_EQ(Default(store, HKEY_CLASSES_ROOT, "htmlfile\\shell\\Vistrel\\command"), "Error!");
  EXPECT_EQ(RegistryKeyExists(store, HKEY_CLASSES_ROOT, "htmlfile\\Vistrel"), "Error!");
  EXPECT_EQ(Default(store, HKEY_CLASSES_ROOT, "InternetShortcut\\shell\\Vistrel\\command"), "Error!");
  EXPECT_EQ(Default(store, HKEY_LOCAL_MACHINE, "Software\\Classes\\htmlfile\\shell\\Vistrel\\command"),
            "/opt/My Media/Lorvane %1");
  EXPECT_EQ(RegistryKeyExists(store, HKEY_CLASSES_ROOT, "ftp"), "Error!");

  Set(store, HKEY_CLASSES_ROOT, "htmlfile\\shell", "opennew");
  Set(store, HKEY_CLASSES_ROOT, "ftp\\shell\\open\\command", "ftp.exe %1");
  Set(store, HKEY_LOCAL_MACHINE, "Software\\Classes\\ftp\\shell\\open\\command", "ftp.exe %1");
  SavePriorAssociation(store, "web");
  EXPECT_EQ(settings::GetSetting("PriorWeb"), "opennew");
  EXPECT_EQ(settings::GetSetting("PriorFTP"), "ftp.exe %1");
  SetAssociation(store, "web", "");
  EXPECT_EQ(Default(store, HKEY_CLASSES_ROOT, "ftp\\shell\\open\\command"), "/opt/My Media/Lorvane %1");
  RestoreAssociation(store, "web");
  EXPECT_EQ(Default(store, HKEY_CLASSES_ROOT, "htmlfile\\shell"), "open");
  EXPECT_EQ(Default(store, HKEY_LOCAL_MACHINE, "Software\\Classes\\https\\shell"), "open");
  EXPECT_EQ(Default(store, HKEY_CLASSES_ROOT, "ftp\\shell\\open\\command"), "ftp.exe %1");
  EXPECT_EQ(settings::GetSetting("PriorWeb", "absent"), "");
  EXPECT_EQ(settings::GetSetting("PriorFTP", "absent"), "");
}

TEST_F(AssociationsTest, SharedFileResetAndDvdPlayer) {
  Masks("00000000000000000000", "00000000000000000000", "00000000000000000000");
  ResetFileAssociations();
  RegistryStore saved;
  ASSERT_EQ(saved.Load(testenv::Root() + "/config/Vistrel/registry"), RegistryStore::LoadStatus::Loaded);
  EXPECT_EQ(Default(saved, HKEY_CLASSES_ROOT, ".vrd"), "Vistrel.File");
  EXPECT_EQ(Default(saved, HKEY_CLASSES_ROOT, "Vistrel.File\\shell\\Open\\command"), "/opt/My Media/Lorvane %1");

  // No viewer: the class, the paths and the handler are not written.
  App().ViewerProgramPath.clear();
  RegistryStore bare;
  ResetFileAssociations(bare);
  EXPECT_EQ(bare.SubKeys(HKEY_CLASSES_ROOT, ""), QStringList{".vrd"});

  EXPECT_TRUE(DvdPlayerPresent());
  testenv::HiddenApplication dvd(testenv::DvdApp);
  ASSERT_TRUE(dvd.Hidden());
  EXPECT_FALSE(DvdPlayerPresent());
}
