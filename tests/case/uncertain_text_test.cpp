// How many digits an uncertain number has.
#include "case/uncertain_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <string>

#include "tests/support/row_name.h"

namespace {

using Vse::CoverageEnds;

struct Shown {
  std::string name;
  double estimate;
  std::optional<double> u;
  std::optional<CoverageEnds> interval;
  const char* texts;  // estimate | u | low | high
};

void PrintTo(const Shown& shown, std::ostream* out) {
  *out << shown.name;
}

QString Joined(const Vse::UncertainTexts& texts) {
  return QStringList{texts.estimate, texts.u, texts.low, texts.high}.join(" | ");
}

class UncertainTexts : public testing::TestWithParam<Shown> {};

TEST_P(UncertainTexts, HaveTheDigitsThatAreKnown) {
  const Shown& row = GetParam();
  EXPECT_EQ(Joined(Vse::UncertainTextsOf(row.estimate, row.u, row.interval, QLocale::c())),
            row.texts);
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();

INSTANTIATE_TEST_SUITE_P(
    Table, UncertainTexts,
    testing::Values(
        Shown{"TwoDigitsOfU", 2.8719, 0.0523, CoverageEnds{2.7691, 2.9744},
              "2.871 | 0.052 | 2.769 | 2.974"},
        Shown{"LastZerosStay", 2.8719, 0.0501, CoverageEnds{2.7702, 2.9698},
              "2.871 | 0.050 | 2.770 | 2.970"},
        Shown{"LargeNumbers", 2066847.58, 158321.0, CoverageEnds{1787221.0, 2434900.0},
              "2066847.58 | 160000 | 1790000 | 2430000"},
        Shown{"WholeNumbers", 3006.76, 23.4, CoverageEnds{2960.4, 3053.6},
              "3006.76 | 23 | 2960 | 3054"},
        Shown{"SmallErrorsAddDigitsToTheEstimate", 8.474567, 0.00123,
              CoverageEnds{8.47215, 8.47697}, "8.4745 | 0.0012 | 8.4721 | 8.4770"},
        Shown{"NegativeEstimatesAreCutDownwards", -3.4567, 0.25, CoverageEnds{-3.95, -2.97},
              "-3.46 | 0.25 | -3.95 | -2.97"},
        Shown{"NoErrorIsNoWidth", 2.8719, 0.0, CoverageEnds{2.8719, 2.8719},
              "2.87 | 0 | 2.87 | 2.87"},
        Shown{
            "IntervalAlone", 2.8719, {}, CoverageEnds{2.7691, 2.9744}, "2.871 |  | 2.769 | 2.974"},
        Shown{"EstimateAlone", 2.8719, {}, {}, "2.87 |  |  | "},
        Shown{"NeverMinusZero", 0.5, 0.12, CoverageEnds{-0.001, 0.75}, "0.5 | 0.12 | 0.00 | 0.75"},
        Shown{"Infinite", 2.5, kInfinity, CoverageEnds{1.0, kInfinity}, "2.5 | inf | 1.00 | inf"}),
    RowName());

TEST(UncertainTexts, FollowTheLocale) {
  EXPECT_EQ(
      Joined(Vse::UncertainTextsOf(2.8719, 0.0501, CoverageEnds{2.7702, 2.9698}, QLocale("de_DE"))),
      "2,871 | 0,050 | 2,770 | 2,970");
}

// Of all errors the estimate lies between the ends, as shown.
TEST(UncertainTexts, TheEstimateIsBetweenTheEnds) {
  for (int step = -36; step <= 36; ++step) {
    const double u = std::pow(1.7, step);
    const auto texts = Vse::UncertainTextsOf(
        2.87191919, u, CoverageEnds{2.87191919 - u, 2.87191919 + u}, QLocale::c());
    EXPECT_LE(texts.low.toDouble(), texts.estimate.toDouble()) << u;
    EXPECT_GE(texts.high.toDouble(), texts.estimate.toDouble()) << u;
  }
}

}  // namespace
