// Numbers as the shortest text that reads back to the same double.
#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace Cohort {

// What WriteShortest may write to; the text itself is shorter.
inline constexpr std::size_t kNumberRoom = 40;

// Writes the number as std::to_chars does, byte for byte. Gives the end of the text.
char* WriteShortest(char* out, double value);

inline void AppendNumber(std::string& out, double value) {
  std::array<char, kNumberRoom> text{};
  out.append(text.data(), WriteShortest(text.data(), value));
}

}  // namespace Cohort
