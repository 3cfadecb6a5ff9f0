#pragma once
// The desktop's wastebasket (the freedesktop Trash of the user's data
// folder, or of the file's own file system), from which the desktop's file
// manager can restore a file to where it was.

#include <QString>

namespace platform {

// Moves the file into the Trash without asking; true when it is gone from
// its folder and lies in the Trash with the record of its original path.
// A failure leaves the file where it was.
bool MoveToTrash(const QString& path);

}  // namespace platform
