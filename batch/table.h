// The results as a table for people.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "batch/output.h"
#include "batch/record_parser.h"

namespace Cohort {

// Takes the CSV with results, header first, and passes on aligned lines: every column but the
// measures, the results with two decimals, truncated like on the program's screen. The widths are
// those of the first thousand rows; a longer cell later on pushes its line out.
class TableOutput final : public TextSink {
 public:
  // `lineEnd` is the last character of the CSV's line ends.
  TableOutput(std::unique_ptr<TextSink> target, char delimiter, char lineEnd);

  void Write(std::string_view text) override;
  void Finish() override;

 private:
  using Cells = std::vector<std::string>;

  struct Column {
    bool rounded = false;
    bool hidden = false;
    bool number = true;
    std::size_t width = 0;
  };

  void AddRecord(std::string_view record);
  void AddHeader(std::string_view header);
  void Fit(const Cells& row);
  void PrintHeld();
  void AppendLine(std::string& out, const Cells& row) const;

  std::unique_ptr<TextSink> target_;
  char lineEnd_;
  RecordParser parser_;
  std::vector<Column> columns_;
  Cells titles_;
  std::vector<Cells> held_;  // until the widths are known
  bool fitted_ = false;
  std::string text_;
};

}  // namespace Cohort
