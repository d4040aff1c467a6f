// Checks, converts and computes as the case form does, so that form and table give the same digits.
#include "batch/row.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <variant>

#include "batch/field_text.h"
#include "batch/shortest_number.h"
#include "case/entry_check.h"
#include "case/number_text.h"
#include "columns/row_status.h"

namespace Cohort {

namespace {

NumberFault FaultOf(Vse::FaultKind fault) {
  switch (fault) {
    case Vse::FaultKind::TooLarge:
      return NumberFault::TooLarge;
    case Vse::FaultKind::AngleTooLarge:
      return NumberFault::AngleTooLarge;
    case Vse::FaultKind::NotANumber:
    case Vse::FaultKind::NotADate:
      break;
  }
  return NumberFault::NotANumber;
}

// Reads the fields of one row and gathers what is wrong with them.
class RowReader {
 public:
  RowReader(std::span<const std::string_view> fields, const Columns& columns,
            std::string& complaints)
      : fields_(fields), columns_(columns), complaints_(complaints) {}

  // Whether there is any measurement in the row at all.
  bool HasMeasurements() const {
    return std::any_of(Sila::kRadiographMeasurements.begin(), Sila::kRadiographMeasurements.end(),
                       [&](const auto& row) {
                         return columns_[row.id] && !IsBlank(fields_[columns_[row.id]->field]);
                       });
  }

  // Only of use when there are no complaints then.
  Sila::HipInputs Read() {
    Sila::HipInputs inputs;
    const auto read = [&]<std::size_t... i>(std::index_sequence<i...>) {
      (ReadMeasurement<i>(inputs), ...);
    };
    read(std::make_index_sequence<Sila::kMeasurementCount>());
    return inputs;
  }

 private:
  // By a row that the compiler knows, as TakeResult is.
  template <std::size_t measurement>
  void ReadMeasurement(Sila::HipInputs& inputs) {
    constexpr Sila::Kind kind = Sila::kMeasurements[measurement].kind();
    constexpr auto member =
        std::get<static_cast<std::size_t>(kind)>(Sila::kMeasurements[measurement].member);
    const std::optional<InputColumn>& column = columns_.inputs[measurement];
    if (!column) return SetWithout(inputs, Sila::kMeasurements[measurement]);
    const Vse::CheckedNumber number =
        Vse::CheckMeasurement(kind, fields_[column->field], column->unit);
    const double* const held = std::get_if<double>(&number);
    if (held == nullptr || (MustBeAboveZero(kind) && *held <= 0.0)) {
      return AddFaultOf(number, Sila::kMeasurements[measurement], fields_[column->field]);
    }
    if constexpr (kind == Sila::Kind::Weight) {
      inputs.*member = Sila::Kilograms{*held};
    } else {
      (inputs.*member).value = *held;
    }
  }

  void SetWithout(Sila::HipInputs& inputs, const Sila::MeasurementRow& row) {
    if (row.later) Sila::SetValue(inputs, row, row.later->without);
  }

  void AddFaultOf(const Vse::CheckedNumber& number, const Sila::MeasurementRow& row,
                  std::string_view text) {
    if (std::holds_alternative<double>(number)) {
      AddFault(complaints_, row, NumberFault::NotAboveZero);
    } else if (!IsMissing(text)) {
      AddFault(complaints_, row, FaultOf(std::get<Vse::FaultKind>(number)));
    } else if (row.kind() != Sila::Kind::Weight) {
      AddFault(complaints_, row, NumberFault::Missing);
    }
  }

  std::span<const std::string_view> fields_;
  const Columns& columns_;
  std::string& complaints_;
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
  return serves ? "error: " + std::string(fault) : std::string(kNoMeasurements);
}

// By a row that the compiler knows: a loop would call a function for every result of a hip.
template <std::size_t result>
void TakeResult(const Sila::HipInputs& inputs, const Sila::HipResults& results, RowResult& taken) {
  constexpr Sila::ResultRow row = Sila::kResults[result];
  const bool known =
      (taken.kind == RowKind::Ok || !row.isStress) && (inputs.bodyWeight || !row.needsWeight);
  const double value = row.value(results);
  if (known && std::isfinite(value)) taken.values[result] = value;
}

RowResult RunModel(const Sila::HipInputs& inputs, Sila::HipState& state) {
  const Sila::HipOutcome outcome = Sila::ComputeHip(inputs, state);
  RowResult result;
  result.kind = outcome == Sila::HipOutcome::Ok ? RowKind::Ok : RowKind::Refused;
  result.status = StatusOf(outcome);
  const auto take = [&]<std::size_t... i>(std::index_sequence<i...>) {
    (TakeResult<i>(inputs, state.results, result), ...);
  };
  take(std::make_index_sequence<Sila::kResultCount>());
  return result;
}

// The estimates are the model's for the true lengths, to the last bit.
RowResult ComputeUncertain(std::span<const std::string_view> fields, const HeaderRow& header,
                           const Sila::HipInputs& inputs, std::string& complaints,
                           Sila::HipState& state) {
  const Uncertainty::HipReading reading =
      header.uncertainty->Read(fields, header.columns, inputs, complaints);
  if (!complaints.empty()) return {.status = complaints};
  RowResult result = RunModel(Uncertainty::TrueInputs(reading), state);
  if (result.kind != RowKind::Ok) return result;
  result.spread = header.uncertainty->Compute(reading);
  if (!result.spread->remark.empty()) result.status += ": " + result.spread->remark;
  return result;
}

RowResult Compute(std::span<const std::string_view> fields, const HeaderRow& header,
                  Sila::HipState& scratch) {
  const Columns& columns = header.columns;
  if (fields.size() != columns.names.size()) return {.status = WrongFieldCount(fields, columns)};
  std::string complaints;
  RowReader reader(fields, columns, complaints);
  if (!reader.HasMeasurements()) return {.status = NoMeasurements(fields, header)};
  const Sila::HipInputs inputs = reader.Read();
  if (header.uncertainty) return ComputeUncertain(fields, header, inputs, complaints, scratch);
  if (!complaints.empty()) return {.status = complaints};
  return RunModel(inputs, scratch);
}

void AppendSpread(std::string& out, const RowSpread& spread, char delimiter) {
  for (const std::optional<double>& value : spread.fields) {
    out += delimiter;
    if (value) AppendNumber(out, *value);
  }
  for (const std::optional<std::size_t>& count : {spread.trials, spread.ok}) {
    out += delimiter;
    if (count) out += std::to_string(*count);
  }
}

}  // namespace

RowResult ComputeRow(std::span<const std::string_view> fields, const HeaderRow& header,
                     Sila::HipState& scratch) {
  RowResult result = Compute(fields, header, scratch);
  if (header.uncertainty && !result.spread) result.spread = header.uncertainty->Nothing();
  return result;
}

void AppendResults(std::string& out, const RowResult& result, char delimiter) {
  std::array<char, Sila::kResultCount*(1 + kNumberRoom)> text{};
  char* end = text.data();
  for (const std::optional<double>& value : result.values) {
    *end++ = delimiter;
    if (value) end = WriteShortest(end, *value);
  }
  out.append(text.data(), end);
  if (result.spread) AppendSpread(out, *result.spread, delimiter);
  out += delimiter;
  out += result.status;
}

}  // namespace Cohort
