// What the made-up pelvis is made of, in the patient's frame: mm, x to the patient's left, y
// towards the feet, z from the source to the detector; the origin is in the middle between the
// heads.
#pragma once

#include <vector>

#include "tests/support/phantom_setup.h"

namespace Phantom {

struct Space {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

struct Ellipsoid {
  Space centre;
  Space semiAxes;
};

// Parts may overlap: what a ray passes in several of them counts once.
struct Body {
  std::vector<Ellipsoid> parts;
  double attenuation = 0.0;  // per mm, on top of the tissue around it
};

std::vector<Body> BodiesOf(const Anatomy& anatomy, const Setup& setup);

// The landmarks of one hip; `side` is 1 for the left hip and -1 for the right one.
struct Landmarks3 {
  Space head;
  Space socketEdge;
  Space crestTop;
  Space crestLateral;
  Space trochanter;
};
Landmarks3 LandmarksOf(const Anatomy& anatomy, double side);

}  // namespace Phantom
