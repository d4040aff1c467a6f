// Elementary functions of vectors whose bits do not depend on the processor: additions,
// multiplications, divisions and square roots alone, each rounded by itself. Included once for each
// kind of processor.

// NOLINTNEXTLINE(llvm-header-guard): Highway includes this file again and again on purpose.
#if defined(TELMARION_VECTOR_MATH_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef TELMARION_VECTOR_MATH_INL_H_
#undef TELMARION_VECTOR_MATH_INL_H_
#else
#define TELMARION_VECTOR_MATH_INL_H_
#endif

#include <hwy/highway.h>

#include <array>
#include <cstddef>
#include <cstdint>

#include "uncertainty/fits.h"

HWY_BEFORE_NAMESPACE();
namespace Uncertainty {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

// Eight lanes at most, so that sums in eight parts come out alike everywhere.
using Doubles = hn::CappedTag<double, 8>;
using Bits = hn::Rebind<std::uint64_t, Doubles>;
using V = hn::Vec<Doubles>;
using M = hn::Mask<Doubles>;

HWY_INLINE V K(double constant) {
  return hn::Set(Doubles(), constant);
}
HWY_INLINE hn::Vec<Bits> KBits(std::uint64_t constant) {
  return hn::Set(Bits(), constant);
}
HWY_INLINE hn::Vec<Bits> BitsOf(V x) {
  return hn::BitCast(Bits(), x);
}
HWY_INLINE V FromBits(hn::Vec<Bits> x) {
  return hn::BitCast(Doubles(), x);
}

// Σ c[k]·t^k, in groups of four that do not wait for each other.
template <std::size_t Count>
HWY_INLINE V Polynomial(const std::array<double, Count>& c, V t) {
  static_assert(Count % 4 == 0);
  const V square = t * t;
  const V fourth = square * square;
  V sum = hn::Zero(Doubles());
  for (std::size_t i = Count; i != 0; i -= 4) {
    const V low = K(c[i - 4]) + K(c[i - 3]) * t;
    const V high = K(c[i - 2]) + K(c[i - 1]) * t;
    sum = sum * fourth + (low + high * square);
  }
  return sum;
}

// The angle between the axis and the point (x, y), y at least 0: 0 to π rad, within 4e-16.
HWY_INLINE V Angle(V x, V y) {
  constexpr double kTangent = 0.41421356237309504880;  // of π/8
  constexpr double kQuarter = 0.78539816339744830962;  // π/4
  const V across = hn::Abs(x);
  const V low = hn::Min(across, y);
  const V high = hn::Max(across, y);
  const M far = low > K(kTangent) * high;
  const V t = hn::IfThenElse(far, low - high, low) / hn::IfThenElse(far, low + high, high);
  const V turn = t * Polynomial(Fit::kArcTangent, t * t) + hn::IfThenElseZero(far, K(kQuarter));
  const V angle = hn::IfThenElse(y > across, K(2 * kQuarter) - turn, turn);
  return hn::IfThenElse(x < hn::Zero(Doubles()), K(4 * kQuarter) - angle, angle);
}

struct SineCosine {
  V sine;
  V cosine;
};

// Within 3e-16 for sizes of up to 1000 rad.
HWY_INLINE SineCosine ComputeSineCosine(V x) {
  constexpr double kRound = 0x1.8p52;  // leaves the nearest whole number in the last bits
  const V moved = x * K(0.63661977236758134308) + K(kRound);
  const V quarters = moved - K(kRound);
  const V near = x - quarters * K(0x1.921fb544p0) - quarters * K(0x1.0b4611a6p-34);
  const V r = near - quarters * K(0x1.3198a2ep-69);
  const V square = r * r;
  const V sine = r * Polynomial(Fit::kSine, square);
  const V cosine = Polynomial(Fit::kCosine, square);
  const auto turn = BitsOf(moved);
  const M odd = hn::RebindMask(Doubles(), (turn & KBits(1)) == KBits(1));
  const auto sineSign = hn::ShiftLeft<63>(hn::ShiftRight<1>(turn & KBits(2)));
  const auto cosineSign = hn::ShiftLeft<63>(hn::ShiftRight<1>((turn + KBits(1)) & KBits(2)));
  return {FromBits(BitsOf(hn::IfThenElse(odd, cosine, sine)) ^ sineSign),
          FromBits(BitsOf(hn::IfThenElse(odd, sine, cosine)) ^ cosineSign)};
}

// Natural logarithm of x > 0 that is neither tiny nor infinite, within 2e-9.
HWY_INLINE V Logarithm(V x) {
  constexpr std::uint64_t kHalfRoot = 0x3fe6a09e667f3bcd;  // √½, where the mantissas begin
  constexpr std::uint64_t kExponentOf2To52 = 0x4330000000000000;
  const auto moved = BitsOf(x) + KBits(0x3ff0000000000000 - kHalfRoot);
  const auto mantissa = (moved & KBits(0x000fffffffffffff)) + KBits(kHalfRoot);
  const V exponent =
      FromBits(hn::ShiftRight<52>(moved) | KBits(kExponentOf2To52)) - K(0x1p52 + 1023.0);
  const V m = FromBits(mantissa);
  const V z = (m - K(1.0)) / (m + K(1.0));
  return exponent * K(0.69314718055994530942) + z * Polynomial(Fit::kLogarithm, z * z);
}

// NOLINTNEXTLINE(google-readability-namespace-comments)
}  // namespace HWY_NAMESPACE
}  // namespace Uncertainty
HWY_AFTER_NAMESPACE();

#endif  // TELMARION_VECTOR_MATH_INL_H_
