#pragma once
// Whether this user may make and replace files in a folder.

#include <QString>

namespace platform {

// True when the folder exists and this user may create, rename and remove
// files in it. Tests may answer for the file system (Services).
bool CanWriteFolder(const QString& folder);

}  // namespace platform
