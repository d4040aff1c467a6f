// What the names in a cohort's header row mean: where each measurement is, and in which unit.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "columns/uncertainty_columns.h"
#include "model/vocabulary.h"

namespace Cohort {

// The columns that the program adds are the results' keys in their order and this one.
inline constexpr std::string_view kStatusName = "status";

struct InputColumn {
  std::size_t field = 0;  // counted from 0
  Sila::Unit unit = Sila::Unit::Centimetre;
};

struct Columns {
  std::vector<std::string> names;  // of every column
  // The column of each measurement; empty where there is none.
  std::array<std::optional<InputColumn>, Sila::kMeasurementCount> inputs;
  UncertaintyColumns uncertainty;
  // Sentences about columns that are not used although their names are close to one that is.
  std::vector<std::string> remarks;

  const std::optional<InputColumn>& operator[](Sila::Measurement id) const {
    return inputs[Sila::IndexOf(id)];
  }
};

// Finds the columns by their names: in any order, among others, without regard to case, blanks
// around them and invisible characters. A name without a unit has the first of its kind (see
// Sila::UnitsOf). A body weight in an unknown unit is not used, which is remarked on. Throws
// CohortError for a measurement in an unknown unit, for a column that is there twice or is named
// like one that the program adds, and for an uncertainty without a unit beside an angle in radians.
Columns FindColumns(std::vector<std::string> names);

// Which measurements have no column, as a sentence without its full stop, with the columns that
// were perhaps meant; empty when there is nothing to say. The body weight and what came after
// version 1.0 may be missing.
std::string MissingColumns(const Columns& columns);

// Throws CohortError for a column that is named like one of those, which the program adds.
void CheckAreNotAdded(const Columns& columns, const std::vector<std::string>& added);

// Whether a measurement or its uncertainty is read from this column.
bool IsInput(const Columns& columns, std::size_t field);

// Whether two tables have the same columns in the same order, compared as FindColumns does.
bool HaveSameNames(const Columns& one, const Columns& other);

}  // namespace Cohort
