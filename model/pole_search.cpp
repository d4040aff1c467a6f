// Starting search for the stress pole, walked step by step and by a short cut that gives the same
// bits.
#include "model/pole_search.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace Tlakm {

namespace {

constexpr double kOrdinaryStart = -282.74333882310003 / 180.0;  // rad, −90·π/180
constexpr double kOrdinaryStep = kPi / 2.0 / 1000.0;            // rad
constexpr double kSteepStep = kPi / 2.0 / 100.0;                // rad

using Residual = double (*)(const PoleAngles&, double);

PoleBracket StartOf(double step, double direction) {
  PoleBracket bracket;
  bracket.poleStep = step;
  bracket.direction = direction;
  return bracket;
}

// Straight line through the last two residuals. The slope is taken over +step in both directions:
// for the downward search that mirrors the estimate about `thetaL`. Deliberate; it only seeds
// Newton's method.
void SetEstimate(PoleBracket& bracket) {
  bracket.found = true;
  bracket.slope = (bracket.current - bracket.previous) / bracket.poleStep;
  bracket.intercept = bracket.current - bracket.slope * bracket.thetaL;
  bracket.estimate = -bracket.intercept / bracket.slope;
}

// Ends without a pole as soon as none can follow: the arc tangent stays within ±π/2, so beyond that
// the residual keeps its sign; and an angle that no longer moves never reaches another one. A
// residual of exactly 0 is no sign change and does not stop the walk.
PoleBracket Walk(const PoleAngles& angles, Residual residual, double start, PoleBracket bracket) {
  double theta = start;
  for (;;) {
    bracket.previous = bracket.current;
    bracket.current = residual(angles, theta);
    ++bracket.evaluations;
    bracket.thetaL = theta;
    theta += bracket.direction * bracket.poleStep;
    if (bracket.previous * bracket.current < 0.0) break;
    const bool passed = bracket.direction * (angles.thetaR + bracket.thetaL) > kPi / 2.0;
    const bool stuck = theta == bracket.thetaL || !std::isfinite(bracket.current);
    if (passed || stuck) return bracket;
  }
  SetEstimate(bracket);
  return bracket;
}

// The grid of the ordinary search, with the rounding of its repeated addition. Reaches π/2, beyond
// which no force with an inclination of at least 0 has its pole.
constexpr std::size_t kGridPoints = 2002;
constexpr std::array<double, kGridPoints> MakeGrid() {
  std::array<double, kGridPoints> grid{};
  double theta = kOrdinaryStart;
  for (double& point : grid) {
    point = theta;
    theta += 1.0 * kOrdinaryStep;
  }
  return grid;
}
constexpr std::array<double, kGridPoints> kGrid = MakeGrid();

// Where the ordinary pole lies, to a seventieth of a step: with u = thetaR + pole the pole equation
// holds S = thetaCE + thetaR alone. tests/reference/fit_pole_guess.py prints the coefficients. They
// make a guess, checked by the signs that it leads to.
double GuessPole(const PoleAngles& angles) {
  const double s = angles.thetaCE + angles.thetaR;
  const double low = 1.570797 + s * (-2.000115 + s * (0.002903 + s * 0.772065));
  const double high = 0.120901 + s * (-0.559377 + s * (0.289112 + s * -0.049084));
  return low + s * s * (s * s) * high - angles.thetaR;
}

// The first grid point at which the residual is positive, found from a guess in a few evaluations.
// False where the short cut is not safe. It is safe because left of the root the residual increases
// by at least a third of the angle, while its rounding, for `kClearOfBranch` and more from the
// angle at which its denominator vanishes, is a millionth of that: every grid point before the two
// that enclose the root is negative beyond doubt.
constexpr double kClearOfBranch = 0.01;  // rad
constexpr std::size_t kReach = 4;        // grid points to look at on either side of the guess

bool JumpToPole(const PoleAngles& angles, PoleBracket& bracket) {
  if (!(angles.thetaR >= 0.0 && angles.thetaCE > -kPi)) return false;
  const double position = (GuessPole(angles) - kOrdinaryStart) / kOrdinaryStep;
  if (!(position > 0.0 && position < static_cast<double>(kGridPoints - kReach))) return false;
  int evaluations = 0;
  const auto residualAt = [&](std::size_t k) {
    ++evaluations;
    return poleResidual(angles, kGrid[k]);
  };

  std::size_t k = static_cast<std::size_t>(position) + 1;
  const std::size_t last = k + kReach;
  double previous = residualAt(k - 1);
  double current = residualAt(k);
  while (current < 0.0 && k < last && k + 1 < kGridPoints) {
    previous = current;
    current = residualAt(++k);
  }
  const std::size_t first = k > kReach ? k - kReach : 1;
  while (previous > 0.0 && k > first) {
    current = previous;
    previous = residualAt(--k - 1);
  }

  const bool clear = angles.thetaCE - kGrid[k] + kPi / 2.0 > kClearOfBranch;
  if (!clear || !(previous < 0.0 && previous * current < 0.0)) return false;
  bracket.previous = previous;
  bracket.current = current;
  bracket.thetaL = kGrid[k];
  bracket.evaluations = evaluations;
  SetEstimate(bracket);
  return true;
}

// Where the walk may begin. For a small sum S of the angles the pole lies about 3·S below the angle
// at which the denominator vanishes; further down than `kFarFromBranch` the residual is at most
// −0.01 rad, so every grid point there is negative beyond doubt.
constexpr double kSmallSum = 0.01;       // rad
constexpr double kFarFromBranch = 0.06;  // rad

double StartOfWalk(const PoleAngles& angles) {
  const double sum = angles.thetaR + angles.thetaCE;
  if (!(angles.thetaR >= 0.0 && sum > 0.0 && sum < kSmallSum)) return kOrdinaryStart;
  const double far = angles.thetaCE + kPi / 2.0 - kFarFromBranch;
  const double position = (far - kOrdinaryStart) / kOrdinaryStep;
  if (!(position > 0.0 && position < static_cast<double>(kGridPoints))) return kOrdinaryStart;
  return kGrid[static_cast<std::size_t>(position)];
}

}  // namespace

bool HasNoPole(const PoleAngles& angles, PoleForm form) {
  const double sum = angles.thetaR + angles.thetaCE;
  if (!std::isfinite(sum)) return true;
  return form == PoleForm::Ordinary ? -kPi <= sum && sum <= 0.0 : kPi <= sum && sum <= 2.0 * kPi;
}

PoleBracket WalkToPole(const PoleAngles& angles) {
  return Walk(angles, poleResidual, kOrdinaryStart, StartOf(kOrdinaryStep, 1.0));
}

PoleBracket bracketPole(const PoleAngles& angles) {
  PoleBracket bracket = StartOf(kOrdinaryStep, 1.0);
  if (JumpToPole(angles, bracket)) return bracket;
  return Walk(angles, poleResidual, StartOfWalk(angles), StartOf(kOrdinaryStep, 1.0));
}

PoleBracket bracketPoleSteep(const PoleAngles& angles) {
  return Walk(angles, poleResidualSteep, kPi / 2.0 - angles.thetaCE, StartOf(kSteepStep, -1.0));
}

}  // namespace Tlakm
