// From points of the sequence to errors of a distribution.
#pragma once

#include <array>
#include <cstdint>

#include "uncertainty/block.h"
#include "uncertainty/source.h"

namespace Uncertainty {

// The last bits of a block's points: all that tells the points of one block apart.
using BlockDigits = std::array<std::uint32_t, kBlockTrials>;

// Errors with mean 0 and variance 1 at the points (first ^ digits) + ½, over 2³², of the unit
// interval. The quantiles are exact to 1e-9; those of the normal distribution reach to ±6.3. The
// same bits on every processor.
void DrawErrors(Distribution distribution, std::uint32_t first, const BlockDigits& digits,
                Column& errors);

}  // namespace Uncertainty
