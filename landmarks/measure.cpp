// The pelvis's frame and what is measured in it.
#include "landmarks/measure.h"

#include <cmath>

namespace Landmarks {

namespace {

// Below a millionth of a millimetre a direction is rounding.
std::optional<Point> Unit(Point p) {
  const double length = Length(p);
  if (!(length > 1e-6) || !std::isfinite(length)) return std::nullopt;
  return 1.0 / length * p;
}

// From the body's midline to the head's centre, at right angles to the midline.
std::optional<Point> ArmTo(Point head, const Marks& marks) {
  if (const auto* other = std::get_if<Circle>(&marks.other)) {
    return 0.5 * (head - other->centre);
  }
  const auto* midline = std::get_if<Midline>(&marks.other);
  if (!midline) return std::nullopt;
  const std::optional<Point> along = Unit((*midline)[1] - (*midline)[0]);
  if (!along) return std::nullopt;
  const Point arm = head - (*midline)[0];
  return arm - Dot(arm, *along) * *along;
}

// Where a point lies in the frame, in true millimetres.
struct Place {
  TrueMillimetres lateral;
  TrueMillimetres up;
};

Place PlaceOf(Point point, const Frame& frame, const Magnification& magnification) {
  const Point arm = point - frame.origin;
  return {{Dot(arm, frame.lateral) / magnification.factor},
          {Dot(arm, frame.up) / magnification.factor}};
}

bool IsSet(const Marks& marks, Mark mark) {
  switch (mark) {
    case Mark::Head:
      return marks.head.has_value();
    case Mark::Other:
      return !std::holds_alternative<std::monostate>(marks.other);
    case Mark::SocketEdge:
      return marks.socketEdge.has_value();
    case Mark::CrestTop:
      return marks.crestTop.has_value();
    case Mark::CrestLateral:
      return marks.crestLateral.has_value();
    case Mark::Trochanter:
      return marks.trochanter.has_value();
  }
  return false;
}

}  // namespace

std::vector<Mark> MissingMarks(const Marks& marks, const MeasurementMarks& measurement) {
  std::vector<Mark> missing;
  if (!IsSet(marks, Mark::Head)) missing.push_back(Mark::Head);
  if (measurement.takesOther && !IsSet(marks, Mark::Other)) missing.push_back(Mark::Other);
  if (measurement.own && !IsSet(marks, *measurement.own)) missing.push_back(*measurement.own);
  return missing;
}

std::optional<Frame> FrameOf(const Marks& marks) {
  if (!marks.head) return std::nullopt;
  const Point head = marks.head->centre;
  const std::optional<Point> arm = ArmTo(head, marks);
  const std::optional<Point> lateral = arm ? Unit(*arm) : std::nullopt;
  if (!lateral) return std::nullopt;
  const Point across = {lateral->y, -lateral->x};
  const double towardsHead = Dot(across, marks.towardsHead);
  if (!(std::abs(towardsHead) > 0.0)) return std::nullopt;
  return Frame{head, *lateral, (towardsHead > 0.0 ? 1.0 : -1.0) * across, Length(*arm)};
}

Measurements Measure(const Marks& marks, const Magnification& magnification) {
  Measurements found;
  if (marks.head) found.headRadius = {marks.head->radius / magnification.factor};
  const std::optional<Frame> frame = FrameOf(marks);
  if (!frame) return found;
  found.halfInterhip = {frame->halfInterhip / magnification.factor};
  const auto place = [&](Point point) { return PlaceOf(point, *frame, magnification); };
  if (marks.trochanter) {
    found.trochanterX = {-place(*marks.trochanter).up.value};
    found.trochanterZ = place(*marks.trochanter).lateral;
  }
  if (marks.crestLateral) found.crestWidth = place(*marks.crestLateral).lateral;
  if (marks.crestTop) found.crestHeight = place(*marks.crestTop).up;
  if (marks.socketEdge) {
    const Place edge = place(*marks.socketEdge);
    found.centreEdge = {std::atan2(edge.lateral.value, edge.up.value)};
  }
  return found;
}

bool IsUpsideDown(const Marks& marks) {
  const std::optional<Frame> frame = FrameOf(marks);
  if (!frame) return false;
  const auto isBelow = [&](const std::optional<Point>& mark) {
    return mark && Dot(*mark - frame->origin, frame->up) < 0.0;
  };
  return isBelow(marks.crestTop) || isBelow(marks.crestLateral);
}

}  // namespace Landmarks
