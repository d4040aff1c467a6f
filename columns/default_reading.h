// A row of a table of default uncertainties: of which reading it speaks, and in which unit.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/vocabulary.h"

namespace Cohort {

struct DefaultReading {
  std::optional<Sila::Measurement> measurement;  // empty: the magnification
  std::optional<std::string> unit;               // in brackets after the name
};

// The reading that "thetaCE", "lizm_u[mm]" or "magnification" names. Throws CohortError for any
// other name, with the one that was perhaps meant.
DefaultReading DefaultReadingNamed(std::string_view name);

// The standard uncertainty u in the reading's held unit. `unit` is in words; where it is empty,
// that in the name counts, and without one there the first of the measurement's kind. Throws
// CohortError for a unit that does not fit.
double HeldDefault(const DefaultReading& reading, std::string_view unit, double u);

}  // namespace Cohort
