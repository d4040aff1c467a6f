// From marks on a radiograph of the pelvis to the measurements of one hip.
//
// The frame has its origin at the centre of the femoral head. Horizontal is the line through the
// two head centres, or at right angles to the midline where the other head cannot be used. Lateral
// points away from the other head or the midline, up to the upper edge of the picture; so no sign
// depends on the side, on a tilt of up to a right angle, or on a picture that was flipped.
#pragma once

#include <array>
#include <optional>
#include <variant>

#include "landmarks/circle_fit.h"
#include "landmarks/point.h"

namespace Landmarks {

// What stands for the body's midline: the other head, or two points on it.
using OtherHead = Circle;
using Midline = std::array<Point, 2>;

struct Marks {
  std::optional<Circle> head;
  std::variant<std::monostate, OtherHead, Midline> other;
  std::optional<Point> socketEdge;    // lateral edge of the socket
  std::optional<Point> crestTop;      // highest point of the iliac crest
  std::optional<Point> crestLateral;  // its most lateral point
  std::optional<Point> trochanter;    // where the abductors attach
};

// Lengths in true millimetres, the angle in radians. What cannot be measured without a mark that is
// missing is empty.
struct Measurements {
  std::optional<double> halfInterhip;  // lizm
  std::optional<double> trochanterX;   // xizm, positive downward
  std::optional<double> trochanterZ;   // zizm, positive laterally
  std::optional<double> crestWidth;    // Cizm, positive laterally
  std::optional<double> crestHeight;   // Hizm, positive upward
  std::optional<double> centreEdge;    // thetaCE, rad, positive where the edge lies laterally
  std::optional<double> headRadius;
};

// The axes of a hip's frame, unit vectors on the picture.
struct Frame {
  Point origin;
  Point lateral;
  Point up;
  double halfInterhip = 0.0;  // mm on the picture
};

// Empty without the head and something that stands for the midline, and when these coincide, so
// that there is no direction.
std::optional<Frame> FrameOf(const Marks& marks);

// `magnification` is the size on the picture over the true size at the hip, for all lengths alike;
// above 0.
Measurements Measure(const Marks& marks, double magnification);

}  // namespace Landmarks
