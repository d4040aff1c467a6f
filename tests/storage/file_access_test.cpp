// Who may open a file that has taken the place of another.
#include "storage/file_access.h"

#include <gtest/gtest.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "storage/whole_file.h"
#include "tests/faults/fault_library.h"

namespace {

constexpr const char* kAccessList = "system.posix_acl_access";

// One line of an access list as the kernel takes it, behind its version, 2.
struct ListEntry {
  std::uint16_t tag = 0;
  std::uint16_t permissions = 0;
  std::uint32_t id = 0xFFFFFFFF;
};

std::vector<char> AccessList() {
  // Owner rw, a user of number 12345 r, group r, the most of both rw, others nothing.
  constexpr std::array<ListEntry, 5> kEntries = {
      {{0x01, 6}, {0x02, 4, 12345}, {0x04, 4}, {0x10, 6}, {0x20, 0}}};
  constexpr std::uint32_t kVersion = 2;
  std::vector<char> list(sizeof kVersion + sizeof kEntries);
  std::memcpy(list.data(), &kVersion, sizeof kVersion);
  std::memcpy(list.data() + sizeof kVersion, kEntries.data(), sizeof kEntries);
  return list;
}

class FileAccessTest : public testing::Test {
 protected:
  void SetUp() override { PutOld(); }
  void TearDown() override { Faults::Disarm(); }

  void PutOld() const {
    QFile::remove(path_);
    QFile file(path_);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write("old"), 3);
  }
  struct stat Status() const {
    struct stat status {};
    EXPECT_EQ(stat(Name().c_str(), &status), 0);
    return status;
  }
  unsigned Mode() const { return Status().st_mode & 07777; }
  std::string Name() const { return path_.toStdString(); }
  void Replace(bool onlyNamed = false, FileAccess access = FileAccess::AsBefore) const {
    if (onlyNamed) Faults::Arm(folder_.path().toStdString(), {.impossible = "O_TMPFILE"}, 0);
    EXPECT_EQ(WriteWholeFile(path_, "new", access), QString());
    Faults::Disarm();
  }

  // Somebody else for root, who alone may give files away; else a group that the user is in.
  struct Owner {
    uid_t user = 0;
    gid_t group = 0;
  };
  static Owner AnotherOwner() {
    if (geteuid() == 0) return {12345, 23456};
    std::array<gid_t, 64> groups{};
    const int count = getgroups(static_cast<int>(groups.size()), groups.data());
    return {geteuid(), count > 0 ? groups[static_cast<std::size_t>(count) - 1] : getegid()};
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("file"));
};

TEST_F(FileAccessTest, PermissionsStayThoseOfTheOldFile) {
  for (const bool onlyNamed : {false, true}) {
    for (const unsigned mode : {0600U, 0640U, 0666U, 0664U, 0755U, 0777U, 0604U}) {
      ASSERT_EQ(chmod(Name().c_str(), mode), 0);
      Replace(onlyNamed);
      EXPECT_EQ(Mode(), mode);
    }
  }
}

TEST_F(FileAccessTest, OwnerAndGroupStayThoseOfTheOldFile) {
  const Owner owner = AnotherOwner();
  for (const bool onlyNamed : {false, true}) {
    PutOld();
    ASSERT_EQ(chown(Name().c_str(), owner.user, owner.group), 0);
    ASSERT_EQ(chmod(Name().c_str(), 0640), 0);
    Replace(onlyNamed);
    EXPECT_EQ(Status().st_uid, owner.user);
    EXPECT_EQ(Status().st_gid, owner.group);
    EXPECT_EQ(Mode(), 0640U);
  }
}

TEST_F(FileAccessTest, NobodyRunsTheNewContentAsTheOldFilesOwner) {
  for (const unsigned mode : {04755U, 02755U, 06777U}) {
    ASSERT_EQ(chmod(Name().c_str(), mode), 0);
    Replace();
    EXPECT_EQ(Mode(), mode & 0777U);
  }
}

TEST_F(FileAccessTest, ANewFileIsOpenToThoseTheMaskAllows) {
  for (const auto& [mask, mode] : {std::pair(022U, 0644U), std::pair(077U, 0600U)}) {
    const mode_t before = umask(mask);
    for (const bool onlyNamed : {false, true}) {
      QFile::remove(path_);
      Replace(onlyNamed);
      EXPECT_EQ(Mode(), mode);
    }
    umask(before);
  }
}

TEST_F(FileAccessTest, AFileForItsOwnerOnlyIsClosedToAllOthersWhateverWasThere) {
  ASSERT_EQ(chmod(Name().c_str(), 0666), 0);
  Replace(false, FileAccess::OwnerOnly);
  EXPECT_EQ(Mode(), 0600U);
  QFile::remove(path_);
  Replace(true, FileAccess::OwnerOnly);
  EXPECT_EQ(Mode(), 0600U);
}

// A group that is not the one before may do no more than anybody else.
TEST_F(FileAccessTest, WhereTheGroupCannotBeKeptItGetsNoMoreThanTheOthers) {
  for (const auto& [mode, left] : {std::pair(0660U, 0600U), std::pair(0664U, 0644U)}) {
    PutOld();
    ASSERT_EQ(chmod(Name().c_str(), mode), 0);
    Faults::Arm(folder_.path().toStdString(), {.impossible = "fchown"}, 0);
    EXPECT_EQ(WriteWholeFile(path_, "new"), QString());
    Faults::Disarm();
    EXPECT_EQ(Mode(), left);
  }
}

TEST_F(FileAccessTest, AnAccessListStaysTheOldFiles) {
  const std::vector<char> list = AccessList();
  if (setxattr(Name().c_str(), kAccessList, list.data(), list.size(), 0) != 0) {
    ASSERT_EQ(errno, ENOTSUP);  // this file system has none, so none gets lost
    return Replace();
  }
  Replace();
  std::vector<char> found(list.size() + 1);
  EXPECT_EQ(getxattr(Name().c_str(), kAccessList, found.data(), found.size()),
            static_cast<ssize_t>(list.size()));
  found.pop_back();
  EXPECT_EQ(found, list);
  EXPECT_EQ(Mode(), 0660U);
}

// Somebody whom the folder lets into new files could not open the old one.
TEST_F(FileAccessTest, TheFoldersListForNewFilesIsNotTheirs) {
  const std::vector<char> list = AccessList();
  const std::string folder = folder_.path().toStdString();
  if (setxattr(folder.c_str(), "system.posix_acl_default", list.data(), list.size(), 0) != 0) {
    ASSERT_EQ(errno, ENOTSUP);
    return Replace();
  }
  PutOld();
  ASSERT_EQ(removexattr(Name().c_str(), kAccessList), 0);
  ASSERT_EQ(chmod(Name().c_str(), 0640), 0);
  for (const bool onlyNamed : {false, true}) {
    Replace(onlyNamed);
    EXPECT_EQ(getxattr(Name().c_str(), kAccessList, nullptr, 0), -1);
    EXPECT_EQ(Mode(), 0640U);
  }
}

}  // namespace
