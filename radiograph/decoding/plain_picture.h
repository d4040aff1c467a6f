// PNG, JPEG, TIFF and BMP. They say nothing of patient or scale.
#pragma once

#include "radiograph/decoding/refusal.h"
#include "radiograph/limits.h"
#include "radiograph/radiograph.h"

namespace Radiography {

Radiograph DecodePlainPicture(Bytes file, const PictureLimits& limits);

}  // namespace Radiography
