// What a file says of its scale, for a test.
#pragma once

#include <string>
#include <vector>

#include "radiograph/scale.h"

// Attributes by name, so that a row shows those that it has.
struct GivenScale {
  std::vector<double> pixel{}, imager{}, scanned{};
  std::string calibration{};
  std::vector<double> magnification{}, detector{}, table{}, aspect{};

  Radiography::ScaleAttributes Attributes() const {
    return {pixel, imager, scanned, calibration, magnification, detector, table, aspect};
  }
};
