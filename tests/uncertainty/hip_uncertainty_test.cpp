// One hip: its estimate, what moves which result, and what is left of refused trials.
#include "uncertainty/hip_uncertainty.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <numeric>
#include <string>
#include <vector>

#include "tests/support/row_name.h"
#include "tests/uncertainty/readings.h"
#include "uncertainty/hip_block.h"

namespace {

using Sila::Measurement;
using Sila::Result;
using Uncertainty::Column;
using Uncertainty::Completeness;
using Uncertainty::HipReading;
using Uncertainty::HipUncertainty;
using Uncertainty::Points;
using Uncertainty::ReadingError;
using Uncertainty::Source;

constexpr double kDegree = Sila::kPi / 180.0;

const Points& SharedPoints() {
  static const Points points(2 * Uncertainty::kReadingSources);
  return points;
}

HipUncertainty Compute(const HipReading& reading, const Uncertainty::Settings& settings = {}) {
  return ComputeHipUncertainty(reading, SharedPoints(), settings);
}

bool SameBits(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

ResultNumbers ModelsResults(const Sila::HipInputs& hip) {
  Sila::HipState state;
  EXPECT_EQ(Sila::ComputeHip(hip, state), Sila::HipOutcome::Ok);
  return NumbersOf(state.results);
}

TEST(HipUncertainty, WithoutErrorsIsTheModelBitForBit) {
  RandomHips random(61);
  Sila::HipState state;
  for (int i = 0; i < 300; ++i) {
    const Sila::HipInputs hip = i % 2 == 0 ? random.Usual() : random.Wide();
    const HipUncertainty got = Compute(ExactReading(hip));
    ASSERT_EQ(got.outcome, Sila::ComputeHip(hip, state));
    if (got.outcome != Sila::HipOutcome::Ok) continue;
    const ResultNumbers model = ModelsResults(hip);
    for (std::size_t k = 0; k < Sila::kResultCount; ++k) {
      ASSERT_TRUE(SameBits(got.results[k]->estimate, model[k]));
      ASSERT_TRUE(SameBits(got.results[k]->spread.interval->low, model[k]));
      ASSERT_TRUE(SameBits(got.results[k]->spread.interval->high, model[k]));
      ASSERT_EQ(got.results[k]->spread.u, 0.0);
    }
  }
}

TEST(HipUncertainty, EstimatesTrueLengthsFromThoseOnThePicture) {
  for (const double factor : {1.07, 1.13, 1.15, 1.17, 1.19, 1.23}) {
    Sila::HipInputs hip = DefaultHip();
    for (const Measurement id : {Measurement::Lizm, Measurement::Xizm, Measurement::Zizm,
                                 Measurement::Cizm, Measurement::Hizm, Measurement::HeadRadius}) {
      SetValue(hip, RowOf(id), ValueOf(hip, RowOf(id)) * factor / factor);
    }
    const HipUncertainty got = Compute(MagnifiedReading(DefaultHip(), factor, 0.0));
    const ResultNumbers model = ModelsResults(hip);
    for (std::size_t k = 0; k < Sila::kResultCount; ++k) {
      EXPECT_TRUE(SameBits(got.results[k]->estimate, model[k])) << factor;
    }
  }
}

TEST(HipUncertainty, LeavesAloneWhatASourceDoesNotMove) {
  HipReading reading = ExactReading(DefaultHip());
  ErrorOf(reading, Measurement::ThetaCE).u = 2.0 * kDegree;
  ErrorOf(reading, Measurement::BodyWeight).u = 3.0;
  const HipUncertainty got = Compute(reading, {.budget = true});
  for (const Result still : {Result::RWb, Result::ThetaR}) {
    const auto& result = *got.results[IndexOf(still)];
    EXPECT_EQ(result.spread.u, 0.0);
    EXPECT_TRUE(SameBits(result.spread.interval->low, result.estimate));
    EXPECT_TRUE(SameBits(result.spread.interval->high, result.estimate));
  }
  EXPECT_GT(*got.results[IndexOf(Result::ThetaPol)]->spread.u, 0.5);
  EXPECT_EQ(got.results[IndexOf(Result::PmaxWb)]->spread.budget[IndexOf(Measurement::ThetaCE)],
            1.0);
  EXPECT_GT(got.results[IndexOf(Result::Pmax)]->spread.budget[IndexOf(Measurement::BodyWeight)],
            0.1);
}

// To first order, from the model itself a little to either side.
TEST(HipUncertainty, OfSmallErrorsIsThatOfTheSlopes) {
  HipReading reading = UsualReading(DefaultHip());
  for (ReadingError& error : reading.errors) error.u *= 0.02;
  ResultNumbers variance{};
  for (std::size_t i = 0; i < Sila::kMeasurementCount; ++i) {
    HipNumbers above = NumbersOf(DefaultHip());
    HipNumbers below = above;
    above[i] += reading.errors[i].u;
    below[i] -= reading.errors[i].u;
    const auto up = ModelsResults(HipOf(above));
    const auto down = ModelsResults(HipOf(below));
    for (std::size_t k = 0; k < Sila::kResultCount; ++k) {
      variance[k] += std::pow((up[k] - down[k]) / 2.0, 2.0);
    }
  }
  const HipUncertainty got = Compute(reading, {.trials = 1U << 17});
  for (std::size_t k = 0; k < Sila::kResultCount; ++k) {
    const auto& result = *got.results[k];
    const double u = std::sqrt(variance[k]);
    EXPECT_NEAR(*result.spread.u, u, 0.005 * u) << k;
    EXPECT_NEAR(result.spread.interval->high - result.estimate, 1.96 * u, 0.02 * u) << k;
  }
}

TEST(HipUncertainty, OfAnUnknownWeightHasNoPeakStressInPascals) {
  HipReading reading = UsualReading(DefaultHip());
  reading.values.bodyWeight = Sila::kAssumedBodyWeight;
  const HipUncertainty known = Compute(reading);
  reading.values.bodyWeight = std::nullopt;
  ErrorOf(reading, Measurement::BodyWeight).u = 100.0;  // of no account
  const HipUncertainty unknown = Compute(reading);
  EXPECT_EQ(unknown.ok, unknown.trials);
  EXPECT_FALSE(unknown.results[IndexOf(Result::Pmax)]);
  for (std::size_t k = 0; k < IndexOf(Result::Pmax); ++k) {
    EXPECT_EQ(unknown.results[k]->estimate, known.results[k]->estimate);
    EXPECT_EQ(unknown.results[k]->spread.u, known.results[k]->spread.u);
    EXPECT_EQ(unknown.results[k]->spread.interval->high, known.results[k]->spread.interval->high);
  }
}

TEST(HipUncertainty, SaysWhyTheNumbersThemselvesHaveNoAnswer) {
  Sila::HipInputs hip = DefaultHip();
  hip.thetaCE = {-20.0 * kDegree};
  const HipUncertainty got = Compute(UsualReading(hip));
  EXPECT_EQ(got.outcome, Sila::HipOutcome::NoPole);
  for (const auto& result : got.results) EXPECT_FALSE(result);
}

struct NearTheEdge {
  const char* name;
  double degrees;  // centre-edge angle, with u = 2.5 degrees
  double percent;  // of the trials that are refused
  Completeness completeness;
};

double NormalShareBelow(double x) {
  return std::erfc(-x / std::sqrt(2.0)) / 2.0;
}

class EdgeOfTheModel : public testing::TestWithParam<NearTheEdge> {};

TEST_P(EdgeOfTheModel, LeavesWhatCanBeSaid) {
  Sila::HipInputs hip = DefaultHip();
  hip.thetaCE = {GetParam().degrees * kDegree};
  HipReading reading = ExactReading(hip);
  ErrorOf(reading, Measurement::ThetaCE).u = 2.5 * kDegree;
  const HipUncertainty got = Compute(reading, {.trials = 1U << 16, .budget = true});
  ASSERT_EQ(got.outcome, Sila::HipOutcome::Ok);
  const double percent =
      100.0 * static_cast<double>(got.trials - got.ok) / static_cast<double>(got.trials);
  const double inclination = ModelsResults(hip)[IndexOf(Result::ThetaR)];
  EXPECT_NEAR(percent, 100.0 * NormalShareBelow(-(inclination + GetParam().degrees) / 2.5), 0.002);
  EXPECT_NEAR(percent, GetParam().percent, 0.15 * GetParam().percent);
  EXPECT_EQ(got.completeness, GetParam().completeness);
  for (const auto& result : got.results) {
    ASSERT_TRUE(result);
    const bool complete = GetParam().completeness == Completeness::Complete;
    EXPECT_EQ(result->spread.u.has_value(), complete);
    EXPECT_EQ(result->spread.budget.empty(), !complete);
    EXPECT_EQ(result->spread.interval.has_value(),
              GetParam().completeness != Completeness::TooManyRefused);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Table, EdgeOfTheModel,
    testing::Values(NearTheEdge{"OrdinaryHip", 30.0, 0.0, Completeness::Complete},
                    NearTheEdge{"AtZero", 0.0, 0.04, Completeness::SomeRefused},
                    NearTheEdge{"AtMinusTwo", -2.0, 0.5, Completeness::TooManyRefused},
                    NearTheEdge{"AtMinusFour", -4.0, 3.8, Completeness::TooManyRefused}),
    RowName());

struct Impossible {
  const char* name;
  Measurement measurement;
};

class ImpossibleSize : public testing::TestWithParam<Impossible> {};

void ExpectTooManyRefused(const HipUncertainty& got) {
  const double refused = static_cast<double>(got.trials - got.ok) / static_cast<double>(got.trials);
  EXPECT_GT(refused, 0.0225);
  EXPECT_EQ(got.completeness, Completeness::TooManyRefused);
}

// Drawn sizes that are not above 0: of a normal error half as large as the size, 2.3 %.
TEST_P(ImpossibleSize, CountsAsRefused) {
  HipReading reading = ExactReading(DefaultHip());
  const double size = ValueOf(DefaultHip(), RowOf(GetParam().measurement));
  ErrorOf(reading, GetParam().measurement).u = size / 2.0;
  ExpectTooManyRefused(Compute(reading));
}

TEST(Magnification, CountsAsRefusedWhereItIsNotAboveZero) {
  HipReading reading = ExactReading(DefaultHip());
  reading.magnification = {1.0, 0.5};
  ExpectTooManyRefused(Compute(reading));
}

INSTANTIATE_TEST_SUITE_P(Table, ImpossibleSize,
                         testing::Values(Impossible{"Radius", Measurement::HeadRadius},
                                         Impossible{"DistanceOfHips", Measurement::Lizm},
                                         Impossible{"Weight", Measurement::BodyWeight}),
                         RowName());

double UncertaintyOfForce(const HipReading& reading) {
  return *Compute(reading).results[IndexOf(Result::RWb)]->spread.u;
}

// The force over the body weight hardly depends on how large the pelvis is, so a factor that all
// lengths share hardly moves it. As six errors it would.
TEST(Magnification, IsOneFactorAndNotSixErrors) {
  HipReading one = MagnifiedReading(DefaultHip(), 1.15, 0.03);
  for (ReadingError& error : one.errors) error.u = 0.0;
  HipReading six = one;
  six.magnification->u = 0.0;
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    if (Uncertainty::IsLength(row)) ErrorOf(six, row.id).u = ValueOf(six.values, row) * 0.03 / 1.15;
  }
  EXPECT_GT(UncertaintyOfForce(six), 15.0 * UncertaintyOfForce(one));
  EXPECT_LT(UncertaintyOfForce(six), 25.0 * UncertaintyOfForce(one));
}

// Lengths below zero on a picture magnified by less than zero would be true lengths again.
TEST(Magnification, BelowZeroIsRefusedWhateverTheLengths) {
  HipReading reading = MagnifiedReading(DefaultHip(), -1.15, 0.0);
  for (ReadingError& error : reading.errors) error.u = 0.0;
  const HipUncertainty got = Compute(reading);
  EXPECT_EQ(got.outcome, Sila::HipOutcome::Ok);
  EXPECT_EQ(got.ok, 0U);
}

// Peak stress falls with the square of the radius: twice the magnification's error is in it.
TEST(Magnification, DividesTheRadiusToo) {
  HipReading reading = MagnifiedReading(DefaultHip(), 1.15, 0.01);
  for (ReadingError& error : reading.errors) error.u = 0.0;
  const HipUncertainty got = Compute(reading);
  const auto& stress = *got.results[IndexOf(Result::Pmax)];
  EXPECT_NEAR(*stress.spread.u / stress.estimate, 2.0 * 0.01 / 1.15, 0.003);
}

TEST(HipUncertainty, DependsOnNoHipBefore) {
  RandomHips random(62);
  const HipReading reading = UsualReading(DefaultHip());
  const HipUncertainty alone = Compute(reading);
  for (int i = 0; i < 5; ++i) {
    Compute(UsualReading(random.Usual()));
    const HipUncertainty after = Compute(reading);
    for (std::size_t k = 0; k < Sila::kResultCount; ++k) {
      EXPECT_EQ(after.results[k]->spread.u, alone.results[k]->spread.u);
      EXPECT_EQ(after.results[k]->spread.interval->low, alone.results[k]->spread.interval->low);
    }
  }
}

TEST(HipUncertainty, KeepsItsOtherIntervalsInsideWiderOnes) {
  const HipReading reading = UsualReading(DefaultHip());
  const HipUncertainty narrow = Compute(reading, {.coverage = 0.9});
  const HipUncertainty wide = Compute(reading, {.coverage = 0.99});
  for (std::size_t k = 0; k < Sila::kResultCount; ++k) {
    EXPECT_LT(wide.results[k]->spread.interval->low, narrow.results[k]->spread.interval->low);
    EXPECT_GT(wide.results[k]->spread.interval->high, narrow.results[k]->spread.interval->high);
    EXPECT_EQ(wide.results[k]->spread.u, narrow.results[k]->spread.u);
  }
}

// The worst end of all intervals, as a share of its width.
double WorstMiss(const HipUncertainty& got, const HipUncertainty& exact) {
  double worst = 0.0;
  for (std::size_t k = 0; k < Sila::kResultCount; ++k) {
    const auto& [low, high] = *exact.results[k]->spread.interval;
    const auto& found = *got.results[k]->spread.interval;
    worst = std::max({worst, std::abs(found.low - low) / (high - low),
                      std::abs(found.high - high) / (high - low)});
  }
  return worst;
}

TEST(AutomaticRun, EndsWithinAHundredthOfTheEndsOfManyMoreTrials) {
  constexpr std::size_t kSeeds = 8;
  constexpr std::size_t kHips = 15;
  RandomHips random(63);
  std::vector<HipReading> readings;
  std::vector<HipUncertainty> exact;
  for (std::size_t i = 0; i < kHips; ++i) {
    Sila::HipInputs hip = random.Usual();
    hip.thetaCE = {random.Uniform(20.0, 45.0) * kDegree};
    readings.push_back(MagnifiedReading(hip, random.Uniform(1.05, 1.25), 0.03));
    exact.push_back(Compute(readings.back(), {.trials = 1U << 19}));
  }
  std::vector<double> misses;
  for (std::size_t seed = 1; seed <= kSeeds; ++seed) {
    const Points points(Uncertainty::kReadingSources, seed);
    for (std::size_t i = 0; i < kHips; ++i) {
      const HipUncertainty got =
          ComputeHipUncertainty(readings[i], points, {.trials = 1U << 20, .automatic = true});
      EXPECT_TRUE(got.settled);
      EXPECT_LE(got.trials, 1U << 17);
      misses.push_back(WorstMiss(got, exact[i]));
    }
  }
  std::sort(misses.begin(), misses.end());
  EXPECT_LE(misses[misses.size() * 95 / 100], 0.01);
}

}  // namespace
