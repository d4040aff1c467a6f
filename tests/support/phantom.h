// A radiograph of a made-up pelvis whose true measurements are known: a point source, ellipsoids
// and chains of spheres with their exact path lengths, and photon noise.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "landmarks/circle_fit.h"
#include "landmarks/measure.h"
#include "landmarks/picture_scale.h"
#include "landmarks/point.h"
#include "tests/support/phantom_setup.h"

namespace Phantom {

// The marks of a perfect reader, in mm on the picture: projected landmarks, and the circles that
// fit the outlines of the heads best. A ball off the central ray throws an ellipse, whose radius is
// up to 0.1 mm above the magnified one and whose middle lies up to 0.1 mm further out.
struct Truth {
  Landmarks::Marks left;  // of the patient
  Landmarks::Marks right;
  double magnification = 1.0;  // of the plane of the head centres
  std::optional<Landmarks::Circle> ball;
};

struct Picture {
  int width = 0;
  int height = 0;
  Landmarks::PixelSpacing spacing;
  std::vector<std::uint16_t> grey;  // 12 bits, row by row, bone is bright
  Truth truth;
};

inline constexpr std::uint16_t kMostGrey = 4095;

Truth TruthOf(const Anatomy& anatomy, const Setup& setup);
Picture Render(const Anatomy& anatomy, const Setup& setup);

// The same exposure, but only the square of `halfWidth` mm about `centre` (mm on the picture).
Setup PartOf(const Setup& setup, Landmarks::Point centre, double halfWidth);

}  // namespace Phantom
