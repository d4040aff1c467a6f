// A chunk of records in, the same records with their results out. Each worker has one of its own.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "batch/budget_table.h"
#include "batch/header_row.h"
#include "batch/record_parser.h"
#include "batch/row.h"
#include "model/hip_model.h"

namespace Cohort {

// Something to report about a row; rows are counted from 1 within the chunk.
struct RowRemark {
  std::uint64_t row = 0;
  std::string text;
};

// A row for a table; surplus fields are among the others.
struct TableRow {
  std::vector<std::string> fields;
  RowResult result;
};

// How rows are put out: as records that end with `lineEnd`, or as rows of a table.
struct RowFormat {
  std::string lineEnd = "\n";
  bool table = false;
};

struct ChunkResult {
  std::string text;  // records with results, each with a line end
  std::vector<TableRow> table;
  std::vector<RowBudget> budget;  // where it was asked for
  std::uint64_t bytes = 0;        // of the chunk
  std::uint64_t rows = 0;         // records in the chunk, blank lines included
  std::uint64_t hips = 0;         // records put out
  std::uint64_t bad = 0;          // of these, with bad input
  std::optional<RowRemark> firstBad;
  std::optional<RowRemark> trouble;  // what ends the run; `text` holds the rows before it
};

// Appends the header with the names of what rows get, and its line end. `uncertainties` are those
// of the columns behind the results.
void AppendHeader(std::string& out, std::string_view header, char delimiter,
                  std::string_view lineEnd, const std::vector<std::string>& uncertainties = {});

class ChunkComputer {
 public:
  // Keeps references to both.
  ChunkComputer(const HeaderRow& header, const RowFormat& format);

  // Computes every record of the chunk, whose line ends end with `lineEndIn`; `result` is written
  // anew, its room used again. A broken quote ends the chunk: `result.trouble` names its row.
  // A record keeps its bytes, but an unquoted field that holds a CR or LF is quoted: to another
  // reader it would end the row. A record that is too short gets empty fields up to the header's
  // number of columns, one that is too long has its surplus fields after the status, so that the
  // results always stand below their names. Blank lines are left out.
  void Compute(std::string_view chunk, char lineEndIn, ChunkResult& result);

 private:
  // False when the record's quoting is broken.
  bool ComputeRecord(std::string_view record, char lineEndIn, ChunkResult& result);
  void AppendRecord(std::string_view record, const RowResult& row, std::string& out) const;

  const HeaderRow& header_;
  const RowFormat& format_;
  RecordParser parser_;
  Sila::HipState scratch_;
  bool mayHoldQuotes_ = true;
  bool mayHoldLineEnds_ = true;  // a record of this chunk
  std::string quoted_;           // a record with line ends in fields that were not quoted
};

}  // namespace Cohort
