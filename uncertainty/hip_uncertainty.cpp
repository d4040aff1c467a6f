// From readings to the inputs of hips, and from trials back to results.
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
  Column reciprocal = {};
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

void PointAtComputed(HipTrials& hip) {
  for (std::size_t i = 0; i < hip.columns.size(); ++i) hip.columns[i] = &hip.computed[i];
}

BlockModel ModelOf(const HipMap& map) {
  return [&map, hip = HipTrials{}](std::span<const Column> sources, std::size_t trials,
                                   std::span<Column> results) mutable {
    PointAtComputed(hip);
    map(sources, trials, hip);
    ComputeHips(hip.columns, trials, results.first<Sila::kResultCount>());
  };
}

// The difference of two refused trials would not be a number.
void Subtract(const Column& first, std::size_t trials, Column& second) {
  for (std::size_t k = 0; k < trials; ++k) {
    const bool refused = first.at[k] == kRefused || second.at[k] == kRefused;
    second.at[k] = refused ? kRefused : second.at[k] - first.at[k];
  }
}

BlockModel ModelOf(const HipPairMap& map) {
  using Results = std::array<Column, Sila::kResultCount>;
  return
      [&map, hips = std::array<HipTrials, 2>{}, first = Results{}](
          std::span<const Column> sources, std::size_t trials, std::span<Column> results) mutable {
        for (HipTrials& hip : hips) PointAtComputed(hip);
        map(sources, trials, hips);
        ComputeHips(hips[0].columns, trials, first);
        ComputeHips(hips[1].columns, trials, results.first<Sila::kResultCount>());
        for (std::size_t i = 0; i < first.size(); ++i) Subtract(first[i], trials, results[i]);
      };
}

// What the model itself gives, by Sila::Result; nothing for what needs a weight when there is none.
using Estimates = std::array<std::optional<double>, Sila::kResultCount>;

Sila::HipOutcome ComputeEstimates(const Sila::HipInputs& inputs, Estimates& estimates) {
  Sila::HipState state;
  const Sila::HipOutcome outcome = Sila::ComputeHip(inputs, state);
  for (const Sila::ResultRow& row : Sila::kResults) {
    if (row.needsWeight && !inputs.bodyWeight) continue;
    estimates[IndexOf(row.id)] = row.value(state.results);
  }
  return outcome;
}

// The vectors' value for the readings differs from the model's own in its last digits: where no
// source moves a result, both ends are the estimate.
void SetEstimate(double estimate, Spread& spread) {
  if (spread.u != 0.0 || !spread.interval) return;
  if (spread.interval->low == spread.interval->high) spread.interval = {estimate, estimate};
}

HipUncertainty Collect(const Estimates& estimates, Propagated propagated) {
  HipUncertainty hip;
  hip.trials = propagated.trials;
  hip.ok = propagated.ok;
  hip.settled = propagated.settled;
  hip.completeness = propagated.completeness;
  for (std::size_t i = 0; i < estimates.size(); ++i) {
    if (!estimates[i]) continue;
    SetEstimate(*estimates[i], propagated.results[i]);
    hip.results[i] = HipResultUncertainty{*estimates[i], std::move(propagated.results[i])};
  }
  return hip;
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
  Estimates estimates;
  const Sila::HipOutcome outcome = ComputeEstimates(inputs, estimates);
  if (outcome != Sila::HipOutcome::Ok) return {.outcome = outcome};
  return Collect(estimates, Propagate(sources, ModelOf(map), Sila::kResultCount, points, settings));
}

HipUncertainty ComputeHipDifference(const std::array<Sila::HipInputs, 2>& inputs,
                                    std::span<const Source> sources, const HipPairMap& map,
                                    const Points& points, const Settings& settings) {
  std::array<Estimates, 2> estimates;
  for (std::size_t side = 0; side < inputs.size(); ++side) {
    const Sila::HipOutcome outcome = ComputeEstimates(inputs[side], estimates[side]);
    if (outcome != Sila::HipOutcome::Ok) return {.outcome = outcome};
  }
  Estimates differences;
  for (std::size_t i = 0; i < differences.size(); ++i) {
    if (estimates[0][i] && estimates[1][i]) differences[i] = *estimates[1][i] - *estimates[0][i];
  }
  return Collect(differences,
                 Propagate(sources, ModelOf(map), Sila::kResultCount, points, settings));
}

}  // namespace Uncertainty
