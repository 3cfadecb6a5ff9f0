#include "system/RegistryRoutines.h"

#include <QtEndian>

#include "platform/DesktopHandlers.h"
#include "platform/RegistryStore.h"
#include "platform/SpeechEngine.h"

namespace {

const QString Success = QStringLiteral("Success!");
const QString Failure = QStringLiteral("Error!");

// What the machine says about a key that asks about it.
struct MachineKey {
  bool Answers = false;  // the key is the machine's to answer
  bool Exists = false;
  QString Default;  // its default value; empty when it has none
};

// The command the desktop runs for a video DVD; empty when nothing handles one.
QString DvdHandlerCommand() {
  const platform::DesktopApplication handler =
      platform::DefaultApplicationFor(QStringLiteral("x-content/video-dvd"));
  if (!handler.IsValid()) return {};
  if (!handler.Exec.isEmpty()) return handler.Exec;
  if (!handler.Executable.isEmpty()) return handler.Executable;
  return handler.Id;
}

QStringList FoldedNames(const QString& key) {
  QStringList names = SplitRegistryPath(key).value_or(QStringList());
  for (QString& name : names) name = name.toCaseFolded();
  return names;
}

MachineKey AskMachine(quint32 hive, const QString& key) {
  MachineKey answer;
  const QStringList names = FoldedNames(key);
  if (hive == HKEY_CLASSES_ROOT && names.size() >= 2 && names[0] == u"dvd" &&
      names[1] == u"shell") {
    answer.Answers = true;
    const bool verb = names.size() >= 3 && names[2] == u"play";
    const bool command = names.size() == 4 && verb && names[3] == u"command";
    if (names.size() == 2 || (names.size() == 3 && verb) || command) {
      const QString handler = DvdHandlerCommand();
      answer.Exists = !handler.isEmpty();
      if (names.size() == 2) answer.Default = QStringLiteral("play");
      if (command) answer.Default = handler;
    }
  } else if (hive == HKEY_LOCAL_MACHINE && names.size() >= 3 && names[0] == u"software" &&
             names[1] == u"l&h" && names[2] == u"truvoice") {
    answer.Answers = true;
    if (names.size() == 3) {
      answer.Exists = platform::SpeechEngineAvailable();
      answer.Default = QStringLiteral("espeak-ng");
    }
  }
  return answer;
}

// A parent of the machine's keys, which exists when they do.
bool MachineParentExists(quint32 hive, const QString& key) {
  const QStringList names = FoldedNames(key);
  if (hive == HKEY_CLASSES_ROOT && names == QStringList{QStringLiteral("dvd")})
    return !DvdHandlerCommand().isEmpty();
  if (hive == HKEY_LOCAL_MACHINE &&
      names == QStringList{QStringLiteral("software"), QStringLiteral("l&h")})
    return platform::SpeechEngineAvailable();
  return false;
}

bool KeyExists(const RegistryStore& store, quint32 hive, const QString& key) {
  const MachineKey machine = AskMachine(hive, key);
  if (machine.Answers) return machine.Exists;
  return store.KeyExists(hive, key) || MachineParentExists(hive, key);
}

QString JoinKey(QString parent, const QString& sub) {
  if (parent.endsWith(u'\\')) parent.chop(1);
  return parent.isEmpty() ? sub : parent + u'\\' + sub;
}

RegistryStore LoadShared() {
  RegistryStore store;
  store.Load(DefaultRegistryPath());
  return store;
}

}  // namespace

QString DeleteRegistryKey(RegistryStore& store, quint32 hive, const QString& parentKey,
                          const QString& subKey) {
  if (!RegistryStore::IsHive(hive) || !store.KeyExists(hive, parentKey) || subKey.isEmpty())
    return Failure;
  return store.DeleteKey(hive, JoinKey(parentKey, subKey)) ? Success : Failure;
}

QString CreateRegistryKey(RegistryStore& store, quint32 hive, const QString& key) {
  return store.CreateKey(hive, key) ? Success : Failure;
}

QString RegistryKeyExists(const RegistryStore& store, quint32 hive, const QString& key) {
  return RegistryStore::IsHive(hive) && KeyExists(store, hive, key) ? Success : Failure;
}

QString QueryRegistryValue(const RegistryStore& store, quint32 hive, const QString& key,
                           const QString& valueName) {
  if (!RegistryStore::IsHive(hive)) return Failure;
  const MachineKey machine = AskMachine(hive, key);
  if (machine.Answers) {
    if (!machine.Exists || !valueName.isEmpty() || machine.Default.isEmpty()) return Failure;
    return machine.Default;
  }
  if (!KeyExists(store, hive, key)) return Failure;
  const auto value = store.QueryValue(hive, key, valueName);
  if (!value) return Failure;
  const QByteArray& data = value->Data;
  switch (value->Type) {
    case REG_SZ:
    case REG_EXPAND_SZ:
      // The buffer holds the text and its terminator: less than two bytes
      // is no text at all.
      if (data.size() < 2) return {};
      return QString::fromUtf8(value->Type == REG_SZ ? data.first(data.size() - 1) : data);
    case REG_DWORD:
      if (data.size() != 4) return {};
      // Only the first three characters of the number are given back.
      return QString::number(qFromLittleEndian<qint32>(data.constData())).left(3);
    default:
      return {};
  }
}

QString SetRegistryValue(RegistryStore& store, quint32 hive, const QString& key,
                         const QString& valueName, int type, const QString& value) {
  if (!store.KeyExists(hive, key)) return Failure;
  RegistryStore::Value stored;
  stored.Type = quint32(type);
  if (type == REG_SZ) {
    stored.Data = value.toUtf8();
    if (!stored.Data.isEmpty()) stored.Data.append('\0');
  } else if (type == REG_DWORD) {
    bool ok = false;
    const qint64 number = value.trimmed().toLongLong(&ok);
    if (!ok || number < -2147483648LL || number > 4294967295LL) return Failure;
    stored.Data.resize(4);
    qToLittleEndian<quint32>(quint32(number), stored.Data.data());
  } else {
    return Success;
  }
  return store.SetValue(hive, key, valueName, stored) ? Success : Failure;
}

// ---- On the shared file ----------------------------------------------------------

QString DeleteRegistryKey(quint32 hive, const QString& parentKey, const QString& subKey) {
  return UpdateRegistryFile(DefaultRegistryPath(), [&](RegistryStore& store) {
    return DeleteRegistryKey(store, hive, parentKey, subKey);
  });
}

QString CreateRegistryKey(quint32 hive, const QString& key) {
  return UpdateRegistryFile(DefaultRegistryPath(), [&](RegistryStore& store) {
    return CreateRegistryKey(store, hive, key);
  });
}

QString RegistryKeyExists(quint32 hive, const QString& key) {
  return RegistryKeyExists(LoadShared(), hive, key);
}

QString QueryRegistryValue(quint32 hive, const QString& key, const QString& valueName) {
  return QueryRegistryValue(LoadShared(), hive, key, valueName);
}

QString SetRegistryValue(quint32 hive, const QString& key, const QString& valueName, int type,
                         const QString& value) {
  return UpdateRegistryFile(DefaultRegistryPath(), [&](RegistryStore& store) {
    return SetRegistryValue(store, hive, key, valueName, type, value);
  });
}
