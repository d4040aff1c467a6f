// Places on a picture in millimetres, as the picture shows them: not yet divided by its
// magnification. x runs to the right, y downward; a pixel's column and row are multiplied by the
// distances of its neighbours, which may differ in the two directions.
#pragma once

#include <cmath>

namespace Landmarks {

struct Point {
  double x = 0.0;  // mm
  double y = 0.0;  // mm
  bool operator==(const Point&) const = default;
};

constexpr Point operator+(Point a, Point b) {
  return {a.x + b.x, a.y + b.y};
}
constexpr Point operator-(Point a, Point b) {
  return {a.x - b.x, a.y - b.y};
}
constexpr Point operator*(double factor, Point p) {
  return {factor * p.x, factor * p.y};
}
constexpr double Dot(Point a, Point b) {
  return a.x * b.x + a.y * b.y;
}
// A picture is neither so large nor so small that a square overflows or vanishes.
inline double Length(Point p) {
  return std::sqrt(Dot(p, p));
}

}  // namespace Landmarks
