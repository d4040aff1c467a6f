// From the fields of a row to the sources of its errors, and from the trials to its fields.
#include "batch/row_uncertainty.h"

#include "batch/field_text.h"
#include "case/number_text.h"
#include "columns/row_status.h"

namespace Cohort {

namespace {

using Uncertainty::HipReading;
using Uncertainty::ReadingError;

constexpr std::size_t kFieldsPerResult = 3;

// Reads the uncertainties of one row.
class SpreadReader {
 public:
  SpreadReader(std::span<const std::string_view> fields, const UncertaintyColumns& columns,
               std::string& complaints)
      : fields_(fields), columns_(columns), complaints_(complaints) {}

  // The row's own u in the held unit, or the default.
  ReadingError ErrorOf(const Sila::MeasurementRow& row, ReadingError byDefault) const {
    const std::optional<UncertaintyColumn>& column = columns_.u[Sila::IndexOf(row.id)];
    if (!column || IsMissing(fields_[column->field])) return byDefault;
    const std::string name = UncertaintyName(row.key);
    if (!column->unit) {
      AddFault(complaints_, name, kUnitDoesNotFit);
      return {};
    }
    const double u = ReadU(name, fields_[column->field]);
    return {Sila::ToHeld(row.kind(), *column->unit, u), byDefault.distribution};
  }

  // Without a factor and without its error lengths are true.
  std::optional<Uncertainty::Source> Magnification(ReadingError byDefault) const {
    const std::string name = UncertaintyName(kMagnificationName);
    Uncertainty::Source factor{1.0, byDefault.u, byDefault.distribution};
    if (columns_.magnificationU && !IsMissing(fields_[*columns_.magnificationU])) {
      factor.u = ReadU(name, fields_[*columns_.magnificationU]);
    }
    if (columns_.magnification) factor.value = ReadFactor(fields_[*columns_.magnification]);
    if (!columns_.magnification && factor.u == 0.0) return std::nullopt;
    return factor;
  }

 private:
  double ReadU(std::string_view name, std::string_view text) const {
    const std::optional<double> u = Vse::ReadNumber(text);
    AddFaultIfAny(name, u ? FaultOfUncertainty(*u)
                          : Describe(Vse::IsTooLarge(text) ? NumberFault::TooLarge
                                                           : NumberFault::NotANumber));
    return u.value_or(0.0);
  }

  double ReadFactor(std::string_view text) const {
    const std::optional<double> factor = Vse::ReadNumber(text);
    AddFaultIfAny(kMagnificationName, factor ? FaultOfMagnification(*factor)
                                             : Describe(IsMissing(text) ? NumberFault::Missing
                                                                        : NumberFault::NotANumber));
    return factor.value_or(1.0);
  }

  void AddFaultIfAny(std::string_view name, std::string_view fault) const {
    if (!fault.empty()) AddFault(complaints_, name, fault);
  }

  std::span<const std::string_view> fields_;
  const UncertaintyColumns& columns_;
  std::string& complaints_;
};

void SetFields(const Uncertainty::Spread& spread, std::span<std::optional<double>> fields) {
  fields[0] = spread.u;
  if (!spread.interval) return;
  fields[1] = spread.interval->low;
  fields[2] = spread.interval->high;
}

}  // namespace

RowUncertainty::RowUncertainty(const UncertaintyOptions& options)
    : settings_(options.settings),
      defaults_(options.defaults ? ReadUncertaintyDefaults(*options.defaults)
                                 : UncertaintyDefaults()),
      points_(Uncertainty::kReadingSources, options.seed),
      names_(AddedUncertaintyNames(options.settings.coverage)) {
  settings_.budget = options.budget.has_value();
}

HipReading RowUncertainty::Read(std::span<const std::string_view> fields, const Columns& columns,
                                const Sila::HipInputs& inputs, std::string& complaints) const {
  const SpreadReader reader(fields, columns.uncertainty, complaints);
  HipReading reading{.values = inputs};
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    const std::size_t index = Sila::IndexOf(row.id);
    reading.errors[index] = reader.ErrorOf(row, defaults_.errors[index]);
  }
  reading.magnification = reader.Magnification(defaults_.magnification);
  return reading;
}

RowSpread RowUncertainty::Nothing() {
  RowSpread row;
  row.fields.resize(kFieldsPerResult * Sila::kResultCount);
  row.budget.resize(Sila::kResultCount);
  return row;
}

RowSpread RowUncertainty::Compute(const HipReading& reading) const {
  const auto hip = Uncertainty::ComputeHipUncertainty(reading, points_, settings_);
  RowSpread row = Nothing();
  const std::span<std::optional<double>> fields(row.fields);
  for (std::size_t i = 0; i < Sila::kResultCount; ++i) {
    if (!hip.results[i]) continue;
    SetFields(hip.results[i]->spread, fields.subspan(i * kFieldsPerResult, kFieldsPerResult));
    row.budget[i] = hip.results[i]->spread.budget;
  }
  row.trials = hip.trials;
  row.ok = hip.ok;
  const bool hasIntervals = hip.completeness != Uncertainty::Completeness::TooManyRefused;
  row.remark = RemarkOn({hip.trials, hip.ok, hasIntervals, hip.settled});
  return row;
}

}  // namespace Cohort
