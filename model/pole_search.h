// The starting search for the stress pole: steps along a grid of angles until the residual of the
// pole equation changes its sign, then a straight line through the last two residuals.
#pragma once

#include "model/pole_equation.h"

namespace Tlakm {

// What a search returns. `found` is false when it is proved that no sign change can come.
struct PoleBracket {
  bool found = false;
  double poleStep = 0.0;   // rad, step of the grid, positive
  double direction = 0.0;  // +1 or -1
  double previous = 0.0;   // residual one grid point before `thetaL`
  double current = 0.0;    // residual at `thetaL`
  double thetaL = 0.0;     // rad, the grid point at which the sign had changed
  double slope = 0.0;      // (current − previous) / poleStep
  double intercept = 0.0;
  double estimate = 0.0;  // rad, start of Newton's method
  int evaluations = 0;    // residuals computed by the search
};

// True when the form has no pole for these angles because its residual leaves out zero on the
// branch in question: the sum of the angles lies in [−π, 0] (ordinary) or [π, 2π] (steep). Also
// true when an angle is not finite.
bool HasNoPole(const PoleAngles& angles, PoleForm form);

// The search in each form. bracketPole starts at −π/2 and steps upward by (π/2)/1000; its grid is
// the same for every hip, so it finds the two grid points without walking to them. bracketPoleSteep
// starts at π/2 − thetaCE and steps downward by (π/2)/100.
PoleBracket bracketPole(const PoleAngles& angles);
PoleBracket bracketPoleSteep(const PoleAngles& angles);

// The ordinary search step by step, as bracketPole does it where its short cut would be unsafe.
// Gives the same bits as bracketPole in about a hundred times its evaluations.
PoleBracket WalkToPole(const PoleAngles& angles);

}  // namespace Tlakm
