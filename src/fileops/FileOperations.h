#pragma once
// The copy and delete primitives that the browser and the viewers share.
// There is no move primitive: a move is a copy followed by a plain removal
// of the source, and the mover asks LastCopyComplete before it removes.
//
// Their answers go to the program-wide ReplaceAnswer as well: 7 means
// nothing was copied or deleted because the user or the medium refused.

#include <QString>

// Copies source over target with the checks of a copy: the target's folder
// must be writable ("The destination drive is write protected.", and
// ReplaceAnswer 7, when not); a read-only target is made writable; an
// existing target is shown beside the source in ReplaceVerify, and the
// answer No (ReplaceAnswer 7) stops. Otherwise ReplaceAnswer is 6, also when
// the copy itself then fails, which is never reported to the user.
//
// The data goes to a temporary file that replaces the target only once it
// is complete, so a failed copy leaves an old target as it was. True when
// the target now holds the whole source; the same answer stays readable
// from LastCopyComplete until the next copy.
bool CopyMediaFile(const QString& source, const QString& target);
bool LastCopyComplete();

// Deletes the file as the setting "DeleteOption" says: "0" into the
// desktop's wastebasket, "1" for good, "2" wiped. A file whose attributes
// can't be cleared is reported ("The file is write protected.", and
// ReplaceAnswer 7) and stays. True when the file is gone.
bool DeleteMediaFile(const QString& path);

// Moves the file into the wastebasket without asking; true when it went.
bool RecycleFile(const QString& path);

// Overwrites the file's space three times (random bytes, 0x55, 0xAA), each
// pass flushed to the disk, while DeleteMessage shows with the wait
// pointer; waits three seconds letting events run; then gives the file a
// random name of the same length and removes it. True when it is gone.
// The file is noted before its first byte is overwritten: a wipe cut off by
// the end of the program is finished (the file removed, under either name)
// at the next start.
bool WipeFile(const QString& path);

// Shows DeleteVerify modal and gives its answer: 6 yes, 7 no, 2 for Esc
// (or a window closed without an answer). The caller runs
// ResumeMouseWheel once it has the answer.
int VerifyDelete();
