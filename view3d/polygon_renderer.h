// Draws filled polygons, given in the user coordinates of a surface, in the surface's own pixels.
#pragma once

#include <QPoint>
#include <cstdint>
#include <vector>

#include "platform/raster_box.h"

class Polygon {
 public:
  // Draws on `surface` from now on, which must outlive the next Device or this object. Call it
  // again when size or scale of the surface have changed. Throws std::domain_error when the
  // surface is 0 wide or high in user units.
  void Device(RasterBox& surface);

  // Adds a vertex in user units. Throws std::overflow_error when it lies beyond the pixels that 32
  // bits can count, and for a coordinate that is not a number; the vertex is then dropped.
  void Point(float x, float y);

  // Draws the polygon through the vertices added since the last call, with the surface's pen and
  // fill, and forgets them. Throws std::out_of_range when there are none.
  void draw();

 private:
  std::int32_t XToPixel(float x) const;
  std::int32_t YToPixel(float y) const;

  RasterBox* surface_ = nullptr;
  float originX_ = 0.0F;  // user units
  float originY_ = 0.0F;
  float pixelsPerUnitX_ = 0.0F;  // negative where the user scale runs the other way
  float pixelsPerUnitY_ = 0.0F;
  // Vertices count from 1, element 0 is never used.
  std::vector<QPoint> vertices_{QPoint()};
};
