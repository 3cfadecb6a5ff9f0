#include "core/BrowserSession.h"

QString BrowserSession::Entry(int tab, qint32 index) const {
  const QStringList& files = List(tab);
  return index >= 0 && index < files.size() ? files[index] : QString();
}

bool BrowserSession::HasEntry(int tab, qint32 index) const { return !Entry(tab, index).isEmpty(); }
