// What the status line of the main window says of the file in use.
#include <gtest/gtest.h>

#include "tests/support/running_program.h"

namespace {

TEST(StatusLine, NamesTheFileInUseAndTellsOfUnsavedChanges) {
  RunningProgram program;
  const auto* file = program.InWindow<QLabel>("lblFile");
  const auto* unsaved = program.InWindow<QLabel>("lblUnsaved");
  EXPECT_EQ(file->text(), "");
  EXPECT_FALSE(unsaved->isVisible());
  program.ConfirmDefaultCase();
  EXPECT_TRUE(unsaved->isVisible());
  EXPECT_EQ(unsaved->text(), "Unsaved changes");
  program.files.Answers(program.Path("case.txt"));
  program.window.Save();
  EXPECT_EQ(file->text(), "case.txt");
  EXPECT_EQ(file->toolTip(), program.Path("case.txt"));
  EXPECT_FALSE(unsaved->isVisible());
  program.window.New();
  EXPECT_EQ(file->text(), "case.txt");
  program.PressOk();
  EXPECT_EQ(file->text(), "");
  EXPECT_TRUE(unsaved->isVisible());
}

TEST(StatusLine, LeavesTheCaptionToTheProgramsName) {
  RunningProgram program;
  const auto caption = [&] { return program.window.windowTitle(); };
  EXPECT_EQ(caption(), "TELMARION");
  program.ConfirmDefaultCase();
  EXPECT_EQ(caption(), "TELMARION");
  program.files.Answers(program.Path("case.txt"));
  program.window.Save();
  EXPECT_EQ(caption(), "TELMARION");
}

// Names of files may be anything but a slash.
TEST(StatusLine, HasRoomForTheRestBesideALongOrStrangeFileName) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  program.files.Answers(program.folder.filePath("<b>" + QString(200, 'x') + "\nend.txt"));
  program.window.Save();
  const auto* file = program.InWindow<QLabel>("lblFile");
  EXPECT_TRUE(file->text().startsWith("<b>x"));
  EXPECT_FALSE(file->text().contains('\n'));
  EXPECT_EQ(file->textFormat(), Qt::PlainText);
  program.window.Change();
  program.Type("Text1", "11");
  program.PressOk();
  QApplication::processEvents();
  const auto* unsaved = program.InWindow<QLabel>("lblUnsaved");
  EXPECT_TRUE(unsaved->isVisible());
  EXPECT_GE(unsaved->width(), unsaved->fontMetrics().horizontalAdvance(unsaved->text()));
  EXPECT_LE(unsaved->mapTo(&program.window, unsaved->rect().bottomRight()).x(),
            program.window.width());
  EXPECT_LE(program.window.minimumSizeHint().width(), 1024);
}

}  // namespace
