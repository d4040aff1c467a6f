// Files that people take for tables and that are none.
#pragma once

#include <string>
#include <string_view>

namespace Cohort {

// What a file is that begins with these bytes, and what to do with it: a sentence. Empty when it
// may be text.
std::string ForeignFormat(std::string_view beginning);

}  // namespace Cohort
