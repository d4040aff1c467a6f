// What the header row says: where the measures stand, and in which units.
#pragma once

#include <QStringView>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "batch/column_title.h"
#include "case/case_entries.h"

namespace Cohort {

// The measures stand in the order of the form, the body weight behind them.
static_assert(kInputCount == kMeasureCount + 1);

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
  // Sentences about columns that are not used although their names are close to one that is.
  std::vector<std::string> remarks;
};

// The text behind a UTF-8 byte order mark, which some programs put before a header.
std::string_view WithoutByteOrderMark(std::string_view text);

// The delimiter that a line such as "sep=;" names; empty for an empty line. Throws CohortError when
// it is not comma, semicolon or tab.
std::optional<char> ReadSeparatorLine(std::string_view line);

// Reads a header row given without its line end. A byte order mark is passed over. Without a
// delimiter, that one of comma, semicolon and tab is taken under which the most measures are found.
// Names are found without regard to case, blanks around them and invisible characters. Throws
// CohortError with a sentence that names neither file nor row: a broken quote, a measure's unit
// that is not known, a measure that is missing or there twice, a column named like one of the
// results. A body weight whose unit is not known is not used, which is remarked on.
Columns ReadColumns(std::string_view header, std::optional<char> delimiter);

// Whether two tables have the same columns in the same order, their names compared as above.
bool HaveSameNames(const Columns& one, const Columns& other);

// Whether a row is meant as a header, complete or not: it names two measures or more, or most of
// them with blanks between, which ReadColumns refuses by name.
bool LooksLikeHeader(std::string_view row);

}  // namespace Cohort
