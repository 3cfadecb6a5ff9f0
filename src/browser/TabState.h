#pragma once
// What the browser window keeps about the page of each of its four tabs. The
// tab numbers and the lists behind the tabs are the browser session's.

#include <QString>
#include <QtGlobal>

#include "core/BrowserSession.h"

struct TabState {
  qint16 PageSize = 1;   // cells on one page
  qint32 Count = 0;      // entries in the tab's list
  qint32 PageStart = 0;  // list index of the first cell of the page on display
  qint32 PageFirst = 0;  // list indices of the first and last cell filled
  qint32 PageLast = 0;
  bool Highlighted = false;
  QString Pattern;  // the tab's file masks, each followed by ";"
};
