// Sums and counts as vectors.
#include "uncertainty/tally.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <utility>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "uncertainty/tally.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "uncertainty/vector_math-inl.h"

HWY_BEFORE_NAMESPACE();
namespace Uncertainty {
namespace HWY_NAMESPACE {

// Row i goes to part i mod 8, whatever the width of a vector.
void AddSums(const double* values, std::size_t trials, double shift, double* deviations,
             double* squares) {
  for (std::size_t part = 0; part < 8; part += hn::Lanes(Doubles())) {
    V sum = hn::LoadU(Doubles(), deviations + part);
    V squareSum = hn::LoadU(Doubles(), squares + part);
    for (std::size_t i = part; i < trials; i += 8) {
      const V deviation = hn::Load(Doubles(), values + i) - K(shift);
      sum = sum + deviation;
      squareSum = squareSum + deviation * deviation;
    }
    hn::StoreU(sum, Doubles(), deviations + part);
    hn::StoreU(squareSum, Doubles(), squares + part);
  }
}

// Rows whose value, times `sign`, is up to `inner`. Most vectors hold none. Returns how many.
std::size_t FindTail(const double* values, std::size_t trials, double sign, double inner,
                     std::uint16_t* rows) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < trials; i += hn::Lanes(Doubles())) {
    const V value = hn::Load(Doubles(), values + i) * K(sign);
    if (HWY_LIKELY(hn::AllFalse(Doubles(), value <= K(inner)))) continue;
    for (std::size_t row = i; row < i + hn::Lanes(Doubles()); ++row) {
      rows[count] = static_cast<std::uint16_t>(row);
      count += sign * values[row] <= inner ? 1 : 0;
    }
  }
  return count;
}

// NOLINTNEXTLINE(google-readability-namespace-comments)
}  // namespace HWY_NAMESPACE
}  // namespace Uncertainty
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace Uncertainty {

HWY_EXPORT(AddSums);
HWY_EXPORT(FindTail);

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Gives the rows behind the last trial a value that adds nothing.
void FillUp(Column& values, std::size_t trials, double value) {
  const std::size_t end = (trials + 7) / 8 * 8;
  for (std::size_t i = trials; i < end; ++i) values.at[i] = value;
}

}  // namespace

Tail::Tail(Side side, double outer, double inner)
    : sign_(side == Side::Lower ? 1.0 : -1.0), outer_(sign_ * outer), inner_(sign_ * inner) {}

void Tail::Add(Column& values, std::size_t trials) {
  FillUp(values, trials, std::numeric_limits<double>::quiet_NaN());
  std::array<std::uint16_t, kBlockTrials + 1> rows;  // one is written in advance
  const std::size_t count =
      HWY_DYNAMIC_DISPATCH(FindTail)(values.at.data(), trials, sign_, inner_, rows.data());
  for (std::size_t i = 0; i < count; ++i) AddValue(sign_ * values.at[rows[i]]);
}

void Tail::AddValue(double value) {
  if (value <= outer_) {
    ++upToOuter_;
    if (value < outer_) ++beyond_;
  } else if (value < inner_) {
    between_.push_back(value);
  } else if (value == inner_) {
    ++atInner_;
  }
}

std::optional<double> Tail::Ranked(std::size_t rank) {
  if (rank <= beyond_) return std::nullopt;
  if (rank <= upToOuter_) return sign_ * outer_;
  const std::size_t place = rank - upToOuter_;
  if (place <= between_.size()) {
    const auto found = between_.begin() + static_cast<std::ptrdiff_t>(place - 1);
    std::nth_element(between_.begin(), found, between_.end());
    return sign_ * *found;
  }
  if (place <= between_.size() + atInner_) return sign_ * inner_;
  return std::nullopt;
}

void Tail::Widen(std::size_t rank) {
  if (rank <= beyond_) {
    inner_ = std::exchange(outer_, -kInfinity);
  } else {
    outer_ = std::exchange(inner_, kInfinity);
  }
  beyond_ = upToOuter_ = atInner_ = 0;
  between_.clear();
}

void Sums::Add(Column& values, std::size_t trials) {
  FillUp(values, trials, shift_);
  HWY_DYNAMIC_DISPATCH(AddSums)
  (values.at.data(), trials, shift_, deviations_.data(), squares_.data());
}

double Sums::Variance(std::size_t trials) const {
  if (trials < 2) return 0.0;
  const double total = std::accumulate(deviations_.begin(), deviations_.end(), 0.0);
  const double totalSquares = std::accumulate(squares_.begin(), squares_.end(), 0.0);
  const double count = static_cast<double>(trials);
  return std::max(0.0, (totalSquares - total * total / count) / (count - 1.0));
}

std::vector<Sums> SumsAboutCentre(std::span<const Column> centre) {
  std::vector<Sums> sums;
  for (const Column& result : centre) {
    sums.emplace_back(std::isfinite(result.at[0]) ? result.at[0] : 0.0);
  }
  return sums;
}

}  // namespace Uncertainty
#endif
