// The pelvis's frame and what is measured in it.
#include "landmarks/measure.h"

#include <cmath>

namespace Landmarks {

namespace {

// At right angles to `lateral`, towards the upper edge of the picture.
Point UpFrom(Point lateral) {
  const Point up = {lateral.y, -lateral.x};
  return up.y <= 0.0 ? up : -1.0 * up;
}

std::optional<Point> Unit(Point p) {
  const double length = Length(p);
  if (!(length > 0.0) || !std::isfinite(length)) return std::nullopt;
  return 1.0 / length * p;
}

std::optional<Frame> FrameFrom(Point head, const OtherHead& other) {
  const std::optional<Point> lateral = Unit(head - other.centre);
  if (!lateral) return std::nullopt;
  return Frame{head, *lateral, UpFrom(*lateral), Length(head - other.centre) / 2.0};
}

// The foot of the head's perpendicular on the midline stands for the middle between the heads.
std::optional<Frame> FrameFrom(Point head, const Midline& midline) {
  const std::optional<Point> along = Unit(midline[1] - midline[0]);
  if (!along) return std::nullopt;
  const Point arm = head - midline[0];
  const Point across = arm - Dot(arm, *along) * *along;
  const std::optional<Point> lateral = Unit(across);
  if (!lateral) return std::nullopt;
  return Frame{head, *lateral, UpFrom(*lateral), Length(across)};
}

}  // namespace

std::optional<Frame> FrameOf(const Marks& marks) {
  if (!marks.head) return std::nullopt;
  const Point head = marks.head->centre;
  if (const auto* other = std::get_if<OtherHead>(&marks.other)) return FrameFrom(head, *other);
  if (const auto* midline = std::get_if<Midline>(&marks.other)) return FrameFrom(head, *midline);
  return std::nullopt;
}

Measurements Measure(const Marks& marks, double magnification) {
  Measurements found;
  if (marks.head) found.headRadius = marks.head->radius / magnification;
  const std::optional<Frame> frame = FrameOf(marks);
  if (!frame) return found;
  const auto sideways = [&](Point p) {
    return Dot(p - frame->origin, frame->lateral) / magnification;
  };
  const auto upward = [&](Point p) { return Dot(p - frame->origin, frame->up) / magnification; };
  found.halfInterhip = frame->halfInterhip / magnification;
  if (marks.trochanter) {
    found.trochanterX = -upward(*marks.trochanter);
    found.trochanterZ = sideways(*marks.trochanter);
  }
  if (marks.crestLateral) found.crestWidth = sideways(*marks.crestLateral);
  if (marks.crestTop) found.crestHeight = upward(*marks.crestTop);
  if (marks.socketEdge) {
    found.centreEdge = std::atan2(sideways(*marks.socketEdge), upward(*marks.socketEdge));
  }
  return found;
}

}  // namespace Landmarks
