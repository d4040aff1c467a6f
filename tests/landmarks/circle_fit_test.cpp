// Circles through marks: exact where the marks are, refused where there is no circle.
#include "landmarks/circle_fit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <optional>
#include <vector>

#include "tests/support/random_numbers.h"

namespace {

using Landmarks::Circle;
using Landmarks::CircleFit;
using Landmarks::CircleThrough;
using Landmarks::FitCircle;
using Landmarks::Point;

constexpr double kDegree = std::numbers::pi / 180.0;
constexpr double kExact = 1e-9;  // mm

Point OnOutline(const Circle& circle, double angle) {
  return circle.centre + circle.radius * Point{std::cos(angle), std::sin(angle)};
}

std::vector<Point> Arc(const Circle& circle, double from, double to, int count) {
  std::vector<Point> points;
  points.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    points.push_back(OnOutline(circle, from + (to - from) * i / (count - 1)));
  }
  return points;
}

void ExpectSame(const Circle& found, const Circle& truth, double tolerance) {
  EXPECT_NEAR(found.centre.x, truth.centre.x, tolerance);
  EXPECT_NEAR(found.centre.y, truth.centre.y, tolerance);
  EXPECT_NEAR(found.radius, truth.radius, tolerance);
}

TEST(CircleThroughThreePoints, IsExactWhereverTheyAreOnTheOutline) {
  RandomNumbers random(14);
  for (int trial = 0; trial < 2000; ++trial) {
    const Circle truth = {{random.Uniform(0.0, 430.0), random.Uniform(0.0, 430.0)},
                          random.Uniform(10.0, 40.0)};
    const double start = random.Uniform(0.0, 2.0 * std::numbers::pi);
    const double second = start + random.Uniform(0.4, 2.0);
    const double third = second + random.Uniform(0.4, 2.0);
    const std::optional<Circle> found =
        CircleThrough(OnOutline(truth, start), OnOutline(truth, second), OnOutline(truth, third));
    ASSERT_TRUE(found);
    ExpectSame(*found, truth, kExact);
  }
}

TEST(CircleFit, IsExactOnExactPoints) {
  for (const double arc : {60.0, 120.0, 180.0, 270.0, 350.0}) {
    for (const int count : {3, 4, 8, 40}) {
      SCOPED_TRACE(testing::Message() << count << " points on " << arc << " degrees");
      const Circle truth = {{212.3, 301.7}, 24.6};
      const std::optional<CircleFit> fit =
          FitCircle(Arc(truth, -170.0 * kDegree, (arc - 170.0) * kDegree, count));
      ASSERT_TRUE(fit);
      ExpectSame(fit->circle, truth, kExact);
      EXPECT_EQ(fit->points, static_cast<std::size_t>(count));
      EXPECT_NEAR(fit->residual, 0.0, kExact);
    }
  }
}

// A square's corners lie on one circle; the middle of one side moves it by what geometry says.
TEST(CircleFit, HasTheLeastSumOfSquares) {
  const std::vector<Point> points = {{1, 0}, {0, 1}, {-1, 0}, {0, -1.3}, {0.8, 0.9}};
  const std::optional<CircleFit> fit = FitCircle(points);
  ASSERT_TRUE(fit);
  const auto squares = [&](double dx, double dy, double dr) {
    double sum = 0.0;
    for (const Point& p : points) {
      const double distance =
          std::hypot(p.x - fit->circle.centre.x - dx, p.y - fit->circle.centre.y - dy) -
          fit->circle.radius - dr;
      sum += distance * distance;
    }
    return sum;
  };
  const double least = squares(0, 0, 0);
  EXPECT_NEAR(fit->residual, std::sqrt(least / 2.0), 1e-12);
  for (const double step : {-1e-4, 1e-4}) {
    EXPECT_GT(squares(step, 0, 0), least);
    EXPECT_GT(squares(0, step, 0), least);
    EXPECT_GT(squares(0, 0, step), least);
  }
}

TEST(CircleFit, TellsTheArcThatIsMarked) {
  const Circle circle = {{50.0, 60.0}, 25.0};
  for (const double arc : {30.0, 149.0, 151.0, 180.0, 300.0}) {
    for (const double from : {0.0, 100.0, 170.0, -90.0}) {
      SCOPED_TRACE(testing::Message() << arc << " degrees from " << from);
      const auto fit = FitCircle(Arc(circle, from * kDegree, (from + arc) * kDegree, 12));
      ASSERT_TRUE(fit);
      EXPECT_NEAR(fit->arc / kDegree, arc, 1e-6);
      EXPECT_EQ(fit->IsShortArc(), arc < 150.0);
    }
  }
}

TEST(CircleFit, OfThreePointsKnowsNothingOfItsScatter) {
  const auto three = FitCircle(Arc({{0.0, 0.0}, 25.0}, 0.0, 3.0, 3));
  ASSERT_TRUE(three);
  EXPECT_FALSE(three->u);
  const auto four = FitCircle(Arc({{0.0, 0.0}, 25.0}, 0.0, 3.0, 4));
  ASSERT_TRUE(four);
  EXPECT_TRUE(four->u);
}

// For n points all around: the radius as a mean has 1/√n of a point's uncertainty.
TEST(CircleFit, OfAFullOutlineHasTheUncertaintyOfAMean) {
  const Circle circle = {{0.0, 0.0}, 25.0};
  const auto fit = FitCircle(Arc(circle, 0.0, 2.0 * std::numbers::pi * 15.0 / 16.0, 16));
  ASSERT_TRUE(fit);
  EXPECT_NEAR(fit->perMark[2][2], 1.0 / 16.0, 1e-9);
  EXPECT_NEAR(fit->perMark[0][0], 2.0 / 16.0, 1e-9);
  EXPECT_NEAR(fit->perMark[0][2], 0.0, 1e-9);
}

struct NoCircle {
  const char* name;
  std::vector<Point> points;
};

TEST(CircleFit, IsRefusedWhereThePointsTellNone) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  const std::vector<Point> slantedLine = {
      {0.1, 7.3}, {0.2, 7.6}, {0.3, 7.9}, {0.7, 9.1}, {0.9, 9.7}};
  for (const NoCircle& row : {
           NoCircle{"no point", {}},
           {"one point", {{1, 2}}},
           {"two points", {{1, 2}, {3, 4}}},
           {"three on a level line", {{1, 2}, {3, 2}, {9, 2}}},
           {"three on a slanted line", {{0.1, 0.3}, {0.2, 0.6}, {0.7, 2.1}}},
           {"two of three coincide", {{1, 2}, {1, 2}, {9, 5}}},
           {"two of three differ by rounding alone", {{1, 2}, {1 + 1e-14, 2 - 1e-14}, {9, 5}}},
           {"all coincide", {{1, 2}, {1, 2}, {1, 2}, {1, 2}}},
           {"two places, twice each", {{0.1, 0.7}, {0.1, 0.7}, {0.9, 0.4}, {0.9, 0.4}}},
           {"five on a slanted line", slantedLine},
           {"hardly any arc", Arc({{0, 0}, 1000.0}, 0.0, 0.005, 5)},
           {"not a number", {{1, 2}, {3, 9}, {nan, 4}, {5, 1}}},
           {"infinite", {{1, 2}, {3, 9}, {infinity, 4}, {5, 1}}},
       }) {
    EXPECT_FALSE(FitCircle(row.points)) << row.name;
    if (row.points.size() == 3) {
      EXPECT_FALSE(CircleThrough(row.points[0], row.points[1], row.points[2])) << row.name;
    }
  }
}

TEST(CircleFit, TakesPointsThatWereMarkedTwice) {
  std::vector<Point> points = Arc({{10.0, 20.0}, 25.0}, 0.0, 3.0, 4);
  points.push_back(points.front());
  const auto fit = FitCircle(points);
  ASSERT_TRUE(fit);
  ExpectSame(fit->circle, {{10.0, 20.0}, 25.0}, kExact);
}

}  // namespace
