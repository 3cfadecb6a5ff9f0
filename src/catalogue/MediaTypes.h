#pragma once
// What a file is, told by the extension of its name alone: the extension
// tables, the one-letter media code, the selection masks and the file-type
// lists that the search and album dialogs offer.

#include <QString>
#include <QStringList>

#include "core/MediaTables.h"

// The program-wide set of tables, held by the program-wide state.
MediaTableSet& MediaTables();

// Fills the picture, video, audio and web tables (at start).
void FillMediaTables();
// Fills the exterior video and document tables (when the browser loads).
void FillExteriorTables();

// The media code of a file name, path or web address: "P" picture, "I" icon,
// "C" cursor, "V" video, "A" audio, "D" document, "R" Real media, "W" web,
// "U" unknown.
QString GetMediaType(const QString& name);

// False only for a ".jpg", ".jpeg" or ".jpe" file whose last two bytes are
// not the end-of-image marker FF D9 (a one-byte or unreadable file among
// them). Files of other extensions pass without being read.
bool IsValidJpegEnd(const QString& path);

// The character at a position (1 is the first) of a selection mask; ""
// for a position outside the mask.
QString MaskCharacter(const QString& mask, int position);
// True when the mask holds "1" at the position.
bool MaskBitSet(const QString& mask, int position);

// The entries of the file-type combo box of the search window (21) and of
// the album editor (20), in list order.
const QStringList& FindFilesTypeList();
const QStringList& AlbumEditTypeList();
