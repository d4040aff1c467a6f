#include "radiograph/windowing.h"

#include <algorithm>
#include <cmath>

namespace Radiography {

namespace {

constexpr double kWhite = 255.0;

// From 0 to 1.
double Share(double value, const Window& window) {
  switch (window.shape) {
    case WindowShape::Linear: {
      // DICOM counts whole values: a window of width 1 shows one value in white above one in black.
      const double steps = window.width - 1.0;
      const double above = value - (window.centre - 0.5);
      if (above <= -steps / 2.0) return 0.0;
      return above > steps / 2.0 ? 1.0 : above / steps + 0.5;
    }
    case WindowShape::LinearExact:
      return std::clamp((value - window.centre) / window.width + 0.5, 0.0, 1.0);
    case WindowShape::Sigmoid:
      return 1.0 / (1.0 + std::exp(-4.0 * (value - window.centre) / window.width));
  }
  return 0.0;
}

double Share(double value, const BrightnessTable& table) {
  const double last = static_cast<double>(table.entries.size() - 1);
  const double index = std::clamp(std::round(value - table.first), 0.0, last);
  const double full = static_cast<double>((1U << table.bits) - 1U);
  return table.entries[static_cast<std::size_t>(index)] / full;
}

template <class View>
std::vector<std::uint8_t> Compute(const Radiograph& radiograph, const View& view) {
  std::vector<std::uint8_t> brightness(std::size_t{1} << radiograph.bits);
  for (std::size_t level = 0; level < brightness.size(); ++level) {
    const double share = Share(radiograph.ValueOf(level), view);
    const double shown = radiograph.inverted ? 1.0 - share : share;
    brightness[level] = static_cast<std::uint8_t>(std::lround(shown * kWhite));
  }
  return brightness;
}

}  // namespace

Window FullWindow(const Radiograph& radiograph) {
  const auto [lowest, highest] =
      std::minmax_element(radiograph.levels.begin(), radiograph.levels.end());
  const double low = radiograph.ValueOf(*lowest);
  const double high = radiograph.ValueOf(*highest);
  const double width = std::max(std::abs(high - low), std::abs(radiograph.slope));
  return {(low + high) / 2.0, width, WindowShape::LinearExact, {}};
}

std::vector<std::uint8_t> ComputeBrightness(const Radiograph& radiograph, const Window& window) {
  return Compute(radiograph, window);
}

std::vector<std::uint8_t> ComputeBrightness(const Radiograph& radiograph,
                                            const BrightnessTable& table) {
  return Compute(radiograph, table);
}

void PaintLevels(const Radiograph& radiograph, const std::vector<std::uint8_t>& brightness,
                 QImage& image) {
  const QSize size(radiograph.width, radiograph.height);
  if (image.size() != size || image.format() != QImage::Format_Grayscale8) {
    image = QImage(size, QImage::Format_Grayscale8);
  }
  if (image.isNull()) return;
  const std::uint8_t* const table = brightness.data();
  const std::uint16_t* from = radiograph.levels.data();
  for (int y = 0; y < radiograph.height; ++y, from += radiograph.width) {
    std::transform(from, from + radiograph.width, image.scanLine(y),
                   [table](std::uint16_t level) { return table[level]; });
  }
}

}  // namespace Radiography
