// Where a place on the picture lies in the view, and back. Positions are device-independent pixels
// of the view, from its top left corner.
#pragma once

#include <QPoint>
#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QSizeF>

#include "landmarks/picture_scale.h"

namespace Measuring {

struct ViewTransform {
  QSizeF view;                   // device-independent pixels
  double zoom = 1.0;             // device-independent pixels a column is wide
  double aspect = 1.0;           // height of a picture's pixel ÷ its width
  bool flipped = false;          // left and right change sides
  Landmarks::PixelPlace middle;  // in the middle of the view
  bool operator==(const ViewTransform&) const = default;
};

struct ZoomLimits {
  double least = 0.0;
  double most = 0.0;
};

QPointF PositionOf(const ViewTransform& transform, Landmarks::PixelPlace place);
Landmarks::PixelPlace PlaceAt(const ViewTransform& transform, QPointF position);

// The picture's outer edges in the view.
QRectF PictureOnView(const ViewTransform& transform, QSize picture);
bool IsOnPicture(Landmarks::PixelPlace place, QSize picture);
Landmarks::PixelPlace KeptOnPicture(Landmarks::PixelPlace place, QSize picture);
// Column and row of the nearest pixel.
QPoint PixelAt(Landmarks::PixelPlace place, QSize picture);

// The whole picture, as large as it fits. View, aspect and flip stay.
ViewTransform Fitted(const ViewTransform& transform, QSize picture);

// From a twentieth of the fitted picture to 64 device pixels a pixel; the fitted picture is always
// within them.
ZoomLimits LimitsOf(const ViewTransform& transform, QSize picture, double deviceRatio);

// The place at `position` stays there.
ViewTransform ZoomedAbout(const ViewTransform& transform, QPointF position, double zoom);

// The picture follows a pull by `way`.
ViewTransform Panned(const ViewTransform& transform, QPointF way);

// Moved back as far as is needed for some of the picture to be seen.
ViewTransform KeptInView(const ViewTransform& transform, QSize picture);

// Moved as far as is needed for `place` to lie in the view, a little off its edges.
ViewTransform Showing(const ViewTransform& transform, Landmarks::PixelPlace place);

// Moved by less than a pixel, so that where a picture's pixel is one of the device the two agree.
ViewTransform OnWholePixels(const ViewTransform& transform, double deviceRatio);

}  // namespace Measuring
