#include "measuring/grey_pyramid.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Measuring {

namespace {

constexpr std::uint32_t kOne = 256;  // shares of neighbouring pixels are in 1/256

int Half(int size) {
  return (size + 1) / 2;
}

// The last of an odd number of pixels counts twice.
std::vector<std::uint16_t> Halve(const std::uint16_t* grey, int width, int height) {
  const int halfWidth = Half(width);
  std::vector<std::uint16_t> half;
  half.reserve(static_cast<std::size_t>(halfWidth) * static_cast<std::size_t>(Half(height)));
  for (int y = 0; y < height; y += 2) {
    const std::uint16_t* above = grey + std::ptrdiff_t{y} * width;
    const std::uint16_t* below = y + 1 < height ? above + width : above;
    for (int x = 0; x + 1 < width; x += 2) {
      const int sum = above[x] + above[x + 1] + below[x] + below[x + 1];
      half.push_back(static_cast<std::uint16_t>((sum + 2) / 4));
    }
    if (width % 2 != 0) {
      half.push_back(static_cast<std::uint16_t>((above[width - 1] + below[width - 1] + 1) / 2));
    }
  }
  return half;
}

// From pixels of the device to those of a level, along one side.
struct Axis {
  int begin = 0;  // the device's pixels that lie on the picture
  int end = 0;
  std::vector<int> at;               // the neighbour before, from `begin` on
  std::vector<std::uint32_t> share;  // of the neighbour behind
};

// The level's pixel that lies under the device's `i` is start + step · i.
Axis MakeAxis(double start, double step, int count, int size) {
  Axis axis;
  const auto isOn = [&](int i) {
    const double u = start + step * i;
    return u >= -0.5 && u < size - 0.5;
  };
  while (axis.begin < count && !isOn(axis.begin)) ++axis.begin;
  axis.end = axis.begin;
  for (; axis.end < count && isOn(axis.end); ++axis.end) {
    const double u = std::clamp(start + step * axis.end, 0.0, size - 1.0);
    const auto fixed = static_cast<std::uint32_t>(std::lround(u * kOne));
    axis.at.push_back(static_cast<int>(fixed / kOne));
    axis.share.push_back(fixed % kOne);
  }
  return axis;
}

struct Axes {
  Axis across;
  Axis down;
};

Axes MakeAxes(const PyramidLevel& level, const ViewTransform& transform, double ratio, QSize size) {
  const double shrink = std::ldexp(1.0, -level.halvings);
  const auto first = PlaceAt(transform, QPointF(0.5, 0.5) / ratio);
  const auto next = PlaceAt(transform, QPointF(1.5, 1.5) / ratio);
  const auto start = [&](double place) { return (place + 0.5) * shrink - 0.5; };
  return {MakeAxis(start(first.column), (next.column - first.column) * shrink, size.width(),
                   level.width),
          MakeAxis(start(first.row), (next.row - first.row) * shrink, size.height(), level.height)};
}

// A mix of two rows in 1/256 of a level, columns `from` to `to` of them and the last once more.
void MixRows(const PyramidLevel& level, int row, std::uint32_t share, std::pair<int, int> columns,
             std::vector<std::uint32_t>& mixed) {
  const std::uint16_t* above = level.grey + std::ptrdiff_t{row} * level.width;
  const std::uint16_t* below = share == 0 ? above : above + level.width;
  for (int x = columns.first; x <= columns.second; ++x) {
    mixed[static_cast<std::size_t>(x)] = above[x] * (kOne - share) + below[x] * share;
  }
  const auto last = static_cast<std::size_t>(columns.second);
  mixed[last + 1] = columns.second + 1 < level.width
                        ? above[last + 1] * (kOne - share) + below[last + 1] * share
                        : mixed[last];
}

void PaintRow(const Axis& across, const std::vector<std::uint32_t>& mixed,
              const std::vector<std::uint8_t>& brightness, QRgb* to) {
  constexpr std::uint32_t kHalf = kOne * kOne / 2;
  for (std::size_t i = 0; i < across.at.size(); ++i) {
    const std::uint32_t* pair = mixed.data() + across.at[i];
    // 65535 · 256 · 256 and a half still fit into 32 bits.
    const std::uint32_t sum = pair[0] * (kOne - across.share[i]) + pair[1] * across.share[i];
    to[i] = 0xFF000000U | 0x010101U * brightness[(sum + kHalf) / (kOne * kOne)];
  }
}

}  // namespace

GreyPyramid MakePyramid(std::shared_ptr<const Radiography::Radiograph> radiograph) {
  GreyPyramid pyramid{std::move(radiograph), {}};
  int width = pyramid.radiograph->width;
  int height = pyramid.radiograph->height;
  const std::uint16_t* grey = pyramid.radiograph->levels.data();
  while (width > 1 && height > 1) {
    pyramid.halved.push_back(Halve(grey, width, height));
    grey = pyramid.halved.back().data();
    width = Half(width);
    height = Half(height);
  }
  return pyramid;
}

PyramidLevel LevelFor(const GreyPyramid& pyramid, double zoom) {
  PyramidLevel level{0, pyramid.radiograph->width, pyramid.radiograph->height,
                     pyramid.radiograph->levels.data()};
  for (const auto& half : pyramid.halved) {
    if (std::ldexp(zoom, level.halvings + 1) > 1.0) break;
    level = {level.halvings + 1, Half(level.width), Half(level.height), half.data()};
  }
  return level;
}

void PaintSeen(const GreyPyramid& pyramid, const ViewTransform& transform, double deviceRatio,
               const std::vector<std::uint8_t>& brightness, QRgb ground, QImage& image) {
  const double zoom = transform.zoom * deviceRatio * std::min(1.0, transform.aspect);
  const PyramidLevel level = LevelFor(pyramid, zoom);
  const auto [across, down] = MakeAxes(level, transform, deviceRatio, image.size());
  image.fill(ground);
  if (across.at.empty() || down.at.empty()) return;
  const std::pair<int, int> columns = std::minmax(across.at.front(), across.at.back());
  std::vector<std::uint32_t> mixed(static_cast<std::size_t>(level.width) + 1);
  for (int y = down.begin; y < down.end; ++y) {
    const auto i = static_cast<std::size_t>(y - down.begin);
    MixRows(level, down.at[i], down.share[i], columns, mixed);
    PaintRow(across, mixed, brightness, reinterpret_cast<QRgb*>(image.scanLine(y)) + across.begin);
  }
}

}  // namespace Measuring
