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

template <std::size_t Rows>
void Fill(MuscleGroup::Points& points, const std::array<Vector3, Rows>& rows) {
  std::copy(rows.begin(), rows.end(), points.begin());
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
  const Vector3 lowerOfGroup3 = {TrochanterX(s, 2.7, 2.7), -0.4, -6.9 * s.scaleZ};
  Fill<7>(groups[0].femoral, {{upper,
                               lower,
                               {0.1, 0.1, -5.5 * s.scaleZ},
                               {44.1, 2.3, -3.9},
                               {40.4, -0.1, 3.1},
                               {43.3, 2.2, 4.0},
                               {42.8, 2.9, 3.4}}});
  Fill<6>(
      groups[1].femoral,
      {{upper, lower, {42.1, -2.2, -3.3}, {41.5, -4.3, -0.2}, {43.5, 0.8, 4.2}, {6.1, 0.2, -1.5}}});
  Fill<2>(groups[2].femoral, {{upper, lowerOfGroup3}});
}

void FillPelvic(std::array<MuscleGroup, 3>& groups, const ScaleFactors& s) {
  Fill<7>(groups[0].pelvic, {{{-9.7 * s.scaleH, 4.8, 1.5 * s.scaleL},
                              {-7.1 * s.scaleH, 2.6, 0.0},
                              {-5.5 * s.scaleH, 7.8, 4.7 * s.scaleL},
                              {3.6, 5.3, 1.3 * s.scaleL},
                              {5.9, 4.8, 3.4 * s.scaleL},
                              {3.6, 5.3, 1.3 * s.scaleL},
                              {3.1, 4.4, 0.8 * s.scaleL}}});
  Fill<6>(groups[1].pelvic, {{{-10.2 * s.scaleH, -2.7, -6.2 * s.scaleC},
                              {-7.3 * s.scaleH, -2.9, -4.1 * s.scaleC},
                              {-7.8 * s.scaleH, -4.5, -5.6 * s.scaleC},
                              {-3.7 * s.scaleH, -4.3, -2.6 * s.scaleL},
                              {-6.8, -5.1, -5.0 * s.scaleL},
                              {-2.4, -2.8, -0.5 * s.scaleL}}});
  Fill<2>(groups[2].pelvic,
          {{{-13.2 * s.scaleH, 0.2, -1.8 * s.scaleC}, {-8.8 * s.scaleH, 0.4, -2.0 * s.scaleC}}});
}

ScaleFactors ComputeScale(const HipForceInputs& in) {
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

void BuildHipGeometry(const HipForceInputs& inputs, HipForce& force) {
  StanceLoads& loads = force.loads;
  loads.weight = inputs.bodyWeight * kGravity;
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
