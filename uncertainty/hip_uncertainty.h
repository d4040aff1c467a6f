// How far the results of one hip can be trusted, given the errors of its readings. The interval
// holds the reading error alone, not the model's own error.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <span>

#include "model/hip_model.h"
#include "uncertainty/hip_block.h"
#include "uncertainty/propagate.h"

namespace Uncertainty {

// The error of one reading, in the held unit of its measurement.
struct ReadingError {
  double u = 0.0;  // standard uncertainty, finite and at least 0
  Distribution distribution = Distribution::Normal;
};

// A hip as it was read: one value and one error a measurement, in its held unit.
struct HipReading {
  // A body weight that is not known has no error, and there is no pmax.
  Sila::HipInputs values;
  std::array<ReadingError, Sila::kMeasurementCount> errors = {};  // by Sila::Measurement
  // Lengths and their u, the radius included, are as on the picture and all divided by this one
  // factor. Without it they are true lengths.
  std::optional<Source> magnification = {};
};

// The sources of a reading are its measurements, by Sila::Measurement, then the magnification.
inline constexpr std::size_t kMagnification = Sila::kMeasurementCount;
inline constexpr std::size_t kReadingSources = kMagnification + 1;

// True for the measurements that a magnification enlarges.
constexpr bool IsLength(const Sila::MeasurementRow& row) {
  return row.kind() == Sila::Kind::Length || row.kind() == Sila::Kind::Radius;
}

// True lengths from those on the picture.
Sila::HipInputs TrueInputs(const HipReading& reading);

// The estimate is the model's own value for the entered numbers, to the last bit.
struct HipResultUncertainty {
  double estimate = 0.0;
  Spread spread;  // budget in the order of the sources or of their parts
};

struct HipUncertainty {
  // Of the entered numbers. If not Ok, nothing else is set.
  Sila::HipOutcome outcome = Sila::HipOutcome::Ok;
  std::size_t trials = 0;
  std::size_t ok = 0;
  bool settled = true;
  Completeness completeness = Completeness::Complete;
  // By Sila::Result; nothing for a result that needs a body weight when there is none.
  std::array<std::optional<HipResultUncertainty>, Sila::kResultCount> results = {};
};

// A trial also counts as refused when its radius, l/2, weight or magnification is not above 0,
// where the formulas would still give a stress, and for what hip_block.h names. The points need
// kReadingSources dimensions.
HipUncertainty ComputeHipUncertainty(const HipReading& reading, const Points& points,
                                     const Settings& settings);

// The measurements of a hip in each trial of a block. A column is one of the sources, or the one in
// `computed` to which it points at first.
struct HipTrials {
  HipColumns columns;
  std::array<Column, Sila::kMeasurementCount> computed;
};

// Sets every measurement from the sources, in the rows [0, trials); a body weight that is not known
// to the assumed one. A measurement that is not a number is refused.
using HipMap =
    std::function<void(std::span<const Column> sources, std::size_t trials, HipTrials& hip)>;

// The same for sources of any kind, of which the caller says how they become measurements: marks on
// a picture, say, each of which moves several. `inputs` is what the map gives for the values of the
// sources; the estimates are the model's for it.
HipUncertainty ComputeHipUncertainty(const Sila::HipInputs& inputs, std::span<const Source> sources,
                                     const HipMap& map, const Points& points,
                                     const Settings& settings);

using HipPairMap = std::function<void(std::span<const Column> sources, std::size_t trials,
                                      std::array<HipTrials, 2>& hips)>;

// The same for what the second of two hips has more than the first, whatever sources they share. A
// trial is refused when either hip is; so is a pair, with the outcome of the first that has none. A
// result needs the weights of both.
HipUncertainty ComputeHipDifference(const std::array<Sila::HipInputs, 2>& inputs,
                                    std::span<const Source> sources, const HipPairMap& map,
                                    const Points& points, const Settings& settings);

}  // namespace Uncertainty
