// Titles of columns that are not used, but whose names are close to one that would be.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/vocabulary.h"

namespace Cohort {

struct NearTitle {
  Sila::Measurement measurement = {};  // the one that was perhaps meant
  bool sameLetters = false;            // the names differ in nothing but blanks, signs and units
};

// What a title that names no measurement is close to. Only letters and digits are compared, without
// a unit after the name. The title is close to a measurement with the same letters ("body_weight",
// "theta CE", "thetaCE.deg."), to the one of which it is another name ("weight"), and to one of
// five letters or more from which it is one letter off, of ten two ("zazuk", "bodyweigth").
std::optional<NearTitle> FindNearTitle(std::string_view text);

// The column of an uncertainty or of the magnification that was perhaps meant by a title that names
// none: "lizm u", "u(lizm)", "weight_sd" or "bodyWeigth_u" may be meant for one, by the rules
// above.
std::optional<std::string> FindNearUncertainty(std::string_view text);

}  // namespace Cohort
