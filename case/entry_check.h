// The one check that turns entries into case data: the boxes of the form, a case file, kept work
// and the rows of a cohort all pass it. What it finds wrong is a value; whoever asked shows it in
// their own way.
#pragma once

#include <QLocale>
#include <QString>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

#include "case/case_entries.h"
#include "case/case_record.h"
#include "case/number_text.h"
#include "model/vocabulary.h"

namespace Vse {

enum class FaultKind {
  NotANumber,
  TooLarge,       // above 1E+300, which a file could not give back
  AngleTooLarge,  // more than a full turn, given in radians
  NotADate
};

// A measurement in its held unit, or what is wrong with it. `unit` is one of the kind's.
using CheckedNumber = std::variant<double, FaultKind>;
// In this header since a cohort checks every field: most of a call's time was its own.
inline CheckedNumber CheckMeasurement(Sila::Kind kind, std::string_view text, Sila::Unit unit) {
  const std::optional<double> number = ReadNumber(text);
  if (!number) return IsTooLarge(text) ? FaultKind::TooLarge : FaultKind::NotANumber;
  if (unit == Sila::Unit::Radian && *number > Sila::kLargestRadians) {
    return FaultKind::AngleTooLarge;
  }
  return Sila::ToHeld(kind, unit, *number);
}

// Whether a date of birth is accepted: an empty text, "Unknown", a valid date in this locale, and a
// whole year from 1001 to 2999.
bool IsDateOfBirth(const QString& text, const QLocale& locale);

struct Fault {
  FaultKind kind = FaultKind::NotANumber;
  std::optional<Sila::Measurement> measurement;  // empty: the date of birth
};

// Either the case, or every fault in the order of the boxes: the measurements, the body weight, the
// date of birth. An empty body weight is not known. With `weightUnknown` one that is typed counts
// as not known, too, but must be a number all the same.
struct CheckedCase {
  std::optional<CaseData> data;
  std::vector<Fault> faults;
};
CheckedCase CheckEntries(const CaseEntries& entries, bool weightUnknown, const QLocale& locale);

}  // namespace Vse
