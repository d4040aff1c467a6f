// A program that the system ends, and that goes on at its next start with what was kept.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <memory>

#include "tests/support/running_program.h"

class RestartedProgram : public testing::Test {
 protected:
  std::unique_ptr<RunningProgram> Start() {
    return std::make_unique<RunningProgram>(QLocale::c(), QStringList(), kept_.path());
  }

  std::unique_ptr<RunningProgram> EndAndGoOn(std::unique_ptr<RunningProgram> program) {
    program->window.EndForSystem();
    program.reset();
    program = Start();
    program->messages.Answers(MessageDoor::Answer::Yes);
    program->window.OfferKeptWork();
    program->messages.Take();
    return program;
  }

  QTemporaryDir kept_;
};
