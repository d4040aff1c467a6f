// Writing whole files, with the system failing at every call in turn.
#include "storage/whole_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "tests/faults/fault_walk.h"

namespace {

class WholeFileTest : public testing::Test {
 protected:
  QString Path() const { return folder_.filePath(QStringLiteral("file")); }
  void Put(const QByteArray& bytes) const {
    QFile file(Path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  QByteArray Bytes() const {
    QFile file(Path());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
  }
  QStringList Files() const {
    return QDir(folder_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  }

  QTemporaryDir folder_;
};

TEST_F(WholeFileTest, MakesAndReplaces) {
  EXPECT_EQ(WriteWholeFile(Path(), "first"), QString());
  EXPECT_EQ(Bytes(), "first");
  EXPECT_EQ(WriteWholeFile(Path(), "second"), QString());
  EXPECT_EQ(Bytes(), "second");
  EXPECT_EQ(Files(), QStringList{"file"});
}

TEST_F(WholeFileTest, AFailureNamesTheReason) {
  EXPECT_EQ(WriteWholeFile(folder_.filePath("none/file"), "new"), "No such file or directory");
}

TEST_F(WholeFileTest, IsOldOrNewWhateverFails) {
  const QByteArray fresh(5000, 'n');
  QString reason;
  for (const Faults::Fault& fault : Faults::WhileWriting()) {
    const int calls = Faults::Walk(
        folder_.path(), fault, [&] { Put("old"); }, [&] { reason = WriteWholeFile(Path(), fresh); },
        [&] {
          EXPECT_EQ(Bytes(), reason.isEmpty() ? fresh : QByteArray("old")) << reason.toStdString();
          EXPECT_EQ(Files(), QStringList{"file"});
        });
    EXPECT_GE(calls, 1);
  }
}

TEST_F(WholeFileTest, PiecesThatFindNoRoomAtTheEndAreNoticed) {
  Put("old");
  QSaveFile file(Path());
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  ASSERT_TRUE(file.write("a few bytes that wait in memory"));
  Faults::Arm(folder_.path().toStdString(), {Faults::Kind::FromThenOn, ENOSPC}, 1);
  EXPECT_EQ(CommitWholeFile(file), "No space left on device");
  Faults::Disarm();
  EXPECT_EQ(Bytes(), "old");
}

}  // namespace
