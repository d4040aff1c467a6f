// Hips whose true values are known, read with errors: how often the interval holds the truth.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "tests/uncertainty/readings.h"

namespace {

constexpr int kHips = 10'000;
constexpr double kMagnificationU = 0.03;

// Errors by another way than the library's: pairs of normals from a radius and an angle.
double NormalError(RandomHips& random) {
  const double radius = std::sqrt(-2.0 * std::log(random.Uniform(1e-300, 1.0)));
  return radius * std::cos(2.0 * Sila::kPi * random.Uniform(0.0, 1.0));
}

Sila::HipInputs TrueHip(RandomHips& random) {
  Sila::HipInputs hip = random.Usual();
  hip.thetaCE = {random.Uniform(15.0, 50.0) * Sila::kPi / 180.0};
  return hip;
}

// What is read of a hip, on a picture whose magnification is itself read with an error.
Uncertainty::HipReading ReadWithErrors(const Sila::HipInputs& hip, RandomHips& random) {
  const double factor = random.Uniform(1.05, 1.25);
  Uncertainty::HipReading reading = MagnifiedReading(hip, factor, kMagnificationU);
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    const double error = ErrorOf(reading, row.id).u * NormalError(random);
    SetValue(reading.values, row, ValueOf(reading.values, row) + error);
  }
  reading.magnification->value += kMagnificationU * NormalError(random);
  return reading;
}

ResultNumbers TrueResults(const Sila::HipInputs& hip) {
  Sila::HipState state;
  EXPECT_EQ(Sila::ComputeHip(hip, state), Sila::HipOutcome::Ok);
  return NumbersOf(state.results);
}

TEST(Coverage, IsWhatWasAskedFor) {
  const Uncertainty::Points points(Uncertainty::kReadingSources);
  Uncertainty::Settings settings;
  settings.trials = 2048;
  RandomHips random(2);
  std::array<int, Sila::kResultCount> inside{};
  for (int i = 0; i < kHips; ++i) {
    const Sila::HipInputs hip = TrueHip(random);
    const ResultNumbers truth = TrueResults(hip);
    const Uncertainty::HipUncertainty read =
        ComputeHipUncertainty(ReadWithErrors(hip, random), points, settings);
    ASSERT_EQ(read.outcome, Sila::HipOutcome::Ok);
    for (std::size_t k = 0; k < Sila::kResultCount; ++k) {
      const auto& interval = read.results[k]->spread.interval;
      ASSERT_TRUE(interval);
      inside[k] += interval->low <= truth[k] && truth[k] <= interval->high ? 1 : 0;
    }
  }
  for (std::size_t k = 0; k < Sila::kResultCount; ++k) {
    EXPECT_NEAR(inside[k] / static_cast<double>(kHips), 0.95, 0.005) << k;
  }
}

}  // namespace
