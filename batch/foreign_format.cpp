// Told by the first bytes, as their own programs tell them.
#include "batch/foreign_format.h"

#include <array>

namespace Cohort {

namespace {

constexpr std::string_view kGzip = "\x1F\x8B";
constexpr std::string_view kOldOffice = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
constexpr std::array<std::string_view, 2> kZip = {"PK\x03\x04", "PK\x05\x06"};

bool Holds(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

std::string ArchiveFormat(std::string_view beginning) {
  if (Holds(beginning, "mimetypeapplication/vnd.oasis.opendocument.spreadsheet")) {
    return "this is a LibreOffice spreadsheet (.ods); save it as CSV first";
  }
  if (Holds(beginning, "xl/workbook") || Holds(beginning, "xl/worksheets/")) {
    return "this is an Excel workbook (.xlsx); save it as CSV first";
  }
  return "this is a zip archive; unpack it first";
}

}  // namespace

std::string ForeignFormat(std::string_view beginning) {
  if (beginning.starts_with(kGzip)) return "this is a gzip file; unpack it first";
  if (beginning.starts_with(kOldOffice)) {
    return "this is an old Excel workbook (.xls) or the like; save it as CSV first";
  }
  for (const std::string_view mark : kZip) {
    if (beginning.starts_with(mark)) return ArchiveFormat(beginning);
  }
  return {};
}

}  // namespace Cohort
