// Failures are not reported: that fewer people can open a file is no reason not to save it.
#include "storage/file_access.h"

#include <sys/xattr.h>
#include <unistd.h>

#include <vector>

namespace {

constexpr mode_t kPermissions = 0777;
constexpr mode_t kGroup = 070;
constexpr mode_t kOthers = 07;

constexpr const char* kAccessList = "system.posix_acl_access";  // Linux keeps it there

bool TakeOverGroup(int descriptor, const struct stat& before) {
  constexpr auto kSameOwner = static_cast<uid_t>(-1);
  return fchown(descriptor, before.st_uid, before.st_gid) == 0 ||
         fchown(descriptor, kSameOwner, before.st_gid) == 0;
}

std::vector<char> AccessListOf(const std::string& path) {
  const ssize_t size = getxattr(path.c_str(), kAccessList, nullptr, 0);
  std::vector<char> list(size > 0 ? static_cast<std::size_t>(size) : 0);
  if (list.empty()) return list;
  if (getxattr(path.c_str(), kAccessList, list.data(), list.size()) != size) list.clear();
  return list;
}

}  // namespace

// The owner goes first: a change of owner takes permissions away. The group of a file with an
// access list has the most that anybody on the list may do, so without the list it gets no more
// than the others, as does a group that is not the one before.
void TakeOverAccess(int descriptor, const std::string& path, const struct stat& before) {
  const bool sameGroup = TakeOverGroup(descriptor, before);
  const std::vector<char> list = AccessListOf(path);
  if (sameGroup && !list.empty() &&
      fsetxattr(descriptor, kAccessList, list.data(), list.size(), 0) == 0) {
    return;
  }
  fremovexattr(descriptor, kAccessList);  // one that the folder gives to new files
  mode_t mode = before.st_mode & kPermissions;
  if (!sameGroup || !list.empty()) mode &= ~kGroup | ((mode & kOthers) << 3);
  fchmod(descriptor, mode);
}
