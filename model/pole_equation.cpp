// Residual and slope of the pole equation in its two forms.
#include "model/pole_equation.h"

#include <cmath>

namespace Tlakm {

namespace {

// Squared cosine over D, the ratio of the two force components, and sin 2u over D; u is the angle
// from the pole to the edge in the form's own counting.
struct Ratios {
  double q = 0.0;
  double s = 0.0;
};

Ratios RatiosAt(double u) {
  const double cosine = std::cos(u);
  const double sineOfDouble = std::sin(2.0 * u);
  const double d = u + kPi / 2.0 + sineOfDouble / 2.0;
  return {cosine * cosine / d, sineOfDouble / d};
}

double Slope(const Ratios& r) {
  const double square = r.q * r.q;
  return 1.0 - (2.0 * square + r.s) / (square + 1.0);
}

double EdgeFromPole(const PoleAngles& angles, double theta) {
  return angles.thetaCE - theta;
}

double EdgeFromPoleSteep(const PoleAngles& angles, double theta) {
  return kPi - angles.thetaCE + theta;
}

}  // namespace

PoleForm ChooseForm(const PoleAngles& angles) {
  return kPi / 2.0 - angles.thetaCE <= angles.thetaR ? PoleForm::Steep : PoleForm::Ordinary;
}

PoleEquation EvaluatePoleEquation(const PoleAngles& angles, PoleForm form, double theta) {
  const bool steep = form == PoleForm::Steep;
  const Ratios r = RatiosAt(steep ? EdgeFromPoleSteep(angles, theta) : EdgeFromPole(angles, theta));
  return {angles.thetaR + theta - std::atan(steep ? -r.q : r.q), Slope(r)};
}

double poleResidual(const PoleAngles& angles, double theta) {
  return angles.thetaR + theta - std::atan(RatiosAt(EdgeFromPole(angles, theta)).q);
}

double poleResidualSteep(const PoleAngles& angles, double theta) {
  return angles.thetaR + theta - std::atan(-RatiosAt(EdgeFromPoleSteep(angles, theta)).q);
}

double poleResidualSlope(const PoleAngles& angles, double theta) {
  return Slope(RatiosAt(EdgeFromPole(angles, theta)));
}

double poleResidualSteepSlope(const PoleAngles& angles, double theta) {
  return Slope(RatiosAt(EdgeFromPoleSteep(angles, theta)));
}

}  // namespace Tlakm
