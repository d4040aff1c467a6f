// The words of the progress line; that it shows only on a terminal is tested with the program.
#include "batch/progress.h"

#include <gtest/gtest.h>

namespace {

TEST(ProgressLine, ShowsShareRowsAndRate) {
  EXPECT_EQ(Cohort::ProgressLine(500'000, 2.0, 0.5),
            "[############............]  50 %  500000 rows, 250000 rows/s");
  EXPECT_EQ(Cohort::ProgressLine(10, 4.0, 1.2),
            "[########################] 100 %  10 rows, 2 rows/s");
}

TEST(ProgressLine, DoesWithoutATotal) {
  EXPECT_EQ(Cohort::ProgressLine(10, 4.0, std::nullopt), "10 rows, 2 rows/s");
  EXPECT_EQ(Cohort::ProgressLine(0, 0.0, std::nullopt), "0 rows, 0 rows/s");
}

}  // namespace
