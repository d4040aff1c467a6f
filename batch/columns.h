// What the header row says: where the measures stand, and in which units.
#pragma once

#include <QStringView>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "case/case_entries.h"

namespace Cohort {

// What is read of each hip: the measures, in their order, and behind them the body weight.
inline constexpr std::size_t kBodyWeight = kMeasureCount;
inline constexpr std::size_t kInputCount = kMeasureCount + 1;
inline constexpr std::array<std::string_view, kInputCount> kInputNames = {
    "lizm", "xizm", "zizm", "Cizm", "Hizm", "zasuk", "thetaCE", "headRadius", "bodyWeight"};

// The columns that the program adds, in their order.
inline constexpr std::array<std::string_view, 6> kResultNames = {"rWb",    "thetaR", "thetaPol",
                                                                 "pmaxWb", "pmax",   "status"};

struct InputColumn {
  std::size_t field = 0;  // counted from 0
  QStringView unit;       // one of the texts that Vse::HeldValue knows; the weight's is empty
};

struct Columns {
  char delimiter = ',';
  std::vector<std::string> names;  // every column's, quotes undone
  // Where each input stands; only the body weight's may be missing.
  std::array<std::optional<InputColumn>, kInputCount> inputs;
};

// The text behind a UTF-8 byte order mark, which some programs put before a header.
std::string_view WithoutByteOrderMark(std::string_view text);

// Reads a header row given without its line end. A byte order mark is passed over. Without a
// delimiter, that one of comma, semicolon and tab is taken under which the most measures are found.
// Throws CohortError with a sentence that names neither file nor row: a broken quote, an unknown
// unit, a measure that is missing or there twice, a column named like one of the results.
Columns ReadColumns(std::string_view header, std::optional<char> delimiter);

// Whether a row is meant as a header, complete or not: it names two measures or more.
bool LooksLikeHeader(std::string_view row);

}  // namespace Cohort
