#pragma once
// The smallest routines of the program: the parts of a path. They keep no
// state; the separator is "/".

#include <QString>

// Text after the last "/"; the whole path if there is none.
QString GetBaseName(const QString& path);
// Text before the last "/"; the whole path if there is none.
QString GetFolderPart(const QString& path);
// Text after the last ".", in lower case; the whole name, unchanged in
// case, if there is no ".".
QString GetFileExtension(const QString& name);
// GetBaseName(path) up to its last "."; all of it if there is none.
QString GetNameWithoutExtension(const QString& path);
// Folder and name joined by one "/", without doubling a trailing one.
QString JoinPath(const QString& folder, const QString& name);
