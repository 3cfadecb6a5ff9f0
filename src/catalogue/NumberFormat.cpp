#include "catalogue/NumberFormat.h"

#include <QLocale>
#include <cmath>
#include <limits>

namespace {

bool IsDigitPlace(QChar c) { return c == '#' || c == '0'; }

}  // namespace

QString FormatWithSeparator(qint64 value, const QString& pattern, const QString& separator) {
  qsizetype first = -1, last = -1;
  for (qsizetype i = 0; i < pattern.size(); ++i) {
    if (IsDigitPlace(pattern[i])) {
      if (first < 0) first = i;
      last = i;
    }
  }
  if (first < 0) return pattern;

  const QString prefix = pattern.left(first);
  const QString suffix = pattern.mid(last + 1);
  const QString places = pattern.mid(first, last - first + 1);
  const bool grouped = places.contains(',');
  // Digits from the first "0" on are always shown.
  const qsizetype firstZero = places.indexOf('0');
  qsizetype minimumDigits = 0;
  if (firstZero >= 0) {
    for (qsizetype i = firstZero; i < places.size(); ++i)
      if (IsDigitPlace(places[i])) ++minimumDigits;
  }

  // The magnitude as text; the lowest value has no positive counterpart.
  const bool negative = value < 0;
  QString digits = QString::number(negative ? -(quint64(value)) : quint64(value));
  if (digits == "0" && minimumDigits == 0) digits.clear();
  while (digits.size() < minimumDigits) digits.prepend('0');

  if (grouped) {
    for (qsizetype at = digits.size() - 3; at > 0; at -= 3) digits.insert(at, separator);
  }
  if (negative && !digits.isEmpty()) digits.prepend('-');
  return prefix + digits + suffix;
}

QString ThousandsSeparator() { return QLocale().groupSeparator(); }

QString FormatInteger(qint64 value, const QString& pattern) {
  return FormatWithSeparator(value, pattern, ThousandsSeparator());
}

QString Format(double value, const QString& pattern) {
  if (!std::isfinite(value)) return FormatInteger(0, pattern);
  const double rounded = std::round(value);
  if (rounded >= 9.2e18) return FormatInteger(std::numeric_limits<qint64>::max(), pattern);
  if (rounded <= -9.2e18) return FormatInteger(std::numeric_limits<qint64>::min(), pattern);
  return FormatInteger(qint64(rounded), pattern);
}
