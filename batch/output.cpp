// Streams are written as they come, files into a temporary file that then takes their place.
#include "batch/output.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "batch/ending.h"
#include "batch/input_file.h"
#include "columns/cohort_error.h"
#include "columns/visible_text.h"
#include "storage/whole_file.h"

namespace Cohort {

namespace {

CohortError CannotWrite(const std::string& name, const std::string& reason) {
  return CohortError(name + ": cannot be written: " + reason);
}

class StreamOutput final : public TextSink {
 public:
  StreamOutput(int descriptor, std::string name)
      : descriptor_(descriptor), name_(std::move(name)), terminal_(isatty(descriptor) == 1) {}

  StreamOutput(const StreamOutput&) = delete;
  StreamOutput& operator=(const StreamOutput&) = delete;
  ~StreamOutput() override {
    if (descriptor_ > STDOUT_FILENO) close(descriptor_);
  }

  void Write(std::string_view text) override {
    if (terminal_) {
      WriteBytes(ShownLines(text));
    } else {
      WriteBytes(text);
    }
  }

  // A file system over a network may keep trouble with earlier writes until the end.
  void Finish() override {
    const int result = close(std::exchange(descriptor_, -1));
    if (result != 0 && errno != EINTR) {
      throw CannotWrite(name_, std::generic_category().message(errno));
    }
  }

 private:
  void WriteBytes(std::string_view text) const {
    while (!text.empty()) {
      const ssize_t count = write(descriptor_, text.data(), text.size());
      if (count >= 0) {
        text.remove_prefix(static_cast<std::size_t>(count));
      } else if (errno != EINTR) {
        throw CannotWrite(name_, std::generic_category().message(errno));
      }
    }
  }

  int descriptor_;
  std::string name_;
  bool terminal_;
};

class SavedOutput final : public TextSink {
 public:
  explicit SavedOutput(std::string path) : path_(std::move(path)) {
    const EndingHeld held;
    Expect(file_.Open(path_));
    if (!file_.TemporaryPath().empty()) removed_.Watch(file_.TemporaryPath());
  }

  void Write(std::string_view text) override { Expect(file_.Write(text)); }

  void Finish() override {
    const EndingHeld held;
    Expect(file_.Commit());
  }

 private:
  void Expect(const std::string& reason) const {
    if (!reason.empty()) throw CannotWrite(path_, reason);
  }

  std::string path_;
  RemovedAtEnding removed_;  // watches until the file is gone
  WholeFile file_;
};

// A device or a pipe must be written to, not replaced by a file of its name.
bool IsStream(const std::string& path) {
  std::error_code none;
  const std::filesystem::file_status status = std::filesystem::status(path, none);
  return std::filesystem::exists(status) && std::filesystem::is_other(status);
}

}  // namespace

// The device's names lead to the file that standard output goes into, which must not be replaced.
bool IsStandardOutput(const std::string& path) {
  constexpr std::array<std::string_view, 4> kNames = {kStandardStream, "/dev/stdout", "/dev/fd/1",
                                                      "/proc/self/fd/1"};
  return std::find(kNames.begin(), kNames.end(), path) != kNames.end();
}

std::unique_ptr<TextSink> OpenOutput(const std::string& path) {
  if (IsStandardOutput(path)) {
    return std::make_unique<StreamOutput>(STDOUT_FILENO, "standard output");
  }
  if (!IsStream(path)) return std::make_unique<SavedOutput>(path);
  const int descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
  if (descriptor < 0) throw CannotWrite(path, std::generic_category().message(errno));
  return std::make_unique<StreamOutput>(descriptor, path);
}

}  // namespace Cohort
