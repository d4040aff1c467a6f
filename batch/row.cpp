// Reads, converts and checks like the case form, so that form and table give the same digits.
#include "batch/row.h"

#include <array>
#include <charconv>
#include <cmath>

#include "case/case_record.h"
#include "case/number_text.h"

namespace Cohort {

namespace {

constexpr std::string_view kOk = "ok";
constexpr std::string_view kOutOfRange = "refused: resultant force outside the model's range";
constexpr std::string_view kNoPole = "refused: no stress pole for this centre-edge angle and force";
constexpr std::string_view kNoStress = "refused: the contact stress is not a finite number";

constexpr double kFullTurn = 2.0 * Sila::kPi;  // rad; a larger angle in radians is a slip

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

double LengthInCm(double value, Unit unit) {
  return unit == Unit::Millimetre ? value / 10.0 : value;
}

double RadiusInMetres(double value, Unit unit) {
  if (unit == Unit::Millimetre) return value / 1000.0;
  return unit == Unit::Centimetre ? value / 100.0 : value;
}

// Reads the fields of one row and gathers what is wrong with them.
class RowReader {
 public:
  RowReader(std::span<const std::string_view> fields, const Columns& columns)
      : fields_(fields), columns_(columns) {}

  double Length(Measure measure) {
    const MeasureColumn& column = Column(measure);
    return LengthInCm(Number(measure, column), column.unit);
  }

  double Angle(Measure measure) {
    const MeasureColumn& column = Column(measure);
    const double value = Number(measure, column);
    if (column.unit == Unit::Degree) return Vse::DegreesToRadians(value);
    if (value > kFullTurn) Complain(measure, "is more than 2 pi radians");
    return value;
  }

  double Radius() {
    constexpr Measure kRadius = Measure::HeadRadius;
    const MeasureColumn& column = Column(kRadius);
    const std::optional<double> value = ReadField(kRadius, column);
    const double radius = RadiusInMetres(value.value_or(1.0), column.unit);
    if (radius <= 0.0) Complain(kRadius, "must be greater than 0");
    return radius;
  }

  // Empty when the weight is not known.
  std::optional<double> BodyWeight() {
    constexpr Measure kWeight = Measure::BodyWeight;
    const auto& column = columns_.measures[static_cast<std::size_t>(kWeight)];
    if (!column || IsBlank(fields_[column->field])) return std::nullopt;
    const std::optional<double> value = ReadField(kWeight, *column);
    if (value && *value <= 0.0) Complain(kWeight, "must be greater than 0");
    return value;
  }

  // What is wrong, as a status; empty when nothing is.
  const std::string& Complaints() const { return complaints_; }

 private:
  const MeasureColumn& Column(Measure measure) const {
    return *columns_.measures[static_cast<std::size_t>(measure)];
  }

  double Number(Measure measure, const MeasureColumn& column) {
    return ReadField(measure, column).value_or(0.0);
  }

  std::optional<double> ReadField(Measure measure, const MeasureColumn& column) {
    const std::string_view text = fields_[column.field];
    const std::optional<double> value = Vse::ReadNumber(text);
    if (!value) Complain(measure, IsBlank(text) ? "is empty" : "is not a number");
    return value;
  }

  void Complain(Measure measure, std::string_view what) {
    complaints_ += complaints_.empty() ? "error: " : " and ";
    complaints_ += kMeasureNames[static_cast<std::size_t>(measure)];
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

std::string WrongFieldCount(std::size_t count, std::size_t expected) {
  return "error: the row has " + std::to_string(count) + (count == 1 ? " field" : " fields") +
         " and the header " + std::to_string(expected);
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

RowResult RunModel(const Sila::HipInputs& inputs, bool weightKnown, Sila::HipState& state) {
  const Sila::HipOutcome outcome = Sila::ComputeHip(inputs, state);
  RowResult result;
  result.kind = outcome == Sila::HipOutcome::Ok ? RowKind::Ok : RowKind::Refused;
  result.status = StatusOf(outcome);
  result.rWb = FiniteOnly(state.force.rWb);
  result.thetaR = FiniteOnly(state.force.thetaR);
  if (outcome != Sila::HipOutcome::Ok) return result;
  result.thetaPol = state.stress.thetaPol;
  result.pmaxWb = state.stress.pmaxWb;
  if (weightKnown) result.pmax = state.stress.pmax;
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
                     Sila::HipState& state) {
  if (fields.size() != columns.names.size()) {
    return BadRow(WrongFieldCount(fields.size(), columns.names.size()));
  }
  RowReader reader(fields, columns);
  Sila::HipInputs inputs;
  inputs.force.lizm = reader.Length(Measure::Lizm);
  inputs.force.xizm = reader.Length(Measure::Xizm);
  inputs.force.zizm = reader.Length(Measure::Zizm);
  inputs.force.Cizm = reader.Length(Measure::Cizm);
  inputs.force.Hizm = reader.Length(Measure::Hizm);
  inputs.force.zasuk = reader.Angle(Measure::Zasuk);
  inputs.thetaCE = reader.Angle(Measure::ThetaCE);
  inputs.headRadius = reader.Radius();
  const std::optional<double> weight = reader.BodyWeight();
  inputs.force.bodyWeight = weight.value_or(Vse::kAssumedBodyWeight);
  if (!reader.Complaints().empty()) return BadRow(reader.Complaints());
  return RunModel(inputs, weight.has_value(), state);
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
