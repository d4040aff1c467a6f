// Measurements of a hip from its marks: known distances on a drawn pelvis, wherever it lies.
#include "landmarks/measure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <string>
#include <vector>

#include "model/vocabulary.h"

namespace {

using Landmarks::Circle;
using Landmarks::Mark;
using Landmarks::Marks;
using Landmarks::Measurements;
using Landmarks::Midline;
using Landmarks::Point;

constexpr double kDegree = std::numbers::pi / 180.0;
constexpr double kMagnification = 1.18;

// Where the patient's tissue is: lateral and up from the head's centre of the hip, true mm.
struct Anatomy {
  double halfInterhip = 104.0;
  double radius = 25.0;
  Point socketEdge = {40.0 * std::sin(0.5), 40.0 * std::cos(0.5)};  // CE 0.5 rad
  Point crestTop = {-6.0, 160.0};
  Point crestLateral = {44.0, 130.0};
  Point trochanter = {60.0, -5.0};
};

using ToPicture = std::function<Point(Point)>;  // from lateral and up, true mm

Marks MarksOf(const Anatomy& anatomy, const ToPicture& at) {
  Marks marks;
  marks.head = Circle{at({0.0, 0.0}), kMagnification * anatomy.radius};
  marks.other =
      Circle{at({-2.0 * anatomy.halfInterhip, 0.0}), kMagnification * (anatomy.radius + 1.0)};
  marks.socketEdge = at(anatomy.socketEdge);
  marks.crestTop = at(anatomy.crestTop);
  marks.crestLateral = at(anatomy.crestLateral);
  marks.trochanter = at(anatomy.trochanter);
  return marks;
}

// On a picture with the hip at its right or left edge, tilted clockwise.
ToPicture Standing(bool atRight, double tilt) {
  return [=](Point p) {
    const Point drawn = kMagnification * Point{atRight ? p.x : -p.x, -p.y};
    return Point{215.0 + drawn.x * std::cos(tilt) - drawn.y * std::sin(tilt),
                 300.0 + drawn.x * std::sin(tilt) + drawn.y * std::cos(tilt)};
  };
}

void ExpectAnatomy(const Measurements& found) {
  EXPECT_NEAR(found.halfInterhip.value().value, 104.0, 1e-10);
  EXPECT_NEAR(found.trochanterX.value().value, 5.0, 1e-10);
  EXPECT_NEAR(found.trochanterZ.value().value, 60.0, 1e-10);
  EXPECT_NEAR(found.crestWidth.value().value, 44.0, 1e-10);
  EXPECT_NEAR(found.crestHeight.value().value, 160.0, 1e-10);
  EXPECT_NEAR(found.centreEdge.value().value, 0.5, 1e-12);
  EXPECT_NEAR(found.headRadius.value().value, 25.0, 1e-10);
}

TEST(Measurements, DependOnNoSideAndNoTilt) {
  for (const bool atRight : {true, false}) {
    for (const double tilt : {-85.0, -10.0, 0.0, 10.0, 85.0}) {
      SCOPED_TRACE(testing::Message() << (atRight ? "right" : "left") << ", tilt " << tilt);
      const Marks marks = MarksOf({}, Standing(atRight, tilt * kDegree));
      ExpectAnatomy(Measure(marks, {kMagnification, 0.0}));
      EXPECT_FALSE(IsUpsideDown(marks));
    }
  }
}

TEST(Measurements, AreTheSameOnAPictureThatStandsOnItsHeadOrSideAndSaysSo) {
  for (const double turn : {90.0, 180.0, 270.0}) {
    SCOPED_TRACE(turn);
    Marks marks = MarksOf({}, Standing(true, turn * kDegree));
    marks.towardsHead = {std::sin(turn * kDegree), -std::cos(turn * kDegree)};
    ExpectAnatomy(Measure(marks, {kMagnification, 0.0}));
    EXPECT_FALSE(IsUpsideDown(marks));
  }
}

TEST(Measurements, OfAPictureOnItsHeadThatDoesNotSaySoAreTold) {
  EXPECT_TRUE(IsUpsideDown(MarksOf({}, Standing(true, std::numbers::pi))));
  Anatomy misplaced;
  misplaced.crestLateral.y = -10.0;
  EXPECT_TRUE(IsUpsideDown(MarksOf(misplaced, Standing(true, 0.0))));
}

TEST(Measurements, TakeTheMidlineWhereTheOtherHeadCannotBeUsed) {
  for (const bool atRight : {true, false}) {
    for (const double tilt : {-10.0, 0.0, 10.0}) {
      const ToPicture at = Standing(atRight, tilt * kDegree);
      Marks marks = MarksOf({}, at);
      marks.other = Midline{at({-104.0, 120.0}), at({-104.0, -30.0})};
      ExpectAnatomy(Measure(marks, {kMagnification, 0.0}));
      marks.other = Midline{at({-104.0, -30.0}), at({-104.0, 120.0})};
      ExpectAnatomy(Measure(marks, {kMagnification, 0.0}));
    }
  }
}

TEST(Measurements, KeepTheirSignsWhereAMarkLiesOnTheOtherHand) {
  Anatomy anatomy;
  anatomy.trochanter = {60.0, 8.0};
  anatomy.socketEdge = {-10.0, 30.0};
  anatomy.crestLateral = {-3.0, 130.0};
  const Measurements found = Measure(MarksOf(anatomy, Standing(false, 0.1)), {kMagnification, 0.0});
  EXPECT_NEAR(found.trochanterX.value().value, -8.0, 1e-10);
  EXPECT_NEAR(found.centreEdge.value().value, -std::atan2(10.0, 30.0), 1e-12);
  EXPECT_NEAR(found.crestWidth.value().value, -3.0, 1e-10);
}

TEST(Measurements, AreDividedByTheMagnificationOnceAndTheAngleNever) {
  const Marks marks = MarksOf({}, Standing(true, 0.05));
  const Measurements one = Measure(marks, {1.0, 0.0});
  const Measurements two = Measure(marks, {2.0, 0.0});
  EXPECT_DOUBLE_EQ(one.halfInterhip->value, 2.0 * two.halfInterhip->value);
  EXPECT_DOUBLE_EQ(one.trochanterX->value, 2.0 * two.trochanterX->value);
  EXPECT_DOUBLE_EQ(one.trochanterZ->value, 2.0 * two.trochanterZ->value);
  EXPECT_DOUBLE_EQ(one.crestWidth->value, 2.0 * two.crestWidth->value);
  EXPECT_DOUBLE_EQ(one.crestHeight->value, 2.0 * two.crestHeight->value);
  EXPECT_DOUBLE_EQ(one.headRadius->value, 2.0 * two.headRadius->value);
  EXPECT_DOUBLE_EQ(one.centreEdge->value, two.centreEdge->value);
}

// Each measurement by its name, as whether it could be taken.
std::vector<bool> Taken(const Marks& marks) {
  const Measurements m = Measure(marks, {1.0, 0.0});
  return {m.halfInterhip.has_value(), m.trochanterX.has_value(), m.trochanterZ.has_value(),
          m.crestWidth.has_value(),   m.crestHeight.has_value(), m.centreEdge.has_value(),
          m.headRadius.has_value()};
}

void ClearMark(Marks& marks, Mark mark) {
  switch (mark) {
    case Mark::Head:
      marks.head.reset();
      return;
    case Mark::Other:
      marks.other = std::monostate();
      return;
    case Mark::SocketEdge:
      marks.socketEdge.reset();
      return;
    case Mark::CrestTop:
      marks.crestTop.reset();
      return;
    case Mark::CrestLateral:
      marks.crestLateral.reset();
      return;
    case Mark::Trochanter:
      marks.trochanter.reset();
      return;
  }
}

TEST(Measurements, AreTakenOneByOneAndSayWhichMarksAreMissing) {
  constexpr int kMarks = 6;
  for (int which = 0; which < (1 << kMarks); ++which) {
    Marks marks = MarksOf({}, Standing(true, 0.0));
    for (int mark = 0; mark < kMarks; ++mark) {
      if ((which >> mark) & 1) ClearMark(marks, static_cast<Mark>(mark));
    }
    const std::vector<bool> taken = Taken(marks);
    for (std::size_t i = 0; i < Landmarks::kMeasurementMarks.size(); ++i) {
      const std::vector<Mark> missing = MissingMarks(marks, Landmarks::kMeasurementMarks[i]);
      EXPECT_EQ(taken[i], missing.empty()) << Landmarks::kMeasurementMarks[i].key << ' ' << which;
      for (const Mark mark : missing) EXPECT_TRUE((which >> static_cast<int>(mark)) & 1);
    }
  }
  const std::vector<Mark> all = {Mark::Head, Mark::Other, Mark::SocketEdge};
  EXPECT_EQ(MissingMarks({}, Landmarks::kMeasurementMarks[5]), all);
}

TEST(Measurements, AreCalledWhatTheModelCallsThem) {
  for (const Landmarks::MeasurementMarks& row : Landmarks::kMeasurementMarks) {
    EXPECT_TRUE(std::any_of(Sila::kMeasurements.begin(), Sila::kMeasurements.end(),
                            [&](const auto& known) { return known.key == row.key; }))
        << row.key;
  }
}

TEST(Measurements, AreRefusedWhereTheMarksLeaveTheDirectionsOpen) {
  const Point head = {100.0, 100.0};
  Marks marks = MarksOf({}, Standing(true, 0.0));
  marks.head = Circle{head, 25.0};
  const std::vector<std::pair<std::string, decltype(Marks::other)>> rows = {
      {"both heads in one place", Circle{head, 25.0}},
      {"midline of one point", Midline{Point{10.0, 10.0}, Point{10.0, 10.0}}},
      {"midline through the head's centre", Midline{Point{100.0, 10.0}, Point{100.0, 190.0}}},
      {"tilt of a right angle", Circle{{100.0, 200.0}, 25.0}},
      {"a centre that is not a number", Circle{{std::nan(""), 200.0}, 25.0}},
  };
  for (const auto& [name, other] : rows) {
    marks.other = other;
    EXPECT_FALSE(FrameOf(marks)) << name;
    const Measurements found = Measure(marks, {1.0, 0.0});
    EXPECT_FALSE(found.halfInterhip || found.trochanterX || found.centreEdge) << name;
    EXPECT_TRUE(found.headRadius) << name;
  }
}

}  // namespace
