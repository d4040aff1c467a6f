// One hip of the table: its fields read, converted and put through the model.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "batch/columns.h"
#include "case/case_record.h"

namespace Cohort {

enum class RowKind { Ok, Refused, Bad };

// What is not there could not be computed. `pmax` is missing also when the body weight is not
// known.
struct RowResult {
  RowKind kind = RowKind::Bad;
  std::string status;              // "ok", "refused: …" or "error: …"; never holds a delimiter
  std::optional<double> rWb;       // resultant force over body weight
  std::optional<double> thetaR;    // degrees
  std::optional<double> thetaPol;  // degrees
  std::optional<double> pmaxWb;    // m^-2
  std::optional<double> pmax;      // Pa
};

// Computes one row. `fields` are the row's, quotes undone. `scratch` is room of the caller's, to
// be used again.
// Bad input gives RowKind::Bad and a status that names every column at fault.
RowResult ComputeRow(std::span<const std::string_view> fields, const Columns& columns,
                     CaseRecord& scratch);

// Appends the results as fields, each with a delimiter before it: numbers in the shortest text that
// reads back to the same double, with a point.
void AppendResults(std::string& out, const RowResult& result, char delimiter);

}  // namespace Cohort
