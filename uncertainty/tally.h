// What is kept of a result while its trials go by: sums, counts, and the values near the ends of
// its interval. Memory does not grow with the trials but for the few per cent near the ends.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "uncertainty/block.h"

namespace Uncertainty {

// The lower tail of a result's values, or the upper one turned over: where its interval is expected
// to end, values are kept; further out they are counted; all others pass by.
class Tail {
 public:
  enum class Side { Lower, Upper };

  // Expects the end between `outer` and `inner`; either may be infinite.
  Tail(Side side, double outer, double inner);

  // Adds the first `trials` rows. Rows behind them, up to the next multiple of eight, are
  // overwritten.
  void Add(Column& values, std::size_t trials);

  // The value of a rank, counted from 1 at the outermost; nothing if it is not where it was
  // expected.
  std::optional<double> Ranked(std::size_t rank);

  // Opens the range to the side on which a rank was missed, and forgets all values.
  void Widen(std::size_t rank);

 private:
  void AddValue(double value);

  double sign_ = 1.0;  // the upper tail holds everything negated
  double outer_ = 0.0;
  double inner_ = 0.0;
  std::size_t beyond_ = 0;     // values < outer_
  std::size_t upToOuter_ = 0;  // values <= outer_
  std::size_t atInner_ = 0;    // values == inner_
  std::vector<double> between_;
};

// Sums of the deviations from `shift`, in eight parts so that they do not depend on how many lanes
// a vector has.
class Sums {
 public:
  explicit Sums(double shift) : shift_(shift) {}

  // As Tail::Add.
  void Add(Column& values, std::size_t trials);

  // Over all trials but one; 0 for fewer than two.
  double Variance(std::size_t trials) const;

 private:
  double shift_ = 0.0;
  std::array<double, 8> deviations_{};
  std::array<double, 8> squares_{};
};

// One a result, about what the model gives for the values of the sources (the first row): so they
// lose no digits, and a result that nothing moves has no variance at all.
std::vector<Sums> SumsAboutCentre(std::span<const Column> centre);

}  // namespace Uncertainty
