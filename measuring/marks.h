// What a user marks on a radiograph: one row for each mark, in the order in which they are asked
// for. Every mark is a list of points, so that setting, dragging, undoing and keeping them is one
// thing for all.
#pragma once

#include <QStringView>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "landmarks/picture_scale.h"

namespace Measuring {

enum class MarkKind : std::uint8_t {
  Head,
  OtherHead,
  Midline,
  SocketEdge,
  CrestTop,
  CrestLateral,
  Trochanter,
  Ball,
  Line
};

enum class MarkShape { Point, Line, Circle };

struct MarkRow {
  MarkKind id = MarkKind::Head;
  QStringView key;      // in kept work
  QStringView caption;  // in lists
  MarkShape shape = MarkShape::Point;
  QStringView instruction;  // what to do to set it

  // Points that make it whole, and as many as it can have.
  constexpr std::size_t least() const {
    return shape == MarkShape::Circle ? 3 : shape == MarkShape::Line ? 2 : 1;
  }
  constexpr std::size_t most() const { return shape == MarkShape::Circle ? 64 : least(); }
};

inline constexpr std::array kMarks = {
    MarkRow{MarkKind::Head, u"head", u"Head circle", MarkShape::Circle,
            u"Click three or more points on the edge of the femoral head, or drag from its centre "
            u"to its edge."},
    MarkRow{MarkKind::OtherHead, u"otherHead", u"Other head", MarkShape::Circle,
            u"Click three or more points on the edge of the other femoral head, or drag from its "
            u"centre to its edge. If it cannot be used, mark the midline instead."},
    MarkRow{MarkKind::Midline, u"midline", u"Midline", MarkShape::Line,
            u"Click two points on the midline of the body, far apart. Needed only where the other "
            u"head cannot be used."},
    MarkRow{MarkKind::SocketEdge, u"socketEdge", u"Edge of the socket", MarkShape::Point,
            u"Click the lateral edge of the socket."},
    MarkRow{MarkKind::CrestTop, u"crestTop", u"Crest, top", MarkShape::Point,
            u"Click the highest point of the iliac crest."},
    MarkRow{MarkKind::CrestLateral, u"crestLateral", u"Crest, lateral", MarkShape::Point,
            u"Click the most lateral point of the iliac crest."},
    MarkRow{MarkKind::Trochanter, u"trochanter", u"Trochanter", MarkShape::Point,
            u"Click the trochanter point, where the abductors attach."},
    MarkRow{MarkKind::Ball, u"ball", u"Ball of known size", MarkShape::Circle,
            u"Click three or more points on the edge of the ball, or drag from its centre to its "
            u"edge. Then enter its diameter."},
    MarkRow{MarkKind::Line, u"line", u"Line of known length", MarkShape::Line,
            u"Click the two ends of the line. Then enter its length."}};
inline constexpr std::size_t kMarkCount = kMarks.size();

constexpr std::size_t IndexOf(MarkKind id) {
  return static_cast<std::size_t>(id);
}
constexpr const MarkRow& RowOf(MarkKind id) {
  return kMarks[IndexOf(id)];
}

// The points of all marks, by MarkKind, in the order in which they were set.
using MarkPoints = std::array<std::vector<Landmarks::PixelPlace>, kMarkCount>;

inline bool IsWhole(const MarkPoints& points, MarkKind id) {
  return points[IndexOf(id)].size() >= RowOf(id).least();
}

}  // namespace Measuring
