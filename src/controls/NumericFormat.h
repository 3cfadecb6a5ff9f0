#pragma once
// Number texts of the number box: the plain form that is edited ("-1234.5")
// and the formatted form that is shown ("(1,234.50)").
//
// A format has one or two sections divided by ";": the first for positive
// values, the second for negative ones. In a section "#" shows a digit or
// nothing, "0" always shows a digit, "," shows when a digit stands to its
// left, "." divides whole from decimal places; any other character is shown
// as it stands. Digits beyond the whole places of the format are all shown,
// grouped by three when the section groups.

#include <QString>

namespace numeric {

// Keeps the digits and "." of the trimmed text; a leading "-" or "(" makes
// the result negative, written with a leading "-". A negative zero loses its
// sign. "(1,234.50)" gives "-1234.50", "abc" gives "".
QString UnformatNumeric(const QString& text);

// The text shown for a number: the text is made plain first, then laid into
// the section that fits its sign, rounded half up to the decimal places of
// the format (9.995 under "0.00" gives "10.00"). A text without a digit
// gives "". A number that rounds to zero takes the positive section.
QString FormatNumeric(const QString& text, const QString& format);

// The longest plain text that the format takes: the length of the section
// for the sign, less one for a negative section that ends in ")"; the whole
// format's length when it has one section only.
int FormatMaxLength(const QString& format, bool negative);

// The numeric value of a plain text, read as far as it makes a number
// ("" and "-" are 0, "12.5.3" is 12.5).
double NumericValue(const QString& plain);

}  // namespace numeric
