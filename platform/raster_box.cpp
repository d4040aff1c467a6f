// The drawing state of a picture of pixels.
#include "platform/raster_box.h"

#include <QGuiApplication>
#include <QPalette>
#include <algorithm>
#include <cassert>
#include <cmath>

namespace {

// Facets are many: only the desktop's colour asks the palette.
QRgb PixelColour(Colour colour) {
  if (colour == kButtonFace) return PaintColour(colour, QGuiApplication::palette()).rgb();
  return PixelOf(colour);
}

// Keeps the drawing routines clear of numbers that no whole number can hold.
int PixelWithin(double pixel) {
  constexpr double kFarOut = 1e9;
  return static_cast<int>(std::lround(std::clamp(pixel, -kFarOut, kFarOut)));
}

bool IsFinite(QPointF point) {
  return std::isfinite(point.x()) && std::isfinite(point.y());
}

}  // namespace

RasterBox::RasterBox(QSizeF size, double pixelRatio) {
  SetSize(size, pixelRatio);
}

void RasterBox::SetSize(QSizeF size, double pixelRatio) {
  if (size == size_ && pixelRatio == pixelRatio_ && !image_.isNull()) return;
  size_ = size;
  pixelRatio_ = pixelRatio;
  image_ = QImage((size * pixelRatio).toSize(), QImage::Format_RGB32);
  scale_.Follow(size_, image_.size());
  Cls();
}

void RasterBox::SetScaleMode(ScaleUnit mode) {
  scale_.SetMode(mode, size_, image_.size());
}

Stroke RasterBox::StrokeOf(Colour colour) const {
  const auto width = static_cast<int>(std::lround(DrawWidth() * pixelRatio_));
  return {PixelColour(colour), std::max(1, width), DrawStyle()};
}

QPoint RasterBox::PixelOf(QPointF user) const {
  const QRectF& area = scale_.Area();
  return {PixelWithin((user.x() - area.left()) / area.width() * image_.width()),
          PixelWithin((user.y() - area.top()) / area.height() * image_.height())};
}

void RasterBox::Line(QPointF from, QPointF to, Colour colour) {
  const QRectF& area = scale_.Area();
  if (!IsFinite(from) || !IsFinite(to) || area.width() == 0.0 || area.height() == 0.0) return;
  DrawStroke(image_, PixelOf(from), PixelOf(to), StrokeOf(colour));
}

void RasterBox::Polygon(std::span<const QPoint> points) {
  assert(!points.empty());
  if (FillStyle() == FillKind::Solid) filler_.Fill(image_, points, PixelColour(FillColor()));
  if (DrawStyle() == LineStyle::None) return;
  const Stroke stroke = StrokeOf(kBlack);
  QPoint last = points.back();
  for (const QPoint& point : points) {
    DrawStroke(image_, last, point, stroke);
    last = point;
  }
}

void RasterBox::Cls() {
  image_.fill(PixelColour(backColor_));
}

void RasterBox::SetBackColor(Colour colour) {
  backColor_ = colour;
  Cls();
}
