// Whose error is it: the part that each source has in the uncertainty of a result.
#pragma once

#include <vector>

#include "uncertainty/trials.h"

namespace Uncertainty {

// For each result one part a source: of the variances that come out when one source varies at a
// time (JCGM 101:2008, annex B). Parts of a result add up to 1; where nothing moves it, all are 0.
// Nothing at all when the model refuses one of these trials.
std::vector<std::vector<double>> ComputeBudget(Trials& trials);

}  // namespace Uncertainty
