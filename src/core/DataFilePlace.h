#pragma once
// Where the data file "Vistrel.VRD" lives.
//
// A program folder this user may write (a build run from its own folder, a
// copy unpacked somewhere of the user's) keeps the data file beside the
// program. An installed program folder is read-only and shared by every
// user: there each user has a data file of their own in
// $XDG_DATA_HOME/Vistrel, copied once from the program folder's fresh file.
// Compaction's "MediaTemp.VRD" lives beside the data file in either case.

#include <QString>

// Path of a file in the program folder: the folder, one "/" and the name
// (a root folder "/" gives "/name").
QString ProgramFolderFile(const QString& name);

// True for a program folder that users share: one this user cannot write,
// or one in the system's folders (/usr, /opt), which the package manager owns.
bool ProgramFolderIsShared(const QString& folder);

// True when the data file lives in the user's data folder, because the
// program folder is shared.
bool DataFileIsPerUser();
// The folder of the data file: the program folder, or $XDG_DATA_HOME/Vistrel.
QString DataFileFolder();
// "Vistrel.VRD" and "MediaTemp.VRD", the target of compaction.
QString DataFilePath();
QString DataFileTempPath();

// For a per-user data file that does not exist yet: copies the program
// folder's fresh file into place (a whole copy or nothing; an existing file
// is never replaced). True when the data file is there afterwards, or when
// it lives beside the program and needs no copy.
bool MakeUserDataFile();
