// What is kept of a result while its trials go by: sums, counts, and the values near the ends of
// its interval. Memory does not grow with the trials but for the few per cent near the ends.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include "uncertainty/block.h"

namespace Uncertainty {

// An open range of values that is expected to hold one that is looked for. Values in it are kept;
// the others are counted.
struct Bracket {
  double low = 0.0;         // may be −infinity
  double high = 0.0;        // may be +infinity
  std::size_t below = 0;    // values < low
  std::size_t upToLow = 0;  // values <= low
  std::size_t atHigh = 0;   // values == high
  std::vector<double> inside = {};

  // The value of a rank, 1 being the smallest; nothing if it lies outside the bracket.
  std::optional<double> Ranked(std::size_t rank);

  // Reaches to infinity on the side where the rank was missed, and forgets all counts.
  void Widen(std::size_t rank);
};

// Sums of the deviations from `shift`, in eight parts so that they do not depend on how many lanes
// a vector has.
struct Sums {
  double shift = 0.0;
  std::array<double, 8> deviations{};
  std::array<double, 8> squares{};
  double Variance(std::size_t trials) const;  // over trials − 1
};

// Add the first `trials` rows of a column. Rows behind them, up to the next multiple of eight, are
// overwritten.
void AddTo(Sums& sums, Column& values, std::size_t trials);
void AddTo(Bracket& bracket, Column& values, std::size_t trials);

}  // namespace Uncertainty
