// A file to read, or standard input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace Cohort {

// "-" is standard input.
inline constexpr const char* kStandardStream = "-";

// What the user calls it in messages.
std::string InputName(const std::string& path);

// The beginning of a plain file.
struct FileBeginning {
  std::string bytes;
  std::string trouble;  // why it could not be read, in the system's words; empty when it could
};

// Up to `most` bytes. A pipe or a device, which could be waited for without end, is "not a file".
FileBeginning ReadBeginning(const std::string& path, std::size_t most);

// Throws CohortError when a plain file is no text but of a format that people take for a table.
// What cannot be read passes: reading it in earnest tells why.
void CheckFormat(const std::string& path);

class InputFile {
 public:
  // Throws CohortError when the file cannot be opened or is a folder.
  explicit InputFile(const std::string& path);
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  ~InputFile();

  // Fills the beginning of the buffer with what is there, waiting for at least one byte; 0 at the
  // end. Throws CohortError with the system's reason, or when the file does not begin like text.
  std::size_t Read(std::span<char> buffer);

  // Bytes; empty where that cannot be known (a pipe).
  std::optional<std::uint64_t> Size() const { return size_; }

 private:
  std::size_t ReadSome(std::span<char> buffer);

  int descriptor_ = -1;
  bool begun_ = false;
  std::optional<std::uint64_t> size_;
};

}  // namespace Cohort
