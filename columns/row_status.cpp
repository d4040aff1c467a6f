// The sentences of a status, none of which holds a delimiter.
#include "columns/row_status.h"

#include <cmath>

namespace Cohort {

std::string_view StatusOf(Sila::HipOutcome outcome) {
  switch (outcome) {
    case Sila::HipOutcome::OutOfRange:
      return "refused: resultant force outside the model's range";
    case Sila::HipOutcome::NoPole:
      return "refused: no stress pole for this centre-edge angle and force";
    case Sila::HipOutcome::DivisionByZero:
      return "refused: the contact stress is not a finite number";
    case Sila::HipOutcome::Ok:
      break;
  }
  return "ok";
}

std::string_view Describe(NumberFault fault) {
  switch (fault) {
    case NumberFault::Missing:
      return "is missing";
    case NumberFault::TooLarge:
      return "is too large";
    case NumberFault::AngleTooLarge:
      return "is more than 2 pi radians";
    case NumberFault::NotAboveZero:
      return "must be greater than 0";
    case NumberFault::NotANumber:
      break;
  }
  return "is not a number";
}

std::optional<NumberFault> FaultOf(Sila::Kind kind, Sila::Unit unit, double given) {
  if (std::isnan(given)) return NumberFault::Missing;
  if (std::isinf(given)) return NumberFault::NotANumber;
  if (std::abs(given) > Sila::kLargestNumber) return NumberFault::TooLarge;
  if (unit == Sila::Unit::Radian && given > Sila::kLargestRadians) {
    return NumberFault::AngleTooLarge;
  }
  const bool tooSmall = MustBeAboveZero(kind) && Sila::ToHeld(kind, unit, given) <= 0.0;
  return tooSmall ? std::optional(NumberFault::NotAboveZero) : std::nullopt;
}

std::string_view FaultOfUncertainty(double u) {
  if (std::isinf(u)) return Describe(NumberFault::NotANumber);
  if (std::abs(u) > Sila::kLargestNumber) return Describe(NumberFault::TooLarge);
  return u < 0.0 ? "must not be negative" : "";
}

std::string_view FaultOfMagnification(double factor) {
  if (std::isnan(factor)) return Describe(NumberFault::Missing);
  if (std::abs(factor) > Sila::kLargestNumber) return Describe(NumberFault::NotANumber);
  return factor <= 0.0 ? Describe(NumberFault::NotAboveZero) : "";
}

void AddFault(std::string& status, const Sila::MeasurementRow& row, NumberFault fault) {
  AddFault(status, row.key, Describe(fault));
}

void AddFault(std::string& status, std::string_view column, std::string_view what) {
  status += status.empty() ? "error: " : " and ";
  status += column;
  status += ' ';
  status += what;
}

std::string RemarkOn(const TrialCounts& counts) {
  const std::string trials = std::to_string(counts.trials) + " trials";
  std::string remark;
  if (counts.ok < counts.trials) {
    remark = std::to_string(counts.trials - counts.ok) + " of " + trials + " refused and so no " +
             (counts.hasIntervals ? "u" : "interval");
  }
  if (!counts.settled) {
    remark += (remark.empty() ? "" : " and ") + ("intervals not settled after " + trials);
  }
  return remark;
}

}  // namespace Cohort
