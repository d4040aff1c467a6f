// A weight that was left out: who may take the number that stands in for it for the patient's.
#include <gtest/gtest.h>

#include "tests/support/restarted_program.h"
#include "tests/support/row_name.h"

namespace {

using Answer = MessageDoor::Answer;

const QString kNotice =
    "This weight counts as not known because OK was pressed without one. "
    "New or Change starts over.";

class AssumedWeight : public RestartedProgram {
 protected:
  // OK fails for another box, after it has found the weight box empty.
  static void PressOkInVain(RunningProgram& program) {
    program.Type("Text10", "");
    program.Type("Text1", "abc");
    program.messages.Take();
    program.PressOk();
    EXPECT_EQ(program.messages.Take(), QList<Message>{ErrorSaid("numeric value expected")});
    EXPECT_EQ(program.Entry("Text10"), "60");
  }

  static QString Status(RunningProgram& program) {
    return program.InWindow<QLabel>("lblNotice")->text();
  }

  static void ExpectUnknown(RunningProgram& program) {
    EXPECT_EQ(program.Panel("txtBodyWeight"), "Unknown");
    EXPECT_FALSE(program.InWindow<QLineEdit>("txtPmax")->isVisible());
    EXPECT_TRUE(program.window.Session().Record().data.weightUnknown());
    program.files.Answers(program.Path("case.txt"));
    program.window.Save();
    const QByteArray bytes = program.Bytes(program.Path("case.txt"));
    EXPECT_TRUE(bytes.contains("Body weight   : Unknown kg\n"));
    EXPECT_FALSE(bytes.contains("Pmax ="));
  }
};

TEST_F(AssumedWeight, StaysUnknownWhileAFormIsOpenAndCancelled) {
  for (const char* command : {"mnuNew", "mnuChange", "mnuOpen"}) {
    RunningProgram program;
    program.ConfirmDefaultCase("80");
    program.files.Answers(program.Path("known.txt"));
    program.window.Save();
    program.window.New();
    program.PressOk();
    if (command != QString("mnuChange")) program.messages.Answers(Answer::No);
    if (command == QString("mnuOpen")) program.files.Answers(program.Path("known.txt"));
    program.Command(command);
    program.messages.Take();
    EXPECT_TRUE(program.window.Session().Record().data.weightUnknown()) << command;
    program.PressCancel();
    ExpectUnknown(program);
  }
}

TEST_F(AssumedWeight, OfTheCaseBeforeIsNotThatOfAFile) {
  RunningProgram program;
  program.ConfirmDefaultCase("80");
  program.files.Answers(program.Path("case.txt"));
  program.window.Save();
  program.window.New();
  program.PressOk();
  program.messages.Answers(Answer::No);
  program.files.Answers(program.Path("case.txt"));
  program.window.Open();
  program.messages.Take();
  EXPECT_EQ(program.InWindow<QLabel>("lblNotice")->text(), "");
  program.PressOk();
  EXPECT_EQ(program.Panel("txtBodyWeight"), "80");
  EXPECT_TRUE(program.InWindow<QLineEdit>("txtPmax")->isVisible());
  EXPECT_FALSE(program.window.Session().Record().data.weightUnknown());
  program.files.Answers(program.Path("again.txt"));
  program.window.Save();
  EXPECT_TRUE(program.Bytes(program.Path("again.txt")).contains("Body weight   : 80 kg\n"));
}

TEST_F(AssumedWeight, StaysUnknownWhenTheSystemEndsTheProgramOverAnOpenForm) {
  auto program = Start();
  program->ConfirmDefaultCase({});
  program->window.Change();
  program = EndAndGoOn(std::move(program));
  ExpectUnknown(*program);
}

TEST_F(AssumedWeight, OfAFailedConfirmationNeverReachesTheCaseOnScreen) {
  auto program = Start();
  program->ConfirmDefaultCase();
  program->window.Change();
  PressOkInVain(*program);
  EXPECT_FALSE(program->window.Session().Record().data.weightUnknown());
  EXPECT_EQ(program->Panel("txtPmax"), "2066847.58");
  program = EndAndGoOn(std::move(program));
  EXPECT_EQ(program->Panel("txtPmax"), "2066847.58");
  EXPECT_EQ(program->Panel("txtBodyWeight"), "70");
  ASSERT_TRUE(program->FormIsOpen());
  program->PressCancel();
  EXPECT_FALSE(program->window.Session().Record().data.weightUnknown());
}

TEST_F(AssumedWeight, IsAnEmptyBoxAgainAfterCancel) {
  auto program = Start();
  program->window.New();
  PressOkInVain(*program);
  program->PressCancel();
  program->window.Change();  // without a case it shows the form as it is
  EXPECT_EQ(program->Entry("Text10"), "");
  program->Type("Text1", "10.4");
  program->PressOk();
  ExpectUnknown(*program);
}

TEST_F(AssumedWeight, IsAnEmptyBoxInKeptWork) {
  auto program = Start();
  program->window.New();
  PressOkInVain(*program);
  program = EndAndGoOn(std::move(program));
  ASSERT_TRUE(program->FormIsOpen());
  EXPECT_EQ(program->Entry("Text1"), "abc");
  EXPECT_EQ(program->Entry("Text10"), "");
  program->Type("Text1", "10.4");
  program->PressOk();
  ExpectUnknown(*program);
}

TEST_F(AssumedWeight, WithNothingElseTypedIsNoWorkToKeep) {
  auto program = Start();
  program->window.New();
  PressOkInVain(*program);
  program->Type("Text1", "10.40");
  program->window.EndForSystem();
  program = Start();
  program->window.OfferKeptWork();  // asks nothing
  EXPECT_FALSE(program->FormIsOpen());
}

TEST_F(AssumedWeight, ThatASecondConfirmationFindsIsNotTheUsers) {
  RunningProgram program;
  program.window.New();
  PressOkInVain(program);
  program.Type("Text1", "10.4");
  program.PressOk();
  ExpectUnknown(program);
  program.window.Change();
  EXPECT_EQ(program.Entry("Text10"), "");
}

TEST_F(AssumedWeight, ANumberThatWasTypedStaysAfterCancel) {
  for (const char* typed : {"60", "70"}) {
    RunningProgram program;
    program.window.New();
    PressOkInVain(program);
    program.Type("Text10", typed);
    program.PressCancel();
    program.messages.Take();
    program.window.Change();
    EXPECT_EQ(program.Entry("Text10"), typed);
    program.Type("Text1", "10.4");
    program.PressOk();
    EXPECT_EQ(program.Panel("txtBodyWeight"), typed) << "the form began afresh";
  }
}

TEST_F(AssumedWeight, AWeightTypedAfterAFailedConfirmationCountsAsUnknownAndItIsSaid) {
  RunningProgram program;
  program.window.New();
  EXPECT_EQ(Status(program), "");
  PressOkInVain(program);
  program.Type("Text10", "70");
  EXPECT_EQ(Status(program), kNotice);
  auto* inForm = program.InForm<QLabel>("lblWeightNotice");
  EXPECT_TRUE(inForm->isVisible());
  EXPECT_EQ(inForm->text(), kNotice);
  program.Type("Text1", "10.4");
  program.PressOk();
  EXPECT_EQ(Status(program), "");
  ExpectUnknown(program);
  program.window.Change();
  EXPECT_EQ(Status(program), "");
  EXPECT_FALSE(inForm->isVisible());
  program.Type("Text10", "70");
  program.PressOk();
  EXPECT_EQ(program.Panel("txtPmax"), "2066847.58");
}

TEST_F(AssumedWeight, NothingIsSaidOnceTheFormIsCancelled) {
  RunningProgram program;
  program.window.New();
  PressOkInVain(program);
  EXPECT_EQ(Status(program), kNotice);
  program.PressCancel();
  EXPECT_EQ(Status(program), "");
  program.window.New();
  EXPECT_EQ(Status(program), "");
  EXPECT_FALSE(program.InForm<QLabel>("lblWeightNotice")->isVisible());
}

// An end by the system changes nothing about what the next OK does.
TEST_F(AssumedWeight, AWeightTypedAfterAFailedConfirmationCountsAsUnknownAfterARestart) {
  auto program = Start();
  program->window.New();
  PressOkInVain(*program);
  program->Type("Text10", "70");
  program = EndAndGoOn(std::move(program));
  ASSERT_TRUE(program->FormIsOpen());
  EXPECT_EQ(program->Entry("Text10"), "70");
  EXPECT_EQ(Status(*program), kNotice);
  program = EndAndGoOn(std::move(program));  // and once more
  EXPECT_EQ(Status(*program), kNotice);
  program->Type("Text1", "10.4");
  program->PressOk();
  ExpectUnknown(*program);
}

}  // namespace
