// Three bell curves over the stress: blue at 0 %, green at 46 %, red at 100 %.
#include "view3d/stress_colour.h"

#include <cmath>
#include <cstdlib>

namespace {

// Height of a bell curve at `band`, not yet rounded.
double Bell(double height, int band, int centre, double width) {
  const double distance = band - centre;
  return height * std::pow(2.3, -distance * distance / width);
}

// Nearest whole number, ties to even.
Colour Channel(double value) {
  return static_cast<Colour>(std::abs(std::lrint(value)));
}

}  // namespace

Colour StressColour(double percent) {
  if (percent > 100.0) return kRed;
  constexpr double kFarBelow = -1000.0;  // as dark as it gets
  const double shown = percent >= kFarBelow ? percent : std::isnan(percent) ? 0.0 : kFarBelow;
  const auto band = static_cast<int>(std::lrint(std::floor(shown / 10.0) * 10.0 + 5.0));
  const Colour red = Channel(Bell(223, band, 100, 2500) + Bell(60, band, 23, 800));
  const Colour green = Channel(Bell(213, band, 46, 1500));
  const Colour blue = Channel(Bell(223, band, 0, 2000));
  return red | green << 8U | blue << 16U;
}
