// The scale at the height of the hip: the distances and the magnification, given or told.
#include <gtest/gtest.h>

#include <limits>

#include "radiograph/scale.h"
#include "tests/radiograph/given_scale.h"

using namespace Radiography;

namespace {

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinite = std::numeric_limits<double>::infinity();

// A rod at the hip, seen from a point source: where its ends meet the detector follows from the
// rays alone.
struct Exposure {
  double sourceToDetector = 1150;  // mm
  double sourceToTable = 1050;
  double hipHeight = 100;  // above the table

  double OnDetector(double across) const {
    return across * sourceToDetector / (sourceToTable - hipHeight);
  }
};

TEST(Scale, OfTheDistancesIsTrueAtTheHipOnceItsHeightIsGiven) {
  const Exposure exposure;
  const double detector = 0.15;
  const double rod = 50.0;
  const double pixels = (exposure.OnDetector(30.0) - exposure.OnDetector(-20.0)) / detector;
  const Scale scale = FindScale(GivenScale{
      .imager = {detector, detector},
      .detector = {exposure.sourceToDetector},
      .table = {
          exposure.sourceToTable}}.Attributes());
  EXPECT_GT(pixels * scale.spacing->column, rod * 1.1);  // as if it lay on the table
  const auto atHip = WithHipHeight(scale, exposure.hipHeight);
  ASSERT_TRUE(atHip);
  EXPECT_NEAR(pixels * atHip->spacing->column, rod, 1e-9);
  EXPECT_NEAR(pixels * atHip->spacing->row, rod, 1e-9);
}

TEST(Scale, OfAGivenMagnificationIsTrueAtTheHipOnceItsHeightIsGiven) {
  const Exposure exposure;
  const double pixels = exposure.OnDetector(50.0) / 0.15;
  const GivenScale given{.imager = {0.15, 0.15},
                         .magnification = {exposure.sourceToDetector / exposure.sourceToTable}};
  GivenScale withDetector = given;
  withDetector.detector = {exposure.sourceToDetector};
  const auto known = WithHipHeight(FindScale(withDetector.Attributes()), exposure.hipHeight);
  ASSERT_TRUE(known) << "the distance follows from magnification and detector";
  EXPECT_NEAR(pixels * known->spacing->column, 50.0, 1e-9);
  const Scale alone = FindScale(given.Attributes());
  EXPECT_FALSE(WithHipHeight(alone, exposure.hipHeight)) << "no distance is guessed";
  const auto told = WithHipHeight(alone, exposure.hipHeight, exposure.sourceToTable);
  ASSERT_TRUE(told);
  EXPECT_NEAR(pixels * told->spacing->column, 50.0, 1e-9);
}

TEST(Scale, OnTheTableIsThatOfAHipOfNoHeight) {
  const Scale scale = FindScale(
      GivenScale{.imager = {0.15, 0.15}, .detector = {1150}, .table = {1050}}.Attributes());
  EXPECT_EQ(WithHipHeight(scale, 0.0)->spacing->row, scale.spacing->row);
}

TEST(Scale, IsDividedByAMagnificationOnce) {
  const Scale scale = FindScale(GivenScale{.imager = {0.15, 0.15}}.Attributes());
  const auto once = WithMagnification(scale, 1.25);
  ASSERT_TRUE(once);
  EXPECT_NEAR(once->spacing->row, 0.12, 1e-15);
  EXPECT_FALSE(WithMagnification(*once, 1.25));
  EXPECT_FALSE(WithHipHeight(*once, 100, 1050));
}

TEST(Scale, OfACalibratedPictureTakesNoMagnification) {
  const Scale scale =
      FindScale(GivenScale{.pixel = {0.12, 0.12}, .imager = {0.15, 0.15}, .calibration = "FIDUCIAL"}
                    .Attributes());
  EXPECT_FALSE(WithMagnification(scale, 1.25));
  EXPECT_FALSE(WithHipHeight(scale, 100, 1050));
}

TEST(Scale, RefusesFactorsAndHeightsThatCannotBe) {
  const Scale detector = FindScale(GivenScale{.imager = {0.15, 0.15}}.Attributes());
  for (const double factor : {0.99, 0.0, -1.2, kNotANumber, kInfinite}) {
    EXPECT_FALSE(WithMagnification(detector, factor)) << factor;
  }
  const Scale table = FindScale(
      GivenScale{.imager = {0.15, 0.15}, .detector = {1150}, .table = {1050}}.Attributes());
  for (const double height : {-1.0, 1050.0, kNotANumber, kInfinite}) {
    EXPECT_FALSE(WithHipHeight(table, height)) << height;
  }
  EXPECT_FALSE(WithHipHeight(table, 100)->asksHipHeight);
}

}  // namespace
