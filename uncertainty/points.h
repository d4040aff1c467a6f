// The points of the Monte Carlo method: a scrambled Sobol sequence, one dimension a source. The
// seed alone decides them, so an interval depends on no hip before, no order and no thread, and
// every machine draws the same bits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "uncertainty/block.h"
#include "uncertainty/source.h"

namespace Uncertainty {

inline constexpr std::size_t kMaxSources = 64;       // dimensions of the sequence
inline constexpr std::size_t kMaxTrials = 1U << 24;  // points of it

class Points {
 public:
  // `kept` points (rounded up to blocks) are drawn once and kept, for normal errors in the first
  // `sources` dimensions; all others are drawn whenever they are asked for. Which are kept shows in
  // the time alone. May be shared by threads.
  explicit Points(std::size_t sources, std::uint64_t seed = 1, std::size_t kept = 8192);

  Points(const Points&) = delete;
  Points& operator=(const Points&) = delete;
  ~Points();

  // Errors of one source in one block, in units of its u: mean 0, variance 1. They stand in
  // `scratch` or in what is kept; valid as long as both.
  const Column& Errors(std::size_t source, Distribution distribution, std::size_t block,
                       Column& scratch) const;

 private:
  struct Dimension;

  void Draw(std::size_t source, Distribution distribution, std::size_t block, Column& out) const;

  std::vector<Dimension> dimensions_;
  std::vector<Column> kept_;  // source by source
  std::size_t keptBlocks_ = 0;
};

}  // namespace Uncertainty
