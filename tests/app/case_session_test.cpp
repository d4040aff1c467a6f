// The flags of the save prompts, step by step.
#include "app/case_session.h"

#include <gtest/gtest.h>

namespace {

void Confirm(CaseSession& session, double lizm) {
  CaseData data;
  data.inputs.lizm = {lizm};
  session.Confirm(data);
}

TEST(CaseSession, StartsWithNothingToSave) {
  const CaseSession session;
  EXPECT_TRUE(session.saveOK());
  EXPECT_FALSE(session.openOK());
  EXPECT_FALSE(session.NeedsSaving());
  EXPECT_FALSE(session.HasCase());
}

TEST(CaseSession, ANewCaseNeedsSavingAndHasNoFile) {
  CaseSession session;
  session.NoteNew();
  Confirm(session, 10.4);
  EXPECT_TRUE(session.NeedsSaving());
  EXPECT_TRUE(session.HasCase());
  EXPECT_TRUE(session.FileInUse().isEmpty());
}

TEST(CaseSession, ANewCaseNeedsSavingEvenIfItEqualsTheOneSaved) {
  CaseSession session;
  session.NoteNew();
  Confirm(session, 10.4);
  session.NoteSaved("a.txt");
  session.NoteNew();
  Confirm(session, 10.4);
  EXPECT_TRUE(session.NeedsSaving());
}

TEST(CaseSession, SavingSetsOneFlagAndReadingTheOther) {
  CaseSession session;
  session.NoteNew();
  Confirm(session, 10.4);
  session.NoteSaved("a.txt");
  EXPECT_TRUE(session.saveOK());
  EXPECT_FALSE(session.openOK());
  EXPECT_EQ(session.FileInUse(), "a.txt");
  session.NoteChange();
  Confirm(session, 10.5);
  EXPECT_TRUE(session.NeedsSaving());
  EXPECT_EQ(session.FileInUse(), "a.txt");
  session.NoteRead("b.txt", std::nullopt);
  EXPECT_FALSE(session.saveOK());
  EXPECT_TRUE(session.openOK());
  EXPECT_EQ(session.FileInUse(), "a.txt");
}

TEST(CaseSession, ConfirmingWhatWasReadLeavesTheFlags) {
  CaseSession session;
  CaseData read;
  read.inputs.lizm = {9.0};
  session.NoteRead("b.txt", read);
  Confirm(session, 9.0);
  EXPECT_TRUE(session.openOK());
  EXPECT_FALSE(session.NeedsSaving());
  EXPECT_EQ(session.FileInUse(), "b.txt");
  session.NoteChange();
  Confirm(session, 9.0);
  EXPECT_FALSE(session.NeedsSaving());
  session.NoteChange();
  Confirm(session, 9.1);
  EXPECT_FALSE(session.saveOK());
  EXPECT_FALSE(session.openOK());
}

// openOK speaks of the case in the form, NeedsSaving of the one in the record.
TEST(CaseSession, AFileThatWasReadCountsForTheRecordOnceItIsConfirmed) {
  CaseSession session;
  session.NoteNew();
  Confirm(session, 10.4);
  CaseData read;
  read.inputs.lizm = {9.0};
  session.NoteRead("b.txt", read);
  EXPECT_TRUE(session.openOK());
  EXPECT_TRUE(session.NeedsSaving());
  session.NoteChange();  // Open was cancelled
  Confirm(session, 10.4);
  EXPECT_TRUE(session.NeedsSaving());
  session.NoteRead("b.txt", read);
  Confirm(session, 9.0);
  EXPECT_FALSE(session.NeedsSaving());
  session.NoteRead("c.txt", CaseData());
  EXPECT_FALSE(session.NeedsSaving()) << "the record is still as b.txt has it";
}

// Changed and changed back: the flags are left as they are.
TEST(CaseSession, ComingBackToWhatWasReadIsNoSaving) {
  CaseSession session;
  CaseData read;
  read.inputs.lizm = {9.0};
  session.NoteRead("b.txt", read);
  Confirm(session, 9.1);
  EXPECT_TRUE(session.NeedsSaving());
  session.NoteChange();
  Confirm(session, 9.0);
  EXPECT_TRUE(session.NeedsSaving());
}

TEST(CaseSession, ChangingTheCaseBesideAFileThatWasReadAndCancelledComparesWithItsOwnFile) {
  CaseSession session;
  session.NoteNew();
  Confirm(session, 10.4);
  session.NoteSaved("a.txt");
  session.NoteRead("b.txt", CaseData());
  session.NoteChange();
  Confirm(session, 10.4);
  EXPECT_FALSE(session.NeedsSaving());
  EXPECT_EQ(session.FileInUse(), "a.txt");
}

}  // namespace
