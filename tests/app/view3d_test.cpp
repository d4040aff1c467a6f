// The 3D view from the main window's button.
#include <gtest/gtest.h>

#include <numbers>

#include "tests/support/running_program.h"

namespace {

TEST(View3D, OpensFromTheButtonOnceThereIsACase) {
  RunningProgram program;
  auto* button = program.InWindow<QAbstractButton>("Cmd3D");
  EXPECT_FALSE(button->isEnabled());
  program.ConfirmDefaultCase();
  EXPECT_TRUE(button->isEnabled());
  button->click();
  ASSERT_NE(program.window.HeadView(), nullptr);
  EXPECT_TRUE(program.window.HeadView()->isVisible());
  EXPECT_NEAR(program.window.HeadView()->View().headCase.scalePeak, 51.671, 0.001);
}

// The model has it at 16.4157...°.
TEST(View3D, HasThePoleWhereTheResultsPanelHasIt) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  program.window.View3D();
  EXPECT_NEAR(program.window.HeadView()->View().headCase.poleAngle,
              16.41 * std::numbers::pi / 180.0, 1e-9);
}

TEST(View3D, FollowsTheCaseWhileItIsOpen) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  program.window.View3D();
  const double before = program.window.HeadView()->View().headCase.edgeAngle;
  program.window.Change();
  program.Type("Text9", "20");
  program.PressOk();
  program.window.HeadView()->activateWindow();
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return program.window.HeadView()->View().headCase.edgeAngle != before; }));
}

TEST(View3D, ShowsTheLastComputedCaseAfterARefusedOne) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  program.window.Change();
  program.Type("Text9", "-20");
  program.PressOk();
  program.messages.Take();
  program.window.View3D();
  EXPECT_NEAR(program.window.HeadView()->View().headCase.edgeAngle, 3.14159265358979 / 6.0, 1e-6);
}

TEST(View3D, WaitsWhileTheCaseFormIsOpen) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  program.window.View3D();
  program.window.Change();
  EXPECT_EQ(program.Form().windowModality(), Qt::ApplicationModal);
  EXPECT_EQ(QApplication::activeModalWidget(), &program.Form());
}

TEST(View3D, GoesWithTheMainWindow) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  program.window.View3D();
  program.messages.Answers(MessageDoor::Answer::No);
  program.window.Exit();
  program.messages.Take();
  EXPECT_FALSE(program.window.HeadView()->isVisible());
}

}  // namespace
