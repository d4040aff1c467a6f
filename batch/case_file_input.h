// Case files as rows of a cohort: one row a file, with the columns that a CSV would have.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace Cohort {

// Whether a path stands for case files: a folder, or a name that ends with ".txt" unless the file
// begins with the header row of a table.
bool IsCaseFileInput(const std::string& path);

// Reads as CSV with a header row: file, name, sex, dateOfBirth, hip, comments, the measures and the
// body weight in the units of the case file, and remark, which tells why a file could not be read
// (its measures are then empty). One file is held in memory at a time.
class CaseFileInput {
 public:
  // The ".txt" files of a folder in the order of their names, without its subfolders; or one file.
  // Throws CohortError when the folder cannot be listed or the one file is no case file.
  explicit CaseFileInput(const std::string& path);

  // Fills the beginning of the buffer; 0 at the end.
  std::size_t Read(std::span<char> buffer);

 private:
  bool NextRecord();

  std::vector<std::string> files_;
  std::size_t next_ = 0;
  std::string text_;  // to be given
  std::size_t given_ = 0;
};

}  // namespace Cohort
