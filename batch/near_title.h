// Titles of columns that are not used, but whose names are close to one that would be. Free of Qt.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace Cohort {

struct NearTitle {
  std::size_t input = 0;     // the one that was perhaps meant
  bool sameLetters = false;  // the names differ in nothing but blanks, signs and units
};

// What a title that names no input is close to. Letters and digits are looked at alone, a unit
// behind the name aside. The title is close to an input with the same letters ("body_weight",
// "theta CE", "thetaCE.deg."), to the one of which it is another name ("weight"), and to one of
// five letters or more from which it is one letter off, of ten two ("zazuk", "bodyweigth").
std::optional<NearTitle> FindNearTitle(std::string_view text);

}  // namespace Cohort
