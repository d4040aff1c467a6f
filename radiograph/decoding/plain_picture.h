// PNG, JPEG, TIFF and BMP. They say nothing of patient or scale.
#pragma once

#include "radiograph/decoding/refusal.h"
#include "radiograph/limits.h"
#include "radiograph/radiograph.h"

Radiograph DecodePlainPicture(Bytes file, const PictureLimits& limits);
