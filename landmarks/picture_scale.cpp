// Scale from objects of known size.
#include "landmarks/picture_scale.h"

#include <cmath>
#include <numbers>

namespace Landmarks {

namespace {

std::optional<Magnification> Ratio(double shown, double shownU, const KnownLength& known) {
  if (!(shown > 0.0) || !(known.length > 0.0) || !(known.u >= 0.0) || !(shownU >= 0.0)) {
    return std::nullopt;
  }
  const double factor = shown / known.length;
  const double u = factor * std::hypot(shownU / shown, known.u / known.length);
  if (!(factor > 0.0) || !std::isfinite(factor) || !std::isfinite(u)) return std::nullopt;
  return Magnification{factor, u};
}

}  // namespace

Point OnPicture(PixelPlace place, const PixelSpacing& spacing) {
  return {place.column * spacing.column, place.row * spacing.row};
}

PixelPlace InPixels(Point point, const PixelSpacing& spacing) {
  return {point.x / spacing.column, point.y / spacing.row};
}

std::optional<Magnification> MagnificationOfBall(const CircleFit& fit, const KnownLength& diameter,
                                                 double markU) {
  const double radiusU = fit.u ? fit.u->radius : markU * std::sqrt(fit.perMark[2][2]);
  return Ratio(2.0 * fit.circle.radius, 2.0 * radiusU, diameter);
}

std::optional<Magnification> MagnificationOfLine(Point a, Point b, const KnownLength& distance,
                                                 double markU) {
  return Ratio(Length(b - a), std::numbers::sqrt2 * markU, distance);
}

}  // namespace Landmarks
