// Trials are evaluated in blocks, as a structure of arrays.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <limits>
#include <span>

namespace Uncertainty {

inline constexpr std::size_t kBlockTrials = 256;

// One quantity in each trial of a block.
struct alignas(64) Column {
  std::array<double, kBlockTrials> at;
};

// What every result of a trial holds in which the model has no answer: it counts as above all
// others.
inline constexpr double kRefused = std::numeric_limits<double>::infinity();

// A model of many trials at once: from the values of the sources (one column a source) to the
// results (one column a result). Works out the rows [0, trials) and may write any row. It maps
// sources to its inputs as it likes: one to one, through a factor that many share, or marks to
// distances. A trial without an answer is kRefused in all its results; no result is not a number.
// Each row depends on that row alone.
using BlockModel = std::function<void(std::span<const Column> sources, std::size_t trials,
                                      std::span<Column> results)>;

}  // namespace Uncertainty
