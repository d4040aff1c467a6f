// The geometric fit: Gauss and Newton's method on the distances, with Marquardt's damping.
#include "landmarks/circle_fit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace Landmarks {

namespace {

constexpr std::size_t kUnknowns = 3;  // centre x, centre y, radius
using Vector = std::array<double, kUnknowns>;
using Matrix = std::array<Vector, kUnknowns>;

double Determinant(const Matrix& m) {
  return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
         m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
         m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

// Cramer's rule: three unknowns, and the matrices here are symmetric and well scaled.
std::optional<Vector> Solve(const Matrix& matrix, const Vector& right) {
  const double determinant = Determinant(matrix);
  Vector solution{};
  for (std::size_t column = 0; column < kUnknowns; ++column) {
    Matrix replaced = matrix;
    for (std::size_t row = 0; row < kUnknowns; ++row) replaced[row][column] = right[row];
    solution[column] = Determinant(replaced) / determinant;
    if (!std::isfinite(solution[column])) return std::nullopt;
  }
  return solution;
}

Point MeanOf(std::span<const Point> points) {
  Point sum;
  for (const Point& point : points) sum = sum + point;
  return 1.0 / static_cast<double>(points.size()) * sum;
}

// J'J and J'r of the distances r at a circle, and their sum of squares.
struct Normal {
  Matrix matrix{};
  Vector gradient{};
  double squares = 0.0;
};

Normal NormalOf(std::span<const Point> points, const Circle& circle) {
  Normal normal;
  for (const Point& point : points) {
    const Point arm = point - circle.centre;
    const double length = Length(arm);
    const Vector slope = {-arm.x / length, -arm.y / length, -1.0};
    const double distance = length - circle.radius;
    for (std::size_t i = 0; i < kUnknowns; ++i) {
      for (std::size_t k = 0; k < kUnknowns; ++k) normal.matrix[i][k] += slope[i] * slope[k];
      normal.gradient[i] += slope[i] * distance;
    }
    normal.squares += distance * distance;
  }
  return normal;
}

// Kåsa's linear fit. Its radius is too small on short arcs; here it only starts the iteration.
std::optional<Circle> StartOf(std::span<const Point> points) {
  const Point mean = MeanOf(points);
  Matrix matrix{};
  Vector right{};
  for (const Point& point : points) {
    const Point p = point - mean;
    const Vector terms = {p.x, p.y, 1.0};
    for (std::size_t i = 0; i < kUnknowns; ++i) {
      for (std::size_t k = 0; k < kUnknowns; ++k) matrix[i][k] += terms[i] * terms[k];
      right[i] += terms[i] * Dot(p, p);
    }
  }
  const std::optional<Vector> solution = Solve(matrix, right);
  if (!solution) return std::nullopt;
  const Point arm = {(*solution)[0] / 2.0, (*solution)[1] / 2.0};
  const double square = (*solution)[2] + Dot(arm, arm);
  if (!(square > 0.0)) return std::nullopt;
  return Circle{mean + arm, std::sqrt(square)};
}

Circle Moved(const Circle& circle, const Vector& step) {
  return {{circle.centre.x - step[0], circle.centre.y - step[1]}, circle.radius - step[2]};
}

// One damped step that does not make the sum of squares larger; false when there is none.
bool Improve(std::span<const Point> points, Circle& circle, Normal& normal, double& damping) {
  constexpr int kMostTries = 24;
  for (int tries = 0; tries < kMostTries; ++tries) {
    if (tries > 0) damping = std::max(1e-9, damping * 10.0);
    Matrix damped = normal.matrix;
    for (std::size_t i = 0; i < kUnknowns; ++i) damped[i][i] *= 1.0 + damping;
    const std::optional<Vector> step = Solve(damped, normal.gradient);
    if (!step) continue;
    const Circle next = Moved(circle, *step);
    const Normal nextNormal = NormalOf(points, next);
    if (!(nextNormal.squares <= normal.squares) || !(next.radius > 0.0)) continue;
    circle = next;
    normal = nextNormal;
    damping /= 10.0;
    return std::hypot((*step)[0], (*step)[1], (*step)[2]) > 1e-12 * circle.radius;
  }
  return false;
}

// The widest gap between neighbours on the outline is what nobody has marked.
double ArcOf(std::span<const Point> points, Point centre) {
  constexpr double kTurn = 2.0 * std::numbers::pi;
  std::vector<double> angles;
  for (const Point& point : points) {
    angles.push_back(std::atan2(point.y - centre.y, point.x - centre.x));
  }
  std::sort(angles.begin(), angles.end());
  double gap = 0.0;
  for (std::size_t i = 0; i < angles.size(); ++i) {
    const double next = i + 1 < angles.size() ? angles[i + 1] : angles[0] + kTurn;
    gap = std::max(gap, next - angles[i]);
  }
  return kTurn - gap;
}

// (J'J)⁻¹, which is symmetric.
CircleCovariance Inverse(const Matrix& matrix) {
  CircleCovariance inverse{};
  for (std::size_t i = 0; i < kUnknowns; ++i) {
    Vector unit{};
    unit[i] = 1.0;
    if (const std::optional<Vector> row = Solve(matrix, unit)) inverse[i] = *row;
  }
  return inverse;
}

double ExtentOf(std::span<const Point> points) {
  double extent = 0.0;
  for (const Point& point : points) extent = std::max(extent, Length(point - points.front()));
  return extent;
}

// True as well where there are fewer than three different places, and for values not finite.
bool IsOnALine(std::span<const Point> points) {
  constexpr double kNarrow = 1e-6;  // of the extent
  const Point mean = MeanOf(points);
  double xx = 0.0;
  double xy = 0.0;
  double yy = 0.0;
  for (const Point& point : points) {
    const Point p = point - mean;
    xx += p.x * p.x;
    xy += p.x * p.y;
    yy += p.y * p.y;
  }
  const double across = (xx + yy - std::hypot(xx - yy, 2.0 * xy)) / 2.0;
  return !(across > kNarrow * kNarrow * (xx + yy));
}

// Marks on less than half a degree of a circle say nothing about its size.
bool IsPlausible(const Circle& circle, std::span<const Point> points) {
  constexpr double kFarOut = 100.0;
  return circle.radius > 0.0 && circle.radius < kFarOut * ExtentOf(points);
}

// Empty when it does not settle on a smallest sum of squares.
std::optional<Circle> Settle(std::span<const Point> points, Circle circle) {
  constexpr int kMostSteps = 500;
  Normal normal = NormalOf(points, circle);
  double damping = 0.0;
  int steps = 0;
  while (steps < kMostSteps && Improve(points, circle, normal, damping)) ++steps;
  if (steps == kMostSteps || !std::isfinite(normal.squares)) return std::nullopt;
  return circle;
}

CircleFit Judged(std::span<const Point> points, const Circle& circle) {
  const Normal normal = NormalOf(points, circle);
  CircleFit fit;
  fit.circle = circle;
  fit.points = points.size();
  fit.arc = ArcOf(points, circle.centre);
  fit.perMark = Inverse(normal.matrix);
  const std::size_t freedom = points.size() - kUnknowns;
  if (freedom == 0) return fit;
  fit.residual = std::sqrt(normal.squares / static_cast<double>(freedom));
  fit.u = {fit.residual * std::sqrt(fit.perMark[0][0]), fit.residual * std::sqrt(fit.perMark[1][1]),
           fit.residual * std::sqrt(fit.perMark[2][2])};
  return fit;
}

}  // namespace

std::optional<Circle> CircleThrough(Point a, Point b, Point c) {
  const std::array<Point, 3> points = {a, b, c};
  if (IsOnALine(points)) return std::nullopt;
  const Point p = b - a;
  const Point q = c - a;
  const double cross = 2.0 * (p.x * q.y - p.y * q.x);
  const double pp = Dot(p, p);
  const double qq = Dot(q, q);
  const Point arm = {(q.y * pp - p.y * qq) / cross, (p.x * qq - q.x * pp) / cross};
  const Circle circle = {a + arm, Length(arm)};
  if (!IsPlausible(circle, points)) return std::nullopt;
  return circle;
}

std::optional<CircleFit> FitCircle(std::span<const Point> points) {
  if (points.size() < kUnknowns || IsOnALine(points)) return std::nullopt;
  std::optional<Circle> circle =
      points.size() == kUnknowns ? CircleThrough(points[0], points[1], points[2]) : StartOf(points);
  if (circle && points.size() > kUnknowns) circle = Settle(points, *circle);
  if (!circle || !IsPlausible(*circle, points)) return std::nullopt;
  return Judged(points, *circle);
}

}  // namespace Landmarks
