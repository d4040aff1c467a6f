// Quotes are counted without a branch, which the compiler turns into steps of sixteen bytes.
#include "batch/quotes.h"

namespace Cohort {

bool HasOddQuotes(std::string_view text) {
  unsigned char count = 0;  // of which only the last bit counts
  for (const char c : text) count = static_cast<unsigned char>(count + (c == '"'));
  return count % 2 != 0;
}

std::size_t FindOutsideQuotes(std::string_view text, std::size_t from, std::string_view wanted,
                              bool& quoted) {
  for (;;) {
    // The search for one character is much the quicker.
    const std::size_t found =
        wanted.size() == 1 ? text.find(wanted.front(), from) : text.find_first_of(wanted, from);
    const std::string_view before = text.substr(from, found - from);
    // Most texts hold none at all, which is sooner seen than none counted.
    if (before.find('"') != std::string_view::npos && HasOddQuotes(before)) quoted = !quoted;
    if (found == std::string_view::npos || !quoted) return found;
    from = found + 1;
  }
}

}  // namespace Cohort
