// Where the file system supports it, a file has no name until it is complete, and nothing is left
// behind whatever happens to the program. Elsewhere it has a temporary name beside its destination.
#include "storage/whole_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <array>
#include <cerrno>
#include <climits>
#include <filesystem>
#include <system_error>

#include "storage/file_access.h"

namespace {

constexpr mode_t kForOwner = 0600;
constexpr mode_t kForAll = 0666;  // less the system's mask
constexpr int kMostLinks = 40;    // as the kernel has it
constexpr int kMostNames = 1000;  // left by programs that were killed; then something is wrong

std::string Reason(int error) {
  return std::generic_category().message(error);
}

// The place that a chain of links leads to, whether a file is there or not.
std::string BehindLinks(std::string path) {
  std::array<char, PATH_MAX> text{};
  for (int links = 0; links < kMostLinks; ++links) {
    const ssize_t length = readlink(path.c_str(), text.data(), text.size());
    if (length < 0) break;
    const std::string next(text.data(), static_cast<std::size_t>(length));
    path = std::filesystem::path(path).parent_path() / next;
  }
  return path;
}

std::string FolderOf(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path();
  return folder.empty() ? "." : folder;
}

// Short, so that it fits wherever the file's own name does.
std::string BesideName(const std::string& path, int number) {
  const std::string name = ".telmarion-" + std::to_string(getpid()) + '-' + std::to_string(number);
  return std::filesystem::path(path).parent_path() / name;
}

// Why the file at `path` cannot be replaced; empty if it can.
std::string ReasonNotToReplace(const std::string& path, const struct stat& status) {
  if (S_ISDIR(status.st_mode)) return Reason(EISDIR);
  if (!S_ISREG(status.st_mode)) return "not a file";
  return access(path.c_str(), W_OK) == 0 ? std::string() : Reason(errno);
}

// -1 where the file system has only files with a name, or where none could be given later.
int OpenNameless(const std::string& folder, mode_t mode) {
  if (access("/proc/self/fd", X_OK) != 0) return -1;
  return open(folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, mode);
}

// Calls `take` with one name after the other until it does not find a file there. Gives that name;
// where `take` fails for another reason, an empty one.
template <class Take>
std::string TakeName(const std::string& path, const Take& take) {
  for (int number = 1; number <= kMostNames; ++number) {
    std::string name = BesideName(path, number);
    if (take(name.c_str()) >= 0) return name;
    if (errno != EEXIST) break;
  }
  return {};
}

std::string BringToDisk(int descriptor) {
  while (fdatasync(descriptor) != 0) {
    if (errno == EINTR) continue;
    const bool cannotSync = errno == EINVAL || errno == ENOSYS || errno == ENOTSUP;
    if (cannotSync) break;  // some file systems never can
    return Reason(errno);
  }
  return {};
}

}  // namespace

WholeFile::~WholeFile() {
  if (!temporary_.empty()) unlink(temporary_.c_str());
  if (descriptor_ >= 0) close(descriptor_);
}

std::string WholeFile::Open(const std::string& path, FileAccess access) {
  target_ = BehindLinks(path);
  struct stat before {};
  const bool exists = stat(target_.c_str(), &before) == 0;
  if (!exists && errno != ENOENT) return Reason(errno);
  std::string reason = exists ? ReasonNotToReplace(target_, before) : std::string();
  if (!reason.empty()) return reason;
  const bool forAll = !exists && access == FileAccess::AsBefore;
  reason = Create(forAll ? kForAll : kForOwner);
  if (reason.empty() && exists && access == FileAccess::AsBefore) {
    TakeOverAccess(descriptor_, target_, before);
  }
  return reason;
}

std::string WholeFile::Create(unsigned mode) {
  descriptor_ = OpenNameless(FolderOf(target_), mode);
  if (descriptor_ >= 0) return {};
  temporary_ = TakeName(target_, [&](const char* name) {
    return descriptor_ = open(name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
  });
  return temporary_.empty() ? Reason(errno) : std::string();
}

// On a disk that fills up the first call writes what still fits, the second reports the reason.
std::string WholeFile::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(descriptor_, bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      return Reason(errno);
    }
  }
  return {};
}

// A nameless file can be given a free name only, so it gets one beside its place first.
std::string WholeFile::GiveName() {
  const std::string file = "/proc/self/fd/" + std::to_string(descriptor_);
  temporary_ = TakeName(target_, [&](const char* name) {
    return linkat(AT_FDCWD, file.c_str(), AT_FDCWD, name, AT_SYMLINK_FOLLOW);
  });
  return temporary_.empty() ? Reason(errno) : std::string();
}

std::string WholeFile::Commit() {
  std::string reason = BringToDisk(descriptor_);
  if (reason.empty() && temporary_.empty()) reason = GiveName();
  if (!reason.empty()) return reason;
  if (rename(temporary_.c_str(), target_.c_str()) != 0) return Reason(errno);
  temporary_.clear();
  return {};
}

QString WriteWholeFile(const QString& path, const QByteArray& bytes, FileAccess access) {
  WholeFile file;
  std::string reason = file.Open(QFile::encodeName(path).toStdString(), access);
  if (reason.empty()) {
    reason = file.Write({bytes.data(), static_cast<std::size_t>(bytes.size())});
  }
  if (reason.empty()) reason = file.Commit();
  return QString::fromStdString(reason);
}
