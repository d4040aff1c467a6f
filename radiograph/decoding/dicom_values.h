// Single values of a DICOM data set, whatever state they are in.
#pragma once

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Radiography {

// All values as text, as they stand; empty when the attribute is missing or no text.
std::string TextOf(DcmItem& item, const DcmTagKey& tag);
// One for each value: without blanks at its ends and control characters.
std::vector<std::string> TextsOf(DcmItem& item, const DcmTagKey& tag);
std::string FirstTextOf(DcmItem& item, const DcmTagKey& tag);

// NaN for a value that is no number.
std::vector<double> NumbersOf(DcmItem& item, const DcmTagKey& tag);

// A 16-bit number, as US or SS.
std::optional<std::uint16_t> WordOf(DcmItem& item, const DcmTagKey& tag, unsigned long index = 0);

// Without control characters, and without blanks at the ends.
std::string Cleaned(const std::string& text);

}  // namespace Radiography
