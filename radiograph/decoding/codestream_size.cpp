#include "radiograph/decoding/codestream_size.h"

#include <cstdlib>

namespace Radiography {

namespace {

// Big-endian numbers, each from a place that is there.
class Numbers {
 public:
  explicit Numbers(Bytes bytes) : bytes_(bytes) {}

  bool Has(std::size_t from, std::size_t count) const {
    return from <= bytes_.size() && count <= bytes_.size() - from;
  }
  unsigned Byte(std::size_t at) const { return bytes_[at]; }
  unsigned Two(std::size_t at) const { return Byte(at) << 8 | Byte(at + 1); }
  std::uint32_t Four(std::size_t at) const { return Two(at) << 16 | Two(at + 2); }

 private:
  Bytes bytes_;
};

constexpr unsigned kStartOfImage = 0xD8;
constexpr unsigned kStartOfScan = 0xDA;
constexpr unsigned kEndOfImage = 0xD9;

// SOF0 to SOF15 without the three marks between them that are none, and SOF55, which is JPEG-LS.
bool IsFrameHeader(unsigned mark) {
  if (mark == 0xF7) return true;
  return mark >= 0xC0 && mark <= 0xCF && mark != 0xC4 && mark != 0xC8 && mark != 0xCC;
}

// A mark that stands inside the coded data of a scan: a stuffed zero, a restart, filling.
bool IsInScan(unsigned mark) {
  return mark == 0x00 || mark == 0xFF || (mark >= 0xD0 && mark <= 0xD7);
}

}  // namespace

std::optional<CodestreamSize> JpegSize(Bytes codestream) {
  const Numbers numbers(codestream);
  if (!numbers.Has(0, 4) || numbers.Two(0) != (0xFF00U | kStartOfImage)) return {};
  for (std::size_t at = 2; numbers.Has(at, 4);) {
    if (numbers.Byte(at) != 0xFF) return {};
    const unsigned mark = numbers.Byte(at + 1);
    if (mark == 0xFF) {  // filling
      ++at;
      continue;
    }
    if (mark == kStartOfScan || mark == kEndOfImage) return {};
    const std::size_t length = numbers.Two(at + 2);
    if (length < 2 || !numbers.Has(at + 2, length)) return {};
    if (!IsFrameHeader(mark)) {
      at += 2 + length;
      continue;
    }
    if (length < 8) return {};
    return CodestreamSize{numbers.Two(at + 7), numbers.Two(at + 5), numbers.Byte(at + 9),
                          numbers.Byte(at + 4)};
  }
  return {};
}

bool JpegEnds(Bytes codestream) {
  const Numbers numbers(codestream);
  for (std::size_t at = 2; numbers.Has(at, 2);) {
    const unsigned mark = numbers.Byte(at + 1);
    if (numbers.Byte(at) != 0xFF || IsInScan(mark)) {
      ++at;
      continue;
    }
    if (mark == kEndOfImage) return true;
    if (!numbers.Has(at, 4)) return false;
    at += 2 + numbers.Two(at + 2);
  }
  return false;
}

bool BmpEnds(Bytes file) {
  const Numbers numbers(file);
  if (!numbers.Has(0, 34)) return false;
  const auto number = [&numbers](std::size_t at) {  // little endian
    return std::int64_t{numbers.Byte(at)} | std::int64_t{numbers.Byte(at + 1)} << 8 |
           std::int64_t{numbers.Byte(at + 2)} << 16 | std::int64_t{numbers.Byte(at + 3)} << 24;
  };
  const std::int64_t compression = number(30);
  if (compression == 1 || compression == 2) return true;  // run lengths have an end mark
  const std::int64_t bits = number(28) & 0xFFFF;
  const std::int64_t line = (number(18) * bits + 31) / 32 * 4;
  const std::int64_t lines = std::abs(static_cast<std::int32_t>(number(22)));
  return number(10) + line * lines <= static_cast<std::int64_t>(file.size());
}

std::optional<CodestreamSize> Jpeg2000Size(Bytes codestream) {
  const Numbers numbers(codestream);
  // The marks SOC and SIZ, then SIZ's length and capabilities before the numbers.
  constexpr std::size_t kSizes = 8;
  if (!numbers.Has(0, kSizes + 37) || numbers.Four(0) != 0xFF4FFF51) return {};
  const auto size = [&](unsigned index) { return numbers.Four(kSizes + 4 * std::size_t{index}); };
  const std::uint32_t right = size(0), bottom = size(1), left = size(2), top = size(3);
  const std::uint32_t tileWidth = size(4), tileHeight = size(5);
  const std::uint32_t tileLeft = size(6), tileTop = size(7);
  if (left >= right || top >= bottom || tileWidth == 0 || tileHeight == 0) return {};
  if (tileLeft > left || tileTop > top) return {};
  const std::uint64_t across = (std::uint64_t{right} - tileLeft + tileWidth - 1) / tileWidth;
  const std::uint64_t down = (std::uint64_t{bottom} - tileTop + tileHeight - 1) / tileHeight;
  // The standard numbers tiles with 16 bits.
  if (across > 65535 || down > 65535 || across * down > 65535) return {};
  const unsigned depth = numbers.Byte(kSizes + 34);
  return CodestreamSize{right - left, bottom - top, numbers.Two(kSizes + 32), (depth & 0x7F) + 1,
                        static_cast<std::uint32_t>(across * down)};
}

}  // namespace Radiography
