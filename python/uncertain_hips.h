// Many hips in columns of plain numbers, with columns of uncertainties, computed as the rows of a
// cohort are.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "python/given_hips.h"
#include "uncertainty/hip_uncertainty.h"

namespace Python {

// In its own unit; without one where that does not fit, and then only NaN will do.
struct GivenUncertainty {
  GivenColumn numbers;
  bool unitFits = true;
};

// An uncertainty that has no column or is NaN is 0. Without a magnification lengths are true ones.
struct GivenUncertainties {
  std::array<std::optional<GivenUncertainty>, Sila::kMeasurementCount> u = {};
  std::optional<GivenColumn> magnification;
  std::optional<GivenColumn> magnificationU;
};

inline constexpr std::size_t kSpreadsPerResult = 3;  // u and the ends of the interval

// Room for as many hips as are given. What there is not is NaN, or 0 trials.
struct ComputedUncertainties {
  ComputedHips hips;
  std::array<double*, kSpreadsPerResult* Sila::kResultCount> spreads = {};
  std::int64_t* trials = nullptr;
  std::int64_t* ok = nullptr;       // trials with an answer
  std::vector<std::string> status;  // as in a cohort
};

struct UncertaintyTask {
  const GivenHips& hips;
  const GivenUncertainties& uncertainties;
  const Uncertainty::Points& points;
  const Uncertainty::Settings& settings;
};

// As ComputeHips; `goOn` is asked after every hip.
bool ComputeUncertainHips(const UncertaintyTask& task, ComputedUncertainties& computed,
                          unsigned threads, const std::function<bool()>& goOn);

}  // namespace Python
