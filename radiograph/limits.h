// How large a picture may be, and how much its decoder may use.
#pragma once

#include <chrono>
#include <cstdint>

namespace Radiography {

struct PictureLimits {
  std::int64_t side = 16384;                   // pixels
  std::int64_t bytes = std::int64_t{1} << 30;  // of the decoded picture, and of the file
};

struct DecoderLimits {
  // A picture of the largest size lies in memory up to four times while JPEG 2000 is decoded.
  std::uint64_t memory = std::uint64_t{4} << 30;  // bytes of address space
  std::chrono::milliseconds time{60'000};
};

inline bool IsTooLarge(std::int64_t width, std::int64_t height, std::int64_t bytesPerPixel,
                       const PictureLimits& limits) {
  return width > limits.side || height > limits.side ||
         width * height > limits.bytes / bytesPerPixel;
}

}  // namespace Radiography
