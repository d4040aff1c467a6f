// Files one after the other; within a file the rows are shared among the threads.
#include "batch/cohort_run.h"

#include <unistd.h>

#include <filesystem>
#include <memory>
#include <span>
#include <system_error>
#include <utility>
#include <vector>

#include "batch/case_file_input.h"
#include "batch/chunk_computer.h"
#include "batch/chunk_reader.h"
#include "batch/cohort_error.h"
#include "batch/columns.h"
#include "batch/file_pipeline.h"
#include "batch/files_met.h"
#include "batch/input_file.h"
#include "batch/output.h"
#include "batch/progress.h"
#include "batch/table.h"

namespace Cohort {

namespace {

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

class CohortRun {
 public:
  explicit CohortRun(const CohortSettings& settings)
      : settings_(settings),
        codePage_(FindCodePage(settings.encoding)),
        progress_(InputCheck(settings, codePage_).Run()),
        sink_(OpenOutput(settings.output)) {}

  CohortTally Run() {
    for (const std::string& path : settings_.inputs) RunInput(path);
    sink_->Finish();
    RemarkOnCodePage();
    return std::move(tally_);
  }

 private:
  void RunInput(const std::string& path) {
    if (IsCaseFileInput(path)) {
      CaseFileInput files(path, codePage_);
      RunStream(path, [&](std::span<char> buffer) { return files.Read(buffer); });
      Append(inCodePage_, files.InCodePage());
      Append(notInCodePage_, files.NotInCodePage());
    } else {
      InputFile file(path);
      RunStream(path, [&](std::span<char> buffer) { return file.Read(buffer); });
    }
  }

  void RunStream(const std::string& path, ReadBytes source) {
    ChunkReader reader(std::move(source));
    const Columns columns = TakeHeader(path, reader);
    std::uint64_t rowsBefore = HeaderRow(reader);
    ComputeStream(reader, columns, lineEnd_, settings_.threads, [&](const ChunkResult& result) {
      TakeResult(path, rowsBefore, result);
      rowsBefore += result.rows;
    });
  }

  Columns TakeHeader(const std::string& path, ChunkReader& reader) {
    std::string header;
    Columns columns = ReadHeader(path, reader, header);
    if (first_) return columns;
    for (const std::string& remark : columns.remarks) {
      settings_.remark(AtRow(path, HeaderRow(reader), remark));
    }
    BeginOutput(header, columns, reader);
    return columns;
  }

  static std::uint64_t HeaderRow(const ChunkReader& reader) {
    return reader.SeparatorLine().empty() ? 1 : 2;
  }

  Columns ReadHeader(const std::string& path, ChunkReader& reader, std::string& header) const {
    try {
      std::optional<std::string> text = reader.ReadHeader();
      if (!text) throw CohortError("the file is empty; it should begin with a header row");
      header = std::move(*text);
      const std::optional<char> named = ReadSeparatorLine(reader.SeparatorLine());
      Columns columns = ReadColumns(header, settings_.delimiter ? settings_.delimiter : named);
      if (first_) CheckSameColumns(columns);
      return columns;
    } catch (const CohortError& error) {
      throw CohortError(AtRow(path, HeaderRow(reader), error.what()));
    }
  }

  // A line that names the separator is kept for the program that wants it, not for people.
  void BeginOutput(const std::string& header, const Columns& columns, const ChunkReader& reader) {
    first_ = columns;
    lineEnd_ = reader.LineEnd();
    std::string text;
    if (settings_.table) {
      sink_ = std::make_unique<TableOutput>(std::move(sink_), columns.delimiter, lineEnd_.back());
    } else if (!reader.SeparatorLine().empty()) {
      text = reader.SeparatorLine() + lineEnd_;
    }
    AppendHeader(text, header, columns.delimiter, lineEnd_);
    sink_->Write(text);
  }

  void CheckSameColumns(const Columns& columns) const {
    const std::string& first = settings_.inputs.front();
    if (!HaveSameNames(columns, *first_)) {
      throw CohortError("the columns are not those of " + InputName(first));
    }
    if (columns.delimiter != first_->delimiter) {
      throw CohortError("the delimiter is not that of " + InputName(first));
    }
  }

  void TakeResult(const std::string& path, std::uint64_t rowsBefore, const ChunkResult& result) {
    if (sharesTerminal_) progress_.Erase();
    sink_->Write(result.text);
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
  std::optional<Columns> first_;  // the first input's
  std::string lineEnd_;
  std::vector<std::string> inCodePage_;     // case files that are not UTF-8
  std::vector<std::string> notInCodePage_;  // of these, those with bytes that are no letters in it
  CohortTally tally_;
};

}  // namespace

CohortTally RunCohort(const CohortSettings& settings) {
  return CohortRun(settings).Run();
}

}  // namespace Cohort
