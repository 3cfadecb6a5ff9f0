#pragma once
// Lets test failures print Qt texts and lists readably.

#include <QString>
#include <QStringList>
#include <ostream>

inline void PrintTo(const QString& text, std::ostream* os) { *os << '"' << text.toStdString() << '"'; }

inline void PrintTo(const QStringList& list, std::ostream* os) {
  *os << '{';
  for (qsizetype i = 0; i < list.size(); ++i) {
    if (i) *os << ", ";
    PrintTo(list[i], os);
  }
  *os << '}';
}
