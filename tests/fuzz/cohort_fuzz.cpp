// Any bytes as a table of hips: the output is the same in whatever pieces the input comes, keeps
// every field, and has the results where their names stand.
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "batch/chunk_reader.h"
#include "batch/file_pipeline.h"
#include "batch/header_row.h"
#include "batch/output.h"
#include "batch/record_parser.h"
#include "batch/table.h"
#include "columns/cohort_error.h"
#include "tests/fuzz/require.h"

namespace {

struct Outcome {
  std::string separatorLine;
  std::string header;
  std::string lineEnd;
  Cohort::HeaderRow row;                // the header, read
  std::string text;                     // the rows put out
  std::vector<Cohort::TableRow> table;  // the same, where a table is asked for
  std::string trouble;                  // what ended the run; empty when it came to its end
};

bool SameOutcome(const Outcome& a, const Outcome& b) {
  return a.separatorLine == b.separatorLine && a.header == b.header && a.lineEnd == b.lineEnd &&
         a.text == b.text && a.trouble == b.trouble;
}

// Few trials, so that a table with uncertainties takes about as long as one without.
Cohort::UncertaintyOptions FewTrials() {
  Cohort::UncertaintyOptions options;
  options.settings.trials = 64;
  return options;
}

std::vector<std::string> AddedNames(const Cohort::HeaderRow& row) {
  return row.uncertainty ? row.uncertainty->Names() : std::vector<std::string>();
}

void ComputeRows(Cohort::ChunkReader& reader, bool table, Outcome& outcome) {
  std::uint64_t rowsBefore = 0;
  const auto take = [&](const Cohort::ChunkResult& result) {
    outcome.text += result.text;
    outcome.table.insert(outcome.table.end(), result.table.begin(), result.table.end());
    if (result.trouble) {
      throw Cohort::CohortError(std::to_string(rowsBefore + result.trouble->row) + ": " +
                                result.trouble->text);
    }
    rowsBefore += result.rows;
  };
  const Cohort::RowFormat format = {.lineEnd = outcome.lineEnd, .table = table};
  Cohort::ComputeStream(reader, outcome.row, format, 1, take);
}

// The whole run over an input that comes `piece` bytes at a time.
Outcome Compute(std::string_view text, std::size_t piece, bool table = false) {
  const auto source = [text](std::span<char> buffer) mutable {
    const std::size_t count = std::min(buffer.size(), text.size());
    std::copy_n(text.begin(), count, buffer.begin());
    text.remove_prefix(count);
    return count;
  };
  Cohort::ChunkReader reader(source, {.readSize = piece});
  Outcome outcome;
  try {
    outcome.header = reader.ReadHeader().value_or("");
    outcome.separatorLine = reader.SeparatorLine();
    outcome.lineEnd = reader.LineEnd();
    Cohort::HeaderRow row =
        Cohort::ReadHeaderRow(outcome.header, Cohort::ReadSeparatorLine(outcome.separatorLine));
    static const Cohort::RowUncertainty uncertainty(FewTrials());
    if (row.columns.uncertainty.Any()) row.uncertainty = &uncertainty;
    Cohort::CheckAreNotAdded(row.columns, AddedNames(row));
    outcome.row = std::move(row);  // without trouble before the rows
    ComputeRows(reader, table, outcome);
  } catch (const Cohort::CohortError& error) {
    outcome.trouble = error.what();
    Require(!outcome.trouble.empty(), "trouble has a reason");
  }
  return outcome;
}

// The fields of every record but blank lines.
std::vector<std::vector<std::string>> FieldsOf(std::string_view text, const Outcome& outcome) {
  std::vector<std::vector<std::string>> rows;
  Cohort::RecordParser parser(outcome.row.delimiter);
  Cohort::RecordWalk walk(text, outcome.lineEnd.back());
  for (std::string_view record; walk.Next(record);) {
    if (parser.Parse(record) != Cohort::RecordFault::None) break;
    if (parser.Fields().empty()) continue;
    rows.emplace_back(parser.Fields().begin(), parser.Fields().end());
  }
  return rows;
}

// Whether every CR and LF outside quotes ends a row: to any reader the rows are the same.
bool HasWholeRows(std::string_view text, std::string_view lineEnd) {
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') quoted = !quoted;
    if (quoted || (text[i] != '\r' && text[i] != '\n')) continue;
    if (!text.substr(i).starts_with(lineEnd)) return false;
    i += lineEnd.size() - 1;
  }
  return !quoted;
}

bool IsNumberOrEmpty(const std::string& text) {
  double value = 0.0;
  const char* end = text.data() + text.size();
  const std::from_chars_result read = std::from_chars(text.data(), end, value);
  return text.empty() || (read.ec == std::errc() && read.ptr == end && std::isfinite(value));
}

// A field that held a line end without quotes is quoted with the blanks around it.
bool IsSameField(std::string_view in, std::string_view out) {
  if (in.find_first_of("\r\n") == std::string_view::npos) return in == out;
  const std::size_t first = out.find_first_not_of(" \t");
  if (in == out || first == std::string_view::npos) return in == out;
  return in == out.substr(first, out.find_last_not_of(" \t") - first + 1);
}

void CheckRow(const std::vector<std::string>& in, const std::vector<std::string>& out,
              std::size_t columns, std::size_t results) {
  Require(out.size() == std::max(in.size(), columns) + results, "results are added, nothing else");
  const auto kept = static_cast<std::ptrdiff_t>(std::min(in.size(), columns));
  Require(std::equal(in.begin(), in.begin() + kept, out.begin(), IsSameField),
          "fields keep their text");
  const auto surplus = static_cast<std::ptrdiff_t>(in.size()) - kept;
  Require(std::equal(in.end() - surplus, in.end(), out.end() - surplus, IsSameField),
          "so do surplus fields");
  const std::string* result = &out[columns];
  Require(std::all_of(result, result + results - 1, IsNumberOrEmpty), "results are numbers");
  const std::string& status = result[results - 1];
  Require(status == "ok" || status.starts_with("ok: ") || status.starts_with("refused: ") ||
              status.starts_with("error: "),
          "every row has its status");
}

void CheckRows(std::string_view input, const Outcome& outcome) {
  const std::size_t separator =
      outcome.separatorLine.empty() ? 0 : outcome.separatorLine.size() + 1;
  const std::size_t header =
      input.find(outcome.header, separator) + outcome.header.size() + outcome.lineEnd.size();
  while (input.ends_with('\x1A')) input.remove_suffix(1);
  const auto in = FieldsOf(input.substr(std::min(header, input.size())), outcome);
  const auto out = FieldsOf(outcome.text, outcome);
  Require(HasWholeRows(outcome.text, outcome.lineEnd), "rows are whole for every reader");
  Require(in.size() == out.size(), "every row is put out");
  const std::size_t results = Sila::kResultCount + AddedNames(outcome.row).size() + 1;
  for (std::size_t i = 0; i < in.size(); ++i)
    CheckRow(in[i], out[i], outcome.row.columns.names.size(), results);
}

class NoSink final : public Cohort::TextSink {
 public:
  void Write(std::string_view) override {}
  void Finish() override {}
};

// A table has the rows of the CSV.
void CheckTable(const Outcome& table, const Outcome& whole) {
  Require(table.trouble == whole.trouble, "a table ends as the CSV does");
  const auto out = FieldsOf(whole.text, whole);
  Require(table.table.size() == out.size(), "a table has every row");
  for (std::size_t i = 0; i < out.size(); ++i) {
    const std::string& status =
        out[i][table.row.columns.names.size() + Sila::kResultCount + AddedNames(table.row).size()];
    Require(table.table[i].result.status == status, "a row has the same status in a table");
  }
  NoSink sink;
  Cohort::Table lines(sink, table.row.columns, AddedNames(table.row));
  lines.Write(table.table);
  lines.Finish();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const Outcome whole = Compute(input, size + 1);
  for (const std::size_t piece : {std::size_t{1}, std::size_t{7}}) {
    Require(SameOutcome(Compute(input, piece), whole), "pieces of any size give the same output");
  }
  if (whole.row.columns.names.empty()) return 0;
  CheckRows(input, whole);
  CheckTable(Compute(input, size + 1, true), whole);
  return 0;
}
