// The made-up radiograph knows the truth, and marks at the truth measure it.
#include "tests/support/phantom.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "landmarks/circle_fit.h"
#include "landmarks/measure.h"
#include "landmarks/side.h"

namespace {

using Landmarks::Circle;
using Landmarks::Marks;
using Landmarks::Measurements;
using Landmarks::Point;

constexpr double kDegree = std::numbers::pi / 180.0;

// How far a ray from the source passes the ball's centre, by the cross product.
double PassingDistance(Point onDetector, double sourceToDetector, double x, double y, double z) {
  const double cx = onDetector.y * z - sourceToDetector * y;
  const double cy = sourceToDetector * x - onDetector.x * z;
  const double cz = onDetector.x * y - onDetector.y * x;
  return std::hypot(cx, cy, cz) / std::hypot(onDetector.x, onDetector.y, sourceToDetector);
}

// The outline of a ball at x, y, z from the source: in every direction from its shadow's middle the
// place where the ray just touches it, found by halving.
std::vector<Point> TouchingRays(double sourceToDetector, double x, double y, double z,
                                double radius) {
  std::vector<Point> outline;
  const Point middle = sourceToDetector / z * Point{x, y};
  for (int i = 0; i < 720; ++i) {
    const Point out = {std::cos(i * kDegree / 2.0), std::sin(i * kDegree / 2.0)};
    double inside = 0.0;
    double outside = 3.0 * radius;
    for (int step = 0; step < 60; ++step) {
      const double half = (inside + outside) / 2.0;
      const double distance = PassingDistance(middle + half * out, sourceToDetector, x, y, z);
      (distance < radius ? inside : outside) = half;
    }
    outline.push_back(middle + inside * out);
  }
  return outline;
}

// Truth for a pelvis that stands upright, the patient's left at the right of the picture.
struct Upright {
  Phantom::Anatomy anatomy;
  Phantom::Setup setup;
  Circle left;  // from the central ray, mm on the picture
  Circle right;
};

Upright UprightOf(const Phantom::Anatomy& anatomy, const Phantom::Setup& setup) {
  const auto outline = [&](double x) {
    return Landmarks::FitCircle(TouchingRays(setup.sourceToDetector, x + setup.pelvis.x,
                                             setup.pelvis.y, setup.sourceToHip, anatomy.headRadius))
        .value()
        .circle;
  };
  return {anatomy, setup, outline(anatomy.halfInterhip), outline(-anatomy.halfInterhip)};
}

// The measurements of the left hip in plain coordinates: lateral is to the right, up is up.
Measurements Expected(const Upright& upright) {
  const Phantom::Anatomy& a = upright.anatomy;
  const double m = upright.setup.sourceToDetector / upright.setup.sourceToHip;
  const Point head =
      1.0 / m * upright.left.centre - upright.setup.pelvis;  // true mm, from the middle
  const double halfInterhip = (upright.left.centre.x - upright.right.centre.x) / 2.0 / m;
  const double edge = a.headRadius + a.jointSpace;
  const Point socket = {a.halfInterhip + edge * std::sin(a.centreEdge),
                        -edge * std::cos(a.centreEdge)};
  Measurements expected;
  expected.halfInterhip = {halfInterhip};
  expected.trochanterX = {a.trochanterX - head.y};
  expected.trochanterZ = {a.halfInterhip + a.trochanterZ - head.x};
  expected.crestWidth = {a.halfInterhip + a.crestWidth - head.x};
  expected.crestHeight = {a.crestHeight + head.y};
  expected.centreEdge = {std::atan2(socket.x - head.x, head.y - socket.y)};
  expected.headRadius = {upright.left.radius / m};
  return expected;
}

void ExpectSame(const Measurements& found, const Measurements& truth) {
  constexpr double kLength = 0.05;  // mm
  constexpr double kAngle = 0.05 * kDegree;
  EXPECT_NEAR(found.halfInterhip.value().value, truth.halfInterhip->value, kLength);
  EXPECT_NEAR(found.trochanterX.value().value, truth.trochanterX->value, kLength);
  EXPECT_NEAR(found.trochanterZ.value().value, truth.trochanterZ->value, kLength);
  EXPECT_NEAR(found.crestWidth.value().value, truth.crestWidth->value, kLength);
  EXPECT_NEAR(found.crestHeight.value().value, truth.crestHeight->value, kLength);
  EXPECT_NEAR(found.centreEdge.value().value, truth.centreEdge->value, kAngle);
  EXPECT_NEAR(found.headRadius.value().value, truth.headRadius->value, kLength);
}

TEST(PhantomTruth, HasTheCirclesThatFitTheOutlinesBest) {
  for (const double tilt : {-10.0, 0.0, 10.0}) {
    Phantom::Setup setup;
    setup.tilt = tilt * kDegree;
    setup.axis = Point{0.0, 0.0};
    const Phantom::Anatomy anatomy;
    const double x = anatomy.halfInterhip * std::cos(setup.tilt) + setup.pelvis.x;
    const double y = anatomy.halfInterhip * std::sin(setup.tilt) + setup.pelvis.y;
    const auto outline = Landmarks::FitCircle(
        TouchingRays(setup.sourceToDetector, x, y, setup.sourceToHip, anatomy.headRadius));
    const Circle truth = Phantom::TruthOf(anatomy, setup).left.head.value();
    EXPECT_NEAR(truth.centre.x, outline->circle.centre.x, 1e-3);
    EXPECT_NEAR(truth.centre.y, outline->circle.centre.y, 1e-3);
    EXPECT_NEAR(truth.radius, outline->circle.radius, 1e-3);
  }
}

TEST(PhantomTruth, HasOutlinesLittleLargerThanTheMagnifiedHeads) {
  const Phantom::Anatomy anatomy;
  const Phantom::Truth truth = Phantom::TruthOf(anatomy, {});
  const double magnified = anatomy.headRadius * truth.magnification;
  EXPECT_GT(truth.left.head->radius, magnified + 0.05);
  EXPECT_LT(truth.left.head->radius, magnified + 0.25);
}

TEST(MarksAtTheTruth, MeasureItOnBothSidesTiltedAndFlipped) {
  Phantom::Setup setup;
  setup.spacing = {.row = 0.2, .column = 0.3};
  const Phantom::Anatomy anatomy;
  const Measurements truth = Expected(UprightOf(anatomy, setup));
  for (const bool flipped : {false, true}) {
    for (const double tilt : {-10.0, 0.0, 10.0}) {
      setup.flipped = flipped;
      setup.tilt = tilt * kDegree;
      const Phantom::Truth marks = Phantom::TruthOf(anatomy, setup);
      SCOPED_TRACE(testing::Message() << tilt << " degrees" << (flipped ? ", flipped" : ""));
      ExpectSame(Measure(marks.left, {marks.magnification, 0.0}), truth);
      ExpectSame(Measure(marks.right, {marks.magnification, 0.0}), truth);
    }
  }
}

// What marking an outline costs: its middle lies a little further from the central ray than the
// head's.
TEST(MarksAtTheTruth, AreNoMoreThanATenthOfAMillimetreFromTheAnatomy) {
  const Phantom::Anatomy anatomy;
  const Phantom::Truth marks = Phantom::TruthOf(anatomy, {});
  const Measurements found = Measure(marks.left, {marks.magnification, 0.0});
  EXPECT_NEAR(found.halfInterhip->value, anatomy.halfInterhip, 0.1);
  EXPECT_NEAR(found.trochanterX->value, anatomy.trochanterX, 0.1);
  EXPECT_NEAR(found.trochanterZ->value, anatomy.trochanterZ, 0.1);
  EXPECT_NEAR(found.crestWidth->value, anatomy.crestWidth, 0.1);
  EXPECT_NEAR(found.crestHeight->value, anatomy.crestHeight, 0.1);
  EXPECT_NEAR(found.headRadius->value, anatomy.headRadius, 0.2);
  EXPECT_NEAR(found.centreEdge->value, anatomy.centreEdge, 0.2 * kDegree);
}

TEST(MarksAtTheTruth, TellTheSideWhereverItIsOnThePicture) {
  for (const bool flipped : {false, true}) {
    Phantom::Setup setup;
    setup.flipped = flipped;
    setup.tilt = 10.0 * kDegree;
    const Phantom::Truth marks = Phantom::TruthOf({}, setup);
    const auto orientation = Landmarks::ReadOrientation(flipped ? "R\\F" : "L\\F");
    const auto sideOf = [&](const Marks& hip) {
      return SideOf(FrameOf(hip).value(), orientation, std::nullopt).side;
    };
    EXPECT_EQ(sideOf(marks.left), Landmarks::Side::Left);
    EXPECT_EQ(sideOf(marks.right), Landmarks::Side::Right);
  }
}

TEST(MarksAtTheTruth, OfABallOfKnownSizeGiveTheMagnification) {
  Phantom::Setup setup;
  setup.ball = Phantom::Ball{};
  const Phantom::Truth truth = Phantom::TruthOf({}, setup);
  std::vector<Point> marks;
  marks.reserve(8);
  for (int i = 0; i < 8; ++i) {
    marks.push_back(truth.ball->centre +
                    truth.ball->radius * Point{std::cos(i * 0.8), std::sin(i * 0.8)});
  }
  const auto fit = Landmarks::FitCircle(marks);
  const auto found = Landmarks::MagnificationOfBall(fit.value(), {25.0, 0.0}, 0.1);
  EXPECT_NEAR(found.value().factor / truth.magnification, 1.0, 0.02);
}

Phantom::Picture AroundTheLeftHead(double signalToNoise, double halfWidth) {
  Phantom::Setup setup;
  setup.signalToNoise = signalToNoise;
  const Point head = Phantom::TruthOf({}, setup).left.head->centre;
  return Phantom::Render({}, Phantom::PartOf(setup, head, halfWidth));
}

int GreyAt(const Phantom::Picture& picture, Point point) {
  const Landmarks::PixelPlace place = InPixels(point, picture.spacing);
  return picture.grey[static_cast<std::size_t>(std::lround(place.row) * picture.width +
                                               std::lround(place.column))];
}

TEST(PhantomPicture, IsBrightInTheHeadAndDarkInTheJointSpaceAboveIt) {
  const Phantom::Picture picture = AroundTheLeftHead(0.0, 40.0);
  const Circle head = picture.truth.left.head.value();
  const double space = 2.0 * picture.truth.magnification;
  const int inside = GreyAt(picture, head.centre + Point{-4.0, 3.0 - head.radius});
  const int gap = GreyAt(picture, head.centre + Point{-4.0, -head.radius - space});
  const int roof = GreyAt(picture, head.centre + Point{-4.0, -head.radius - 4.0 * space});
  EXPECT_GT(inside, gap + 50);
  EXPECT_GT(roof, gap + 50);
}

// A part of the picture shows what the whole shows there.
TEST(PhantomPicture, OfAPartIsThatPartOfTheWhole) {
  Phantom::Setup setup;
  setup.signalToNoise = 0.0;
  setup.spacing = {0.9, 0.6};
  setup.width = 700;
  setup.height = 400;
  const Phantom::Picture whole = Phantom::Render({}, setup);
  const Point head = whole.truth.left.head->centre;
  const Phantom::Picture part = Phantom::Render({}, Phantom::PartOf(setup, head, 30.0));
  EXPECT_EQ(GreyAt(part, part.truth.left.head->centre), GreyAt(whole, head));
  const Point place = {11.4, -9.9};
  EXPECT_EQ(GreyAt(part, part.truth.left.head->centre + place), GreyAt(whole, head + place));
}

// Neighbours lie on nearly the same path, so their difference is noise: √2 times one thirtieth of
// the signal, at 800 grey levels a unit of path.
TEST(PhantomPicture, HasTheNoiseThatIsAskedFor) {
  for (const double signalToNoise : {15.0, 30.0, 60.0}) {
    const Phantom::Picture picture = AroundTheLeftHead(signalToNoise, 6.0);
    double squares = 0.0;
    int count = 0;
    for (std::size_t i = 1; i < picture.grey.size(); i += 2) {
      const double difference = double{1.0} * picture.grey[i] - picture.grey[i - 1];
      squares += difference * difference;
      ++count;
    }
    const double deviation = std::sqrt(squares / count / 2.0) / 800.0;
    EXPECT_NEAR(deviation * signalToNoise, 1.0, 0.08) << signalToNoise;
  }
}

}  // namespace
