// What a row's status says: of the model's outcome, and of measurements that cannot be used.
#pragma once

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

// Stricter than the case form, which leaves these to the model.
constexpr bool MustBeAboveZero(Sila::Kind kind) {
  return kind == Sila::Kind::Radius || kind == Sila::Kind::Weight;
}

// The status of a row without any measurement.
inline constexpr std::string_view kNoMeasurements = "error: the row holds no measures";

// Adds one fault to a status: "error: lizm is missing and headRadius must be greater than 0".
void AddFault(std::string& status, const Sila::MeasurementRow& row, NumberFault fault);
void AddFault(std::string& status, std::string_view column, std::string_view what);

}  // namespace Cohort
