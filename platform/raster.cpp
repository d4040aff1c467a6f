// Scan lines and strokes.
#include "platform/raster.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <utility>

namespace {

QRgb* Row(QImage& image, int y) {
  return reinterpret_cast<QRgb*>(image.scanLine(y));
}

// The smallest whole number that is not below `x`, held within 0 to `limit`.
int CeilWithin(double x, int limit) {
  if (!(x > 0.0)) return 0;
  if (x > limit) return limit;
  const int whole = static_cast<int>(x);
  return whole < x ? whole + 1 : whole;
}

// Where the edge meets the row: exact as long as the edge is shorter than 2^26 pixels.
double CrossingAt(int y, QPoint upper, QPoint lower) {
  const double dx = static_cast<double>(lower.x()) - upper.x();
  const double dy = static_cast<double>(lower.y()) - upper.y();
  return upper.x() + (static_cast<double>(y) - upper.y()) * dx / dy;
}

struct Bounds {
  int left, top, right, bottom;
};

Bounds BoundsOf(std::span<const QPoint> points) {
  Bounds bounds{points[0].x(), points[0].y(), points[0].x(), points[0].y()};
  for (const QPoint& point : points.subspan(1)) {
    bounds.left = std::min(bounds.left, point.x());
    bounds.right = std::max(bounds.right, point.x());
    bounds.top = std::min(bounds.top, point.y());
    bounds.bottom = std::max(bounds.bottom, point.y());
  }
  return bounds;
}

void Stamp(QImage& image, std::int64_t x, std::int64_t y, const Stroke& stroke) {
  const std::int64_t before = (stroke.width - 1) / 2;
  const std::int64_t left = std::max<std::int64_t>(0, x - before);
  const std::int64_t right = std::min<std::int64_t>(image.width(), x - before + stroke.width);
  const std::int64_t top = std::max<std::int64_t>(0, y - before);
  const std::int64_t bottom = std::min<std::int64_t>(image.height(), y - before + stroke.width);
  for (std::int64_t line = top; line < bottom; ++line) {
    QRgb* row = Row(image, static_cast<int>(line));
    for (std::int64_t column = left; column < right; ++column) row[column] = stroke.colour;
  }
}

// The part of a line, 0 to 1, on the inner side of one border; `distance` is how far inside its
// ends are.
bool ClipPart(double distanceFrom, double distanceTo, double& start, double& end) {
  const bool outsideFrom = distanceFrom < 0.0;
  const bool outsideTo = distanceTo < 0.0;
  if (outsideFrom == outsideTo) return !outsideFrom;
  const double part = distanceFrom / (distanceFrom - distanceTo);
  if (outsideFrom) start = std::max(start, part);
  if (outsideTo) end = std::min(end, part);
  return start <= end;
}

struct Segment {
  QPoint from, to;
};

// Cuts off what lies far outside the image, so that a stroke costs no more than the image is wide.
std::optional<Segment> Clip(const Segment& line, QSize size, int margin) {
  const double x0 = line.from.x();
  const double y0 = line.from.y();
  const double x1 = line.to.x();
  const double y1 = line.to.y();
  const double right = size.width() + margin;
  const double bottom = size.height() + margin;
  double start = 0.0;
  double end = 1.0;
  if (!ClipPart(x0 + margin, x1 + margin, start, end)) return std::nullopt;
  if (!ClipPart(right - x0, right - x1, start, end)) return std::nullopt;
  if (!ClipPart(y0 + margin, y1 + margin, start, end)) return std::nullopt;
  if (!ClipPart(bottom - y0, bottom - y1, start, end)) return std::nullopt;
  const auto at = [&](double part) {
    return QPoint(static_cast<int>(std::lround(x0 + part * (x1 - x0))),
                  static_cast<int>(std::lround(y0 + part * (y1 - y0))));
  };
  return Segment{at(start), at(end)};
}

// A dot is twice as long as the stroke is wide, and so is the gap.
bool IsInGap(const Stroke& stroke, int step) {
  return stroke.style == LineStyle::Dotted && step / (2 * stroke.width) % 2 == 1;
}

}  // namespace

void PolygonFiller::FillRow(QRgb* row, int width, int y, std::span<const QPoint> points,
                            QRgb colour) {
  crossings_.clear();
  QPoint last = points.back();
  for (const QPoint& point : points) {
    const QPoint upper = last.y() < point.y() ? last : point;
    const QPoint lower = last.y() < point.y() ? point : last;
    if (upper.y() <= y && y < lower.y()) {
      crossings_.push_back(CeilWithin(CrossingAt(y, upper, lower), width));
    }
    last = point;
  }
  if (crossings_.size() > 2) {
    std::sort(crossings_.begin(), crossings_.end());
  } else if (crossings_.size() == 2 && crossings_[0] > crossings_[1]) {
    std::swap(crossings_[0], crossings_[1]);
  }
  for (std::size_t i = 0; i + 1 < crossings_.size(); i += 2) {
    std::fill(row + crossings_[i], row + crossings_[i + 1], colour);
  }
}

void PolygonFiller::Fill(QImage& image, std::span<const QPoint> points, QRgb colour) {
  if (points.empty() || image.isNull()) return;
  const Bounds bounds = BoundsOf(points);
  if (bounds.left == bounds.right || bounds.right <= 0 || bounds.left >= image.width()) return;
  const int top = std::max(0, bounds.top);
  const int bottom = std::min(image.height(), bounds.bottom);
  for (int y = top; y < bottom; ++y) FillRow(Row(image, y), image.width(), y, points, colour);
}

void DrawStroke(QImage& image, QPoint from, QPoint to, const Stroke& stroke) {
  if (stroke.style == LineStyle::None || image.isNull()) return;
  if (to.y() < from.y() || (to.y() == from.y() && to.x() < from.x())) std::swap(from, to);
  const std::optional<Segment> line = Clip({from, to}, image.size(), stroke.width);
  if (!line) return;
  const int dx = std::abs(line->to.x() - line->from.x());
  const int dy = line->to.y() - line->from.y();
  const int stepX = line->from.x() < line->to.x() ? 1 : -1;
  QPoint at = line->from;
  int error = dx - dy;
  for (int step = 0;; ++step) {
    if (!IsInGap(stroke, step)) Stamp(image, at.x(), at.y(), stroke);
    if (at == line->to) return;
    const int twice = 2 * error;
    if (twice > -dy) {
      error -= dy;
      at.rx() += stepX;
    }
    if (twice < dx) {
      error += dx;
      at.ry() += 1;
    }
  }
}
