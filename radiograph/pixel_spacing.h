// The distance between neighbouring pixels.
#pragma once

namespace Radiography {

struct PixelSpacing {
  double row = 0.0;     // mm
  double column = 0.0;  // mm
};

}  // namespace Radiography
