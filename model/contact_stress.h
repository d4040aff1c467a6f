// Contact stress on the femoral head: p0·cos γ at the angular distance γ from a stress pole, over
// the part of the head that the socket covers and the load reaches. The pole and p0 follow from the
// resultant force. For the cosine law see Brinckmann, Frobin and Hierholzer, J Biomech 14 (1981)
// 149-156.
#pragma once

#include <cstdint>

#include "model/pole_equation.h"
#include "model/pole_search.h"
#include "model/units.h"

namespace Tlakm {

// Acceleration of gravity, m/s²: body weight in kg to newtons.
inline constexpr double kGravity = 9.82;

struct StressInputs {
  Sila::Metres headRadius = {};
  Sila::Radians thetaCE = {};
  Sila::Kilograms bodyWeight = {};
  double rWb = 0.0;           // resultant force over body weight
  Sila::Degrees thetaR = {};  // inclination of the resultant force; 0 to 180
};

enum class StressOutcome {
  Ok,      // every result is a finite number
  NoPole,  // no position of the pole balances this force by pressure, or none that the one-way
           // search can meet (an edge far above a right angle): `thetaPol`, `pmaxWb` and `pmax`
           // are unset
  DivisionByZero,  // a head radius of zero, or so small that the stress is not a number: the
                   // stresses must not be used
};

// Results and working values; all of them stay readable after a run.
struct ContactStress {
  StressOutcome outcome = StressOutcome::NoPole;
  PoleAngles angles;        // rad
  double headRadius = 0.0;  // m
  double rWb = 0.0;         // resultant force over body weight
  double weight = 0.0;      // N, Wb
  double force = 0.0;       // N, R
  PoleForm form = PoleForm::Ordinary;
  PoleBracket bracket;           // the starting search; not run when a pole is ruled out beforehand
  std::int64_t newtonSteps = 0;  // steps of Newton's method taken from the bracket's estimate
  double residual = 0.0;         // at thetaPolRad
  double thetaPolRad = 0.0;      // rad, pole
  double p0 = 0.0;               // Pa, stress at the pole

  double thetaPol = 0.0;  // degrees, pole, positive lateral of the vertical
  double pmax = 0.0;      // Pa, peak stress: at the pole, or at the socket's edge if the pole lies
                          // beyond
  double pmaxWb = 0.0;    // m^-2, peak stress over body weight
};

// Computes pole and stress. Ends for every input, not finite ones included, at once for
// inclinations of up to 180 degrees (the search walks through greater ones step by step); the
// outcome says why there is no result. The second form writes into a struct that the caller keeps,
// for cohorts; nothing in it from an earlier run remains.
ContactStress ComputeContactStress(const StressInputs& inputs);
void ComputeContactStress(const StressInputs& inputs, ContactStress& stress);

// The steps of ComputeContactStress.

double DegToRad(double angle);

// Inputs in the module's units; everything else at its start.
void LoadStressInputs(const StressInputs& inputs, ContactStress& stress);

// Chooses the form, finds the pole, computes stress and outcome.
void SolveStress(ContactStress& stress);

// p0 in Pa for a pole at `theta` (rad), in the two forms. `stress` gives force, radius and angles.
double poleStress(const ContactStress& stress, double theta);
double poleStressSteep(const ContactStress& stress, double theta);

}  // namespace Tlakm
