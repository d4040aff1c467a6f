// Plain files only: a terminal may be both sides of a program.
#include "batch/files_met.h"

#include <sys/stat.h>
#include <unistd.h>

#include "batch/input_file.h"
#include "columns/cohort_error.h"

namespace Cohort {

namespace {

using Identity = std::pair<dev_t, ino_t>;

std::optional<Identity> IdentityOf(bool found, const struct stat& status) {
  if (!found || !S_ISREG(status.st_mode)) return std::nullopt;
  return Identity(status.st_dev, status.st_ino);
}

std::optional<Identity> IdentityOf(int descriptor) {
  struct stat status {};
  const bool found = fstat(descriptor, &status) == 0;
  return IdentityOf(found, status);
}

std::optional<Identity> IdentityOf(const std::string& path) {
  struct stat status {};
  const bool found = stat(path.c_str(), &status) == 0;
  return IdentityOf(found, status);
}

}  // namespace

FilesMet::FilesMet(bool intoStandardOutput)
    : output_(intoStandardOutput ? IdentityOf(STDOUT_FILENO) : std::nullopt) {}

void FilesMet::Meet(const std::string& path) {
  const std::optional<Identity> file =
      path == kStandardStream ? IdentityOf(STDIN_FILENO) : IdentityOf(path);
  if (!file) return;
  if (file == output_) {
    throw CohortError(InputName(path) +
                      ": standard output goes into the same file; write the results elsewhere, or "
                      "replace the file with --output");
  }
  if (met_.insert(*file).second) return;
  if (twice_++ == 0) firstTwice_ = InputName(path);
}

std::string FilesMet::Remark() const {
  if (twice_ == 0) return {};
  if (twice_ == 1) return firstTwice_ + ": given more than once, and read as often";
  return std::to_string(twice_) +
         " files are given more than once, and read as often, the first: " + firstTwice_;
}

}  // namespace Cohort
