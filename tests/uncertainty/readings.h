// Hips as they are read from a radiograph, with errors of a usual size.
#pragma once

#include "tests/support/random_hips.h"
#include "uncertainty/hip_uncertainty.h"

// A hip's numbers in the order of HipInput.
inline std::array<double, Uncertainty::kHipInputs> NumbersOf(const Sila::HipInputs& hip) {
  const Sila::HipForceInputs& f = hip.force;
  return {f.lizm,  f.xizm,      f.zizm,         f.Cizm,      f.Hizm,
          f.zasuk, hip.thetaCE, hip.headRadius, f.bodyWeight};
}

inline Sila::HipInputs HipOf(const std::array<double, Uncertainty::kHipInputs>& numbers) {
  Sila::HipInputs hip;
  hip.force = {.lizm = numbers[0],
               .xizm = numbers[1],
               .zizm = numbers[2],
               .Cizm = numbers[3],
               .Hizm = numbers[4],
               .zasuk = numbers[5],
               .bodyWeight = numbers[8]};
  hip.thetaCE = numbers[6];
  hip.headRadius = numbers[7];
  return hip;
}

// In the units of the model.
inline constexpr std::array<double, Uncertainty::kHipInputs> kUsualU = {
    0.2, 0.2, 0.3, 0.3, 0.4, 0.05, 2.5 * Sila::kPi / 180.0, 0.0008, 1.0};

// With no error at all.
inline Uncertainty::HipReading ExactReading(const Sila::HipInputs& hip) {
  Uncertainty::HipReading reading;
  const std::array<double, Uncertainty::kHipInputs> numbers = NumbersOf(hip);
  for (std::size_t i = 0; i < numbers.size(); ++i) reading.inputs[i].value = numbers[i];
  return reading;
}

inline Uncertainty::HipReading UsualReading(const Sila::HipInputs& hip) {
  Uncertainty::HipReading reading = ExactReading(hip);
  for (std::size_t i = 0; i < kUsualU.size(); ++i) reading.inputs[i].u = kUsualU[i];
  return reading;
}

// The same hip on a picture that magnifies it.
inline Uncertainty::HipReading MagnifiedReading(const Sila::HipInputs& hip, double factor,
                                                double u) {
  Uncertainty::HipReading reading = UsualReading(hip);
  for (std::size_t i = 0; i < Uncertainty::kHipInputs; ++i) {
    if (!Uncertainty::kHipInputInfo[i].isLength) continue;
    reading.inputs[i].value *= factor;
    reading.inputs[i].u *= factor;
  }
  reading.magnification = Uncertainty::Source{factor, u};
  return reading;
}
