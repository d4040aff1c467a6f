// What every input must keep. An input that breaks it ends the program, as a crash does.
#pragma once

#include <cstdio>
#include <cstdlib>

inline void Require(bool holds, const char* property) {
  if (holds) return;
  std::fprintf(stderr, "this does not hold: %s\n", property);
  std::abort();
}
