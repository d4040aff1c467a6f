// The hip model as vectors: the equilibrium of model/resultant_force.cpp, and the pole and stress
// of model/contact_stress.cpp from polynomials instead of a search. See there for what the numbers
// mean; the body weight falls out of everything but pmax.
#include "uncertainty/hip_block.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "uncertainty/hip_block.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "model/contact_stress.h"
#include "model/resultant_force.h"
#include "model/vocabulary.h"
#include "uncertainty/vector_math-inl.h"

HWY_BEFORE_NAMESPACE();
namespace Uncertainty {
namespace HWY_NAMESPACE {

struct Vector {
  V x, y, z;
};

// What a trial is computed from, true lengths. A further measurement belongs here, and into the
// formulas.
static_assert(Sila::kMeasurementCount == 9 && Sila::kResultCount == 5);
struct Hip {
  V lizm, xizm, zizm, Cizm, Hizm, zasuk, thetaCE, headRadius, bodyWeight;
};

// Attachment points on the femur, tilted; those below the knee's height do not scale.
struct Femur {
  Vector upper, lower, lowerOfGroup3, inner, knee, kneeBehind;
};

// Turned about y by an angle given as its sine and cosine.
HWY_INLINE Vector Turned(V x, double y, V z, V sine, V cosine) {
  return {x * cosine - z * sine, K(y), x * sine + z * cosine};
}

HWY_INLINE Femur ComputeFemur(const Hip& hip) {
  const SineCosine turn = ComputeSineCosine(hip.zasuk);
  const V x = (hip.xizm * turn.cosine + hip.zizm * turn.sine) * K(1.0 / 2.65);
  const V z = (hip.zizm * turn.cosine - hip.xizm * turn.sine) * K(1.0 / 7.1);
  const M above = x < hn::Zero(Doubles());
  const V long26 = x * K(2.6);
  const V long27 = x * K(2.7);
  const V s = hip.lizm * K(0.48 / 42.3);
  const V c = hn::Sqrt(K(1.0) - s * s);
  return {Turned(hn::IfThenElse(above, long27, long26), 1.8, z * K(-7.3), s, c),
          Turned(hn::IfThenElse(above, long26, long27), -0.4, z * K(-6.9), s, c),
          Turned(long27, -0.4, z * K(-6.9), s, c),
          Turned(K(0.1), 0.1, z * K(-5.5), s, c),
          Turned(K(42.1), -2.2, K(-3.3), s, c),
          Turned(K(41.5), -4.3, K(-0.2), s, c)};
}

// A pelvic attachment: `height` times the scale of H, `depth` in cm, `width` times the scale of l
// or C.
struct Attachment {
  double height, depth, width;
};

HWY_INLINE Vector PelvicPoint(V scaleH, V scaleWidth, Attachment at) {
  constexpr double kSine = -0.00872653549837392597;  // of the pelvis's tilt
  constexpr double kCosine = 0.99996192306417128860;
  return Turned(scaleH * K(at.height), at.depth, scaleWidth * K(at.width), K(kSine), K(kCosine));
}

// Of one muscle group, per unit of its tension: its moment about the head centre, and the part of
// its pull that lies in the frontal plane.
struct Group {
  Vector moment;
  V pullX, pullZ;
};

HWY_INLINE void AddMuscle(double area, const Vector& femur, const Vector& pelvis, Group& group) {
  const V x = femur.x - pelvis.x;
  const V y = femur.y - pelvis.y;
  const V z = femur.z - pelvis.z;
  const V weight = K(area) / hn::Sqrt(x * x + y * y + z * z);
  group.pullX = group.pullX + weight * x;
  group.pullZ = group.pullZ + weight * z;
  group.moment.x = group.moment.x + weight * (y * pelvis.z - z * pelvis.y);
  group.moment.y = group.moment.y + weight * (z * pelvis.x - x * pelvis.z);
  group.moment.z = group.moment.z + weight * (x * pelvis.y - y * pelvis.x);
}

struct Groups {
  Group first, second, third;
};

HWY_INLINE Groups ComputeGroups(const Hip& hip) {
  const Femur femur = ComputeFemur(hip);
  const V h = hip.Hizm * K(1.0 / 13.52);
  const V l = hip.lizm * K(1.0 / 8.45);
  const V c = hip.Cizm * K(1.0 / 5.85);
  const V none = hn::Zero(Doubles());
  const Group start = {{none, none, none}, none, none};
  Groups g = {start, start, start};
  AddMuscle(0.266, femur.upper, PelvicPoint(h, l, {-9.7, 4.8, 1.5}), g.first);
  AddMuscle(0.113, femur.lower, PelvicPoint(h, l, {-7.1, 2.6, 0.0}), g.first);
  AddMuscle(0.1, femur.inner, PelvicPoint(h, l, {-5.5, 7.8, 4.7}), g.first);
  AddMuscle(0.266, femur.upper, PelvicPoint(h, c, {-10.2, -2.7, -6.2}), g.second);
  AddMuscle(0.113, femur.lower, PelvicPoint(h, c, {-7.3, -2.9, -4.1}), g.second);
  AddMuscle(0.12, femur.knee, PelvicPoint(h, c, {-7.8, -4.5, -5.6}), g.second);
  AddMuscle(0.4, femur.kneeBehind, PelvicPoint(h, l, {-3.7, -4.3, -2.6}), g.second);
  AddMuscle(0.266, femur.upper, PelvicPoint(h, c, {-13.2, 0.2, -1.8}), g.third);
  AddMuscle(0.113, femur.lowerOfGroup3, PelvicPoint(h, c, {-8.8, 0.4, -2.0}), g.third);
  return g;
}

struct Resultant {
  V rWb;
  V thetaR;  // degrees
};

// The load has a moment about y alone, so the tensions are cofactors of that row over the
// determinant, and one division serves all three.
HWY_INLINE Resultant ComputeResultant(const Hip& hip) {
  constexpr double kMoment = 1.01 - 0.48 * 0.161;  // of body and leg, over weight and l
  const Groups groups = ComputeGroups(hip);
  const Group& a = groups.second;
  const Group& b = groups.third;
  const Group& c = groups.first;
  const V ca = b.moment.z * c.moment.x - b.moment.x * c.moment.z;
  const V cb = c.moment.z * a.moment.x - c.moment.x * a.moment.z;
  const V cc = a.moment.z * b.moment.x - a.moment.x * b.moment.z;
  const V determinant = a.moment.y * ca + b.moment.y * cb + c.moment.y * cc;
  const V tension = hip.lizm * K(kMoment) / determinant;
  const V x = K(1.0 - 0.161) + tension * (a.pullX * ca + b.pullX * cb + c.pullX * cc);
  const V z = tension * (a.pullZ * ca + b.pullZ * cb + c.pullZ * cc);
  // 90 − atan(x/|z|)·180/kPi, where the model's π leaves its mark on the right angle.
  constexpr double kRightAngle = -9.2775120788e-14;
  const V angle = Angle(x, hn::Abs(z)) * K(180.0 / Sila::kPi);
  return {hn::Sqrt(x * x + z * z), angle + K(kRightAngle)};
}

// The loaded part e of a head whose angles sum to a small s, from its value `e0` with the true π.
// The model's shorter π leaves e³ − e0·e² = 3·(kPi − π)/2, solved by Newton's method from above.
HWY_INLINE V LoadedWithShorterPi(V e0) {
  constexpr double kExcess = 3.1014230603e-13;
  V e = e0 + K(6.77e-5);  // its cube root
  for (int i = 0; i < 8; ++i) {
    const V square = e * e;
    e = e - (square * (e - e0) - K(kExcess)) / (e * (K(3.0) * e - K(2.0) * e0));
  }
  return e;
}

// What depends on S = thetaR + thetaCE alone, for the ordinary form and 0 < S <= π/2.
struct Cap {
  V u;       // rad, thetaR + pole
  V stress;  // peak stress times the radius squared over the force
};

// Close to π/2 the model gives its general formula up; what it takes instead differs by less than
// 1e-9 and needs no case of its own.
HWY_INLINE Cap ComputeCap(V s) {
  constexpr double kHalfPi = 1.57079632679489661923;
  constexpr double kSmall = 0.03;  // rad, below which the model's π shows
  constexpr double kUpper = kHalfPi - Fit::kPeakAtEdge;
  const V e0 = s * Polynomial(Fit::kEdge, s * K(2.0 / kHalfPi) - K(1.0));
  const M small = s < K(kSmall);
  V e = e0;
  if (HWY_UNLIKELY(!hn::AllFalse(Doubles(), small))) {
    e = hn::IfThenElse(small, LoadedWithShorterPi(e0), e0);
  }
  const V atEdge = Polynomial(Fit::kEdgeStress, s * K(2.0 / Fit::kPeakAtEdge) - K(1.0)) / e;
  const V atPole =
      Polynomial(Fit::kPoleStress, (s - K(Fit::kPeakAtEdge)) * K(2.0 / kUpper) - K(1.0));
  return {s - e + K(kHalfPi), hn::IfThenElse(s < K(Fit::kPeakAtEdge), atEdge, atPole)};
}

struct Pole {
  V theta;   // rad
  V stress;  // as of Cap
  M found;
};

// The steep form is the mirror image of the ordinary one. In both the search begins somewhere and
// goes one way, so it meets no pole that lies behind its start.
HWY_INLINE Pole ComputePole(V thetaR, V thetaCE) {
  constexpr double kOrdinaryStart = -282.74333882310003 / 180.0;  // rad
  const V rightAngle = K(Tlakm::kPi / 2.0);
  const V sum = thetaR + thetaCE;
  const M steep = rightAngle - thetaCE <= thetaR;
  const V s = hn::IfThenElse(steep, K(Tlakm::kPi) - sum, sum);
  const Cap cap = ComputeCap(s);
  const V theta = hn::IfThenElse(steep, hn::Neg(cap.u), cap.u) - thetaR;
  const V start = hn::IfThenElse(steep, thetaCE - rightAngle, K(kOrdinaryStart));
  const M ahead = hn::IfThenElse(steep, hn::Neg(theta), theta) > start;
  return {theta, cap.stress, hn::And(s > hn::Zero(Doubles()), ahead)};
}

// The other conditions under which a trial counts: measures that mean something, a force within the
// model's range, and a turn that the vectors' functions are made for. (A CE angle beyond half a
// turn has no pole that would be found.)
HWY_INLINE M IsInRange(const Hip& hip, const Resultant& force, V pmaxWb, V pmax) {
  constexpr double kLargestTurn = 1000.0;  // rad
  const V zero = hn::Zero(Doubles());
  const M sizes = hn::And(hn::And(hip.lizm > zero, hip.headRadius > zero), hip.bodyWeight > zero);
  const M turn = hn::Abs(hip.zasuk) <= K(kLargestTurn);
  const M numbers =
      hn::And(hn::IsFinite(force.rWb), hn::And(hn::IsFinite(pmaxWb), hn::IsFinite(pmax)));
  return hn::And(hn::And(sizes, turn), hn::And(numbers, force.thetaR >= zero));
}

HWY_INLINE void ComputeTrials(const Hip& hip, std::size_t row,
                              std::span<Column, Sila::kResultCount> results) {
  const Resultant force = ComputeResultant(hip);
  const V thetaR = force.thetaR * K(Tlakm::kPi / 180.0);
  const Pole pole = ComputePole(thetaR, hip.thetaCE);
  const V pmaxWb = force.rWb * pole.stress / (hip.headRadius * hip.headRadius);
  const V pmax = pmaxWb * (hip.bodyWeight * K(Tlakm::kGravity));
  const M ok = hn::And(pole.found, IsInRange(hip, force, pmaxWb, pmax));
  const auto put = [&](Sila::Result result, V value) HWY_ATTR {
    hn::Store(hn::IfThenElse(ok, value, K(kRefused)), Doubles(), &results[IndexOf(result)].at[row]);
  };
  put(Sila::Result::RWb, force.rWb);
  put(Sila::Result::ThetaR, force.thetaR);
  put(Sila::Result::ThetaPol, pole.theta * K(180.0 / Tlakm::kPi));
  put(Sila::Result::PmaxWb, pmaxWb);
  put(Sila::Result::Pmax, pmax);
}

void ComputeHips(const HipColumns& inputs, std::size_t trials,
                 std::span<Column, Sila::kResultCount> results) {
  for (std::size_t row = 0; row < trials; row += hn::Lanes(Doubles())) {
    using enum Sila::Measurement;
    const auto get = [&](Sila::Measurement id)
                         HWY_ATTR { return hn::Load(Doubles(), &inputs[IndexOf(id)]->at[row]); };
    const Hip hip = {get(Lizm),  get(Xizm),    get(Zizm),       get(Cizm),      get(Hizm),
                     get(Zasuk), get(ThetaCE), get(HeadRadius), get(BodyWeight)};
    ComputeTrials(hip, row, results);
  }
}

// NOLINTNEXTLINE(google-readability-namespace-comments)
}  // namespace HWY_NAMESPACE
}  // namespace Uncertainty
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace Uncertainty {

HWY_EXPORT(ComputeHips);

void ComputeHips(const HipColumns& inputs, std::size_t trials,
                 std::span<Column, Sila::kResultCount> results) {
  HWY_DYNAMIC_DISPATCH(ComputeHips)(inputs, trials, results);
}

}  // namespace Uncertainty
#endif
