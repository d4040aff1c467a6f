// What a made-up radiograph shows, and how it is exposed.
#pragma once

#include <cstdint>
#include <optional>

#include "landmarks/picture_scale.h"
#include "landmarks/point.h"

namespace Phantom {

// True lengths in mm; both hips alike. The landmarks lie in the plane of the two head centres.
struct Anatomy {
  double halfInterhip = 92.0;
  double headRadius = 24.0;
  double trochanterX = 4.0;    // below the head's centre
  double trochanterZ = 58.0;   // lateral of it
  double crestWidth = 46.0;    // lateral of it
  double crestHeight = 150.0;  // above it
  double centreEdge = 0.52;    // rad
  double jointSpace = 4.0;
  double neckRadius = 15.0;
  bool hasHeads = true;  // false: the necks end where the heads would begin
  bool hasBones = true;  // false: soft tissue and the ball alone
};

// Of steel, in the plane of the head centres; x is positive to the patient's left, y downward.
struct Ball {
  double diameter = 25.0;  // mm
  double x = 165.0;        // mm from the middle between the heads
  double y = 60.0;
};

struct Setup {
  int width = 1800;  // pixels
  int height = 1500;
  Landmarks::PixelSpacing spacing = {0.24, 0.24};
  double sourceToDetector = 1150.0;  // mm
  double sourceToHip = 1000.0;       // mm, along the central ray
  // Where the central ray meets the picture, mm; without it, the middle.
  std::optional<Landmarks::Point> axis;
  Landmarks::Point pelvis = {0.0, 60.0};  // of the middle between the heads from the ray, true mm
  double tilt = 0.0;                      // rad, clockwise before a flip
  bool flipped = false;                   // the patient's left is at the left of the picture
  double signalToNoise = 30.0;            // behind the middle of a head; 0: no noise
  std::uint64_t seed = 1;
  std::optional<Ball> ball;
};

}  // namespace Phantom
