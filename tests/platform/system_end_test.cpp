// Signals and the session's end reach the program, which keeps running until it has been notified.
#include "platform/system_end.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>
#include <csignal>

#include "tests/support/row_name.h"

namespace {

struct Row {
  const char* name;
  int signal;
  int exitStatus;
};

class SystemEndSignals : public testing::TestWithParam<Row> {};

TEST_P(SystemEndSignals, AreReportedWithTheirExitStatus) {
  const SystemEnd end;
  QSignalSpy ended(&end, &SystemEnd::Ended);
  ASSERT_EQ(raise(GetParam().signal), 0);
  EXPECT_EQ(ended.size(), 0) << "not from within the handler";
  ASSERT_TRUE(ended.wait(5000));
  EXPECT_EQ(ended.first().first().toInt(), GetParam().exitStatus);
}

INSTANTIATE_TEST_SUITE_P(Table, SystemEndSignals,
                         testing::Values(Row{"Terminate", SIGTERM, 143}, Row{"HangUp", SIGHUP, 129},
                                         Row{"Interrupt", SIGINT, 130}),
                         RowName());

// A program that is started to outlive its terminal has this signal ignored from the start.
TEST(SystemEnd, LeavesIgnoredSignalsIgnored) {
  ASSERT_NE(std::signal(SIGHUP, SIG_IGN), SIG_ERR);
  {
    const SystemEnd end;
    QSignalSpy ended(&end, &SystemEnd::Ended);
    raise(SIGHUP);
    EXPECT_FALSE(ended.wait(100));
  }
  EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), SIG_IGN);
}

TEST(SystemEnd, WatchesNoLongerThanItLives) {
  { const SystemEnd end; }
  EXPECT_EQ(std::signal(SIGTERM, SIG_DFL), SIG_DFL);
}

TEST(SystemEnd, HandlesTheRequestToQuitItself) {
  const SystemEnd end;
  QSignalSpy ended(&end, &SystemEnd::Ended);
  QEvent quit(QEvent::Quit);
  QApplication::sendEvent(qApp, &quit);
  ASSERT_EQ(ended.size(), 1);
  EXPECT_EQ(ended.first().first().toInt(), 0);
}

}  // namespace
