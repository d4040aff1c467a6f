#include "measuring/mark_painter.h"

#include <QFontMetricsF>
#include <QLineF>
#include <QPen>
#include <QtMath>
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace Measuring {

using Landmarks::PixelPlace;

namespace {

// Device-independent pixels.
constexpr double kThin = 1.25;
constexpr double kThick = 2.0;
constexpr double kHaloAround = 1.25;  // on each side of a stroke
constexpr double kRing = 4.0;
constexpr double kSquare = 4.5;
constexpr double kSelectedRing = 9.5;
constexpr double kArm = 10.0;
constexpr double kCentreArm = 4.0;
constexpr double kCaptionGap = 13.0;  // clear of the arms of a point
constexpr double kPlateEdge = 4.0;    // on both sides of a text

constexpr QColor kHalo(0, 0, 0, 200);

struct Style {
  QColor colour;
  double width;
  bool isCurrent;
};

Style StyleOf(const MarkScene& scene, MarkKind kind) {
  if (scene.current == kind) return {kCurrentColour, kThick, true};
  const bool isScale = kind == MarkKind::Ball || kind == MarkKind::Line;
  return {isScale ? kScaleColour : kMarkColour, kThin, false};
}

// The parts of a mark that lie in the view. A stroke costs by its length, and the magnifier shows a
// small part of large outlines.
struct SeenPath {
  QSizeF view;
  QPainterPath path;

  void Add(const QPainterPath& part) {
    const QRectF reach = part.controlPointRect().adjusted(-kArm, -kArm, kArm, kArm);
    if (reach.intersects(QRectF({0.0, 0.0}, view))) path.addPath(part);
  }
};

QPainterPath Handle(QPointF at, const Style& style) {
  QPainterPath path;
  if (style.isCurrent) {
    path.addRect(QRectF(at - QPointF(kSquare, kSquare), QSizeF(kSquare, kSquare) * 2.0));
  } else {
    path.addEllipse(at, kRing, kRing);
  }
  return path;
}

// From handle to handle, which stay free.
QPainterPath LineBetween(QPointF a, QPointF b) {
  QPainterPath path;
  const double gap = kSquare * 1.5;
  const QLineF line(a, b);
  if (line.length() <= 2.0 * gap) return path;
  path.moveTo(line.pointAt(gap / line.length()));
  path.lineTo(line.pointAt(1.0 - gap / line.length()));
  return path;
}

// Where on the outline the handles are, in degrees, counterclockwise from the right; the first once
// more at the end.
std::vector<double> HandleAngles(const QRectF& outline, const std::vector<QPointF>& points) {
  std::vector<double> angles;
  for (const QPointF point : points) {
    const QPointF way = point - outline.center();
    const double share = std::hypot(way.x() / outline.width(), way.y() / outline.height()) * 2.0;
    if (std::abs(share - 1.0) * outline.width() / 2.0 > kSquare) continue;
    const double angle = std::atan2(-way.y() / outline.height(), way.x() / outline.width());
    angles.push_back(qRadiansToDegrees(angle));
  }
  std::sort(angles.begin(), angles.end());
  if (!angles.empty()) angles.push_back(angles.front() + 360.0);
  return angles;
}

// From handle to handle, so that the edge under them can be seen.
void AddOutline(SeenPath& seen, const QRectF& outline, const std::vector<QPointF>& points) {
  const std::vector<double> angles = HandleAngles(outline, points);
  if (angles.empty()) {
    QPainterPath whole;
    whole.addEllipse(outline);
    return seen.Add(whole);
  }
  const double gap = qRadiansToDegrees(kSquare / (outline.width() / 2.0));
  for (std::size_t i = 0; i + 1 < angles.size(); ++i) {
    const double length = angles[i + 1] - angles[i] - 2.0 * gap;
    if (length <= 0.0) continue;
    QPainterPath arc;
    arc.arcMoveTo(outline, angles[i] + gap);
    arc.arcTo(outline, angles[i] + gap, length);
    seen.Add(arc);
  }
}

QRectF OutlineOf(const ViewTransform& t, const CircleOnPicture& circle) {
  const QSizeF half(circle.columns * t.zoom, circle.rows * t.zoom * t.aspect);
  return {PositionOf(t, circle.centre) - QPointF(half.width(), half.height()), half * 2.0};
}

struct PlacedMark {
  const MarkRow* row;
  std::vector<QPointF> points;
  Style style;
};

std::vector<QPointF> PositionsOf(const ViewTransform& t, const std::vector<PixelPlace>& places) {
  std::vector<QPointF> positions;
  positions.reserve(places.size());
  for (const PixelPlace place : places) positions.push_back(PositionOf(t, place));
  return positions;
}

// The current mark last: over the others.
std::vector<PlacedMark> PlacedMarks(const MarkScene& scene, const ViewTransform& t) {
  std::vector<PlacedMark> marks;
  for (const MarkRow& row : kMarks) {
    const auto& places = scene.points[IndexOf(row.id)];
    if (places.empty()) continue;
    marks.push_back({&row, PositionsOf(t, places), StyleOf(scene, row.id)});
  }
  std::stable_partition(marks.begin(), marks.end(),
                        [](const PlacedMark& mark) { return !mark.style.isCurrent; });
  return marks;
}

void PaintMark(QPainter& painter, const ViewTransform& t, const MarkScene& scene,
               const PlacedMark& mark) {
  SeenPath seen{t.view, {}};
  const auto& circle = scene.circles[IndexOf(mark.row->id)];
  if (circle) {
    AddOutline(seen, OutlineOf(t, *circle), mark.points);
    seen.Add(OpenCross(PositionOf(t, circle->centre), 0.0, kCentreArm));
  }
  if (mark.row->shape == MarkShape::Line && mark.points.size() == 2) {
    seen.Add(LineBetween(mark.points[0], mark.points[1]));
  }
  for (const QPointF at : mark.points) {
    seen.Add(Handle(at, mark.style));
    if (mark.row->shape == MarkShape::Point) seen.Add(OpenCross(at, kSquare, kArm));
  }
  PaintStroke(painter, seen.path, mark.style.colour, mark.style.width);
}

void PaintSelection(QPainter& painter, const ViewTransform& t, const MarkScene& scene) {
  if (!scene.selected || !Exists(scene, *scene.selected)) return;
  QPainterPath path;
  path.addEllipse(PositionOf(t, PlaceOf(scene, *scene.selected)), kSelectedRing, kSelectedRing);
  PaintStroke(painter, path, kPlainColour, kThin);
}

// A handle lies in the view, or a part of the line or of the outline does. A slanting line passes
// by a view that lies within its bounds, and an outline goes around one.
bool IsSeen(const PlacedMark& mark, const ViewTransform& t, const MarkScene& scene) {
  const QRectF view({0.0, 0.0}, t.view);
  std::vector<QPointF> places = mark.points;
  QPainterPath stroke;
  if (const auto& circle = scene.circles[IndexOf(mark.row->id)]) {
    places.push_back(PositionOf(t, circle->centre));
    stroke.addEllipse(OutlineOf(t, *circle));
  } else if (mark.row->shape == MarkShape::Line && mark.points.size() == 2) {
    stroke.moveTo(mark.points[0]);
    stroke.lineTo(mark.points[1]);
  }
  return std::any_of(places.begin(), places.end(), [&](QPointF at) { return view.contains(at); }) ||
         (stroke.intersects(view) && !stroke.contains(view));
}

// What a caption stands beside.
QRectF Extent(const PlacedMark& mark, const ViewTransform& t, const MarkScene& scene) {
  if (const auto& circle = scene.circles[IndexOf(mark.row->id)]) return OutlineOf(t, *circle);
  if (mark.row->shape != MarkShape::Line) return {mark.points.front(), QSizeF(0.0, 0.0)};
  return QRectF(mark.points.front(), mark.points.back()).normalized();
}

QRectF MovedInto(QSizeF view, const QRectF& place) {
  const double x = std::clamp(place.x(), 0.0, std::max(0.0, view.width() - place.width()));
  const double y = std::clamp(place.y(), 0.0, std::max(0.0, view.height() - place.height()));
  return {QPointF(x, y), place.size()};
}

// Where a plate of this size may stand, the best place first. Those above and below give way to the
// sides of the view.
std::array<QRectF, 4> PlacesBeside(const QRectF& extent, QSizeF size, QSizeF view) {
  const double w = size.width();
  const double h = size.height();
  const QPointF middle = extent.center();
  const double x = std::clamp(middle.x() - w / 2.0, 0.0, std::max(0.0, view.width() - w));
  return {QRectF(QPointF(extent.right() + kCaptionGap, middle.y() - h / 2.0), size),
          QRectF(QPointF(extent.left() - kCaptionGap - w, middle.y() - h / 2.0), size),
          QRectF(QPointF(x, extent.top() - kCaptionGap - h), size),
          QRectF(QPointF(x, extent.bottom() + kCaptionGap), size)};
}

bool IsFree(const QRectF& place, QSizeF view, const std::vector<QRectF>& taken) {
  return QRectF({0.0, 0.0}, view).contains(place) &&
         std::none_of(taken.begin(), taken.end(),
                      [&](const QRectF& other) { return other.intersects(place); });
}

// A mark that is in the view has its caption there, if need be over something else.
QRectF CaptionPlace(const QRectF& extent, QSizeF size, QSizeF view,
                    const std::vector<QRectF>& taken) {
  const auto places = PlacesBeside(extent, size, view);
  const auto free = std::find_if(places.begin(), places.end(),
                                 [&](const QRectF& p) { return IsFree(p, view, taken); });
  if (free != places.end()) return *free;
  return MovedInto(view, places[0]);
}

QRectF AroundPoint(QPointF at) {
  return QRectF(at, QSizeF(0.0, 0.0)).adjusted(-kArm, -kArm, kArm, kArm);
}

void PaintCaptions(QPainter& painter, const ViewTransform& t, const MarkScene& scene,
                   const std::vector<PlacedMark>& marks, Captions captions) {
  const QFontMetricsF metrics(painter.font());
  std::vector<QRectF> taken;
  for (const PlacedMark& mark : marks) {
    for (const QPointF at : mark.points) taken.push_back(AroundPoint(at));
  }
  for (const PlacedMark& mark : marks) {
    if (captions == Captions::OfCurrent && !mark.style.isCurrent) continue;
    if (!IsSeen(mark, t, scene)) continue;
    const QRectF extent = Extent(mark, t, scene);
    const QString text = mark.row->caption.toString();
    const QSizeF size(metrics.horizontalAdvance(text) + 2.0 * kPlateEdge, metrics.height());
    taken.push_back(CaptionPlace(extent, size, t.view, taken));
    const QPointF baseline(taken.back().left() + kPlateEdge, taken.back().top() + metrics.ascent());
    PaintText(painter, baseline, text, mark.style.colour);
  }
}

}  // namespace

void PaintStroke(QPainter& painter, const QPainterPath& path, QColor colour, double width) {
  painter.strokePath(
      path, QPen(kHalo, width + 2.0 * kHaloAround, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.strokePath(path, QPen(colour, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
}

void PaintText(QPainter& painter, QPointF baseline, const QString& text, QColor colour) {
  const QFontMetricsF metrics(painter.font());
  const QRectF plate(baseline.x() - kPlateEdge, baseline.y() - metrics.ascent(),
                     metrics.horizontalAdvance(text) + 2.0 * kPlateEdge, metrics.height());
  painter.setPen(Qt::NoPen);
  painter.setBrush(kHalo);
  painter.drawRoundedRect(plate, kPlateEdge / 2.0, kPlateEdge / 2.0);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(colour);
  painter.drawText(baseline, text);
}

QPainterPath OpenCross(QPointF at, double gap, double reach) {
  QPainterPath path;
  for (const QPointF way : {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)}) {
    path.moveTo(at + gap * way);
    path.lineTo(at + reach * way);
  }
  return path;
}

void PaintMarks(QPainter& painter, const ViewTransform& transform, const MarkScene& scene,
                Captions captions) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  const std::vector<PlacedMark> marks = PlacedMarks(scene, transform);
  for (const PlacedMark& mark : marks) PaintMark(painter, transform, scene, mark);
  PaintSelection(painter, transform, scene);
  if (captions != Captions::None) PaintCaptions(painter, transform, scene, marks, captions);
  painter.restore();
}

}  // namespace Measuring
