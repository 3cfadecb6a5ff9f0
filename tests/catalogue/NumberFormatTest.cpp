#include <gtest/gtest.h>

#include <QLocale>

#include "catalogue/NumberFormat.h"

TEST(NumberFormat, PatternsInUse) {
  auto f = [](qint64 value, const char* pattern) {
    return FormatWithSeparator(value, pattern, ",");
  };
  EXPECT_EQ(f(1234567, "###,###,##0"), "1,234,567");
  EXPECT_EQ(f(12345678901LL, "###,###,##0"), "12,345,678,901");  // more digits than places
  EXPECT_EQ(f(-1234, "##,##0"), "-1,234");
  EXPECT_EQ(f(0, "###,### "), " ");  // a running count of 0 shows only its blank
  EXPECT_EQ(f(4321, "###,### "), "4,321 ");
  EXPECT_EQ(f(3, "00"), "03");
  EXPECT_EQ(f(123, "00"), "123");
  EXPECT_EQ(f(85, "##0% "), "85% ");
  EXPECT_EQ(f(123456, "##0"), "123456");  // no comma, no grouping
}

TEST(NumberFormat, LocaleSeparatorAndRounding) {
  const QLocale saved;
  QLocale::setDefault(QLocale::c());
  EXPECT_EQ(Format(1234567, "###,###,##0"), "1,234,567");
  EXPECT_EQ(Format(2.5, "##0"), "3");
  EXPECT_EQ(Format(-2.5, "##0"), "-3");
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  EXPECT_EQ(Format(1234567, "###,###,##0"), "1.234.567");
  QLocale::setDefault(saved);
}
