#include "radiograph/decoding/dicom_values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace Radiography {

namespace {

// DICOM allows a plus sign, which from_chars does not.
double NumberOf(std::string text) {
  if (text.starts_with('+')) text.erase(0, 1);
  double number = 0.0;
  const char* end = text.data() + text.size();
  const auto [stopped, trouble] = std::from_chars(text.data(), end, number);
  const bool whole = trouble == std::errc() && stopped == end && std::isfinite(number);
  return whole ? number : std::numeric_limits<double>::quiet_NaN();
}

}  // namespace

std::string Cleaned(const std::string& text) {
  std::string kept;
  for (const char letter : text) {
    const auto code = static_cast<unsigned char>(letter);
    if (code >= 0x20 && code != 0x7F) kept += letter;
  }
  const auto first = kept.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return kept.substr(first, kept.find_last_not_of(' ') - first + 1);
}

std::string TextOf(DcmItem& item, const DcmTagKey& tag) {
  // A file may call any attribute bytes; DCMTK would print gigabytes of them as text.
  constexpr Uint32 kLongest = 1 << 16;
  DcmElement* element = nullptr;
  if (item.findAndGetElement(tag, element).bad() || !element->isaString()) return {};
  OFString text;
  if (element->getLength() > kLongest || element->getOFStringArray(text).bad()) return {};
  return {text.data(), text.size()};
}

std::vector<std::string> TextsOf(DcmItem& item, const DcmTagKey& tag) {
  const std::string all = TextOf(item, tag);
  std::vector<std::string> texts;
  if (all.empty()) return texts;
  for (std::size_t begin = 0; begin <= all.size();) {
    const std::size_t end = std::min(all.find('\\', begin), all.size());
    texts.push_back(Cleaned(all.substr(begin, end - begin)));
    begin = end + 1;
  }
  return texts;
}

std::string FirstTextOf(DcmItem& item, const DcmTagKey& tag) {
  const auto texts = TextsOf(item, tag);
  return texts.empty() ? std::string() : texts.front();
}

std::vector<double> NumbersOf(DcmItem& item, const DcmTagKey& tag) {
  std::vector<double> numbers;
  const auto texts = TextsOf(item, tag);
  if (texts.size() == 1 && texts.front().empty()) return numbers;
  for (const std::string& text : texts) numbers.push_back(NumberOf(text));
  return numbers;
}

std::optional<std::uint16_t> WordOf(DcmItem& item, const DcmTagKey& tag, unsigned long index) {
  Uint16 word = 0;
  if (item.findAndGetUint16(tag, word, index).good()) return word;
  Sint16 signedWord = 0;
  if (item.findAndGetSint16(tag, signedWord, index).good()) {
    return static_cast<std::uint16_t>(signedWord);
  }
  return {};
}

}  // namespace Radiography
