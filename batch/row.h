// One hip of the table: its fields read, converted and put through the model.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "batch/header_row.h"
#include "batch/row_uncertainty.h"
#include "model/hip_model.h"
#include "model/vocabulary.h"

namespace Cohort {

enum class RowKind { Ok, Refused, Bad };

struct RowResult {
  RowKind kind = RowKind::Bad;
  std::string status;  // "ok", "refused: …" or "error: …"; never holds a delimiter
  // By Sila::Result. Empty where nothing could be computed, and what needs the body weight also
  // while that is not known.
  std::array<std::optional<double>, Sila::kResultCount> values = {};
  std::optional<RowSpread> spread = {};  // empty in a table without uncertainties
};

// Computes one row. `fields` are the row's, quotes undone. `scratch` belongs to the caller and may
// be used again. Bad input gives RowKind::Bad and a status that names every column at fault.
RowResult ComputeRow(std::span<const std::string_view> fields, const HeaderRow& header,
                     Sila::HipState& scratch);

// Appends the results, the uncertainties where they are wanted, and the status as fields, each with
// a delimiter before it: numbers in the shortest text that reads back to the same double, with a
// point.
void AppendResults(std::string& out, const RowResult& result, char delimiter);

}  // namespace Cohort
