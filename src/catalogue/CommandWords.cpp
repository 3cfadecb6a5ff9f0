#include "catalogue/CommandWords.h"

QStringList CommandWords(const QString& command) {
  QStringList words;
  QString word;
  bool quoted = false, started = false;
  for (const QChar c : command) {
    if (c == '"') {
      quoted = !quoted;
      started = true;
    } else if (c.isSpace() && !quoted) {
      if (started) words << word;
      word.clear();
      started = false;
    } else {
      word += c;
      started = true;
    }
  }
  if (started) words << word;
  return words;
}
