// From titles to the columns that rows are read by.
#include "batch/columns.h"

#include <algorithm>

#include "batch/cohort_error.h"
#include "batch/near_title.h"
#include "batch/record_parser.h"
#include "batch/visible_text.h"

namespace Cohort {

namespace {

constexpr std::array<char, 3> kDelimiters = {',', ';', '\t'};

// The unit's text on the form, by which values are converted; none for the weight.
QStringView FormUnit(ColumnUnit unit) {
  switch (unit) {
    case ColumnUnit::Centimetre:
      return Vse::kCentimetre;
    case ColumnUnit::Millimetre:
      return Vse::kMillimetre;
    case ColumnUnit::Metre:
      return Vse::kMetre;
    case ColumnUnit::Degree:
      return Vse::kDegree;
    case ColumnUnit::Radian:
      return Vse::kRadian;
    case ColumnUnit::Kilogram:
      break;
  }
  return {};
}

// Names of another case are other columns: "Status" may well be the patient's.
void CheckIsNoResult(std::string_view text) {
  const std::string name = VisibleName(text);
  if (std::find(kResultNames.begin(), kResultNames.end(), name) == kResultNames.end()) return;
  throw CohortError("there is a column " + name +
                    " already, which the program adds; remove or rename it");
}

[[noreturn]] void RefuseUnit(const Title& title, std::size_t input) {
  throw CohortError("the unit " + Quoted(title.unit.value_or("")) + " of column " +
                    std::string(kInputNames[input]) + " is not known; known are " +
                    KnownUnits(input));
}

void TakeColumn(Columns& columns, std::size_t field) {
  CheckIsNoResult(columns.names[field]);
  const Title title = ReadTitle(columns.names[field]);
  const std::optional<std::size_t> input = InputNamed(title);
  if (!input) return;
  const std::optional<ColumnUnit> unit = UnitIn(title, *input);
  if (!unit && *input == kBodyWeight) return;
  std::optional<InputColumn>& column = columns.inputs[*input];
  if (column) {
    throw CohortError("there are two columns " + std::string(kInputNames[*input]));
  }
  if (!unit) RefuseUnit(title, *input);
  column = InputColumn{field, FormUnit(*unit)};
}

bool IsUsed(const Columns& columns, std::size_t field) {
  return std::any_of(columns.inputs.begin(), columns.inputs.end(),
                     [&](const auto& input) { return input && input->field == field; });
}

std::size_t CountInputs(std::string_view header, char delimiter) {
  RecordParser parser(delimiter);
  parser.Parse(header);
  const auto& fields = parser.Fields();
  return static_cast<std::size_t>(std::count_if(
      fields.begin(), fields.end(),
      [](std::string_view field) { return InputNamed(ReadTitle(field)).has_value(); }));
}

struct BestDelimiter {
  char delimiter = ',';
  std::size_t inputs = 0;  // found under it
};

BestDelimiter FindDelimiter(std::string_view header) {
  BestDelimiter best;
  for (const char delimiter : kDelimiters) {
    const std::size_t count = CountInputs(header, delimiter);
    if (count > best.inputs) best = {delimiter, count};
  }
  return best;
}

bool IsSeparatedByBlanks(std::string_view header) {
  return CountInputs(header, ' ') > kMeasureCount / 2;
}

// Says of a header that does not serve why it does not, or what else is wrong with it.
[[noreturn]] void RefuseHeader(std::string_view header, const std::string& fault) {
  if (!IsSeparatedByBlanks(header)) throw CohortError(fault);
  throw CohortError(
      "the columns are separated by blanks; they must be separated by commas, semicolons or tabs "
      "(in R by write.csv)");
}

std::string MissingNames(const Columns& columns) {
  std::string missing;
  int count = 0;
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    if (columns.inputs[i]) continue;
    missing += (count++ == 0 ? "" : ", ") + std::string(kInputNames[i]);
  }
  if (count == 0) return {};
  return count == 1 ? "the column " + missing + " is missing"
                    : "the columns " + missing + " are missing";
}

// What stands in place of what is missing: "; "theta CE" is perhaps thetaCE".
std::string PerhapsMeant(const Columns& columns) {
  std::string meant;
  for (const std::string& name : columns.names) {
    const std::optional<NearTitle> near = FindNearTitle(name);
    if (!near || near->input >= kMeasureCount || columns.inputs[near->input]) continue;
    meant += meant.empty() ? "; " : ", ";
    meant += Quoted(name) + " is perhaps " + std::string(kInputNames[near->input]);
  }
  return meant;
}

void CheckComplete(const Columns& columns, std::string_view header) {
  const std::string missing = MissingNames(columns);
  if (missing.empty()) return;
  RefuseHeader(header, missing + PerhapsMeant(columns) + "; the header read is " + Quoted(header));
}

// A column that differs in nothing but signs is told beside the one that is used, any other only in
// its absence.
std::optional<std::string> RemarkOn(const Columns& columns, const std::string& name) {
  const Title title = ReadTitle(name);
  const std::string notUsed = "the column " + Quoted(name) + " is not used";
  if (InputNamed(title)) {
    return notUsed + ", since its unit is not known; bodyWeight is in " + KnownUnits(kBodyWeight);
  }
  const std::optional<NearTitle> near = FindNearTitle(name);
  if (!near || (columns.inputs[near->input] && !near->sameLetters)) return std::nullopt;
  return notUsed + "; is " + std::string(kInputNames[near->input]) + " meant?";
}

void RemarkOnUnusedColumns(Columns& columns) {
  for (std::size_t i = 0; i < columns.names.size(); ++i) {
    if (IsUsed(columns, i)) continue;
    if (const auto remark = RemarkOn(columns, columns.names[i])) columns.remarks.push_back(*remark);
  }
}

}  // namespace

std::string_view WithoutByteOrderMark(std::string_view text) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  return text.starts_with(kMark) ? text.substr(kMark.size()) : text;
}

std::optional<char> ReadSeparatorLine(std::string_view line) {
  const std::optional<char> separator = NamedSeparator(line);
  if (!separator ||
      std::find(kDelimiters.begin(), kDelimiters.end(), *separator) != kDelimiters.end()) {
    return separator;
  }
  throw CohortError("the line before the header names the separator " + Quoted({&*separator, 1}) +
                    "; it must be a comma, semicolon or tab");
}

Columns ReadColumns(std::string_view header, std::optional<char> delimiter) {
  header = WithoutByteOrderMark(header);
  if (header.find('\0') != std::string_view::npos) {
    throw CohortError("the header holds NUL bytes; the file must be text in UTF-8, not UTF-16");
  }
  Columns columns;
  columns.delimiter = delimiter.value_or(FindDelimiter(header).delimiter);
  RecordParser parser(columns.delimiter);
  if (parser.Parse(header) != RecordFault::None) {
    RefuseHeader(header, "the header has a broken quote");
  }
  columns.names.assign(parser.Fields().begin(), parser.Fields().end());
  for (std::size_t i = 0; i < columns.names.size(); ++i) TakeColumn(columns, i);
  CheckComplete(columns, header);
  RemarkOnUnusedColumns(columns);
  return columns;
}

bool HaveSameNames(const Columns& one, const Columns& other) {
  return std::equal(
      one.names.begin(), one.names.end(), other.names.begin(), other.names.end(),
      [](const std::string& a, const std::string& b) { return PlainName(a) == PlainName(b); });
}

bool LooksLikeHeader(std::string_view row) {
  row = WithoutByteOrderMark(row);
  return FindDelimiter(row).inputs >= 2 || IsSeparatedByBlanks(row);
}

}  // namespace Cohort
