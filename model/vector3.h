// A point or vector of the hip model: x along the body weight, y forward, z medial; in centimetres
// unless a name says otherwise.
#pragma once

#include <cmath>

namespace Sila {

struct Vector3 {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

constexpr Vector3 operator+(const Vector3& a, const Vector3& b) {
  return {a.x + b.x, a.y + b.y, a.z + b.z};
}

constexpr Vector3 operator-(const Vector3& a, const Vector3& b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}

constexpr Vector3 operator*(double factor, const Vector3& a) {
  return {factor * a.x, factor * a.y, factor * a.z};
}

constexpr Vector3 Cross(const Vector3& a, const Vector3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline double Length(const Vector3& a) {
  return std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z);
}

}  // namespace Sila
