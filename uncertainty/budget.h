// Whose error is it: the part that each source has in the uncertainty of a result.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "uncertainty/trials.h"

namespace Uncertainty {

// For each result its parts: of the variances that come out when the sources from parts[i] to
// before parts[i + 1] vary alone (JCGM 101:2008, annex B); without `parts` each source by itself.
// Parts of a result add up to 1; where nothing moves it, all are 0. Nothing at all when the model
// refuses one of these trials.
std::vector<std::vector<double>> ComputeBudget(Trials& trials, std::span<const std::size_t> parts);

}  // namespace Uncertainty
