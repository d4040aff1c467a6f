// What is marked on the picture, as the view shows it, and what lies where.
#pragma once

#include <QPointF>
#include <QString>
#include <array>
#include <cstddef>
#include <optional>

#include "measuring/marks.h"
#include "measuring/view_transform.h"

namespace Measuring {

// A circle in mm is an ellipse in pixels where rows and columns are not equally far apart.
struct CircleOnPicture {
  Landmarks::PixelPlace centre;
  double columns = 0.0;  // radius across
  double rows = 0.0;     // radius down
};
using CirclesOnPicture = std::array<std::optional<CircleOnPicture>, kMarkCount>;  // by MarkKind

// One of a mark's points.
struct MarkPoint {
  MarkKind kind = MarkKind::Head;
  std::size_t index = 0;
  bool operator==(const MarkPoint&) const = default;
};

struct MarkScene {
  MarkPoints points;
  CirclesOnPicture circles;  // that fit the points, where there are enough
  std::optional<MarkKind> current;
  std::optional<MarkPoint> selected;
};

bool Exists(const MarkScene& scene, MarkPoint point);
Landmarks::PixelPlace PlaceOf(const MarkScene& scene, MarkPoint point);

// The one `step` (1 or -1) after `from` in the order of the marks, and around; the first or the
// last without `from`. Nothing when there are none.
std::optional<MarkPoint> NextPoint(const MarkScene& scene, std::optional<MarkPoint> from, int step);

// The nearest point whose handle is under `position`; of equally near ones the current mark's.
std::optional<MarkPoint> PointUnder(const MarkScene& scene, const ViewTransform& transform,
                                    QPointF position);

// What a line, a circle or a handle under `position` is, in words; empty on free ground.
QString WordsUnder(const MarkScene& scene, const ViewTransform& transform, QPointF position);

QString WordsOf(const MarkScene& scene, MarkPoint point);
// All that is marked, and whether it is whole.
QString WordsOf(const MarkScene& scene);

}  // namespace Measuring
