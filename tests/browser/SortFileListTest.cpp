#include <gtest/gtest.h>

#include <QDate>
#include <QRandomGenerator>

#include "browser/SortFileList.h"

namespace {

QString Behind(const QString& text) {
  const qsizetype semicolon = text.indexOf(';');
  return semicolon < 0 ? text : text.mid(semicolon + 1);
}

// The list's sort as it was first written: an insertion sort from the top
// of the array, lower-casing both texts at every step, then the key removal.
void InsertionSort(QStringList& a, bool descending) {
  const qsizetype upper = a.size() - 1;
  for (qsizetype i = 1; i <= upper; ++i) {
    const QString item = a[i];
    qsizetype j = i;
    while (j > 0) {
      const int c = a[j - 1].toLower().compare(item.toLower(), Qt::CaseSensitive);
      if (descending ? c <= 0 : c >= 0) {
        a[j] = a[j - 1];
        --j;
      } else {
        break;
      }
    }
    a[j] = item;
  }
  if (descending) {
    for (qsizetype i = 0; i <= upper - 1; ++i) a[i] = Behind(a[i]);
  } else {
    for (qsizetype i = 1; i <= upper; ++i) a[i - 1] = Behind(a[i]);
  }
}

QStringList Sorted(QStringList list, bool descending) {
  SortFileList(list, descending);
  return list;
}

// Random texts from a small alphabet, so that equal texts, texts equal but
// for case, keys, ";" inside names and prefixes of one another all occur.
QString RandomText(QRandomGenerator& random) {
  static const QString letters = QStringLiteral("aAbB;.1 é_");
  const int length = random.bounded(0, 5);
  QString text;
  for (int k = 0; k < length; ++k) text += letters[random.bounded(letters.size())];
  return text;
}

}  // namespace

TEST(SortFileList, GivesExactlyTheOrderOfTheInsertionSortOnRandomLists) {
  QRandomGenerator random(20240611);
  for (int round = 0; round < 3000; ++round) {
    QStringList list;
    const int count = random.bounded(0, 40);
    for (int k = 0; k < count; ++k) list.append(RandomText(random));
    list.append(QString());  // scratch element
    for (bool descending : {false, true}) {
      QStringList expected = list;
      InsertionSort(expected, descending);
      ASSERT_EQ(Sorted(list, descending), expected)
          << "round " << round << " descending " << descending << ": " << list.join('|').toStdString();
    }
  }
}

TEST(SortFileList, CaseTiesEndInReverseOrderOfArrivalAndNamesWithASemicolonLoseTheirFront) {
  // "B.jpg" and "b.JPG" compare equal once lower-cased: the later one comes
  // first, in either direction.
  EXPECT_EQ(Sorted({"b.jpg", "B.JPG", "a.jpg", ""}, false),
            QStringList({"a.jpg", "B.JPG", "b.jpg", "b.jpg"}));
  EXPECT_EQ(Sorted({"b.jpg", "B.JPG", "a.jpg", ""}, true),
            QStringList({"B.JPG", "b.jpg", "a.jpg", ""}));
  // The single list of only the scratch element stays as it is.
  EXPECT_EQ(Sorted({""}, false), QStringList({""}));
  // Keys come off at the first ";". Extension keys: the names keep their own ";".
  EXPECT_EQ(Sorted({"jpg;x;y.jpg", "gif;a.gif", ""}, false),
            QStringList({"a.gif", "x;y.jpg", "jpg;x;y.jpg"}));
  // Name order descending has no key: a ";" in a name cuts it.
  EXPECT_EQ(Sorted({"early;late.jpg", "plain.jpg", ""}, true),
            QStringList({"plain.jpg", "late.jpg", ""}));
}

TEST(SortFileList, ExtensionKeysPutANameWithoutDotAmongTheExtensions) {
  QStringList list;
  for (const char* name : {"Zebra.TXT", "a.png", "README", "b.gif", "Makefile"})
    list.append(ExtensionSortEntry(name));
  EXPECT_EQ(list[0], "txt;Zebra.TXT");
  EXPECT_EQ(list[2], "README;README");
  list.append(QString());
  EXPECT_EQ(Sorted(list, false),
            QStringList({"b.gif", "Makefile", "a.png", "README", "Zebra.TXT", "txt;Zebra.TXT"}));
}

TEST(SortFileList, DateAndLengthKeysHaveFixedWidthsAndLongerLengthsSortByText) {
  EXPECT_EQ(DateSortEntry(QDate(2003, 7, 4), "x.jpg"), "20030704;x.jpg");
  EXPECT_EQ(DateSortEntry(QDate(987, 1, 2), "old.jpg"), "09870102;old.jpg");
  EXPECT_EQ(LengthSortEntry(10, "a.jpg"), "000000010;a.jpg");
  EXPECT_EQ(LengthSortEntry(1234567890, "big.avi"), "1234567890;big.avi");
  // Ten digits compare as text: 1,234,567,890 bytes sorts before 200,000,000.
  QStringList sizes = {LengthSortEntry(200000000, "mid.avi"), LengthSortEntry(1234567890, "big.avi"),
                       LengthSortEntry(5, "small.avi"), QString()};
  EXPECT_EQ(Sorted(sizes, false), QStringList({"small.avi", "big.avi", "mid.avi", "200000000;mid.avi"}));
}
