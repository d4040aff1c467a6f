// The results as a table for people.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "batch/chunk_computer.h"
#include "batch/output.h"
#include "columns/header.h"

namespace Cohort {

// Makes aligned lines of rows: every column but the measurements, the results with two decimals,
// truncated like on the program's screen. The widths are those of the first thousand rows; a longer
// cell later on pushes its line out.
class Table {
 public:
  // Keeps a reference to the target, which is not finished.
  // `uncertainties` are the names of the columns behind the results.
  Table(TextSink& target, const Columns& columns,
        const std::vector<std::string>& uncertainties = {});

  void Write(const std::vector<TableRow>& rows);

  // To be called once, after the last Write.
  void Finish();

 private:
  using Cells = std::vector<std::string>;

  struct Column {
    bool hidden = false;
    bool number = true;
    std::size_t width = 0;
  };

  void AddRow(const TableRow& row);
  Cells CellsOf(const TableRow& row) const;
  void Fit(const Cells& row);
  void PrintHeld();
  void AppendLine(std::string& out, const Cells& row) const;

  TextSink& target_;
  std::size_t named_;            // columns of the header
  std::vector<Column> columns_;  // those, the results, the status, and surplus fields
  Cells titles_;
  std::vector<Cells> held_;  // until the widths are known
  bool fitted_ = false;
  std::string text_;
};

}  // namespace Cohort
