// How far a fitted circle is from the true one when the marks scatter, over many trials.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "landmarks/circle_fit.h"
#include "tests/support/random_numbers.h"

namespace {

using Landmarks::Point;

constexpr double kDegree = std::numbers::pi / 180.0;
constexpr double kRadius = 25.0;  // mm
constexpr double kNoise = 0.5;    // mm, of every mark in each direction
constexpr int kTrials = 20000;    // the mean of the radius is then known to 0.006 mm

struct Scatter {
  double bias = 0.0;
  double deviation = 0.0;
  double meanU = 0.0;  // root of the mean square of what the fit says of itself
  double xDeviation = 0.0;
  double meanXU = 0.0;
};

std::vector<Point> NoisyMarks(RandomNumbers& random, double arc, int count) {
  std::vector<Point> points;
  for (int i = 0; i < count; ++i) {
    const double angle = arc * (static_cast<double>(i) / (count - 1) - 0.5);
    points.push_back({200.0 + kRadius * std::cos(angle) + random.Normal(0.0, kNoise),
                      300.0 + kRadius * std::sin(angle) + random.Normal(0.0, kNoise)});
  }
  return points;
}

Scatter ScatterOf(double arcDegrees, int count, std::uint64_t seed) {
  RandomNumbers random(seed);
  double sum = 0.0;
  double squares = 0.0;
  double xSquares = 0.0;
  double u = 0.0;
  double xu = 0.0;
  for (int trial = 0; trial < kTrials; ++trial) {
    const auto fit = Landmarks::FitCircle(NoisyMarks(random, arcDegrees * kDegree, count));
    const double error = fit.value().circle.radius - kRadius;
    sum += error;
    squares += error * error;
    xSquares += std::pow(fit->circle.centre.x - 200.0, 2);
    u += std::pow(fit->u.value().radius, 2);
    xu += std::pow(fit->u->x, 2);
  }
  const double bias = sum / kTrials;
  return {bias, std::sqrt(squares / kTrials - bias * bias), std::sqrt(u / kTrials),
          std::sqrt(xSquares / kTrials), std::sqrt(xu / kTrials)};
}

TEST(CircleFitOnNoisyMarks, OnHalfTheOutlineScattersByAThirdOfAMillimetre) {
  const Scatter scatter = ScatterOf(180.0, 8, 1);
  RecordProperty("bias", std::to_string(scatter.bias));
  RecordProperty("deviation", std::to_string(scatter.deviation));
  EXPECT_LE(scatter.deviation, 0.35);
  EXPECT_LE(std::abs(scatter.bias), 0.05);
}

TEST(CircleFitOnNoisyMarks, OnAThirdOfTheOutlineIsNeitherLargeNorSmallOnAverage) {
  const Scatter scatter = ScatterOf(120.0, 8, 2);
  RecordProperty("bias", std::to_string(scatter.bias));
  EXPECT_LE(std::abs(scatter.bias), 0.05);
}

TEST(CircleFitOnNoisyMarks, KnowsItsOwnUncertainty) {
  for (const double arc : {150.0, 180.0, 270.0, 330.0}) {
    SCOPED_TRACE(arc);
    const Scatter scatter = ScatterOf(arc, 10, 3);
    EXPECT_NEAR(scatter.meanU / scatter.deviation, 1.0, 0.05);
    EXPECT_NEAR(scatter.meanXU / scatter.xDeviation, 1.0, 0.05);
  }
}

TEST(CircleFitOnNoisyMarks, IsLessCertainTheShorterTheArc) {
  const double half = ScatterOf(180.0, 8, 4).deviation;
  const double third = ScatterOf(120.0, 8, 4).deviation;
  EXPECT_GT(third, 1.7 * half);
}

}  // namespace
