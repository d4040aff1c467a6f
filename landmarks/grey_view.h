// A plain look at a picture's grey levels, which belong to somebody else.
#pragma once

#include <cstdint>
#include <span>

#include "landmarks/picture_scale.h"

namespace Landmarks {

struct GreyView {
  std::span<const std::uint16_t> grey;  // row by row, width × height of them; bone is bright
  int width = 0;
  int height = 0;
  PixelSpacing spacing;
};

}  // namespace Landmarks
