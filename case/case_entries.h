// The contents of the case form's boxes: the entry texts, as typed or as read from a case file.
#pragma once

#include <QString>
#include <array>
#include <optional>

#include "model/vocabulary.h"

enum class Sex { Male, Female };
enum class HipSide { Left, Right };

// A measurement as it was typed.
struct MeasurementEntry {
  QString text;
  Sila::Unit unit = Sila::Unit::Centimetre;  // one of those of its kind
  bool operator==(const MeasurementEntry&) const = default;
};

struct CaseEntries {
  QString surname;
  QString firstName;
  std::optional<Sex> sex;
  QString dateOfBirth;
  QString bodyWeight;  // kg; empty when it is not known
  std::optional<HipSide> hip;
  QString comments;  // lines end with LF
  std::array<MeasurementEntry, Sila::kRadiographCount> measurements;

  MeasurementEntry& operator[](Sila::Measurement id) { return measurements[Sila::IndexOf(id)]; }
  const MeasurementEntry& operator[](Sila::Measurement id) const {
    return measurements[Sila::IndexOf(id)];
  }
  bool operator==(const CaseEntries&) const = default;
};

namespace Vse {

// A text for a box of one line: every run of line ends and other control characters is one blank,
// and a text that held any is trimmed. Any other text stays as it is.
QString OneLine(const QString& text);

// A unit as the form's lists and kept work write it: the degree sign is between blanks.
QStringView UnitText(Sila::Unit unit);

// The unit of this kind with that text; empty when there is none.
std::optional<Sila::Unit> UnitOf(Sila::Kind kind, QStringView text);

}  // namespace Vse
