// What the view shows of a case.
#include "view3d/head_case.h"

#include <gtest/gtest.h>

#include <numbers>

#include "tests/view3d/head_cases.h"

namespace {

TEST(HeadCaseTest, ScalePeakOfTheDefaultCase) {
  const HeadCase known = HeadCaseOf(head_cases::Default(70.0), "20");
  EXPECT_NEAR(known.scalePeak, 51.671, 5e-4);
  EXPECT_FALSE(known.perBodyWeight);
  const HeadCase unknown = HeadCaseOf(head_cases::Default(), "20");
  EXPECT_NEAR(unknown.scalePeak, 42.954, 5e-4);
  EXPECT_TRUE(unknown.perBodyWeight);
}

TEST(HeadCaseTest, EdgeFromTheRecordAndPoleFromTheBox) {
  const CaseRecord record = head_cases::Default(70.0);
  const auto pole = [&](const char* text) { return HeadCaseOf(record, text).poleAngle; };
  EXPECT_DOUBLE_EQ(HeadCaseOf(record, "20").edgeAngle, record.data.inputs.thetaCE);
  EXPECT_NEAR(pole("45"), std::numbers::pi / 4.0, 1e-12);
  EXPECT_NEAR(pole("-22,5"), -std::numbers::pi / 8.0, 1e-12);
  EXPECT_NEAR(pole("22.5"), std::numbers::pi / 8.0, 1e-12);
  EXPECT_EQ(pole(""), 0.0);
  EXPECT_EQ(pole("nan"), 0.0);
}

TEST(WholeDegreesTest, ComeBackFromRadians) {
  for (int degrees = -180; degrees <= 180; ++degrees) {
    EXPECT_EQ(WholeDegrees(Sila::DegreesToRadians(degrees)), degrees);
  }
  EXPECT_EQ(WholeDegrees(Sila::DegreesToRadians(25.7)), 25);
  EXPECT_EQ(WholeDegrees(Sila::DegreesToRadians(29.999)), 29);
  EXPECT_EQ(WholeDegrees(Sila::DegreesToRadians(-3.5)), -4);
}

}  // namespace
