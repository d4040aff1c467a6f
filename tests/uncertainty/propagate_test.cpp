// Intervals against all trials sorted, refused trials, automatic runs, budgets.
#include "uncertainty/propagate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <string>
#include <vector>

#include "tests/support/row_name.h"

namespace {

using Uncertainty::BlockModel;
using Uncertainty::Column;
using Uncertainty::Completeness;
using Uncertainty::Distribution;
using Uncertainty::kRefused;
using Uncertainty::Points;
using Uncertainty::Propagated;
using Uncertainty::Settings;
using Uncertainty::Source;

using Function = double (*)(double, double);

// A model of two sources, one function a result. Where one is not finite the trial is refused.
BlockModel ModelOf(const std::vector<Function>& functions) {
  return
      [functions](std::span<const Column> sources, std::size_t trials, std::span<Column> results) {
        for (std::size_t k = 0; k < trials; ++k) {
          for (std::size_t i = 0; i < functions.size(); ++i) {
            results[i].at[k] = functions[i](sources[0].at[k], sources[1].at[k]);
          }
        }
      };
}

// Every trial's value of one function, from the points themselves.
std::vector<double> AllValues(Function function, std::span<const Source> sources,
                              std::size_t trials, const Points& points) {
  std::vector<double> values;
  Column one = {};
  Column other = {};
  for (std::size_t i = 0; i < trials; ++i) {
    const std::size_t block = i / Uncertainty::kBlockTrials;
    const std::size_t k = i % Uncertainty::kBlockTrials;
    const double x = points.Errors(0, sources[0].distribution, block, one).at[k];
    const double y = points.Errors(1, sources[1].distribution, block, other).at[k];
    values.push_back(
        function(sources[0].value + sources[0].u * x, sources[1].value + sources[1].u * y));
  }
  return values;
}

// As the guide has it: q of the sorted values are covered, r − 1 left out below (JCGM 101, 7.7.2).
Uncertainty::Interval IntervalOf(std::vector<double> values, double coverage) {
  std::sort(values.begin(), values.end());
  const double m = static_cast<double>(values.size());
  const double product = coverage * m;
  const double q = product == std::floor(product) ? product : std::floor(product + 0.5);
  const double half = (m - q) / 2.0;
  double r = half == std::floor(half) ? half : std::floor((m - q + 1.0) / 2.0);
  r = std::max(r, 1.0);
  const double top = std::min(r + q, m);
  return {values[static_cast<std::size_t>(r) - 1], values[static_cast<std::size_t>(top) - 1]};
}

// Smooth, skewed, in steps, in two heaps, all alike, and refused now and then.
constexpr Function kFunctions[] = {
    [](double x, double y) { return x + 2.0 * y; },
    [](double x, double y) { return std::exp(3.0 * x) * y * y; },
    [](double x, double) { return std::round(2.0 * x); },
    [](double x, double) { return x > 0.0 ? 1.0 : 0.0; },
    [](double, double) { return 4.25; },
};

struct Case {
  const char* name;
  std::size_t trials;
  double coverage;
};

class Interval : public testing::TestWithParam<Case> {};

TEST_P(Interval, IsThatOfAllTrialsSorted) {
  const std::vector<Source> sources = {{0.1, 1.0}, {2.0, 0.5, Distribution::Uniform}};
  const Points points(2, 21, 512);
  const Settings settings = {.coverage = GetParam().coverage, .trials = GetParam().trials};
  const BlockModel model = ModelOf({std::begin(kFunctions), std::end(kFunctions)});
  const Propagated got = Propagate(sources, model, std::size(kFunctions), points, settings);
  ASSERT_EQ(got.trials, settings.trials);
  ASSERT_EQ(got.completeness, Completeness::Complete);
  for (std::size_t i = 0; i < std::size(kFunctions); ++i) {
    const auto values = AllValues(kFunctions[i], sources, settings.trials, points);
    const Uncertainty::Interval expected = IntervalOf(values, settings.coverage);
    EXPECT_EQ(got.results[i].interval->low, expected.low) << i;
    EXPECT_EQ(got.results[i].interval->high, expected.high) << i;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Table, Interval,
    testing::Values(Case{"OneTrial", 1, 0.95}, Case{"TwoTrials", 2, 0.95},
                    Case{"AHundred", 100, 0.95}, Case{"AHundredAndOne", 101, 0.9},
                    Case{"APilotAlone", 1024, 0.95}, Case{"OneMoreThanThePilot", 1025, 0.95},
                    Case{"ABlockAndSome", 1281, 0.5}, Case{"TheUsualNumber", 8192, 0.95},
                    Case{"WithARest", 9999, 0.95}, Case{"Wide", 8192, 0.9999},
                    Case{"Narrow", 8192, 0.001}, Case{"Many", 100'000, 0.99}),
    RowName());

// The first trials stand for all of them; here they do not, and the ends must still be right.
TEST(Interval, SurvivesAPilotThatMisleads) {
  const std::vector<Source> sources = {{0.0, 1.0}, {0.0, 0.0}};
  const Points points(2, 22);
  const std::vector<double> first =
      AllValues([](double x, double) { return x; }, sources, 1024, points);
  const std::set<double> pilot(first.begin(), first.end());
  for (const double sign : {-1.0, 1.0}) {
    std::vector<double> values;
    const auto bent = [&](double x) { return pilot.contains(x) ? 0.001 * x : x + sign * 50.0; };
    const BlockModel model = [&](std::span<const Column> drawn, std::size_t trials,
                                 std::span<Column> results) {
      for (std::size_t k = 0; k < trials; ++k) results[0].at[k] = bent(drawn[0].at[k]);
    };
    for (const double x : AllValues([](double x, double) { return x; }, sources, 8192, points)) {
      values.push_back(bent(x));
    }
    const Uncertainty::Interval expected = IntervalOf(values, 0.95);
    const Propagated got = Propagate(sources, model, 1, points, {});
    EXPECT_EQ(got.results[0].interval->low, expected.low);
    EXPECT_EQ(got.results[0].interval->high, expected.high);
  }
}

TEST(Propagate, GivesTheModelsVeryNumberWhereNothingMoves) {
  const std::vector<Source> sources = {{0.1, 1.0}, {0.3, 0.0}};
  const BlockModel model = ModelOf({[](double, double y) { return y / 3.0 + 1e9; }});
  const Propagated got = Propagate(sources, model, 1, Points(2), {.trials = 5000, .budget = true});
  EXPECT_EQ(got.results[0].u, 0.0);
  EXPECT_EQ(got.results[0].interval->low, 0.3 / 3.0 + 1e9);
  EXPECT_EQ(got.results[0].interval->high, 0.3 / 3.0 + 1e9);
  EXPECT_EQ(got.results[0].budget, std::vector<double>({0.0, 0.0}));
}

// A large value and a small error: nothing is lost in the sums.
TEST(Propagate, KeepsTheDigitsOfASmallVariance) {
  const std::vector<Source> sources = {{1e9, 1e-3, Distribution::Uniform}, {0.0, 0.0}};
  const BlockModel model = ModelOf({[](double x, double) { return x; }});
  const Propagated got = Propagate(sources, model, 1, Points(2), {});
  EXPECT_NEAR(*got.results[0].u, 1e-3, 1e-6);
}

struct RefusedShare {
  const char* name;
  int refused;  // of 8192
  double coverage;
  Completeness completeness;
};

class Refusals : public testing::TestWithParam<RefusedShare> {};

// One uniform source, which has one point in each of 8192 equal parts: the topmost are refused.
TEST_P(Refusals, LeaveWhatCanBeSaid) {
  const double top = 1.0 - GetParam().refused / 8192.0;
  const BlockModel model = [top](std::span<const Column> drawn, std::size_t trials,
                                 std::span<Column> results) {
    for (std::size_t k = 0; k < trials; ++k) {
      const double share = (drawn[0].at[k] / std::sqrt(3.0) + 1.0) / 2.0;
      for (std::size_t i = 0; i < 2; ++i) {
        results[i].at[k] = share < top ? (i == 0 ? share : -share) : kRefused;
      }
    }
  };
  const std::vector<Source> sources = {{0.0, 1.0, Distribution::Uniform}};
  const Settings settings = {.coverage = GetParam().coverage, .budget = true};
  const Propagated got = Propagate(sources, model, 2, Points(1), settings);
  EXPECT_EQ(got.trials - got.ok, static_cast<std::size_t>(GetParam().refused));
  EXPECT_EQ(got.completeness, GetParam().completeness);
  const bool complete = GetParam().completeness == Completeness::Complete;
  for (const Uncertainty::Spread& spread : got.results) {
    EXPECT_EQ(spread.u.has_value(), complete);
    EXPECT_EQ(spread.budget.empty(), !complete);
    EXPECT_EQ(spread.interval.has_value(), GetParam().completeness != Completeness::TooManyRefused);
  }
  if (!got.results[0].interval || GetParam().coverage != 0.95) return;
  // Counted above all others, the refused leave the ends of an increasing result in their places
  // and move those of a decreasing one up.
  EXPECT_NEAR(got.results[0].interval->low, 0.025, 2e-4);
  EXPECT_NEAR(got.results[0].interval->high, 0.975, 2e-4);
  EXPECT_NEAR(got.results[1].interval->high, -0.025 + GetParam().refused / 8192.0, 2e-4);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Refusals,
    testing::Values(RefusedShare{"None", 0, 0.95, Completeness::Complete},
                    RefusedShare{"One", 1, 0.95, Completeness::SomeRefused},
                    RefusedShare{"JustFewEnough", 16, 0.95, Completeness::SomeRefused},
                    RefusedShare{"JustTooMany", 17, 0.95, Completeness::TooManyRefused},
                    RefusedShare{"Half", 4096, 0.95, Completeness::TooManyRefused},
                    RefusedShare{"All", 8192, 0.95, Completeness::TooManyRefused},
                    RefusedShare{"FewButTheEndIsAmongThem", 4, 0.9999,
                                 Completeness::TooManyRefused},
                    RefusedShare{"FewAndTheEndIsBelowThem", 4, 0.99, Completeness::SomeRefused}),
    RowName());

// No trial of the full run is refused, but one is when this source varies alone.
TEST(Budget, IsEmptyWhenOneSourceAloneIsRefused) {
  const BlockModel model =
      ModelOf({[](double x, double y) { return y == 0.5 && x > 1.0 ? kRefused : x + y; }});
  const std::vector<Source> sources = {{0.0, 1.0}, {0.5, 0.1}};
  const Propagated got = Propagate(sources, model, 1, Points(2), {.budget = true});
  EXPECT_EQ(got.completeness, Completeness::Complete);
  EXPECT_TRUE(got.results[0].u);
  EXPECT_TRUE(got.results[0].budget.empty());
}

TEST(Budget, SharesOutWhatEachSourceMovesAlone) {
  const BlockModel model = ModelOf({[](double x, double y) { return 3.0 * x - 4.0 * y; },
                                    [](double x, double) { return x * x * x; }});
  const std::vector<Source> sources = {{0.0, 1.0}, {0.0, 1.0, Distribution::Triangular}};
  const Propagated got = Propagate(sources, model, 2, Points(2), {.budget = true});
  EXPECT_NEAR(got.results[0].budget[0], 0.36, 0.002);
  EXPECT_NEAR(got.results[0].budget[1], 0.64, 0.002);
  EXPECT_EQ(got.results[1].budget, std::vector<double>({1.0, 0.0}));
  const Propagated plain = Propagate(sources, model, 2, Points(2), {});
  EXPECT_TRUE(plain.results[0].budget.empty());
  EXPECT_EQ(plain.results[0].interval->low, got.results[0].interval->low);
}

// Neither coordinate moves x y alone.
TEST(Budget, LetsTheSourcesOfOnePartVaryTogether) {
  const BlockModel model = [](std::span<const Column> sources, std::size_t trials,
                              std::span<Column> results) {
    for (std::size_t k = 0; k < trials; ++k) {
      results[0].at[k] = sources[0].at[k] * sources[1].at[k] + 2.0 * sources[2].at[k];
    }
  };
  const std::vector<Source> sources = {{0.0, 1.0}, {0.0, 1.0}, {0.0, 1.0}};
  const std::array<std::size_t, 3> parts = {0, 2, 3};
  const Propagated apart = Propagate(sources, model, 1, Points(3), {.budget = true});
  EXPECT_EQ(apart.results[0].budget, std::vector<double>({0.0, 0.0, 1.0}));
  const Propagated got = Propagate(sources, model, 1, Points(3), {.budget = true, .parts = parts});
  ASSERT_EQ(got.results[0].budget.size(), 2U);
  EXPECT_NEAR(got.results[0].budget[0], 0.2, 0.01);
  EXPECT_NEAR(got.results[0].budget[1], 0.8, 0.01);
}

const BlockModel kSmooth = ModelOf({[](double x, double y) { return x + 2.0 * y; }});
const BlockModel kHeavyTail =
    ModelOf({[](double x, double y) { return std::exp(x * x * x / 3.0 + y); }});
const std::vector<Source> kTwo = {{0.0, 1.0}, {0.0, 1.0}};

TEST(Automatic, StopsWhenBothEndsAreStable) {
  const Points points(2);
  const Propagated smooth =
      Propagate(kTwo, kSmooth, 1, points, {.trials = 1U << 20, .automatic = true});
  EXPECT_TRUE(smooth.settled);
  EXPECT_GE(smooth.trials, 8192U);
  EXPECT_LE(smooth.trials, 32768U);
  const double half = 1.959963984540054 * std::sqrt(5.0);
  EXPECT_NEAR(smooth.results[0].interval->low, -half, 0.02 * half);
  EXPECT_NEAR(smooth.results[0].interval->high, half, 0.02 * half);
  const Propagated heavy =
      Propagate(kTwo, kHeavyTail, 1, points, {.trials = 1U << 20, .automatic = true});
  EXPECT_TRUE(heavy.settled);
  EXPECT_GT(heavy.trials, smooth.trials);
}

// An automatic run of so many trials says what a fixed one of so many says.
TEST(Automatic, GivesWhatThatNumberOfTrialsGives) {
  const Points points(2);
  const Propagated found =
      Propagate(kTwo, kHeavyTail, 1, points, {.trials = 1U << 20, .automatic = true});
  const Propagated fixed = Propagate(kTwo, kHeavyTail, 1, points, {.trials = found.trials});
  EXPECT_EQ(found.results[0].interval->low, fixed.results[0].interval->low);
  EXPECT_EQ(found.results[0].interval->high, fixed.results[0].interval->high);
  EXPECT_EQ(found.results[0].u, fixed.results[0].u);
}

TEST(Automatic, SaysWhenTheEndsStillMoveAtTheCap) {
  const Points points(2);
  for (const std::size_t cap : {500U, 2048U, 3000U, 4096U}) {
    const Propagated got =
        Propagate(kTwo, kHeavyTail, 1, points, {.trials = cap, .automatic = true});
    EXPECT_FALSE(got.settled) << cap;
    EXPECT_EQ(got.trials, cap);
    EXPECT_TRUE(got.results[0].interval) << cap;
  }
}

TEST(Automatic, StopsWhereThereIsNoIntervalToFind) {
  const BlockModel model = ModelOf({[](double x, double) {
    if (x > 1.0) return kRefused;
    return x;
  }});
  const Propagated got =
      Propagate(kTwo, model, 1, Points(2), {.trials = 1U << 20, .automatic = true});
  EXPECT_TRUE(got.settled);
  EXPECT_EQ(got.completeness, Completeness::TooManyRefused);
  EXPECT_LE(got.trials, 8192U);
}

}  // namespace
