#include <gtest/gtest.h>

#include "controls/NumericFormat.h"

using numeric::FormatMaxLength;
using numeric::FormatNumeric;
using numeric::UnformatNumeric;

namespace {
const QString kDefault = QStringLiteral("###,##0.00;(##,###.00)");
}

TEST(NumericFormat, UnformatKeepsDigitsAndPointAndReadsTheSignFromTheFirstCharacter) {
  EXPECT_EQ(UnformatNumeric("  1,234.50 "), "1234.50");
  EXPECT_EQ(UnformatNumeric("(1,234.50)"), "-1234.50");
  EXPECT_EQ(UnformatNumeric("-12a3"), "-123");
  // A minus that is not the first character is dropped with the rest.
  EXPECT_EQ(UnformatNumeric("12-3"), "123");
  EXPECT_EQ(UnformatNumeric("$ -5"), "5");
  EXPECT_EQ(UnformatNumeric("abc"), "");
  EXPECT_EQ(UnformatNumeric(""), "");
  // A negative zero loses its sign.
  EXPECT_EQ(UnformatNumeric("-"), "");
  EXPECT_EQ(UnformatNumeric("-0.00"), "0.00");
  EXPECT_EQ(UnformatNumeric("(.00)"), ".00");
}

TEST(NumericFormat, DefaultFormatGroupsThousandsAndBracketsNegatives) {
  EXPECT_EQ(FormatNumeric("1234.5", kDefault), "1,234.50");
  EXPECT_EQ(FormatNumeric("-1234.5", kDefault), "(1,234.50)");
  EXPECT_EQ(FormatNumeric("0", kDefault), "0.00");
  EXPECT_EQ(FormatNumeric("999", kDefault), "999.00");
  EXPECT_EQ(FormatNumeric("123456.789", kDefault), "123,456.79");
  // The negative section has no "0" place before the point.
  EXPECT_EQ(FormatNumeric("-0.5", kDefault), "(.50)");
  // Digits beyond the format's whole places are all shown, still grouped.
  EXPECT_EQ(FormatNumeric("1234567", kDefault), "1,234,567.00");
  EXPECT_EQ(FormatNumeric("-9876543.2", kDefault), "(9,876,543.20)");
  // Formatted text is read again as a number.
  EXPECT_EQ(FormatNumeric("(1,234.50)", kDefault), "(1,234.50)");
  EXPECT_EQ(FormatNumeric("", kDefault), "");
  EXPECT_EQ(FormatNumeric("abc", kDefault), "");
}

TEST(NumericFormat, RoundsHalfUpWithTheCarryPassingThroughNines) {
  EXPECT_EQ(FormatNumeric("9.995", "0.00"), "10.00");
  EXPECT_EQ(FormatNumeric("9.994", "0.00"), "9.99");
  EXPECT_EQ(FormatNumeric("999999.995", kDefault), "1,000,000.00");
  EXPECT_EQ(FormatNumeric("-99.999", kDefault), "(100.00)");
  EXPECT_EQ(FormatNumeric("0.125", "0.00"), "0.13");
  EXPECT_EQ(FormatNumeric("2.5", "0"), "3");
  EXPECT_EQ(FormatNumeric("1.49", "#,##0"), "1");
  // A negative number that rounds to zero takes the positive section.
  EXPECT_EQ(FormatNumeric("-0.001", kDefault), "0.00");
  EXPECT_EQ(FormatNumeric("-0.004", "0.00"), "0.00");
}

TEST(NumericFormat, PlacesCommasAndOptionalDigitsByThePattern) {
  // The page number field: positive whole numbers.
  EXPECT_EQ(FormatNumeric("12345", "##,###"), "12,345");
  EXPECT_EQ(FormatNumeric("345", "##,###"), "345");
  EXPECT_EQ(FormatNumeric("0", "##,###"), "");
  // The thumbnail size field in inches.
  EXPECT_EQ(FormatNumeric("1.5", "0.000"), "1.500");
  EXPECT_EQ(FormatNumeric(".5", "0.000"), "0.500");
  EXPECT_EQ(FormatNumeric("60", "##0"), "60");
  // "#" decimal places drop the zeros at the end, "0" places keep them.
  EXPECT_EQ(FormatNumeric("1.50", "0.0#"), "1.5");
  EXPECT_EQ(FormatNumeric("1.05", "0.##"), "1.05");
  EXPECT_EQ(FormatNumeric("1", "0.##"), "1.");
  // Leading "0" places pad; a section without a second part signs with "-".
  EXPECT_EQ(FormatNumeric("7", "000"), "007");
  EXPECT_EQ(FormatNumeric("-7.25", "0.0"), "-7.3");
  EXPECT_EQ(FormatNumeric("-1234", "#,##0"), "-1,234");
  // Literal characters stand where the pattern has them.
  EXPECT_EQ(FormatNumeric("5", "(0.00)"), "(5.00)");
  // An empty format shows the plain number.
  EXPECT_EQ(FormatNumeric("-12.50", ""), "-12.50");
}

TEST(NumericFormat, MaximumLengthFollowsTheSectionOfTheSign) {
  EXPECT_EQ(FormatMaxLength(kDefault, false), 10);
  // "(##,###.00)" is 11 long, less one for the closing bracket.
  EXPECT_EQ(FormatMaxLength(kDefault, true), 10);
  EXPECT_EQ(FormatMaxLength("#,##0;-#,##0", true), 6);
  EXPECT_EQ(FormatMaxLength("##,###", true), 6);
  EXPECT_EQ(FormatMaxLength("0.000", false), 5);
}
