// From the readings of a hip to its inputs, and from trials back to results.
#include "uncertainty/hip_uncertainty.h"

#include <limits>
#include <utility>
#include <vector>

namespace Uncertainty {

namespace {

// The sources of a reading, in the order of the header.
std::vector<Source> SourcesOf(const HipReading& reading) {
  std::vector<Source> sources;
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    const ReadingError& error = reading.errors[IndexOf(row.id)];
    sources.push_back({ValueOf(reading.values, row), error.u, error.distribution});
  }
  if (!reading.values.bodyWeight) sources[IndexOf(Sila::Measurement::BodyWeight)].u = 0.0;
  if (reading.magnification) sources.push_back(*reading.magnification);
  return sources;
}

void TakeSources(std::span<const Column> sources, std::size_t /*trials*/, HipTrials& hip) {
  for (std::size_t i = 0; i < hip.columns.size(); ++i) hip.columns[i] = &sources[i];
}

// Lengths as on the picture to true ones. A magnification that is not above 0 leaves lengths that
// are no numbers, which the model refuses.
void DivideLengths(std::span<const Column> sources, std::size_t trials, HipTrials& hip) {
  TakeSources(sources, trials, hip);
  Column reciprocal;
  for (std::size_t k = 0; k < trials; ++k) {
    const double factor = sources[kMagnification].at[k];
    reciprocal.at[k] = factor > 0.0 ? 1.0 / factor : std::numeric_limits<double>::quiet_NaN();
  }
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    if (!IsLength(row)) continue;
    const std::size_t i = IndexOf(row.id);
    for (std::size_t k = 0; k < trials; ++k) {
      hip.computed[i].at[k] = sources[i].at[k] * reciprocal.at[k];
    }
    hip.columns[i] = &hip.computed[i];
  }
}

BlockModel ModelOf(const HipMap& map) {
  return [&map](std::span<const Column> sources, std::size_t trials, std::span<Column> results) {
    HipTrials hip;
    for (std::size_t i = 0; i < hip.columns.size(); ++i) hip.columns[i] = &hip.computed[i];
    map(sources, trials, hip);
    ComputeHips(hip.columns, trials, results.first<Sila::kResultCount>());
  };
}

// The vectors' value for the readings differs from the model's own in its last digits: where no
// source moves a result, both ends are the estimate.
void SetEstimate(double estimate, Spread& spread) {
  if (spread.u != 0.0 || !spread.interval) return;
  if (spread.interval->low == spread.interval->high) spread.interval = {estimate, estimate};
}

}  // namespace

Sila::HipInputs TrueInputs(const HipReading& reading) {
  Sila::HipInputs inputs = reading.values;
  if (!reading.magnification) return inputs;
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    if (!IsLength(row)) continue;
    SetValue(inputs, row, ValueOf(inputs, row) / reading.magnification->value);
  }
  return inputs;
}

HipUncertainty ComputeHipUncertainty(const HipReading& reading, const Points& points,
                                     const Settings& settings) {
  return ComputeHipUncertainty(TrueInputs(reading), SourcesOf(reading),
                               reading.magnification ? DivideLengths : TakeSources, points,
                               settings);
}

HipUncertainty ComputeHipUncertainty(const Sila::HipInputs& inputs, std::span<const Source> sources,
                                     const HipMap& map, const Points& points,
                                     const Settings& settings) {
  HipUncertainty hip;
  Sila::HipState state;
  hip.outcome = Sila::ComputeHip(inputs, state);
  if (hip.outcome != Sila::HipOutcome::Ok) return hip;
  Propagated propagated = Propagate(sources, ModelOf(map), Sila::kResultCount, points, settings);
  hip.trials = propagated.trials;
  hip.ok = propagated.ok;
  hip.settled = propagated.settled;
  hip.completeness = propagated.completeness;
  for (const Sila::ResultRow& row : Sila::kResults) {
    if (row.needsWeight && !inputs.bodyWeight) continue;
    Spread& spread = propagated.results[IndexOf(row.id)];
    const double estimate = row.value(state.results);
    SetEstimate(estimate, spread);
    hip.results[IndexOf(row.id)] = HipResultUncertainty{estimate, std::move(spread)};
  }
  return hip;
}

}  // namespace Uncertainty
