// Circles through points that were marked on an edge, such as the outline of the femoral head.
#pragma once

#include <array>
#include <cstddef>
#include <numbers>
#include <optional>
#include <span>

#include "landmarks/point.h"

namespace Landmarks {

struct Circle {
  Point centre;
  double radius = 0.0;  // mm
};

// Below this arc the far side of the circle is guessed rather than seen: a radius from a third of
// the outline has twice the standard uncertainty of one from half of it.
inline constexpr double kShortArc = 150.0 * std::numbers::pi / 180.0;  // rad

// Covariances of centre x, centre y and radius, in this order, mm². Where only a part of the
// outline is marked, centre and radius err together.
using CircleCovariance = std::array<std::array<double, 3>, 3>;

struct CircleFit {
  Circle circle;
  std::size_t points = 0;
  double arc = 0.0;       // rad, the part of the outline from the first point to the last
  double residual = 0.0;  // mm, standard deviation of the points' distances from the outline
  // For points with a standard uncertainty of 1 mm in every direction.
  CircleCovariance perMark = {};
  // Standard uncertainties, mm, from the points' own scatter. Empty for three points, which any
  // circle meets.
  struct Uncertainty {
    double x = 0.0;
    double y = 0.0;
    double radius = 0.0;
  };
  std::optional<Uncertainty> u;

  bool IsShortArc() const { return arc < kShortArc; }
};

// The circle through three points. Empty where they lie on a line, two of them coincide, or they
// stand on so little of the outline (under half a degree) that it has no size to speak of.
std::optional<Circle> CircleThrough(Point a, Point b, Point c);

// The circle with the least sum of squared distances to the points (the geometric fit; see Chernov,
// Circular and Linear Regression, CRC Press 2010). Three points give the circle through them. The
// radius comes out too large by about half the points' variance over the radius, which is less
// than 0.05 mm for any head that a person would mark. Empty for fewer than three different points,
// points on a line, values that are not finite, and where the fit does not settle.
std::optional<CircleFit> FitCircle(std::span<const Point> points);

}  // namespace Landmarks
