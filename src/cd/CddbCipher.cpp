#include "cd/CddbCipher.h"

#include <QStringDecoder>
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

// The codes enciphered: a text within Latin-1 character by character, any
// other text by its UTF-8 bytes, so that every code fits in two digits.
QByteArray CodesOf(const QString& text) {
  const bool latin1 = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x100; });
  return latin1 ? text.toLatin1() : text.toUtf8();
}

// Codes deciphered back into text: UTF-8 where they are UTF-8 of a text
// beyond Latin-1, else one character per code.
QString TextOf(const QByteArray& codes) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  const QString utf8 = decoder.decode(codes);
  const bool wide = std::any_of(utf8.begin(), utf8.end(), [](QChar c) { return c.unicode() >= 0x100; });
  if (!decoder.hasError() && wide) return utf8;
  return QString::fromLatin1(codes);
}

}  // namespace

QString EncryptText(const QString& text, const QString& key) {
  const QString stream = KeyStream(text, key);
  if (stream.isEmpty()) return QString();  // only an empty text gets here
  QString result;
  result.reserve(text.size() * 2);
  qsizetype at = 0;
  for (const char byte : CodesOf(text)) {
    const int value = int(uchar(byte)) ^ stream.at(at).unicode();
    at = (at + 1) % stream.size();
    result += QString::number(value, 16).toUpper().rightJustified(2, QLatin1Char('0'));
  }
  return result;
}

QString DecryptText(const QString& text, const QString& key) {
  const QString stream = KeyStream(text, key);
  if (stream.isEmpty()) return QString();
  QByteArray codes;
  codes.reserve(text.size() / 2 + 1);
  qsizetype at = 0;
  for (qsizetype i = 0; i < text.size(); i += 2) {
    bool ok = false;
    int value = text.mid(i, 2).toInt(&ok, 16);
    if (!ok) value = 0;
    codes += char((value ^ stream.at(at).unicode()) & 0xFF);
    at = (at + 1) % stream.size();
  }
  return TextOf(codes);
}
