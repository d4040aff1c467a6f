// Whose error is it: the part that each source has in the uncertainty of a result.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "uncertainty/trials.h"

namespace Uncertainty {

// For each result, the share of each part in the sum of the variances found when that part alone
// varies (JCGM 101:2008, annex B). A part has the sources from parts[i] to before parts[i + 1];
// without `parts` each source is one. Shares of a result add up to 1; where nothing moves it, all
// are 0. Nothing at all when the model refuses one of these trials.
std::vector<std::vector<double>> ComputeBudget(Trials& trials, std::span<const std::size_t> parts);

}  // namespace Uncertainty
