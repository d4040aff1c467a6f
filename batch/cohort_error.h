// File trouble that ends a run: an unreadable or unwritable file, a header that does not serve, a
// broken quote. `what()` is a plain sentence for the user that names the file and, where there is
// one, the row.
#pragma once

#include <stdexcept>

namespace Cohort {

class CohortError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace Cohort
