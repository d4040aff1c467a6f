// Reads the header row of a table: its delimiter, and what its names mean.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "columns/header.h"

namespace Cohort {

class RowUncertainty;

struct HeaderRow {
  Columns columns;
  char delimiter = ',';
  // The field in which this program itself says why a row has no measurements: only where it has
  // written the rows, too.
  std::optional<std::size_t> faultField;
  // How uncertain rows are; belongs to the run. Null in a table without uncertainties.
  const RowUncertainty* uncertainty = nullptr;
};

// The text behind a UTF-8 byte order mark, which some programs put before a header.
std::string_view WithoutByteOrderMark(std::string_view text);

// The separator that a first line such as "sep=;" names, as spreadsheets write it.
std::optional<char> NamedSeparator(std::string_view line);

// The same for a delimiter; empty for an empty line. Throws CohortError when it is not comma,
// semicolon or tab.
std::optional<char> ReadSeparatorLine(std::string_view line);

// Reads a header row given without its line end. A byte order mark is passed over. Without a
// delimiter, that one of comma, semicolon and tab is taken under which the most measurements are
// found. Throws CohortError with a sentence that names neither file nor row: for a broken quote, a
// measurement that is missing, and what FindColumns refuses.
HeaderRow ReadHeaderRow(std::string_view header, std::optional<char> delimiter);

// Whether a row is meant as a header, complete or not: it names two measurements or more, or most
// of them with blanks between, which ReadHeaderRow refuses by name.
bool LooksLikeHeader(std::string_view row);

}  // namespace Cohort
