#pragma once
// The program's own registry: a small hierarchical store of keys and values,
// kept in one file that Vistrel shares with its sibling programs
// ($XDG_CONFIG_HOME/Vistrel/registry). It holds what the program registers
// for itself (file classes, application paths, handlers) and touches nothing
// of the desktop's own configuration.
//
// Three hives, known by their numbers: 0x80000000 (classes), 0x80000001
// (current user), 0x80000002 (local machine). Under each, keys form a tree;
// a key path names the keys from the hive down, separated by "\". Names are
// compared without regard to case, and a key or value keeps the spelling it
// was created with. Every key may hold a default value (the empty name) and
// named values; a value is a type number and its bytes (1 text, 2
// expandable text, 4 a 32-bit number, little-endian). The hives themselves
// hold no values.
//
// The file is text, one record a line, with a version in its first line and
// a count and checksum in its last; a file that is damaged in any way reads
// as no file at all. Saving writes a temporary file and renames it over the
// old one, so that a crash leaves the old file or the new one, whole.

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <QtGlobal>
#include <array>
#include <functional>
#include <optional>
#include <vector>

// The shared file: $XDG_CONFIG_HOME/Vistrel/registry.
QString DefaultRegistryPath();

class RegistryStore {
 public:
  static constexpr quint32 ClassesRoot = 0x80000000u;
  static constexpr quint32 CurrentUser = 0x80000001u;
  static constexpr quint32 LocalMachine = 0x80000002u;

  // Limits of the system this store stands for.
  static constexpr int MaxDepth = 512;          // keys below a hive
  static constexpr int MaxKeyNameLength = 255;  // characters of one key name
  static constexpr int MaxValueNameLength = 16383;
  static constexpr int MaxFileSize = 64 * 1024 * 1024;

  struct Value {
    quint32 Type = 0;
    QByteArray Data;
    bool operator==(const Value&) const = default;
  };

  enum class LoadStatus {
    Loaded,        // the file was read whole
    Missing,       // no file: an empty store
    Corrupt,       // damaged or truncated: an empty store
    NewerVersion,  // written by a later version: an empty store
    Unreadable,    // the file is there but can't be read: an empty store
  };

  static bool IsHive(quint32 hive);

  // Whether the key exists; the empty path is the hive itself.
  bool KeyExists(quint32 hive, const QString& path) const;
  // Creates the key and every missing key above it; true also when it
  // exists already. False for an unknown hive or a malformed path (an empty
  // name inside it, a name too long, too deep).
  bool CreateKey(quint32 hive, const QString& path);
  // Deletes the key, which must exist and hold no keys of its own; its
  // values go with it. A hive can't be deleted.
  bool DeleteKey(quint32 hive, const QString& path);
  // The value of that name in the key (the empty name is the default value);
  // nothing when the key or the value does not exist.
  std::optional<Value> QueryValue(quint32 hive, const QString& path, const QString& name) const;
  // Sets the value in an existing key; false when the key does not exist.
  bool SetValue(quint32 hive, const QString& path, const QString& name, const Value& value);

  // The names of the keys directly below, and of the values in a key, as
  // spelled, in case-insensitive order; empty when the key does not exist.
  QStringList SubKeys(quint32 hive, const QString& path) const;
  QStringList ValueNames(quint32 hive, const QString& path) const;

  bool IsEmpty() const;
  void Clear();
  // Grows by one at every change of the content; a write that leaves the
  // content as it was does not count.
  quint64 Changes() const { return changes_; }

  // Equal content: the same keys, spelled alike, with the same values.
  bool operator==(const RegistryStore& other) const { return hives_ == other.hives_; }

  // The file's bytes, and the store read back from them. The reader takes
  // any bytes and never reads past them; anything but a whole, well-formed
  // file of this version gives nothing (and the status says why).
  QByteArray ToBytes() const;
  static std::optional<RegistryStore> FromBytes(QByteArrayView bytes, LoadStatus* status = nullptr);

  // Replaces the content with the file's; on any failure the store is
  // empty. A missing file is no failure.
  LoadStatus Load(const QString& path = DefaultRegistryPath());
  // Writes the file atomically, making its folder when missing; false
  // (and the old file untouched) when it can't be written.
  bool Save(const QString& path = DefaultRegistryPath()) const;

 private:
  struct Node {
    QString Name;    // as spelled when created
    QString Folded;  // Name without case, the key of the order
    std::vector<Node> Children;
    struct NamedValue {
      QString Name, Folded;
      Value Data;
      bool operator==(const NamedValue&) const = default;
    };
    std::vector<NamedValue> Values;
    bool operator==(const Node&) const = default;
  };

  Node* Root(quint32 hive);
  const Node* Root(quint32 hive) const;
  const Node* Find(quint32 hive, const QString& path) const;
  Node* Find(quint32 hive, const QString& path);
  static void Write(const Node& node, quint32 hive, const QString& path, QByteArray& out,
                    int& records);

  std::array<Node, 3> hives_;
  quint64 changes_ = 0;
};

// The names of a key path ("DVD\shell\" gives "DVD", "shell"); nothing when
// the path is malformed: an empty name anywhere but at the end, a name
// longer than the system allows, or more names than it allows.
std::optional<QStringList> SplitRegistryPath(const QString& path);

// Reads the file, lets the work change the store, and saves it when the
// store changed and the file may be replaced (not when it was written by a
// later version or could not be read). Programs sharing the file take
// turns through a lock file beside it; when the lock can't be had in a
// moment the work goes on regardless. The work's result is passed back.
QString UpdateRegistryFile(const QString& path, const std::function<QString(RegistryStore&)>& work);
