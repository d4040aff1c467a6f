// The diagram on screen from one case to the next.
#include <gtest/gtest.h>

#include "diagram/diagram_view.h"
#include "tests/support/running_program.h"

namespace {

PictureBox& Diagram(RunningProgram& program) {
  return program.InWindow<Vizual::DiagramView>("Picture1")->Box();
}

QImage Seen(RunningProgram& program) {
  return program.InWindow<Vizual::DiagramView>("Picture1")->grab().toImage();
}

void ConfirmAgain(RunningProgram& program) {
  program.window.Change();
  program.PressOk();
  ASSERT_FALSE(program.FormIsOpen());
}

// The drawing leaves a dotted pen behind.
TEST(Charts, TheSecondDiagramIsDrawnWithTheSolidPenOfTheFirst) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  const QImage first = Seen(program);
  EXPECT_EQ(Diagram(program).Drawings().at(0).pen, (Pen{kBlack, 1, LineStyle::Solid}));
  EXPECT_EQ(Diagram(program).DrawStyle(), LineStyle::Dotted);
  ConfirmAgain(program);
  EXPECT_EQ(Diagram(program).Drawings().at(0).pen, (Pen{kBlack, 1, LineStyle::Solid}));
  EXPECT_EQ(Diagram(program).Drawings().at(1).pen, (Pen{kRed, 1, LineStyle::Solid}));
  EXPECT_EQ(Seen(program), first);
}

TEST(Charts, EveryDiagramHasTheBackgroundOfTheFirst) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  const QImage first = Seen(program);
  PictureBox other;
  other.SetBackColor(kRed);
  Diagram(program).SetPicture(other.Image());
  Diagram(program).Cls();
  ASSERT_NE(Seen(program), first);
  ConfirmAgain(program);
  EXPECT_EQ(Seen(program), first);
}

TEST(Charts, ARefusedCaseLeavesTheBackgroundAlone) {
  RunningProgram program;
  const QImage empty = Seen(program);
  program.ConfirmDefaultCase();
  ASSERT_NE(Seen(program), empty);
  program.window.Change();
  program.Type("Text9", "-20");
  program.PressOk();
  EXPECT_EQ(program.messages.Take().size(), 1);
  EXPECT_EQ(Seen(program), empty);
}

}  // namespace
