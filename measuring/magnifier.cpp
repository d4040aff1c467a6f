#include "measuring/magnifier.h"

#include <algorithm>
#include <cmath>

#include "measuring/mark_painter.h"

namespace Measuring {

namespace {

constexpr double kSide = 224.0;       // device-independent pixels
constexpr double kShareOfView = 0.4;  // at most: the two corners never overlap
constexpr double kGap = 8.0;          // to the edges of the view
constexpr double kAway = 12.0;        // from the point, whose handle is seen too
constexpr double kTimes = 4.0;
constexpr double kLeastZoom = 4.0;  // device pixels a pixel
constexpr double kCrossGap = 4.0;
constexpr QRgb kGround = 0xFF000000U;

bool IsClear(const QRectF& area, QPointF point) {
  return !area.adjusted(-kAway, -kAway, kAway, kAway).contains(point);
}

}  // namespace

QRectF MagnifierArea(QSizeF view, QPointF point, const QRectF& before) {
  const double side =
      std::floor(std::min({kSide, kShareOfView * view.width(), kShareOfView * view.height()}));
  const QRectF left(kGap, kGap, side, side);
  const QRectF right(view.width() - kGap - side, kGap, side, side);
  if (before == right && IsClear(right, point)) return right;
  return IsClear(left, point) ? left : right;
}

ViewTransform MagnifierTransform(const ViewTransform& view, QSizeF area,
                                 Landmarks::PixelPlace place, double deviceRatio) {
  ViewTransform transform = view;
  transform.view = area;
  transform.middle = place;
  transform.zoom = std::max(kTimes * view.zoom, kLeastZoom / deviceRatio);
  return transform;
}

void PaintMagnifier(QPainter& painter, const QRectF& area, const ViewTransform& view,
                    const Magnified& magnified, double deviceRatio) {
  const ViewTransform transform =
      MagnifierTransform(view, area.size(), magnified.place, deviceRatio);
  QImage image((area.size() * deviceRatio).toSize(), QImage::Format_RGB32);
  PaintSeen(magnified.pyramid, transform, deviceRatio, magnified.brightness, kGround, image);
  MarkScene scene = magnified.scene;
  scene.selected.reset();  // its ring would be in the way of the cross
  painter.save();
  painter.setClipRect(area);
  painter.drawImage(area, image);
  painter.translate(area.topLeft());
  PaintMarks(painter, transform, scene, Captions::None);
  const QPointF middle(area.width() / 2.0, area.height() / 2.0);
  PaintStroke(painter, OpenCross(middle, kCrossGap, area.width()), kPlainColour, 1.0);
  QPainterPath frame;
  frame.addRect(QRectF({0.0, 0.0}, area.size()).adjusted(0.5, 0.5, -0.5, -0.5));
  PaintStroke(painter, frame, kPlainColour, 1.0);
  painter.restore();
}

}  // namespace Measuring
