// Saving and opening a case file while the system fails at one call after the other.
#include <gtest/gtest.h>

#include "case/case_file.h"
#include "case/date_text.h"
#include "tests/faults/fault_fixture.h"

namespace {

constexpr const char* kCase = "case.txt";

class CaseFaults : public FaultTest {
 protected:
  // A case that is different from the one before and not saved yet.
  void ConfirmAnotherCase() {
    program_.window.Change();
    longer_ = !longer_;
    program_.Type("Text1", longer_ ? "10.5" : "10.4");
    program_.PressOk();
    ASSERT_TRUE(program_.window.Session().NeedsSaving());
  }
  void Save() {
    program_.files.Answers(Path(kCase));
    program_.Command("mnuSave");
    program_.files.Take();
  }
  QByteArray Whole() const {
    return Vse::ComposeCaseFile(program_.window.Session().Record(),
                                Vse::ShortDate(QDate(2026, 11, 15), QLocale::c()), QLocale::c());
  }
  void ExpectSaved() {
    EXPECT_EQ(Bytes(kCase), Whole());
    EXPECT_FALSE(program_.window.Session().NeedsSaving());
  }
  void ExpectOldOrNew() {
    const QList<Message> said = TakeErrors();
    EXPECT_EQ(Files(), QStringList{kCase});
    if (said.isEmpty()) return ExpectSaved();
    ++refusals_;
    EXPECT_TRUE(IsErrorAbout(said, kCase)) << testing::PrintToString(said);
    EXPECT_EQ(Bytes(kCase), Old());
    EXPECT_TRUE(program_.window.Session().NeedsSaving());
    EXPECT_TRUE(program_.InWindow<QWidget>("lblUnsaved")->isVisible());
  }

  bool longer_ = false;
  int refusals_ = 0;
};

TEST_F(CaseFaults, ASaveIsWholeOrLeavesTheOldFileAndTheCaseUnsaved) {
  for (const Faults::Fault& fault : Faults::WhileWriting()) {
    const int calls = Faults::Walk(
        program_.folder.path(), fault,
        [&] {
          Put(kCase);
          ConfirmAnotherCase();
        },
        [&] { Save(); }, [&] { ExpectOldOrNew(); });
    EXPECT_GE(calls, 1);
    Put(kCase);
    ConfirmAnotherCase();
    Save();
    ExpectSaved();
    ExpectAlive();
  }
  EXPECT_GT(refusals_, 0);
}

TEST_F(CaseFaults, AFailedSaveFromThePromptKeepsTheProgramRunning) {
  const Faults::Fault full = {Faults::Kind::Full, ENOSPC};
  Faults::Arm(program_.folder.path().toStdString(), full, 1);
  program_.messages.Answers(Answer::Yes);
  program_.files.Answers(Path(kCase));
  program_.Command("mnuExit");
  EXPECT_EQ(Faults::Disarm(), "write");
  EXPECT_TRUE(IsErrorAbout(TakeErrors(), kCase));
  EXPECT_EQ(Files(), QStringList());
  ExpectAlive();
}

class OpenFaults : public CaseFaults {
 protected:
  void SetUp() override {
    CaseFaults::SetUp();
    Save();  // 10.4
    whole_ = Bytes(kCase);
  }
  // Unsaved and of another length than the file's, 10.5; the form shows it as well.
  void LoadTheOtherCase() {
    if (program_.FormIsOpen()) program_.PressOk();
    longer_ = false;
    ConfirmAnotherCase();
  }
  void Open() {
    program_.messages.Answers(Answer::No);
    program_.files.Answers(Path(kCase));
    program_.Command("mnuOpen");
    program_.files.Take();
  }
  void ExpectReadOrRefused() {
    const QList<Message> said = TakeErrors();
    EXPECT_EQ(Bytes(kCase), whole_);
    EXPECT_EQ(program_.FormIsOpen(), said.isEmpty());
    EXPECT_EQ(program_.Entry("Text1"), said.isEmpty() ? "10.4" : "10.5");
    EXPECT_EQ(program_.window.Session().openOK(), said.isEmpty());
    if (said.isEmpty()) return;
    ++refusals_;
    EXPECT_TRUE(IsErrorAbout(said, kCase)) << testing::PrintToString(said);
  }

  QByteArray whole_;
};

TEST_F(OpenFaults, AFileThatCannotBeReadIsReportedAndTheFormUnchanged) {
  for (const Faults::Fault& fault : Faults::WhileReading()) {
    refusals_ = 0;
    const int calls = Faults::Walk(
        program_.folder.path(), fault, [&] { LoadTheOtherCase(); }, [&] { Open(); },
        [&] { ExpectReadOrRefused(); });
    EXPECT_GE(calls, 1);
    EXPECT_EQ(refusals_ > 0, fault.kind != Faults::Kind::Part);
    program_.PressOk();
    ExpectAlive();
  }
}

}  // namespace
