// Grey levels as brightnesses on the screen.
#pragma once

#include <QImage>
#include <cstdint>
#include <vector>

#include "radiograph/radiograph.h"

namespace Radiography {

// From the lowest to the highest value in the picture, for a file that proposes nothing.
Window FullWindow(const Radiograph& radiograph);

// The brightness of each level, 0 (black) to 255, with 2^bits entries.
std::vector<std::uint8_t> ComputeBrightness(const Radiograph& radiograph, const Window& window);
std::vector<std::uint8_t> ComputeBrightness(const Radiograph& radiograph,
                                            const BrightnessTable& table);

// Paints the levels into `image`, which keeps its memory when it already has their size.
// `brightness` comes from ComputeBrightness of the same radiograph.
void PaintLevels(const Radiograph& radiograph, const std::vector<std::uint8_t>& brightness,
                 QImage& image);

}  // namespace Radiography
