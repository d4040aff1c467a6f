// Any bytes as a table of hips: the output is the same in whatever pieces the input comes, keeps
// every field, and has the results where their names stand.
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/chunk_reader.h"
#include "batch/cohort_error.h"
#include "batch/columns.h"
#include "batch/file_pipeline.h"
#include "batch/output.h"
#include "batch/record_parser.h"
#include "batch/table.h"
#include "tests/fuzz/require.h"

namespace {

struct Outcome {
  std::string separatorLine;
  std::string header;
  std::string lineEnd;
  Cohort::Columns columns;
  std::string text;     // the rows put out
  std::string trouble;  // what ended the run; empty when it came to its end
};

bool SameOutcome(const Outcome& a, const Outcome& b) {
  return a.separatorLine == b.separatorLine && a.header == b.header && a.lineEnd == b.lineEnd &&
         a.text == b.text && a.trouble == b.trouble;
}

void ComputeRows(Cohort::ChunkReader& reader, Outcome& outcome) {
  std::uint64_t rowsBefore = 0;
  const auto take = [&](const Cohort::ChunkResult& result) {
    outcome.text += result.text;
    if (result.trouble) {
      throw Cohort::CohortError(std::to_string(rowsBefore + result.trouble->row) + ": " +
                                result.trouble->text);
    }
    rowsBefore += result.rows;
  };
  Cohort::ComputeStream(reader, outcome.columns, outcome.lineEnd, 1, take);
}

// The whole run over an input that comes `piece` bytes at a time.
Outcome Compute(std::string_view text, std::size_t piece) {
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
    outcome.columns =
        Cohort::ReadColumns(outcome.header, Cohort::ReadSeparatorLine(outcome.separatorLine));
    ComputeRows(reader, outcome);
  } catch (const Cohort::CohortError& error) {
    outcome.trouble = error.what();
    Require(!outcome.trouble.empty(), "trouble has a reason");
  }
  return outcome;
}

// The fields of every record but blank lines.
std::vector<std::vector<std::string>> FieldsOf(std::string_view text, const Outcome& outcome) {
  std::vector<std::vector<std::string>> rows;
  Cohort::RecordParser parser(outcome.columns.delimiter);
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
              std::size_t columns) {
  const std::size_t results = Cohort::kResultNames.size();
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
  Require(status == "ok" || status.starts_with("refused: ") || status.starts_with("error: "),
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
  for (std::size_t i = 0; i < in.size(); ++i) CheckRow(in[i], out[i], outcome.columns.names.size());
}

class NoSink final : public Cohort::TextSink {
 public:
  void Write(std::string_view) override {}
  void Finish() override {}
};

void PrintTable(const Outcome& outcome) {
  Cohort::TableOutput table(std::make_unique<NoSink>(), outcome.columns.delimiter,
                            outcome.lineEnd.back());
  std::string header;
  Cohort::AppendHeader(header, outcome.header, outcome.columns.delimiter, outcome.lineEnd);
  table.Write(header);
  table.Write(outcome.text);
  table.Finish();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const Outcome whole = Compute(input, size + 1);
  for (const std::size_t piece : {std::size_t{1}, std::size_t{7}}) {
    Require(SameOutcome(Compute(input, piece), whole), "pieces of any size give the same output");
  }
  if (whole.columns.names.empty()) return 0;
  CheckRows(input, whole);
  PrintTable(whole);
  return 0;
}
