#pragma once
// The number patterns of the program's texts: "###,###,##0" for sizes,
// "###,### " for running counts, "##0" for volumes, "#0" for an hour or a
// minor version, "00" and "0000" for the parts of a date.
//
// In a pattern "0" is a digit that is always shown, "#" a digit shown only
// when the number needs it, and a "," between digit places groups the
// digits by thousands. Anything before the first or after the last digit
// place is copied as it stands. A number with more digits than places shows
// them all.

#include <QString>
#include <QtGlobal>
#include <concepts>

// Formats with the thousands separator of the user's locale.
QString FormatInteger(qint64 value, const QString& pattern);
template <std::integral T>
QString Format(T value, const QString& pattern) {
  return FormatInteger(qint64(value), pattern);
}
// Rounds to a whole number first, halves away from zero.
QString Format(double value, const QString& pattern);
// Formats with the given thousands separator.
QString FormatWithSeparator(qint64 value, const QString& pattern, const QString& separator);
// The thousands separator of the user's locale ("," in the C locale).
QString ThousandsSeparator();
