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

// An uncertainty that has no column or is NaN is the default. Without a magnification lengths are
// true ones.
struct GivenUncertainties {
  std::array<std::optional<GivenUncertainty>, Sila::kMeasurementCount> u = {};
  std::optional<GivenColumn> magnification;
  std::optional<GivenColumn> magnificationU;
};

// For the hips that have none of their own, in held units; a distribution is for all hips.
struct DefaultErrors {
  std::array<Uncertainty::ReadingError, Sila::kMeasurementCount> errors = {};
  Uncertainty::ReadingError magnification;
};

inline constexpr std::size_t kSpreadsPerResult = 3;  // u and the ends of the interval
// Of a hip's budget: for each result that of each source.
inline constexpr std::size_t kParts = Sila::kResultCount * Uncertainty::kReadingSources;

// Room for as many hips as are given. What there is not is NaN, or 0 trials.
struct ComputedUncertainties {
  ComputedHips hips;
  std::array<double*, kSpreadsPerResult* Sila::kResultCount> spreads = {};
  double* budget = nullptr;  // kParts a hip; null where none is wanted
  std::int64_t* trials = nullptr;
  std::int64_t* ok = nullptr;       // trials with an answer
  std::vector<std::string> status;  // as in a cohort
};

struct UncertaintyTask {
  const GivenHips& hips;
  const GivenUncertainties& uncertainties;
  const DefaultErrors& defaults;
  const Uncertainty::Points& points;
  const Uncertainty::Settings& settings;
};

// As ComputeHips; `goOn` is asked after every hip.
bool ComputeUncertainHips(const UncertaintyTask& task, ComputedUncertainties& computed,
                          unsigned threads, const std::function<bool()>& goOn);

}  // namespace Python
