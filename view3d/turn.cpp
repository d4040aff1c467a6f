// The three turns, point by point and as a matrix.
#include "view3d/turn.h"

#include <cmath>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;

// Angle of p over q, which is not 0.
double AngleOf(double p, double q) {
  const double angle = std::atan(std::abs(p) / std::abs(q));
  if (p >= 0.0) return q > 0.0 ? angle : kPi - angle;
  return q < 0.0 ? kPi + angle : 2.0 * kPi - angle;
}

// The pair's polar angle goes to `angle`; where q is 0 it goes to `onAxis`.
void FindAngle(double p, double q, double& angle, double& onAxis) {
  if (q != 0.0) {
    angle = AngleOf(p, q);
  } else if (p != 0.0) {
    onAxis = p > 0.0 ? kPi / 2.0 : 3.0 * kPi / 2.0;
  }
}

void TurnPair(double& p, double& q, double angle) {
  const double radius = std::sqrt(p * p + q * q);
  p = radius * std::sin(angle);
  q = radius * std::cos(angle);
}

Point3 Turned(Point3 p, const ViewAngles& angles) {
  const auto turn = [](double& u, double& v, float angle) {
    const double sine = std::sin(static_cast<double>(angle));
    const double cosine = std::cos(static_cast<double>(angle));
    const double turned = u * cosine + v * sine;
    v = v * cosine - u * sine;
    u = turned;
  };
  turn(p.x, p.y, angles.first);
  turn(p.z, p.y, angles.second);
  turn(p.z, p.x, angles.third);
  return p;
}

}  // namespace

Point3 PointTurner::Turn(Point3 point) {
  FindAngle(point.x, point.y, a_, c_);
  TurnPair(point.x, point.y, a_ + static_cast<double>(angles_.first));
  FindAngle(point.z, point.y, b_, c_);
  TurnPair(point.z, point.y, b_ + static_cast<double>(angles_.second));
  FindAngle(point.z, point.x, c_, c_);
  TurnPair(point.z, point.x, c_ + static_cast<double>(angles_.third));
  return point;
}

TurnMatrix MatrixOf(const ViewAngles& angles) {
  const Point3 x = Turned({1, 0, 0}, angles);
  const Point3 y = Turned({0, 1, 0}, angles);
  const Point3 z = Turned({0, 0, 1}, angles);
  return {{Point3{x.x, y.x, z.x}, Point3{x.y, y.y, z.y}, Point3{x.z, y.z, z.z}}};
}
