// Settings in a file: kept, shared by sessions, and no trouble when they cannot be.
#include "platform/settings_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QFile>
#include <QTemporaryDir>

namespace {

const QJsonObject kOne = {{"a", 1}};
const QJsonObject kTwo = {{"b", "two"}};

class Settings : public testing::Test {
 protected:
  QTemporaryDir folder_;
  QString path_ = folder_.filePath("a/b/settings.json");
};

TEST_F(Settings, AreEmptyWithoutAFile) {
  EXPECT_TRUE(SettingsFile(path_).Section("one").isEmpty());
  EXPECT_FALSE(QFile::exists(path_)) << "reading makes no file";
}

TEST_F(Settings, ComeBackFromTheFileWhoseFolderIsMade) {
  EXPECT_EQ(SettingsFile(path_).Keep("one", kOne), "");
  EXPECT_EQ(SettingsFile(path_).Section("one"), kOne);
}

TEST_F(Settings, OfOneSectionLeaveThoseOfAnotherSessionAlone) {
  const SettingsFile here(path_);
  const SettingsFile there(path_);
  EXPECT_EQ(here.Keep("one", kOne), "");
  EXPECT_EQ(there.Keep("two", kTwo), "");
  EXPECT_EQ(here.Section("one"), kOne);
  EXPECT_EQ(here.Section("two"), kTwo);
}

TEST_F(Settings, ThatDoNotChangeAreNotWrittenAgain) {
  const SettingsFile settings(path_);
  EXPECT_EQ(settings.Keep("one", kOne), "");
  ASSERT_TRUE(QFile::setPermissions(path_, QFileDevice::ReadOwner));
  struct stat before = {};
  ASSERT_EQ(::stat(path_.toLocal8Bit().constData(), &before), 0);
  EXPECT_EQ(settings.Keep("one", kOne), "");
  struct stat after = {};
  ASSERT_EQ(::stat(path_.toLocal8Bit().constData(), &after), 0);
  EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(Settings, WithoutAPathAreNeverKept) {
  EXPECT_EQ(SettingsFile(QString()).Keep("one", kOne), "");
  EXPECT_TRUE(SettingsFile(QString()).Section("one").isEmpty());
}

TEST_F(Settings, ThatCannotBeWrittenGiveTheReason) {
  QFile file(folder_.filePath("file"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  EXPECT_NE(SettingsFile(folder_.filePath("file/settings.json")).Keep("one", kOne), "");
}

TEST_F(Settings, DoNotWaitForAPipe) {
  const QString pipe = folder_.filePath("pipe");
  ASSERT_EQ(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
  EXPECT_TRUE(SettingsFile(pipe).Section("one").isEmpty());
  EXPECT_EQ(SettingsFile(pipe).Keep("one", kOne), "it is not a file");
}

TEST_F(Settings, OfADamagedFileAreEmptyAndReplaced) {
  const QString path = folder_.filePath("settings.json");
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("{\"one\": ");
  file.close();
  EXPECT_TRUE(SettingsFile(path).Section("one").isEmpty());
  EXPECT_EQ(SettingsFile(path).Keep("two", kTwo), "");
  EXPECT_EQ(SettingsFile(path).Section("two"), kTwo);
}

}  // namespace
