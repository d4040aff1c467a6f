// Writing whole files, with the system failing at every call in turn.
#include "storage/whole_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <filesystem>

#include "tests/faults/fault_walk.h"

namespace {

class WholeFileTest : public testing::Test {
 protected:
  QString Path() const { return folder_.filePath(QStringLiteral("file")); }
  std::string Bytewise() const { return Path().toStdString(); }
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
    return QDir(folder_.path())
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  }
  void AllowNamedFilesOnly() const {
    const std::string place = QFileInfo(folder_.path()).canonicalFilePath().toStdString();
    Faults::Arm(place, {.impossible = "O_TMPFILE"}, 0);
  }
  void TearDown() override { Faults::Disarm(); }

  QTemporaryDir folder_;
};

TEST_F(WholeFileTest, CreatesAndReplaces) {
  EXPECT_EQ(WriteWholeFile(Path(), "first"), QString());
  EXPECT_EQ(Bytes(), "first");
  EXPECT_EQ(WriteWholeFile(Path(), "second"), QString());
  EXPECT_EQ(Bytes(), "second");
  EXPECT_EQ(Files(), QStringList{"file"});
}

TEST_F(WholeFileTest, AFailureNamesTheReason) {
  EXPECT_EQ(WriteWholeFile(folder_.filePath("none/file"), "new"), "No such file or directory");
  EXPECT_EQ(WriteWholeFile(folder_.path(), "new"), "Is a directory");
  EXPECT_EQ(WriteWholeFile(QString("/dev/null"), "new"), "not a file");
  QFile::link("loop", folder_.filePath("loop"));
  EXPECT_EQ(WriteWholeFile(folder_.filePath("loop"), "new"), "Too many levels of symbolic links");
}

TEST_F(WholeFileTest, ALinkStaysAndItsTargetIsReplaced) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir("away"));
  QFile::link("away/file", folder_.filePath("second"));
  QFile::link("second", folder_.filePath("first"));
  for (const char* bytes : {"made", "replaced"}) {
    EXPECT_EQ(WriteWholeFile(folder_.filePath("first"), bytes), QString());
    QFile file(folder_.filePath("away/file"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), bytes);
    EXPECT_TRUE(QFileInfo(folder_.filePath("first")).isSymLink());
    EXPECT_TRUE(QFileInfo(folder_.filePath("second")).isSymLink());
  }
}

TEST_F(WholeFileTest, ANameMayHaveAnyBytesAndTheGreatestLength) {
  for (const std::string& name : {std::string("M\xFCller"), std::string(255, 'n')}) {
    for (const bool onlyNamed : {false, true}) {
      const std::filesystem::path path = folder_.path().toStdString() + '/' + name;
      if (onlyNamed) AllowNamedFilesOnly();
      WholeFile file;
      EXPECT_EQ(file.Open(path), "");
      EXPECT_EQ(file.Write("new"), "");
      EXPECT_EQ(file.Commit(), "");
      Faults::Disarm();
      EXPECT_TRUE(std::filesystem::remove(path)) << name;
      EXPECT_TRUE(std::filesystem::is_empty(path.parent_path()));
    }
  }
}

TEST_F(WholeFileTest, WithoutACommitNothingHasHappened) {
  Put("old");
  for (const bool onlyNamed : {false, true}) {
    if (onlyNamed) AllowNamedFilesOnly();
    {
      WholeFile file;
      EXPECT_EQ(file.Open(Bytewise()), "");
      EXPECT_EQ(file.Write("new"), "");
      EXPECT_EQ(Bytes(), "old");
      EXPECT_EQ(Files().size(), onlyNamed ? 2 : 1);
      EXPECT_EQ(file.TemporaryPath().empty(), !onlyNamed);
    }
    EXPECT_EQ(Bytes(), "old");
    EXPECT_EQ(Files(), QStringList{"file"});
  }
}

TEST_F(WholeFileTest, LeavesTheFilesOfKilledProgramsAlone) {
  AllowNamedFilesOnly();
  WholeFile one;
  WholeFile other;
  EXPECT_EQ(one.Open(Bytewise()), "");
  EXPECT_EQ(other.Open(Bytewise()), "");
  EXPECT_NE(one.TemporaryPath(), other.TemporaryPath());
  EXPECT_EQ(one.Write("one"), "");
  EXPECT_EQ(other.Write("other"), "");
  EXPECT_EQ(one.Commit(), "");
  EXPECT_EQ(Bytes(), "one");
  EXPECT_EQ(other.Commit(), "");
  EXPECT_EQ(Bytes(), "other");
}

// With and without files that have no name.
std::vector<Faults::Fault> EveryFault() {
  std::vector<Faults::Fault> faults = Faults::WhileWriting();
  for (Faults::Fault fault : Faults::WhileWriting()) {
    fault.impossible = "O_TMPFILE";
    faults.push_back(fault);
  }
  return faults;
}

TEST_F(WholeFileTest, IsOldOrNewWhateverFails) {
  for (const qsizetype size : {5000, 50000}) {
    const QByteArray fresh(size, 'n');
    for (const Faults::Fault& fault : EveryFault()) {
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

TEST_F(WholeFileTest, ADiskThatFillsUpIsTheReasonGiven) {
  for (const qsizetype size : {5000, 50000}) {
    Faults::Arm(folder_.path().toStdString(), {Faults::Kind::Full, ENOSPC}, 1);
    EXPECT_EQ(WriteWholeFile(Path(), QByteArray(size, 'n')), "No space left on device");
    EXPECT_EQ(Faults::Disarm(), "write");
  }
}

}  // namespace
