// A working day in small: every command once or more, through the real windows.
#pragma once

#include "tests/support/running_program.h"

// Leaves the program with a saved case and no window open but its own. `number` varies what is
// typed. Anything that does not go as it should fails the running test.
void WorkOneRound(RunningProgram& program, int number);

// Opens the picture in the measuring window, marks a head, and closes the window.
void MarkARadiograph(RunningProgram& program, const QString& path);
