#pragma once
// The sort of the browser's lists, and the sort keys put in front of the
// names before it.
//
// A list to sort holds its entries and, at the end, the scratch element ""
// (so Count + 1 elements). Entries are compared as whole texts, key, ";" and
// name together, lower-cased and character by character. Texts that compare
// equal come out in the reverse of the order they came in. After sorting the
// keys are taken off: each element keeps what follows its first ";", and the
// scratch element ends at the far end again. A name with a ";" of its own
// therefore loses its front part when it had no key in front of it (name
// order, descending); that is how the list has always worked.

#include <QDate>
#include <QString>
#include <QStringList>

void SortFileList(QStringList& list, bool descending);

// Entries before sorting, by sort order:
// 2: the lower-cased extension, or the whole name when it holds no ".",
// then ";" and the name.
QString ExtensionSortEntry(const QString& name);
// 3: the creation day as "yyyymmdd", ";" and the name. A file whose date
// can't be read gets "00000000", as if dated before every other.
QString DateSortEntry(const QDate& created, const QString& name);
// 4: the length in at least nine digits, ";" and the name. Keys are text, so
// a length of ten digits sorts by its leading digits.
QString LengthSortEntry(qint64 length, const QString& name);
