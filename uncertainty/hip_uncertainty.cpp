// From the readings of a hip to its inputs, and from trials back to results.
#include "uncertainty/hip_uncertainty.h"

#include <cmath>
#include <limits>
#include <utility>

#include "uncertainty/hip_block.h"

namespace Uncertainty {

namespace {

Sila::HipInputs InputsOf(const HipReading& reading) {
  std::array<double, kHipInputs> in{};
  for (std::size_t i = 0; i < kHipInputs; ++i) {
    in[i] = reading.inputs[i].value;
    if (reading.magnification && kHipInputInfo[i].isLength) in[i] /= reading.magnification->value;
  }
  Sila::HipInputs inputs;
  inputs.force = {.lizm = in[kLizm],
                  .xizm = in[kXizm],
                  .zizm = in[kZizm],
                  .Cizm = in[kCizm],
                  .Hizm = in[kHizm],
                  .zasuk = in[kZasuk],
                  .bodyWeight = in[kBodyWeight]};
  inputs.thetaCE = in[kThetaCE];
  inputs.headRadius = in[kHeadRadius];
  return inputs;
}

HipColumns ColumnsOf(std::span<const Column> sources) {
  HipColumns columns{};
  for (std::size_t i = 0; i < kHipInputs; ++i) columns[i] = &sources[i];
  return columns;
}

// Lengths as on the picture to true ones. A magnification that is not above 0 leaves lengths that
// are no numbers, which the model refuses.
void DivideLengths(const Column& magnification, std::size_t trials, HipColumns& columns,
                   std::array<Column, kHipInputs>& lengths) {
  Column reciprocal;
  for (std::size_t k = 0; k < trials; ++k) {
    const double factor = magnification.at[k];
    reciprocal.at[k] = factor > 0.0 ? 1.0 / factor : std::numeric_limits<double>::quiet_NaN();
  }
  for (std::size_t i = 0; i < kHipInputs; ++i) {
    if (!kHipInputInfo[i].isLength) continue;
    for (std::size_t k = 0; k < trials; ++k) {
      lengths[i].at[k] = columns[i]->at[k] * reciprocal.at[k];
    }
    columns[i] = &lengths[i];
  }
}

// The sources of a reading, in the order of the header.
std::vector<Source> SourcesOf(const HipReading& reading) {
  std::vector<Source> sources(reading.inputs.begin(), reading.inputs.end());
  if (!reading.weightKnown) sources[kBodyWeight].u = 0.0;
  if (reading.magnification) sources.push_back(*reading.magnification);
  return sources;
}

BlockModel ModelOf(bool magnified) {
  if (!magnified) {
    return [](std::span<const Column> sources, std::size_t trials, std::span<Column> results) {
      ComputeHips(ColumnsOf(sources), trials, results.first<kHipResults>());
    };
  }
  return [](std::span<const Column> sources, std::size_t trials, std::span<Column> results) {
    std::array<Column, kHipInputs> lengths;
    HipColumns columns = ColumnsOf(sources);
    DivideLengths(sources[kMagnification], trials, columns, lengths);
    ComputeHips(columns, trials, results.first<kHipResults>());
  };
}

std::array<double, kHipResults> EstimatesOf(const Sila::HipState& state) {
  return {state.force.rWb, state.force.thetaR, state.stress.thetaPol, state.stress.pmaxWb,
          state.stress.pmax};
}

// The vectors' value for the readings differs from the model's own in its last digits: where no
// source moves a result, both ends are the estimate.
void SetEstimate(double estimate, Spread& spread) {
  if (spread.u != 0.0 || !spread.interval) return;
  if (spread.interval->low == spread.interval->high) spread.interval = {estimate, estimate};
}

}  // namespace

HipUncertainty ComputeHipUncertainty(const HipReading& reading, const Points& points,
                                     const Settings& settings) {
  HipUncertainty hip;
  Sila::HipState state;
  hip.outcome = Sila::ComputeHip(InputsOf(reading), state);
  if (hip.outcome != Sila::HipOutcome::Ok) return hip;
  const std::vector<Source> sources = SourcesOf(reading);
  const BlockModel model = ModelOf(reading.magnification.has_value());
  Propagated propagated = Propagate(sources, model, kHipResults, points, settings);
  hip.trials = propagated.trials;
  hip.ok = propagated.ok;
  hip.settled = propagated.settled;
  hip.completeness = propagated.completeness;
  const std::array<double, kHipResults> estimates = EstimatesOf(state);
  for (std::size_t i = 0; i < kHipResults; ++i) {
    if (i == kPmax && !reading.weightKnown) continue;
    Spread& spread = propagated.results[i];
    SetEstimate(estimates[i], spread);
    hip.results[i] = HipResultUncertainty{estimates[i], std::move(spread)};
  }
  return hip;
}

}  // namespace Uncertainty
