#pragma once
// Files that a run of the program may leave behind when it ends abruptly
// (killed, or the machine stopped) are noted while the work runs, and what
// the notes name is removed at the next start. The notes are small files in
// $XDG_DATA_HOME/Vistrel/leftovers, one per piece of work, written before
// the work makes anything and removed once it is done.
//
// Three kinds of leftover are known: the program's own temporary files
// beside a target (a copy or a tag edit in the making, named with a prefix
// that starts with ".vistrel-"), an empty probe folder, and a file on its way
// out (a wipe), which is
// removed only while it is still the very file that was noted (same device,
// inode and making time), so that a file the user has put in its place since
// is kept.

#include <QString>

namespace platform {

// The start of every temporary file name the program makes beside a user's
// file; the cleaning removes no other name through a folder note.
inline constexpr const char* LeftoverPrefix = ".vistrel-";

// Notes that files of `folder` whose names start with `prefix` (which must
// start with LeftoverPrefix) may be left behind. The note's name, for
// ForgetLeftover; "" when the note could not be written (the work goes on
// without it).
QString NoteTemporaries(const QString& folder, const QString& prefix);

// Notes that the file at `path` (not followed when it is a link) is to go,
// under that name or under `nextPath`, a name it is about to take. "" when
// the file is not there or the note could not be written.
QString NoteFileToRemove(const QString& path, const QString& nextPath = QString());

// Notes that the folder at `path`, a probe the program makes and takes away
// at once, may be left behind; it is removed only while it is empty.
QString NoteProbeFolder(const QString& path);

// The work is done: its note goes. An empty name does nothing.
void ForgetLeftover(const QString& note);

// Removes what every note names, then the notes; for the program's start,
// before any work is under way. The number of files removed.
int CleanLeftovers();

}  // namespace platform
