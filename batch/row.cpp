// Checks, converts and computes as the case form does, so that form and table give the same digits.
#include "batch/row.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <variant>

#include "batch/shortest_number.h"
#include "case/entry_check.h"
#include "case/number_text.h"

namespace Cohort {

namespace {

constexpr std::string_view kOk = "ok";
constexpr std::string_view kOutOfRange = "refused: resultant force outside the model's range";
constexpr std::string_view kNoPole = "refused: no stress pole for this centre-edge angle and force";
constexpr std::string_view kNoStress = "refused: the contact stress is not a finite number";

bool IsBlankByte(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::string_view WithoutBlanks(std::string_view text) {
  while (!text.empty() && IsBlankByte(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlankByte(text.back())) text.remove_suffix(1);
  return text;
}

bool IsBlank(std::string_view text) {
  return WithoutBlanks(text).empty();
}

bool IsSameLetter(char a, char b) {
  const auto lower = [](char c) { return 'A' <= c && c <= 'Z' ? c - 'A' + 'a' : c; };
  return lower(a) == lower(b);
}

// What statistics programs, spreadsheets and this one write where there is no value.
bool IsMissing(std::string_view text) {
  constexpr std::array<std::string_view, 7> kMissing = {"",     "NA", "N/A",    "NaN",
                                                        "#N/A", "-",  "Unknown"};
  const std::string_view word = WithoutBlanks(text);
  return std::any_of(kMissing.begin(), kMissing.end(), [&](std::string_view missing) {
    return std::equal(word.begin(), word.end(), missing.begin(), missing.end(), IsSameLetter);
  });
}

std::string_view Describe(Vse::FaultKind fault) {
  switch (fault) {
    case Vse::FaultKind::TooLarge:
      return "is too large";
    case Vse::FaultKind::AngleTooLarge:
      return "is more than 2 pi radians";
    case Vse::FaultKind::NotANumber:
    case Vse::FaultKind::NotADate:
      break;
  }
  return "is not a number";
}

// Stricter than the form, which leaves these to the model.
bool MustBeAboveZero(Sila::Kind kind) {
  return kind == Sila::Kind::Radius || kind == Sila::Kind::Weight;
}

// Reads the fields of one row and gathers what is wrong with them.
class RowReader {
 public:
  RowReader(std::span<const std::string_view> fields, const Columns& columns)
      : fields_(fields), columns_(columns) {}

  // Whether there is any measurement in the row at all.
  bool HasMeasurements() const {
    return std::any_of(Sila::kRadiographMeasurements.begin(), Sila::kRadiographMeasurements.end(),
                       [&](const auto& row) { return !IsBlank(fields_[columns_[row.id]->field]); });
  }

  // Only of use when there are no complaints.
  Sila::HipInputs Read() {
    Sila::HipInputs inputs;
    for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
      if (columns_[row.id]) ReadInto(inputs, row, *columns_[row.id]);
    }
    return inputs;
  }

  // What is wrong, as a status; empty when nothing is.
  const std::string& Complaints() const { return complaints_; }

 private:
  void ReadInto(Sila::HipInputs& inputs, const Sila::MeasurementRow& row,
                const InputColumn& column) {
    const std::string_view text = fields_[column.field];
    const Vse::CheckedNumber number = Vse::CheckMeasurement(row.kind(), text, column.unit);
    if (const double* held = std::get_if<double>(&number)) {
      if (*held <= 0.0 && MustBeAboveZero(row.kind())) Complain(row, "must be greater than 0");
      Sila::SetValue(inputs, row, *held);
    } else if (!IsMissing(text)) {
      Complain(row, Describe(std::get<Vse::FaultKind>(number)));
    } else if (row.kind() != Sila::Kind::Weight) {
      Complain(row, "is missing");
    }
  }

  void Complain(const Sila::MeasurementRow& row, std::string_view what) {
    complaints_ += complaints_.empty() ? "error: " : " and ";
    complaints_ += row.key;
    complaints_ += ' ';
    complaints_ += what;
  }

  std::span<const std::string_view> fields_;
  const Columns& columns_;
  std::string complaints_;
};

// R writes a name before each row and none above them. Were the fields one place further on, every
// input would have its value.
bool LacksFirstName(std::span<const std::string_view> fields, const Columns& columns) {
  if (fields.size() != columns.names.size() + 1 || IsBlank(fields.back())) return false;
  return std::all_of(columns.inputs.begin(), columns.inputs.end(), [&](const auto& column) {
    if (!column) return true;
    const std::string_view next = fields[column->field + 1];
    return Vse::ReadNumber(next) || IsMissing(next);
  });
}

std::string WrongFieldCount(std::span<const std::string_view> fields, const Columns& columns) {
  const std::size_t count = fields.size();
  return "error: the row has " + std::to_string(count) + (count == 1 ? " field" : " fields") +
         " and the header " + std::to_string(columns.names.size()) +
         (LacksFirstName(fields, columns) ? ": the header may lack a name for the first column"
                                          : "");
}

// This program's own reason, where it can be written without quotes.
std::string NoMeasurements(std::span<const std::string_view> fields, const HeaderRow& header) {
  const std::string_view fault = header.faultField ? fields[*header.faultField] : "";
  const bool serves = !IsBlank(fault) && fault.find_first_of(",;\t\"\r\n") == std::string::npos;
  return "error: " + std::string(serves ? fault : "the row holds no measures");
}

std::string_view StatusOf(Sila::HipOutcome outcome) {
  switch (outcome) {
    case Sila::HipOutcome::OutOfRange:
      return kOutOfRange;
    case Sila::HipOutcome::NoPole:
      return kNoPole;
    case Sila::HipOutcome::DivisionByZero:
      return kNoStress;
    case Sila::HipOutcome::Ok:
      break;
  }
  return kOk;
}

RowResult RunModel(const Sila::HipInputs& inputs, Sila::HipState& state) {
  const Sila::HipOutcome outcome = Sila::ComputeHip(inputs, state);
  const bool ok = outcome == Sila::HipOutcome::Ok;
  RowResult result;
  result.kind = ok ? RowKind::Ok : RowKind::Refused;
  result.status = StatusOf(outcome);
  for (const Sila::ResultRow& row : Sila::kResults) {
    const bool known = (ok || !row.isStress) && (inputs.bodyWeight || !row.needsWeight);
    const double value = row.value(state.results);
    if (known && std::isfinite(value)) result.values[Sila::IndexOf(row.id)] = value;
  }
  return result;
}

}  // namespace

RowResult ComputeRow(std::span<const std::string_view> fields, const HeaderRow& header,
                     Sila::HipState& scratch) {
  const Columns& columns = header.columns;
  if (fields.size() != columns.names.size()) return {.status = WrongFieldCount(fields, columns)};
  RowReader reader(fields, columns);
  if (!reader.HasMeasurements()) return {.status = NoMeasurements(fields, header)};
  const Sila::HipInputs inputs = reader.Read();
  if (!reader.Complaints().empty()) return {.status = reader.Complaints()};
  return RunModel(inputs, scratch);
}

void AppendResults(std::string& out, const RowResult& result, char delimiter) {
  std::array<char, Sila::kResultCount*(1 + kNumberRoom) + 1> text{};
  char* end = text.data();
  for (const std::optional<double>& value : result.values) {
    *end++ = delimiter;
    if (value) end = WriteShortest(end, *value);
  }
  *end++ = delimiter;
  out.append(text.data(), end);
  out += result.status;
}

}  // namespace Cohort
