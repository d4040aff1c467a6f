// The reference pelvis and femur: muscle attachment points, scaled to the patient and tilted into
// the one-legged stance.
#include <algorithm>
#include <cmath>

#include "model/resultant_force.h"

namespace Sila {

namespace {

// Dimensions of the reference pelvis, cm.
constexpr double kReferenceX = 2.65;
constexpr double kReferenceZ = 7.1;
constexpr double kReferenceL = 8.45;
constexpr double kReferenceH = 13.52;
constexpr double kReferenceC = 5.85;

constexpr double kLegLeverShare = 0.48;   // lever of the leg's weight over l
constexpr double kBodyLeverShare = 1.01;  // lever of the body's weight over l
constexpr double kFemurLength = 42.3;     // cm, head centre to knee

constexpr double kPelvisTilt = -0.5 * kPi / 180.0;  // rad, ψ
const double kSinPelvisTilt = std::sin(kPelvisTilt);
const double kCosPelvisTilt = std::cos(kPelvisTilt);

// Relative cross-sections of the muscles in the equilibrium.
constexpr std::array<double, 3> kArea1 = {0.266, 0.113, 0.1};
constexpr std::array<double, 4> kArea2 = {0.266, 0.113, 0.12, 0.4};
constexpr std::array<double, 2> kArea3 = {0.266, 0.113};

// Turns a point about the y axis by an angle given as its sine and cosine.
Vector3 Turned(const Vector3& p, double sine, double cosine) {
  return {p.x * cosine - p.z * sine, p.y, p.x * sine + p.z * cosine};
}

template <std::size_t Count>
void SetMuscles(MuscleGroup& group, const std::array<double, Count>& area, std::size_t stored) {
  group.count = Count;
  group.stored = stored;
  std::copy(area.begin(), area.end(), group.area.begin());
}

// The vertical coordinate of an attachment on the trochanter. `share` serves a trochanter below the
// head centre, `shareAbove` one above it.
double TrochanterX(const ScaleFactors& s, double share, double shareAbove) {
  return s.trochX < 0.0 ? shareAbove * s.trochX / kReferenceX : share * s.scaleX;
}

// For a trochanter above the head centre 2.6 and 2.7 change places in groups 1 and 2, but not in
// the second row of group 3. Deliberate.
void FillFemoral(std::array<MuscleGroup, 3>& groups, const ScaleFactors& s) {
  const Vector3 upper = {TrochanterX(s, 2.6, 2.7), 1.8, -7.3 * s.scaleZ};
  const Vector3 lower = {TrochanterX(s, 2.7, 2.6), -0.4, -6.9 * s.scaleZ};
  MuscleGroup::Points& group1 = groups[0].femoral;
  group1[0] = upper;
  group1[1] = lower;
  group1[2] = {0.1, 0.1, -5.5 * s.scaleZ};
  group1[3] = {44.1, 2.3, -3.9};
  group1[4] = {40.4, -0.1, 3.1};
  group1[5] = {43.3, 2.2, 4.0};
  group1[6] = {42.8, 2.9, 3.4};
  MuscleGroup::Points& group2 = groups[1].femoral;
  group2[0] = upper;
  group2[1] = lower;
  group2[2] = {42.1, -2.2, -3.3};
  group2[3] = {41.5, -4.3, -0.2};
  group2[4] = {43.5, 0.8, 4.2};
  group2[5] = {6.1, 0.2, -1.5};
  MuscleGroup::Points& group3 = groups[2].femoral;
  group3[0] = upper;
  group3[1] = {TrochanterX(s, 2.7, 2.7), -0.4, -6.9 * s.scaleZ};
}

void FillPelvic(std::array<MuscleGroup, 3>& groups, const ScaleFactors& s) {
  MuscleGroup::Points& group1 = groups[0].pelvic;
  group1[0] = {-9.7 * s.scaleH, 4.8, 1.5 * s.scaleL};
  group1[1] = {-7.1 * s.scaleH, 2.6, 0.0};
  group1[2] = {-5.5 * s.scaleH, 7.8, 4.7 * s.scaleL};
  group1[3] = {3.6, 5.3, 1.3 * s.scaleL};
  group1[4] = {5.9, 4.8, 3.4 * s.scaleL};
  group1[5] = {3.6, 5.3, 1.3 * s.scaleL};
  group1[6] = {3.1, 4.4, 0.8 * s.scaleL};
  MuscleGroup::Points& group2 = groups[1].pelvic;
  group2[0] = {-10.2 * s.scaleH, -2.7, -6.2 * s.scaleC};
  group2[1] = {-7.3 * s.scaleH, -2.9, -4.1 * s.scaleC};
  group2[2] = {-7.8 * s.scaleH, -4.5, -5.6 * s.scaleC};
  group2[3] = {-3.7 * s.scaleH, -4.3, -2.6 * s.scaleL};
  group2[4] = {-6.8, -5.1, -5.0 * s.scaleL};
  group2[5] = {-2.4, -2.8, -0.5 * s.scaleL};
  MuscleGroup::Points& group3 = groups[2].pelvic;
  group3[0] = {-13.2 * s.scaleH, 0.2, -1.8 * s.scaleC};
  group3[1] = {-8.8 * s.scaleH, 0.4, -2.0 * s.scaleC};
}

ScaleFactors ComputeScale(const HipInputs& in) {
  const double cosine = std::cos(in.zasuk);
  const double sine = std::sin(in.zasuk);
  ScaleFactors s;
  s.trochX = in.xizm * cosine + in.zizm * sine;
  s.trochZ = in.zizm * cosine - in.xizm * sine;
  s.scaleX = s.trochX / kReferenceX;
  s.scaleZ = s.trochZ / kReferenceZ;
  s.scaleL = in.lizm / kReferenceL;
  s.scaleH = in.Hizm / kReferenceH;
  s.scaleC = in.Cizm / kReferenceC;
  return s;
}

}  // namespace

void BuildHipGeometry(const HipInputs& inputs, HipForce& force) {
  StanceLoads& loads = force.loads;
  loads.weight = inputs.bodyWeight.value_or(kAssumedBodyWeight) * kGravity;
  loads.legLever = kLegLeverShare * inputs.lizm;
  loads.bodyLever = kBodyLeverShare * inputs.lizm;

  force.scale = ComputeScale(inputs);
  SetMuscles(force.groups[0], kArea1, 7);
  SetMuscles(force.groups[1], kArea2, 6);
  SetMuscles(force.groups[2], kArea3, 2);
  FillFemoral(force.groups, force.scale);
  FillPelvic(force.groups, force.scale);

  const double sinFemur = loads.legLever / kFemurLength;
  const double cosFemur = std::sqrt(1.0 - sinFemur * sinFemur);
  loads.femurTilt = std::atan(sinFemur / cosFemur);
  loads.pelvisTilt = kPelvisTilt;
  for (MuscleGroup& group : force.groups) {
    for (std::size_t i = 0; i < group.count; ++i) {
      group.femoralTilted[i] = Turned(group.femoral[i], sinFemur, cosFemur);
      group.pelvicTilted[i] = Turned(group.pelvic[i], kSinPelvisTilt, kCosPelvisTilt);
    }
  }
}

}  // namespace Sila
