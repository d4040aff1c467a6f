// The sampling of the head written out literally, point by point, to compare with.
#pragma once

#include <cmath>
#include <vector>

#include "view3d/turn.h"

namespace literal {

struct Sample {
  float x, y, depth, stress;
};
using Rows = std::vector<std::vector<Sample>>;

constexpr double kPi = 3.14159265359;

struct Frame {
  double width, height;
  float radius;
};

inline Sample Place(PointTurner& turner, const Frame& frame, double x, double y, double z) {
  const Point3 turned = turner.Turn({x, y, z});
  return {float(frame.width / 2.0 + turned.x), float(frame.height / 2.0 + turned.y),
          float(turned.z), 0.0F};
}

inline Rows Sphere(int steps, const ViewAngles& angles, const Frame& frame) {
  const auto step = float(kPi / steps);
  const auto r = double(frame.radius);
  PointTurner turner(angles);
  Rows rows;
  for (auto polar = float(2 * kPi); polar <= float(3 * kPi + double(step)); polar += step) {
    rows.emplace_back();
    for (auto azimuth = float(2 * kPi); azimuth <= float(4 * kPi + double(step)); azimuth += step) {
      const auto t = double(polar);
      const auto p = double(azimuth);
      rows.back().push_back(Place(turner, frame, r * std::cos(p) * std::sin(t), r * std::cos(t),
                                  r * std::sin(p) * std::sin(t)));
    }
  }
  return rows;
}

struct Load {
  double edge, pole, peak;  // rad, rad, percent
};

inline float Stress(const Load& load, double a, double b, double step) {
  const double p0 =
      load.edge <= load.pole ? load.peak / std::cos(load.pole - load.edge) : load.peak;
  const double s = p0 * std::cos(a - 2 * kPi + load.pole + step / 2) * std::cos(b - kPi + step / 2);
  return float(s > 720 ? 720 : s < 0 ? 7 : s);
}

inline Rows Area(int steps, const ViewAngles& angles, const Frame& frame, const Load& load) {
  const auto step = float(kPi / steps);
  const auto r = double(frame.radius);
  PointTurner turner(angles);
  Rows rows;
  for (auto a = float(2 * kPi - load.edge); a <= float(3 * kPi - load.edge + double(step));
       a += step) {
    rows.emplace_back();
    for (auto b = float(kPi / 2); b <= float(3 * kPi / 2 + double(step)); b += step) {
      const auto u = double(a);
      const auto v = double(b);
      Sample sample = Place(turner, frame, -r * std::sin(u) * std::cos(v), r * std::sin(v),
                            r * std::cos(u) * std::cos(v));
      sample.stress = Stress(load, u, v, double(step));
      rows.back().push_back(sample);
    }
  }
  return rows;
}

}  // namespace literal
