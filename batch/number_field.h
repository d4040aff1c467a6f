// A number as a field of a table.
#pragma once

#include <array>
#include <charconv>
#include <string>

namespace Cohort {

// Appends the shortest text that reads back to the same double, with a point.
inline void AppendNumber(std::string& out, double value) {
  std::array<char, 32> digits;
  out.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr);
}

}  // namespace Cohort
