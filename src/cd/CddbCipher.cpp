#include "cd/CddbCipher.h"

#include <algorithm>

namespace {

QString Reversed(const QString& text) {
  QString reversed = text;
  std::reverse(reversed.begin(), reversed.end());
  return reversed;
}

// The key's character codes in decimal, one after the other.
QString KeyStream(const QString& text, const QString& key) {
  const QString effective = key.isEmpty() ? Reversed(text) : key;
  QString stream;
  for (QChar c : effective) stream += QString::number(c.unicode());
  return stream;
}

}  // namespace

QString EncryptText(const QString& text, const QString& key) {
  const QString stream = KeyStream(text, key);
  if (stream.isEmpty()) return QString();  // only an empty text gets here
  QString result;
  result.reserve(text.size() * 2);
  qsizetype at = 0;
  for (QChar c : text) {
    const int code = c.unicode() < 0x100 ? c.unicode() : '?';
    const int value = code ^ stream.at(at).unicode();
    at = (at + 1) % stream.size();
    result += QString::number(value, 16).toUpper().rightJustified(2, QLatin1Char('0'));
  }
  return result;
}

QString DecryptText(const QString& text, const QString& key) {
  const QString stream = KeyStream(text, key);
  if (stream.isEmpty()) return QString();
  QString result;
  result.reserve(text.size() / 2 + 1);
  qsizetype at = 0;
  for (qsizetype i = 0; i < text.size(); i += 2) {
    bool ok = false;
    int value = text.mid(i, 2).toInt(&ok, 16);
    if (!ok) value = 0;
    result += QChar(char16_t((value ^ stream.at(at).unicode()) & 0xFF));
    at = (at + 1) % stream.size();
  }
  return result;
}
