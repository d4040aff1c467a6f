// From marks on a radiograph of the pelvis to the measurements of one hip.
//
// The frame has its origin at the centre of the femoral head. Horizontal is the line through the
// two head centres, or at right angles to the midline where the other head cannot be used. Lateral
// points away from the other head or the midline, up to the patient's head; so no sign depends on
// the side, on a tilt of less than a right angle, or on a picture that was flipped.
#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

#include "landmarks/circle_fit.h"
#include "landmarks/picture_scale.h"
#include "landmarks/point.h"

namespace Landmarks {

// Two points on the body's midline, in any order.
using Midline = std::array<Point, 2>;

struct Marks {
  std::optional<Circle> head;
  std::variant<std::monostate, Circle, Midline> other;  // the other head, or the midline
  std::optional<Point> socketEdge;                      // lateral edge of the socket
  std::optional<Point> crestTop;                        // highest point of the iliac crest
  std::optional<Point> crestLateral;                    // its most lateral point
  std::optional<Point> trochanter;                      // where the abductors attach
  // Roughly where the patient's head is, of any length: the upper edge of the picture, unless the
  // picture stands on its head or lies on its side.
  Point towardsHead = {0.0, -1.0};
};

// At the hip: what is on the picture, divided by the magnification.
struct TrueMillimetres {
  double value = 0.0;
};
struct Radians {
  double value = 0.0;
};

struct Measurements {
  std::optional<TrueMillimetres> halfInterhip;
  std::optional<TrueMillimetres> trochanterX;  // positive downward
  std::optional<TrueMillimetres> trochanterZ;  // positive laterally
  std::optional<TrueMillimetres> crestWidth;   // positive laterally
  std::optional<TrueMillimetres> crestHeight;  // positive upward
  std::optional<Radians> centreEdge;           // from the vertical, positive laterally; -π to π
  std::optional<TrueMillimetres> headRadius;
};

enum class Mark { Head, Other, SocketEdge, CrestTop, CrestLateral, Trochanter };

// One row for each measurement: its name in the case file and the marks that it takes besides the
// head, which all of them take.
struct MeasurementMarks {
  std::string_view key;
  bool takesOther = true;
  std::optional<Mark> own;
};
inline constexpr std::array<MeasurementMarks, 7> kMeasurementMarks = {{
    {"lizm", true, std::nullopt},
    {"xizm", true, Mark::Trochanter},
    {"zizm", true, Mark::Trochanter},
    {"Cizm", true, Mark::CrestLateral},
    {"Hizm", true, Mark::CrestTop},
    {"thetaCE", true, Mark::SocketEdge},
    {"headRadius", false, std::nullopt},
}};

// Marks that must still be set before this measurement can be taken, in the order of Mark.
std::vector<Mark> MissingMarks(const Marks& marks, const MeasurementMarks& measurement);

// The axes of a hip's frame, unit vectors on the picture.
struct Frame {
  Point origin;
  Point lateral;
  Point up;
  double halfInterhip = 0.0;  // mm on the picture
};

// Empty without the head or without what gives the midline, and where these leave the directions
// open: both heads in one place, a midline of one point or through the head's centre, a tilt of
// exactly a right angle.
std::optional<Frame> FrameOf(const Marks& marks);

// What can be measured; a measurement with a missing mark is empty, and so are all but the radius
// where the frame is.
Measurements Measure(const Marks& marks, const Magnification& magnification);

// A mark on the iliac crest lies below the head's centre: the picture stands on its head and
// `towardsHead` does not say so, or the mark is misplaced.
bool IsUpsideDown(const Marks& marks);

}  // namespace Landmarks
