// The resultant force on the hip in one-legged stance, from lengths measured on an anteroposterior
// radiograph of the pelvis.
//
// The frame has its origin at the centre of the femoral head: x points down (the body weight acts
// along +x), z points to the body's midline (the trochanter lies at negative z), y points forward.
// Lengths are in centimetres, forces in newtons. The body weight without the supporting leg turns
// the pelvis about the head centre; three groups of abductor muscles hold it. Their tensions follow
// from the equilibrium of moments, the force on the hip from the equilibrium of forces. For the
// balance of the one-legged stance see McLeish and Charnley, J Biomech 3 (1970) 191-209; for
// muscles as straight lines between attachment points, Dostal and Andrews, J Biomech 14 (1981)
// 803-812.
#pragma once

#include <array>
#include <cstddef>

#include "model/vector3.h"
#include "model/vocabulary.h"

namespace Sila {

// Acceleration of gravity, m/s²: body weight in kg to newtons.
inline constexpr double kGravity = 9.82;

// How much the patient's pelvis and femur differ from the reference; ratios.
struct ScaleFactors {
  double trochX = 0.0;  // cm, trochanter point turned by `zasuk`
  double trochZ = 0.0;  // cm
  double scaleX = 0.0;
  double scaleZ = 0.0;
  double scaleL = 0.0;
  double scaleH = 0.0;
  double scaleC = 0.0;
};

// Room for the attachment points of one group. Rows from `count` on are stored for reference: they
// are scaled like the others but are neither tilted nor part of the equilibrium.
inline constexpr std::size_t kMaxPoints = 20;

struct MuscleGroup {
  using Points = std::array<Vector3, kMaxPoints>;

  std::size_t count = 0;   // muscles in the equilibrium
  std::size_t stored = 0;  // rows stored, at least `count`

  Points femoral;        // cm, femoral attachments before the femur's tilt
  Points pelvic;         // cm, pelvic attachments before the pelvis's tilt
  Points femoralTilted;  // cm, first `count` rows
  Points pelvicTilted;   // cm, first `count` rows
  Points direction;      // unit vectors from pelvis to femur, first `count` rows
  Points muscleForce;    // N, force of each muscle on the pelvis, first `count` rows
  std::array<double, kMaxPoints> area{};                  // relative cross-sections
  std::array<double, kMaxPoints> muscleForceMagnitude{};  // N, signed like `tension`

  double tension = 0.0;    // N per unit of relative cross-section; negative where it would push
  Vector3 sum;             // Σ area · direction
  double sumLength = 0.0;  // length of `sum`
  Vector3 sumDirection;    // unit vector along `sum`
  double forceMagnitude = 0.0;  // N, tension · sumLength
};

// The loads of the stance and the tilts of the bones.
struct StanceLoads {
  double weight = 0.0;      // N, W
  double legWeight = 0.0;   // N, weight of the supporting leg, 0.161 W
  double legLever = 0.0;    // cm, lever of the leg's weight
  double bodyLever = 0.0;   // cm, lever of the body's weight
  double loadLever = 0.0;   // cm, second component of the load over (-W - legWeight)
  double femurTilt = 0.0;   // rad, φ
  double pelvisTilt = 0.0;  // rad, ψ
};

using Matrix3 = std::array<std::array<double, 3>, 3>;

// Everything that the force model works out. All of it stays readable after a run; nothing is
// shared between runs, so any number of them may run at the same time.
struct HipForce {
  ScaleFactors scale;
  StanceLoads loads;
  std::array<MuscleGroup, 3> groups;  // group 1, 2, 3
  Vector3 loadVector;                 // N·cm, moment that the muscles must balance
  Matrix3 momentMatrix{};             // cm; rows x, y, z; columns group 2, group 3, group 1
  Vector3 tensions;                   // N; in the order of the columns: group 2, group 3, group 1
  Vector3 resultant;                  // N, R
  double resultantMagnitude = 0.0;    // N, |R| with its forward component

  double rWb = 0.0;     // frontal-plane magnitude of R over the body weight, no unit
  double thetaR = 0.0;  // degrees, inclination of R from the vertical
};

// Computes R for one hip; centre-edge angle and radius take no part in it. Never fails: impossible
// inputs (an imaginary tilt, a pelvis of size 0) give results that are not numbers or negative
// angles, which IsWithinModelRange refuses.
// The second form writes into a struct that the caller keeps, for cohorts.
HipForce ComputeHipForce(const HipInputs& inputs);
void ComputeHipForce(const HipInputs& inputs, HipForce& force);

// True when the contact stress may be computed for this inclination (degrees): it must be at least
// 0. A value that is not a number is refused.
bool IsWithinModelRange(double thetaR);

// The steps of ComputeHipForce, in their order.

// Scales the reference attachments to the patient and tilts them: fills `scale`, `loads` except
// `legWeight` and `loadLever`, and the points and areas of `groups`.
void BuildHipGeometry(const HipInputs& inputs, HipForce& force);

// Unit vectors from the pelvic to the femoral attachments, and the weight of the leg.
void ComputeMuscleDirections(HipForce& force);

// The moment of body and leg about the head centre, and the lever of the load.
void BuildLoadVector(HipForce& force);

// One column per group, in the order 2, 3, 1: Σ area · (direction × pelvic point). The order of the
// cross product belongs to the sign of the load vector.
void BuildMomentMatrix(HipForce& force);

// Solves matrix · x = right. A singular matrix gives values that are not numbers or not finite.
Vector3 SolveLinear3(Matrix3 matrix, Vector3 right);

// Force, direction and magnitude of each group and each muscle from the tensions.
void ComputeGroupForces(HipForce& force);

// The line of a group's force in the frontal plane against the vertical: degrees, positive where it
// leans to the midline on its way down. Part of no result, so it is computed only on request.
double GroupAngle(const MuscleGroup& group);

// R, |R|, `rWb` and `thetaR`.
void ComputeResultantForce(HipForce& force);

}  // namespace Sila
