// How pixels lie in the file, and their stored values as levels from 0.
#include <algorithm>

#include "radiograph/decoding/dicom_picture.h"
#include "radiograph/decoding/dicom_values.h"

namespace Radiography {

namespace {

int Needed(DcmItem& dataset, const DcmTagKey& tag) {
  const auto word = WordOf(dataset, tag);
  if (!word) Refuse(ReadTrouble::Damaged, std::string(DcmTag(tag).getTagName()) + " is missing");
  return *word;
}

void CheckColour(DcmItem& dataset) {
  const std::string kind = FirstTextOf(dataset, DCM_PhotometricInterpretation);
  if (kind != "MONOCHROME1" && kind != "MONOCHROME2" && !kind.empty()) Refuse(ReadTrouble::Colour);
  if (WordOf(dataset, DCM_SamplesPerPixel).value_or(1) != 1) Refuse(ReadTrouble::Colour);
}

void CheckBits(const PixelFormat& format) {
  const bool known = (format.allocated == 8 || format.allocated == 16) && format.stored >= 1 &&
                     format.stored <= format.allocated && format.highBit >= format.stored - 1 &&
                     format.highBit < format.allocated;
  if (!known) Refuse(ReadTrouble::Contradiction, "bits allocated, bits stored and high bit");
}

// The level of every word that the bits before compression can make.
std::vector<std::uint16_t> ExactTable(const PixelFormat& format) {
  const unsigned shift = static_cast<unsigned>(format.highBit + 1 - format.stored);
  const unsigned mask = (1U << format.stored) - 1U;
  const unsigned flip = format.isSigned ? 1U << (format.stored - 1) : 0U;
  std::vector<std::uint16_t> table(1 << 16);
  for (unsigned word = 0; word < table.size(); ++word) {
    table[word] = static_cast<std::uint16_t>(((word >> shift) & mask) ^ flip);
  }
  return table;
}

// After loss a value can lie outside the bits stored: with them it would turn black into white.
std::vector<std::uint16_t> ClampedTable(const PixelFormat& format, int precision) {
  const std::int32_t lowest = format.Lowest();
  const std::int32_t highest = lowest + (1 << format.stored) - 1;
  const std::int32_t turn = 1 << precision;
  std::vector<std::uint16_t> table(1 << 16);
  for (std::int32_t word = 0; word < (1 << 16); ++word) {
    std::int32_t value = word & (turn - 1);
    if (format.isSigned && value >= turn / 2) value -= turn;
    table[static_cast<std::size_t>(word)] =
        static_cast<std::uint16_t>(std::clamp(value, lowest, highest) - lowest);
  }
  return table;
}

}  // namespace

PixelFormat ReadPixelFormat(DcmItem& dataset, const PictureLimits& limits) {
  if (!dataset.tagExists(DCM_PixelData)) Refuse(ReadTrouble::NotAPicture);
  CheckColour(dataset);
  PixelFormat format;
  format.width = Needed(dataset, DCM_Columns);
  format.height = Needed(dataset, DCM_Rows);
  format.allocated = Needed(dataset, DCM_BitsAllocated);
  format.stored = WordOf(dataset, DCM_BitsStored).value_or(format.allocated);
  format.highBit = WordOf(dataset, DCM_HighBit).value_or(format.stored - 1);
  format.isSigned = WordOf(dataset, DCM_PixelRepresentation).value_or(0) == 1;
  CheckBits(format);
  if (format.width == 0 || format.height == 0) Refuse(ReadTrouble::Contradiction, "it has no size");
  if (IsTooLarge(format.width, format.height, 2, limits)) Refuse(ReadTrouble::TooLarge);
  return format;
}

std::vector<std::uint16_t> ToLevels(PixelWords pixels, const PixelFormat& format) {
  const auto table = pixels.exact ? ExactTable(format) : ClampedTable(format, pixels.precision);
  for (std::uint16_t& word : pixels.words) word = table[word];
  return std::move(pixels.words);
}

}  // namespace Radiography
