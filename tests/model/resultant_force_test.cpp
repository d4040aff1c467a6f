// The resultant force by independent routes: balances, scaling, and the edges of its range.
#include "model/resultant_force.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>

#include "tests/support/random_hips.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(ResultantForce, HasTheKnownValuesForTheDefaultHip) {
  const Sila::HipForce force = Sila::ComputeHipForce(DefaultHip());
  EXPECT_NEAR(force.rWb, 2.81222677558, 5e-12);
  EXPECT_NEAR(force.thetaR, 8.4764903085, 5e-11);
}

// On the pelvis act the body's weight with its lever, the leg's weight against it (the pelvis does
// not carry the leg it stands on), and the muscles at their attachments. The hip force acts at the
// head centre and has no moment about it.
TEST(ResultantForce, BalancesTheMomentsAboutTheHeadCentre) {
  RandomHips hips(11);
  for (int i = 0; i < 2000; ++i) {
    const Sila::HipInputs inputs = hips.Wide();
    const Sila::HipForce force = Sila::ComputeHipForce(inputs);
    const double weight = *inputs.bodyWeight * 9.82;
    const Sila::Vector3 body = {weight, 0.0, 0.0};
    const Sila::Vector3 leg = {-0.161 * weight, 0.0, 0.0};
    Sila::Vector3 moment = Sila::Cross({0.0, 0.0, 1.01 * inputs.lizm}, body) +
                           Sila::Cross({0.0, 0.0, 0.48 * inputs.lizm}, leg);
    double size = Sila::Length(moment);
    for (const Sila::MuscleGroup& group : force.groups) {
      for (std::size_t k = 0; k < group.count; ++k) {
        const Sila::Vector3 part = Sila::Cross(group.pelvicTilted[k], group.muscleForce[k]);
        moment = moment + part;
        size += Sila::Length(part);
      }
    }
    EXPECT_LT(Sila::Length(moment), 1e-12 * size);
  }
}

TEST(ResultantForce, BalancesTheForces) {
  RandomHips hips(12);
  for (int i = 0; i < 2000; ++i) {
    const Sila::HipInputs inputs = hips.Wide();
    const Sila::HipForce force = Sila::ComputeHipForce(inputs);
    Sila::Vector3 rest = {*inputs.bodyWeight * 9.82 * (1.0 - 0.161), 0.0, 0.0};
    double size = rest.x;
    for (const Sila::MuscleGroup& group : force.groups) {
      for (std::size_t k = 0; k < group.count; ++k) {
        rest = rest + group.muscleForce[k];
        size += Sila::Length(group.muscleForce[k]);
      }
    }
    EXPECT_LT(Sila::Length(rest - force.resultant), 1e-13 * size);
  }
}

TEST(ResultantForce, PullsEachMuscleAlongItsLineWithTheGroupsTension) {
  const Sila::HipForce force = Sila::ComputeHipForce(DefaultHip());
  for (const Sila::MuscleGroup& group : force.groups) {
    Sila::Vector3 sum;
    for (std::size_t k = 0; k < group.count; ++k) {
      const Sila::Vector3 line = group.femoralTilted[k] - group.pelvicTilted[k];
      EXPECT_NEAR(Sila::Length(group.direction[k]), 1.0, 1e-15);
      EXPECT_LT(Sila::Length(Sila::Cross(line, group.muscleForce[k])),
                1e-12 * Sila::Length(line) * Sila::Length(group.muscleForce[k]));
      EXPECT_NEAR(group.muscleForceMagnitude[k], group.area[k] * group.tension,
                  1e-15 * group.tension);
      EXPECT_GT(group.muscleForce[k].x, 0.0);
      sum = sum + group.muscleForce[k];
    }
    EXPECT_NEAR(Sila::Length(sum), group.forceMagnitude, 1e-12 * group.forceMagnitude);
    EXPECT_NEAR(std::tan(Sila::GroupAngle(group) * Sila::kPi / 180.0), sum.z / sum.x, 1e-12);
    EXPECT_EQ(group.muscleForceMagnitude[group.count], 0.0);
  }
}

TEST(ResultantForce, OrdersTheTensionsByTheColumns) {
  const Sila::HipForce force = Sila::ComputeHipForce(DefaultHip());
  EXPECT_EQ(force.tensions.x, force.groups[1].tension);
  EXPECT_EQ(force.tensions.y, force.groups[2].tension);
  EXPECT_EQ(force.tensions.z, force.groups[0].tension);
}

TEST(ResultantForce, TakesTheLoadsFromWeightAndLevers) {
  const Sila::HipForce force = Sila::ComputeHipForce(DefaultHip());
  const double w = 70.0 * 9.82;
  EXPECT_NEAR(force.loads.weight, w, 1e-12);
  EXPECT_NEAR(force.loads.legWeight, 0.161 * w, 1e-12);
  EXPECT_EQ(force.loadVector.x, 0.0);
  EXPECT_NEAR(force.loadVector.y, 1.01 * 10.4 * w - 0.48 * 10.4 * 0.161 * w, 1e-10);
  EXPECT_EQ(force.loadVector.z, 0.0);
  EXPECT_NEAR(force.loads.loadLever, -force.loadVector.y / (1.161 * w), 1e-13);
}

TEST(ResultantForce, IsProportionalToTheWeightAndItsRatioIsNot) {
  RandomHips hips(13);
  for (int i = 0; i < 200; ++i) {
    Sila::HipInputs inputs = hips.Usual();
    const Sila::HipForce one = Sila::ComputeHipForce(inputs);
    inputs.bodyWeight->value *= 3.7;
    const Sila::HipForce other = Sila::ComputeHipForce(inputs);
    EXPECT_NEAR(other.resultantMagnitude / one.resultantMagnitude, 3.7, 1e-11);
    EXPECT_NEAR(other.groups[1].tension / one.groups[1].tension, 3.7, 1e-11);
    EXPECT_NEAR(other.rWb, one.rWb, 1e-12 * one.rWb);
    EXPECT_NEAR(other.thetaR, one.thetaR, 1e-11);
  }
}

TEST(ResultantForce, CountsTheForwardComponentInItsMagnitudeOnly) {
  const Sila::HipForce force = Sila::ComputeHipForce(DefaultHip());
  const Sila::Vector3& r = force.resultant;
  ASSERT_GT(std::abs(r.y), 1.0);
  EXPECT_NEAR(force.resultantMagnitude, std::hypot(r.x, r.y, r.z), 1e-10);
  EXPECT_NEAR(force.rWb * force.loads.weight, std::hypot(r.x, r.z), 1e-10);
}

// A force with the direction of one group and nothing else, to choose R at will.
Sila::HipForce WithResultant(const Sila::Vector3& r) {
  Sila::HipForce force;
  force.loads.weight = 100.0;
  force.loads.legWeight = 100.0;
  force.groups[0].forceMagnitude = 1.0;
  force.groups[0].sumDirection = r;
  Sila::ComputeResultantForce(force);
  return force;
}

TEST(ResultantForce, InclinesFromTheVerticalWhicheverSideItLeansTo) {
  EXPECT_NEAR(WithResultant({1.0, 5.0, 1.0}).thetaR, 45.0, 1e-12);
  EXPECT_NEAR(WithResultant({1.0, 0.0, -1.0}).thetaR, 45.0, 1e-12);
  EXPECT_NEAR(WithResultant({-1.0, 0.0, 1.0}).thetaR, 135.0, 1e-12);
  EXPECT_EQ(WithResultant({0.0, 0.0, 1.0}).thetaR, 90.0);
}

// π is short of its value in the force model, so a right angle comes out above 90 degrees.
TEST(ResultantForce, IsBelowTheRangeWhenItIsVertical) {
  const double thetaR = WithResultant({1.0, 0.0, 0.0}).thetaR;
  EXPECT_LT(thetaR, 0.0);
  EXPECT_GT(thetaR, -2e-13);
  EXPECT_FALSE(Sila::IsWithinModelRange(thetaR));
}

TEST(ResultantForce, IsNotANumberForImpossibleInputs) {
  Sila::HipInputs longLever = DefaultHip();
  longLever.lizm = {104.0};
  EXPECT_TRUE(std::isnan(Sila::ComputeHipForce(longLever).thetaR));
  Sila::HipInputs weightless = DefaultHip();
  weightless.bodyWeight = Sila::Kilograms{0.0};
  EXPECT_TRUE(std::isnan(Sila::ComputeHipForce(weightless).rWb));
  Sila::HipInputs unknown = DefaultHip();
  unknown.Cizm = {kNaN};
  EXPECT_FALSE(Sila::IsWithinModelRange(Sila::ComputeHipForce(unknown).thetaR));
}

TEST(ModelRange, BeginsAtZero) {
  EXPECT_TRUE(Sila::IsWithinModelRange(0.0));
  EXPECT_TRUE(Sila::IsWithinModelRange(8.5));
  EXPECT_FALSE(Sila::IsWithinModelRange(-std::numeric_limits<double>::denorm_min()));
  EXPECT_FALSE(Sila::IsWithinModelRange(-1.0));
  EXPECT_FALSE(Sila::IsWithinModelRange(kNaN));
  EXPECT_FALSE(Sila::IsWithinModelRange(-kNaN));
}

// Everything from row `count` on is set to nonsense between the steps.
TEST(ResultantForce, LeavesOutTheRowsBeyondTheCounts) {
  const Sila::HipForce expected = Sila::ComputeHipForce(DefaultHip());
  Sila::HipForce force;
  Sila::BuildHipGeometry(DefaultHip(), force);
  for (Sila::MuscleGroup& group : force.groups) {
    for (std::size_t k = group.count; k < Sila::kMaxPoints; ++k) {
      const Sila::Vector3 nonsense = {1e3 + static_cast<double>(k), -7.0, kNaN};
      group.femoral[k] = group.femoralTilted[k] = nonsense;
      group.pelvic[k] = group.pelvicTilted[k] = nonsense;
      group.direction[k] = group.muscleForce[k] = nonsense;
      group.area[k] = kNaN;
    }
  }
  Sila::ComputeMuscleDirections(force);
  Sila::BuildLoadVector(force);
  Sila::BuildMomentMatrix(force);
  force.tensions = Sila::SolveLinear3(force.momentMatrix, force.loadVector);
  Sila::ComputeGroupForces(force);
  Sila::ComputeResultantForce(force);
  EXPECT_EQ(force.rWb, expected.rWb);
  EXPECT_EQ(force.thetaR, expected.thetaR);
  EXPECT_EQ(force.resultantMagnitude, expected.resultantMagnitude);
}

TEST(SolveLinear3, SatisfiesItsEquations) {
  RandomHips random(14);
  for (int i = 0; i < 1000; ++i) {
    Sila::Matrix3 m{};
    for (auto& row : m) {
      for (double& entry : row) entry = random.Uniform(-1.0, 1.0);
    }
    const Sila::Vector3 right = {random.Uniform(-1.0, 1.0), random.Uniform(-1.0, 1.0), 0.5};
    const Sila::Vector3 x = Sila::SolveLinear3(m, right);
    const double scale = 1e-14 * (1.0 + Sila::Length(x));
    EXPECT_NEAR(m[0][0] * x.x + m[0][1] * x.y + m[0][2] * x.z, right.x, scale);
    EXPECT_NEAR(m[1][0] * x.x + m[1][1] * x.y + m[1][2] * x.z, right.y, scale);
    EXPECT_NEAR(m[2][0] * x.x + m[2][1] * x.y + m[2][2] * x.z, right.z, scale);
  }
}

TEST(SolveLinear3, PutsTheLargestEntryOnTheDiagonal) {
  const Sila::Vector3 x = Sila::SolveLinear3({{{0, 0, 2}, {4, 0, 0}, {0, 8, 0}}}, {6, 8, 8});
  EXPECT_EQ(x.x, 2.0);
  EXPECT_EQ(x.y, 1.0);
  EXPECT_EQ(x.z, 3.0);
}

TEST(SolveLinear3, GivesNoFiniteSolutionForASingularMatrix) {
  const Sila::Vector3 x = Sila::SolveLinear3({{{1, 2, 3}, {2, 4, 6}, {1, 1, 1}}}, {1, 1, 1});
  EXPECT_FALSE(std::isfinite(x.x) && std::isfinite(x.y) && std::isfinite(x.z));
}

}  // namespace
