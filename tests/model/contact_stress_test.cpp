// The contact stress by integration over the head, and the edges of its formulas.
#include "model/contact_stress.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

#include "model/vector3.h"
#include "tests/model/stress_inputs.h"
#include "tests/support/row_name.h"

namespace {

using Tlakm::ContactStress;
using Tlakm::PoleForm;
using Tlakm::StressInputs;
using Tlakm::StressOutcome;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Simpson's rule over an even number of intervals.
template <class Function>
auto Integrate(double low, double high, Function function) {
  constexpr int kIntervals = 160;
  const double step = (high - low) / kIntervals;
  auto sum = function(low) + function(high);
  for (int i = 1; i < kIntervals; ++i) {
    sum = sum + (i % 2 == 1 ? 4.0 : 2.0) * function(low + i * step);
  }
  return step / 3.0 * sum;
}

// Lateral, up, forward.
using Force = Sila::Vector3;

// Sums stress times area over the head. Points have a longitude in the frontal plane, from the
// vertical, lateral positive, and a latitude towards the front. The load lies between the edge of
// the socket and the great circle on which the cosine of the distance from the pole vanishes: from
// the lateral edge to a quarter turn medial of the pole, or, when the force is steep, from the
// medial edge, half a turn from the lateral one, to a quarter turn lateral of the pole.
Force SumOverHead(const ContactStress& stress) {
  const double pole = stress.thetaPolRad;
  const bool steep = stress.form == PoleForm::Steep;
  const double edge = stress.angles.thetaCE - (steep ? std::numbers::pi : 0.0);
  const double quarter = pole + (steep ? 0.5 : -0.5) * std::numbers::pi;
  const double radius = stress.headRadius;
  return Integrate(std::min(edge, quarter), std::max(edge, quarter), [&](double longitude) {
    return Integrate(-0.5 * std::numbers::pi, 0.5 * std::numbers::pi, [&](double latitude) {
      const double ring = std::cos(latitude);
      const Force outward = {ring * std::sin(longitude), ring * std::cos(longitude),
                             std::sin(latitude)};
      const double cosine = outward.x * std::sin(pole) + outward.y * std::cos(pole);
      return stress.p0 * cosine * radius * radius * ring * outward;
    });
  });
}

struct Load {
  const char* name;
  double edge;         // degrees
  double inclination;  // degrees
  PoleForm form;
};

class LoadOnHead : public testing::TestWithParam<Load> {};

// 1e-7: Simpson's rule leaves 1e-8, and the stress model's π is 1e-13 off.
TEST_P(LoadOnHead, AddsUpToTheResultantForce) {
  const ContactStress stress =
      Tlakm::ComputeContactStress(Inputs(GetParam().edge, GetParam().inclination));
  ASSERT_EQ(stress.outcome, StressOutcome::Ok);
  ASSERT_EQ(stress.form, GetParam().form);
  const double size = 2.8 * 70.0 * 9.82;
  const double lean = GetParam().inclination * kDegree;
  const Force sum = SumOverHead(stress);
  EXPECT_NEAR(sum.x, -size * std::sin(lean), 1e-7 * size);
  EXPECT_NEAR(sum.y, size * std::cos(lean), 1e-7 * size);
  EXPECT_NEAR(sum.z, 0.0, 1e-12 * size);
}

INSTANTIATE_TEST_SUITE_P(Table, LoadOnHead,
                         testing::Values(Load{"Default", 30.0, 8.5, PoleForm::Ordinary},
                                         Load{"Dysplastic", 5.0, 8.0, PoleForm::Ordinary},
                                         Load{"EdgeBelowVertical", -5.0, 12.0, PoleForm::Ordinary},
                                         Load{"ForceNearTheEdge", 2.0, 1.0, PoleForm::Ordinary},
                                         Load{"Deep", 60.0, 9.0, PoleForm::Ordinary},
                                         Load{"VerticalForce", 30.0, 0.0, PoleForm::Ordinary},
                                         Load{"LeaningForce", 10.0, 45.0, PoleForm::Ordinary},
                                         Load{"JustOrdinary", 80.0, 9.0, PoleForm::Ordinary},
                                         Load{"RightAngle", 81.0, 9.5, PoleForm::Steep},
                                         Load{"Steep", 92.0, 9.0, PoleForm::Steep},
                                         Load{"SteepLimit", 100.0, 9.0, PoleForm::Steep},
                                         Load{"SteepLeaning", 45.0, 80.0, PoleForm::Steep},
                                         Load{"SteepPoleBeyondEdge", 30.0, 139.0, PoleForm::Steep}),
                         RowName());

// The peak by looking everywhere on the loaded part.
TEST(ContactStress, PeaksWhereTheLoadedPartIsNearestToThePole) {
  for (const auto& [edge, inclination] :
       {std::pair(30.0, 8.5), {5.0, 8.0}, {-5.0, 12.0}, {60.0, 9.0}, {92.0, 9.0}, {30.0, 139.0}}) {
    const ContactStress stress = Tlakm::ComputeContactStress(Inputs(edge, inclination));
    ASSERT_EQ(stress.outcome, StressOutcome::Ok);
    const double side = stress.form == PoleForm::Steep ? 1.0 : -1.0;
    const double from = stress.angles.thetaCE + (side > 0.0 ? -std::numbers::pi : 0.0);
    const double to = stress.thetaPolRad + side * 0.5 * std::numbers::pi;
    double peak = 0.0;
    for (int i = 0; i <= 100'000; ++i) {
      const double longitude = from + (to - from) * i / 100'000.0;
      peak = std::max(peak, stress.p0 * std::cos(longitude - stress.thetaPolRad));
    }
    EXPECT_NEAR(stress.pmax, peak, 1e-9 * peak) << edge << ", " << inclination;
  }
}

TEST(ContactStress, TakesThePoleAtTheEdgeForThePeak) {
  // The edge at which the pole lies exactly on it, found among neighbouring doubles.
  double edge = std::atan(2.0 / Tlakm::kPi) - Tlakm::DegToRad(8.5);
  for (int i = 0; i < 200; ++i) edge = std::nextafter(edge, -1.0);
  int exact = 0;
  for (int i = 0; i < 400; ++i, edge = std::nextafter(edge, 1.0)) {
    StressInputs inputs = Inputs(0.0, 8.5);
    inputs.thetaCE = {edge};
    const ContactStress stress = Tlakm::ComputeContactStress(inputs);
    if (stress.thetaPolRad != edge) continue;
    ++exact;
    EXPECT_EQ(stress.pmax, stress.p0);
  }
  EXPECT_GT(exact, 0);
}

TEST(ContactStress, TakesTheEdgeForThePeakWhenThePoleLiesBeyond) {
  const ContactStress inside = Tlakm::ComputeContactStress(Inputs(30.0, 8.5));
  ASSERT_LT(inside.thetaPolRad, inside.angles.thetaCE);
  EXPECT_EQ(inside.pmax, inside.p0);
  const ContactStress beyond = Tlakm::ComputeContactStress(Inputs(10.0, 8.5));
  ASSERT_GT(beyond.thetaPolRad, beyond.angles.thetaCE);
  EXPECT_EQ(beyond.pmax, beyond.p0 * std::cos(beyond.thetaPolRad - beyond.angles.thetaCE));
  const ContactStress steep = Tlakm::ComputeContactStress(Inputs(92.0, 9.0));
  EXPECT_EQ(steep.pmax, steep.p0);
  const ContactStress steepBeyond = Tlakm::ComputeContactStress(Inputs(30.0, 139.0));
  ASSERT_LT(steepBeyond.thetaPolRad, steepBeyond.angles.thetaCE - Tlakm::kPi);
  EXPECT_LT(steepBeyond.pmax, 0.99 * steepBeyond.p0);
}

// Where the stresses at pole and edge are as good as equal. The edge to the pole's place comes from
// the pole's equation, solved for it.
TEST(ContactStress, TakesTheEdgeForThePeakWhenThePoleLiesATenthOfAMilliradianBeyond) {
  for (const double beyond : {1e-4, -1e-4}) {
    const double lean = std::atan(std::cos(beyond) * std::cos(beyond) /
                                  (std::numbers::pi / 2.0 - beyond - std::sin(2.0 * beyond) / 2.0));
    StressInputs ordinary = Inputs(0.0, 8.5);
    ordinary.thetaCE = {lean - 8.5 * kDegree - beyond};
    StressInputs steep = Inputs(0.0, 139.0);
    steep.thetaCE = {std::numbers::pi - lean - 139.0 * kDegree + beyond};
    const double loss = beyond > 0.0 ? 1.0 - std::cos(beyond) : 0.0;
    for (const StressInputs& inputs : {ordinary, steep}) {
      const ContactStress stress = Tlakm::ComputeContactStress(inputs);
      ASSERT_EQ(stress.outcome, StressOutcome::Ok);
      const bool isSteep = stress.form == PoleForm::Steep;
      ASSERT_EQ(isSteep, inputs.thetaR > 90.0);
      const double off = isSteep ? stress.angles.thetaCE - std::numbers::pi - stress.thetaPolRad
                                 : stress.thetaPolRad - stress.angles.thetaCE;
      EXPECT_NEAR(off, beyond, 1e-9);
      EXPECT_NEAR(1.0 - stress.pmax / stress.p0, loss, 1e-13);
    }
  }
}

// The whole of a hemisphere carries when the pole lies a quarter turn medial of the edge.
TEST(ContactStress, HasTheClosedValueWithinAThousandthOfTheQuarterTurn) {
  for (const double off : {-0.99e-3, -1e-6, 0.0, 1e-6, 0.99e-3}) {
    ContactStress stress;
    Tlakm::LoadStressInputs(Inputs(80.0, 9.0), stress);
    const double pole = stress.angles.thetaCE - Tlakm::kPi / 2.0 - off;
    const double closed = 3.0 * stress.force / (2.0 * std::numbers::pi * 0.025 * 0.025);
    EXPECT_NEAR(Tlakm::poleStress(stress, pole), closed, 1e-12 * closed);
    EXPECT_NEAR(Tlakm::poleStressSteep(stress, pole), closed, 1e-12 * closed);
  }
}

// At a distance from the quarter turn the stress depends on the inclination; with the inclination
// that belongs to the pole both formulas meet where they change.
TEST(ContactStress, IsContinuousWhereTheClosedValueTakesOver) {
  for (const PoleForm form : {PoleForm::Ordinary, PoleForm::Steep}) {
    const double side = form == PoleForm::Ordinary ? -1.0 : 1.0;
    ContactStress stress;
    Tlakm::LoadStressInputs(Inputs(80.0, 9.0), stress);
    const auto stressAt = [&](double distance) {
      const double pole = stress.angles.thetaCE - Tlakm::kPi / 2.0 - side * distance;
      const double u = std::sin(distance) * std::sin(distance) / std::numbers::pi;
      stress.angles.thetaR = -side * u - pole;
      return form == PoleForm::Ordinary ? Tlakm::poleStress(stress, pole)
                                        : Tlakm::poleStressSteep(stress, pole);
    };
    EXPECT_NEAR(stressAt(1.0001e-3) / stressAt(0.9999e-3), 1.0, 1e-8);
    EXPECT_NE(stressAt(1.0001e-3), stressAt(0.9999e-3));
    EXPECT_EQ(stressAt(0.5e-3), stressAt(0.9e-3));
  }
}

TEST(ContactStress, IsContinuousBetweenTheForms) {
  double last = 0.0;
  double lastPole = 0.0;
  for (double sum = 89.005; sum < 91.0; sum += 0.01) {
    const ContactStress stress = Tlakm::ComputeContactStress(Inputs(sum - 9.0, 9.0));
    ASSERT_EQ(stress.outcome, StressOutcome::Ok);
    ASSERT_EQ(stress.form, sum < 90.0 ? PoleForm::Ordinary : PoleForm::Steep) << sum;
    if (last > 0.0) {
      EXPECT_NEAR(stress.pmax / last, 1.0, 2e-4) << sum;
      EXPECT_NEAR(stress.thetaPol, lastPole, 2e-4) << sum;
    }
    last = stress.pmax;
    lastPole = stress.thetaPol;
  }
}

TEST(ContactStress, FallsAsTheSocketCoversMore) {
  double lastPeak = kInfinity;
  double lastPole = kInfinity;
  for (double edge = -8.0; edge < 80.0; edge += 0.25) {
    const ContactStress stress = Tlakm::ComputeContactStress(Inputs(edge, 9.0));
    ASSERT_EQ(stress.outcome, StressOutcome::Ok) << edge;
    EXPECT_LT(stress.pmax, lastPeak) << edge;
    EXPECT_LT(stress.thetaPol, lastPole) << edge;
    lastPeak = stress.pmax;
    lastPole = stress.thetaPol;
  }
}

TEST(ContactStress, IsProportionalToForceAndFallsWithTheSquareOfTheRadius) {
  const StressInputs inputs = Inputs(30.0, 8.5);
  const ContactStress one = Tlakm::ComputeContactStress(inputs);
  StressInputs heavy = inputs;
  heavy.bodyWeight.value *= 1.7;
  const ContactStress two = Tlakm::ComputeContactStress(heavy);
  EXPECT_NEAR(two.pmax, 1.7 * one.pmax, 1e-14 * two.pmax);
  EXPECT_NEAR(two.pmaxWb, one.pmaxWb, 1e-14 * one.pmaxWb);
  EXPECT_EQ(two.thetaPol, one.thetaPol);
  StressInputs large = inputs;
  large.headRadius.value *= 2.0;
  EXPECT_EQ(Tlakm::ComputeContactStress(large).pmax, one.pmax / 4.0);
  StressInputs strong = inputs;
  strong.rWb *= 2.0;
  EXPECT_EQ(Tlakm::ComputeContactStress(strong).pmaxWb, 2.0 * one.pmaxWb);
}

TEST(ContactStress, WorksForAVerticalForce) {
  const ContactStress stress = Tlakm::ComputeContactStress(Inputs(30.0, 0.0));
  ASSERT_EQ(stress.outcome, StressOutcome::Ok);
  EXPECT_GT(stress.thetaPol, 0.0);
}

TEST(ContactStress, LeavesItsWorkingValuesReadable) {
  const ContactStress stress = Tlakm::ComputeContactStress(Inputs(30.0, 8.5));
  EXPECT_EQ(stress.headRadius, 0.025);
  EXPECT_EQ(stress.rWb, 2.8);
  EXPECT_EQ(stress.angles.thetaR, 8.5 * 3.14159265359 / 180.0);
  EXPECT_NEAR(stress.weight, 70.0 * 9.82, 1e-12);
  EXPECT_NEAR(stress.force, 2.8 * 70.0 * 9.82, 1e-11);
  EXPECT_TRUE(stress.bracket.found);
  EXPECT_GT(stress.newtonSteps, 0);
  EXPECT_EQ(stress.thetaPol, stress.thetaPolRad * 180.0 / 3.14159265359);
  EXPECT_EQ(stress.pmaxWb, stress.pmax / stress.weight);
}

TEST(ContactStress, KeepsNothingOfAnEarlierRun) {
  ContactStress stress = Tlakm::ComputeContactStress(Inputs(30.0, 8.5));
  Tlakm::ComputeContactStress(Inputs(-20.0, 8.5), stress);
  EXPECT_EQ(stress.outcome, StressOutcome::NoPole);
  EXPECT_EQ(stress.pmax, 0.0);
  EXPECT_FALSE(stress.bracket.found);
}

}  // namespace
