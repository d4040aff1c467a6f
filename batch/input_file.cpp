// Plain system calls: a read gives what is there and does not wait for a full buffer.
#include "batch/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "batch/cohort_error.h"

namespace Cohort {

namespace {

std::string Reason(int error) {
  return std::generic_category().message(error);
}

}  // namespace

std::string InputName(const std::string& path) {
  return path == kStandardStream ? "standard input" : path;
}

InputFile::InputFile(const std::string& path)
    : descriptor_(path == kStandardStream ? STDIN_FILENO
                                          : open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
  if (descriptor_ < 0) throw CohortError(InputName(path) + ": cannot be opened: " + Reason(errno));
  struct stat status {};
  if (fstat(descriptor_, &status) != 0) return;
  if (S_ISREG(status.st_mode)) size_ = static_cast<std::uint64_t>(status.st_size);
  if (!S_ISDIR(status.st_mode)) return;
  if (descriptor_ != STDIN_FILENO) close(descriptor_);
  throw CohortError(InputName(path) + ": is a folder, not a CSV file");
}

InputFile::~InputFile() {
  if (descriptor_ != STDIN_FILENO) close(descriptor_);
}

std::size_t InputFile::Read(std::span<char> buffer) {
  for (;;) {
    const ssize_t count = read(descriptor_, buffer.data(), buffer.size());
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno != EINTR) throw CohortError("cannot be read: " + Reason(errno));
  }
}

}  // namespace Cohort
