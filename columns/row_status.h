// What a row's status says: of the model's outcome, of measurements and uncertainties that cannot
// be used, and of refused trials.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "model/hip_model.h"
#include "model/vocabulary.h"

namespace Cohort {

// "ok", or "refused: …" with the model's reason.
std::string_view StatusOf(Sila::HipOutcome outcome);

enum class NumberFault {
  Missing,
  NotANumber,
  TooLarge,       // above Sila::kLargestNumber in size
  AngleTooLarge,  // more than a full turn, given in radians
  NotAboveZero    // a radius or weight
};

// What is wrong, behind the measurement's name: "is missing".
std::string_view Describe(NumberFault fault);

// What is wrong with a number in one of the kind's units. A NaN is missing.
std::optional<NumberFault> FaultOf(Sila::Kind kind, Sila::Unit unit, double given);

// What is wrong with a standard uncertainty, behind its name; empty when nothing is. A NaN is
// missing, which is not wrong.
std::string_view FaultOfUncertainty(double u);
inline constexpr std::string_view kUnitDoesNotFit = "is in a unit that does not fit";

// The same for a magnification; here a NaN is wrong.
std::string_view FaultOfMagnification(double factor);

// Stricter than the case form, which leaves these to the model.
constexpr bool MustBeAboveZero(Sila::Kind kind) {
  return kind == Sila::Kind::Radius || kind == Sila::Kind::Weight;
}

// The status of a row without any measurement.
inline constexpr std::string_view kNoMeasurements = "error: the row holds no measures";

// Adds one fault to a status: "error: lizm is missing and headRadius must be greater than 0".
void AddFault(std::string& status, const Sila::MeasurementRow& row, NumberFault fault);
void AddFault(std::string& status, std::string_view column, std::string_view what);

// What became of the trials of a row with uncertainties.
struct TrialCounts {
  std::size_t trials = 0;
  std::size_t ok = 0;         // those with an answer
  bool hasIntervals = false;  // not taken away by too many refused ones
  bool settled = true;        // false when the intervals still moved at the last trial
};

// What then stands behind "ok": "3 of 8192 trials refused and so no u"; empty where every trial has
// an answer and the intervals are settled.
std::string RemarkOn(const TrialCounts& counts);

}  // namespace Cohort
