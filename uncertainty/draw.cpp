// Inverse distribution functions, as vectors.
#include "uncertainty/draw.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "uncertainty/draw.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "uncertainty/vector_math-inl.h"

HWY_BEFORE_NAMESPACE();
namespace Uncertainty {
namespace HWY_NAMESPACE {

// The point as x in (-1, 1), exactly; the distributions are symmetric about 0.
HWY_INLINE V PointAt(std::uint32_t first, const std::uint32_t* digits) {
  const hn::Rebind<std::uint32_t, Doubles> words;
  const hn::Rebind<std::int32_t, Doubles> integers;
  const auto moved = hn::LoadU(words, digits) ^ hn::Set(words, first ^ 0x80000000U);
  return (hn::PromoteTo(Doubles(), hn::BitCast(integers, moved)) + K(0.5)) * K(0x1p-31);
}

struct Normal {
  // Few points lie in the tails, so their polynomial waits until one does.
  HWY_INLINE V operator()(V x) const {
    const V w = hn::Neg(Logarithm((K(1.0) - x) * (K(1.0) + x)));
    const V centre = Polynomial(Fit::kNormal, w * K(2.0 / Fit::kNormalEnd) - K(1.0));
    const M tail = w > K(Fit::kNormalEnd);
    if (HWY_LIKELY(hn::AllFalse(Doubles(), tail))) return x * centre;
    const V t = (hn::Sqrt(w) - K(Fit::kTailMiddle)) * K(1.0 / Fit::kTailHalf);
    return x * hn::IfThenElse(tail, Polynomial(Fit::kNormalTail, t), centre);
  }
};

struct Uniform {
  HWY_INLINE V operator()(V x) const { return x * K(1.7320508075688772935); }
};

struct Triangular {
  HWY_INLINE V operator()(V x) const {
    const V size = K(1.0) - hn::Sqrt(K(1.0) - hn::Abs(x));
    return hn::CopySign(size * K(2.4494897427831780982), x);
  }
};

template <class Quantile>
HWY_INLINE void DrawAll(Quantile quantile, std::uint32_t first, const BlockDigits& digits,
                        Column& errors) {
  for (std::size_t i = 0; i < kBlockTrials; i += hn::Lanes(Doubles())) {
    hn::Store(quantile(PointAt(first, &digits[i])), Doubles(), &errors.at[i]);
  }
}

void DrawErrors(Distribution distribution, std::uint32_t first, const BlockDigits& digits,
                Column& errors) {
  switch (distribution) {
    case Distribution::Normal:
      return DrawAll(Normal(), first, digits, errors);
    case Distribution::Uniform:
      return DrawAll(Uniform(), first, digits, errors);
    case Distribution::Triangular:
      return DrawAll(Triangular(), first, digits, errors);
  }
}

// NOLINTNEXTLINE(google-readability-namespace-comments)
}  // namespace HWY_NAMESPACE
}  // namespace Uncertainty
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace Uncertainty {

HWY_EXPORT(DrawErrors);

void DrawErrors(Distribution distribution, std::uint32_t first, const BlockDigits& digits,
                Column& errors) {
  HWY_DYNAMIC_DISPATCH(DrawErrors)(distribution, first, digits, errors);
}

}  // namespace Uncertainty
#endif
