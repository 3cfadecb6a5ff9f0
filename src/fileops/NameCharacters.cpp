#include "fileops/NameCharacters.h"

#include <algorithm>

bool IsDroppedNameCharacter(QChar c) {
  static const QString dropped = QStringLiteral("\"*./:<>?\\|");
  return dropped.contains(c);
}

QString DropNameCharacters(const QString& text) {
  QString kept;
  kept.reserve(text.size());
  for (QChar c : text)
    if (!IsDroppedNameCharacter(c)) kept += c;
  return kept;
}

QString DropInsertedNameCharacters(const QString& before, const QString& after, int& cursor) {
  return DropInsertedCharacters(before, after, cursor, IsDroppedNameCharacter);
}

QString DropInsertedCharacters(const QString& before, const QString& after, int& cursor,
                               bool (*isDropped)(QChar)) {
  // One edit replaces one stretch of the text: what both texts share at
  // the front and at the back is untouched, and the rest of `after` is
  // what the edit put in.
  const qsizetype shorter = std::min(before.size(), after.size());
  qsizetype front = 0;
  while (front < shorter && before.at(front) == after.at(front)) ++front;
  qsizetype back = 0;
  while (back < shorter - front &&
         before.at(before.size() - 1 - back) == after.at(after.size() - 1 - back))
    ++back;
  const QString inserted = after.mid(front, after.size() - front - back);
  QString kept;
  for (QChar c : inserted)
    if (!isDropped(c)) kept += c;
  if (kept.size() == inserted.size()) return after;
  cursor = int(front + kept.size());
  return after.left(front) + kept + after.right(back);
}
