#pragma once
// The texts the browser shows about a tab's list: the tab's caption with its
// count and the count text under the page.

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
