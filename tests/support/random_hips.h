// Made-up hips that are the same on every machine: the standard library's distributions are not.
#pragma once

#include <random>

#include "model/hip_model.h"

class RandomHips {
 public:
  explicit RandomHips(unsigned seed) : random_(seed) {}

  double Uniform(double low, double high) {
    return low + (high - low) * (static_cast<double>(random_() >> 11) * 0x1p-53);
  }

  // Far beyond what patients have: trochanters above the head centre, flat and inside-out pelves.
  Sila::HipInputs Wide() {
    return {.lizm = {Uniform(4.0, 20.0)},
            .xizm = {Uniform(-5.0, 5.0)},
            .zizm = {Uniform(1.0, 10.0)},
            .Cizm = {Uniform(-3.0, 9.0)},
            .Hizm = {Uniform(7.0, 25.0)},
            .zasuk = {Uniform(-1.0, 1.0)},
            .thetaCE = {Uniform(-30.0, 150.0) * Sila::kPi / 180.0},
            .headRadius = {Uniform(0.01, 0.05)},
            .bodyWeight = Sila::Kilograms{Uniform(20.0, 200.0)}};
  }

  // As patients have them.
  Sila::HipInputs Usual() {
    return {.lizm = {Uniform(8.5, 12.0)},
            .xizm = {Uniform(-1.0, 2.0)},
            .zizm = {Uniform(5.0, 7.5)},
            .Cizm = {Uniform(3.0, 6.5)},
            .Hizm = {Uniform(13.0, 18.0)},
            .zasuk = {Uniform(-0.3, 0.3)},
            .thetaCE = {Uniform(0.0, 60.0) * Sila::kPi / 180.0},
            .headRadius = {Uniform(0.02, 0.03)},
            .bodyWeight = Sila::Kilograms{Uniform(45.0, 110.0)}};
  }

 private:
  std::mt19937_64 random_;
};

// The hip that the case form opens with, of 70 kg.
inline Sila::HipInputs DefaultHip() {
  return {.lizm = {10.4},
          .xizm = {0.5},
          .zizm = {6.0},
          .Cizm = {4.4},
          .Hizm = {16.0},
          .zasuk = {0.0},
          .thetaCE = {30.0 * Sila::kPi / 180.0},
          .headRadius = {0.025},
          .bodyWeight = Sila::Kilograms{70.0}};
}
