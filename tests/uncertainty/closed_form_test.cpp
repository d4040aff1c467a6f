// Models whose uncertainty is known in closed form, at a million trials.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "uncertainty/propagate.h"

namespace {

using Uncertainty::BlockModel;
using Uncertainty::Column;
using Uncertainty::Distribution;
using Uncertainty::Points;
using Uncertainty::Propagated;
using Uncertainty::Source;

constexpr double kTwoSided95 = 1.959963984540054;  // of the normal distribution
constexpr double kWithin = 0.005;

// Σ coefficient · source + 3.
BlockModel Linear(std::vector<double> coefficients) {
  return [coefficients](std::span<const Column> sources, std::size_t trials,
                        std::span<Column> results) {
    for (std::size_t k = 0; k < trials; ++k) {
      double sum = 3.0;
      for (std::size_t i = 0; i < coefficients.size(); ++i)
        sum += coefficients[i] * sources[i].at[k];
      results[0].at[k] = sum;
    }
  };
}

Uncertainty::Spread Spread(const std::vector<Source>& sources, const BlockModel& model) {
  const Points points(sources.size(), 5, 0);
  Uncertainty::Settings settings;
  settings.trials = 1'000'000;
  settings.budget = true;
  Propagated propagated = Propagate(sources, model, 1, points, settings);
  EXPECT_EQ(propagated.ok, settings.trials);
  return propagated.results[0];
}

void ExpectSpread(const Uncertainty::Spread& spread, double centre, double u, double halfWidth) {
  ASSERT_TRUE(spread.u && spread.interval);
  EXPECT_NEAR(*spread.u, u, kWithin * u);
  EXPECT_NEAR(spread.interval->low - centre, -halfWidth, kWithin * halfWidth);
  EXPECT_NEAR(spread.interval->high - centre, halfWidth, kWithin * halfWidth);
}

TEST(LinearModel, AddsVariancesOfNormalErrors) {
  const std::vector<Source> sources = {{10.0, 0.5}, {-4.0, 2.0}, {0.0, 0.1}, {7.0, 0.0}};
  const Uncertainty::Spread spread = Spread(sources, Linear({2.0, 0.25, -3.0, 1.0}));
  const double u = std::sqrt(1.0 + 0.25 + 0.09);
  ExpectSpread(spread, 3.0 + 20.0 - 1.0 + 7.0, u, kTwoSided95 * u);
  ASSERT_EQ(spread.budget.size(), 4U);
  EXPECT_NEAR(spread.budget[0], 1.0 / 1.34, kWithin);
  EXPECT_NEAR(spread.budget[1], 0.25 / 1.34, kWithin);
  EXPECT_NEAR(spread.budget[2], 0.09 / 1.34, kWithin);
  EXPECT_EQ(spread.budget[3], 0.0);
}

TEST(LinearModel, KeepsAUniformErrorUniform) {
  const Uncertainty::Spread spread = Spread({{1.0, 0.2, Distribution::Uniform}}, Linear({1.0}));
  ExpectSpread(spread, 4.0, 0.2, 0.95 * std::sqrt(3.0) * 0.2);
}

TEST(LinearModel, KeepsATriangularErrorTriangular) {
  const Uncertainty::Spread spread = Spread({{1.0, 0.2, Distribution::Triangular}}, Linear({1.0}));
  ExpectSpread(spread, 4.0, 0.2, (1.0 - std::sqrt(0.05)) * std::sqrt(6.0) * 0.2);
}

// Two uniform errors of one size add up to a triangular one (JCGM 101, 9.2.3).
TEST(LinearModel, AddsUniformErrorsToATriangularOne) {
  const Uncertainty::Spread spread = Spread(
      {{1.0, 0.2, Distribution::Uniform}, {1.0, 0.2, Distribution::Uniform}}, Linear({1.0, 1.0}));
  const double u = 0.2 * std::sqrt(2.0);
  ExpectSpread(spread, 5.0, u, (1.0 - std::sqrt(0.05)) * std::sqrt(6.0) * u);
}

TEST(LinearModel, AddsErrorsOfThreeDistributions) {
  const Uncertainty::Spread spread =
      Spread({{0.0, 1.0}, {0.0, 0.7, Distribution::Uniform}, {0.0, 0.4, Distribution::Triangular}},
             Linear({1.0, 1.0, 1.0}));
  ASSERT_TRUE(spread.u);
  EXPECT_NEAR(*spread.u, std::sqrt(1.0 + 0.49 + 0.16), kWithin);
}

// Lengths that share a factor: it leaves their ratio alone, and moves each as it moves all.
TEST(SharedFactor, MovesLengthsTogether) {
  const BlockModel model = [](std::span<const Column> sources, std::size_t trials,
                              std::span<Column> results) {
    for (std::size_t k = 0; k < trials; ++k) {
      const double first = sources[0].at[k] / sources[2].at[k];
      const double second = sources[1].at[k] / sources[2].at[k];
      results[0].at[k] = first;
      results[1].at[k] = first / second;
      results[2].at[k] = first - 2.0 * second;
    }
  };
  const std::vector<Source> sources = {{8.0, 0.0}, {4.0, 0.0}, {1.2, 0.03}};
  const Points points(3, 5, 0);
  Uncertainty::Settings settings;
  settings.trials = 1'000'000;
  const Propagated propagated = Propagate(sources, model, 3, points, settings);
  const Uncertainty::Spread& length = propagated.results[0];
  const double low = 8.0 / (1.2 + kTwoSided95 * 0.03);
  const double high = 8.0 / (1.2 - kTwoSided95 * 0.03);
  EXPECT_NEAR(length.interval->low, low, kWithin * (high - low));
  EXPECT_NEAR(length.interval->high, high, kWithin * (high - low));
  EXPECT_LT(*propagated.results[1].u, 1e-12);
  EXPECT_LT(*propagated.results[2].u, 1e-12);
}

// Of a product of independent quantities.
TEST(SharedFactor, AddsToTheErrorOfEachLength) {
  const BlockModel model = [](std::span<const Column> sources, std::size_t trials,
                              std::span<Column> results) {
    for (std::size_t k = 0; k < trials; ++k) {
      results[0].at[k] = (sources[0].at[k] + sources[1].at[k]) * sources[2].at[k];
    }
  };
  const Uncertainty::Spread spread = Spread({{6.0, 0.3}, {2.0, 0.4}, {0.9, 0.05}}, model);
  const double sum = 0.09 + 0.16;
  const double factor = 0.0025;
  EXPECT_NEAR(*spread.u, std::sqrt(64.0 * factor + 0.81 * sum + sum * factor), kWithin * 0.6);
}

// What two quantities have in common falls out of their difference.
TEST(CommonSource, FallsOutOfADifference) {
  const Uncertainty::Spread spread =
      Spread({{5.0, 0.1}, {4.0, 0.2}, {0.0, 3.0}},
             [](std::span<const Column> sources, std::size_t trials, std::span<Column> results) {
               for (std::size_t k = 0; k < trials; ++k) {
                 const double left = sources[0].at[k] + sources[2].at[k];
                 const double right = sources[1].at[k] + sources[2].at[k];
                 results[0].at[k] = left - right;
               }
             });
  const double u = std::sqrt(0.01 + 0.04);
  ExpectSpread(spread, 1.0, u, kTwoSided95 * u);
}

}  // namespace
