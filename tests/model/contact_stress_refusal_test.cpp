// Where the contact stress has no answer, and that it says so without delay.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "model/contact_stress.h"
#include "tests/model/stress_inputs.h"
#include "tests/support/row_name.h"

namespace {

using Tlakm::ContactStress;
using Tlakm::StressInputs;
using Tlakm::StressOutcome;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Refusal {
  const char* name;
  StressInputs inputs;
  StressOutcome outcome;
};

class RefusedStress : public testing::TestWithParam<Refusal> {};

TEST_P(RefusedStress, SaysWhyWithoutDelay) {
  const ContactStress stress = Tlakm::ComputeContactStress(GetParam().inputs);
  EXPECT_EQ(stress.outcome, GetParam().outcome);
  EXPECT_LT(stress.bracket.evaluations, 3000);
}

StressInputs WithRadius(double radius, double edgeDegrees) {
  StressInputs inputs = Inputs(edgeDegrees, 8.5);
  inputs.headRadius = {radius};
  return inputs;
}

// The two angles cancel exactly.
StressInputs ForceAtTheEdge() {
  StressInputs inputs = Inputs(0.0, 9.0);
  inputs.thetaCE = {-Tlakm::DegToRad(9.0)};
  return inputs;
}

StressInputs WithWeight(double weight) {
  StressInputs inputs = Inputs(30.0, 8.5);
  inputs.bodyWeight = Sila::Kilograms{weight};
  return inputs;
}

INSTANTIATE_TEST_SUITE_P(
    Table, RefusedStress,
    testing::Values(
        Refusal{"ForceAtTheEdge", ForceAtTheEdge(), StressOutcome::NoPole},
        Refusal{"ForceOutsideTheEdge", Inputs(-20.0, 9.0), StressOutcome::NoPole},
        Refusal{"FarOutside", Inputs(-180.0, 9.0), StressOutcome::NoPole},
        Refusal{"StressBelowZero", Inputs(-200.0, 9.0), StressOutcome::NoPole},
        Refusal{"StressBelowZeroSteep", Inputs(240.0, 169.0), StressOutcome::NoPole},
        Refusal{"StressBelowZeroATurnBelow", Inputs(-560.0, 9.0), StressOutcome::NoPole},
        Refusal{"SteepHalfTurn", Inputs(172.0, 9.0), StressOutcome::NoPole},
        Refusal{"SteepWholeTurn", Inputs(350.0, 9.0), StressOutcome::NoPole},
        Refusal{"StartBelowThePole", Inputs(110.0, 9.0), StressOutcome::NoPole},
        Refusal{"PoleBehindTheStart", Inputs(-60.0, 140.0), StressOutcome::NoPole},
        Refusal{"EdgeIsNoNumber", Inputs(kNaN, 9.0), StressOutcome::NoPole},
        Refusal{"EdgeIsInfinite", Inputs(kInfinity, 9.0), StressOutcome::NoPole},
        Refusal{"EdgeFarOut", Inputs(1e300, 9.0), StressOutcome::NoPole},
        Refusal{"InclinationIsNoNumber", Inputs(30.0, kNaN), StressOutcome::NoPole},
        Refusal{"InclinationIsInfinite", Inputs(30.0, kInfinity), StressOutcome::NoPole},
        Refusal{"RadiusZero", WithRadius(0.0, 30.0), StressOutcome::DivisionByZero},
        Refusal{"RadiusZeroSteep", WithRadius(0.0, 92.0), StressOutcome::DivisionByZero},
        Refusal{"RadiusZeroAtTheQuarterTurn", WithRadius(0.0, 81.5), StressOutcome::DivisionByZero},
        Refusal{"RadiusTiny", WithRadius(1e-200, 30.0), StressOutcome::DivisionByZero},
        Refusal{"RadiusIsNoNumber", WithRadius(kNaN, 30.0), StressOutcome::DivisionByZero},
        Refusal{"WeightZero", WithWeight(0.0), StressOutcome::DivisionByZero},
        Refusal{"NoPoleComesFirst", WithRadius(0.0, -20.0), StressOutcome::NoPole}),
    RowName());

// The pole that the equation has for an edge far out, closed in by bisection, and the cosine law
// from the edge on: if the whole of the head would be pulled, there is no answer.
TEST(ContactStress, IsRefusedWhereTheLoadedPartWouldBePulled) {
  int pulled = 0;
  for (double edge = -270.0; edge <= -195.0; edge += 5.0) {
    const double ce = edge * kDegree;
    const double lean = 9.0 * kDegree;
    const auto residual = [&](double pole) {
      const double a = ce - pole;
      return lean + pole -
             std::atan(std::cos(a) * std::cos(a) /
                       (a + 0.5 * std::numbers::pi + 0.5 * std::sin(2.0 * a)));
    };
    double low = -0.5 * std::numbers::pi - lean;
    double high = 0.5 * std::numbers::pi - lean;
    ASSERT_LT(residual(low), 0.0);
    ASSERT_GT(residual(high), 0.0);
    for (int i = 0; i < 100; ++i) {
      const double middle = 0.5 * (low + high);
      (residual(middle) < 0.0 ? low : high) = middle;
    }
    pulled += std::cos(low - ce) < 0.0 ? 1 : 0;
    const ContactStress stress = Tlakm::ComputeContactStress(Inputs(edge, 9.0));
    EXPECT_EQ(stress.outcome, StressOutcome::NoPole) << edge;
    EXPECT_EQ(stress.pmax, 0.0);
    EXPECT_EQ(stress.thetaPol, 0.0);
  }
  EXPECT_EQ(pulled, 16);
}

TEST(ContactStress, IsNeverBelowZero) {
  int computed = 0;
  for (double inclination = 0.0; inclination <= 180.0; inclination += 15.0) {
    for (double edge = -720.0; edge <= 720.0; edge += 3.0) {
      const ContactStress stress = Tlakm::ComputeContactStress(Inputs(edge, inclination));
      if (stress.outcome != StressOutcome::Ok) continue;
      ++computed;
      EXPECT_GE(stress.pmax, 0.0) << edge << ", " << inclination;
      EXPECT_GE(stress.pmaxWb, 0.0) << edge << ", " << inclination;
    }
  }
  EXPECT_GT(computed, 500);
}

// A little below minus half a turn the rounding of π leaves the residual a jump without a root. The
// search takes it for one and Newton's method runs in circles about it.
TEST(ContactStress, EndsWhenNewtonsMethodRunsInCircles) {
  for (int i = 0; i < 10; ++i) {
    const StressInputs inputs = {.headRadius = {0.025},
                                 .thetaCE = {-Tlakm::kPi - 2.95e-5 - 1e-9 * i},
                                 .bodyWeight = {70.0},
                                 .rWb = 2.8,
                                 .thetaR = {1e-7}};
    const ContactStress stress = Tlakm::ComputeContactStress(inputs);
    EXPECT_EQ(stress.outcome, StressOutcome::NoPole);
    EXPECT_TRUE(stress.bracket.found);
    EXPECT_GT(stress.newtonSteps, 0);
  }
}

}  // namespace
