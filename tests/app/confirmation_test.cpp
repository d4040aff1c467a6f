// From OK on the form to the results in the window.
#include <gtest/gtest.h>

#include "case/case_texts.h"
#include "diagram/diagram_view.h"
#include "tests/support/row_name.h"
#include "tests/support/running_program.h"

namespace {

QList<Message> Said(const QList<Message>& messages) {
  return messages;
}

TEST(Confirmation, ShowsTheKnownResultsOfTheDefaultHip) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  EXPECT_EQ(program.Panel("txtRWb"), "2.81");
  EXPECT_EQ(program.Panel("txtThetaR"), "8.47");
  EXPECT_EQ(program.Panel("txtThetaPol"), "16.41");
  EXPECT_EQ(program.Panel("txtPmaxWb"), "3006.76");
  EXPECT_EQ(program.Panel("txtPmax"), "2066847.58");
  EXPECT_TRUE(program.InWindow<QLineEdit>("txtPmax")->isVisible());
}

TEST(Confirmation, ShowsACommaUnderALocaleThatWritesOne) {
  RunningProgram program(QLocale("de_DE"));
  program.ConfirmDefaultCase();
  EXPECT_EQ(program.Panel("txtThetaR"), "8,47");
  EXPECT_EQ(program.Panel("txtPmax"), "2066847,58");
  EXPECT_EQ(
      program.InWindow<QLabel>("Picture2")->text(),
      QString::fromUtf8("Theta-CE = 30 °\nRadius of femoral head = 2,5 cm\nTheta-R = 8,47 °"));
}

TEST(Confirmation, ShowsTheCaptionsOfTheDiagram) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  EXPECT_EQ(
      program.InWindow<QLabel>("Picture2")->text(),
      QString::fromUtf8("Theta-CE = 30 °\nRadius of femoral head = 2.5 cm\nTheta-R = 8.47 °"));
}

TEST(Confirmation, OpensThePanelsOnlyOnceACaseIsComputed) {
  RunningProgram program;
  auto* patient = program.InWindow<QWidget>("framePatient");
  auto* results = program.InWindow<QWidget>("frameResults");
  EXPECT_FALSE(patient->isEnabled());
  EXPECT_FALSE(results->isEnabled());
  program.window.New();
  program.Type("Text1", "abc");
  program.PressOk();
  EXPECT_EQ(program.messages.Take(), Said({ErrorSaid("numeric value expected")}));
  EXPECT_TRUE(program.FormIsOpen());
  EXPECT_FALSE(patient->isEnabled());
  program.Type("Text1", "10.40");
  program.PressOk();
  EXPECT_TRUE(patient->isEnabled());
  EXPECT_TRUE(results->isEnabled());
}

TEST(Confirmation, AnUnknownWeightTakesSixtyKilogramsAndHidesThePeakStress) {
  RunningProgram program;
  program.ConfirmDefaultCase({});
  EXPECT_EQ(program.Entry("Text10"), "60");
  EXPECT_TRUE(program.window.Session().Record().data.weightUnknown());
  EXPECT_EQ(program.Panel("txtBodyWeight"), "Unknown");
  EXPECT_FALSE(program.InWindow<QLineEdit>("txtBodyWeight")->isEnabled());
  for (const char* name : {"txtPmax", "lblPmax", "lblPmaxUnit"}) {
    EXPECT_FALSE(program.InWindow<QWidget>(name)->isVisible()) << name;
  }
  EXPECT_EQ(program.Panel("txtPmaxWb"), "3006.76");
}

TEST(Confirmation, ALaterConfirmationWithAWeightLeavesItUnknown) {
  RunningProgram program;
  program.window.New();
  program.Type("Text1", "abc");
  program.PressOk();
  program.Type("Text1", "10.4");
  program.Type("Text10", "70");
  program.messages.Take();
  program.PressOk();
  EXPECT_EQ(program.Panel("txtBodyWeight"), "Unknown");
  program.window.Change();
  program.Type("Text10", "70");
  program.PressOk();
  EXPECT_EQ(program.Panel("txtBodyWeight"), "70");
  EXPECT_EQ(program.Panel("txtPmax"), "2066847.58");
}

TEST(Confirmation, ANewCaseAfterOneOfUnknownWeightHasItsOwnWeight) {
  RunningProgram program;
  program.ConfirmDefaultCase({});
  EXPECT_FALSE(program.InWindow<QLineEdit>("txtPmax")->isVisible());
  program.messages.Answers(MessageDoor::Answer::No);
  program.ConfirmDefaultCase("70");
  program.messages.Take();
  EXPECT_EQ(program.Panel("txtBodyWeight"), "70");
  EXPECT_TRUE(program.InWindow<QLineEdit>("txtPmax")->isVisible());
  EXPECT_EQ(program.Panel("txtPmax"), "2066847.58");
}

TEST(Confirmation, MillimetresAndCentimetresGiveTheSameResults) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  const Sila::HipResults expected = program.window.Session().Record().results();
  program.window.Change();
  for (const auto& [box, list, text, unit] :
       {std::tuple("Text1", "Combo1", "104", "mm"), std::tuple("Text2", "Combo2", "5", "mm"),
        std::tuple("Text3", "Combo3", "60", "mm"), std::tuple("Text4", "Combo4", "44", "mm"),
        std::tuple("Text5", "Combo5", "160", "mm"), std::tuple("Text13", "Combo8", "25", "mm"),
        std::tuple("Text9", "Combo7", "0,523598775598297", "rad")}) {
    program.Type(box, text);
    program.ChooseUnit(list, unit);
  }
  program.PressOk();
  const Sila::HipResults& results = program.window.Session().Record().results();
  EXPECT_EQ(results.rWb, expected.rWb);
  EXPECT_EQ(results.thetaR, expected.thetaR);
  EXPECT_NEAR(results.pmax, expected.pmax, 1e-6);
  EXPECT_EQ(program.Panel("txtPmax"), "2066847.58");
}

TEST(Confirmation, ReportsEveryBadEntryOnceInTheOrderOfTheChecks) {
  RunningProgram program;
  program.window.New();
  program.Type("Text5", "1.2.3");
  program.ChooseUnit("Combo6", "rad");
  program.Type("Text6", "7");
  program.Type("Text13", "nan");
  program.Type("Text10", "70 kg");
  program.Type("Text11", "31.2.1956");
  program.messages.Take();  // of leaving the boxes
  program.PressOk();
  EXPECT_EQ(program.messages.Take(),
            Said({ErrorSaid("numeric value expected"), ErrorSaid("wrong angle"),
                  ErrorSaid("numeric value expected"), ErrorSaid("numeric value expected"),
                  ErrorSaid("wrong date")}));
  EXPECT_TRUE(program.FormIsOpen());
  EXPECT_EQ(program.Entry("Text5"), "1.2.3");
}

TEST(Confirmation, AFailedCheckLeavesEveryEarlierResult) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  const CaseData before = program.window.Session().Record().data;
  const Sila::HipResults results = program.window.Session().Record().results();
  program.window.Change();
  program.Type("Text1", "12");
  program.Type("Text9", "x");
  program.PressOk();
  EXPECT_EQ(program.messages.Take(), Said({ErrorSaid("numeric value expected")}));
  EXPECT_TRUE(program.window.Session().Record().data == before);
  EXPECT_EQ(program.window.Session().Record().results().pmax, results.pmax);
  EXPECT_EQ(program.Panel("txtPmax"), "2066847.58");
  program.PressCancel();
  EXPECT_TRUE(program.window.Session().Record().data == before);
}

TEST(Confirmation, ARefusedCaseKeepsTheShownStresses) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  const Sila::HipResults before = program.window.Session().Record().results();
  program.window.Change();
  program.Type("Text8", "Refused");
  program.Type("Text1", "11");
  program.Type("Text9", "-20");
  program.PressOk();
  EXPECT_EQ(program.messages.Take(),
            Said({ErrorSaid("In this range of input data you could not use this model", "Sorry")}));
  EXPECT_FALSE(program.FormIsOpen());
  EXPECT_EQ(program.Panel("txtName"), "Refused ");
  EXPECT_EQ(program.Panel("txtPmax"), "2066847.58");
  EXPECT_EQ(program.Panel("txtRWb"), "2.81");
  const Sila::HipResults& after = program.window.Session().Record().results();
  EXPECT_NE(after.rWb, before.rWb);
  EXPECT_NE(after.thetaR, before.thetaR);
  EXPECT_EQ(after.pmax, before.pmax);
  EXPECT_TRUE(program.window.Session().NeedsSaving());
}

TEST(Confirmation, ANegativeStressIsRefused) {
  RunningProgram program;
  program.window.New();
  program.Type("Text9", "-200");
  program.PressOk();
  EXPECT_EQ(program.messages.Take(),
            Said({ErrorSaid("In this range of input data you could not use this model", "Sorry")}));
  EXPECT_EQ(program.Panel("txtPmaxWb"), "");
}

TEST(Confirmation, ARadiusOfZeroIsADivisionByZero) {
  RunningProgram program;
  program.window.New();
  program.Type("Text13", "0");
  program.PressOk();
  EXPECT_EQ(program.messages.Take(), Said({ErrorSaid("Division by zero")}));
  EXPECT_FALSE(program.FormIsOpen());
}

TEST(Confirmation, PressingOkTwiceComputesOnce) {
  RunningProgram program;
  program.window.New();
  program.Type("Text9", "-20");
  program.PressOk();
  program.PressOk();
  EXPECT_EQ(program.messages.Take().size(), 1);
}

TEST(Confirmation, AbsurdNumbersEndInTheModelsRefusal) {
  RunningProgram program;
  for (const char* weight : {"1e300", "0"}) {
    program.window.Change();
    program.Type("Text10", weight);
    program.PressOk();
    EXPECT_EQ(
        program.messages.Take(),
        Said({ErrorSaid("In this range of input data you could not use this model", "Sorry")}))
        << weight;
  }
}

struct Patient {
  const char* name;
  QString surname, firstName, birth, comments;
  const char* sexOption;
  const char* hipOption;
  PatientTexts shown;
  QStringList disabled;  // boxes that hold a placeholder
};

class PatientPanelTable : public testing::TestWithParam<Patient> {};

TEST_P(PatientPanelTable, ShowsTheEntriesOrPlaceholders) {
  RunningProgram program;
  const Patient& row = GetParam();
  program.window.New();
  program.Type("Text8", row.surname);
  program.Type("Text7", row.firstName);
  program.Type("Text11", row.birth);
  program.Type("Text10", "70");
  program.InForm<QPlainTextEdit>("Text12")->setPlainText(row.comments);
  if (row.sexOption != nullptr) program.Choose(row.sexOption);
  if (row.hipOption != nullptr) program.Choose(row.hipOption);
  program.PressOk();
  EXPECT_EQ(program.Panel("txtName"), row.shown.name);
  EXPECT_EQ(program.Panel("txtSex"), row.shown.sex);
  EXPECT_EQ(program.Panel("txtDateOfBirth"), row.shown.dateOfBirth);
  EXPECT_EQ(program.Panel("txtHip"), row.shown.hip);
  EXPECT_EQ(program.InWindow<QPlainTextEdit>("txtComments")->toPlainText(), row.shown.comments);
  for (const char* box : {"txtName", "txtSex", "txtDateOfBirth", "txtHip", "txtComments"}) {
    EXPECT_EQ(program.InWindow<QWidget>(box)->isEnabled(), !row.disabled.contains(box)) << box;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Table, PatientPanelTable,
    testing::Values(Patient{"Full",
                            "Surname",
                            "Given",
                            "15.11.1956",
                            "first\nsecond",
                            "Option2",
                            "Option3",
                            {"Surname Given", "F", "15.11.1956", "70", "L", "first\nsecond"},
                            {}},
                    Patient{"Nothing",
                            "",
                            "",
                            "",
                            "",
                            nullptr,
                            nullptr,
                            {"Unknown", "Unknown", "Unknown", "70", "Unknown", "No"},
                            {"txtName", "txtDateOfBirth", "txtComments"}},
                    Patient{"MaleRight",
                            " Berg ",
                            "",
                            "1956",
                            "x",
                            "Option1",
                            "Option4",
                            {"Berg ", "M", "1956", "70", "D", "x"},
                            {}},
                    Patient{"FirstNameAlone",
                            "",
                            "Jan",
                            "",
                            "No change",
                            nullptr,
                            nullptr,
                            {" Jan", "Unknown", "Unknown", "70", "Unknown", "No change"},
                            {"txtDateOfBirth"}},
                    Patient{"PlaceholdersTyped",
                            "Unknown",
                            "",
                            "Unknown",
                            "No",
                            nullptr,
                            nullptr,
                            {"Unknown ", "Unknown", "Unknown", "70", "Unknown", "No"},
                            {}}),
    RowName());

TEST(Confirmation, LoadingTheFormEnablesThePatientsBoxesAgain) {
  RunningProgram program;
  program.ConfirmDefaultCase({});
  EXPECT_FALSE(program.InWindow<QLineEdit>("txtName")->isEnabled());
  program.messages.Answers(MessageDoor::Answer::No);
  program.window.New();
  program.messages.Take();
  for (const char* name : {"txtName", "txtDateOfBirth", "txtBodyWeight"}) {
    EXPECT_TRUE(program.InWindow<QLineEdit>(name)->isEnabled()) << name;
  }
}

// A left hip is drawn as form D, whose force arrow comes from the left; deliberately crossed.
TEST(Confirmation, DrawsTheDiagramOfTheCase) {
  for (const auto& [option, left] : {std::pair("Option3", true), std::pair("Option4", false)}) {
    RunningProgram program;
    program.window.New();
    program.Type("Text10", "70");
    program.Choose(option);
    program.PressOk();
    auto* view = program.InWindow<Vizual::DiagramView>("Picture1");
    EXPECT_GT(view->Box().Drawings().size(), 20u);
    EXPECT_EQ(view->Box().ScaleWidth(), 7500.0);
    const Vizual::DiagramLabels& labels = view->Labels();
    EXPECT_EQ(labels.forceAngle.left < 2500.0, left);
    EXPECT_EQ(labels.leftHip.visible, left);
    EXPECT_EQ(labels.rightHip.visible, !left);
    EXPECT_EQ(labels.stressLegend.caption, "Pmax           1 MPa");
    EXPECT_EQ(labels.forceLegend.caption, "R              1 kN");
  }
}

TEST(Confirmation, ARefusedCaseLeavesAnEmptyDiagram) {
  RunningProgram program;
  program.ConfirmDefaultCase({});
  auto* view = program.InWindow<Vizual::DiagramView>("Picture1");
  EXPECT_EQ(view->Labels().stressLegend.caption, "Pmax/Wb     1000 m^-2");
  program.window.Change();
  program.Type("Text9", "-20");
  program.PressOk();
  EXPECT_EQ(program.messages.Take().size(), 1);
  EXPECT_TRUE(view->Box().Drawings().empty());
  EXPECT_FALSE(view->Labels().stressLegend.visible);
  EXPECT_EQ(program.InWindow<QLabel>("Picture2")->text(),
            "No results for this case: in this range of input data you could not use this model");
}

}  // namespace
