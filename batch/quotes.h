// Quotes are counted: a character is outside of them where the number of quotes before it is even.
#pragma once

#include <cstddef>
#include <string_view>

namespace Cohort {

bool HasOddQuotes(std::string_view text);

// The position of the first of the `wanted` characters outside quotes, at or behind `from`, or
// npos. `quoted` says whether `from` is inside quotes, and afterwards whether that place or the end
// of the text is.
std::size_t FindOutsideQuotes(std::string_view text, std::size_t from, std::string_view wanted,
                              bool& quoted);

}  // namespace Cohort
