// Keeping and reading settings while the system fails at one call after the other.
#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "platform/settings_file.h"
#include "tests/faults/fault_walk.h"

namespace {

// Longer than what one read or write handles on a fault.
const QJsonObject kOne = {{"a", QString(1000, 'x')}};
const QJsonObject kTwo = {{"b", "two"}};

class SettingsFaults : public testing::Test {
 protected:
  // Settings of another window are there.
  void KeepOne() {
    QFile::remove(path_);
    ASSERT_EQ(SettingsFile(path_).Keep("one", kOne), "");
    before_ = Bytes();
  }
  QByteArray Bytes() const {
    QFile file(path_);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }
  void ExpectBothOrTheOldFileAndAReason() {
    const auto all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    EXPECT_EQ(QDir(folder_.path()).entryList(all), QStringList{"settings.json"});
    EXPECT_EQ(SettingsFile(path_).Section("one"), kOne);
    EXPECT_EQ(SettingsFile(path_).Section("two"), reason_.isEmpty() ? kTwo : QJsonObject());
    if (reason_.isEmpty()) return;
    ++refusals_;
    EXPECT_EQ(Bytes(), before_);
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath("settings.json");
  QByteArray before_;
  QString reason_;
  int refusals_ = 0;
};

TEST_F(SettingsFaults, AreKeptBesideTheOthersOrTheOldFileStaysAndTheReasonIsGiven) {
  for (const Faults::Fault& fault : Faults::WhileWriting()) {
    refusals_ = 0;
    const int calls = Faults::Walk(
        folder_.path(), fault, [&] { KeepOne(); },
        [&] { reason_ = SettingsFile(path_).Keep("two", kTwo); },
        [&] { ExpectBothOrTheOldFileAndAReason(); });
    EXPECT_GE(calls, 1);
    EXPECT_EQ(refusals_ > 0, fault.kind != Faults::Kind::Part);
  }
}

TEST_F(SettingsFaults, OnAFullDiskGiveTheSystemsReason) {
  KeepOne();
  Faults::Arm(folder_.path().toStdString(), {Faults::Kind::Full, ENOSPC}, 1);
  EXPECT_EQ(SettingsFile(path_).Keep("two", kTwo), "No space left on device");
  EXPECT_EQ(Faults::Disarm(), "write");
  EXPECT_EQ(Bytes(), before_);
}

TEST_F(SettingsFaults, AreReadWholeOrNotAtAll) {
  KeepOne();
  for (const Faults::Fault& fault : Faults::WhileReading()) {
    int unread = 0;
    QJsonObject section;
    Faults::Walk(
        folder_.path(), fault, [] {}, [&] { section = SettingsFile(path_).Section("one"); },
        [&] {
          EXPECT_TRUE(section == kOne || section.isEmpty());
          EXPECT_EQ(Bytes(), before_);
          unread += section.isEmpty() ? 1 : 0;
        });
    EXPECT_EQ(unread > 0, fault.kind != Faults::Kind::Part);
  }
}

}  // namespace
