#include "platform/RegistryStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <algorithm>

// The file, version 1. Every line ends in "\n", fields are separated by a
// tab, and a field is its UTF-8 bytes with "%", the control bytes and DEL
// written as "%" and two hex digits:
//   VistrelRegistry<TAB>1
//   K<TAB>hive in 8 hex digits<TAB>key path             a key
//   V<TAB>name<TAB>type in decimal<TAB>data bytes        a value of that key
//   End<TAB>number of K and V lines<TAB>CRC-32 of every byte before this line
// Keys come parent first, the keys below one key and the values of one key
// in case-insensitive order, as the store keeps them; the reader insists on
// that order, which also rules out a name given twice.

namespace {

constexpr char Magic[] = "VistrelRegistry";
constexpr int Version = 1;

QString Fold(const QString& name) { return name.toCaseFolded(); }

int HiveIndex(quint32 hive) {
  switch (hive) {
    case RegistryStore::ClassesRoot:
      return 0;
    case RegistryStore::CurrentUser:
      return 1;
    case RegistryStore::LocalMachine:
      return 2;
    default:
      return -1;
  }
}

constexpr quint32 HiveNumbers[3] = {RegistryStore::ClassesRoot, RegistryStore::CurrentUser,
                                    RegistryStore::LocalMachine};

quint32 Crc32(QByteArrayView bytes) {
  static const auto table = [] {
    std::array<quint32, 256> t{};
    for (quint32 i = 0; i < 256; ++i) {
      quint32 c = i;
      for (int k = 0; k < 8; ++k) c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
      t[i] = c;
    }
    return t;
  }();
  quint32 crc = 0xFFFFFFFFu;
  for (const char ch : bytes) crc = table[(crc ^ quint8(ch)) & 0xFF] ^ (crc >> 8);
  return crc ^ 0xFFFFFFFFu;
}

bool NeedsEscape(quint8 byte) { return byte < 0x20 || byte == 0x7F || byte == '%'; }

void AppendEscaped(QByteArray& out, QByteArrayView bytes) {
  static const char hex[] = "0123456789ABCDEF";
  for (const char ch : bytes) {
    const quint8 byte = quint8(ch);
    if (NeedsEscape(byte)) {
      out += '%';
      out += hex[byte >> 4];
      out += hex[byte & 0xF];
    } else {
      out += ch;
    }
  }
}

int HexDigit(char ch) {
  if (ch >= '0' && ch <= '9') return ch - '0';
  if (ch >= 'A' && ch <= 'F') return ch - 'A' + 10;
  return -1;
}

// A field's bytes; false when it holds a raw control byte or a broken escape.
bool Unescape(QByteArrayView field, QByteArray& out) {
  out.clear();
  out.reserve(field.size());
  for (qsizetype i = 0; i < field.size(); ++i) {
    const quint8 byte = quint8(field[i]);
    if (byte == '%') {
      if (i + 2 >= field.size()) return false;
      const int high = HexDigit(field[i + 1]), low = HexDigit(field[i + 2]);
      if (high < 0 || low < 0) return false;
      out += char(high * 16 + low);
      i += 2;
    } else if (byte < 0x20 || byte == 0x7F) {
      return false;
    } else {
      out += char(byte);
    }
  }
  return true;
}

// A field that holds a name or a path: escaped, well-formed UTF-8.
bool DecodeText(QByteArrayView field, QString& out) {
  QByteArray bytes;
  if (!Unescape(field, bytes)) return false;
  out = QString::fromUtf8(bytes);
  return out.toUtf8() == bytes;
}

// A decimal number without sign or leading zero that fits 32 bits.
bool ParseNumber(QByteArrayView field, quint32& out) {
  if (field.isEmpty() || field.size() > 10 || (field.size() > 1 && field[0] == '0')) return false;
  quint64 value = 0;
  for (const char ch : field) {
    if (ch < '0' || ch > '9') return false;
    value = value * 10 + quint64(ch - '0');
  }
  if (value > 0xFFFFFFFFull) return false;
  out = quint32(value);
  return true;
}

// Eight upper-case hex digits.
bool ParseHex8(QByteArrayView field, quint32& out) {
  if (field.size() != 8) return false;
  quint32 value = 0;
  for (const char ch : field) {
    const int digit = HexDigit(ch);
    if (digit < 0) return false;
    value = value * 16 + quint32(digit);
  }
  out = value;
  return true;
}

QList<QByteArrayView> Fields(QByteArrayView line) {
  QList<QByteArrayView> fields;
  qsizetype start = 0;
  for (qsizetype i = 0; i <= line.size(); ++i) {
    if (i == line.size() || line[i] == '\t') {
      fields << line.sliced(start, i - start);
      start = i + 1;
    }
  }
  return fields;
}

template <typename Vector>
auto LowerBound(Vector& items, const QString& folded) {
  return std::lower_bound(items.begin(), items.end(), folded,
                          [](const auto& item, const QString& key) { return item.Folded < key; });
}

}  // namespace

std::optional<QStringList> SplitRegistryPath(const QString& path) {
  QStringList names;
  if (path.isEmpty()) return names;
  names = path.split(u'\\');
  // One separator at the end is allowed, as the system allows it.
  if (names.size() > 1 && names.last().isEmpty()) names.removeLast();
  if (names.size() > RegistryStore::MaxDepth) return std::nullopt;
  for (const QString& name : names)
    if (name.isEmpty() || name.size() > RegistryStore::MaxKeyNameLength) return std::nullopt;
  return names;
}

bool RegistryStore::IsHive(quint32 hive) { return HiveIndex(hive) >= 0; }

RegistryStore::Node* RegistryStore::Root(quint32 hive) {
  const int index = HiveIndex(hive);
  return index < 0 ? nullptr : &hives_[size_t(index)];
}

const RegistryStore::Node* RegistryStore::Root(quint32 hive) const {
  const int index = HiveIndex(hive);
  return index < 0 ? nullptr : &hives_[size_t(index)];
}

const RegistryStore::Node* RegistryStore::Find(quint32 hive, const QString& path) const {
  const Node* node = Root(hive);
  const auto names = SplitRegistryPath(path);
  if (!node || !names) return nullptr;
  for (const QString& name : *names) {
    const QString folded = Fold(name);
    const auto it = LowerBound(node->Children, folded);
    if (it == node->Children.end() || it->Folded != folded) return nullptr;
    node = &*it;
  }
  return node;
}

RegistryStore::Node* RegistryStore::Find(quint32 hive, const QString& path) {
  return const_cast<Node*>(std::as_const(*this).Find(hive, path));
}

bool RegistryStore::KeyExists(quint32 hive, const QString& path) const {
  return Find(hive, path) != nullptr;
}

bool RegistryStore::CreateKey(quint32 hive, const QString& path) {
  Node* node = Root(hive);
  const auto names = SplitRegistryPath(path);
  if (!node || !names) return false;
  for (const QString& name : *names) {
    const QString folded = Fold(name);
    auto it = LowerBound(node->Children, folded);
    if (it == node->Children.end() || it->Folded != folded) {
      Node child;
      child.Name = name;
      child.Folded = folded;
      it = node->Children.insert(it, std::move(child));
      ++changes_;
    }
    node = &*it;
  }
  return true;
}

bool RegistryStore::DeleteKey(quint32 hive, const QString& path) {
  const auto names = SplitRegistryPath(path);
  if (!names || names->isEmpty()) return false;
  QStringList parentNames = *names;
  const QString folded = Fold(parentNames.takeLast());
  Node* parent = Find(hive, parentNames.join(u'\\'));
  if (!parent) return false;
  const auto it = LowerBound(parent->Children, folded);
  if (it == parent->Children.end() || it->Folded != folded || !it->Children.empty()) return false;
  parent->Children.erase(it);
  ++changes_;
  return true;
}

std::optional<RegistryStore::Value> RegistryStore::QueryValue(quint32 hive, const QString& path,
                                                              const QString& name) const {
  const Node* node = Find(hive, path);
  if (!node) return std::nullopt;
  const QString folded = Fold(name);
  const auto it = LowerBound(node->Values, folded);
  if (it == node->Values.end() || it->Folded != folded) return std::nullopt;
  return it->Data;
}

bool RegistryStore::SetValue(quint32 hive, const QString& path, const QString& name,
                             const Value& value) {
  Node* node = Find(hive, path);
  if (!node || node == Root(hive) || name.size() > MaxValueNameLength) return false;
  const QString folded = Fold(name);
  auto it = LowerBound(node->Values, folded);
  if (it != node->Values.end() && it->Folded == folded) {
    if (it->Data == value) return true;
    it->Data = value;
  } else {
    node->Values.insert(it, Node::NamedValue{name, folded, value});
  }
  ++changes_;
  return true;
}

QStringList RegistryStore::SubKeys(quint32 hive, const QString& path) const {
  QStringList names;
  if (const Node* node = Find(hive, path))
    for (const Node& child : node->Children) names << child.Name;
  return names;
}

QStringList RegistryStore::ValueNames(quint32 hive, const QString& path) const {
  QStringList names;
  if (const Node* node = Find(hive, path))
    for (const auto& value : node->Values) names << value.Name;
  return names;
}

bool RegistryStore::IsEmpty() const {
  return std::all_of(hives_.begin(), hives_.end(),
                     [](const Node& hive) { return hive.Children.empty(); });
}

void RegistryStore::Clear() {
  if (IsEmpty()) return;
  for (Node& hive : hives_) hive.Children.clear();
  ++changes_;
}

// ---- The file ------------------------------------------------------------------

void RegistryStore::Write(const Node& node, quint32 hive, const QString& path, QByteArray& out,
                          int& records) {
  for (const Node& child : node.Children) {
    const QString childPath = path.isEmpty() ? child.Name : path + u'\\' + child.Name;
    out += "K\t" + QByteArray::number(hive, 16).toUpper().rightJustified(8, '0') + '\t';
    AppendEscaped(out, childPath.toUtf8());
    out += '\n';
    ++records;
    for (const auto& value : child.Values) {
      out += "V\t";
      AppendEscaped(out, value.Name.toUtf8());
      out += '\t' + QByteArray::number(value.Data.Type) + '\t';
      AppendEscaped(out, value.Data.Data);
      out += '\n';
      ++records;
    }
    Write(child, hive, childPath, out, records);
  }
}

QByteArray RegistryStore::ToBytes() const {
  QByteArray out = QByteArray(Magic) + '\t' + QByteArray::number(Version) + '\n';
  int records = 0;
  for (size_t i = 0; i < hives_.size(); ++i) Write(hives_[i], HiveNumbers[i], {}, out, records);
  const quint32 crc = Crc32(out);
  out += "End\t" + QByteArray::number(records) + '\t' +
         QByteArray::number(crc, 16).toUpper().rightJustified(8, '0') + '\n';
  return out;
}

std::optional<RegistryStore> RegistryStore::FromBytes(QByteArrayView bytes, LoadStatus* status) {
  const auto fail = [status](LoadStatus why) -> std::optional<RegistryStore> {
    if (status) *status = why;
    return std::nullopt;
  };
  if (bytes.size() > MaxFileSize) return fail(LoadStatus::Corrupt);

  RegistryStore store;
  Node* current = nullptr;  // the key of the last K line
  quint32 records = 0;
  qsizetype pos = 0;
  bool first = true;
  while (pos < bytes.size()) {
    const qsizetype end = bytes.indexOf('\n', pos);
    if (end < 0) return fail(LoadStatus::Corrupt);
    const qsizetype lineStart = pos;
    const QList<QByteArrayView> fields = Fields(bytes.sliced(pos, end - pos));
    pos = end + 1;

    if (first) {
      quint32 version = 0;
      if (fields.size() != 2 || fields[0] != QByteArrayView(Magic) ||
          !ParseNumber(fields[1], version))
        return fail(LoadStatus::Corrupt);
      if (version > quint32(Version)) return fail(LoadStatus::NewerVersion);
      if (version != quint32(Version)) return fail(LoadStatus::Corrupt);
      first = false;
      continue;
    }

    const QByteArrayView tag = fields[0];
    if (tag == "K" && fields.size() == 3) {
      quint32 hive = 0;
      QString path;
      if (!ParseHex8(fields[1], hive) || !IsHive(hive) || !DecodeText(fields[2], path))
        return fail(LoadStatus::Corrupt);
      const auto names = SplitRegistryPath(path);
      if (!names || names->isEmpty() || path.endsWith(u'\\')) return fail(LoadStatus::Corrupt);
      QStringList parentNames = *names;
      const QString name = parentNames.takeLast();
      Node* parent = store.Find(hive, parentNames.join(u'\\'));
      if (!parent) return fail(LoadStatus::Corrupt);
      // Parents come first and names in order: the new key goes last.
      const QString folded = Fold(name);
      if (!parent->Children.empty() && !(parent->Children.back().Folded < folded))
        return fail(LoadStatus::Corrupt);
      Node child;
      child.Name = name;
      child.Folded = folded;
      parent->Children.push_back(std::move(child));
      current = &parent->Children.back();
    } else if (tag == "V" && fields.size() == 4) {
      QString name;
      quint32 type = 0;
      QByteArray data;
      if (!current || !DecodeText(fields[1], name) || name.size() > MaxValueNameLength ||
          !ParseNumber(fields[2], type) || !Unescape(fields[3], data))
        return fail(LoadStatus::Corrupt);
      const QString folded = Fold(name);
      if (!current->Values.empty() && !(current->Values.back().Folded < folded))
        return fail(LoadStatus::Corrupt);
      current->Values.push_back(Node::NamedValue{name, folded, Value{type, data}});
    } else if (tag == "End" && fields.size() == 3) {
      quint32 count = 0, crc = 0;
      if (!ParseNumber(fields[1], count) || count != records || !ParseHex8(fields[2], crc) ||
          crc != Crc32(bytes.first(lineStart)) || pos != bytes.size())
        return fail(LoadStatus::Corrupt);
      store.changes_ = 0;
      if (status) *status = LoadStatus::Loaded;
      return store;
    } else {
      return fail(LoadStatus::Corrupt);
    }
    ++records;
  }
  return fail(LoadStatus::Corrupt);
}

RegistryStore::LoadStatus RegistryStore::Load(const QString& path) {
  const quint64 changes = changes_;
  *this = RegistryStore();
  changes_ = changes + 1;
  QFile file(path);
  if (!QFileInfo::exists(path)) return LoadStatus::Missing;
  if (!file.open(QIODevice::ReadOnly)) return LoadStatus::Unreadable;
  const QByteArray bytes = file.read(qint64(MaxFileSize) + 1);
  if (file.error() != QFileDevice::NoError) return LoadStatus::Unreadable;
  LoadStatus status = LoadStatus::Corrupt;
  if (auto loaded = FromBytes(bytes, &status)) {
    hives_ = std::move(loaded->hives_);
  }
  return status;
}

bool RegistryStore::Save(const QString& path) const {
  if (!QDir().mkpath(QFileInfo(path).absolutePath())) return false;
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return false;
  const QByteArray bytes = ToBytes();
  if (file.write(bytes) != bytes.size()) {
    file.cancelWriting();
    return false;
  }
  return file.commit();
}

QString DefaultRegistryPath() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         "/Vistrel/registry";
}

QString UpdateRegistryFile(const QString& path,
                           const std::function<QString(RegistryStore&)>& work) {
  QDir().mkpath(QFileInfo(path).absolutePath());
  QLockFile lock(path + ".lock");
  lock.setStaleLockTime(10000);
  (void)lock.tryLock(2000);

  RegistryStore store;
  const RegistryStore::LoadStatus status = store.Load(path);
  const quint64 before = store.Changes();
  const QString result = work(store);
  if (store.Changes() != before && status != RegistryStore::LoadStatus::NewerVersion &&
      status != RegistryStore::LoadStatus::Unreadable) {
    // A damaged file is kept aside before the new one takes its place.
    if (status == RegistryStore::LoadStatus::Corrupt) {
      QFile::remove(path + ".damaged");
      QFile::copy(path, path + ".damaged");
    }
    store.Save(path);
  }
  return result;
}
