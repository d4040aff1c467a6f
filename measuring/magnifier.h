// The surroundings of a point that is being placed, enlarged in a corner of the view.
#pragma once

#include <QPainter>
#include <QRectF>
#include <cstdint>
#include <vector>

#include "measuring/grey_pyramid.h"
#include "measuring/mark_scene.h"

namespace Measuring {

// In one of the upper corners of the view, and never over `point`: it stays where `before` has it
// as long as it can. Device-independent pixels.
QRectF MagnifierArea(QSizeF view, QPointF point, const QRectF& before);

// Four times the view's zoom, at least four device pixels a pixel.
ViewTransform MagnifierTransform(const ViewTransform& view, QSizeF area,
                                 Landmarks::PixelPlace place, double deviceRatio);

// What the magnifier looks at.
struct Magnified {
  const GreyPyramid& pyramid;
  const std::vector<std::uint8_t>& brightness;
  const MarkScene& scene;
  Landmarks::PixelPlace place;  // in its middle, under the fine cross
};

void PaintMagnifier(QPainter& painter, const QRectF& area, const ViewTransform& view,
                    const Magnified& magnified, double deviceRatio);

}  // namespace Measuring
