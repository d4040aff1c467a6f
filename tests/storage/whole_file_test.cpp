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

// Few bytes wait in memory for the end, many are written at once.
TEST_F(WholeFileTest, IsOldOrNewWhateverFails) {
  for (const qsizetype size : {5000, 50000}) {
    const QByteArray fresh(size, 'n');
    for (const Faults::Fault& fault : Faults::WhileWriting()) {
      QString reason;
      const int calls = Faults::Walk(
          folder_.path(), fault, [&] { Put("old"); },
          [&] { reason = WriteWholeFile(Path(), fresh); },
          [&] {
            EXPECT_EQ(Bytes(), reason.isEmpty() ? fresh : QByteArray("old"))
                << reason.toStdString();
            EXPECT_EQ(Files(), QStringList{"file"});
            EXPECT_TRUE(QFile::permissions(Path()) & QFile::ReadOwner) << "nobody can open it";
          });
      EXPECT_GE(calls, 1);
    }
  }
}

TEST_F(WholeFileTest, ADiskThatFillsUpIsGivenAsTheReason) {
  for (const qsizetype size : {5000, 50000}) {
    Faults::Arm(folder_.path().toStdString(), {Faults::Kind::Full, ENOSPC}, 1);
    EXPECT_EQ(WriteWholeFile(Path(), QByteArray(size, 'n')), "No space left on device");
    EXPECT_EQ(Faults::Disarm(), "write");
  }
}

TEST_F(WholeFileTest, PiecesThatFindNoRoomAtTheEndAreNoticed) {
  Put("old");
  QSaveFile file(Path());
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  ASSERT_EQ(file.write(QByteArray(5000, 'n')), 5000);  // they wait in memory
  Faults::Arm(folder_.path().toStdString(), {Faults::Kind::Full, ENOSPC}, 1);
  EXPECT_EQ(CommitWholeFile(file), "No space left on device");
  Faults::Disarm();
  EXPECT_EQ(Bytes(), "old");
}

}  // namespace
