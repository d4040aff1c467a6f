// Words for nothing.
#include "batch/field_text.h"

#include <algorithm>
#include <array>

namespace Cohort {

namespace {

bool IsBlankByte(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::string_view WithoutBlanks(std::string_view text) {
  while (!text.empty() && IsBlankByte(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlankByte(text.back())) text.remove_suffix(1);
  return text;
}

bool IsSameLetter(char a, char b) {
  const auto lower = [](char c) { return 'A' <= c && c <= 'Z' ? c - 'A' + 'a' : c; };
  return lower(a) == lower(b);
}

}  // namespace

bool IsBlank(std::string_view text) {
  return WithoutBlanks(text).empty();
}

bool IsMissing(std::string_view text) {
  constexpr std::array<std::string_view, 7> kMissing = {"",     "NA", "N/A",    "NaN",
                                                        "#N/A", "-",  "Unknown"};
  const std::string_view word = WithoutBlanks(text);
  return std::any_of(kMissing.begin(), kMissing.end(), [&](std::string_view missing) {
    return std::equal(word.begin(), word.end(), missing.begin(), missing.end(), IsSameLetter);
  });
}

}  // namespace Cohort
