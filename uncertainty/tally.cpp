// Sums and counts as vectors.
#include "uncertainty/tally.h"

#include <algorithm>
#include <limits>
#include <numeric>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "uncertainty/tally.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "uncertainty/vector_math-inl.h"

HWY_BEFORE_NAMESPACE();
namespace Uncertainty {
namespace HWY_NAMESPACE {

// Row i goes to part i mod 8, whatever the width of a vector.
void AddSums(Sums& sums, const double* values, std::size_t trials) {
  const V shift = K(sums.shift);
  for (std::size_t part = 0; part < sums.squares.size(); part += hn::Lanes(Doubles())) {
    V deviations = hn::LoadU(Doubles(), &sums.deviations[part]);
    V squares = hn::LoadU(Doubles(), &sums.squares[part]);
    for (std::size_t i = part; i < trials; i += sums.squares.size()) {
      const V deviation = hn::Load(Doubles(), values + i) - shift;
      deviations = deviations + deviation;
      squares = squares + deviation * deviation;
    }
    hn::StoreU(deviations, Doubles(), &sums.deviations[part]);
    hn::StoreU(squares, Doubles(), &sums.squares[part]);
  }
}

// Values inside go to `inside`; returns how many.
std::size_t AddCounts(Bracket& bracket, const double* values, std::size_t trials, double* inside) {
  const V low = K(bracket.low);
  const V high = K(bracket.high);
  std::size_t found = 0;
  for (std::size_t i = 0; i < trials; i += hn::Lanes(Doubles())) {
    const V value = hn::Load(Doubles(), values + i);
    const M upToLow = value <= low;
    bracket.below += hn::CountTrue(Doubles(), value < low);
    bracket.upToLow += hn::CountTrue(Doubles(), upToLow);
    bracket.atHigh += hn::CountTrue(Doubles(), value == high);
    found += hn::CompressStore(value, hn::AndNot(upToLow, value < high), Doubles(), inside + found);
  }
  return found;
}

// NOLINTNEXTLINE(google-readability-namespace-comments)
}  // namespace HWY_NAMESPACE
}  // namespace Uncertainty
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace Uncertainty {

HWY_EXPORT(AddSums);
HWY_EXPORT(AddCounts);

namespace {

constexpr std::size_t kParts = 8;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Gives the rows behind the last trial a value that adds nothing.
void FillUp(Column& values, std::size_t trials, double value) {
  const std::size_t end = (trials + kParts - 1) / kParts * kParts;
  for (std::size_t i = trials; i < end; ++i) values.at[i] = value;
}

}  // namespace

std::optional<double> Bracket::Ranked(std::size_t rank) {
  if (rank <= below) return std::nullopt;
  if (rank <= upToLow) return low;
  const std::size_t place = rank - upToLow;
  if (place <= inside.size()) {
    const auto found = inside.begin() + static_cast<std::ptrdiff_t>(place - 1);
    std::nth_element(inside.begin(), found, inside.end());
    return *found;
  }
  if (place <= inside.size() + atHigh) return high;
  return std::nullopt;
}

void Bracket::Widen(std::size_t rank) {
  if (rank <= below) {
    *this = {.low = -kInfinity, .high = low};
  } else {
    *this = {.low = high, .high = kInfinity};
  }
}

double Sums::Variance(std::size_t trials) const {
  const double total = std::accumulate(deviations.begin(), deviations.end(), 0.0);
  const double totalSquares = std::accumulate(squares.begin(), squares.end(), 0.0);
  const double count = static_cast<double>(trials);
  return std::max(0.0, (totalSquares - total * total / count) / (count - 1.0));
}

void AddTo(Sums& sums, Column& values, std::size_t trials) {
  FillUp(values, trials, sums.shift);
  HWY_DYNAMIC_DISPATCH(AddSums)(sums, values.at.data(), trials);
}

void AddTo(Bracket& bracket, Column& values, std::size_t trials) {
  FillUp(values, trials, std::numeric_limits<double>::quiet_NaN());
  std::array<double, 2 * kBlockTrials> inside;  // a vector may be stored past the last one found
  const std::size_t found =
      HWY_DYNAMIC_DISPATCH(AddCounts)(bracket, values.at.data(), trials, inside.data());
  bracket.inside.insert(bracket.inside.end(), inside.begin(),
                        inside.begin() + static_cast<std::ptrdiff_t>(found));
}

}  // namespace Uncertainty
#endif
