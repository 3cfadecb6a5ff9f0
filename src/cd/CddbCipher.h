#pragma once
// The reversible scrambling of the stored CDDB proxy password. The options
// form saves the password with EncryptText and the title lookup reads it back
// with DecryptText, both with CddbPasswordKey.
//
// Each character of the text is XORed with the next character of a key
// stream and written as two upper-case hexadecimal digits. The key stream is
// the key's character codes written in decimal one after another ("s" gives
// "115"), so every stream character is a digit (codes 48 to 57); the stream
// starts again at its end. An empty key stands for the text reversed.
//
// Characters are taken by their Latin-1 code, so that each one fits in two
// digits; a text with a character outside Latin-1 is enciphered by its UTF-8
// bytes instead, and deciphering gives it back whole.

#include <QString>

inline constexpr const char* CddbPasswordKey = "sablekey417";

QString EncryptText(const QString& text, const QString& key);

// Reads the text two hexadecimal digits at a time (a last lone digit on its
// own); a pair that isn't hexadecimal counts as 0. An empty key stands for
// the enciphered text reversed, so text enciphered with an empty key does not
// come back: the program always passes a key.
QString DecryptText(const QString& text, const QString& key);
