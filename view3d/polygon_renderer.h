// Draws filled polygons, given in the user coordinates of a surface, in the surface's own pixels.
#pragma once

#include <QPoint>
#include <QPolygon>
#include <concepts>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "platform/picture_box.h"

// What a surface must offer, whether it is a picture or a page: user coordinates, and a polygon in
// device pixels that takes the surface's current pen and fill.
template <class Surface>
concept PolygonSurface = requires(Surface& surface, const QPolygon& points, double value) {
  { surface.ScaleMode() } -> std::same_as<ScaleUnit>;
  { surface.ScaleLeft() } -> std::convertible_to<double>;
  { surface.ScaleTop() } -> std::convertible_to<double>;
  { surface.ScaleWidth() } -> std::convertible_to<double>;
  { surface.ScaleHeight() } -> std::convertible_to<double>;
  surface.SetScaleMode(ScaleUnit::Pixels);
  surface.Scale(value, value, value, value);
  surface.Polygon(points);
};

class Polygon {
 public:
  // Draws on `surface` from now on, which must outlive the next Device or this object. Call it
  // again when size or scale of the surface have changed. The surface's scale is as before.
  // Throws std::domain_error when the surface is 0 wide or high in user units.
  template <PolygonSurface Surface>
  void Device(Surface& surface) {
    const QRectF area(surface.ScaleLeft(), surface.ScaleTop(), surface.ScaleWidth(),
                      surface.ScaleHeight());
    const ScaleUnit saved = surface.ScaleMode();
    surface.SetScaleMode(ScaleUnit::Pixels);
    const QSizeF pixels(surface.ScaleWidth(), surface.ScaleHeight());
    if (saved == ScaleUnit::User) {  // setting a mode would lose it
      surface.Scale(area.left(), area.top(), area.left() + area.width(),
                    area.top() + area.height());
    } else {
      surface.SetScaleMode(saved);
    }
    drawOn_ = [&surface](std::span<const QPoint> points) { DrawOn(surface, points); };
    SetFactors(area, pixels);
  }

  // Adds a vertex in user units. Throws std::overflow_error when it lies beyond the pixels that 32
  // bits can count, and for a coordinate that is not a number; the vertex is then left out.
  void Point(float x, float y);

  // Draws the polygon through the vertices added since the last time and forgets them. Throws
  // std::out_of_range when there are none.
  void draw();

 private:
  template <class Surface>
  static void DrawOn(Surface& surface, std::span<const QPoint> points) {
    if constexpr (requires { surface.Polygon(points); }) {
      surface.Polygon(points);
    } else {
      surface.Polygon(QPolygon(QList<QPoint>(points.begin(), points.end())));
    }
  }

  void SetFactors(const QRectF& area, QSizeF pixels);
  std::int32_t XToPixel(float x) const;
  std::int32_t YToPixel(float y) const;

  std::function<void(std::span<const QPoint>)> drawOn_;
  float originX_ = 0.0F;  // user units
  float originY_ = 0.0F;
  float pixelsPerUnitX_ = 0.0F;  // negative where the user scale runs the other way
  float pixelsPerUnitY_ = 0.0F;
  // Vertices count from 1, element 0 is never used.
  std::vector<QPoint> vertices_{QPoint()};
};
