#include <gtest/gtest.h>

#include <initializer_list>

#include "controls/NumericFormat.h"

using numeric::FormatNumeric;
using numeric::UnformatNumeric;

namespace {

const QString kDefault = QStringLiteral("###,##0.00;(##,###.00)");

struct Shown {
  const char* number;
  QString format;
  const char* text;
};

void ExpectShown(std::initializer_list<Shown> cases) {
  for (const Shown& c : cases)
    EXPECT_EQ(FormatNumeric(c.number, c.format), c.text)
        << c.number << " as " << c.format.toStdString();
}

}  // namespace

TEST(NumericFormat, UnformatKeepsDigitsAndPointAndReadsTheSignFromTheFirstCharacter) {
  EXPECT_EQ(UnformatNumeric("  1,234.50 "), "1234.50");
  EXPECT_EQ(UnformatNumeric("(1,234.50)"), "-1234.50");
  EXPECT_EQ(UnformatNumeric("-12a3"), "-123");
  // A minus that is not the first character is dropped with the rest.
  EXPECT_EQ(UnformatNumeric("12-3"), "123");
  EXPECT_EQ(UnformatNumeric("$ -5"), "5");
  EXPECT_EQ(UnformatNumeric("abc"), "");
  // A negative zero loses its sign.
  EXPECT_EQ(UnformatNumeric("-"), "");
  EXPECT_EQ(UnformatNumeric("-0.00"), "0.00");
  EXPECT_EQ(UnformatNumeric("(.00)"), ".00");
}

TEST(NumericFormat, DefaultFormatGroupsThousandsAndBracketsNegatives) {
  ExpectShown({{"0", kDefault, "0.00"},
               {"123456.789", kDefault, "123,456.79"},
               // The negative section has no "0" place before the point.
               {"-0.5", kDefault, "(.50)"},
               // Digits beyond the format's whole places are all shown, still grouped.
               {"1234567", kDefault, "1,234,567.00"}, {"-9876543.2", kDefault, "(9,876,543.20)"},
               // Formatted text is read again as a number.
               {"(1,234.50)", kDefault, "(1,234.50)"}, {"", kDefault, ""}, {"abc", kDefault, ""}});
}

TEST(NumericFormat, RoundsHalfUpWithTheCarryPassingThroughNines) {
  ExpectShown({{"9.995", "0.00", "10.00"}, {"0.125", "0.00", "0.13"},
               {"999999.995", kDefault, "1,000,000.00"}, {"-99.999", kDefault, "(100.00)"},
               {"2.5", "0", "3"}, {"1.49", "#,##0", "1"},
               // A negative number that rounds to zero takes the positive section.
               {"-0.001", kDefault, "0.00"}, {"-0.004", "0.00", "0.00"}});
}

TEST(NumericFormat, PlacesCommasAndOptionalDigitsByThePattern) {
  ExpectShown({// The page number field: positive whole numbers.
               {"12345", "##,###", "12,345"}, {"345", "##,###", "345"}, {"0", "##,###", ""},
               // The thumbnail size field in inches.
               {"1.5", "0.000", "1.500"}, {".5", "0.000", "0.500"}, {"60", "##0", "60"},
               // "#" decimal places drop the zeros at the end, "0" places keep them.
               {"1.50", "0.0#", "1.5"}, {"1.05", "0.##", "1.05"}, {"1", "0.##", "1."},
               // Leading "0" places pad; a section without a second part signs with "-".
               {"7", "000", "007"}, {"-7.25", "0.0", "-7.3"}, {"-1234", "#,##0", "-1,234"},
               // Literal characters stand where the pattern has them.
               {"5", "(0.00)", "(5.00)"},
               // An empty format shows the plain number.
               {"-12.50", "", "-12.50"}});
}
