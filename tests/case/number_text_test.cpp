// Numbers between text and double.
#include "case/number_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <random>
#include <regex>
#include <string>
#include <string_view>

#include "tests/support/row_name.h"

namespace {

struct Typed {
  const char* name;
  std::string_view text;
  std::optional<double> value;
};

class ReadNumber : public testing::TestWithParam<Typed> {};

TEST_P(ReadNumber, GivesTheNumberOrRefuses) {
  EXPECT_EQ(Vse::ReadNumber(GetParam().text), GetParam().value) << GetParam().text;
}

constexpr std::nullopt_t kRefused = std::nullopt;
const std::string kLongZeros = "0." + std::string(400, '0') + "1";
const std::string kLongDigits = std::string(400, '7');
const std::string kLongComma = "1," + std::string(100, '5');

INSTANTIATE_TEST_SUITE_P(
    Table, ReadNumber,
    testing::Values(
        Typed{"Point", "10.40", 10.4}, Typed{"Comma", "10,40", 10.4},
        Typed{"Negative", "-3,5", -3.5}, Typed{"BlankBefore", " 12", 12.0},
        Typed{"BlankBehind", "30 ", 30.0}, Typed{"OnlyFraction", ".5", 0.5},
        Typed{"OnlyFractionComma", ",5", 0.5}, Typed{"OnlyInteger", "5.", 5.0},
        Typed{"Plus", "+7", 7.0}, Typed{"Exponent", "1e3", 1000.0},
        Typed{"ExponentSigned", "1,5E-3", 0.0015}, Typed{"ExponentAfterPoint", "5.e1", 50.0},
        Typed{"MinusZeroIsZero", "-0", 0.0}, Typed{"Zeros", "000.500", 0.5},
        Typed{"TooSmall", "1e-999", 0.0}, Typed{"TooSmallWithoutExponent", kLongZeros, 0.0},
        Typed{"ZeroWithHugeExponent", "0e999", 0.0}, Typed{"LongComma", kLongComma, 14.0 / 9.0},
        Typed{"Largest", "-1e300", -1e300}, Typed{"AboveTheLargest", "1.001e300", kRefused},
        Typed{"LargestDouble", "1.7976931348623157e308", kRefused},
        Typed{"TooLarge", "1e999", kRefused},
        Typed{"TooLargeWithoutExponent", kLongDigits, kRefused},
        Typed{"TooLargeAndTheExponentMissing", kLongDigits + "e", kRefused},
        Typed{"TooSmallAndTheExponentMissing", kLongZeros + "E-", kRefused},
        Typed{"TooLargeNegativeMantissaZeros", "0.001e400", kRefused},
        Typed{"EndlessExponent", "1e99999999999999999999", kRefused},
        Typed{"EndlessSmallExponent", "1e-99999999999999999999", 0.0},
        Typed{"TwoPoints", "1.2.3", kRefused}, Typed{"GroupPoint", "1.234,5", kRefused},
        Typed{"GroupComma", "1,234.5", kRefused}, Typed{"Word", "abc", kRefused},
        Typed{"Empty", "", kRefused}, Typed{"Blank", "  ", kRefused}, Typed{"Nan", "nan", kRefused},
        Typed{"Inf", "inf", kRefused}, Typed{"NegativeInf", "-Infinity", kRefused},
        Typed{"Hexadecimal", "0x10", kRefused}, Typed{"Currency", "$5", kRefused},
        Typed{"Unit", "5 cm", kRefused}, Typed{"TwoSigns", "--5", kRefused},
        Typed{"SignAlone", "-", kRefused}, Typed{"PointAlone", ".", kRefused},
        Typed{"ExponentAlone", "e5", kRefused}, Typed{"ExponentEmpty", "5e", kRefused},
        Typed{"ExponentSign", "5e+", kRefused}, Typed{"ExponentFraction", "5e1.5", kRefused},
        Typed{"InnerBlank", "1 000", kRefused}, Typed{"BlankBehindSign", "- 5", kRefused}),
    RowName());

// Short numbers take another way than long ones; the C library is a third.
TEST(ReadNumberOfAnyLength, GivesTheNearestDouble) {
  std::mt19937_64 random(20261122);
  for (int i = 0; i < 200'000; ++i) {
    std::string text = std::to_string(random() >> random() % 64);
    text.insert(random() % (text.size() + 1), 1, '.');
    ASSERT_EQ(Vse::ReadNumber(text), std::strtod(text.c_str(), nullptr)) << text;
    std::replace(text.begin(), text.end(), '.', ',');
    const auto read = Vse::ReadNumber("-" + text);
    std::replace(text.begin(), text.end(), ',', '.');
    ASSERT_EQ(read, 0.0 - std::strtod(text.c_str(), nullptr)) << text;
  }
}

// Every text of up to ten such characters is as likely as another; the grammar is a pattern here.
TEST(ReadNumberOfAnyText, TakesWhatThePatternTakes) {
  const std::regex pattern(R"( *[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)([eE][+-]?[0-9]+)? *)");
  std::mt19937_64 random(4);
  int taken = 0;
  for (int i = 0; i < 300'000; ++i) {
    const std::string_view some = i % 2 == 0 ? "0123456789.,-" : "0159.,-+eE /:\x80";
    std::string text(random() % 11, ' ');
    for (char& c : text) c = some[random() % some.size()];
    std::string plain = text;
    std::replace(plain.begin(), plain.end(), ',', '.');
    const double size = std::strtod(plain.c_str(), nullptr);
    const bool isNumber = std::regex_match(plain, pattern) && std::abs(size) <= 1e300;
    ASSERT_EQ(Vse::ReadNumber(text), isNumber ? std::optional(size) : std::nullopt) << text;
    taken += isNumber ? 1 : 0;
  }
  EXPECT_GT(taken, 30'000);
}

TEST(IsTooLarge, TellsALargeNumberFromWhatIsNone) {
  for (const char* text :
       {"1e400", "-1e400", "+1,5E999", "1.001e300", " 1e99999999999999999999 "}) {
    EXPECT_TRUE(Vse::IsTooLarge(text)) << text;
  }
  EXPECT_TRUE(Vse::IsTooLarge(kLongDigits));
  EXPECT_FALSE(Vse::IsTooLarge(kLongDigits + "e"));
  for (const char* text :
       {"", "1e300", "-1e300", "0e999", "1e-999", "1e", "inf", "1e400x", "1.2.3e400", "--1e400"}) {
    EXPECT_FALSE(Vse::IsTooLarge(text)) << text;
  }
}

TEST(TruncateToDecimals, RoundsTowardsMinusInfinity) {
  EXPECT_EQ(Vse::TruncateToDecimals(2.8719, 2), 2.87);
  EXPECT_EQ(Vse::TruncateToDecimals(2.8719, 3), 2.871);
  EXPECT_EQ(Vse::TruncateToDecimals(-3.456, 2), -3.46);
  EXPECT_EQ(Vse::TruncateToDecimals(-0.001, 2), -0.01);
  EXPECT_EQ(Vse::TruncateToDecimals(5.0, 2), 5.0);
}

struct Shown {
  const char* name;
  double value;
  const char* text;
};

class NumberText : public testing::TestWithParam<Shown> {};

TEST_P(NumberText, IsShortAndPlain) {
  EXPECT_EQ(Vse::NumberText(GetParam().value, QLocale::c()).toStdString(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Table, NumberText,
    testing::Values(Shown{"Whole", 30.0, "30"}, Shown{"Fraction", 10.4, "10.4"},
                    Shown{"BelowOne", 0.5, "0.5"}, Shown{"Negative", -3.46, "-3.46"},
                    Shown{"Zero", 0.0, "0"}, Shown{"MinusZero", -0.0, "0"},
                    Shown{"FifteenDigits", 0.1 + 0.2, "0.3"},
                    Shown{"Third", 1.0 / 3.0, "0.333333333333333"},
                    Shown{"Pascal", 2066847.58429341, "2066847.58429341"},
                    Shown{"SmallPlain", 0.0001, "0.0001"}, Shown{"SmallExponent", 0.00001, "1E-05"},
                    Shown{"LargePlain", 123456789012345.0, "123456789012345"},
                    Shown{"LargeExponent", 1e15, "1E+15"}, Shown{"Thousands", 12345.5, "12345.5"}),
    RowName());

TEST(NumberTextLocale, TakesTheSeparatorAndNothingElse) {
  EXPECT_EQ(Vse::NumberText(8.47, QLocale("de_DE")).toStdString(), "8,47");
  EXPECT_EQ(Vse::NumberText(1234567.5, QLocale("fr_FR")).toStdString(), "1234567,5");
  EXPECT_EQ(Vse::NumberText(-1.5, QLocale("sl_SI")).toStdString(), "-1,5");
  EXPECT_EQ(Vse::NumberText(10.4, QLocale("fa_IR")).toStdString(), "10,4");
  EXPECT_EQ(Vse::NumberText(1e-7, QLocale("de_DE")).toStdString(), "1E-07");
}

}  // namespace
