#include "measuring/grey_presets.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "radiograph/windowing.h"

namespace Measuring {

using Radiography::BrightnessTable;
using Radiography::Radiograph;
using Radiography::Window;
using Radiography::WindowShape;

namespace {

constexpr double kDarkShare = 0.3;  // of the pixels are darker than the window for bone
constexpr double kBrightShare = 0.99;
constexpr double kDoubling = 200.0;           // device-independent pixels
constexpr double kWholeWidth = 400.0;         // device-independent pixels
constexpr double kLeastWidth = 1.0 / 4096.0;  // of the full window's
constexpr double kMostWidth = 4.0;

// The level that `share` of the pixels do not exceed.
std::size_t LevelBelow(const std::vector<std::size_t>& counts, std::size_t pixels, double share) {
  const double wanted = share * static_cast<double>(pixels);
  std::size_t sum = 0;
  for (std::size_t level = 0; level < counts.size(); ++level) {
    sum += counts[level];
    if (static_cast<double>(sum) >= wanted) return level;
  }
  return counts.size() - 1;
}

QString NameOf(const std::string& name, const char* kind, std::size_t number) {
  const QString given = QString::fromStdString(name).simplified();
  return given.isEmpty() ? QStringLiteral("%1 %2").arg(QLatin1String(kind)).arg(number) : given;
}

}  // namespace

bool BrightIsHigh(const Radiograph& radiograph) {
  return (radiograph.slope > 0.0) != radiograph.inverted;
}

Window BoneWindow(const Radiograph& radiograph) {
  std::vector<std::size_t> counts(std::size_t{1} << radiograph.bits);
  for (const std::uint16_t level : radiograph.levels) ++counts[level];
  const bool high = BrightIsHigh(radiograph);
  const auto value = [&](double share) {
    const double below = high ? share : 1.0 - share;
    return radiograph.ValueOf(LevelBelow(counts, radiograph.levels.size(), below));
  };
  const double dark = value(kDarkShare);
  const double bright = value(kBrightShare);
  const double width = std::max(std::abs(bright - dark), std::abs(radiograph.slope));
  return {(dark + bright) / 2.0, width, WindowShape::LinearExact, {}};
}

std::vector<GreyPreset> PresetsOf(const Radiograph& radiograph) {
  std::vector<GreyPreset> presets;
  for (const Window& window : radiograph.windows) {
    presets.push_back({NameOf(window.name, "Window", presets.size() + 1), window});
  }
  for (std::size_t i = 0; i < radiograph.tables.size(); ++i) {
    const BrightnessTable& table = radiograph.tables[i];
    presets.push_back({NameOf(table.name, "Table", i + 1), table});
  }
  presets.push_back({QStringLiteral("Full range"), Radiography::FullWindow(radiograph)});
  presets.push_back({QStringLiteral("Bone"), BoneWindow(radiograph)});
  return presets;
}

Window WindowOf(const GreyLook& look) {
  if (const auto* window = std::get_if<Window>(&look)) return *window;
  const auto& table = std::get<BrightnessTable>(look);
  const double entries = static_cast<double>(table.entries.size());
  return {
      table.first + (entries - 1.0) / 2.0, std::max(entries, 1.0), WindowShape::LinearExact, {}};
}

Window Dragged(const Window& window, QPointF way, const Window& full, bool lowIsBright) {
  const double shift = way.y() / kWholeWidth * window.width * (lowIsBright ? -1.0 : 1.0);
  const double least = std::min(full.width * kLeastWidth, window.width);
  const double most = std::max(full.width * kMostWidth, window.width);
  const double low = std::min(full.centre - full.width, window.centre);
  const double high = std::max(full.centre + full.width, window.centre);
  Window dragged = window;
  dragged.name.clear();
  dragged.width = std::clamp(window.width * std::exp2(way.x() / kDoubling), least, most);
  dragged.centre = std::clamp(window.centre + shift, low, high);
  return dragged;
}

std::vector<std::uint8_t> BrightnessOf(const Radiograph& radiograph, const GreyLook& look,
                                       bool isInverted) {
  auto brightness = std::visit(
      [&](const auto& shown) { return Radiography::ComputeBrightness(radiograph, shown); }, look);
  if (isInverted) {
    for (std::uint8_t& value : brightness) value = static_cast<std::uint8_t>(255 - value);
  }
  return brightness;
}

}  // namespace Measuring
