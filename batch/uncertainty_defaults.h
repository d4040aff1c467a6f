// The errors that a user's table of defaults gives to the rows that have none of their own.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "uncertainty/hip_uncertainty.h"

namespace Cohort {

// In held units; of the magnification, the part of 1.
struct UncertaintyDefaults {
  std::array<Uncertainty::ReadingError, Sila::kMeasurementCount> errors = {};
  Uncertainty::ReadingError magnification;
};

// Reads CSV with a header row and the columns "column" (a measurement or "magnification"), "u" and,
// if wanted, "unit" (where it is empty that in the name, or the first of the measurement's kind)
// and "distribution" (normal where it is empty, uniform or triangular). Throws CohortError with the
// file, the row and what is wrong.
UncertaintyDefaults ReadUncertaintyDefaults(const std::string& path);

// The same for the bytes of such a table; the sentence then begins with the row.
UncertaintyDefaults ParseUncertaintyDefaults(std::string_view text);

}  // namespace Cohort
