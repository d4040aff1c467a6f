// Entries into held units, with everything that is wrong about them.
#include "case/entry_check.h"

#include <cmath>

#include "case/case_conversion.h"
#include "case/case_texts.h"
#include "case/date_text.h"
#include "case/number_text.h"

namespace Vse {

namespace {

// Gathers what is wrong; a faulty measurement is 0 and never gets out.
class Check {
 public:
  explicit Check(CheckedCase& checked) : checked_(checked) {}

  double Number(const Sila::MeasurementRow& row, const QString& text, Sila::Unit unit) {
    const CheckedNumber number = CheckMeasurement(row.kind(), text.trimmed().toStdString(), unit);
    if (const auto* fault = std::get_if<FaultKind>(&number)) Add(*fault, row.id);
    const auto* held = std::get_if<double>(&number);
    return held != nullptr ? *held : 0.0;
  }

  void Add(FaultKind kind, std::optional<Sila::Measurement> measurement) {
    checked_.faults.push_back({kind, measurement});
  }

 private:
  CheckedCase& checked_;
};

void CheckBodyWeight(const CaseEntries& entries, bool weightUnknown, Check& check,
                     Sila::HipInputs& inputs) {
  if (entries.bodyWeight.isEmpty()) return;
  const Sila::MeasurementRow& row = Sila::RowOf(Sila::Measurement::BodyWeight);
  const double weight = check.Number(row, entries.bodyWeight, Sila::Unit::Kilogram);
  if (!weightUnknown) inputs.bodyWeight = Sila::Kilograms{weight};
}

bool IsYear(const QString& text) {
  const std::optional<double> year = ReadNumber(text.trimmed().toStdString());
  return year && *year == std::trunc(*year) && *year / 1000.0 > 1.0 && *year / 1000.0 < 3.0;
}

}  // namespace

bool IsDateOfBirth(const QString& text, const QLocale& locale) {
  return text.trimmed().isEmpty() || text == kUnknown || IsValidDate(text, locale) || IsYear(text);
}

CheckedCase CheckEntries(const CaseEntries& entries, bool weightUnknown, const QLocale& locale) {
  CheckedCase checked;
  CaseData data;
  Check check(checked);
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    const MeasurementEntry& entry = entries[row.id];
    Sila::SetValue(data.inputs, row, check.Number(row, entry.text, entry.unit));
  }
  CheckBodyWeight(entries, weightUnknown, check, data.inputs);
  if (!IsDateOfBirth(entries.dateOfBirth, locale)) check.Add(FaultKind::NotADate, std::nullopt);
  if (!checked.faults.empty()) return checked;
  data.patient = PatientOf(entries, data.weightUnknown());
  checked.data = std::move(data);
  return checked;
}

}  // namespace Vse
