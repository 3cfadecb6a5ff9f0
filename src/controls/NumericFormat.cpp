#include "controls/NumericFormat.h"

#include <QList>
#include <algorithm>
#include <QStringList>

namespace numeric {

namespace {

bool IsPlaceholder(QChar c) { return c == u'#' || c == u'0'; }

// Adds one in the last place of a string of digits; a carry out of the
// first place makes the string one digit longer.
QString AddOneInLastPlace(QString digits) {
  for (qsizetype i = digits.size() - 1; i >= 0; --i) {
    if (digits[i] == u'9') {
      digits[i] = u'0';
    } else {
      digits[i] = QChar(digits[i].unicode() + 1);
      return digits;
    }
  }
  return u'1' + digits;
}

QString StripLeadingZeros(const QString& digits) {
  qsizetype first = 0;
  while (first < digits.size() && digits[first] == u'0') ++first;
  return digits.mid(first);
}

bool AllZeros(const QString& digits) {
  for (QChar c : digits)
    if (c != u'0') return false;
  return true;
}

struct Rounded {
  QString whole;     // without leading zeros; "" for a zero whole part
  QString fraction;  // exactly as many digits as the section has places
};

Rounded RoundToPlaces(const QString& whole, const QString& fraction, int places) {
  QString kept = fraction.left(places);
  const bool up = fraction.size() > places && fraction[places] >= u'5';
  kept = kept.leftJustified(places, u'0');
  if (!up) return {StripLeadingZeros(whole), kept};
  const QString sum = AddOneInLastPlace(whole + kept);
  const qsizetype wholeLength = sum.size() - places;
  return {StripLeadingZeros(sum.left(wholeLength)), sum.mid(wholeLength)};
}

// Lays the whole digits into the whole part of a section, walking both from
// the right.
QString LayWholePart(const QString& pattern, const QString& digits) {
  qsizetype leftmostPlace = -1;
  for (qsizetype i = 0; i < pattern.size(); ++i)
    if (IsPlaceholder(pattern[i])) {
      leftmostPlace = i;
      break;
    }
  // The section groups when a "," stands between digit places.
  bool groups = false;
  if (leftmostPlace >= 0) {
    const qsizetype comma = pattern.indexOf(u',', leftmostPlace);
    if (comma >= 0) {
      for (qsizetype i = comma + 1; i < pattern.size(); ++i)
        if (IsPlaceholder(pattern[i])) groups = true;
    }
  }

  QString reversed;
  qsizetype next = digits.size() - 1;  // next digit to place, from the right
  int placed = 0;
  auto placeRest = [&] {
    while (next >= 0) {
      if (groups && placed > 0 && placed % 3 == 0) reversed += u',';
      reversed += digits[next--];
      ++placed;
    }
  };
  for (qsizetype i = pattern.size() - 1; i >= 0; --i) {
    const QChar c = pattern[i];
    if (c == u'0') {
      reversed += next >= 0 ? digits[next--] : QChar(u'0');
      ++placed;
    } else if (c == u'#') {
      if (next >= 0) {
        reversed += digits[next--];
        ++placed;
      }
    } else if (c == u',') {
      bool digitToTheLeft = next >= 0;
      for (qsizetype j = 0; j < i && !digitToTheLeft; ++j)
        if (pattern[j] == u'0') digitToTheLeft = true;
      if (digitToTheLeft && placed > 0) reversed += u',';
    } else {
      reversed += c;
    }
    if (i == leftmostPlace) placeRest();
  }
  // Without whole places the digits still stand before the point.
  std::reverse(reversed.begin(), reversed.end());
  if (leftmostPlace < 0) return reversed + digits;
  return reversed;
}

QString LayFraction(const QString& pattern, const QString& digits) {
  // "#" places drop the zeros at the end of the number; "0" places keep
  // them. Characters that are not places stay where they stand.
  struct Piece {
    QChar c;
    bool place;
    bool droppable;
  };
  QList<Piece> pieces;
  qsizetype k = 0;
  for (QChar c : pattern) {
    if (IsPlaceholder(c)) {
      const QChar digit = digits[k++];
      pieces.append({digit, true, c == u'#' && digit == u'0'});
    } else if (c != u',') {
      pieces.append({c, false, false});
    }
  }
  for (qsizetype i = pieces.size() - 1; i >= 0; --i) {
    if (!pieces[i].place) continue;
    if (!pieces[i].droppable) break;
    pieces.removeAt(i);
  }
  QString text;
  for (const Piece& piece : pieces) text += piece.c;
  return text;
}

QString FormatSection(const QString& whole, const QString& fraction, const QString& section) {
  const qsizetype point = section.indexOf(u'.');
  const QString wholePattern = point >= 0 ? section.left(point) : section;
  const QString fractionPattern = point >= 0 ? section.mid(point + 1) : QString();
  int places = 0;
  for (QChar c : fractionPattern)
    if (IsPlaceholder(c)) ++places;
  const Rounded r = RoundToPlaces(whole, fraction, places);
  QString text = LayWholePart(wholePattern, r.whole);
  if (point >= 0) text += u'.' + LayFraction(fractionPattern, r.fraction);
  return text.trimmed();
}

}  // namespace

QString UnformatNumeric(const QString& text) {
  const QString trimmed = text.trimmed();
  if (trimmed.isEmpty()) return QString();
  QString kept;
  for (QChar c : trimmed)
    if ((c >= u'0' && c <= u'9') || c == u'.') kept += c;
  const bool negative = trimmed[0] == u'-' || trimmed[0] == u'(';
  if (negative && NumericValue(kept) != 0.0) return u'-' + kept;
  return kept;
}

double NumericValue(const QString& plain) {
  QString number;
  qsizetype i = 0;
  const QString t = plain.trimmed();
  if (i < t.size() && t[i] == u'-') number += t[i++];
  bool point = false;
  for (; i < t.size(); ++i) {
    const QChar c = t[i];
    if (c >= u'0' && c <= u'9') {
      number += c;
    } else if (c == u'.' && !point) {
      point = true;
      number += c;
    } else {
      break;
    }
  }
  bool ok = false;
  const double value = number.toDouble(&ok);
  return ok ? value : 0.0;
}

QString FormatNumeric(const QString& text, const QString& format) {
  const QString plain = UnformatNumeric(text);
  bool negative = plain.startsWith(u'-');
  QString digits = negative ? plain.mid(1) : plain;
  // A second point ends the number, as when it is read for its value.
  const qsizetype point = digits.indexOf(u'.');
  QString whole = point >= 0 ? digits.left(point) : digits;
  QString fraction = point >= 0 ? digits.mid(point + 1) : QString();
  const qsizetype secondPoint = fraction.indexOf(u'.');
  if (secondPoint >= 0) fraction.truncate(secondPoint);
  if (whole.isEmpty() && fraction.isEmpty()) return QString();
  if (format.isEmpty()) return (negative ? QStringLiteral("-") : QString()) + whole +
                               (fraction.isEmpty() ? QString() : u'.' + fraction);

  const QStringList sections = format.split(u';');
  if (negative && sections.size() > 1) {
    const QString shown = FormatSection(whole, fraction, sections[1]);
    QString shownDigits;
    for (QChar c : shown)
      if (c.isDigit()) shownDigits += c;
    if (!AllZeros(shownDigits)) return shown;
    negative = false;
  }
  const QString shown = FormatSection(whole, fraction, sections[0]);
  if (!negative) return shown;
  QString shownDigits;
  for (QChar c : shown)
    if (c.isDigit()) shownDigits += c;
  return AllZeros(shownDigits) ? shown : u'-' + shown;
}

int FormatMaxLength(const QString& format, bool negative) {
  const QStringList sections = format.split(u';');
  if (sections.size() < 2) return static_cast<int>(format.size());
  const QString& section = negative ? sections[1] : sections[0];
  int length = static_cast<int>(section.size());
  if (negative && section.endsWith(u')')) --length;
  return length;
}

}  // namespace numeric
