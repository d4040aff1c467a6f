// The starting search against the loop written out step by step, and its ends without a pole.
#include "model/pole_search.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "model/contact_stress.h"
#include "tests/support/random_hips.h"
#include "tests/support/row_name.h"

namespace {

using Tlakm::PoleAngles;
using Tlakm::PoleBracket;
using Tlakm::PoleForm;

constexpr double kPi = 3.14159265359;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// What the loop leaves. `found` is false after more steps than any pole needs.
struct Literal {
  bool found = false;
  double previous = 0.0;
  double current = 0.0;
  double thetaL = 0.0;
  double estimate = 0.0;
};

template <class Residual>
Literal SearchLiterally(double theta, double step, double direction, Residual residual) {
  Literal end;
  for (int i = 0; i < 5000; ++i) {
    end.previous = end.current;
    end.current = residual(theta);
    end.thetaL = theta;
    theta = theta + direction * step;
    if (end.previous * end.current < 0.0) {
      const double slope = (end.current - end.previous) / step;
      const double intercept = end.current - slope * end.thetaL;
      end.estimate = -intercept / slope;
      end.found = true;
      return end;
    }
  }
  return end;
}

Literal SearchOrdinary(const PoleAngles& angles) {
  return SearchLiterally(-282.74333882310003 / 180.0, kPi / 2.0 / 1000.0, 1.0, [&](double theta) {
    const double a = angles.thetaCE - theta;
    const double c = std::cos(a);
    return angles.thetaR + theta - std::atan(c * c / (a + kPi / 2.0 + std::sin(2.0 * a) / 2.0));
  });
}

Literal SearchSteep(const PoleAngles& angles) {
  return SearchLiterally(kPi / 2.0 - angles.thetaCE, kPi / 2.0 / 100.0, -1.0, [&](double theta) {
    const double b = kPi - angles.thetaCE + theta;
    const double c = std::cos(b);
    return angles.thetaR + theta - std::atan(-(c * c) / (kPi / 2.0 + b + std::sin(2.0 * b) / 2.0));
  });
}

bool SameBits(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool IsSame(const PoleBracket& bracket, const Literal& literal) {
  if (bracket.found != literal.found) return false;
  return !literal.found ||
         (SameBits(bracket.previous, literal.previous) &&
          SameBits(bracket.current, literal.current) && SameBits(bracket.thetaL, literal.thetaL) &&
          SameBits(bracket.estimate, literal.estimate));
}

// The pole that Newton's method reaches from the loop's estimate, as many steps as it likes.
double PoleFrom(const PoleAngles& angles, PoleForm form, double theta) {
  for (int i = 0; i < 1000; ++i) {
    const bool steep = form == PoleForm::Steep;
    const double residual =
        steep ? Tlakm::poleResidualSteep(angles, theta) : Tlakm::poleResidual(angles, theta);
    if (std::abs(residual) < 1e-10) break;
    theta = theta - residual / (steep ? Tlakm::poleResidualSteepSlope(angles, theta)
                                      : Tlakm::poleResidualSlope(angles, theta));
  }
  return theta;
}

std::string Describe(const PoleAngles& angles) {
  return testing::PrintToString(angles.thetaCE) + ", " + testing::PrintToString(angles.thetaR);
}

struct Tally {
  int ordinary = 0;
  int steep = 0;
  int refused = 0;
  std::int64_t evaluations = 0;
};

// Compares one hip's search and results with the loop. Stops the test at the first difference.
void Compare(const Sila::HipInputs& hip, Sila::HipState& state, Tally& tally) {
  const Sila::HipOutcome outcome = Sila::ComputeHip(hip, state);
  const Tlakm::ContactStress& stress = state.stress;
  if (outcome == Sila::HipOutcome::OutOfRange || Tlakm::HasNoPole(stress.angles, stress.form)) {
    ++tally.refused;
    return;
  }
  const bool steep = stress.form == PoleForm::Steep;
  const Literal literal = steep ? SearchSteep(stress.angles) : SearchOrdinary(stress.angles);
  ASSERT_TRUE(IsSame(stress.bracket, literal)) << Describe(stress.angles);
  ASSERT_EQ(outcome == Sila::HipOutcome::Ok, literal.found) << Describe(stress.angles);
  if (!literal.found) return;
  const double pole = PoleFrom(stress.angles, stress.form, literal.estimate);
  ASSERT_TRUE(SameBits(stress.thetaPolRad, pole)) << Describe(stress.angles);
  const double p0 = steep ? Tlakm::poleStressSteep(stress, pole) : Tlakm::poleStress(stress, pole);
  ASSERT_TRUE(SameBits(stress.p0, p0)) << Describe(stress.angles);
  ++(steep ? tally.steep : tally.ordinary);
  if (!steep) tally.evaluations += stress.bracket.evaluations;
}

TEST(PoleSearch, EqualsTheLoopForHipsOfAllKinds) {
  RandomHips hips(31);
  Sila::HipState state;
  Tally tally;
  for (int i = 0; i < 200'000 && !HasFatalFailure(); ++i) Compare(hips.Wide(), state, tally);
  EXPECT_GT(tally.ordinary, 60'000);
  EXPECT_GT(tally.steep, 5'000);
  EXPECT_GT(tally.refused, 10'000);
}

// Angles of every size, also such as no hip has; the inclination is at least 0.
TEST(PoleSearch, EqualsTheLoopForAnglesOfAllKinds) {
  RandomHips random(32);
  for (int i = 0; i < 10'000; ++i) {
    const double inclination = random.Uniform(0.0, 3.1);
    const double sum = random.Uniform(0.0, 1.65);
    const PoleAngles angles = {sum - inclination, inclination};
    ASSERT_TRUE(IsSame(Tlakm::bracketPole(angles), SearchOrdinary(angles))) << Describe(angles);
    ASSERT_TRUE(IsSame(Tlakm::WalkToPole(angles), SearchOrdinary(angles))) << Describe(angles);
  }
}

TEST(PoleSearch, EqualsTheLoopForSteepAnglesOfAllKinds) {
  RandomHips random(33);
  for (int i = 0; i < 20'000; ++i) {
    const double inclination = random.Uniform(0.0, 3.1);
    const PoleAngles angles = {random.Uniform(1.5, 3.14) - inclination, inclination};
    ASSERT_TRUE(IsSame(Tlakm::bracketPoleSteep(angles), SearchSteep(angles))) << Describe(angles);
  }
}

// Where the angles' sum is tiny the pole lies at the start of its branch.
TEST(PoleSearch, EqualsTheLoopForTinySums) {
  RandomHips random(34);
  for (int i = 0; i < 4'000; ++i) {
    const double inclination = i % 3 == 0 ? 0.0 : random.Uniform(0.0, 1.5);
    const double sum = std::pow(10.0, random.Uniform(-17.0, -1.0));
    const PoleAngles angles = {sum - inclination, inclination};
    ASSERT_TRUE(IsSame(Tlakm::bracketPole(angles), SearchOrdinary(angles))) << Describe(angles);
  }
}

TEST(PoleSearch, EqualsTheLoopInAFewStepsNearTheStartOfTheBranch) {
  RandomHips random(37);
  for (int i = 0; i < 20'000; ++i) {
    const double inclination = i % 3 == 0 ? 0.0 : random.Uniform(0.0, 2.9);
    const double sum = std::pow(10.0, random.Uniform(-8.0, -1.9));
    const PoleAngles angles = {sum - inclination, inclination};
    const PoleBracket bracket = Tlakm::bracketPole(angles);
    ASSERT_TRUE(IsSame(bracket, SearchOrdinary(angles))) << Describe(angles);
    ASSERT_LT(bracket.evaluations, 50) << Describe(angles);
  }
}

// An inclination that makes the residual exactly 0 at the grid point `theta`.
double InclinationFor(double edge, double theta) {
  const double a = edge - theta;
  const double c = std::cos(a);
  return std::atan(c * c / (a + kPi / 2.0 + std::sin(2.0 * a) / 2.0)) - theta;
}

// The loop walks on over an exact 0: a product of 0 is no change of sign, so the residuals beside
// it are never multiplied and no pole is found.
TEST(PoleSearch, EqualsTheLoopAtExactZeros) {
  RandomHips random(35);
  int zeros = 0;
  double theta = -282.74333882310003 / 180.0;
  for (int k = 0; k < 1300; ++k, theta = theta + kPi / 2.0 / 1000.0) {
    for (int j = 0; j < 8; ++j) {
      const double edge = random.Uniform(-0.6, 1.2);
      const PoleAngles angles = {edge, InclinationFor(edge, theta)};
      if (!(angles.thetaR >= 0.0) || edge + angles.thetaR > kPi / 2.0) continue;
      if (Tlakm::poleResidual(angles, theta) == 0.0) {
        ++zeros;
        ASSERT_FALSE(Tlakm::bracketPole(angles).found) << Describe(angles);
      }
      ASSERT_TRUE(IsSame(Tlakm::bracketPole(angles), SearchOrdinary(angles))) << Describe(angles);
      for (const double beside : {0.0, 10.0}) {
        const PoleAngles near = {edge, std::nextafter(angles.thetaR, beside)};
        ASSERT_TRUE(IsSame(Tlakm::bracketPole(near), SearchOrdinary(near))) << Describe(near);
      }
    }
  }
  EXPECT_GT(zeros, 1000);
}

TEST(PoleSearch, EqualsTheLoopWithoutInclination) {
  for (int i = 1; i < 1600; ++i) {
    const PoleAngles angles = {i / 1000.0, 0.0};
    ASSERT_TRUE(IsSame(Tlakm::bracketPole(angles), SearchOrdinary(angles))) << Describe(angles);
  }
}

TEST(PoleSearch, TakesAFewEvaluationsForUsualHips) {
  RandomHips hips(36);
  Sila::HipState state;
  std::int64_t evaluations = 0;
  std::int64_t ordinary = 0;
  for (int i = 0; i < 50'000; ++i) {
    if (Sila::ComputeHip(hips.Usual(), state) != Sila::HipOutcome::Ok) continue;
    if (state.stress.form != PoleForm::Ordinary) continue;
    const double sum = state.stress.angles.thetaCE + state.stress.angles.thetaR;
    if (sum > 0.01) {
      ASSERT_LE(state.stress.bracket.evaluations, 4) << Describe(state.stress.angles);
    }
    evaluations += state.stress.bracket.evaluations;
    ++ordinary;
  }
  EXPECT_GT(ordinary, 40'000);
  EXPECT_LT(static_cast<double>(evaluations) / static_cast<double>(ordinary), 3.0);
}

TEST(PoleSearch, WalksAThousandEvaluationsForTheSameResult) {
  const PoleAngles angles = {0.5235987755982984, 0.14794266489667836};
  const PoleBracket walked = Tlakm::WalkToPole(angles);
  const PoleBracket jumped = Tlakm::bracketPole(angles);
  EXPECT_GT(walked.evaluations, 1000);
  EXPECT_LT(jumped.evaluations, 5);
  EXPECT_EQ(walked.estimate, jumped.estimate);
  EXPECT_EQ(walked.thetaL, jumped.thetaL);
  EXPECT_EQ(walked.slope, jumped.slope);
  EXPECT_EQ(walked.intercept, jumped.intercept);
  EXPECT_EQ(walked.poleStep, kPi / 2.0 / 1000.0);
  EXPECT_EQ(walked.direction, 1.0);
}

// The line is laid through the last two residuals as if the search had stepped upward.
TEST(PoleSearch, MirrorsTheSteepEstimate) {
  const PoleAngles angles = {1.6, 0.15};
  const PoleBracket bracket = Tlakm::bracketPoleSteep(angles);
  ASSERT_TRUE(bracket.found);
  EXPECT_EQ(bracket.poleStep, kPi / 2.0 / 100.0);
  EXPECT_EQ(bracket.direction, -1.0);
  EXPECT_LT(bracket.current, 0.0);
  EXPECT_GT(bracket.previous, 0.0);
  const double toRoot = -bracket.current * bracket.poleStep / (bracket.previous - bracket.current);
  EXPECT_NEAR(bracket.estimate - bracket.thetaL, -toRoot, 1e-14);
  EXPECT_LT(bracket.estimate, bracket.thetaL);
}

struct NoPole {
  const char* name;
  PoleForm form;
  PoleAngles angles;
  bool hasNoPole;
};

class PoleRange : public testing::TestWithParam<NoPole> {};

TEST_P(PoleRange, IsKnownBeforeTheSearch) {
  EXPECT_EQ(Tlakm::HasNoPole(GetParam().angles, GetParam().form), GetParam().hasNoPole);
}

INSTANTIATE_TEST_SUITE_P(
    Table, PoleRange,
    testing::Values(NoPole{"OrdinarySumZero", PoleForm::Ordinary, {-0.25, 0.25}, true},
                    NoPole{"OrdinarySumTiny", PoleForm::Ordinary, {5e-324, 0.0}, false},
                    NoPole{"OrdinarySumNegative", PoleForm::Ordinary, {-1.5, 0.25}, true},
                    NoPole{"OrdinarySumMinusPi", PoleForm::Ordinary, {-kPi, 0.0}, true},
                    NoPole{"OrdinarySumBelowMinusPi", PoleForm::Ordinary, {-3.2, 0.0}, false},
                    NoPole{"OrdinarySumPositive", PoleForm::Ordinary, {0.5, 0.25}, false},
                    NoPole{"SteepSumSmall", PoleForm::Steep, {1.5, 0.25}, false},
                    NoPole{"SteepSumBelowPi", PoleForm::Steep, {3.14, 0.0}, false},
                    NoPole{"SteepSumPi", PoleForm::Steep, {kPi, 0.0}, true},
                    NoPole{"SteepSumMiddle", PoleForm::Steep, {4.0, 1.0}, true},
                    NoPole{"SteepSumTwoPi", PoleForm::Steep, {2.0 * kPi, 0.0}, true},
                    NoPole{"SteepSumAboveTwoPi", PoleForm::Steep, {6.3, 0.0}, false},
                    NoPole{"EdgeIsNoNumber", PoleForm::Ordinary, {kNaN, 0.1}, true},
                    NoPole{"InclinationIsNoNumber", PoleForm::Steep, {0.1, kNaN}, true},
                    NoPole{"EdgeIsInfinite", PoleForm::Steep, {kInfinity, 0.1}, true},
                    NoPole{"InclinationIsInfinite", PoleForm::Steep, {0.1, kInfinity}, true}),
    RowName());

TEST(PoleSearch, EndsWhenTheSignCanNoLongerChange) {
  const PoleAngles behindTheStart = {-1.0, 2.4};
  for (const PoleBracket& bracket :
       {Tlakm::WalkToPole(behindTheStart), Tlakm::bracketPole(behindTheStart)}) {
    EXPECT_FALSE(bracket.found);
    EXPECT_LT(bracket.evaluations, 2000);
  }
  const PoleAngles aboveTheStart = {1.9, 0.15};  // the steep search begins below the pole
  const PoleBracket steep = Tlakm::bracketPoleSteep(aboveTheStart);
  EXPECT_FALSE(steep.found);
  EXPECT_LT(steep.evaluations, 400);
}

TEST(PoleSearch, EndsForAnglesThatAreNotNumbersOrFarOut) {
  for (const double odd : {kNaN, kInfinity, -kInfinity, 1e18, -1e18, 1e300, -1e300}) {
    for (const double inclination : {0.0, 0.1, 3.0}) {
      const PoleAngles angles = {odd, inclination};
      EXPECT_LT(Tlakm::WalkToPole(angles).evaluations, 3000) << Describe(angles);
      EXPECT_LT(Tlakm::bracketPole(angles).evaluations, 3000) << Describe(angles);
      EXPECT_LT(Tlakm::bracketPoleSteep(angles).evaluations, 3000) << Describe(angles);
    }
  }
  for (const double odd : {kNaN, kInfinity, -kInfinity}) {
    const PoleAngles angles = {0.1, odd};
    EXPECT_LT(Tlakm::WalkToPole(angles).evaluations, 3000) << Describe(angles);
    EXPECT_LT(Tlakm::bracketPoleSteep(angles).evaluations, 3000) << Describe(angles);
  }
}

TEST(PoleSearch, MovesOnTheGridOfRepeatedAddition) {
  const PoleBracket bracket = Tlakm::bracketPole({0.5, 0.2});
  double theta = -282.74333882310003 / 180.0;
  while (theta < bracket.thetaL) theta = theta + kPi / 2.0 / 1000.0;
  EXPECT_TRUE(SameBits(theta, bracket.thetaL));
}

}  // namespace
