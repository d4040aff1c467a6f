// The vectors' hip model against the exact one, and its pole against a root in higher precision.
#include "uncertainty/hip_block.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/row_name.h"
#include "tests/uncertainty/readings.h"

namespace {

using Sila::Measurement;
using Sila::Result;
using Uncertainty::Column;
using Uncertainty::kBlockTrials;

constexpr double kDegree = Sila::kPi / 180.0;

std::vector<ResultNumbers> ComputeInBlocks(const std::vector<Sila::HipInputs>& hips) {
  std::vector<Column> inputs(Sila::kMeasurementCount);
  std::vector<Column> results(Sila::kResultCount);
  Uncertainty::HipColumns columns{};
  for (std::size_t i = 0; i < Sila::kMeasurementCount; ++i) columns[i] = &inputs[i];
  std::vector<ResultNumbers> all(hips.size());
  for (std::size_t from = 0; from < hips.size(); from += kBlockTrials) {
    const std::size_t trials = std::min(kBlockTrials, hips.size() - from);
    for (std::size_t k = 0; k < trials; ++k) {
      const auto numbers = NumbersOf(hips[from + k]);
      for (std::size_t i = 0; i < Sila::kMeasurementCount; ++i) inputs[i].at[k] = numbers[i];
    }
    ComputeHips(columns, trials, std::span<Column, Sila::kResultCount>(results));
    for (std::size_t k = 0; k < trials; ++k) {
      for (std::size_t i = 0; i < Sila::kResultCount; ++i) all[from + k][i] = results[i].at[k];
    }
  }
  return all;
}

double SumOfAngles(const Sila::HipState& state) {
  return state.stress.angles.thetaCE + state.stress.angles.thetaR;
}

// Compares one trial; the pole and stress only where the exact model's digits are its own.
void Compare(const Sila::HipInputs& hip, const ResultNumbers& results, double forceTolerance) {
  Sila::HipState state;
  const bool ok = Sila::ComputeHip(hip, state) == Sila::HipOutcome::Ok;
  ASSERT_EQ(std::isfinite(results[IndexOf(Result::Pmax)]), ok)
      << hip.thetaCE / kDegree << " " << state.force.thetaR;
  for (const double result : results) ASSERT_EQ(result == Uncertainty::kRefused, !ok);
  if (!ok) return;
  const Tlakm::ContactStress& stress = state.stress;
  ASSERT_NEAR(results[IndexOf(Result::RWb)] / state.force.rWb, 1.0, forceTolerance);
  ASSERT_NEAR(results[IndexOf(Result::ThetaR)] / state.force.thetaR, 1.0, 1e-9);
  const double sum = SumOfAngles(state);
  if (sum < 0.10 || sum > 1.10) return;
  ASSERT_NEAR(results[IndexOf(Result::ThetaPol)] * kDegree, stress.thetaPol * kDegree, 1e-9);
  ASSERT_NEAR(results[IndexOf(Result::Pmax)] / stress.pmax, 1.0, 2e-9);
  ASSERT_NEAR(results[IndexOf(Result::PmaxWb)] / stress.pmaxWb, 1.0, 2e-9);
}

// Trials about an ordinary hip, up to where the model refuses.
TEST(HipBlock, AgreesWithTheModelAtAHundredThousandTrials) {
  const Uncertainty::Points points(Sila::kMeasurementCount, 11, 0);
  std::vector<Sila::HipInputs> hips;
  Column scratch;
  for (std::size_t block = 0; block < 391; ++block) {
    HipNumbers numbers{};
    std::vector<Column> errors;
    for (std::size_t i = 0; i < Sila::kMeasurementCount; ++i) {
      errors.push_back(points.Errors(i, Uncertainty::Distribution::Normal, block, scratch));
    }
    Sila::HipInputs centre = DefaultHip();
    centre.thetaCE = {static_cast<double>(block % 8) * 6.0 * kDegree};
    for (std::size_t k = 0; k < kBlockTrials; ++k) {
      for (std::size_t i = 0; i < Sila::kMeasurementCount; ++i) {
        numbers[i] = NumbersOf(centre)[i] + 1.5 * kUsualU[i] * errors[i].at[k];
      }
      hips.push_back(HipOf(numbers));
    }
  }
  const std::vector<ResultNumbers> results = ComputeInBlocks(hips);
  for (std::size_t i = 0; i < hips.size() && !HasFatalFailure(); ++i) {
    Compare(hips[i], results[i], 1e-12);
  }
}

// Far beyond what patients have the equilibrium may lose digits, in both models alike.
TEST(HipBlock, RefusesWhatTheModelRefuses) {
  RandomHips random(41);
  std::vector<Sila::HipInputs> hips(100'000);
  for (std::size_t i = 0; i < hips.size(); ++i) {
    hips[i] = random.Wide();
    if (i % 2 == 0) hips[i].thetaCE = {random.Uniform(-3.14, 3.14)};
    if (i % 5 == 0) hips[i].zasuk = {random.Uniform(-40.0, 40.0)};
    if (i % 50 == 0) hips[i].lizm = {random.Uniform(80.0, 95.0)};
  }
  const std::vector<ResultNumbers> results = ComputeInBlocks(hips);
  for (std::size_t i = 0; i < hips.size() && !HasFatalFailure(); ++i) {
    Compare(hips[i], results[i], 1e-9);
  }
}

// The pole by halving an interval on its branch, in the digits of a long double, from the equation
// of the form in question.
struct Root {
  long double theta = 0.0;   // rad
  long double stress = 0.0;  // peak stress times the radius squared over the force
};

constexpr long double kPi = 3.14159265359L;

// With c the angle from the pole to the edge, in the form's own counting.
long double Residual(long double thetaR, long double theta, long double c, bool steep) {
  const long double q = std::cos(c) * std::cos(c) / (c + kPi / 2 + std::sin(2 * c) / 2);
  return thetaR + theta - std::atan(steep ? -q : q);
}

Root FindRoot(long double thetaR, long double thetaCE, bool steep) {
  // Between a loaded part of no size and the edge that the force itself points at.
  long double low = steep ? thetaCE - 3 * kPi / 2 : -thetaR;
  long double high = steep ? -thetaR : thetaCE + kPi / 2;
  const auto edgeAt = [&](long double theta) {
    return steep ? kPi - thetaCE + theta : thetaCE - theta;
  };
  for (int i = 0; i < 80; ++i) {
    const long double middle = (low + high) / 2;
    (Residual(thetaR, middle, edgeAt(middle), steep) < 0 ? low : high) = middle;
  }
  const long double c = edgeAt(low);
  const long double atPole = 1.5L * std::abs(std::sin(thetaR + low)) / (std::cos(c) * std::cos(c));
  return {low, c >= 0 ? atPole : atPole * std::cos(c)};
}

struct SumRange {
  const char* name;
  double low;     // rad
  double high;    // rad
  double pole;    // rad, how near thetaPol comes
  double stress;  // how near pmax comes, relative
};

class PoleOfBlock : public testing::TestWithParam<SumRange> {};

// Sums of the angles spread evenly in their logarithm, and their mirror images in the steep form.
TEST_P(PoleOfBlock, IsTheRootOfItsEquation) {
  RandomHips random(42);
  std::vector<Sila::HipInputs> hips(6'000);
  std::vector<Sila::HipState> states(hips.size());
  for (std::size_t i = 0; i < hips.size(); ++i) {
    hips[i] = random.Usual();
    Sila::ComputeHip(hips[i], states[i]);
    const double sum =
        std::exp(random.Uniform(std::log(GetParam().low), std::log(GetParam().high)));
    const double thetaR = states[i].force.thetaR * Tlakm::kPi / 180.0;
    hips[i].thetaCE = {(i % 2 == 0 || sum < 1.4 ? sum : Tlakm::kPi - sum) - thetaR};
  }
  const std::vector<ResultNumbers> results = ComputeInBlocks(hips);
  int compared = 0;
  for (std::size_t i = 0; i < hips.size(); ++i) {
    if (results[i][IndexOf(Result::RWb)] == Uncertainty::kRefused) continue;  // behind the start
    const double thetaR = results[i][IndexOf(Result::ThetaR)] * Tlakm::kPi / 180.0;
    const bool steep = Tlakm::kPi / 2.0 - hips[i].thetaCE <= thetaR;
    const Root root = FindRoot(thetaR, hips[i].thetaCE, steep);
    ++compared;
    const double size = results[i][IndexOf(Result::RWb)] / std::pow(hips[i].headRadius, 2.0);
    ASSERT_NEAR(results[i][IndexOf(Result::ThetaPol)] * Tlakm::kPi / 180.0,
                static_cast<double>(root.theta), GetParam().pole)
        << hips[i].thetaCE + thetaR;
    ASSERT_NEAR(results[i][IndexOf(Result::PmaxWb)] / size / static_cast<double>(root.stress), 1.0,
                GetParam().stress)
        << hips[i].thetaCE + thetaR;
  }
  EXPECT_GT(compared, 4'500);
}

INSTANTIATE_TEST_SUITE_P(Table, PoleOfBlock,
                         testing::Values(SumRange{"TinySums", 1e-7, 2e-4, 1e-11, 1e-7},
                                         SumRange{"SmallSums", 2e-4, 0.1, 1e-10, 1e-9},
                                         SumRange{"UsualSums", 0.1, 1.1, 1e-11, 1e-10},
                                         SumRange{"LargeSums", 1.1, 1.5707, 1e-11, 1e-9}),
                         RowName());

struct Refused {
  const char* name;
  Measurement measurement;
  double value;
};

class MeasureOfBlock : public testing::TestWithParam<Refused> {};

TEST_P(MeasureOfBlock, IsRefusedOutOfItsRange) {
  HipNumbers numbers = NumbersOf(DefaultHip());
  numbers[IndexOf(GetParam().measurement)] = GetParam().value;
  const std::vector<ResultNumbers> results = ComputeInBlocks({HipOf(numbers)});
  for (const double result : results[0]) EXPECT_EQ(result, Uncertainty::kRefused);
}

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

INSTANTIATE_TEST_SUITE_P(
    Table, MeasureOfBlock,
    testing::Values(Refused{"NoRadius", Measurement::HeadRadius, 0.0},
                    Refused{"NegativeRadius", Measurement::HeadRadius, -0.025},
                    Refused{"RadiusThatVanishes", Measurement::HeadRadius, 1e-170},
                    Refused{"NoDistanceOfHips", Measurement::Lizm, 0.0},
                    Refused{"NegativeDistanceOfHips", Measurement::Lizm, -10.4},
                    Refused{"DistanceOfHipsBeyondTheFemur", Measurement::Lizm, 88.2},
                    Refused{"NoWeight", Measurement::BodyWeight, 0.0},
                    Refused{"NegativeWeight", Measurement::BodyWeight, -70.0},
                    Refused{"EdgeBeyondHalfATurn", Measurement::ThetaCE, 6.8},
                    Refused{"EdgeBeyondHalfATurnBelow", Measurement::ThetaCE, -5.0},
                    Refused{"AThousandTurns", Measurement::Zasuk, 6283.0},
                    Refused{"NoNumber", Measurement::Hizm, kNaN},
                    Refused{"Infinite", Measurement::Cizm, kInfinity}),
    RowName());

TEST(HipBlock, TakesAnyNumberOfRows) {
  RandomHips random(43);
  std::vector<Sila::HipInputs> hips(kBlockTrials);
  for (Sila::HipInputs& hip : hips) hip = random.Usual();
  const std::vector<ResultNumbers> all = ComputeInBlocks(hips);
  for (const std::ptrdiff_t rows : {1, 2, 7, 9, 255}) {
    const std::vector<Sila::HipInputs> some(hips.begin(), hips.begin() + rows);
    const std::vector<ResultNumbers> results = ComputeInBlocks(some);
    EXPECT_TRUE(std::equal(results.begin(), results.end(), all.begin())) << rows;
  }
}

}  // namespace
