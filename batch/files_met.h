// Notices a file that is met twice: as two inputs, or as an input and as standard output.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace Cohort {

class FilesMet {
 public:
  // Without standard output no input can be the same file: another output takes its place as a
  // whole when all has been read.
  explicit FilesMet(bool intoStandardOutput);

  // To be called for every file that is going to be read. Throws CohortError when it is where
  // standard output goes, under whatever name: the program would read its own results for ever.
  void Meet(const std::string& path);

  // A sentence about the files that were met twice; empty when there are none.
  std::string Remark() const;

 private:
  using Identity = std::pair<dev_t, ino_t>;

  std::optional<Identity> output_;
  std::set<Identity> met_;
  std::uint64_t twice_ = 0;
  std::string firstTwice_;
};

}  // namespace Cohort
