#include "controls/AutoCompleteFilter.h"

namespace autocomplete {

bool IsMatch(const QString& entry, const QString& typed) {
  return !entry.isEmpty() && entry.contains(typed, Qt::CaseInsensitive);
}

QList<int> Matches(const QStringList& master, const QString& typed) {
  QList<int> found;
  if (typed.isEmpty()) return found;
  QStringList shown;
  for (int i = 0; i < master.size(); ++i) {
    const QString& entry = master.at(i);
    if (!IsMatch(entry, typed) || shown.contains(entry, Qt::CaseInsensitive)) continue;
    shown << entry;
    found << i;
  }
  return found;
}

}  // namespace autocomplete
