// A case that the model refuses has no stresses: how the window, its questions and the next start
// tell.
#include <gtest/gtest.h>

#include "tests/support/pdf_pages.h"
#include "tests/support/restarted_program.h"
#include "tests/support/row_name.h"

namespace {

using Answer = MessageDoor::Answer;

const QString kNoResults =
    "No results for this case: in this range of input data you could not use this model";
const Message kOfCaseBefore = {"warning yes/no", "Sorry",
                               "The stresses are those of the case before. Go on all the same?"};
const Message kNoStresses = {"warning yes/no", "Sorry",
                             "There are no stresses for this case. Go on all the same?"};
const QStringList kBoxes = {"txtRWb", "txtThetaR", "txtThetaPol", "txtPmaxWb", "txtPmax"};

class RefusedCases : public RestartedProgram {
 protected:
  // Measurements that the model has no answer for, in the form that is open.
  static void Refuse(RunningProgram& program, const char* box = "Text9",
                     const QString& text = "-20") {
    program.Type("Text1", "11");
    program.Type(box, text);
    program.PressOk();
    EXPECT_EQ(program.messages.Take().size(), 1);
    EXPECT_FALSE(program.FormIsOpen());
  }
  static void RefuseFirst(RunningProgram& program) {
    program.window.New();
    program.Type("Text10", "70");
    Refuse(program);
  }
  static void RefuseAfterAComputed(RunningProgram& program) {
    program.ConfirmDefaultCase();
    program.window.Change();
    Refuse(program);
  }

  static void ExpectGrey(RunningProgram& program, bool grey) {
    EXPECT_TRUE(program.InWindow<QWidget>("frameResults")->isEnabled());
    EXPECT_TRUE(program.InWindow<QWidget>("lblPmax")->isEnabled());
    for (const QString& box : kBoxes) {
      EXPECT_EQ(program.InWindow<QLineEdit>(box.toUtf8())->isEnabled(), !grey) << box.toStdString();
    }
    EXPECT_EQ(program.InWindow<QLabel>("Picture2")->text() == kNoResults, grey);
  }

  // Saves in spite of the question.
  static QByteArray SavedAllTheSame(RunningProgram& program, const Message& question) {
    program.messages.Answers(Answer::Yes);
    program.files.Answers(program.Path("refused.txt"));
    program.window.Save();
    EXPECT_EQ(program.messages.Take(), QList<Message>{question});
    return program.Bytes(program.Path("refused.txt"));
  }
};

TEST_F(RefusedCases, GreyTheResultsOfTheCaseBeforeUntilTheNextComputedOne) {
  RunningProgram program;
  RefuseAfterAComputed(program);
  ExpectGrey(program, true);
  EXPECT_EQ(program.Panel("txtPmax"), "2066847.58");
  program.window.Change();
  ExpectGrey(program, true);
  program.PressCancel();
  ExpectGrey(program, true);
  program.window.Change();
  Refuse(program, "Text9", "-30");
  ExpectGrey(program, true);
  program.window.Change();
  program.Type("Text9", "30");
  program.PressOk();
  ExpectGrey(program, false);
}

TEST_F(RefusedCases, GreyTheEmptyBoxesOfAFirstCase) {
  RunningProgram program;
  RefuseFirst(program);
  ExpectGrey(program, true);
  EXPECT_EQ(program.Panel("txtPmaxWb"), "");
  EXPECT_TRUE(program.InWindow<QWidget>("framePatient")->isEnabled());
  EXPECT_TRUE(program.InWindow<QLineEdit>("txtBodyWeight")->isEnabled());
}

// A number that is no longer the case's must not look live behind the message either.
TEST_F(RefusedCases, AreGreyBeforeTheMessageIsRead) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  program.messages.OnMessage([&](const Message&) { ExpectGrey(program, true); });
  program.window.Change();
  Refuse(program);
}

TEST_F(RefusedCases, ARadiusOfZeroHasTheSameConsequences) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  program.window.Change();
  Refuse(program, "Text13", "0");
  ExpectGrey(program, true);
  SavedAllTheSame(program, kOfCaseBefore);
}

TEST_F(RefusedCases, AreSavedWithTheStressesOfTheCaseBeforeOnlyOnTheUsersWord) {
  RunningProgram program;
  RefuseAfterAComputed(program);
  program.messages.Answers(Answer::No);
  program.Command("mnuSave");
  EXPECT_EQ(program.messages.Take(), QList<Message>{kOfCaseBefore});
  EXPECT_EQ(program.files.Take(), QList<FileQuestion>());
  EXPECT_TRUE(program.window.Session().NeedsSaving());

  const QByteArray bytes = SavedAllTheSame(program, kOfCaseBefore);
  EXPECT_FALSE(program.window.Session().NeedsSaving());
  EXPECT_TRUE(bytes.contains("lizm          = 11 cm \n") || bytes.contains("= 11 cm\n"));
  EXPECT_FALSE(bytes.contains("R/Wb          = 2.812\n")) << "the force is the case's own";
  EXPECT_TRUE(
      bytes.endsWith("Pmax/Wb       = 3006.761 m^-2\n\r\nPmax = 2066847.58429341 Pa\n\r\n"));
}

TEST_F(RefusedCases, AFirstCaseIsSavedWithoutStressesOnlyOnTheUsersWord) {
  RunningProgram program;
  RefuseFirst(program);
  const QByteArray bytes = SavedAllTheSame(program, kNoStresses);
  EXPECT_TRUE(bytes.endsWith("Pmax/Wb       = 0 m^-2\n\r\nPmax = 0 Pa\n\r\n"));
}

TEST_F(RefusedCases, AreAskedAboutBeforeThePrintQuestion) {
  RunningProgram program;
  RefuseAfterAComputed(program);
  program.messages.Answers(Answer::No);
  program.Command("mnuPrint");
  EXPECT_EQ(program.messages.Take(), QList<Message>{kOfCaseBefore});
  program.messages.Answers(Answer::Yes);
  program.messages.Answers(Answer::Yes);
  program.printers.Answers(program.Path("report.pdf"));
  program.Command("mnuPrint");
  const Message print = {"yes/no", "TELMARION print", "Print results?"};
  EXPECT_EQ(program.messages.Take(), (QList<Message>{kOfCaseBefore, print}));
  const PdfPages pdf(program.Path("report.pdf"));
  EXPECT_TRUE(pdf.TextsOf(1).contains("Pmax = 2066847.58 Pa"));
}

TEST_F(RefusedCases, AreNotAskedAboutOnceTheNextCaseIsComputed) {
  RunningProgram program;
  RefuseAfterAComputed(program);
  program.window.Change();
  program.Type("Text9", "30");
  program.PressOk();
  program.files.Answers(program.Path("computed.txt"));
  program.window.Save();
  EXPECT_EQ(program.messages.Take(), QList<Message>());
}

struct Leaving {
  const char* name;
  const char* command;
  const char* title;
};

class LeavingARefusedCase : public RefusedCases, public testing::WithParamInterface<Leaving> {
 protected:
  // Leaves and wants to save first; what is said then.
  QList<Message> Leave() {
    const QString command = GetParam().command;
    program_.messages.Answers(Answer::Yes);
    if (command == "close") program_.window.close();
    if (command != "close") program_.Command(command.toUtf8());
    return program_.messages.Take().mid(1);
  }

  RunningProgram program_;
};

TEST_P(LeavingARefusedCase, NoSavesNothingAndKeepsEverythingAsItIs) {
  RefuseAfterAComputed(program_);
  const QString command = GetParam().command;
  program_.messages.OnMessage([this](const Message& message) {
    if (message.kind != kOfCaseBefore.kind) program_.messages.Answers(Answer::No);
  });
  EXPECT_EQ(Leave(), QList<Message>{kOfCaseBefore});
  EXPECT_EQ(program_.files.Take(), QList<FileQuestion>());
  EXPECT_TRUE(program_.window.isVisible());
  EXPECT_FALSE(program_.FormIsOpen());
  EXPECT_TRUE(program_.window.Session().NeedsSaving());
}

TEST_P(LeavingARefusedCase, YesGoesOnToTheFileDialog) {
  RefuseAfterAComputed(program_);
  program_.messages.OnMessage([this](const Message& message) {
    if (message.kind != kOfCaseBefore.kind) program_.messages.Answers(Answer::Yes);
  });
  program_.files.Answers(program_.Path("left.txt"));
  EXPECT_EQ(Leave(), QList<Message>{kOfCaseBefore});
  EXPECT_TRUE(QFile::exists(program_.Path("left.txt")));
  const QString command = GetParam().command;
  EXPECT_EQ(program_.window.isVisible(), command != "mnuExit" && command != "close");
}

INSTANTIATE_TEST_SUITE_P(Commands, LeavingARefusedCase,
                         testing::Values(Leaving{"New", "mnuNew", "TELMARION New"},
                                         Leaving{"Open", "mnuOpen", "Open"},
                                         Leaving{"Exit", "mnuExit", "TELMARION End"},
                                         Leaving{"CloseBox", "close", "TELMARION End"}),
                         RowName());

TEST_F(RefusedCases, AreTheSameAfterARestart) {
  auto program = Start();
  RefuseAfterAComputed(*program);
  program->window.View3D();
  const HeadCase head = program->window.HeadView()->View().headCase;
  const QByteArray before = SavedAllTheSame(*program, kOfCaseBefore);
  program->window.Change();
  program->Type("Text8", "Berg");  // unsaved again
  program->PressOk();
  program->messages.Take();

  for (int end = 0; end < 2; ++end) {
    program = EndAndGoOn(std::move(program));
    ExpectGrey(*program, true);
    EXPECT_EQ(program->Panel("txtRWb"), "2.81");
    EXPECT_EQ(program->Panel("txtPmax"), "2066847.58");
    EXPECT_EQ(program->Panel("txtName"), "Berg ");
    program->window.View3D();
    const HeadCase& now = program->window.HeadView()->View().headCase;
    EXPECT_EQ(now.edgeAngle, head.edgeAngle);
    EXPECT_EQ(now.poleAngle, head.poleAngle);
    EXPECT_EQ(now.scalePeak, head.scalePeak);
  }
  QByteArray expected = before;
  expected.replace("Name          : Unknown", "Name          : Berg ");
  expected.replace("Sex           : Unknown", "Sex           : F");
  expected.replace("Hip           : Unknown", "Hip           : D");
  EXPECT_EQ(SavedAllTheSame(*program, kOfCaseBefore), expected);
}

// The earlier patient's name has no business in the work that is kept of this one.
TEST_F(RefusedCases, KeepNothingOfThePatientBefore) {
  auto program = Start();
  program->window.New();
  program->Type("Text8", "Earlier");
  program->PressOk();
  program->messages.Answers(Answer::No);
  program->window.New();
  program->messages.Take();
  Refuse(*program);
  QFile kept(QDir(kept_.path()).filePath("unsaved-case-1.json"));
  ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
  const QByteArray text = kept.readAll();
  EXPECT_TRUE(text.contains("computedBefore"));
  EXPECT_FALSE(text.contains("Earlier"));
}

TEST_F(RefusedCases, AFirstCaseHasNoStressesAfterARestartEither) {
  auto program = Start();
  RefuseFirst(*program);
  program = EndAndGoOn(std::move(program));
  ExpectGrey(*program, true);
  EXPECT_EQ(program->Panel("txtPmaxWb"), "");
  SavedAllTheSame(*program, kNoStresses);
}

}  // namespace
