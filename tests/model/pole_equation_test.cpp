// The pole equation: choice of form, slopes against differences, growth on the branches.
#include "model/pole_equation.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/random_hips.h"

namespace {

using Tlakm::PoleAngles;
using Tlakm::PoleForm;

TEST(PoleForm, IsSteepFromEqualityOn) {
  const double quarter = Tlakm::kPi / 4.0;
  EXPECT_EQ(Tlakm::ChooseForm({quarter, quarter}), PoleForm::Steep);
  EXPECT_EQ(Tlakm::ChooseForm({quarter, std::nextafter(quarter, 0.0)}), PoleForm::Ordinary);
  EXPECT_EQ(Tlakm::ChooseForm({quarter, std::nextafter(quarter, 1.0)}), PoleForm::Steep);
  EXPECT_EQ(Tlakm::ChooseForm({Tlakm::kPi / 2.0, 0.0}), PoleForm::Steep);
  EXPECT_EQ(Tlakm::ChooseForm({0.5, 0.1}), PoleForm::Ordinary);
}

// Angles whose distance from the start of the branch keeps the residual smooth.
struct Point {
  PoleAngles angles;
  double ordinary;  // a pole angle well inside the ordinary branch
  double steep;     // and one well inside the steep branch
};

Point RandomPoint(RandomHips& random) {
  Point point;
  point.angles = {random.Uniform(-0.5, 2.6), random.Uniform(0.0, 1.5)};
  const double fromEdge = random.Uniform(-1.2, 3.0);
  point.ordinary = point.angles.thetaCE - fromEdge;
  point.steep = point.angles.thetaCE - Tlakm::kPi + fromEdge;
  return point;
}

TEST(PoleEquation, HasTheSlopeOfItsDifferences) {
  RandomHips random(21);
  constexpr double kStep = 1e-5;
  for (int i = 0; i < 2000; ++i) {
    const Point p = RandomPoint(random);
    const double ordinary = (Tlakm::poleResidual(p.angles, p.ordinary + kStep) -
                             Tlakm::poleResidual(p.angles, p.ordinary - kStep)) /
                            (2.0 * kStep);
    const double steep = (Tlakm::poleResidualSteep(p.angles, p.steep + kStep) -
                          Tlakm::poleResidualSteep(p.angles, p.steep - kStep)) /
                         (2.0 * kStep);
    EXPECT_NEAR(Tlakm::poleResidualSlope(p.angles, p.ordinary), ordinary, 1e-8);
    EXPECT_NEAR(Tlakm::poleResidualSteepSlope(p.angles, p.steep), steep, 1e-8);
    EXPECT_GT(ordinary, 1.0 / 3.0);
    EXPECT_GT(steep, 1.0 / 3.0);
  }
}

TEST(PoleEquation, GivesTheSameBitsTogetherAndApart) {
  RandomHips random(22);
  for (int i = 0; i < 2000; ++i) {
    const Point p = RandomPoint(random);
    const Tlakm::PoleEquation ordinary =
        Tlakm::EvaluatePoleEquation(p.angles, PoleForm::Ordinary, p.ordinary);
    EXPECT_EQ(ordinary.residual, Tlakm::poleResidual(p.angles, p.ordinary));
    EXPECT_EQ(ordinary.slope, Tlakm::poleResidualSlope(p.angles, p.ordinary));
    const Tlakm::PoleEquation steep =
        Tlakm::EvaluatePoleEquation(p.angles, PoleForm::Steep, p.steep);
    EXPECT_EQ(steep.residual, Tlakm::poleResidualSteep(p.angles, p.steep));
    EXPECT_EQ(steep.slope, Tlakm::poleResidualSteepSlope(p.angles, p.steep));
  }
}

// The steep form is the ordinary one with the edge on the other side: mirrored about the vertical,
// with the edge at 180 degrees minus itself.
TEST(PoleEquation, MirrorsTheOrdinaryFormInTheSteepOne) {
  RandomHips random(23);
  for (int i = 0; i < 2000; ++i) {
    const Point p = RandomPoint(random);
    const PoleAngles mirrored = {Tlakm::kPi - p.angles.thetaCE, -p.angles.thetaR};
    EXPECT_NEAR(Tlakm::poleResidualSteep(p.angles, p.steep),
                -Tlakm::poleResidual(mirrored, -p.steep), 1e-13);
  }
}

TEST(PoleEquation, HasItsPoleAtTheEdgeForTheKnownInclination) {
  // A quarter of the sphere carries: the force leans by atan(2/π) from the pole.
  const double lean = std::atan(1.0 / (Tlakm::kPi / 2.0));
  EXPECT_NEAR(Tlakm::poleResidual({0.4, lean - 0.4}, 0.4), 0.0, 1e-15);
}

TEST(DegToRad, UsesTheStressModelsOwnPi) {
  EXPECT_EQ(Tlakm::kPi, 3.14159265359);
  EXPECT_EQ(Sila::kPi, 3.14159265358979);
}

}  // namespace
