// The case file on a disk: written whole or not at all, and what cannot be read.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <csignal>

#include "tests/case/case_file_sample.h"
#include "tests/support/small_files.h"

namespace {

using Vse::CaseFileContents;

void Put(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  ASSERT_EQ(file.write(bytes), bytes.size());
}

QByteArray Get(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return file.readAll();
}

TEST(CaseFileOnDisk, ComesBack) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("case.txt");
  EXPECT_EQ(Vse::WriteCaseFile(path, DefaultCase(), "15.11.2026", QLocale::c()), "");
  EXPECT_EQ(Get(path), kDefaultFile);
  EXPECT_TRUE(Vse::ReadCaseFile(path, QLocale::c()).entries == DefaultEntries());
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}

TEST(CaseFileOnDisk, AFailedWriteLeavesTheOldFileAndTellsWhy) {
  const QTemporaryDir folder;
  QDir(folder.path()).mkdir("case.txt");
  EXPECT_NE(Vse::WriteCaseFile(folder.filePath("case.txt"), DefaultCase(), "", QLocale::c()), "");
  EXPECT_NE(Vse::WriteCaseFile(folder.filePath("none/case.txt"), DefaultCase(), "", QLocale::c()),
            "");
  EXPECT_NE(Vse::WriteCaseFile("/proc/case.txt", DefaultCase(), "", QLocale::c()), "");
  EXPECT_TRUE(QDir(folder.filePath("case.txt")).exists());
}

TEST(CaseFileOnDisk, AFullDiskIsReportedAndTheOldFileStays) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("case.txt");
  Put(path, "old");
  {
    const SmallFiles full(100);
    EXPECT_NE(Vse::WriteCaseFile(path, DefaultCase(), "", QLocale::c()), "");
  }
  EXPECT_EQ(Get(path), "old");
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}

TEST(CaseFileOnDisk, WhatCouldNotBeReadAgainIsNotWritten) {
  const QTemporaryDir folder;
  CaseRecord record = DefaultCase();
  record.data.patient.comments = QString(static_cast<int>(Vse::kLargestCaseFile), 'x');
  const QString path = folder.filePath("case.txt");
  EXPECT_NE(Vse::WriteCaseFile(path, record, "", QLocale::c()), "");
  EXPECT_FALSE(QFile::exists(path));
}

TEST(CaseFileOnDisk, WhatCannotBeReadIsReported) {
  const QTemporaryDir folder;
  QDir(folder.path()).mkdir("folder.txt");
  ASSERT_EQ(mkfifo(qPrintable(folder.filePath("pipe.txt")), 0600), 0);
  for (const char* name : {"folder.txt", "none.txt", "pipe.txt"}) {
    const CaseFileContents contents = Vse::ReadCaseFile(folder.filePath(name), QLocale::c());
    EXPECT_EQ(contents.problem, CaseFileContents::Problem::Unreadable) << name;
    EXPECT_NE(contents.reason, "") << name;
  }
}

TEST(CaseFileOnDisk, LargerThanAMebibyteIsNoCaseFile) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("large.txt");
  CaseRecord record = DefaultCase();
  record.data.patient.comments =
      QString(static_cast<int>(Vse::kLargestCaseFile - kDefaultFile.size() + 2), 'x');
  Put(path, Compose(record));
  EXPECT_EQ(Vse::ReadCaseFile(path, QLocale::c()).problem, CaseFileContents::Problem::None);
  record.data.patient.comments += "x";
  Put(path, Compose(record));
  EXPECT_EQ(Vse::ReadCaseFile(path, QLocale::c()).problem,
            CaseFileContents::Problem::NotCorrectFile);
  QFile sparse(path);
  ASSERT_TRUE(sparse.open(QIODevice::ReadWrite));
  ASSERT_TRUE(sparse.resize(qint64{1} << 30));
  EXPECT_EQ(Vse::ReadCaseFile(path, QLocale::c()).problem,
            CaseFileContents::Problem::NotCorrectFile);
}

// Killed at any moment of writing, the program leaves a whole file: the old one or the new one.
TEST(CaseFileOnDisk, IsWholeWhateverMomentTheProgramDiesAt) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("case.txt");
  CaseRecord other = DefaultCase();
  other.data.patient.comments = QString(200000, 'x');
  const QByteArray otherFile = Compose(other);
  ASSERT_EQ(Vse::WriteCaseFile(path, DefaultCase(), "15.11.2026", QLocale::c()), "");
  for (int round = 0; round < 25; ++round) {
    const pid_t writer = fork();
    ASSERT_GE(writer, 0);
    if (writer == 0) {
      for (;;) {
        Vse::WriteCaseFile(path, other, "15.11.2026", QLocale::c());
        Vse::WriteCaseFile(path, DefaultCase(), "15.11.2026", QLocale::c());
      }
    }
    usleep(3000 + 977 * static_cast<unsigned>(round));
    kill(writer, SIGKILL);
    waitpid(writer, nullptr, 0);
    const QByteArray found = Get(path);
    EXPECT_TRUE(found == kDefaultFile || found == otherFile) << found.size();
  }
}

}  // namespace
