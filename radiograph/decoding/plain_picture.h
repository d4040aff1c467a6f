// PNG, JPEG, TIFF and BMP. They say nothing of patient or scale.
#pragma once

#include "radiograph/decoding/decode.h"

Radiograph DecodePlainPicture(Bytes file, const PictureLimits& limits);
