#include "measuring/view_transform.h"

#include <algorithm>
#include <cmath>

namespace Measuring {

using Landmarks::PixelPlace;

namespace {

constexpr double kMostZoom = 64.0;  // device pixels a pixel
constexpr double kLeastOfFit = 1.0 / 20.0;
constexpr double kLeastSeen = 16.0;  // of the picture, device-independent pixels
constexpr double kEdge = 24.0;       // what is shown keeps this distance from the view's edges

double ColumnStep(const ViewTransform& t) {
  return t.flipped ? -t.zoom : t.zoom;
}
double RowStep(const ViewTransform& t) {
  return t.zoom * t.aspect;
}

double FittingZoom(const ViewTransform& t, QSize picture) {
  const double across = t.view.width() / picture.width();
  const double down = t.view.height() / (picture.height() * t.aspect);
  return std::min(across, down);
}

// How far a stretch has to move to have `seen` of it between 0 and `room`.
double MoveBack(double low, double high, double room, double seen) {
  if (high < seen) return seen - high;
  return low > room - seen ? room - seen - low : 0.0;
}

}  // namespace

QPointF PositionOf(const ViewTransform& t, PixelPlace place) {
  return {t.view.width() / 2.0 + (place.column - t.middle.column) * ColumnStep(t),
          t.view.height() / 2.0 + (place.row - t.middle.row) * RowStep(t)};
}

PixelPlace PlaceAt(const ViewTransform& t, QPointF position) {
  return {t.middle.column + (position.x() - t.view.width() / 2.0) / ColumnStep(t),
          t.middle.row + (position.y() - t.view.height() / 2.0) / RowStep(t)};
}

QRectF PictureOnView(const ViewTransform& t, QSize picture) {
  const QPointF first = PositionOf(t, {-0.5, -0.5});
  const QPointF last = PositionOf(t, {picture.width() - 0.5, picture.height() - 0.5});
  return QRectF(first, last).normalized();
}

bool IsOnPicture(PixelPlace place, QSize picture) {
  return place == KeptOnPicture(place, picture);
}

QPoint PixelAt(PixelPlace place, QSize picture) {
  return {std::clamp(static_cast<int>(std::lround(place.column)), 0, picture.width() - 1),
          std::clamp(static_cast<int>(std::lround(place.row)), 0, picture.height() - 1)};
}

PixelPlace KeptOnPicture(PixelPlace place, QSize picture) {
  return {std::clamp(place.column, -0.5, picture.width() - 0.5),
          std::clamp(place.row, -0.5, picture.height() - 0.5)};
}

ViewTransform Fitted(const ViewTransform& transform, QSize picture) {
  ViewTransform fitted = transform;
  fitted.zoom = FittingZoom(transform, picture);
  fitted.middle = {(picture.width() - 1) / 2.0, (picture.height() - 1) / 2.0};
  return fitted;
}

ZoomLimits LimitsOf(const ViewTransform& transform, QSize picture, double deviceRatio) {
  const double fitting = FittingZoom(transform, picture);
  return {fitting * kLeastOfFit, std::max(fitting, kMostZoom / deviceRatio)};
}

ViewTransform ZoomedAbout(const ViewTransform& transform, QPointF position, double zoom) {
  const PixelPlace kept = PlaceAt(transform, position);
  ViewTransform zoomed = transform;
  zoomed.zoom = zoom;
  return Panned(zoomed, position - PositionOf(zoomed, kept));
}

ViewTransform Panned(const ViewTransform& transform, QPointF way) {
  ViewTransform panned = transform;
  panned.middle.column -= way.x() / ColumnStep(transform);
  panned.middle.row -= way.y() / RowStep(transform);
  return panned;
}

ViewTransform KeptInView(const ViewTransform& t, QSize picture) {
  const QRectF area = PictureOnView(t, picture);
  const auto seen = [](double size, double room) { return std::min({kLeastSeen, size, room}); };
  const double x =
      MoveBack(area.left(), area.right(), t.view.width(), seen(area.width(), t.view.width()));
  const double y =
      MoveBack(area.top(), area.bottom(), t.view.height(), seen(area.height(), t.view.height()));
  return Panned(t, {x, y});
}

ViewTransform Showing(const ViewTransform& t, PixelPlace place) {
  const QPointF position = PositionOf(t, place);
  const auto kept = [](double at, double room) {
    const double edge = std::min(kEdge, room / 2.0);
    return std::clamp(at, edge, room - edge);
  };
  const QPointF wanted(kept(position.x(), t.view.width()), kept(position.y(), t.view.height()));
  return Panned(t, wanted - position);
}

ViewTransform OnWholePixels(const ViewTransform& transform, double deviceRatio) {
  const double half = 0.5 / deviceRatio;
  const PixelPlace first = PlaceAt(transform, {half, half});
  ViewTransform moved = transform;
  moved.middle.column += std::round(first.column) - first.column;
  moved.middle.row += std::round(first.row) - first.row;
  return moved;
}

}  // namespace Measuring
