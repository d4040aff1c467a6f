// The whole model for one hip: known values, refusals, and two runs side by side.
#include "model/hip_model.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <thread>
#include <vector>

#include "tests/support/random_hips.h"

namespace {

using Sila::HipOutcome;

Sila::HipInputs WithEdge(double degrees) {
  Sila::HipInputs hip = DefaultHip();
  hip.thetaCE = {degrees * Sila::kPi / 180.0};
  return hip;
}

// The digits show which value of π serves where.
TEST(HipModel, HasTheKnownValuesForTheDefaultHip) {
  Sila::HipState state;
  ASSERT_EQ(Sila::ComputeHip(DefaultHip(), state), HipOutcome::Ok);
  EXPECT_NEAR(state.force.rWb, 2.81222677558, 5e-12);
  EXPECT_NEAR(state.force.thetaR, 8.4764903085, 5e-11);
  EXPECT_NEAR(state.stress.thetaPol, 16.4157852045, 5e-11);
  EXPECT_NEAR(state.stress.pmaxWb, 3006.76110604, 5e-9);
  EXPECT_NEAR(state.stress.pmax, 2066847.58429341, 5e-9);
}

TEST(HipModel, RefusesAForceOutsideTheEdgeOfTheSocket) {
  Sila::HipState state;
  EXPECT_EQ(Sila::ComputeHip(WithEdge(-20.0), state), HipOutcome::NoPole);
  EXPECT_NEAR(state.force.rWb, 2.81222677558, 5e-12);
  EXPECT_EQ(state.stress.bracket.evaluations, 0);
}

TEST(HipModel, CoversTheDefaultPelvisFromMinusEightAndAHalfDegrees) {
  Sila::HipState state;
  EXPECT_EQ(Sila::ComputeHip(WithEdge(-8.4), state), HipOutcome::Ok);
  EXPECT_EQ(Sila::ComputeHip(WithEdge(-8.5), state), HipOutcome::NoPole);
}

TEST(HipModel, KeepsTheStressOfThePreviousRunWhenTheForceIsOutOfRange) {
  Sila::HipState state;
  ASSERT_EQ(Sila::ComputeHip(DefaultHip(), state), HipOutcome::Ok);
  const double pmax = state.stress.pmax;
  Sila::HipInputs impossible = DefaultHip();
  impossible.lizm = {104.0};
  EXPECT_EQ(Sila::ComputeHip(impossible, state), HipOutcome::OutOfRange);
  EXPECT_EQ(state.stress.pmax, pmax);
  Sila::HipInputs leverless = DefaultHip();
  leverless.lizm = {0.0};
  EXPECT_EQ(Sila::ComputeHip(leverless, state), HipOutcome::OutOfRange);
}

// Its square is no double any more.
TEST(HipModel, RefusesAForceBeyondADouble) {
  Sila::HipState state;
  Sila::HipInputs hip = DefaultHip();
  hip.bodyWeight = Sila::Kilograms{1e160};
  EXPECT_EQ(Sila::ComputeHip(hip, state), HipOutcome::OutOfRange);
}

TEST(HipModel, DistinguishesARadiusOfZeroFromARefusal) {
  Sila::HipState state;
  Sila::HipInputs hip = DefaultHip();
  hip.headRadius = {0.0};
  EXPECT_EQ(Sila::ComputeHip(hip, state), HipOutcome::DivisionByZero);
  EXPECT_NEAR(state.force.rWb, 2.81222677558, 5e-12);
}

TEST(HipModel, ComputesWithSixtyKilogramsWithoutABodyWeight) {
  Sila::HipInputs hip = DefaultHip();
  hip.bodyWeight = Sila::Kilograms{60.0};
  Sila::HipState known;
  ASSERT_EQ(Sila::ComputeHip(hip, known), HipOutcome::Ok);
  hip.bodyWeight.reset();
  Sila::HipState unknown;
  ASSERT_EQ(Sila::ComputeHip(hip, unknown), HipOutcome::Ok);
  for (const Sila::ResultRow& row : Sila::kResults) {
    EXPECT_EQ(row.value(unknown.results), row.value(known.results)) << row.key;
  }
}

TEST(HipModel, DependsOnTheWeightInTheStressAlone) {
  RandomHips hips(41);
  Sila::HipState one;
  Sila::HipState other;
  for (int i = 0; i < 500; ++i) {
    Sila::HipInputs hip = hips.Usual();
    if (Sila::ComputeHip(hip, one) != HipOutcome::Ok) continue;
    hip.bodyWeight->value *= 2.5;
    ASSERT_EQ(Sila::ComputeHip(hip, other), HipOutcome::Ok);
    EXPECT_NEAR(other.stress.pmaxWb / one.stress.pmaxWb, 1.0, 1e-9);
    EXPECT_NEAR(other.stress.pmax / one.stress.pmax, 2.5, 1e-9);
    EXPECT_NEAR(other.stress.thetaPol, one.stress.thetaPol, 1e-8);
  }
}

TEST(HipModel, DoesNotRememberThePreviousHip) {
  RandomHips hips(42);
  Sila::HipState kept;
  for (int i = 0; i < 500; ++i) {
    const Sila::HipInputs hip = hips.Wide();
    Sila::HipState fresh;
    const HipOutcome outcome = Sila::ComputeHip(hip, fresh);
    ASSERT_EQ(Sila::ComputeHip(hip, kept), outcome);
    EXPECT_EQ(kept.force.rWb, fresh.force.rWb);
    if (outcome == HipOutcome::Ok) {
      EXPECT_EQ(kept.stress.pmax, fresh.stress.pmax);
    }
  }
}

struct Peak {
  HipOutcome outcome;
  double rWb;
  double pmax;
  bool operator==(const Peak&) const = default;
};

std::vector<Peak> PeaksOf(const std::vector<Sila::HipInputs>& hips) {
  std::vector<Peak> peaks;
  Sila::HipState state;
  for (const Sila::HipInputs& hip : hips) {
    const HipOutcome outcome = Sila::ComputeHip(hip, state);
    peaks.push_back(
        {outcome, state.force.rWb, outcome == HipOutcome::Ok ? state.stress.pmax : 0.0});
  }
  return peaks;
}

TEST(HipModel, GivesTheSameBitsInTwoThreadsAtOnce) {
  RandomHips source(43);
  std::vector<Sila::HipInputs> hips;
  for (int i = 0; i < 20'000; ++i) hips.push_back(source.Wide());
  const std::vector<Peak> alone = PeaksOf(hips);
  const std::vector<Sila::HipInputs> backwards(hips.rbegin(), hips.rend());
  std::vector<Peak> first;
  std::vector<Peak> second;
  std::thread one([&] { first = PeaksOf(hips); });
  std::thread two([&] { second = PeaksOf(backwards); });
  one.join();
  two.join();
  EXPECT_TRUE(first == alone);
  EXPECT_TRUE(std::vector<Peak>(second.rbegin(), second.rend()) == alone);
}

}  // namespace
