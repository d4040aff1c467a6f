// The equation whose root is the stress pole: where the pole must lie so that the stress on the
// loaded part of the head adds up to a force in the direction of R.
//
// The loaded area reaches from the edge of the socket, at the centre-edge angle, to a quarter turn
// beyond the pole on the other side. Integrating p0·cos γ over it gives a force whose direction
// fixes the pole and whose size fixes p0. The ordinary form serves a force that points inside, the
// steep form one so steep that centre-edge angle and inclination together reach a right angle.
#pragma once

namespace Tlakm {

// The stress model's own π, shorter than the force model's. Kept digit for digit.
inline constexpr double kPi = 3.14159265359;

// Frontal-plane angles in radians: the centre-edge angle, positive lateral of the vertical, and the
// inclination of R, positive medial of it.
struct PoleAngles {
  double thetaCE = 0.0;
  double thetaR = 0.0;
};

enum class PoleForm { Ordinary, Steep };

// The steep form takes over at equality of π/2 − thetaCE and thetaR.
PoleForm ChooseForm(const PoleAngles& angles);

// Residual of the pole equation and its derivative at one pole angle.
struct PoleEquation {
  double residual = 0.0;
  double slope = 0.0;
};

// Both at once, for less than the price of two; the same bits as the single functions below.
PoleEquation EvaluatePoleEquation(const PoleAngles& angles, PoleForm form, double theta);

// Residual of the pole equation at a pole angle `theta` (radians, positive lateral); 0 at the pole.
// Strictly increasing on each branch between the angles at which its denominator vanishes. Any
// finite argument is allowed; the value is not finite where the denominator is 0.
double poleResidual(const PoleAngles& angles, double theta);
double poleResidualSteep(const PoleAngles& angles, double theta);

// Analytic derivative of the residual with respect to `theta`.
double poleResidualSlope(const PoleAngles& angles, double theta);
double poleResidualSteepSlope(const PoleAngles& angles, double theta);

}  // namespace Tlakm
