// Input that ends a run: an unreadable or unwritable file, a header that cannot be used, a broken
// quote. `what()` is a plain sentence for the user, with the file and the row where they are known.
#pragma once

#include <stdexcept>

namespace Cohort {

class CohortError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace Cohort
