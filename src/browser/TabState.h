#pragma once
// What the browser keeps about each of its four tabs.

#include <QString>
#include <QtGlobal>

// Tabs are numbered as they stand: 1 Pictures, 2 Videos, 3 Audios,
// 4 Documents.
inline constexpr int PicturesTab = 1;
inline constexpr int VideosTab = 2;
inline constexpr int AudiosTab = 3;
inline constexpr int DocumentsTab = 4;
inline constexpr int TabCount = 4;

struct TabState {
  qint16 PageSize = 1;   // cells on one page
  qint32 Count = 0;      // entries in the tab's list
  qint32 PageStart = 0;  // list index of the first cell of the page on display
  qint32 PageFirst = 0;  // list indices of the first and last cell filled
  qint32 PageLast = 0;
  bool Highlighted = false;
  QString Pattern;  // the tab's file masks, each followed by ";"
};
