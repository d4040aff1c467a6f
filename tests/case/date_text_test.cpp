// Dates as people type them, in five locales.
#include "case/date_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "tests/support/row_name.h"

namespace {

const std::array<const char*, 5> kLocales{"C", "en_US", "de_DE", "sl_SI", "fr_FR"};

struct DateRow {
  std::string name;
  const char* text;
  std::vector<std::string> validIn;  // of kLocales
};

void PrintTo(const DateRow& row, std::ostream* out) {
  *out << row.text;
}

const std::vector<std::string> kAll(kLocales.begin(), kLocales.end());
const std::vector<std::string> kDayFirst{"C", "de_DE", "sl_SI", "fr_FR"};
const std::vector<std::string> kNone;

class DateTexts : public testing::TestWithParam<DateRow> {};

TEST_P(DateTexts, ValidInTheseLocales) {
  const DateRow& row = GetParam();
  for (const char* name : kLocales) {
    const bool expected =
        std::find(row.validIn.begin(), row.validIn.end(), name) != row.validIn.end();
    EXPECT_EQ(Vse::IsValidDate(QString::fromUtf8(row.text), QLocale(name)), expected)
        << row.text << " in " << name;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DateTexts,
    testing::Values(
        DateRow{"Iso", "1956-11-15", kAll}, DateRow{"IsoNotExisting", "1956-02-31", kNone},
        DateRow{"IsoWithTime", "1956-11-15T10:00", kNone},
        DateRow{"BlanksAround", "  1956-11-15 ", kAll},
        DateRow{"DayFirstPoints", "15.11.1956", kDayFirst},
        DateRow{"DayFirstSlashes", "15/11/1956", kDayFirst},
        DateRow{"DayFirstDashes", "15-11-1956", kDayFirst},
        DateRow{"DayFirstTwoDigitYear", "15.11.56", kDayFirst},
        DateRow{"DayFirstBlanks", "15. 11. 1956", kDayFirst},
        DateRow{"MonthFirstSlashes", "11/15/1956", {"en_US"}},
        DateRow{"MonthFirstPoints", "11.15.1956", {"en_US"}},
        DateRow{"MonthFirstDashes", "11-15-56", {"en_US"}},
        DateRow{"EitherOrder", "5.6.1956", kAll}, DateRow{"LeadingZeros", "05/06/56", kAll},
        DateRow{"MixedSeparators", "5.6/1956", kNone}, DateRow{"February31", "31.2.1956", kNone},
        DateRow{"February31Us", "2/31/1956", kNone}, DateRow{"LeapDay", "29.2.1956", kDayFirst},
        DateRow{"NoLeapDay", "29.2.1957", kNone}, DateRow{"LeapDayOf2000", "29.2.00", kDayFirst},
        DateRow{"LeapDayOf2000Us", "2/29/00", {"en_US"}},
        DateRow{"YearOfOneDigit", "15.11.6", kNone},
        DateRow{"YearOfThreeDigits", "15.11.956", kNone}, DateRow{"YearZero", "15.11.0000", kNone},
        DateRow{"DayZero", "0.11.1956", kNone}, DateRow{"BareYear", "1956", kNone},
        DateRow{"BareNumber", "15111956", kNone}, DateRow{"BareDecimal", "15.11", kNone},
        DateRow{"BareDecimalComma", "15,11", kNone}, DateRow{"Negative", "-1956", kNone},
        DateRow{"DayAndMonth", "15.11.", kNone}, DateRow{"Empty", "", kNone},
        DateRow{"Blank", "   ", kNone}, DateRow{"Unknown", "Unknown", kNone},
        DateRow{"Words", "in autumn", kNone}, DateRow{"ShortC", "15 Nov 1956", {"C"}},
        DateRow{"LongEnglish", "Thursday, November 15, 1956", {"en_US"}},
        DateRow{"LongEnglishNoWeekday", "November 15, 1956", {"en_US"}},
        DateRow{"LongEnglishWrongWeekday", "Friday, November 15, 1956", kNone},
        DateRow{"LongC", "Thursday, 15 November 1956", {"C"}},
        DateRow{"LongGerman", "Donnerstag, 15. November 1956", {"de_DE"}},
        DateRow{"LongSlovene", "četrtek, 15. november 1956", {"sl_SI"}},
        DateRow{"LongSloveneNoWeekday", "15. november 1956", {"de_DE", "sl_SI"}},
        DateRow{"LongFrench", "jeudi 15 novembre 1956", {"fr_FR"}},
        DateRow{"LongFrenchNoWeekday", "15 novembre 1956", {"fr_FR"}},
        DateRow{"LongFrenchNotExisting", "31 février 1956", kNone}),
    RowName());

TEST(DateText, ShortFormReadsBackInEveryLocale) {
  const QDate date(1956, 11, 15);
  for (const char* name :
       {"C", "en_US", "de_DE", "sl_SI", "fr_FR", "hu_HU", "hr_HR", "sv_SE", "lv_LV", "ja_JP"}) {
    const QLocale locale(name);
    EXPECT_TRUE(Vse::IsValidDate(Vse::ShortDate(date, locale), locale)) << name;
    EXPECT_TRUE(Vse::IsValidDate(locale.toString(date, QLocale::ShortFormat), locale)) << name;
    EXPECT_TRUE(Vse::IsValidDate(locale.toString(date, QLocale::LongFormat), locale)) << name;
  }
}

TEST(DateText, ShortFormHasTheYearInFourDigits) {
  const QDate date(1956, 11, 5);
  const auto text = [&](const char* name) { return Vse::ShortDate(date, QLocale(name)); };
  EXPECT_EQ(text("C"), "5 Nov 1956");
  EXPECT_EQ(text("en_US"), "11/5/1956");
  EXPECT_EQ(text("de_DE"), "05.11.1956");
  EXPECT_EQ(text("sl_SI"), "5. 11. 1956");
  EXPECT_EQ(text("fr_FR"), "05/11/1956");
}

}  // namespace
