// Reads, converts and computes as the case form does, so that form and table give the same digits.
#include "batch/row.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "case/case_entries.h"
#include "case/number_text.h"

namespace Cohort {

namespace {

constexpr std::string_view kOk = "ok";
constexpr std::string_view kOutOfRange = "refused: resultant force outside the model's range";
constexpr std::string_view kNoPole = "refused: no stress pole for this centre-edge angle and force";
constexpr std::string_view kNoStress = "refused: the contact stress is not a finite number";

constexpr std::string_view kBlanks = " \t\r\n";

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(kBlanks) == std::string_view::npos;
}

std::string_view WithoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
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

// What is wrong with a field that is no number.
std::string_view FaultOf(std::string_view text) {
  if (IsMissing(text)) return "is missing";
  return Vse::IsTooLarge(text) ? "is too large" : "is not a number";
}

// Reads the fields of one row and gathers what is wrong with them.
class RowReader {
 public:
  RowReader(std::span<const std::string_view> fields, const Columns& columns)
      : fields_(fields), columns_(columns) {}

  // The measure in the record's unit; 0 when it cannot be read.
  double Held(Measure measure) {
    const auto input = static_cast<std::size_t>(measure);
    const QStringView unit = columns_.inputs[input]->unit;
    const std::optional<double> typed = ReadField(input);
    if (!typed) return 0.0;
    if (Vse::IsAngle(measure) && unit == Vse::kRadian && *typed > Vse::kLargestRadians) {
      Complain(input, "is more than 2 pi radians");
    }
    const double held = Vse::HeldValue(measure, *typed, unit);
    if (measure == Measure::HeadRadius) CheckAboveZero(input, held);
    return held;
  }

  // Empty when the weight is not known.
  std::optional<double> BodyWeight() {
    const std::optional<InputColumn>& column = columns_.inputs[kBodyWeight];
    if (!column) return std::nullopt;
    const std::string_view text = fields_[column->field];
    const std::optional<double> weight = Vse::ReadNumber(text);
    if (weight) CheckAboveZero(kBodyWeight, *weight);
    if (!weight && !IsMissing(text)) Complain(kBodyWeight, FaultOf(text));
    return weight;
  }

  // Whether there is any measure in the row at all.
  bool HasMeasures() const {
    const auto holdsOne = [&](const auto& column) { return !IsBlank(fields_[column->field]); };
    return std::any_of(columns_.inputs.begin(), columns_.inputs.begin() + kMeasureCount, holdsOne);
  }

  // What is wrong, as a status; empty when nothing is.
  const std::string& Complaints() const { return complaints_; }

 private:
  std::optional<double> ReadField(std::size_t input) {
    const std::string_view text = fields_[columns_.inputs[input]->field];
    const std::optional<double> value = Vse::ReadNumber(text);
    if (!value) Complain(input, FaultOf(text));
    return value;
  }

  void CheckAboveZero(std::size_t input, double value) {
    if (value <= 0.0) Complain(input, "must be greater than 0");
  }

  void Complain(std::size_t input, std::string_view what) {
    complaints_ += complaints_.empty() ? "error: " : " and ";
    complaints_ += kInputNames[input];
    complaints_ += ' ';
    complaints_ += what;
  }

  std::span<const std::string_view> fields_;
  const Columns& columns_;
  std::string complaints_;
};

std::optional<double> FiniteOnly(double value) {
  return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

RowResult BadRow(std::string status) {
  RowResult result;
  result.status = std::move(status);
  return result;
}

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

// A row without measures often says in a remark why it has none.
std::string NoMeasures(std::span<const std::string_view> fields, const Columns& columns) {
  const auto remark = std::find(columns.names.begin(), columns.names.end(), "remark");
  std::string why = "the row holds no measures";
  if (remark != columns.names.end()) {
    const std::string_view text = fields[static_cast<std::size_t>(remark - columns.names.begin())];
    if (!IsBlank(text) && text.find_first_of(",;\t\"\r\n") == std::string_view::npos) {
      why = text;
    }
  }
  return "error: " + why;
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

RowResult RunModel(CaseRecord& record) {
  const Sila::HipOutcome outcome = Vse::RunModel(record);
  RowResult result;
  result.kind = outcome == Sila::HipOutcome::Ok ? RowKind::Ok : RowKind::Refused;
  result.status = StatusOf(outcome);
  result.rWb = FiniteOnly(record.results.rWb);
  result.thetaR = FiniteOnly(record.results.thetaR);
  if (outcome != Sila::HipOutcome::Ok) return result;
  result.thetaPol = record.results.thetaPol;
  result.pmaxWb = record.results.pmaxWb;
  if (!record.weightUnknown) result.pmax = record.results.pmax;
  return result;
}

void AppendNumber(std::string& out, const std::optional<double>& value) {
  if (!value) return;
  std::array<char, 32> digits{};
  const std::to_chars_result end =
      std::to_chars(digits.data(), digits.data() + digits.size(), *value);
  out.append(digits.data(), end.ptr);
}

}  // namespace

RowResult ComputeRow(std::span<const std::string_view> fields, const Columns& columns,
                     CaseRecord& scratch) {
  if (fields.size() != columns.names.size()) {
    return BadRow(WrongFieldCount(fields, columns));
  }
  RowReader reader(fields, columns);
  if (!reader.HasMeasures()) return BadRow(NoMeasures(fields, columns));
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    const auto measure = static_cast<Measure>(i);
    Vse::SetValue(scratch.geometry, measure, reader.Held(measure));
  }
  const std::optional<double> weight = reader.BodyWeight();
  scratch.weightUnknown = !weight.has_value();
  scratch.bodyWeight = weight.value_or(Vse::kAssumedBodyWeight);
  if (!reader.Complaints().empty()) return BadRow(reader.Complaints());
  return RunModel(scratch);
}

void AppendResults(std::string& out, const RowResult& result, char delimiter) {
  for (const auto& value :
       {result.rWb, result.thetaR, result.thetaPol, result.pmaxWb, result.pmax}) {
    out += delimiter;
    AppendNumber(out, value);
  }
  out += delimiter;
  out += result.status;
}

}  // namespace Cohort
