#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utime.h>

#include <QFile>
#include <QRandomGenerator>
#include <QtTest/QTest>

#include "platform/RegistryStore.h"
#include "platform/SpeechEngine.h"
#include "support/DesktopWorld.h"
#include "support/TestEnv.h"
#include "system/RegistryRoutines.h"

namespace {

constexpr quint32 Hkcr = 0x80000000u, Hkcu = 0x80000001u, Hklm = 0x80000002u;

QByteArray ReadAll(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

// The file's checksum, CRC-32 as zip files have it.
quint32 Crc32(const QByteArray& bytes) {
  quint32 crc = 0xFFFFFFFFu;
  for (const char ch : bytes) {
    crc ^= quint8(ch);
    for (int k = 0; k < 8; ++k) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
  }
  return ~crc;
}

// A file of these records with a right count and checksum.
QByteArray FileOf(const QByteArray& records) {
  QByteArray bytes = "VistrelRegistry\t1\n" + records;
  bytes += "End\t" + QByteArray::number(records.count('\n')) + "\t" +
           QByteArray::number(Crc32(bytes), 16).toUpper().rightJustified(8, '0') + "\n";
  return bytes;
}

// A store with something of everything: three hives, spellings, every
// value type, and bytes the file must escape.
RegistryStore Sample() {
  RegistryStore store;
  store.CreateKey(Hkcr, "DVD\\shell\\Play\\command");
  store.CreateKey(Hkcr, ".bmp");
  store.CreateKey(Hkcu, "Software\\CLASSES\\AudioCD");
  store.CreateKey(Hklm, "Software\\100% sure\\Tab\there");
  store.SetValue(Hkcr, "DVD\\shell", "", {1, QByteArray("play\0", 5)});
  store.SetValue(Hkcr, ".bmp", "Content Type", {1, QByteArray("image/bmp\0", 10)});
  store.SetValue(Hkcu, "Software\\CLASSES\\AudioCD", "Größe", {4, QByteArray("\x39\x30\x00\x00", 4)});
  store.SetValue(Hklm, "Software\\100% sure\\Tab\there", "line\nbreak", {2, QByteArray("a\tb\r\n%\x7f\xff\0", 9)});
  store.SetValue(Hklm, "Software\\100% sure", "raw", {3, QByteArray()});
  return store;
}

}  // namespace

TEST(RegistryStoreTest, FileKeepsEverythingInItsOwnFormat) {
  const QString path = testenv::Root() + "/config/Vistrel/registry";
  ASSERT_TRUE(Sample().Save(path));
  RegistryStore loaded;
  EXPECT_EQ(loaded.Load(path), RegistryStore::LoadStatus::Loaded);
  EXPECT_TRUE(loaded == Sample());
  EXPECT_EQ(loaded.QueryValue(Hklm, "Software\\100% sure\\Tab\there", "LINE\nBREAK")->Data,
            QByteArray("a\tb\r\n%\x7f\xff\0", 9));
  // The file itself, as the sibling programs read it too.
  RegistryStore small;
  small.CreateKey(Hkcr, "DVD");
  small.SetValue(Hkcr, "DVD", "", {1, QByteArray("play\0", 5)});
  small.CreateKey(Hklm, "Software\\L&H");
  small.SetValue(Hklm, "Software\\L&H", "Count", {4, QByteArray("\x39\x30\x00\x00", 4)});
  EXPECT_EQ(small.ToBytes(), QByteArray("VistrelRegistry\t1\nK\t80000000\tDVD\nV\t\t1\tplay%00\n"
                                        "K\t80000002\tSoftware\nK\t80000002\tSoftware\\L&H\n"
                                        "V\tCount\t4\t90%00%00\nEnd\t5\t67BCFE72\n"));
  EXPECT_EQ(loaded.Load(testenv::Root() + "/nothing"), RegistryStore::LoadStatus::Missing);
  EXPECT_TRUE(loaded.IsEmpty());
}

TEST(RegistryStoreTest, PathsIgnoreCaseAndKeepTheFirstSpelling) {
  RegistryStore store;
  EXPECT_TRUE(store.CreateKey(Hklm, "Software\\Classes\\.BMP"));
  EXPECT_TRUE(store.CreateKey(Hklm, "SOFTWARE\\CLASSES\\.bmp\\Sub"));
  EXPECT_TRUE(store.KeyExists(Hklm, "software\\classes\\.Bmp\\SUB\\"));
  EXPECT_EQ(store.SubKeys(Hklm, "software\\classes"), QStringList{".BMP"});
  EXPECT_FALSE(store.KeyExists(Hkcr, "Software"));
  store.CreateKey(Hkcr, "zeta");
  store.CreateKey(Hkcr, "Alpha");
  EXPECT_EQ(store.SubKeys(Hkcr, ""), (QStringList{"Alpha", "zeta"}));
  store.SetValue(Hkcr, "ALPHA", "Content Type", {1, "a"});
  store.SetValue(Hkcr, "alpha", "CONTENT TYPE", {1, "b"});
  EXPECT_EQ(store.ValueNames(Hkcr, "Alpha"), QStringList{"Content Type"});
  EXPECT_EQ(store.QueryValue(Hkcr, "alpha", "content type")->Data, "b");
  for (const QString& bad : {QString("a\\\\b"), QString("\\a"), QString(256, u'x')})
    EXPECT_FALSE(store.CreateKey(Hkcr, bad)) << bad.toStdString();
  EXPECT_FALSE(store.CreateKey(0x80000003u, "a"));
  EXPECT_FALSE(store.SetValue(Hkcr, "", "x", {1, "a"}));
  // A key with keys below it stays; a leaf goes with its values.
  EXPECT_FALSE(store.DeleteKey(Hklm, "Software\\Classes\\.bmp"));
  EXPECT_TRUE(store.DeleteKey(Hklm, "software\\classes\\.bmp\\sub"));
  EXPECT_TRUE(store.DeleteKey(Hkcr, "alpha"));
  EXPECT_FALSE(store.KeyExists(Hkcr, "Alpha"));
}

TEST(RegistryStoreTest, RoutinesGiveTheirExactTexts) {
  RegistryStore store;
  EXPECT_EQ(CreateRegistryKey(store, HKEY_CLASSES_ROOT, "AudioCD\\shell\\Play\\command"), "Success!");
  EXPECT_EQ(CreateRegistryKey(store, HKEY_CLASSES_ROOT, "audiocd\\shell"), "Success!");
  EXPECT_EQ(CreateRegistryKey(store, 0x80000005u, "x"), "Error!");
  EXPECT_EQ(RegistryKeyExists(store, HKEY_CLASSES_ROOT, "AUDIOCD\\Shell\\"), "Success!");
  EXPECT_EQ(RegistryKeyExists(store, HKEY_CURRENT_USER, "AudioCD"), "Error!");
  // Text: less its terminator; one character is a buffer of two bytes.
  const auto set = [&](const QString& name, int type, const QString& value) {
    return SetRegistryValue(store, HKEY_CLASSES_ROOT, "AudioCD", name, type, value);
  };
  const auto query = [&](const QString& name) { return QueryRegistryValue(store, HKEY_CLASSES_ROOT, "AudioCD", name); };
  EXPECT_EQ(set("", 1, "play"), "Success!");
  EXPECT_EQ(query(""), "play");
  EXPECT_EQ(set("One", 1, "x"), "Success!");
  EXPECT_EQ(store.QueryValue(Hkcr, "AudioCD", "One")->Data, QByteArray("x\0", 2));
  set("Empty", 1, "");
  EXPECT_EQ(query("Empty"), "");
  EXPECT_EQ(query("Absent"), "Error!");
  // Numbers: cut to their first three characters.
  EXPECT_EQ(set("N", 4, "12345"), "Success!");
  EXPECT_EQ(store.QueryValue(Hkcr, "AudioCD", "N")->Data, QByteArray("\x39\x30\x00\x00", 4));
  EXPECT_EQ(query("N"), "123");
  set("N", 4, "-4096");
  EXPECT_EQ(query("N"), "-40");
  EXPECT_EQ(set("N", 4, "many"), "Error!");
  // Other types are not written, yet succeed; stored ones read as told.
  EXPECT_EQ(set("X", 2, "%TEMP%"), "Success!");
  EXPECT_EQ(query("X"), "Error!");
  store.SetValue(Hkcr, "AudioCD", "X", {2, QByteArray("%TEMP%\0", 7)});
  EXPECT_EQ(query("X"), QString("%TEMP%") + QChar(0));
  store.SetValue(Hkcr, "AudioCD", "B", {3, "\x01\x02"});
  EXPECT_EQ(query("B"), "");
  // The writer never makes the key it writes into.
  EXPECT_EQ(SetRegistryValue(store, HKEY_CLASSES_ROOT, "New", "", 1, "a"), "Error!");
  EXPECT_EQ(RegistryKeyExists(store, HKEY_CLASSES_ROOT, "New"), "Error!");
  EXPECT_EQ(DeleteRegistryKey(store, HKEY_CLASSES_ROOT, "Missing", "shell"), "Error!");
  EXPECT_EQ(DeleteRegistryKey(store, HKEY_CLASSES_ROOT, "AudioCD", "shell"), "Error!");
  EXPECT_EQ(DeleteRegistryKey(store, HKEY_CLASSES_ROOT, "AudioCD", "shell\\play\\command"), "Success!");
  EXPECT_EQ(RegistryKeyExists(store, HKEY_CLASSES_ROOT, "AudioCD\\shell\\Play"), "Success!");
}

TEST(RegistryStoreTest, SharedFileIsWrittenOnChangeAndMachineKeysAnswerFromTheMachine) {
  const QString path = testenv::Root() + "/config/Vistrel/registry";
  EXPECT_EQ(QueryRegistryValue(HKEY_CLASSES_ROOT, ".bmp", ""), "Error!");
  EXPECT_FALSE(QFile::exists(path));
  EXPECT_EQ(CreateRegistryKey(HKEY_CLASSES_ROOT, ".bmp"), "Success!");
  EXPECT_EQ(SetRegistryValue(HKEY_CLASSES_ROOT, ".BMP", "", 1, "Vistrel.File"), "Success!");
  EXPECT_EQ(QueryRegistryValue(HKEY_CLASSES_ROOT, ".bmp", ""), "Vistrel.File");
  // Nothing changed: the file is not written again.
  const utimbuf old{1000000000, 1000000000};
  ASSERT_EQ(utime(QFile::encodeName(path).constData(), &old), 0);
  EXPECT_EQ(SetRegistryValue(HKEY_CLASSES_ROOT, ".bmp", "", 1, "Vistrel.File"), "Success!");
  EXPECT_EQ(QFileInfo(path).lastModified().toSecsSinceEpoch(), 1000000000);

  // What the store holds under the machine's keys does not count.
  RegistryStore store;
  store.CreateKey(Hkcr, "DVD\\shell\\open\\command");
  store.SetValue(Hkcr, "DVD\\shell", "", {1, QByteArray("open\0", 5)});
  store.CreateKey(Hklm, "Software\\L&H\\TruVoice\\Voices");
  EXPECT_EQ(QueryRegistryValue(store, HKEY_CLASSES_ROOT, "dvd\\SHELL", ""), "play");
  EXPECT_EQ(QueryRegistryValue(store, HKEY_CLASSES_ROOT, "DVD\\shell\\play\\command", ""), "vistrel-test-dvd %U");
  EXPECT_EQ(RegistryKeyExists(store, HKEY_CLASSES_ROOT, "DVD\\shell\\open\\command"), "Error!");
  {
    testenv::HiddenApplication dvd(testenv::DvdApp);
    ASSERT_TRUE(dvd.Hidden());
    EXPECT_EQ(RegistryKeyExists(store, HKEY_CLASSES_ROOT, "DVD\\shell"), "Error!");
    EXPECT_EQ(QueryRegistryValue(store, HKEY_CLASSES_ROOT, "DVD\\shell", ""), "Error!");
    EXPECT_EQ(RegistryKeyExists(HKEY_CLASSES_ROOT, "DVD"), "Error!");
  }
  platform::SetSpeechEngineProbe([] { return true; });
  EXPECT_EQ(RegistryKeyExists(HKEY_LOCAL_MACHINE, "Software\\L&H\\TruVoice"), "Success!");
  EXPECT_EQ(QueryRegistryValue(store, HKEY_LOCAL_MACHINE, "software\\l&h\\truvoice", ""), "espeak-ng");
  EXPECT_EQ(RegistryKeyExists(store, HKEY_LOCAL_MACHINE, "Software\\L&H\\TruVoice\\Voices"), "Error!");
  platform::SetSpeechEngineProbe([] { return false; });
  EXPECT_EQ(RegistryKeyExists(store, HKEY_LOCAL_MACHINE, "Software\\L&H\\TruVoice"), "Error!");
  platform::SetSpeechEngineProbe({});
}

TEST(RegistryStoreTest, DamagedFilesReadAsEmptyAndAreNeverTrusted) {
  const QByteArray whole = Sample().ToBytes();
  // Every truncation and every changed byte is caught.
  for (qsizetype size = 0; size < whole.size(); ++size)
    EXPECT_FALSE(RegistryStore::FromBytes(QByteArrayView(whole).first(size))) << size;
  for (qsizetype i = 0; i < whole.size(); ++i) {
    QByteArray changed = whole;
    changed[i] = char(changed[i] ^ 0x04);
    EXPECT_FALSE(RegistryStore::FromBytes(changed)) << i;
  }
  // With a right checksum: records out of order, a value before any key, a
  // key without its parent, a name twice, an unknown hive, broken escapes
  // and numbers, a raw control byte, broken UTF-8.
  ASSERT_TRUE(RegistryStore::FromBytes(FileOf("K\t80000000\ta\nV\tx\t1\t%41\n")));
  for (const char* records :
       {"K\t80000000\tb\nK\t80000000\ta\n", "V\tx\t1\t\n", "K\t80000000\ta\nK\t80000000\tA\n",
        "K\t80000003\ta\n", "K\t80000000\ta\nV\tx\t1\t%4g\n", "K\t80000000\ta\nV\tx\t4294967296\t\n"})
    EXPECT_FALSE(RegistryStore::FromBytes(FileOf(records))) << records;

  // The program goes on: the next write replaces a damaged file, kept aside.
  const QString path = testenv::Root() + "/config/Vistrel/registry";
  testenv::MakeFile(path, whole.left(whole.size() / 2));
  RegistryStore store = Sample();
  EXPECT_EQ(store.Load(path), RegistryStore::LoadStatus::Corrupt);
  EXPECT_TRUE(store.IsEmpty());
  EXPECT_EQ(CreateRegistryKey(HKEY_CLASSES_ROOT, ".gif"), "Success!");
  EXPECT_EQ(RegistryKeyExists(HKEY_CLASSES_ROOT, ".gif"), "Success!");
  EXPECT_EQ(ReadAll(path + ".damaged"), whole.left(whole.size() / 2));
  // A later version's file is read as empty and left as it is.
  testenv::MakeFile(path, "VistrelRegistry\t2\nanything\n");
  EXPECT_EQ(store.Load(path), RegistryStore::LoadStatus::NewerVersion);
  EXPECT_EQ(CreateRegistryKey(HKEY_CLASSES_ROOT, ".png"), "Success!");
  EXPECT_EQ(ReadAll(path), "VistrelRegistry\t2\nanything\n");
}

TEST(RegistryStoreTest, UnwritableFileFailsQuietly) {
  // The configuration folder is a file: nothing can be made below it.
  testenv::MakeFile(testenv::Root() + "/blocked", "user's file");
  EXPECT_FALSE(Sample().Save(testenv::Root() + "/blocked/Vistrel/registry"));
  qputenv("XDG_CONFIG_HOME", (testenv::Root() + "/blocked").toUtf8());
  EXPECT_EQ(CreateRegistryKey(HKEY_CLASSES_ROOT, ".bmp"), "Success!");
  EXPECT_EQ(RegistryKeyExists(HKEY_CLASSES_ROOT, ".bmp"), "Error!");
  EXPECT_EQ(ReadAll(testenv::Root() + "/blocked"), "user's file");
  qputenv("XDG_CONFIG_HOME", (testenv::Root() + "/config").toUtf8());
  // A folder where the file should be is neither read nor replaced.
  const QString path = testenv::Root() + "/config/Vistrel/registry";
  QDir().mkpath(path);
  RegistryStore store;
  EXPECT_EQ(store.Load(path), RegistryStore::LoadStatus::Unreadable);
  EXPECT_FALSE(Sample().Save(path));
}

TEST(RegistryStoreTest, KilledWhileSavingLeavesOneWholeFile) {
  // Two stores large enough that a save takes a while.
  RegistryStore first, second;
  for (int i = 0; i < 3000; ++i) {
    const QString key = QString("Software\\Classes\\.ext%1").arg(i);
    first.CreateKey(Hklm, key);
    second.CreateKey(Hklm, key);
    first.SetValue(Hklm, key, "", {1, QByteArray("first value\0", 12)});
    second.SetValue(Hklm, key, "", {1, QByteArray("second\0", 7)});
  }
  const QString path = testenv::Root() + "/config/Vistrel/registry";
  ASSERT_TRUE(first.Save(path));
  QRandomGenerator random(4711);
  for (int round = 0; round < 20; ++round) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      for (;;) {
        first.Save(path);
        second.Save(path);
      }
    }
    usleep(useconds_t(2000 + random.bounded(30000)));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    RegistryStore loaded;
    ASSERT_EQ(loaded.Load(path), RegistryStore::LoadStatus::Loaded) << round;
    EXPECT_TRUE(loaded == first || loaded == second) << round;
  }
}
