// Case files as rows of a cohort: one row a file, with the columns that a CSV would have.
#pragma once

#include <QByteArray>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace Cohort {

// Whether a path stands for case files: a folder, or a name that ends with ".txt" unless the file
// begins with the header row of a table.
bool IsCaseFileInput(const std::string& path);

// The code page of case files that are not UTF-8.
struct CaseCodePage {
  std::string name;
  bool assumed = false;  // nobody has named it, and there is no language to tell it
};

// The named one, else that of the system locale's language.
CaseCodePage FindCodePage(const std::optional<std::string>& named);

// Reads as CSV with a header row: file, name, sex, dateOfBirth, hip, comments, the measurements in
// the units of the case file, and remark, which says why a file could not be read (its measurements
// are then empty). A text that a spreadsheet would take for a formula has an apostrophe before it.
// One file is held in memory at a time.
class CaseFileInput {
 public:
  // The ".txt" files of a folder in the order of their names, without hidden ones and subfolders;
  // or one file. Names are the system's bytes.
  // Throws CohortError when the folder cannot be listed or the one file is no case file.
  CaseFileInput(const std::string& path, CaseCodePage codePage);

  // Which field, counted from 0, is the remark.
  static std::size_t FaultField();

  // Fills the beginning of the buffer; 0 at the end.
  std::size_t Read(std::span<char> buffer);

  // The paths of the case files.
  const std::vector<std::string>& Files() const { return files_; }

  // A sentence about what is in the folder and no case file; empty when there is nothing.
  std::string PassedOver() const;

  // The paths of those files read so far that are not UTF-8; and of these, of those that hold bytes
  // which are no letters in the code page.
  const std::vector<std::string>& InCodePage() const { return inCodePage_; }
  const std::vector<std::string>& NotInCodePage() const { return notInCodePage_; }

 private:
  void ListFolder();
  bool NextRecord();
  std::string CaseRecordText(const std::string& path);
  void NoteLetters(const std::string& path, const QByteArray& bytes);

  std::string path_;
  CaseCodePage codePage_;
  std::vector<std::string> files_;
  std::vector<std::string> passedOver_;
  std::vector<std::string> inCodePage_;
  std::vector<std::string> notInCodePage_;
  std::size_t next_ = 0;
  std::string text_;  // to be given
  std::size_t given_ = 0;
};

}  // namespace Cohort
