// Names are matched exactly, blanks around them aside; a unit stands behind them in brackets.
#include "batch/columns.h"

#include <algorithm>

#include "batch/cohort_error.h"
#include "batch/record_parser.h"

namespace Cohort {

namespace {

struct UnitName {
  std::string_view text;
  QStringView unit;
};

// The units of an input, the one that holds without brackets first.
std::vector<UnitName> UnitsOf(std::size_t input) {
  if (input == kBodyWeight) return {{"kg", {}}};
  const auto measure = static_cast<Measure>(input);
  if (Vse::IsAngle(measure)) {
    return {{"°", Vse::kDegree}, {"deg", Vse::kDegree}, {"rad", Vse::kRadian}};
  }
  if (measure == Measure::HeadRadius) {
    return {{"m", Vse::kMetre}, {"cm", Vse::kCentimetre}, {"mm", Vse::kMillimetre}};
  }
  return {{"cm", Vse::kCentimetre}, {"mm", Vse::kMillimetre}};
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// A column's title taken apart: "lizm [mm]" is the name "lizm" and the unit "mm".
struct Title {
  std::string_view name;
  std::optional<std::string_view> unit;
};

Title ReadTitle(std::string_view text) {
  text = Trimmed(text);
  const std::size_t bracket = text.find('[');
  if (bracket == std::string_view::npos || text.back() != ']') return {text, std::nullopt};
  return {Trimmed(text.substr(0, bracket)),
          Trimmed(text.substr(bracket + 1, text.size() - bracket - 2))};
}

std::optional<std::size_t> FindInput(std::string_view name) {
  const auto* found = std::find(kInputNames.begin(), kInputNames.end(), name);
  if (found == kInputNames.end()) return std::nullopt;
  return static_cast<std::size_t>(found - kInputNames.begin());
}

QStringView ReadUnit(const Title& title, std::size_t input) {
  const std::vector<UnitName> units = UnitsOf(input);
  if (!title.unit) return units.front().unit;
  std::string known;
  for (const UnitName& unit : units) {
    if (unit.text == *title.unit) return unit.unit;
    known += (known.empty() ? "" : ", ") + std::string(unit.text);
  }
  throw CohortError("the unit \"" + std::string(*title.unit) + "\" of column " +
                    std::string(title.name) + " is not known; known are " + known);
}

void TakeColumn(Columns& columns, std::size_t field) {
  const std::string& text = columns.names[field];
  const Title title = ReadTitle(text);
  if (std::find(kResultNames.begin(), kResultNames.end(), Trimmed(text)) != kResultNames.end()) {
    throw CohortError("there is a column " + std::string(title.name) +
                      " already, which the program adds; remove or rename it");
  }
  const std::optional<std::size_t> input = FindInput(title.name);
  if (!input) return;
  std::optional<InputColumn>& column = columns.inputs[*input];
  if (column) throw CohortError("there are two columns " + std::string(title.name));
  column = InputColumn{field, ReadUnit(title, *input)};
}

void CheckComplete(const Columns& columns) {
  std::string missing;
  int count = 0;
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    if (columns.inputs[i]) continue;
    missing += (count++ == 0 ? "" : ", ") + std::string(kInputNames[i]);
  }
  if (count == 1) throw CohortError("the column " + missing + " is missing");
  if (count > 1) throw CohortError("the columns " + missing + " are missing");
}

std::size_t CountInputs(std::string_view header, char delimiter) {
  RecordParser parser(delimiter);
  parser.Parse(header);
  const auto& fields = parser.Fields();
  return static_cast<std::size_t>(std::count_if(
      fields.begin(), fields.end(),
      [](std::string_view field) { return FindInput(ReadTitle(field).name).has_value(); }));
}

struct BestDelimiter {
  char delimiter = ',';
  std::size_t inputs = 0;  // found under it
};

BestDelimiter FindDelimiter(std::string_view header) {
  BestDelimiter best;
  for (const char delimiter : {',', ';', '\t'}) {
    const std::size_t count = CountInputs(header, delimiter);
    if (count > best.inputs) best = {delimiter, count};
  }
  return best;
}

}  // namespace

std::string_view WithoutByteOrderMark(std::string_view text) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  return text.starts_with(kMark) ? text.substr(kMark.size()) : text;
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
    throw CohortError("the header has a broken quote");
  }
  columns.names.assign(parser.Fields().begin(), parser.Fields().end());
  for (std::size_t i = 0; i < columns.names.size(); ++i) TakeColumn(columns, i);
  CheckComplete(columns);
  return columns;
}

bool LooksLikeHeader(std::string_view row) {
  return FindDelimiter(WithoutByteOrderMark(row)).inputs >= 2;
}

}  // namespace Cohort
