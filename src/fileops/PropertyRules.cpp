#include "fileops/PropertyRules.h"

#include <QLocale>

QString AccessedDateText(const QDateTime& accessed) {
  if (!accessed.isValid()) return QString();
  return QLocale::c().toString(accessed, QStringLiteral("MM/dd/yyyy "));
}

QString AccessedTimeText(const QDateTime& accessed) {
  if (!accessed.isValid()) return QString();
  return QLocale::c().toString(accessed, QStringLiteral("hh:mm:ss AP "));
}

bool IsHiddenName(const QString& name) { return name.startsWith(QLatin1Char('.')); }

QString NameForHidden(const QString& name, bool hidden) {
  if (hidden) return IsHiddenName(name) ? name : QLatin1Char('.') + name;
  qsizetype dots = 0;
  while (dots < name.size() && name.at(dots) == QLatin1Char('.')) ++dots;
  return dots == name.size() ? name : name.mid(dots);
}
