// Smoothing onto nodes that stand equally far apart in both directions, whatever the pixels do.
#include "landmarks/grey_slope.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <numbers>

namespace Landmarks {

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// Weights of the pixels about one node, along one direction. Empty when the node is not wholly
// within the picture.
struct Weights {
  int first = 0;
  std::vector<double> weights;
};

Weights WeightsAt(double place, double spacing, int pixels, double blur) {
  constexpr double kReach = 3.0;
  const double from = std::ceil((place - kReach * blur) / spacing);
  const double to = std::floor((place + kReach * blur) / spacing);
  if (!(from >= 0.0) || !(to <= pixels - 1.0)) return {};
  Weights made{static_cast<int>(from), {}};
  double sum = 0.0;
  for (int pixel = made.first; pixel <= static_cast<int>(to); ++pixel) {
    const double off = (pixel * spacing - place) / blur;
    made.weights.push_back(std::exp(-off * off / 2.0));
    sum += made.weights.back();
  }
  for (double& weight : made.weights) weight /= sum;
  return made;
}

std::vector<Weights> AllWeights(double corner, double step, int nodes, double spacing, int pixels,
                                double blur) {
  std::vector<Weights> all;
  all.reserve(static_cast<std::size_t>(nodes));
  for (int i = 0; i < nodes; ++i) {
    all.push_back(WeightsAt(corner + i * step, spacing, pixels, blur));
  }
  return all;
}

template <class Values>
double Sum(const Weights& weights, const Values& values) {
  double sum = 0.0;
  for (std::size_t i = 0; i < weights.weights.size(); ++i) {
    sum += weights.weights[i] * values[static_cast<std::size_t>(weights.first) + i];
  }
  return sum;
}

// The picture's rows, smoothed across about one place; 0 in rows that `down` does not need.
std::vector<double> ColumnOf(const GreyView& view, const Weights& across,
                             const std::vector<Weights>& down) {
  std::vector<double> column(static_cast<std::size_t>(view.height));
  std::size_t next = 0;
  for (const Weights& weights : down) {
    if (weights.weights.empty()) continue;
    const std::size_t end = static_cast<std::size_t>(weights.first) + weights.weights.size();
    next = std::max(next, static_cast<std::size_t>(weights.first));
    for (; next < end; ++next) {
      const std::size_t width = static_cast<std::size_t>(view.width);
      column[next] = Sum(across, view.grey.subspan(next * width, width));
    }
  }
  return column;
}

// Noise of one pixel: neighbours in a row differ by noise, mostly; their median passes over edges.
double PixelNoise(const GreyView& view, Point from, Point to) {
  constexpr double kMedianToDeviation = 1.4826 / std::numbers::sqrt2;
  const PixelPlace first = InPixels(from, view.spacing);
  const PixelPlace last = InPixels(to, view.spacing);
  const int top = static_cast<int>(std::clamp(first.row, 0.0, view.height - 1.0));
  const int bottom = static_cast<int>(std::clamp(last.row, 0.0, view.height - 1.0));
  const int left = static_cast<int>(std::clamp(first.column, 0.0, view.width - 1.0));
  const int right = static_cast<int>(std::clamp(last.column, 0.0, view.width - 1.0));
  std::vector<int> differences;
  for (int row = top; row <= bottom; row += 2) {
    const std::size_t start = static_cast<std::size_t>(row) * static_cast<std::size_t>(view.width);
    for (int column = left; column < right; column += 2) {
      const std::size_t i = start + static_cast<std::size_t>(column);
      differences.push_back(std::abs(int{view.grey[i + 1]} - int{view.grey[i]}));
    }
  }
  if (differences.empty()) return 0.0;
  const auto middle = differences.begin() + static_cast<std::ptrdiff_t>(differences.size() / 2);
  std::nth_element(differences.begin(), middle, differences.end());
  constexpr double kRounding = 0.29;  // of whole grey levels
  return std::max(kRounding, kMedianToDeviation * *middle);
}

}  // namespace

GreySlope::GreySlope(const GreyView& view, Point middle, double reach, double blur) {
  constexpr double kStepsInBlur = 2.5;
  constexpr double kPixelsInBlur = 0.8;  // fewer would let the pixels' raster through
  const double pixel = std::max(view.spacing.row, view.spacing.column);
  blur = std::max(blur, kPixelsInBlur * pixel);
  step_ = blur / kStepsInBlur;
  nodes_ = 1 + static_cast<int>(2.0 * reach / step_);
  corner_ = middle - Point{reach, reach};
  // A pixel of width w is the mean over its width, a difference over 2 steps is one over these.
  blur_ = std::sqrt(blur * blur + pixel * pixel / 12.0 + step_ * step_ / 3.0);
  const double area = view.spacing.row * view.spacing.column;
  noise_ = PixelNoise(view, corner_, middle + Point{reach, reach}) *
           std::sqrt(area / (8.0 * std::numbers::pi)) / (blur * blur);
  Smooth(view, blur);
}

// Across first, for the rows that are needed, then down.
void GreySlope::Smooth(const GreyView& view, double blur) {
  const auto across = AllWeights(corner_.x, step_, nodes_, view.spacing.column, view.width, blur);
  const auto down = AllWeights(corner_.y, step_, nodes_, view.spacing.row, view.height, blur);
  const auto count = static_cast<std::size_t>(nodes_);
  level_.assign(count * count, kNan);
  for (std::size_t x = 0; x < count; ++x) {
    if (across[x].weights.empty()) continue;
    const std::vector<double> column = ColumnOf(view, across[x], down);
    for (std::size_t y = 0; y < count; ++y) {
      if (!down[y].weights.empty()) level_[y * count + x] = Sum(down[y], column);
    }
  }
}

double GreySlope::Drop(Point at, Point outward) const {
  const double x = (at.x - corner_.x) / step_;
  const double y = (at.y - corner_.y) / step_;
  if (!(x >= 1.0) || !(y >= 1.0) || !(x < nodes_ - 2) || !(y < nodes_ - 2)) return kNan;
  const auto column = static_cast<std::size_t>(x);
  const auto row = static_cast<std::size_t>(y);
  const double right = x - static_cast<double>(column);
  const double below = y - static_cast<double>(row);
  const auto count = static_cast<std::size_t>(nodes_);
  const auto slopeAt = [&](std::size_t node) {
    return outward.x * (level_[node - 1] - level_[node + 1]) +
           outward.y * (level_[node - count] - level_[node + count]);
  };
  const std::size_t node = row * count + column;
  const double upper = (1.0 - right) * slopeAt(node) + right * slopeAt(node + 1);
  const double lower = (1.0 - right) * slopeAt(node + count) + right * slopeAt(node + count + 1);
  return ((1.0 - below) * upper + below * lower) / (2.0 * step_);
}

}  // namespace Landmarks
