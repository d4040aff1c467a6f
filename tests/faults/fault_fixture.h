// The program with the system failing under it: an old file, a command that replaces it, and what
// must hold afterwards.
#pragma once

#include <gtest/gtest.h>

#include <QDir>

#include "tests/faults/fault_walk.h"
#include "tests/support/running_program.h"

class FaultTest : public testing::Test {
 protected:
  using Answer = MessageDoor::Answer;

  // What the old file holds; no result looks like it.
  static QByteArray Old() { return "what was here before\n"; }

  void SetUp() override { program_.ConfirmDefaultCase(); }

  QString Path(const char* name) const { return program_.Path(name); }
  QByteArray Bytes(const char* name) const { return program_.Bytes(Path(name)); }
  void Put(const char* name, const QByteArray& bytes = Old()) const {
    QFile file(Path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ASSERT_EQ(file.write(bytes), bytes.size());
  }
  // All files of the test's folder, temporary ones too.
  QStringList Files() const {
    return QDir(program_.folder.path())
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  }

  // The errors that were said since the last call; the questions before them are left out.
  QList<Message> TakeErrors() {
    QList<Message> said = program_.messages.Take();
    said.removeIf([](const Message& message) { return message.kind != "error"; });
    return said;
  }

  // Whether exactly one error was said, titled "Error", that names the file and a reason.
  static bool IsErrorAbout(const QList<Message>& said, const QString& file) {
    if (said.size() != 1 || said[0].title != "Error") return false;
    const qsizetype at = said[0].text.indexOf(file);
    return at >= 0 && said[0].text.size() > at + file.size() + 3;
  }

  // The program answers to a command as ever.
  void ExpectAlive() {
    EXPECT_TRUE(program_.window.isVisible());
    EXPECT_FALSE(program_.FormIsOpen());
    program_.Command("mnuChange");
    EXPECT_TRUE(program_.FormIsOpen());
    program_.PressCancel();
  }

  RunningProgram program_;
};
