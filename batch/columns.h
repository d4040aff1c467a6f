// What the header row says: where the measures stand, and in which units.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Cohort {

enum class Measure { Lizm, Xizm, Zizm, Cizm, Hizm, Zasuk, ThetaCE, HeadRadius, BodyWeight };

inline constexpr std::size_t kMeasures = 9;

// The measures' column names, in the order of Measure.
inline constexpr std::array<std::string_view, kMeasures> kMeasureNames = {
    "lizm", "xizm", "zizm", "Cizm", "Hizm", "zasuk", "thetaCE", "headRadius", "bodyWeight"};

// The columns that the program adds, in their order.
inline constexpr std::array<std::string_view, 6> kResultNames = {"rWb",    "thetaR", "thetaPol",
                                                                 "pmaxWb", "pmax",   "status"};

enum class Unit { Centimetre, Millimetre, Metre, Degree, Radian, Kilogram };

struct MeasureColumn {
  std::size_t field = 0;  // counted from 0
  Unit unit = Unit::Centimetre;
};

struct Columns {
  char delimiter = ',';
  std::vector<std::string> names;  // every column's, quotes undone
  // Where each measure stands; only the body weight's may be missing.
  std::array<std::optional<MeasureColumn>, kMeasures> measures;
};

// Reads a header row given without its line end. A byte order mark is passed over. Without a
// delimiter, that one of comma, semicolon and tab is taken under which the most measures are found.
// Throws CohortError with a sentence that names neither file nor row: a broken quote, an unknown
// unit, a measure that is missing or there twice, a column named like one of the results.
Columns ReadColumns(std::string_view header, std::optional<char> delimiter);

}  // namespace Cohort
