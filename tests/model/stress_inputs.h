// The inputs of the stress model that tests vary: two angles, of a usual hip.
#pragma once

#include <numbers>

#include "model/contact_stress.h"

inline constexpr double kDegree = std::numbers::pi / 180.0;

inline Tlakm::StressInputs Inputs(double edgeDegrees, double inclinationDegrees) {
  return {.headRadius = {0.025},
          .thetaCE = {edgeDegrees * kDegree},
          .bodyWeight = {70.0},
          .rWb = 2.8,
          .thetaR = {inclinationDegrees}};
}
