// From the bytes of a picture file to grey levels. Runs in a process of its own: the libraries
// below may be led astray by a hostile file.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "radiograph/limits.h"
#include "radiograph/radiograph.h"

using Bytes = std::span<const std::uint8_t>;

ReadResult DecodePicture(Bytes file, const PictureLimits& limits = {});

// How the parts of the decoder refuse; DecodePicture turns it into its result.
struct Refusal {
  ReadFailure failure;
};
[[noreturn]] void Refuse(ReadTrouble trouble, const std::string& detail = {});
