// Force, range check and stress in their order.
#include "model/hip_model.h"

namespace Sila {

HipOutcome ComputeHip(const HipInputs& inputs, HipState& state) {
  ComputeHipForce(inputs.force, state.force);
  if (!IsWithinModelRange(state.force.thetaR)) return HipOutcome::OutOfRange;
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
