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

class InputFile {
 public:
  // Throws CohortError when the file cannot be opened or is a folder.
  explicit InputFile(const std::string& path);
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  ~InputFile();

  // Fills the beginning of the buffer with what is there, waiting for at least one byte; 0 at the
  // end. Throws CohortError with the system's reason.
  std::size_t Read(std::span<char> buffer);

  // Bytes; empty where that cannot be known (a pipe).
  std::optional<std::uint64_t> Size() const { return size_; }

 private:
  int descriptor_ = -1;
  std::optional<std::uint64_t> size_;
};

}  // namespace Cohort
