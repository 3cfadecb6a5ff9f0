#pragma once
// The texts the browser shows about a tab's list: the tab's caption with its
// count, the count text under the page, and the data popup of a cell.

#include <QString>
#include <QtGlobal>

// "Pictures", "Videos", "Audios" or "Documents".
QString TabWord(int tab);
// The caption once the tab's first page is filled: "Pictures (1,234)".
QString TabCaption(int tab, qint32 count);
// The count text of an empty tab: "0 picture files available".
QString EmptyCountText(int tab);
// The count text of a page: "41 to 80 of 100 picture files".
QString PageCountText(int tab, qint32 pageStart, qint32 pageSize, qint32 count);

// The full path of a list entry: the entry itself while an album is on
// display, else the entry in the folder on display.
QString EntryPath(const QString& entry);
// The data popup of entry `index` of a tab's list: the file's information,
// or a short text for a track of an audio CD; "" outside the list.
QString CellTooltip(int tab, qint32 index);
