// The size that a compressed picture says of itself, read before a library takes memory for it.
#pragma once

#include <cstdint>
#include <optional>

#include "radiograph/decoding/refusal.h"

namespace Radiography {

struct CodestreamSize {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  unsigned components = 0;
  unsigned bits = 0;        // of the first component
  std::uint32_t tiles = 1;  // of JPEG 2000

  bool operator==(const CodestreamSize&) const = default;
};

// Of JPEG and JPEG-LS, from the frame header; nothing if there is none.
std::optional<CodestreamSize> JpegSize(Bytes codestream);

// Of JPEG 2000, without boxes around it; nothing if its head is not there whole.
std::optional<CodestreamSize> Jpeg2000Size(Bytes codestream);

// Whether a JPEG picture goes on to its end mark; its decoder fills up what is missing with grey.
bool JpegEnds(Bytes codestream);

// Whether the pixels that a BMP file speaks of are there; its decoder fills up with black.
bool BmpEnds(Bytes file);

}  // namespace Radiography
