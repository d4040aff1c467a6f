// The checks of single values that say something of the scale. What cannot be used is noted.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "radiograph/pixel_spacing.h"

namespace Radiography {

using ScaleNotes = std::vector<std::string>;
std::optional<PixelSpacing> UsableSpacing(const char* name, const std::vector<double>& values,
                                          ScaleNotes& notes);
std::optional<double> UsableDistance(const char* name, const std::vector<double>& values,
                                     ScaleNotes& notes);
// A magnification: at least 1, since nothing lies behind the detector.
std::optional<double> UsableFactor(const char* name, const std::vector<double>& values,
                                   ScaleNotes& notes);
// Height ÷ width of a pixel.
std::optional<double> UsableRatio(const char* name, const std::vector<double>& values,
                                  ScaleNotes& notes);

}  // namespace Radiography
