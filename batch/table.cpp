// Widths are counted in characters, so accents and the degree sign do not push the columns apart.
#include "batch/table.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <utility>

#include "batch/chunk_reader.h"
#include "batch/column_title.h"
#include "batch/columns.h"
#include "batch/terminal_text.h"
#include "case/number_text.h"

namespace Cohort {

namespace {

constexpr std::size_t kRowsToFit = 1000;
constexpr int kDecimals = 2;
constexpr double kPlainLimit = 1e15;  // beyond it decimals say nothing
constexpr std::string_view kGap = "  ";

template <std::size_t Count>
bool IsOneOf(std::string_view name, const std::array<std::string_view, Count>& names) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

// A body weight in a unit that is not known is a column like any other.
bool IsInput(std::string_view text) {
  const Title title = ReadTitle(text);
  const std::optional<std::size_t> input = InputNamed(title);
  return input && UnitIn(title, *input);
}

std::size_t WidthOf(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

std::string Rounded(std::string_view text) {
  const std::optional<double> value = Vse::ReadNumber(text);
  if (!value || std::abs(*value) >= kPlainLimit) return ShownCell(text);
  std::array<char, 32> digits{};
  const std::to_chars_result end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                                 Vse::TruncateToDecimals(*value, kDecimals),
                                                 std::chars_format::fixed, kDecimals);
  return {digits.data(), end.ptr};
}

}  // namespace

TableOutput::TableOutput(std::unique_ptr<TextSink> target, char delimiter, char lineEnd)
    : target_(std::move(target)), lineEnd_(lineEnd), parser_(delimiter) {}

void TableOutput::AddHeader(std::string_view header) {
  parser_.Parse(header);
  for (const std::string_view title : parser_.Fields()) {
    Column column;
    column.hidden = IsInput(title);
    column.rounded = IsOneOf(title, kResultNames) && title != kResultNames.back();
    titles_.push_back(ShownCell(title));
    column.width = WidthOf(titles_.back());
    columns_.push_back(column);
  }
}

void TableOutput::Fit(const Cells& row) {
  for (std::size_t i = 0; i < row.size(); ++i) {
    Column& column = columns_[i];
    column.width = std::max(column.width, WidthOf(row[i]));
    if (!row[i].empty() && !Vse::ReadNumber(row[i])) column.number = false;
  }
}

void TableOutput::AppendLine(std::string& out, const Cells& row) const {
  std::string line;
  for (std::size_t i = 0; i < row.size(); ++i) {
    const Column& column = columns_[i];
    if (column.hidden) continue;
    const std::string blanks(column.width - std::min(column.width, WidthOf(row[i])), ' ');
    line += column.number ? blanks + row[i] : row[i] + blanks;
    line += kGap;
  }
  line.resize(line.find_last_not_of(' ') + 1);
  out += line + '\n';
}

void TableOutput::PrintHeld() {
  fitted_ = true;
  Cells rule;
  for (const Column& column : columns_) rule.emplace_back(column.width, '-');
  rule.resize(titles_.size());
  AppendLine(text_, titles_);
  AppendLine(text_, rule);
  for (const Cells& row : held_) AppendLine(text_, row);
  held_.clear();
}

void TableOutput::AddRecord(std::string_view record) {
  if (titles_.empty()) return AddHeader(WithoutByteOrderMark(record));
  parser_.Parse(record);
  Cells row;
  for (const std::string_view field : parser_.Fields()) {
    // Surplus fields stand behind the named columns.
    if (row.size() == columns_.size()) columns_.emplace_back();
    row.push_back(columns_[row.size()].rounded ? Rounded(field) : ShownCell(field));
  }
  if (fitted_) return AppendLine(text_, row);
  Fit(row);
  held_.push_back(std::move(row));
  if (held_.size() == kRowsToFit) PrintHeld();
}

void TableOutput::Write(std::string_view text) {
  text_.clear();
  RecordWalk walk(text, lineEnd_);
  for (std::string_view record; walk.Next(record);) AddRecord(record);
  target_->Write(text_);
}

void TableOutput::Finish() {
  text_.clear();
  if (!fitted_) PrintHeld();
  target_->Write(text_);
  target_->Finish();
}

}  // namespace Cohort
