// CSV with a row for each hip and result.
#include "batch/budget_table.h"

#include "batch/shortest_number.h"
#include "columns/uncertainty_columns.h"
#include "model/vocabulary.h"
#include "uncertainty/hip_uncertainty.h"

namespace Cohort {

namespace {

std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) quoted += c == '"' ? "\"\"" : std::string(1, c);
  return quoted + '"';
}

// A source that a row does not have, the magnification, has no part in it.
void AppendParts(std::string& out, const std::vector<double>& parts) {
  for (std::size_t i = 0; i < Uncertainty::kReadingSources; ++i) {
    out += ',';
    if (!parts.empty()) AppendNumber(out, i < parts.size() ? parts[i] : 0.0);
  }
}

}  // namespace

BudgetTable::BudgetTable(const std::string& path) : sink_(OpenOutput(path)) {
  std::string header = "file,row,result";
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) header += ',' + std::string(row.key);
  sink_->Write(header + ',' + std::string(kMagnificationName) + '\n');
}

void BudgetTable::Write(const std::string& input, std::uint64_t rowsBefore,
                        const std::vector<RowBudget>& rows) {
  std::string text;
  for (const RowBudget& row : rows) {
    for (const Sila::ResultRow& result : Sila::kResults) {
      text += Quoted(input) + ',' + std::to_string(rowsBefore + row.row) + ',';
      text += result.key;
      AppendParts(text, row.parts[Sila::IndexOf(result.id)]);
      text += '\n';
    }
  }
  sink_->Write(text);
}

}  // namespace Cohort
