// Pixels to millimetres, and scale from objects of known size.
#include "landmarks/picture_scale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "tests/support/random_numbers.h"

namespace {

using Landmarks::CircleFit;
using Landmarks::MagnificationOfBall;
using Landmarks::MagnificationOfLine;
using Landmarks::PixelSpacing;
using Landmarks::Point;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(PixelSpacing, IsAppliedToEachDirectionOnItsOwn) {
  const PixelSpacing spacing = {.row = 0.2, .column = 0.1};
  const Point point = Landmarks::OnPicture({.column = 30.0, .row = 40.0}, spacing);
  EXPECT_DOUBLE_EQ(point.x, 3.0);
  EXPECT_DOUBLE_EQ(point.y, 8.0);
  const Landmarks::PixelPlace back = Landmarks::InPixels(point, spacing);
  EXPECT_DOUBLE_EQ(back.column, 30.0);
  EXPECT_DOUBLE_EQ(back.row, 40.0);
}

TEST(MagnificationOfALine, IsItsLengthOnThePictureOverItsTrueLength) {
  const auto found = MagnificationOfLine({10.0, 10.0}, {46.0, 58.0}, {50.0, 0.0}, 0.0);
  ASSERT_TRUE(found);
  EXPECT_DOUBLE_EQ(found->factor, 1.2);
  EXPECT_DOUBLE_EQ(found->u, 0.0);
}

TEST(MagnificationOfALine, HasTheScatterOfItsMarksAndOfItsLength) {
  RandomNumbers random(5);
  constexpr int kTrials = 40000;
  double sum = 0.0;
  double squares = 0.0;
  const auto mark = [&](double x, double y) {
    return Point{random.Normal(x, 0.4), random.Normal(y, 0.4)};
  };
  for (int i = 0; i < kTrials; ++i) {
    const double length = random.Normal(50.0, 0.3);
    const double factor =
        MagnificationOfLine(mark(10.0, 10.0), mark(46.0, 58.0), {length, 0.0}, 0.0)->factor;
    sum += factor;
    squares += factor * factor;
  }
  const double mean = sum / kTrials;
  const double deviation = std::sqrt(squares / kTrials - mean * mean);
  const auto said = MagnificationOfLine({10.0, 10.0}, {46.0, 58.0}, {50.0, 0.3}, 0.4);
  ASSERT_TRUE(said);
  EXPECT_NEAR(said->u / deviation, 1.0, 0.02);
}

CircleFit BallFit(int count, double noise) {
  RandomNumbers random(6);
  std::vector<Point> points;
  for (int i = 0; i < count; ++i) {
    const double angle = 2.0 * std::numbers::pi * i / count;
    const double radius = 15.0 + random.Normal(0.0, noise);
    points.push_back({radius * std::cos(angle), radius * std::sin(angle)});
  }
  return Landmarks::FitCircle(points).value();
}

TEST(MagnificationOfABall, IsItsDiameterOnThePictureOverItsTrueDiameter) {
  const auto found = MagnificationOfBall(BallFit(8, 0.0), {25.0, 0.0}, 0.0);
  ASSERT_TRUE(found);
  EXPECT_NEAR(found->factor, 1.2, 1e-12);
}

TEST(MagnificationOfABall, HasTheUncertaintyOfTheCircleAndOfTheBall) {
  const CircleFit fit = BallFit(40, 0.5);
  const auto found = MagnificationOfBall(fit, {25.0, 0.05}, 9.0);
  ASSERT_TRUE(found);
  const double relative = std::hypot(fit.u->radius / fit.circle.radius, 0.05 / 25.0);
  EXPECT_NEAR(found->u, found->factor * relative, 1e-12);
  EXPECT_NEAR(fit.u->radius, 0.5 / std::sqrt(40.0), 0.02);
}

// Three points meet any circle, so their own scatter says nothing; spread evenly they leave the
// radius 1/√3 of a mark's uncertainty.
TEST(MagnificationOfABall, ThroughThreeMarksTakesTheUncertaintyOfAMark) {
  const auto found = MagnificationOfBall(BallFit(3, 0.0), {25.0, 0.0}, 0.3);
  ASSERT_TRUE(found);
  EXPECT_NEAR(found->u, 1.2 * 0.3 / std::sqrt(3.0) / 15.0, 1e-12);
}

TEST(Magnification, IsRefusedForSizesThatNoObjectHas) {
  const CircleFit ball = BallFit(8, 0.1);
  for (const double size : {0.0, -25.0, kNan, std::numeric_limits<double>::infinity()}) {
    EXPECT_FALSE(MagnificationOfBall(ball, {size, 0.0}, 0.1)) << size;
    EXPECT_FALSE(MagnificationOfLine({0.0, 0.0}, {3.0, 4.0}, {size, 0.0}, 0.1)) << size;
  }
  EXPECT_FALSE(MagnificationOfLine({3.0, 4.0}, {3.0, 4.0}, {50.0, 0.0}, 0.1));
  EXPECT_FALSE(MagnificationOfLine({kNan, 4.0}, {3.0, 4.0}, {50.0, 0.0}, 0.1));
  EXPECT_FALSE(MagnificationOfLine({0.0, 0.0}, {3.0, 4.0}, {50.0, -1.0}, 0.1));
  EXPECT_FALSE(MagnificationOfLine({0.0, 0.0}, {3.0, 4.0}, {50.0, 0.0}, kNan));
}

}  // namespace
