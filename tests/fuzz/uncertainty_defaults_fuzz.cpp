// Any bytes as a table of default uncertainties: refused with a reason, or uncertainties that a hip
// can be computed with.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "batch/uncertainty_defaults.h"
#include "columns/cohort_error.h"
#include "tests/fuzz/require.h"

namespace {

bool IsUsable(const Uncertainty::ReadingError& error) {
  return std::isfinite(error.u) && error.u >= 0.0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  try {
    const Cohort::UncertaintyDefaults defaults = Cohort::ParseUncertaintyDefaults(text);
    Require(std::all_of(defaults.errors.begin(), defaults.errors.end(), IsUsable) &&
                IsUsable(defaults.magnification),
            "what is read can be computed with");
  } catch (const Cohort::CohortError& error) {
    Require(std::string_view(error.what()).starts_with("row "), "a refusal names its row");
  }
  return 0;
}
