// The slope of a picture's grey levels in a part of it, smoothed so that it does not follow noise.
#pragma once

#include <vector>

#include "landmarks/circle_fit.h"
#include "landmarks/grey_view.h"
#include "landmarks/point.h"

namespace Landmarks {

class GreySlope {
 public:
  // Around `middle` as far as `reach` to all sides. Smoothed by a normal weight of standard
  // deviation `blur`. All in mm on the picture.
  GreySlope(const GreyView& view, Point middle, double reach, double blur);

  // How fast the picture gets darker from `at` in the direction of the unit vector `outward`, in
  // grey levels per mm. Not a number outside the picture and the part.
  double Drop(Point at, Point outward) const;

  // Standard deviation that the picture's own noise gives to a slope.
  double Noise() const { return noise_; }

  // Smoothing as a whole, pixels and interpolation included, mm.
  double Blur() const { return blur_; }

 private:
  void Smooth(const GreyView& view, double blur);

  Point corner_;
  double step_ = 0.0;  // mm from node to node
  int nodes_ = 0;      // in each direction
  double blur_ = 0.0;
  double noise_ = 0.0;
  std::vector<double> level_;
};

}  // namespace Landmarks
