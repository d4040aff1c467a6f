// From user coordinates in single precision to whole pixels.
#include "view3d/polygon_renderer.h"

#include <cassert>
#include <cmath>
#include <limits>
#include <span>
#include <stdexcept>

namespace {

// Nearest whole number, ties to even: the processor's own rounding.
std::int32_t NearestPixel(double pixel) {
  constexpr double kLowest = std::numeric_limits<std::int32_t>::min() - 0.5;
  constexpr double kHighest = std::numeric_limits<std::int32_t>::max() + 0.5;
  if (!(pixel >= kLowest && pixel < kHighest)) throw std::overflow_error("overflow");
  return static_cast<std::int32_t>(std::lrint(pixel));
}

std::int32_t ToPixel(float value, float origin, float pixelsPerUnit) {
  return NearestPixel((static_cast<double>(value) - static_cast<double>(origin)) *
                      static_cast<double>(pixelsPerUnit));
}

float PixelsPerUnit(double pixels, float origin, float extent) {
  const float farEdge = extent + origin;
  if (farEdge == origin) throw std::domain_error("division by zero");
  return static_cast<float>(pixels) / (farEdge - origin);
}

}  // namespace

void Polygon::Device(RasterBox& surface) {
  surface_ = &surface;
  originX_ = static_cast<float>(surface.ScaleLeft());
  originY_ = static_cast<float>(surface.ScaleTop());
  const QSizeF pixels = surface.PixelSize();
  pixelsPerUnitX_ =
      PixelsPerUnit(pixels.width(), originX_, static_cast<float>(surface.ScaleWidth()));
  pixelsPerUnitY_ =
      PixelsPerUnit(pixels.height(), originY_, static_cast<float>(surface.ScaleHeight()));
}

std::int32_t Polygon::XToPixel(float x) const {
  return ToPixel(x, originX_, pixelsPerUnitX_);
}

std::int32_t Polygon::YToPixel(float y) const {
  return ToPixel(y, originY_, pixelsPerUnitY_);
}

void Polygon::Point(float x, float y) {
  const QPoint vertex(XToPixel(x), YToPixel(y));
  vertices_.push_back(vertex);
}

void Polygon::draw() {
  assert(surface_);
  if (vertices_.size() == 1) throw std::out_of_range("subscript out of range");
  surface_->Polygon(std::span(vertices_).subspan(1));
  vertices_.resize(1);
}
