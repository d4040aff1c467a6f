// Newton's method on the pole equation, and the stress at the pole and at its peak.
#include "model/contact_stress.h"

#include <cmath>
#include <cstdint>

namespace Tlakm {

namespace {

constexpr double kResidualTolerance = 1e-10;  // rad, at which Newton's method stops
constexpr double kEdgeOfValidity = 0.001;  // rad, distance of the pole from the edge's quarter turn
                                           // below which the general formula gives way

// Improves `thetaPolRad` until the residual is small. False when it never will be: a value that is
// not finite, or a pole angle that has occurred before, since each step depends on that one number
// alone. Brent's algorithm finds a repetition by comparing with one remembered angle, moved ahead
// at powers of two.
bool RunNewton(ContactStress& stress) {
  double& theta = stress.thetaPolRad;
  double remembered = theta;
  std::int64_t nextToRemember = 1;
  for (;;) {
    const PoleEquation equation = EvaluatePoleEquation(stress.angles, stress.form, theta);
    stress.residual = equation.residual;
    if (std::abs(stress.residual) < kResidualTolerance) return true;
    theta -= equation.residual / equation.slope;
    ++stress.newtonSteps;
    if (!std::isfinite(theta) || theta == remembered) return false;
    if (stress.newtonSteps == nextToRemember) {
      remembered = theta;
      nextToRemember *= 2;
    }
  }
}

bool FindPole(ContactStress& stress) {
  if (HasNoPole(stress.angles, stress.form)) return false;
  stress.bracket =
      stress.form == PoleForm::Steep ? bracketPoleSteep(stress.angles) : bracketPole(stress.angles);
  if (!stress.bracket.found) return false;
  stress.thetaPolRad = stress.bracket.estimate;
  return RunNewton(stress);
}

bool IsAtEdgeOfValidity(const ContactStress& stress, double theta) {
  return std::abs(stress.angles.thetaCE - theta - kPi / 2.0) < kEdgeOfValidity;
}

double EdgeStress(const ContactStress& stress) {
  return 3.0 * stress.rWb * stress.weight / 2.0 / kPi / (stress.headRadius * stress.headRadius);
}

double GeneralStress(const ContactStress& stress, double theta, double cosine, double sign) {
  const double squares = stress.headRadius * stress.headRadius * (cosine * cosine);
  const double numerator = stress.force * std::sin(stress.angles.thetaR + theta);
  return std::abs(numerator / (sign * 2.0 * squares / 3.0));
}

double PeakStress(const ContactStress& stress) {
  const double ce = stress.angles.thetaCE;
  const double pole = stress.thetaPolRad;
  if (stress.form == PoleForm::Ordinary) {
    return pole <= ce ? stress.p0 : stress.p0 * std::cos(pole - ce);
  }
  return ce - kPi <= pole ? stress.p0 : stress.p0 * std::cos(pole + kPi - ce);
}

}  // namespace

double DegToRad(double angle) {
  return angle * kPi / 180.0;
}

void LoadStressInputs(const StressInputs& inputs, ContactStress& stress) {
  stress = ContactStress();
  stress.headRadius = inputs.headRadius;
  stress.angles = {inputs.thetaCE, DegToRad(inputs.thetaR)};
  stress.rWb = inputs.rWb;
  stress.weight = inputs.bodyWeight * kGravity;
  stress.force = inputs.rWb * stress.weight;
}

double poleStress(const ContactStress& stress, double theta) {
  if (IsAtEdgeOfValidity(stress, theta)) return EdgeStress(stress);
  return GeneralStress(stress, theta, std::cos(stress.angles.thetaCE - theta), 1.0);
}

double poleStressSteep(const ContactStress& stress, double theta) {
  if (IsAtEdgeOfValidity(stress, theta)) return EdgeStress(stress);
  return GeneralStress(stress, theta, std::cos(kPi - stress.angles.thetaCE + theta), -1.0);
}

void SolveStress(ContactStress& stress) {
  stress.form = ChooseForm(stress.angles);
  if (!FindPole(stress)) {
    stress.outcome = StressOutcome::NoPole;
    return;
  }
  stress.p0 = stress.form == PoleForm::Steep ? poleStressSteep(stress, stress.thetaPolRad)
                                             : poleStress(stress, stress.thetaPolRad);
  const double peak = PeakStress(stress);
  // The edge is more than a quarter turn away from the pole: the socket would have to pull.
  if (peak < 0.0) {
    stress.outcome = StressOutcome::NoPole;
    return;
  }
  stress.pmax = peak;
  stress.pmaxWb = stress.pmax / stress.weight;
  stress.thetaPol = stress.thetaPolRad * 180.0 / kPi;
  stress.outcome = std::isfinite(stress.pmax) && std::isfinite(stress.pmaxWb)
                       ? StressOutcome::Ok
                       : StressOutcome::DivisionByZero;
}

void ComputeContactStress(const StressInputs& inputs, ContactStress& stress) {
  LoadStressInputs(inputs, stress);
  SolveStress(stress);
}

ContactStress ComputeContactStress(const StressInputs& inputs) {
  ContactStress stress;
  ComputeContactStress(inputs, stress);
  return stress;
}

}  // namespace Tlakm
