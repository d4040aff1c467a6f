// From stored values to what is shown: modality, windows, brightness tables, and which end is dark.
#include <algorithm>
#include <bit>
#include <cmath>

#include "radiograph/decoding/dicom_picture.h"
#include "radiograph/decoding/dicom_values.h"

namespace Radiography {

namespace {

using std::string;

constexpr std::size_t kMostViews = 64;  // more than any user would look through

// A look-up table as DICOM has it: number of entries, first value, bits, and the entries.
std::optional<BrightnessTable> ReadTable(DcmItem& item, bool signedValues) {
  const auto count = WordOf(item, DCM_LUTDescriptor, 0);
  const auto first = WordOf(item, DCM_LUTDescriptor, 1);
  const auto bits = WordOf(item, DCM_LUTDescriptor, 2);
  const Uint16* words = nullptr;
  unsigned long length = 0;
  if (!count || !first || !bits || item.findAndGetUint16Array(DCM_LUTData, words, &length).bad()) {
    return {};
  }
  const std::size_t entries = *count == 0 ? 65536 : *count;  // 16 bits cannot say 65,536
  BrightnessTable table;
  table.first = signedValues ? static_cast<std::int16_t>(*first) : *first;
  if (length >= entries) {
    table.entries.assign(words, words + entries);
  } else if (*bits == 8 && length * 2 >= entries) {  // two to a word
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(words);
    table.entries.assign(bytes, bytes + entries);
  } else {
    return {};
  }
  const std::uint16_t highest = *std::max_element(table.entries.begin(), table.entries.end());
  const int needed = std::max(1, static_cast<int>(std::bit_width(highest)));
  // Some devices name fewer bits than they use.
  table.bits = static_cast<std::uint8_t>(std::clamp<int>(*bits, needed, 16));
  table.name = FirstTextOf(item, DCM_LUTExplanation);
  return table;
}

std::vector<BrightnessTable> ReadTables(DcmItem& dataset, const DcmTagKey& tag, bool signedValues,
                                        std::vector<string>& notes) {
  std::vector<BrightnessTable> tables;
  DcmSequenceOfItems* sequence = nullptr;
  if (dataset.findAndGetSequence(tag, sequence).bad() || sequence == nullptr) return tables;
  const auto count = std::min<std::size_t>(sequence->card(), kMostViews);
  for (unsigned long i = 0; i < count; ++i) {
    if (auto table = ReadTable(*sequence->getItem(i), signedValues)) {
      tables.push_back(std::move(*table));
    } else {
      notes.emplace_back("a look-up table of the file is damaged and is not used");
    }
  }
  return tables;
}

// A table from stored values to those of the modality is applied at once: levels then are its
// entries.
void ApplyModality(const BrightnessTable& table, std::int32_t lowest, Radiograph& radiograph) {
  const auto last = static_cast<std::int32_t>(table.entries.size()) - 1;
  std::vector<std::uint16_t> ofLevel(std::size_t{1} << radiograph.bits);
  for (std::size_t level = 0; level < ofLevel.size(); ++level) {
    const std::int32_t value = static_cast<std::int32_t>(level) + lowest;
    ofLevel[level] =
        table.entries[static_cast<std::size_t>(std::clamp(value - table.first, 0, last))];
  }
  for (std::uint16_t& level : radiograph.levels) level = ofLevel[level];
  radiograph.bits = table.bits;
}

double OneNumber(DcmItem& dataset, const DcmTagKey& tag, double missing) {
  const auto numbers = NumbersOf(dataset, tag);
  return numbers.empty() ? missing : numbers.front();
}

void ReadModality(DcmItem& dataset, const PixelFormat& format, Radiograph& radiograph) {
  const auto tables =
      ReadTables(dataset, DCM_ModalityLUTSequence, format.isSigned, radiograph.notes);
  if (!tables.empty()) {
    ApplyModality(tables.front(), format.Lowest(), radiograph);
    return;
  }
  double slope = OneNumber(dataset, DCM_RescaleSlope, 1.0);
  double intercept = OneNumber(dataset, DCM_RescaleIntercept, 0.0);
  if (!std::isfinite(slope) || slope == 0.0 || !std::isfinite(intercept)) {
    radiograph.notes.emplace_back(
        "rescale slope or intercept cannot be used; stored values are shown");
    slope = 1.0;
    intercept = 0.0;
  }
  radiograph.slope = slope;
  radiograph.intercept = intercept + slope * format.Lowest();
}

std::optional<WindowShape> ReadShape(DcmItem& dataset) {
  const string name = FirstTextOf(dataset, DCM_VOILUTFunction);
  if (name.empty() || name == "LINEAR") return WindowShape::Linear;
  if (name == "LINEAR_EXACT") return WindowShape::LinearExact;
  if (name == "SIGMOID") return WindowShape::Sigmoid;
  return {};
}

bool CanBeUsed(const Window& window) {
  const double narrowest = window.shape == WindowShape::Linear ? 1.0 : 0.0;
  return std::isfinite(window.centre) && std::isfinite(window.width) && window.width > 0.0 &&
         window.width >= narrowest;
}

void ReadWindows(DcmItem& dataset, Radiograph& radiograph) {
  const auto centres = NumbersOf(dataset, DCM_WindowCenter);
  const auto widths = NumbersOf(dataset, DCM_WindowWidth);
  const auto names = TextsOf(dataset, DCM_WindowCenterWidthExplanation);
  const auto shape = ReadShape(dataset);
  if (!shape) {
    radiograph.notes.emplace_back(
        "the file's windows have a shape that is not known; linear is used");
  }
  const std::size_t count = std::min({centres.size(), widths.size(), kMostViews});
  bool complete = centres.size() == widths.size();
  for (std::size_t i = 0; i < count; ++i) {
    const Window window{centres[i], widths[i], shape.value_or(WindowShape::Linear),
                        i < names.size() ? names[i] : string()};
    if (CanBeUsed(window)) radiograph.windows.push_back(window);
    complete = complete && CanBeUsed(window);
  }
  if (!complete) radiograph.notes.emplace_back("a window of the file cannot be used");
}

// The presentation shape decides where it is there, else the photometric interpretation; both
// together would turn the picture twice.
bool IsInverted(DcmItem& dataset) {
  const string shape = FirstTextOf(dataset, DCM_PresentationLUTShape);
  if (shape == "INVERSE") return true;
  if (shape == "IDENTITY") return false;
  return FirstTextOf(dataset, DCM_PhotometricInterpretation) == "MONOCHROME1";
}

}  // namespace

void ReadShown(DcmItem& dataset, const PixelFormat& format, Radiograph& radiograph) {
  radiograph.bits = format.stored;
  ReadModality(dataset, format, radiograph);
  ReadWindows(dataset, radiograph);
  const double highest = static_cast<double>((1U << radiograph.bits) - 1U);
  const bool reachesBelowZero =
      std::min(radiograph.intercept, radiograph.intercept + radiograph.slope * highest) < 0.0;
  radiograph.tables = ReadTables(dataset, DCM_VOILUTSequence, reachesBelowZero, radiograph.notes);
  radiograph.inverted = IsInverted(dataset);
}

}  // namespace Radiography
