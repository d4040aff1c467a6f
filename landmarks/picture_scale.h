// From pixels to millimetres on the picture, and from there to true millimetres at the hip.
#pragma once

#include <optional>

#include "landmarks/circle_fit.h"
#include "landmarks/point.h"

namespace Landmarks {

// Distances between the centres of neighbouring pixels in mm, both above 0. They may differ. A
// picture without a scale has the ratio of its pixels' sides, or 1 and 1; its "mm" are then of
// unknown size until an object of known size is marked.
struct PixelSpacing {
  double row = 1.0;     // downward, from one row to the next
  double column = 1.0;  // to the right, from one column to the next
};

// A place among the pixels. The centre of the first pixel is at 0, 0, its outer corner at -½, -½.
struct PixelPlace {
  double column = 0.0;
  double row = 0.0;
  bool operator==(const PixelPlace&) const = default;
};

Point OnPicture(PixelPlace place, const PixelSpacing& spacing);
PixelPlace InPixels(Point point, const PixelSpacing& spacing);

// Size on the picture over true size, for all lengths of the hip alike; finite and above 0.
// Whatever the scale comes from, lengths are divided by this factor once, in Measure.
struct Magnification {
  double factor = 1.0;
  double u = 0.0;  // standard uncertainty of the factor
};

// A true size in mm with its standard uncertainty.
struct KnownLength {
  double length = 0.0;
  double u = 0.0;
};

// From a ball of known diameter that lies at the hip's distance from the detector. Its uncertainty
// is that of the circle and of the ball; a circle through three points, which tells nothing of its
// own uncertainty, counts as marked with the standard uncertainty `markU` (mm on the picture) in
// every direction. Empty when the diameter is not above 0 or a value is not finite.
std::optional<Magnification> MagnificationOfBall(const CircleFit& fit, const KnownLength& diameter,
                                                 double markU);

// From two points a known distance apart, each marked with the standard uncertainty `markU` (mm on
// the picture). Empty when the points coincide, the distance is not above 0, or a value is not
// finite.
std::optional<Magnification> MagnificationOfLine(Point a, Point b, const KnownLength& distance,
                                                 double markU);

}  // namespace Landmarks
