#include "browser/SortFileList.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include "catalogue/PathParts.h"

namespace {

QString TextBehindFirstSemicolon(const QString& text) {
  const qsizetype semicolon = text.indexOf(';');
  return semicolon < 0 ? text : text.mid(semicolon + 1);
}

}  // namespace

// The list's order is that of an insertion sort working up from the bottom,
// which moves each element down past every element that is not below it
// (ascending), or not above it (descending). Each new element thus lands in
// front of the ones equal to it, so equal texts end in reverse order of
// arrival. A stable sort of the reversed list gives exactly that order, in
// n log n steps instead of n squared.
void SortFileList(QStringList& list, bool descending) {
  const qsizetype count = list.size();
  if (count == 0) return;

  std::vector<QString> lowered;
  lowered.reserve(size_t(count));
  for (const QString& text : list) lowered.push_back(text.toLower());

  std::vector<qsizetype> order(static_cast<size_t>(count));
  std::iota(order.rbegin(), order.rend(), 0);
  std::stable_sort(order.begin(), order.end(), [&](qsizetype a, qsizetype b) {
    const int compared = lowered[size_t(a)].compare(lowered[size_t(b)], Qt::CaseSensitive);
    return descending ? compared > 0 : compared < 0;
  });

  QStringList sorted;
  sorted.reserve(count);
  for (qsizetype index : order) sorted.append(list[index]);

  // Take the keys off. Ascending, the scratch "" has come first: every text
  // moves down one place and the top element keeps its text as it stands.
  // Descending, the scratch is last already and stays as it is.
  if (descending) {
    for (qsizetype i = 0; i < count - 1; ++i) sorted[i] = TextBehindFirstSemicolon(sorted[i]);
  } else {
    for (qsizetype i = 1; i < count; ++i) sorted[i - 1] = TextBehindFirstSemicolon(sorted[i]);
  }
  list = std::move(sorted);
}

QString ExtensionSortEntry(const QString& name) {
  // GetFileExtension lower-cases an extension but leaves a name without "."
  // as it is; the comparison lower-cases it anyway.
  return GetFileExtension(name) + ';' + name;
}

QString DateSortEntry(const QDate& created, const QString& name) {
  if (!created.isValid()) return QStringLiteral("00000000;") + name;
  return QString::asprintf("%04d%02d%02d;", created.year(), created.month(), created.day()) + name;
}

QString LengthSortEntry(qint64 length, const QString& name) {
  return QString::asprintf("%09lld;", static_cast<long long>(length)) + name;
}
