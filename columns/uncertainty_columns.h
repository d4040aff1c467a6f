// The columns of a cohort that say how uncertain its measurements are, and those that the program
// then adds.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "columns/column_title.h"
#include "model/vocabulary.h"

namespace Cohort {

// The factor by which the picture enlarges every length.
inline constexpr std::string_view kMagnificationName = "magnification";

// A measurement's standard uncertainty. Without a unit of its own it is in its measurement's; the
// unit is empty when it does not fit.
struct UncertaintyColumn {
  std::size_t field = 0;  // counted from 0
  std::optional<Sila::Unit> unit;
};

struct UncertaintyColumns {
  std::array<std::optional<UncertaintyColumn>, Sila::kMeasurementCount> u;
  std::optional<std::size_t> magnification;  // a field
  std::optional<std::size_t> magnificationU;

  // Whether there is any such column.
  bool Any() const;
  bool Holds(std::size_t field) const;
};

// What a title names: "lizm_u", "magnification" or "magnification_u".
struct UncertaintyTitle {
  std::optional<Sila::Measurement> measurement;  // empty: of the magnification
  bool isValue = false;                          // the magnification itself
};
std::optional<UncertaintyTitle> UncertaintyNamed(const Title& title);

// The name of a measurement's uncertainty: "lizm_u"; or of what else is called so.
std::string UncertaintyName(std::string_view key);

// The columns that are added at this coverage probability: for every result its standard
// uncertainty and the ends of its interval ("pmax_u", "pmax_lo95", "pmax_hi95"), then the trials
// and those with an answer.
std::vector<std::string> AddedUncertaintyNames(double coverage);

}  // namespace Cohort
