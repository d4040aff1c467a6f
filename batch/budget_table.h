// The budgets of a cohort: for each result of each hip, the part of the variance that each input
// has in it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "batch/output.h"

namespace Cohort {

// The budgets of one row.
struct RowBudget {
  std::uint64_t row = 0;  // counted from 1, within the chunk
  // By Sila::Result, then by source; no parts where there is no budget.
  std::vector<std::vector<double>> parts;
};

class BudgetTable {
 public:
  // Throws CohortError, as the other calls do, when the file cannot be written.
  explicit BudgetTable(const std::string& path);

  // `rowsBefore` rows of the input are before those of the chunk.
  void Write(const std::string& input, std::uint64_t rowsBefore,
             const std::vector<RowBudget>& rows);

  // To be called once, after the last Write.
  void Finish() { sink_->Finish(); }

 private:
  std::unique_ptr<TextSink> sink_;
};

}  // namespace Cohort
