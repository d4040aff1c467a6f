// The window across two sessions: what it keeps, what it offers and what comes back.
#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>
#include <memory>

#include "tests/support/restarted_program.h"

namespace {

using Answer = MessageDoor::Answer;

class KeptWorkTest : public RestartedProgram {
 protected:
  QStringList Kept() { return QDir(kept_.path()).entryList({"*.json"}, QDir::Files); }

  // A second start, its question answered.
  std::unique_ptr<RunningProgram> StartAgain(Answer answer) {
    auto program = Start();
    program->messages.Answers(answer);
    program->window.OfferKeptWork();
    const QList<Message> said = program->messages.Take();
    EXPECT_EQ(said.size(), 1);
    EXPECT_EQ(said.value(0).kind, "yes/no/cancel");
    EXPECT_EQ(said.value(0).title, "TELMARION Start");
    return program;
  }

  // Nothing is offered.
  void ExpectQuietStart() {
    const auto program = Start();
    program->window.OfferKeptWork();
    EXPECT_TRUE(program->messages.Take().isEmpty());
    EXPECT_FALSE(program->window.Session().HasCase());
  }

  // The system ends the program while a message that is no question is open.
  static void EndWhileAnErrorIsOpen(RunningProgram& program) {
    program.messages.OnMessage([&program](const Message& message) {
      if (message.kind == "error") program.window.EndForSystem();
    });
  }

  void EndBySystem(std::unique_ptr<RunningProgram> program) { program->window.EndForSystem(); }
};

TEST_F(KeptWorkTest, AnUnsavedCaseComesBackComputedAndUnsaved) {
  auto program = Start();
  program->ConfirmDefaultCase();
  const QString pmax = program->Panel("txtPmax");
  EndBySystem(std::move(program));

  program = StartAgain(Answer::Yes);
  EXPECT_TRUE(program->window.Session().HasCase());
  EXPECT_TRUE(program->window.Session().NeedsSaving());
  EXPECT_FALSE(pmax.isEmpty());
  EXPECT_EQ(program->Panel("txtPmax"), pmax);
  EXPECT_TRUE(program->InWindow<QAction>("mnuSave")->isEnabled());
  EXPECT_TRUE(program->InWindow<QLabel>("lblUnsaved")->isVisible());
  EXPECT_FALSE(program->FormIsOpen());
}

// A power cut or a crash gives no warning.
TEST_F(KeptWorkTest, AConfirmedCaseIsKeptAtOnce) {
  auto program = Start();
  EXPECT_TRUE(Kept().isEmpty());
  program->ConfirmDefaultCase();
  EXPECT_EQ(Kept().size(), 1);
}

TEST_F(KeptWorkTest, ComesBackWithoutADifference) {
  auto program = Start();
  program->window.New();
  program->Type("Text10", "");  // the weight is not known
  program->Type("Text1", "103.123456789012345");
  program->ChooseUnit("Combo1", "mm");
  program->PressOk();
  const CaseData before = program->window.Session().Record().data;
  EXPECT_TRUE(before.weightUnknown());
  EXPECT_EQ(before.patient.sex, std::nullopt);
  EndBySystem(std::move(program));

  program = StartAgain(Answer::Yes);
  const CaseData& after = program->window.Session().Record().data;
  EXPECT_TRUE(after == before);
}

TEST_F(KeptWorkTest, AFileInUseIsStillKnown) {
  auto program = Start();
  program->ConfirmDefaultCase();
  program->files.Answers(program->Path("a.txt"));
  program->window.Save();
  EXPECT_TRUE(Kept().isEmpty()) << "saved, so nothing is kept";
  program->window.Change();
  program->Type("Text1", "10.5");
  program->PressOk();
  EndBySystem(std::move(program));

  program = StartAgain(Answer::Yes);
  EXPECT_TRUE(program->window.Session().FileInUse().endsWith("a.txt"));
  EXPECT_EQ(program->InWindow<QLabel>("lblFile")->text(), "a.txt");
}

TEST_F(KeptWorkTest, NoDiscardsTheCase) {
  auto program = Start();
  program->ConfirmDefaultCase();
  EndBySystem(std::move(program));
  program = StartAgain(Answer::No);
  EXPECT_FALSE(program->window.Session().HasCase());
  program.reset();
  EXPECT_TRUE(Kept().isEmpty());
  ExpectQuietStart();
}

TEST_F(KeptWorkTest, CancelKeepsTheCaseForAnotherStart) {
  auto program = Start();
  program->ConfirmDefaultCase();
  EndBySystem(std::move(program));
  program = StartAgain(Answer::Cancel);
  EXPECT_FALSE(program->window.Session().HasCase());
  program->window.Exit();  // a clean end, of another case
  program.reset();
  program = StartAgain(Answer::Yes);
  EXPECT_TRUE(program->window.Session().HasCase());
}

TEST_F(KeptWorkTest, ARecoveredCaseIsKeptUntilItIsSaved) {
  auto program = Start();
  program->ConfirmDefaultCase();
  EndBySystem(std::move(program));
  program = StartAgain(Answer::Yes);
  EndBySystem(std::move(program));
  program = StartAgain(Answer::Yes);
  program->files.Answers(program->Path("a.txt"));
  program->window.Save();
  EXPECT_TRUE(Kept().isEmpty());
  EndBySystem(std::move(program));
  ExpectQuietStart();
}

TEST_F(KeptWorkTest, ACleanEndLeavesNothing) {
  auto program = Start();
  program->ConfirmDefaultCase();
  program->messages.Answers(Answer::No);
  program->window.Exit();
  program->messages.Take();
  EXPECT_TRUE(Kept().isEmpty());
  program.reset();
  ExpectQuietStart();
}

TEST_F(KeptWorkTest, TheCloseBoxLeavesNothing) {
  auto program = Start();
  program->ConfirmDefaultCase();
  program->messages.Answers(Answer::No);
  program->window.close();
  program->messages.Take();
  program.reset();
  ExpectQuietStart();
}

TEST_F(KeptWorkTest, AnEndThatIsTakenBackKeepsTheCase) {
  auto program = Start();
  program->ConfirmDefaultCase();
  program->messages.Answers(Answer::Cancel);
  program->window.Exit();
  program->messages.Take();
  EXPECT_EQ(Kept().size(), 1);
}

// Qt closes what is open when the event loop ends, the save prompt among it.
TEST_F(KeptWorkTest, TheSystemsEndOutdoesTheClosingWindows) {
  auto program = Start();
  program->ConfirmDefaultCase();
  program->window.EndForSystem();
  program->messages.Answers(Answer::No);
  program->window.close();
  program->messages.Take();
  program.reset();
  EXPECT_EQ(Kept().size(), 1);
}

TEST_F(KeptWorkTest, NothingToSaveKeepsNothing) {
  auto program = Start();
  program->window.KeepWork();
  EXPECT_TRUE(Kept().isEmpty());
  EndBySystem(std::move(program));
  ExpectQuietStart();
}

TEST_F(KeptWorkTest, EntriesOfAnOpenFormComeBackAsTyped) {
  auto program = Start();
  program->window.New();
  program->Type("Text7", "Kovac");
  program->Type("Text1", "10,4x");
  program->ChooseUnit("Combo1", "mm");
  program->Choose("Option2");
  const CaseEntries typed = program->Form().Entries();
  EndBySystem(std::move(program));

  program = StartAgain(Answer::Yes);
  ASSERT_TRUE(program->FormIsOpen());
  EXPECT_TRUE(program->Form().Entries() == typed);
  EXPECT_FALSE(program->window.Session().HasCase());
  EndBySystem(std::move(program));  // and once more, before anything else was typed

  program = StartAgain(Answer::Yes);
  ASSERT_TRUE(program->FormIsOpen());
  EXPECT_TRUE(program->Form().Entries() == typed);
  program->PressCancel();
  EXPECT_TRUE(Kept().isEmpty()) << "given up";
}

TEST_F(KeptWorkTest, AFormWithNothingTypedIsNotKept) {
  auto program = Start();
  program->window.New();
  EndBySystem(std::move(program));
  ExpectQuietStart();
}

TEST_F(KeptWorkTest, AnUnsavedCaseAndTheFormOverItBothComeBack) {
  auto program = Start();
  program->ConfirmDefaultCase();
  program->window.Change();
  program->Type("Text1", "11");
  EndBySystem(std::move(program));

  program = StartAgain(Answer::Yes);
  EXPECT_EQ(program->window.Session().Record().data.inputs.lizm, 10.4);
  EXPECT_TRUE(program->window.Session().NeedsSaving());
  ASSERT_TRUE(program->FormIsOpen());
  EXPECT_EQ(program->Entry("Text1"), "11");
  program->PressOk();
  EXPECT_EQ(program->window.Session().Record().data.inputs.lizm, 11.0);
}

TEST_F(KeptWorkTest, ARefusedCaseIsRefusedAgain) {
  auto program = Start();
  program->window.New();
  program->Type("Text9", "-20");
  program->PressOk();
  EXPECT_EQ(program->messages.Take().size(), 1);
  EndBySystem(std::move(program));

  program = Start();
  program->messages.Answers(Answer::Yes);
  program->window.OfferKeptWork();
  EXPECT_EQ(program->messages.Take().value(1),
            ErrorSaid("In this range of input data you could not use this model", "Sorry"));
  EXPECT_TRUE(program->window.Session().NeedsSaving());
}

TEST_F(KeptWorkTest, AnEndWhileARefusalIsReadKeepsTheCase) {
  auto program = Start();
  program->window.New();
  program->Type("Text9", "-20");
  EndWhileAnErrorIsOpen(*program);
  program->PressOk();
  EXPECT_EQ(program->messages.Take().size(), 1);
  program.reset();
  EXPECT_EQ(Kept().size(), 1);
}

TEST_F(KeptWorkTest, AnEndWhileTheSecondRefusalIsReadKeepsCaseAndForm) {
  auto program = Start();
  program->window.New();
  program->Type("Text9", "-20");
  program->PressOk();
  program->messages.Take();
  program->window.Change();
  program->Type("Text1", "11");
  EndBySystem(std::move(program));

  for (const bool ends : {true, false}) {
    const auto again = Start();
    if (ends) EndWhileAnErrorIsOpen(*again);
    again->messages.Answers(Answer::Yes);
    again->window.OfferKeptWork();
    EXPECT_EQ(again->messages.Take().size(), 2);
    EXPECT_TRUE(again->window.Session().NeedsSaving());
    ASSERT_TRUE(again->FormIsOpen());
    EXPECT_EQ(again->Entry("Text1"), "11");
  }
}

// Once, in the status line: the work itself goes on.
TEST_F(KeptWorkTest, WorkThatCannotBeKeptIsToldInTheStatusLine) {
  auto program = Start();
  const auto* notice = program->InWindow<QLabel>("lblNotice");
  EXPECT_EQ(notice->text(), "");
  const QString place = kept_.filePath("unsaved-case-1.json");
  ASSERT_TRUE(QDir().mkpath(place + "/inside"));
  program->ConfirmDefaultCase();
  EXPECT_EQ(notice->text(), "Unsaved work cannot be kept for the next start.");
  program->window.KeepWork();
  EXPECT_EQ(notice->text(), "Unsaved work cannot be kept for the next start.");
  ASSERT_TRUE(QDir(place).removeRecursively());
  program->window.KeepWork();
  EXPECT_EQ(notice->text(), "") << "it is kept now";
  EXPECT_EQ(Kept().size(), 1);
}

TEST_F(KeptWorkTest, AFolderThatCannotBeWrittenIsToldInTheStatusLine) {
  QFile file(kept_.filePath("taken"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  RunningProgram program(QLocale::c(), QStringList(), file.fileName());
  const auto* notice = program.InWindow<QLabel>("lblNotice");
  EXPECT_EQ(notice->text(), "") << "there is nothing to keep yet";
  program.ConfirmDefaultCase();
  EXPECT_EQ(notice->text(), "Unsaved work cannot be kept for the next start.");
  program.files.Answers(program.Path("case.txt"));
  program.window.Save();
  EXPECT_EQ(notice->text(), "");
}

TEST_F(KeptWorkTest, AnUnsavedCaseIsKeptWhileAFileIsInTheForm) {
  auto program = Start();
  program->ConfirmDefaultCase();
  program->files.Answers(program->Path("case.txt"));
  program->window.Save();
  program->window.Change();
  program->Type("Text1", "11");
  program->PressOk();
  program->messages.Answers(Answer::No);
  program->files.Answers(program->Path("case.txt"));
  program->window.Open();
  program->messages.Take();
  EndBySystem(std::move(program));
  program = StartAgain(Answer::Yes);
  EXPECT_EQ(program->window.Session().Record().data.inputs.lizm, 11.0);
}

TEST_F(KeptWorkTest, DamagedWorkIsToldAndTheProgramGoesOn) {
  auto program = Start();
  program->ConfirmDefaultCase();
  EndBySystem(std::move(program));
  ASSERT_TRUE(QFile::resize(kept_.filePath(Kept().first()), 10));
  program = Start();
  program->messages.Answers(Answer::Yes);
  program->window.OfferKeptWork();
  const QList<Message> said = program->messages.Take();
  ASSERT_EQ(said.size(), 2);
  EXPECT_EQ(said[1].kind, "error");
  EXPECT_TRUE(said[1].text.contains("cannot be read")) << said[1].text.toStdString();
  program->ConfirmDefaultCase();
  EXPECT_EQ(Kept().size(), 1);
}

}  // namespace
