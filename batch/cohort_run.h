// A whole run: every input in turn, one output.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "batch/row_uncertainty.h"

namespace Cohort {

struct CohortSettings {
  std::vector<std::string> inputs = {"-"};  // paths; "-" is standard input
  std::string output = "-";                 // path; "-" is standard output
  std::optional<char> delimiter;            // found from each header when it is not set
  unsigned threads = 1;                     // at least 1
  std::optional<std::string> encoding;      // of case files that are not UTF-8; else the locale's
  bool table = false;                       // a table for people in place of CSV
  UncertaintyOptions uncertainty;           // of tables that have it
  // Takes sentences about what was passed over, as soon as it is known.
  std::function<void(const std::string&)> remark = [](const std::string&) {};
};

struct CohortTally {
  std::uint64_t hips = 0;  // rows put out
  std::uint64_t bad = 0;   // of these, with bad input
  std::string firstBad;    // the first of them, as a sentence with file and row
};

// Computes all inputs. They must have the same columns; the output has their header once, its line
// end throughout. Throws CohortError for trouble with a file, a header or a quote: what was written
// to a stream before it stays there, a file is left as it was.
CohortTally RunCohort(const CohortSettings& settings);

}  // namespace Cohort
