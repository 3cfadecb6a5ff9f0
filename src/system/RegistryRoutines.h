#pragma once
// The five small registry routines the program reads and writes its
// registry through. Each answers with a text: "Success!" or "Error!" (the
// value reader with the value's text, "Error!", or the empty text). Callers
// compare these texts literally; they never reach the screen.
//
// Each routine comes twice: on a store the caller holds, and on the shared
// registry file (read, worked on, and written back at once when something
// changed).
//
// Two keys ask about the machine rather than about the program's own
// entries, and the readers (RegistryKeyExists, QueryRegistryValue) answer
// them from the machine, whatever the store holds:
//   - classes "DVD\shell" (default value "play") with "DVD\shell\play" and
//     "DVD\shell\play\command" (the command of the desktop's DVD handler)
//     exist when the desktop has an application for x-content/video-dvd;
//     nothing else exists below "DVD\shell";
//   - machine "Software\L&H\TruVoice" (default value "espeak-ng") exists
//     when the speech engine is there; nothing exists below it.
// Their parents ("DVD", "Software\L&H") exist then too. The writers work on
// the store alone.

#include <QString>
#include <QtGlobal>

class RegistryStore;

inline constexpr quint32 HKEY_CLASSES_ROOT = 0x80000000u;
inline constexpr quint32 HKEY_CURRENT_USER = 0x80000001u;
inline constexpr quint32 HKEY_LOCAL_MACHINE = 0x80000002u;

// Value types.
inline constexpr int REG_SZ = 1;
inline constexpr int REG_EXPAND_SZ = 2;
inline constexpr int REG_DWORD = 4;

// Deletes the key `subKey` below `parentKey` (it may name a path); it must
// hold no keys of its own. "Error!" also when the parent does not exist.
QString DeleteRegistryKey(RegistryStore& store, quint32 hive, const QString& parentKey,
                          const QString& subKey);
// Creates the key with every missing key above it; an existing key is
// success too.
QString CreateRegistryKey(RegistryStore& store, quint32 hive, const QString& key);
QString RegistryKeyExists(const RegistryStore& store, quint32 hive, const QString& key);
// The value of that name (the empty name is the key's default value):
// "Error!" when the key or the value is missing; a text value without its
// terminator, and empty when it holds less than one character and its
// terminator; an expandable text whole, terminator included; a number in
// decimal cut to its first three characters (12345 reads "123"); the empty
// text for any other type.
QString QueryRegistryValue(const RegistryStore& store, quint32 hive, const QString& key,
                           const QString& valueName);
// Writes a text (REG_SZ; it is stored with a terminator, as the system adds
// the one the count leaves out) or a 32-bit number (REG_DWORD, given in
// decimal) into an existing key: "Error!" when the key does not exist or the
// number is not one. Any other type writes nothing and is "Success!". Never
// creates the key.
QString SetRegistryValue(RegistryStore& store, quint32 hive, const QString& key,
                         const QString& valueName, int type, const QString& value);

// The same on the shared registry file.
QString DeleteRegistryKey(quint32 hive, const QString& parentKey, const QString& subKey);
QString CreateRegistryKey(quint32 hive, const QString& key);
QString RegistryKeyExists(quint32 hive, const QString& key);
QString QueryRegistryValue(quint32 hive, const QString& key, const QString& valueName);
QString SetRegistryValue(quint32 hive, const QString& key, const QString& valueName, int type,
                         const QString& value);
