// Plain system calls: a read gives what is there and does not wait for a full buffer.
#include "batch/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "batch/foreign_format.h"
#include "columns/cohort_error.h"

namespace Cohort {

namespace {

std::string Reason(int error) {
  return std::generic_category().message(error);
}

// A signal that was waited for is no reason to give up.
ssize_t ReadAgain(int descriptor, std::span<char> buffer) {
  for (;;) {
    const ssize_t count = read(descriptor, buffer.data(), buffer.size());
    if (count >= 0 || errno != EINTR) return count;
  }
}

}  // namespace

std::string InputName(const std::string& path) {
  return path == kStandardStream ? "standard input" : path;
}

void CheckFormat(const std::string& path) {
  constexpr std::size_t kBeginning = 65536;  // enough for the first names in an archive
  const std::string format = ForeignFormat(ReadBeginning(path, kBeginning).bytes);
  if (!format.empty()) throw CohortError(path + ": " + format);
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
  const std::size_t count = ReadSome(buffer);
  if (!std::exchange(begun_, true)) {
    const std::string format = ForeignFormat({buffer.data(), count});
    if (!format.empty()) throw CohortError(format);
  }
  return count;
}

std::size_t InputFile::ReadSome(std::span<char> buffer) {
  const ssize_t count = ReadAgain(descriptor_, buffer);
  if (count < 0) throw CohortError("cannot be read: " + Reason(errno));
  return static_cast<std::size_t>(count);
}

FileBeginning ReadBeginning(const std::string& path, std::size_t most) {
  FileBeginning beginning;
  struct stat status {};
  if (stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
    return {{}, "It is not a file."};
  }
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return {{}, Reason(errno)};
  std::string& bytes = beginning.bytes;
  bytes.resize(most);
  std::size_t size = 0;
  ssize_t count = 1;
  while (count > 0 && size < most) {
    count = ReadAgain(descriptor, std::span(bytes).subspan(size));
    if (count > 0) size += static_cast<std::size_t>(count);
  }
  if (count < 0) beginning.trouble = Reason(errno);
  close(descriptor);
  bytes.resize(size);
  return beginning;
}

}  // namespace Cohort
