// Splits the header into its names and asks what they mean.
#include "batch/header_row.h"

#include <algorithm>
#include <array>
#include <string>

#include "batch/record_parser.h"
#include "columns/cohort_error.h"
#include "columns/column_title.h"
#include "columns/visible_text.h"

namespace Cohort {

namespace {

constexpr std::array<char, 3> kDelimiters = {',', ';', '\t'};

std::size_t CountInputs(std::string_view header, char delimiter) {
  RecordParser parser(delimiter);
  parser.Parse(header);
  const auto& fields = parser.Fields();
  return static_cast<std::size_t>(std::count_if(
      fields.begin(), fields.end(),
      [](std::string_view field) { return MeasurementNamed(ReadTitle(field)).has_value(); }));
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
  return CountInputs(header, ' ') > Sila::kRadiographCount / 2;
}

// Says of a header that cannot be used why it cannot, or what else is wrong with it.
[[noreturn]] void RefuseHeader(std::string_view header, const std::string& fault) {
  if (!IsSeparatedByBlanks(header)) throw CohortError(fault);
  throw CohortError(
      "the columns are separated by blanks; they must be separated by commas, semicolons or tabs "
      "(in R by write.csv)");
}

}  // namespace

std::string_view WithoutByteOrderMark(std::string_view text) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  return text.starts_with(kMark) ? text.substr(kMark.size()) : text;
}

// Programs that read the line as a record may have put quotes around it or delimiters behind it.
std::optional<char> NamedSeparator(std::string_view line) {
  constexpr std::string_view kWord = "sep=";
  line = WithoutByteOrderMark(line);
  if (line.starts_with('"')) line.remove_prefix(1);
  if (line.size() <= kWord.size() || PlainName(line.substr(0, kWord.size())) != kWord) {
    return std::nullopt;
  }
  const char separator = line[kWord.size()];
  const std::string_view rest = line.substr(kWord.size() + 1);
  if (rest.find_first_not_of(std::string{separator, '"', ' '}) != std::string_view::npos) {
    return std::nullopt;
  }
  return separator;
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

HeaderRow ReadHeaderRow(std::string_view header, std::optional<char> delimiter) {
  header = WithoutByteOrderMark(header);
  if (header.find('\0') != std::string_view::npos) {
    throw CohortError("the header holds NUL bytes; the file must be text in UTF-8, not UTF-16");
  }
  HeaderRow row;
  row.delimiter = delimiter.value_or(FindDelimiter(header).delimiter);
  RecordParser parser(row.delimiter);
  if (parser.Parse(header) != RecordFault::None) {
    RefuseHeader(header, "the header has a broken quote");
  }
  row.columns = FindColumns({parser.Fields().begin(), parser.Fields().end()});
  const std::string missing = MissingColumns(row.columns);
  if (!missing.empty()) RefuseHeader(header, missing + "; the header read is " + Quoted(header));
  return row;
}

bool LooksLikeHeader(std::string_view row) {
  row = WithoutByteOrderMark(row);
  return FindDelimiter(row).inputs >= 2 || IsSeparatedByBlanks(row);
}

}  // namespace Cohort
