// A radiograph at full size and halved again and again, so that what is seen of it is sampled
// finely enough and fast at every zoom.
#pragma once

#include <QImage>
#include <cstdint>
#include <memory>
#include <vector>

#include "measuring/view_transform.h"
#include "radiograph/radiograph.h"

namespace Measuring {

struct GreyPyramid {
  std::shared_ptr<const Radiography::Radiograph> radiograph;
  // Each halves the one before, the radiograph first: four levels become their mean.
  std::vector<std::vector<std::uint16_t>> halved;
};

GreyPyramid MakePyramid(std::shared_ptr<const Radiography::Radiograph> radiograph);

// What of the pyramid is in use: `halvings` times halved.
struct PyramidLevel {
  int halvings = 0;
  int width = 0;
  int height = 0;
  const std::uint16_t* grey = nullptr;
};

// The smallest that still has a pixel for each of the device. `zoom` is in device pixels a pixel.
PyramidLevel LevelFor(const GreyPyramid& pyramid, double zoom);

// Fills `image` (Format_RGB32, its device pixel ratio left alone) with what the view shows,
// `deviceRatio` of its pixels in each of the view's. Levels between pixels are interpolated and
// only then made bright. Outside the picture it is `ground`.
void PaintSeen(const GreyPyramid& pyramid, const ViewTransform& transform, double deviceRatio,
               const std::vector<std::uint8_t>& brightness, QRgb ground, QImage& image);

}  // namespace Measuring
