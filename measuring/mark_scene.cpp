#include "measuring/mark_scene.h"

#include <QLineF>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <vector>

namespace Measuring {

using Landmarks::PixelPlace;

namespace {

constexpr double kReach = 10.0;     // of a handle, device-independent pixels
constexpr double kLineReach = 5.0;  // of a line or an outline

const std::vector<PixelPlace>& PointsOf(const MarkScene& scene, MarkKind kind) {
  return scene.points[IndexOf(kind)];
}

std::vector<MarkPoint> AllPoints(const MarkScene& scene) {
  std::vector<MarkPoint> all;
  for (const MarkRow& row : kMarks) {
    for (std::size_t i = 0; i < PointsOf(scene, row.id).size(); ++i) all.push_back({row.id, i});
  }
  return all;
}

double DistanceToOutline(const CircleOnPicture& circle, const ViewTransform& transform,
                         QPointF at) {
  const QPointF from = at - PositionOf(transform, circle.centre);
  const double across = circle.columns * transform.zoom;
  const double down = circle.rows * transform.zoom * transform.aspect;
  return std::abs(std::hypot(from.x() / across, from.y() / down) - 1.0) * std::min(across, down);
}

double DistanceToLine(QPointF a, QPointF b, QPointF at) {
  const QPointF way = b - a;
  const double length = QPointF::dotProduct(way, way);
  const double share = length > 0.0 ? QPointF::dotProduct(at - a, way) / length : 0.0;
  return QLineF(at, a + std::clamp(share, 0.0, 1.0) * way).length();
}

bool IsUnder(const MarkScene& scene, const ViewTransform& transform, const MarkRow& row,
             QPointF at) {
  const auto& circle = scene.circles[IndexOf(row.id)];
  if (circle && DistanceToOutline(*circle, transform, at) <= kLineReach) return true;
  const auto& points = PointsOf(scene, row.id);
  if (row.shape != MarkShape::Line || points.size() < 2) return false;
  const QPointF a = PositionOf(transform, points[0]);
  const QPointF b = PositionOf(transform, points[1]);
  return DistanceToLine(a, b, at) <= kLineReach;
}

QString StateOf(const MarkScene& scene, const MarkRow& row) {
  const auto count = PointsOf(scene, row.id).size();
  if (row.most() == 1) return QStringLiteral("set");
  QString points = count == 1 ? QStringLiteral("1 point") : QStringLiteral("%1 points").arg(count);
  if (IsWhole(scene.points, row.id)) return points;
  return QStringLiteral("%1 of %2").arg(points).arg(row.least());
}

}  // namespace

bool Exists(const MarkScene& scene, MarkPoint point) {
  return point.index < PointsOf(scene, point.kind).size();
}

PixelPlace PlaceOf(const MarkScene& scene, MarkPoint point) {
  return PointsOf(scene, point.kind)[point.index];
}

std::optional<MarkPoint> NextPoint(const MarkScene& scene, std::optional<MarkPoint> from,
                                   int step) {
  const std::vector<MarkPoint> all = AllPoints(scene);
  if (all.empty()) return {};
  const auto found = from ? std::find(all.begin(), all.end(), *from) : all.end();
  if (found == all.end()) return step > 0 ? all.front() : all.back();
  const auto count = std::ptrdiff_t(all.size());
  return all[static_cast<std::size_t>((found - all.begin() + step + count) % count)];
}

std::optional<MarkPoint> PointUnder(const MarkScene& scene, const ViewTransform& transform,
                                    QPointF position) {
  std::optional<MarkPoint> nearest;
  double least = kReach;
  for (const MarkPoint point : AllPoints(scene)) {
    const double distance = QLineF(PositionOf(transform, PlaceOf(scene, point)), position).length();
    const bool goesBefore = distance == least && scene.current == point.kind;
    if (distance > least || (distance == least && nearest && !goesBefore)) continue;
    nearest = point;
    least = distance;
  }
  return nearest;
}

QString WordsUnder(const MarkScene& scene, const ViewTransform& transform, QPointF position) {
  if (const auto point = PointUnder(scene, transform, position)) return WordsOf(scene, *point);
  for (const MarkRow& row : kMarks) {
    if (IsUnder(scene, transform, row, position)) return row.caption.toString();
  }
  return {};
}

QString WordsOf(const MarkScene& scene, MarkPoint point) {
  const MarkRow& row = RowOf(point.kind);
  if (row.most() == 1) return row.caption.toString();
  return QStringLiteral("%1, point %2 of %3")
      .arg(row.caption)
      .arg(point.index + 1)
      .arg(PointsOf(scene, point.kind).size());
}

QString WordsOf(const MarkScene& scene) {
  QStringList words;
  for (const MarkRow& row : kMarks) {
    if (PointsOf(scene, row.id).empty()) continue;
    words << QStringLiteral("%1: %2.").arg(row.caption, StateOf(scene, row));
  }
  return words.isEmpty() ? QStringLiteral("Nothing is marked.") : words.join(u' ');
}

}  // namespace Measuring
