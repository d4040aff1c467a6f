// Hips as they are read from a radiograph, with errors of a usual size.
#pragma once

#include "tests/support/random_hips.h"
#include "uncertainty/hip_uncertainty.h"

using HipNumbers = std::array<double, Sila::kMeasurementCount>;  // by Measurement
using ResultNumbers = std::array<double, Sila::kResultCount>;    // by Result

inline HipNumbers NumbersOf(const Sila::HipInputs& hip) {
  HipNumbers numbers{};
  for (const auto& row : Sila::kMeasurements) numbers[IndexOf(row.id)] = ValueOf(hip, row);
  return numbers;
}

inline Sila::HipInputs HipOf(const HipNumbers& numbers) {
  Sila::HipInputs hip;
  for (const auto& row : Sila::kMeasurements) SetValue(hip, row, numbers[IndexOf(row.id)]);
  return hip;
}

inline ResultNumbers NumbersOf(const Sila::HipResults& results) {
  ResultNumbers numbers{};
  for (const auto& row : Sila::kResults) numbers[IndexOf(row.id)] = row.value(results);
  return numbers;
}

// In held units.
inline constexpr HipNumbers kUsualU = {0.2,    0.2, 0.3, 0.3, 0.4, 0.05, 2.5 * Sila::kPi / 180.0,
                                       0.0008, 1.0};

// With no error at all.
inline Uncertainty::HipReading ExactReading(const Sila::HipInputs& hip) {
  return {.values = hip};
}

inline Uncertainty::HipReading UsualReading(const Sila::HipInputs& hip) {
  Uncertainty::HipReading reading = ExactReading(hip);
  for (std::size_t i = 0; i < kUsualU.size(); ++i) reading.errors[i].u = kUsualU[i];
  return reading;
}

// The same hip on a picture that magnifies it.
inline Uncertainty::HipReading MagnifiedReading(const Sila::HipInputs& hip, double factor,
                                                double u) {
  Uncertainty::HipReading reading = UsualReading(hip);
  for (const auto& row : Sila::kMeasurements) {
    if (!Uncertainty::IsLength(row)) continue;
    SetValue(reading.values, row, ValueOf(hip, row) * factor);
    reading.errors[IndexOf(row.id)].u *= factor;
  }
  reading.magnification = Uncertainty::Source{factor, u};
  return reading;
}

inline Uncertainty::ReadingError& ErrorOf(Uncertainty::HipReading& reading, Sila::Measurement id) {
  return reading.errors[IndexOf(id)];
}
