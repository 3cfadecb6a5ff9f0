#pragma once
// Which entries of a master list match what has been typed into the
// auto-complete box: every entry that holds the text anywhere, compared
// without regard to case, in master list order, each text once.

#include <QList>
#include <QString>
#include <QStringList>

namespace autocomplete {

// Whether a master entry matches the typed text: not empty, and holding
// the text somewhere, upper and lower case alike.
bool IsMatch(const QString& entry, const QString& typed);

// Positions (from 0) of the matching entries, in master order. An entry
// that equals an earlier match but for case is left out: the list shows a
// text only once.
QList<int> Matches(const QStringList& master, const QString& typed);

}  // namespace autocomplete
