// Attachment points: the table row by row, and what a trochanter above the head centre changes.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

#include "model/resultant_force.h"
#include "tests/support/random_hips.h"

namespace {

// Dimensions at which every scale factor is a round number: X 2, Z 3, L 4, H 5, C 6.
constexpr Sila::HipInputs kScaled = {.lizm = {4 * 8.45},
                                     .xizm = {2 * 2.65},
                                     .zizm = {3 * 7.1},
                                     .Cizm = {6 * 5.85},
                                     .Hizm = {5 * 13.52},
                                     .bodyWeight = Sila::Kilograms{70.0}};

Sila::HipForce GeometryOf(const Sila::HipInputs& inputs) {
  Sila::HipForce force;
  Sila::BuildHipGeometry(inputs, force);
  return force;
}

using Rows = std::vector<std::array<double, 3>>;

void ExpectRows(const Sila::MuscleGroup::Points& points, const Rows& rows) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    SCOPED_TRACE(i + 1);
    EXPECT_NEAR(points[i].x, rows[i][0], 1e-12);
    EXPECT_NEAR(points[i].y, rows[i][1], 1e-12);
    EXPECT_NEAR(points[i].z, rows[i][2], 1e-12);
  }
}

TEST(HipGeometry, ScalesEveryFemoralRowThatIsStored) {
  const Sila::HipForce force = GeometryOf(kScaled);
  ExpectRows(force.groups[0].femoral, {{5.2, 1.8, -21.9},
                                       {5.4, -0.4, -20.7},
                                       {0.1, 0.1, -16.5},
                                       {44.1, 2.3, -3.9},
                                       {40.4, -0.1, 3.1},
                                       {43.3, 2.2, 4.0},
                                       {42.8, 2.9, 3.4}});
  ExpectRows(force.groups[1].femoral, {{5.2, 1.8, -21.9},
                                       {5.4, -0.4, -20.7},
                                       {42.1, -2.2, -3.3},
                                       {41.5, -4.3, -0.2},
                                       {43.5, 0.8, 4.2},
                                       {6.1, 0.2, -1.5}});
  ExpectRows(force.groups[2].femoral, {{5.2, 1.8, -21.9}, {5.4, -0.4, -20.7}});
}

TEST(HipGeometry, ScalesEveryPelvicRowThatIsStored) {
  const Sila::HipForce force = GeometryOf(kScaled);
  ExpectRows(force.groups[0].pelvic, {{-48.5, 4.8, 6.0},
                                      {-35.5, 2.6, 0.0},
                                      {-27.5, 7.8, 18.8},
                                      {3.6, 5.3, 5.2},
                                      {5.9, 4.8, 13.6},
                                      {3.6, 5.3, 5.2},
                                      {3.1, 4.4, 3.2}});
  ExpectRows(force.groups[1].pelvic, {{-51.0, -2.7, -37.2},
                                      {-36.5, -2.9, -24.6},
                                      {-39.0, -4.5, -33.6},
                                      {-18.5, -4.3, -10.4},
                                      {-6.8, -5.1, -20.0},
                                      {-2.4, -2.8, -2.0}});
  ExpectRows(force.groups[2].pelvic, {{-66.0, 0.2, -10.8}, {-44.0, 0.4, -12.0}});
}

TEST(HipGeometry, CountsTheMusclesAndTheirCrossSections) {
  const Sila::HipForce force = GeometryOf(kScaled);
  const std::array<std::vector<double>, 3> areas = {
      {{0.266, 0.113, 0.1}, {0.266, 0.113, 0.12, 0.4}, {0.266, 0.113}}};
  const std::array<std::size_t, 3> stored = {7, 6, 2};
  for (std::size_t g = 0; g < 3; ++g) {
    const Sila::MuscleGroup& group = force.groups[g];
    ASSERT_EQ(group.count, areas[g].size());
    EXPECT_EQ(group.stored, stored[g]);
    for (std::size_t i = 0; i < group.count; ++i) EXPECT_EQ(group.area[i], areas[g][i]);
    EXPECT_EQ(group.area[group.count], 0.0);
  }
}

TEST(HipGeometry, ExchangesTheFactorsOfATrochanterAboveTheHead) {
  Sila::HipInputs inputs = kScaled;
  inputs.xizm = {-2 * 2.65};
  const Sila::HipForce force = GeometryOf(inputs);
  for (const std::size_t g : {std::size_t{0}, std::size_t{1}}) {
    EXPECT_NEAR(force.groups[g].femoral[0].x, -5.4, 1e-12);
    EXPECT_NEAR(force.groups[g].femoral[1].x, -5.2, 1e-12);
  }
  EXPECT_NEAR(force.groups[2].femoral[0].x, -5.4, 1e-12);
  EXPECT_NEAR(force.groups[2].femoral[1].x, -5.4, 1e-12);
}

TEST(HipGeometry, ExchangesTheFactorsByTheTurnedTrochanter) {
  Sila::HipInputs inputs = kScaled;
  inputs.zasuk = {-1.0};  // the horizontal coordinate carries the point above the head centre
  const Sila::HipForce force = GeometryOf(inputs);
  ASSERT_LT(force.scale.trochX, 0.0);
  EXPECT_NEAR(force.groups[0].femoral[0].x, 2.7 * force.scale.scaleX, 1e-12);
  EXPECT_NEAR(force.groups[0].femoral[1].x, 2.6 * force.scale.scaleX, 1e-12);
}

TEST(HipGeometry, ExchangesNothingAtZero) {
  Sila::HipInputs inputs = kScaled;
  inputs.xizm = {0.0};
  const Sila::HipForce force = GeometryOf(inputs);
  EXPECT_EQ(force.groups[0].femoral[0].x, 0.0);
  EXPECT_EQ(force.groups[2].femoral[1].x, 0.0);
}

TEST(HipGeometry, LeavesTheTrochanterWithoutATurn) {
  const Sila::HipForce force = GeometryOf(DefaultHip());
  EXPECT_EQ(force.scale.trochX, 0.5);
  EXPECT_EQ(force.scale.trochZ, 6.0);
}

TEST(HipGeometry, TurnsTheTrochanterByAQuarter) {
  Sila::HipInputs inputs = DefaultHip();
  inputs.zasuk = {90.0 * Sila::kPi / 180.0};
  const Sila::HipForce force = GeometryOf(inputs);
  EXPECT_NEAR(force.scale.trochX, 6.0, 1e-12);
  EXPECT_NEAR(force.scale.trochZ, -0.5, 1e-12);
}

TEST(HipGeometry, TiltsTheUsedRowsAndKeepsTheUntilted) {
  const Sila::HipForce force = GeometryOf(DefaultHip());
  EXPECT_NEAR(std::sin(force.loads.femurTilt), 0.48 * 10.4 / 42.3, 1e-15);
  EXPECT_NEAR(force.loads.pelvisTilt * 180.0 / Sila::kPi, -0.5, 1e-15);
  const auto expectTurned = [](const Sila::Vector3& from, const Sila::Vector3& to, double angle) {
    EXPECT_EQ(to.y, from.y);
    EXPECT_NEAR(std::hypot(to.x, to.z), std::hypot(from.x, from.z), 1e-13);
    EXPECT_NEAR(std::remainder(std::atan2(to.z, to.x) - std::atan2(from.z, from.x) - angle,
                               2.0 * std::acos(-1.0)),
                0.0, 1e-14);
  };
  for (const Sila::MuscleGroup& group : force.groups) {
    for (std::size_t i = 0; i < group.count; ++i) {
      expectTurned(group.femoral[i], group.femoralTilted[i], force.loads.femurTilt);
      expectTurned(group.pelvic[i], group.pelvicTilted[i], force.loads.pelvisTilt);
    }
    EXPECT_EQ(Sila::Length(group.femoralTilted[group.count]), 0.0);
    EXPECT_EQ(Sila::Length(group.pelvicTilted[group.count]), 0.0);
  }
}

}  // namespace
