#pragma once
// Opening and closing the data file "Vistrel.VRD" (DataFilePlace.h says
// where it lives).

#include <QString>
#include <functional>

#include "core/DataFilePlace.h"

// Removes a compacted copy (and its journal) left at tempPath by a
// compaction that was cut off.
void RemoveLeftoverCompaction(const QString& tempPath);

// Opens the shared connection (App().DatabaseConnection), after removing a
// compacted copy left by a cut-off compaction and, for a per-user data file
// not made yet, copying the fresh one into place. A missing or
// unreadable file, or one that the program's password does not open, shows
// the stop message and gives false: the program must end. The file itself is
// left as it was.
// `stage` shows the stage text (the splash window's message line) when given.
bool OpenDataFile(const std::function<void(const QString&)>& stage = {});

// Closes the shared connection and compacts the file. Shows nothing; a
// failed compaction leaves the data file as it was.
void CloseDataFile();

// Writes a compacted copy of the data file into tempPath, checks the copy and
// only then puts it in the data file's place (a rename, so the data file is
// at every moment either the old file or the whole copy). A leftover tempPath
// is removed first; on any failure the copy goes and the data file stays untouched.
bool CompactDataFile(const QString& dataPath, const QString& tempPath);
