// Force, range check and stress in their order.
#include "model/hip_model.h"

#include <cmath>

namespace Sila {

HipOutcome ComputeHip(const HipInputs& inputs, HipState& state) {
  ComputeHipForce(inputs.force, state.force);
  // An absurd weight gives a force beyond a double: no fault of the radius, which ends otherwise.
  const bool hasForce = std::isfinite(state.force.rWb);
  if (!hasForce || !IsWithinModelRange(state.force.thetaR)) return HipOutcome::OutOfRange;
  Tlakm::ComputeContactStress({.headRadius = inputs.headRadius,
                               .thetaCE = inputs.thetaCE,
                               .bodyWeight = inputs.force.bodyWeight,
                               .rWb = state.force.rWb,
                               .thetaR = state.force.thetaR},
                              state.stress);
  switch (state.stress.outcome) {
    case Tlakm::StressOutcome::NoPole:
      return HipOutcome::NoPole;
    case Tlakm::StressOutcome::DivisionByZero:
      return HipOutcome::DivisionByZero;
    case Tlakm::StressOutcome::Ok:
      break;
  }
  return HipOutcome::Ok;
}

}  // namespace Sila
