// Print, from the question to the file.
#include <gtest/gtest.h>

#include <string>

#include "diagram/diagram_view.h"
#include "tests/support/pdf_pages.h"
#include "tests/support/running_program.h"

namespace {

using Answer = MessageDoor::Answer;

const QList<Message> kAsked = {{"yes/no", "TELMARION print", "Print results?"}};

TEST(Printing, NoPrintsNothing) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  program.messages.Answers(Answer::No);
  program.Command("mnuPrint");
  EXPECT_EQ(program.messages.Take(), kAsked);
}

TEST(Printing, YesPrintsTheReportAndLeavesTheScreenAsItWas) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  auto* diagram = program.InWindow<Vizual::DiagramView>("Picture1");
  const QImage before = diagram->grab().toImage();
  program.messages.Answers(Answer::Yes);
  program.printers.Answers(program.Path("report.pdf"));
  program.InWindow<QAbstractButton>("CmdPrint")->click();
  EXPECT_EQ(program.messages.Take(), kAsked);
  EXPECT_EQ(program.printers.Take(), QList<QString>{"TELMARION"});
  EXPECT_TRUE(program.Bytes(program.Path("report.pdf")).startsWith("%PDF"));
  EXPECT_EQ(diagram->grab().toImage(), before);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(Printing, CancellingTheDialogPrintsNothing) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  program.messages.Answers(Answer::Yes);
  program.printers.Answers({});
  program.window.Print();
  EXPECT_EQ(program.messages.Take(), kAsked);
}

TEST(Printing, ATargetThatCannotBeWrittenIsReportedAndTheCaseUntouched) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  const CaseData before = program.window.Session().Record().data;
  program.messages.Answers(Answer::Yes);
  program.printers.Answers(program.Path("none/report.pdf"));
  program.window.Print();
  const QList<Message> said = program.messages.Take();
  ASSERT_EQ(said.size(), 2);
  EXPECT_EQ(said[1].kind, "error");
  EXPECT_EQ(said[1].title, "Error");
  EXPECT_TRUE(said[1].text.contains("report.pdf")) << said[1].text.toStdString();
  EXPECT_TRUE(program.window.Session().Record().data == before);
  EXPECT_TRUE(program.window.Session().NeedsSaving());
}

// Prints the refused case on screen, after this question, and gives the page's texts from top to
// bottom.
QStringList PrintedPage(RunningProgram& program, const QString& question) {
  program.messages.Answers(Answer::Yes);
  program.messages.Answers(Answer::Yes);
  program.printers.Answers(program.Path("report.pdf"));
  program.window.Print();
  EXPECT_EQ(program.messages.Take(),
            (QList<Message>{{"warning yes/no", "Sorry", question}} + kAsked));
  const PdfPages pdf(program.Path("report.pdf"));
  EXPECT_EQ(pdf.Count(), 1);
  return pdf.TextsOf(1);
}

// What stands in the diagram depends on the case and is looked at elsewhere.
std::string AboveTheDiagram(const QStringList& page) {
  std::string text;
  for (const QString& line : page.mid(0, page.indexOf("Pmax = 2066847.58 Pa") + 1)) {
    text += line.toStdString() + '\n';
  }
  return text;
}

// Patient and measurements are the new ones; results are the panel's, which a refusal leaves as it
// was.
TEST(Printing, ARefusedCasePrintsItsMeasuresWithTheResultsThatThePanelShows) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  const QStringList panel = {program.Panel("txtThetaR"), program.Panel("txtThetaPol"),
                             program.Panel("txtRWb"), program.Panel("txtPmaxWb"),
                             program.Panel("txtPmax")};
  program.window.Change();
  program.Type("Text8", "Novak");
  program.Type("Text7", "Marija");
  program.Choose("Option3");
  program.Type("Text10", "80");
  program.Type("Text1", "11");
  program.Type("Text9", "-20");
  program.PressOk();
  EXPECT_EQ(program.messages.Take(),
            (QList<Message>{
                ErrorSaid("In this range of input data you could not use this model", "Sorry")}));
  const QStringList page =
      PrintedPage(program, "The stresses are those of the case before. Go on all the same?");
  EXPECT_EQ(AboveTheDiagram(page), R"(TELMARION
Name : Novak Marija
lizm = 11 cm
Sex : F
xizm = 0.5 cm
Date of birth : Unknown
zizm = 6 cm
Body weight : 80 kg
Hizm = 16 cm
Hip : L
Cizm = 4.4 cm
zasuk = 0 °
Theta-CE = -20 °
Radius of head = 0.025 m
Comments : No
Theta-R = 8.47 °
Theta-pol = 16.41 °
R/Wb = 2.81
Pmax/Wb = 3006.76 m^-2
Pmax = 2066847.58 Pa
)");
  EXPECT_EQ(panel, (QStringList{"8.47", "16.41", "2.81", "3006.76", "2066847.58"}));
}

// Until something has been computed the panel is empty, and so are the results on paper.
TEST(Printing, ACaseRefusedAtFirstPrintsEmptyResults) {
  RunningProgram program;
  program.window.New();
  program.Type("Text10", "70");
  program.Type("Text9", "-20");
  program.PressOk();
  program.messages.Take();
  const QStringList page =
      PrintedPage(program, "There are no stresses for this case. Go on all the same?");
  EXPECT_TRUE(page.contains("Theta-CE = -20 °"));
  for (const char* text : {"Theta-R = °", "Theta-pol = °", "R/Wb =", "Pmax/Wb = m^-2"}) {
    EXPECT_EQ(page.count(text), 1) << text;
  }
  EXPECT_EQ(page.filter("Pmax =").size(), 0);
}

}  // namespace
