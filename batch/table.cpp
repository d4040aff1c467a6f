// Widths are counted in characters, so accents and the degree sign do not push the columns apart.
#include "batch/table.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "case/number_text.h"
#include "columns/visible_text.h"

namespace Cohort {

namespace {

constexpr std::size_t kRowsToFit = 1000;
constexpr int kDecimals = 2;
constexpr double kPlainLimit = 1e15;  // beyond it decimals say nothing
constexpr std::string_view kGap = "  ";

std::size_t WidthOf(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

std::string Rounded(double value) {
  std::array<char, 32> digits{};
  char* const end = digits.data() + digits.size();
  const std::to_chars_result last =
      std::abs(value) < kPlainLimit
          ? std::to_chars(digits.data(), end, Vse::TruncateToDecimals(value, kDecimals),
                          std::chars_format::fixed, kDecimals)
          : std::to_chars(digits.data(), end, value);
  return {digits.data(), last.ptr};
}

}  // namespace

Table::Table(TextSink& target, const Columns& columns,
             const std::vector<std::string>& uncertainties)
    : target_(target), named_(columns.names.size()) {
  for (const std::string& name : columns.names) titles_.push_back(ShownCell(name));
  for (const Sila::ResultRow& result : Sila::kResults) titles_.emplace_back(result.key);
  titles_.insert(titles_.end(), uncertainties.begin(), uncertainties.end());
  titles_.emplace_back(kStatusName);
  for (std::size_t i = 0; i < titles_.size(); ++i) {
    columns_.push_back({.hidden = IsInput(columns, i), .width = WidthOf(titles_[i])});
  }
}

namespace {

void AddCells(std::span<const std::optional<double>> values, std::vector<std::string>& cells) {
  for (const std::optional<double>& value : values) {
    cells.push_back(value ? Rounded(*value) : std::string());
  }
}

void AddSpread(const RowSpread& spread, std::vector<std::string>& cells) {
  AddCells(spread.fields, cells);
  for (const std::optional<std::size_t>& count : {spread.trials, spread.ok}) {
    cells.push_back(count ? std::to_string(*count) : std::string());
  }
}

}  // namespace

Table::Cells Table::CellsOf(const TableRow& row) const {
  Cells cells;
  for (const std::string& field : row.fields) cells.push_back(ShownCell(field));
  Cells surplus(cells.begin() + static_cast<std::ptrdiff_t>(std::min(named_, cells.size())),
                cells.end());
  cells.resize(named_);
  AddCells(row.result.values, cells);
  if (row.result.spread) AddSpread(*row.result.spread, cells);
  cells.push_back(ShownCell(row.result.status));
  std::move(surplus.begin(), surplus.end(), std::back_inserter(cells));
  return cells;
}

void Table::Fit(const Cells& row) {
  for (std::size_t i = 0; i < row.size(); ++i) {
    Column& column = columns_[i];
    column.width = std::max(column.width, WidthOf(row[i]));
    if (!row[i].empty() && !Vse::ReadNumber(row[i])) column.number = false;
  }
}

void Table::AppendLine(std::string& out, const Cells& row) const {
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

void Table::PrintHeld() {
  fitted_ = true;
  Cells rule;
  for (const Column& column : columns_) rule.emplace_back(column.width, '-');
  rule.resize(titles_.size());
  AppendLine(text_, titles_);
  AppendLine(text_, rule);
  for (const Cells& row : held_) AppendLine(text_, row);
  held_.clear();
}

void Table::AddRow(const TableRow& row) {
  Cells cells = CellsOf(row);
  if (cells.size() > columns_.size()) columns_.resize(cells.size());
  if (fitted_) return AppendLine(text_, cells);
  Fit(cells);
  held_.push_back(std::move(cells));
  if (held_.size() == kRowsToFit) PrintHeld();
}

void Table::Write(const std::vector<TableRow>& rows) {
  text_.clear();
  for (const TableRow& row : rows) AddRow(row);
  target_.Write(text_);
}

void Table::Finish() {
  text_.clear();
  if (!fitted_) PrintHeld();
  target_.Write(text_);
}

}  // namespace Cohort
