// Force, range check and stress in their order.
#include "model/hip_model.h"

#include <cmath>

namespace Sila {

namespace {

HipOutcome OutcomeOf(Tlakm::StressOutcome outcome) {
  switch (outcome) {
    case Tlakm::StressOutcome::NoPole:
      return HipOutcome::NoPole;
    case Tlakm::StressOutcome::DivisionByZero:
      return HipOutcome::DivisionByZero;
    case Tlakm::StressOutcome::Ok:
      break;
  }
  return HipOutcome::Ok;
}

void TakeStress(const Tlakm::ContactStress& stress, HipResults& results) {
  results.thetaPol = {stress.thetaPol};
  results.pmaxWb = {stress.pmaxWb};
  results.pmax = {stress.pmax};
}

}  // namespace

HipOutcome ComputeHip(const HipInputs& inputs, HipState& state) {
  ComputeHipForce(inputs, state.force);
  state.results.rWb = state.force.rWb;
  state.results.thetaR = {state.force.thetaR};
  // An absurd weight gives a force beyond a double: no fault of the radius, which ends otherwise.
  const bool hasForce = std::isfinite(state.force.rWb);
  if (!hasForce || !IsWithinModelRange(state.force.thetaR)) return HipOutcome::OutOfRange;
  Tlakm::ComputeContactStress({.headRadius = inputs.headRadius,
                               .thetaCE = inputs.thetaCE,
                               .bodyWeight = inputs.bodyWeight.value_or(kAssumedBodyWeight),
                               .rWb = state.force.rWb,
                               .thetaR = {state.force.thetaR}},
                              state.stress);
  const HipOutcome outcome = OutcomeOf(state.stress.outcome);
  if (outcome == HipOutcome::Ok) TakeStress(state.stress, state.results);
  return outcome;
}

}  // namespace Sila
