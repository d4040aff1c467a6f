// Print, from the question to the file.
#include <gtest/gtest.h>

#include "diagram/diagram_view.h"
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
  const CaseData before = program.window.Session().Record();
  program.messages.Answers(Answer::Yes);
  program.printers.Answers(program.Path("none/report.pdf"));
  program.window.Print();
  const QList<Message> said = program.messages.Take();
  ASSERT_EQ(said.size(), 2);
  EXPECT_EQ(said[1].kind, "error");
  EXPECT_EQ(said[1].title, "Error");
  EXPECT_TRUE(said[1].text.contains("report.pdf")) << said[1].text.toStdString();
  EXPECT_TRUE(static_cast<const CaseData&>(program.window.Session().Record()) == before);
  EXPECT_TRUE(program.window.Session().NeedsSaving());
}

TEST(Printing, ARefusedCasePrintsTheResultsThatThePanelShows) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  program.window.Change();
  program.Type("Text9", "-20");
  program.PressOk();
  program.messages.Take();
  program.messages.Answers(Answer::Yes);
  program.printers.Answers(program.Path("report.pdf"));
  program.window.Print();
  program.messages.Take();
  EXPECT_TRUE(program.Bytes(program.Path("report.pdf")).startsWith("%PDF"));
}

}  // namespace
