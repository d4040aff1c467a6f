// What a field without a value looks like.
#pragma once

#include <string_view>

namespace Cohort {

bool IsBlank(std::string_view text);

// Whether it says that there is no value, as statistics programs, spreadsheets and this one do:
// blank, "NA", "N/A", "NaN", "#N/A", "-" or "Unknown", in either case.
bool IsMissing(std::string_view text);

}  // namespace Cohort
