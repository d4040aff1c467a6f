// How far the results of one hip can be trusted, given the errors of its readings. The interval
// holds the reading error alone, not the model's own error.
#pragma once

#include <array>
#include <optional>

#include "model/hip_model.h"
#include "uncertainty/hip_inputs.h"
#include "uncertainty/propagate.h"

namespace Uncertainty {

// The sources of a hip are its inputs, in the order of HipInput, then the magnification.
inline constexpr std::size_t kMagnification = kHipInputs;
inline constexpr std::size_t kHipSources = kHipInputs + 1;

// A hip as it was read, in the units of the model (cm, rad, the radius in m, kg).
struct HipReading {
  std::array<Source, kHipInputs> inputs;
  // False: the weight is one that the model takes in its place. It has no error and there is no
  // pmax.
  bool weightKnown = true;
  // Lengths and their u, the radius included, are as on the picture and all divided by this one
  // factor. Without it they are true lengths.
  std::optional<Source> magnification;
};

// The estimate is the model's own value for the entered numbers, to the last bit.
struct HipResultUncertainty {
  double estimate = 0.0;
  Spread spread;  // budget in the order of the sources
};

struct HipUncertainty {
  // Of the entered numbers. If not Ok, nothing else is set.
  Sila::HipOutcome outcome = Sila::HipOutcome::Ok;
  std::size_t trials = 0;
  std::size_t ok = 0;
  bool settled = true;
  Completeness completeness = Completeness::Complete;
  std::array<std::optional<HipResultUncertainty>, kHipResults> results;  // by HipResult
};

// A trial also counts as refused when its radius, l/2, weight or magnification is not above 0,
// where the formulas would still give a stress, and for what hip_block.h names. The points need
// kHipSources dimensions.
HipUncertainty ComputeHipUncertainty(const HipReading& reading, const Points& points,
                                     const Settings& settings);

}  // namespace Uncertainty
