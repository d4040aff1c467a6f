// Files one after the other; within a file the rows are shared among the threads.
#include "batch/cohort_run.h"

#include <unistd.h>

#include <filesystem>
#include <memory>
#include <span>
#include <system_error>
#include <utility>
#include <vector>

#include "batch/budget_table.h"
#include "batch/case_file_input.h"
#include "batch/chunk_computer.h"
#include "batch/chunk_reader.h"
#include "batch/file_pipeline.h"
#include "batch/files_met.h"
#include "batch/header_row.h"
#include "batch/input_file.h"
#include "batch/output.h"
#include "batch/progress.h"
#include "batch/table.h"
#include "columns/cohort_error.h"

namespace Cohort {

namespace {

// Bytes of a chunk that is computed within a blink even with uncertainties.
constexpr std::size_t kFewRows = std::size_t{16} * 1024;

std::string AtRow(const std::string& path, std::uint64_t row, const std::string& text) {
  return InputName(path) + ": row " + std::to_string(row) + ": " + text;
}

void Append(std::vector<std::string>& all, const std::vector<std::string>& more) {
  all.insert(all.end(), more.begin(), more.end());
}

// Opens every file once before anything is computed, so that a misspelt name does not show up after
// an hour.
class InputCheck {
 public:
  InputCheck(const CohortSettings& settings, const CaseCodePage& codePage)
      : settings_(settings), codePage_(codePage), met_(IsStandardOutput(settings.output)) {}

  // The size of all inputs, where it can be known.
  std::optional<std::uint64_t> Run() {
    std::uint64_t sum = 0;
    bool known = true;
    for (const std::string& path : settings_.inputs) {
      met_.Meet(path);
      const std::optional<std::uint64_t> size = Check(path);
      known = known && size.has_value();
      sum += size.value_or(0);
    }
    Remark(met_.Remark());
    return known ? std::optional(sum) : std::nullopt;
  }

 private:
  // A named pipe is left alone: its writer would take the first closing for the end.
  std::optional<std::uint64_t> Check(const std::string& path) {
    if (IsCaseFileInput(path)) {
      CheckCaseFiles(path);
      return std::nullopt;
    }
    std::error_code none;
    if (std::filesystem::is_fifo(path, none)) return std::nullopt;
    const std::optional<std::uint64_t> size = InputFile(path).Size();
    if (size && path != kStandardStream) CheckFormat(path);
    return size;
  }

  void CheckCaseFiles(const std::string& path) {
    const CaseFileInput readable(path, codePage_);
    for (const std::string& file : readable.Files()) {
      if (file != path) met_.Meet(file);
    }
    Remark(readable.PassedOver());
  }

  void Remark(const std::string& sentence) const {
    if (!sentence.empty()) settings_.remark(sentence);
  }

  const CohortSettings& settings_;
  const CaseCodePage& codePage_;
  FilesMet met_;
};

bool IsSameFile(const std::string& one, const std::string& other) {
  std::error_code none;
  return one == other || std::filesystem::equivalent(one, other, none);
}

// A table of budgets needs a file of its own.
void CheckBudget(const CohortSettings& settings) {
  const std::optional<std::string>& budget = settings.uncertainty.budget;
  if (!budget) return;
  std::vector<std::string> others = settings.inputs;
  others.push_back(settings.output);
  for (const std::string& other : others) {
    if (*budget != kStandardStream && !IsSameFile(*budget, other)) continue;
    throw CohortError(*budget + ": the budget needs a file of its own");
  }
}

class CohortRun {
 public:
  explicit CohortRun(const CohortSettings& settings)
      : settings_(settings),
        codePage_(FindCodePage(settings.encoding)),
        progress_(InputCheck(settings, codePage_).Run()),
        sink_(OpenOutput(settings.output)) {
    if (settings.uncertainty.defaults) uncertainty_.emplace(settings.uncertainty);
  }

  CohortTally Run() {
    for (const std::string& path : settings_.inputs) RunInput(path);
    if (table_) table_->Finish();
    sink_->Finish();
    if (budget_) budget_->Finish();
    RemarkOnCodePage();
    return std::move(tally_);
  }

 private:
  void RunInput(const std::string& path) {
    if (IsCaseFileInput(path)) {
      CaseFileInput files(path, codePage_);
      RunStream(
          path, [&](std::span<char> buffer) { return files.Read(buffer); },
          CaseFileInput::FaultField());
      Append(inCodePage_, files.InCodePage());
      Append(notInCodePage_, files.NotInCodePage());
    } else {
      InputFile file(path);
      RunStream(
          path, [&](std::span<char> buffer) { return file.Read(buffer); }, std::nullopt);
    }
  }

  void RunStream(const std::string& path, ReadBytes source, std::optional<std::size_t> faultField) {
    ChunkReader reader(std::move(source), {.readSize = kFewRows});
    HeaderRow header = TakeHeader(path, reader);
    header.faultField = faultField;
    header.uncertainty = uncertainty_ ? &*uncertainty_ : nullptr;
    if (!uncertainty_) reader.SetReadSize(ChunkLimits().readSize);
    std::uint64_t rowsBefore = RowOfHeader(reader);
    ComputeStream(reader, header, format_, settings_.threads, [&](const ChunkResult& result) {
      TakeResult(path, rowsBefore, result);
      rowsBefore += result.rows;
    });
  }

  HeaderRow TakeHeader(const std::string& path, ChunkReader& reader) {
    std::string text;
    HeaderRow header = ReadHeader(path, reader, text);
    if (first_) return header;
    for (const std::string& remark : header.columns.remarks) {
      settings_.remark(AtRow(path, RowOfHeader(reader), remark));
    }
    BeginOutput(text, header, reader);
    return header;
  }

  static std::uint64_t RowOfHeader(const ChunkReader& reader) {
    return reader.SeparatorLine().empty() ? 1 : 2;
  }

  HeaderRow ReadHeader(const std::string& path, ChunkReader& reader, std::string& text) {
    try {
      std::optional<std::string> record = reader.ReadHeader();
      if (!record) throw CohortError("the file is empty; it should begin with a header row");
      text = std::move(*record);
      const std::optional<char> named = ReadSeparatorLine(reader.SeparatorLine());
      HeaderRow header = ReadHeaderRow(text, settings_.delimiter ? settings_.delimiter : named);
      if (first_) {
        CheckSameColumns(header);
      } else {
        BeginUncertainty(header.columns);
      }
      return header;
    } catch (const CohortError& error) {
      throw CohortError(AtRow(path, RowOfHeader(reader), error.what()));
    }
  }

  void BeginUncertainty(const Columns& columns) {
    const UncertaintyOptions& options = settings_.uncertainty;
    if (!uncertainty_ && columns.uncertainty.Any()) uncertainty_.emplace(options);
    if (uncertainty_) CheckAreNotAdded(columns, uncertainty_->Names());
    if (!options.budget) return;
    if (!uncertainty_) {
      throw CohortError(
          "there is no uncertainty to make a budget of: neither a column such as "
          "lizm_u nor --uncertainty");
    }
    budget_.emplace(*options.budget);
  }

  std::vector<std::string> UncertaintyNames() const {
    return uncertainty_ ? uncertainty_->Names() : std::vector<std::string>();
  }

  // A line that names the separator is kept for the program that wants it, not for people.
  void BeginOutput(const std::string& text, const HeaderRow& header, const ChunkReader& reader) {
    first_ = header;
    format_ = {.lineEnd = reader.LineEnd(), .table = settings_.table};
    if (settings_.table) {
      table_.emplace(*sink_, header.columns, UncertaintyNames());
      return;
    }
    std::string lines;
    if (!reader.SeparatorLine().empty()) lines = reader.SeparatorLine() + format_.lineEnd;
    AppendHeader(lines, text, header.delimiter, format_.lineEnd, UncertaintyNames());
    sink_->Write(lines);
  }

  void CheckSameColumns(const HeaderRow& header) const {
    const std::string& first = settings_.inputs.front();
    if (!HaveSameNames(header.columns, first_->columns)) {
      throw CohortError("the columns are not those of " + InputName(first));
    }
    if (header.delimiter != first_->delimiter) {
      throw CohortError("the delimiter is not that of " + InputName(first));
    }
  }

  void TakeResult(const std::string& path, std::uint64_t rowsBefore, const ChunkResult& result) {
    if (sharesTerminal_) progress_.Erase();
    if (table_) {
      table_->Write(result.table);
    } else {
      sink_->Write(result.text);
    }
    if (budget_) budget_->Write(InputName(path), rowsBefore, result.budget);
    if (tally_.bad == 0 && result.firstBad) {
      tally_.firstBad = AtRow(path, rowsBefore + result.firstBad->row, result.firstBad->text);
    }
    tally_.hips += result.hips;
    tally_.bad += result.bad;
    if (result.trouble) {
      throw CohortError(AtRow(path, rowsBefore + result.trouble->row, result.trouble->text));
    }
    progress_.Advance(result.hips, result.bytes);
  }

  // Letters may be others than those that were written.
  void RemarkOnCodePage() {
    if (codePage_.assumed) {
      RemarkOn(inCodePage_, "not UTF-8, and read in the code page " + codePage_.name +
                                " because the locale names no language");
    } else {
      RemarkOn(notInCodePage_, "bytes that are no letters in the code page " + codePage_.name);
    }
  }

  void RemarkOn(const std::vector<std::string>& files, const std::string& what) {
    if (files.empty()) return;
    progress_.Erase();
    const std::string several = std::to_string(files.size()) + " case files, the first ";
    settings_.remark((files.size() == 1 ? "" : several) + files.front() + ": " + what +
                     "; --encoding names another");
  }

  const CohortSettings& settings_;
  CaseCodePage codePage_;
  Progress progress_;
  std::unique_ptr<TextSink> sink_;
  const bool sharesTerminal_ = isatty(STDOUT_FILENO) == 1;
  std::optional<Table> table_;      // in place of CSV
  std::optional<HeaderRow> first_;  // the first input's
  RowFormat format_;
  std::optional<RowUncertainty> uncertainty_;
  std::optional<BudgetTable> budget_;
  std::vector<std::string> inCodePage_;     // case files that are not UTF-8
  std::vector<std::string> notInCodePage_;  // of these, those with bytes that are no letters in it
  CohortTally tally_;
};

}  // namespace

CohortTally RunCohort(const CohortSettings& settings) {
  CheckBudget(settings);
  return CohortRun(settings).Run();
}

}  // namespace Cohort
