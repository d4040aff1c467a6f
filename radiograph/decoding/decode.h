// From the bytes of a picture file to grey levels. Runs in a process of its own: the libraries
// below may be led astray by a hostile file.
#pragma once

#include "radiograph/decoding/refusal.h"
#include "radiograph/limits.h"
#include "radiograph/radiograph.h"

namespace Radiography {

ReadResult DecodePicture(Bytes file, const PictureLimits& limits = {});

}  // namespace Radiography
