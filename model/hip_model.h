// The whole model for one hip: resultant force, the test whether the model covers it, contact
// stress. Window and cohort program both go through here, so both give the same digits.
#pragma once

#include "model/contact_stress.h"
#include "model/resultant_force.h"
#include "model/vocabulary.h"

namespace Sila {

enum class HipOutcome {
  Ok,
  OutOfRange,      // thetaR is negative or not a number, or the force is beyond a double; only the
                   // force was computed
  NoPole,          // no stress pole balances this force by pressure; only the force is to be used
  DivisionByZero,  // head radius of zero, or so small that the stress is not a number; only the
                   // force is to be used
};

// Results and working values of one run.
struct HipState {
  HipForce force;
  Tlakm::ContactStress stress;  // of this run only when the outcome is not OutOfRange
  HipResults results;           // the stresses are of this run only when the outcome is Ok
};

// Ends for every input, numbers that are not finite included. `state` belongs to the caller and may
// be used again for the next hip.
HipOutcome ComputeHip(const HipInputs& inputs, HipState& state);

}  // namespace Sila
