// Sources that are not a hip's measurements: marks on a picture, and two hips that share a source.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "tests/uncertainty/readings.h"

namespace {

using Sila::Measurement;
using Sila::Result;
using Uncertainty::Column;
using Uncertainty::Completeness;
using Uncertainty::HipTrials;
using Uncertainty::HipUncertainty;
using Uncertainty::Source;

constexpr double kDegree = Sila::kPi / 180.0;

const Uncertainty::Points& SharedPoints() {
  static const Uncertainty::Points points(20);
  return points;
}

double ModelsResult(const Sila::HipInputs& hip, std::size_t result) {
  Sila::HipState state;
  EXPECT_EQ(Sila::ComputeHip(hip, state), Sila::HipOutcome::Ok);
  return Sila::kResults[result].value(state.results);
}

// Coordinates on a picture in cm, x downward and z lateral.
enum Mark : std::size_t {
  kHeadX,
  kHeadZ,
  kOtherHeadZ,
  kTrochanterX,
  kTrochanterZ,
  kCrestTopX,
  kCrestSideZ,
  kEdgeX,
  kEdgeZ,
  kMarks
};
using Marks = std::array<double, kMarks>;

Marks MarksOf(const Sila::HipInputs& hip) {
  const double x = 30.0;
  const double z = 25.0;
  return {x,
          z,
          z - 2.0 * hip.lizm,
          x + hip.xizm,
          z + hip.zizm,
          x - hip.Hizm,
          z + hip.Cizm,
          x - 3.0 * std::cos(hip.thetaCE),
          z + 3.0 * std::sin(hip.thetaCE)};
}

// The head's centre is the origin of every measurement.
Sila::HipInputs HipOfMarks(const Marks& marks) {
  Sila::HipInputs hip = DefaultHip();
  hip.lizm = {(marks[kHeadZ] - marks[kOtherHeadZ]) / 2.0};
  hip.xizm = {marks[kTrochanterX] - marks[kHeadX]};
  hip.zizm = {marks[kTrochanterZ] - marks[kHeadZ]};
  hip.Hizm = {marks[kHeadX] - marks[kCrestTopX]};
  hip.Cizm = {marks[kCrestSideZ] - marks[kHeadZ]};
  hip.thetaCE = {std::atan2(marks[kEdgeZ] - marks[kHeadZ], marks[kHeadX] - marks[kEdgeX])};
  return hip;
}

void MapMarks(std::span<const Column> sources, std::size_t trials, HipTrials& hip) {
  for (std::size_t k = 0; k < trials; ++k) {
    Marks marks{};
    for (std::size_t i = 0; i < kMarks; ++i) marks[i] = sources[i].at[k];
    const HipNumbers numbers = NumbersOf(HipOfMarks(marks));
    for (std::size_t i = 0; i < numbers.size(); ++i) hip.computed[i].at[k] = numbers[i];
  }
}

HipUncertainty ComputeFromMarks(const Marks& marks, const Marks& u) {
  std::vector<Source> sources;
  for (std::size_t i = 0; i < kMarks; ++i) sources.push_back({marks[i], u[i]});
  return ComputeHipUncertainty(HipOfMarks(marks), sources, MapMarks, SharedPoints(),
                               {.trials = 1U << 16, .budget = true});
}

// To first order, from the exact model with one mark a little to either side.
double SlopeOfMark(const Marks& marks, std::size_t mark, double step, std::size_t result) {
  Marks above = marks;
  Marks below = marks;
  above[mark] += step;
  below[mark] -= step;
  return (ModelsResult(HipOfMarks(above), result) - ModelsResult(HipOfMarks(below), result)) /
         (2.0 * step);
}

TEST(MarksAsSources, MoveTheMeasurementsThatTheyShareTogether) {
  const Marks marks = MarksOf(DefaultHip());
  Marks u{};
  u.fill(0.01);
  u[kHeadX] = u[kHeadZ] = 0.03;
  const HipUncertainty got = ComputeFromMarks(marks, u);
  for (std::size_t k = 0; k < Sila::kResultCount; ++k) {
    Marks parts{};
    double variance = 0.0;
    for (std::size_t i = 0; i < kMarks; ++i) {
      parts[i] = std::pow(SlopeOfMark(marks, i, 0.003, k) * u[i], 2.0);
      variance += parts[i];
    }
    const auto& result = *got.results[k];
    EXPECT_EQ(result.estimate, ModelsResult(HipOfMarks(marks), k));
    EXPECT_NEAR(*result.spread.u, std::sqrt(variance), 0.005 * std::sqrt(variance)) << k;
    ASSERT_EQ(result.spread.budget.size(), kMarks);
    for (std::size_t i = 0; i < kMarks; ++i) {
      EXPECT_NEAR(result.spread.budget[i], parts[i] / variance, 0.005) << k << " " << i;
    }
  }
}

// A head's centre that is misread upward makes H too small and the trochanter too low at once. As
// errors of the measurements, each of its own, they would say something else.
TEST(MarksAsSources, AreNotIndependentErrorsOfTheMeasurements) {
  Marks u{};
  u[kHeadX] = u[kHeadZ] = 0.1;
  const HipUncertainty shared = ComputeFromMarks(MarksOf(DefaultHip()), u);
  Uncertainty::HipReading reading = ExactReading(HipOfMarks(MarksOf(DefaultHip())));
  ErrorOf(reading, Measurement::Lizm).u = 0.05;
  for (const Measurement id :
       {Measurement::Xizm, Measurement::Zizm, Measurement::Hizm, Measurement::Cizm}) {
    ErrorOf(reading, id).u = 0.1;
  }
  ErrorOf(reading, Measurement::ThetaCE).u = 0.1 / 3.0;
  const HipUncertainty apart = ComputeHipUncertainty(reading, SharedPoints(), {.trials = 1U << 16});
  const auto u_of = [](const HipUncertainty& hip, Result result) {
    return *hip.results[IndexOf(result)]->spread.u;
  };
  EXPECT_GT(std::abs(u_of(shared, Result::RWb) / u_of(apart, Result::RWb) - 1.0), 0.1);
}

// Two hips on one picture: measurements without error but for the weights, all of the first, then
// all of the second, then one magnification for both or one for each.
struct Pair {
  std::array<Sila::HipInputs, 2> hips = {DefaultHip(), DefaultHip()};
  double weightU = 0.0;
  double edgeU = 0.0;  // rad
  bool shareFactor = true;
};

std::vector<Source> SourcesOf(const Pair& pair) {
  std::vector<Source> sources;
  for (const Sila::HipInputs& hip : pair.hips) {
    const std::size_t first = sources.size();
    for (const double number : NumbersOf(hip)) sources.push_back({number, 0.0});
    sources[first + IndexOf(Measurement::ThetaCE)].u = pair.edgeU;
    sources[first + IndexOf(Measurement::BodyWeight)].u = pair.weightU;
  }
  sources.push_back({1.0, 0.02});
  sources.push_back({1.0, 0.02});
  return sources;
}

HipUncertainty ComputeDifference(const Pair& pair) {
  constexpr std::size_t kFactors = 2 * Sila::kMeasurementCount;
  const Uncertainty::HipPairMap map = [&](std::span<const Column> sources, std::size_t trials,
                                          std::array<HipTrials, 2>& hips) {
    for (std::size_t side = 0; side < 2; ++side) {
      const Column& factor = sources[kFactors + (pair.shareFactor ? 0 : side)];
      for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
        const std::size_t i = IndexOf(row.id);
        const Column& own = sources[side * Sila::kMeasurementCount + i];
        hips[side].columns[i] = &own;
        if (!Uncertainty::IsLength(row)) continue;
        hips[side].columns[i] = &hips[side].computed[i];
        for (std::size_t k = 0; k < trials; ++k) {
          hips[side].computed[i].at[k] = own.at[k] / factor.at[k];
        }
      }
    }
  };
  return ComputeHipDifference(pair.hips, SourcesOf(pair), map, SharedPoints(), {});
}

TEST(DifferenceOfTwoHips, HoldsNothingOfWhatTheyShare) {
  for (const auto& result : ComputeDifference({}).results) {
    EXPECT_EQ(result->estimate, 0.0);
    EXPECT_EQ(result->spread.u, 0.0);
    EXPECT_EQ(result->spread.interval->low, 0.0);
    EXPECT_EQ(result->spread.interval->high, 0.0);
  }
  const HipUncertainty apart = ComputeDifference({.shareFactor = false});
  EXPECT_GT(*apart.results[IndexOf(Result::Pmax)]->spread.u, 50'000.0);
}

TEST(DifferenceOfTwoHips, AddsTheErrorsThatAreTheirOwn) {
  const double expected = ModelsResult(DefaultHip(), IndexOf(Result::Pmax)) * std::sqrt(2.0) / 70.0;
  const HipUncertainty got = ComputeDifference({.weightU = 1.0});
  EXPECT_NEAR(*got.results[IndexOf(Result::Pmax)]->spread.u, expected, 0.01 * expected);
}

TEST(DifferenceOfTwoHips, IsTheSecondLessTheFirst) {
  Pair pair;
  pair.hips[1].thetaCE = {20.0 * kDegree};
  const HipUncertainty got = ComputeDifference(pair);
  for (std::size_t k = 0; k < Sila::kResultCount; ++k) {
    EXPECT_EQ(got.results[k]->estimate,
              ModelsResult(pair.hips[1], k) - ModelsResult(pair.hips[0], k));
  }
  EXPECT_GT(got.results[IndexOf(Result::Pmax)]->spread.interval->low, 0.0);
}

// Of each hip 0.5 % of the trials are refused, by errors of its own.
TEST(DifferenceOfTwoHips, IsRefusedInTheTrialsThatEitherIs) {
  Pair pair = {.edgeU = 2.5 * kDegree};
  for (Sila::HipInputs& hip : pair.hips) hip.thetaCE = {-2.0 * kDegree};
  const HipUncertainty got = ComputeDifference(pair);
  EXPECT_EQ(got.outcome, Sila::HipOutcome::Ok);
  EXPECT_NEAR(1.0 - static_cast<double>(got.ok) / static_cast<double>(got.trials), 0.01, 0.002);
  EXPECT_EQ(got.completeness, Completeness::TooManyRefused);
}

TEST(DifferenceOfTwoHips, HasTheOutcomeOfTheHipThatIsRefused) {
  for (const std::size_t side : {0U, 1U}) {
    Pair pair;
    pair.hips[side].thetaCE = {-20.0 * kDegree};
    EXPECT_EQ(ComputeDifference(pair).outcome, Sila::HipOutcome::NoPole);
  }
}

TEST(DifferenceOfTwoHips, NeedsTheWeightsOfBothForThePeakStress) {
  for (const std::size_t side : {0U, 1U}) {
    Pair pair;
    pair.hips[side].bodyWeight = std::nullopt;
    const HipUncertainty got = ComputeDifference(pair);
    EXPECT_FALSE(got.results[IndexOf(Result::Pmax)]);
    EXPECT_TRUE(got.results[IndexOf(Result::PmaxWb)]);
  }
}

}  // namespace
