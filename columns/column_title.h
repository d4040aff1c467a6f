// One column's title: which measurement it names, and in which unit.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/vocabulary.h"

namespace Cohort {

// A title taken apart: "Lizm (mm)" is the name "lizm" and the unit "mm". Both are plain names:
// without regard to case, blanks around them and invisible characters.
struct Title {
  std::string name;
  std::optional<std::string> unit;  // what is in square or round brackets after the name
};

Title ReadTitle(std::string_view text);

// The measurement that a title names; its unit may be an unknown one.
std::optional<Sila::Measurement> MeasurementNamed(const Title& title);

// The title's unit, or the measurement's first unit where the title has no brackets. Empty when the
// unit is unknown.
std::optional<Sila::Unit> UnitIn(const Title& title, Sila::Measurement measurement);

// What a header may write for the units of this kind, for messages: "cm, mm".
std::string KnownUnits(Sila::Kind kind);

}  // namespace Cohort
