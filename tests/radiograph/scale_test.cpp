// What a file says of its scale, rule by rule and with every value that cannot be used.
#include "radiograph/scale.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/radiograph/given_scale.h"
#include "tests/support/row_name.h"

using namespace Radiography;

namespace {

using Notes = std::vector<std::string>;
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinite = std::numeric_limits<double>::infinity();

enum class Asks { Nothing, Magnification, HipHeight };

struct Row {
  const char* name;
  GivenScale given;
  ScaleRule rule;
  double row;  // mm; 0 where there is none
  double column;
  Asks asks;
  Notes notes{};
};

const Row kRules[] = {
    {"CalibratedByAnObject",
     {.pixel = {0.12, 0.13}, .imager = {0.15, 0.16}, .calibration = "FIDUCIAL"},
     ScaleRule::Fiducial,
     0.12,
     0.13,
     Asks::Nothing},
    {"CalibratedByAnObjectWithoutADetectorSpacing",
     {.pixel = {0.12, 0.12}, .calibration = "FIDUCIAL"},
     ScaleRule::Fiducial,
     0.12,
     0.12,
     Asks::Nothing},
    {"CalibratedByGeometry",
     {.pixel = {0.12, 0.12}, .imager = {0.15, 0.15}, .calibration = "GEOMETRY"},
     ScaleRule::Geometry,
     0.12,
     0.12,
     Asks::Nothing},
    {"CalibrationGoesBeforeAGivenMagnification",
     {.pixel = {0.12, 0.12},
      .imager = {0.15, 0.15},
      .calibration = "FIDUCIAL",
      .magnification = {1.25},
      .detector = {1150},
      .table = {1000}},
     ScaleRule::Fiducial,
     0.12,
     0.12,
     Asks::Nothing},
    {"PixelSpacingThatDiffersFromTheDetectors",
     {.pixel = {0.12, 0.12}, .imager = {0.15, 0.15}},
     ScaleRule::CorrectedSpacing,
     0.12,
     0.12,
     Asks::Nothing},
    {"PixelSpacingThatDiffersInOneDirection",
     {.pixel = {0.15, 0.12}, .imager = {0.15, 0.15}},
     ScaleRule::CorrectedSpacing,
     0.15,
     0.12,
     Asks::Nothing},
    {"CorrectedSpacingIsNotDividedByTheMagnificationAgain",
     {.pixel = {0.12, 0.12}, .imager = {0.15, 0.15}, .magnification = {1.25}},
     ScaleRule::CorrectedSpacing,
     0.12,
     0.12,
     Asks::Nothing},
    {"DetectorSpacingByTheGivenMagnification",
     {.imager = {0.15, 0.2}, .magnification = {1.25}},
     ScaleRule::GivenMagnification,
     0.12,
     0.16,
     Asks::HipHeight},
    {"EqualPixelSpacingLeavesTheGivenMagnification",
     {.pixel = {0.15, 0.15}, .imager = {0.15, 0.15}, .magnification = {1.25}},
     ScaleRule::GivenMagnification,
     0.12,
     0.12,
     Asks::HipHeight},
    {"SpacingThatIsOnlyRoundedDifferentlyIsNotACorrection",
     {.pixel = {0.1388, 0.1388}, .imager = {0.139, 0.139}, .magnification = {1.25}},
     ScaleRule::GivenMagnification,
     0.1112,
     0.1112,
     Asks::HipHeight},
    {"GivenMagnificationGoesBeforeTheDistances",
     {.imager = {0.15, 0.15}, .magnification = {1.25}, .detector = {1250}, .table = {1000}},
     ScaleRule::GivenMagnification,
     0.12,
     0.12,
     Asks::HipHeight},
    {"DetectorSpacingByTheDistances",
     {.imager = {0.15, 0.2}, .detector = {1250}, .table = {1000}},
     ScaleRule::TableDistance,
     0.12,
     0.16,
     Asks::HipHeight},
    {"PixelSpacingAlone",
     {.pixel = {0.15, 0.2}},
     ScaleRule::PixelSpacingAlone,
     0.15,
     0.2,
     Asks::Magnification},
    {"DetectorSpacingAlone",
     {.imager = {0.15, 0.2}},
     ScaleRule::DetectorSpacing,
     0.15,
     0.2,
     Asks::Magnification},
    {"DetectorSpacingWithAnEqualPixelSpacing",
     {.pixel = {0.15, 0.15}, .imager = {0.15, 0.15}},
     ScaleRule::DetectorSpacing,
     0.15,
     0.15,
     Asks::Magnification},
    {"ScannedSpacingAlone",
     {.scanned = {0.15, 0.2}},
     ScaleRule::ScannedSpacing,
     0.15,
     0.2,
     Asks::Magnification},
    {"AspectRatioAlone", {.aspect = {4, 3}}, ScaleRule::AspectRatio, 0, 0, Asks::Nothing},
    {"Nothing", {}, ScaleRule::None, 0, 0, Asks::Nothing},
    {"DistancesWithoutASpacing",
     {.detector = {1250}, .table = {1000}},
     ScaleRule::None,
     0,
     0,
     Asks::Nothing},
};

const Row kBadValues[] = {
    {"ZeroPixelSpacing",
     {.pixel = {0, 0.12}, .imager = {0.15, 0.15}, .calibration = "FIDUCIAL"},
     ScaleRule::DetectorSpacing,
     0.15,
     0.15,
     Asks::Magnification,
     {"PixelSpacing is zero and is not used"}},
    {"NegativePixelSpacing",
     {.pixel = {0.12, -0.12}},
     ScaleRule::None,
     0,
     0,
     Asks::Nothing,
     {"PixelSpacing is negative and is not used"}},
    {"SinglePixelSpacing",
     {.pixel = {0.12}},
     ScaleRule::None,
     0,
     0,
     Asks::Nothing,
     {"PixelSpacing is a single value, not two and is not used"}},
    {"ThreePixelSpacings",
     {.pixel = {0.12, 0.12, 0.12}},
     ScaleRule::None,
     0,
     0,
     Asks::Nothing,
     {"PixelSpacing has more than two values and is not used"}},
    {"PixelSpacingThatIsNoNumber",
     {.pixel = {0.12, kNotANumber}},
     ScaleRule::None,
     0,
     0,
     Asks::Nothing,
     {"PixelSpacing is not a number and is not used"}},
    {"InfinitePixelSpacing",
     {.pixel = {kInfinite, 0.12}},
     ScaleRule::None,
     0,
     0,
     Asks::Nothing,
     {"PixelSpacing is infinite and is not used"}},
    {"ZeroImagerPixelSpacing",
     {.imager = {0, 0}, .magnification = {1.25}},
     ScaleRule::None,
     0,
     0,
     Asks::Nothing,
     {"ImagerPixelSpacing is zero and is not used",
      "EstimatedRadiographicMagnificationFactor is not used: there is no ImagerPixelSpacing that "
      "it "
      "belongs to"}},
    {"SingleImagerPixelSpacing",
     {.pixel = {0.12, 0.12}, .imager = {0.15}},
     ScaleRule::PixelSpacingAlone,
     0.12,
     0.12,
     Asks::Magnification,
     {"ImagerPixelSpacing is a single value, not two and is not used"}},
    {"NegativeScannedSpacing",
     {.scanned = {-0.15, 0.15}},
     ScaleRule::None,
     0,
     0,
     Asks::Nothing,
     {"NominalScannedPixelSpacing is negative and is not used"}},
    {"MagnificationBelowOne",
     {.imager = {0.15, 0.15}, .magnification = {0.8}},
     ScaleRule::DetectorSpacing,
     0.15,
     0.15,
     Asks::Magnification,
     {"EstimatedRadiographicMagnificationFactor is below 1 and is not used"}},
    {"ZeroMagnificationLeavesTheDistances",
     {.imager = {0.15, 0.15}, .magnification = {0}, .detector = {1250}, .table = {1000}},
     ScaleRule::TableDistance,
     0.12,
     0.12,
     Asks::HipHeight,
     {"EstimatedRadiographicMagnificationFactor is zero and is not used"}},
    {"NegativeMagnification",
     {.imager = {0.15, 0.15}, .magnification = {-1.25}},
     ScaleRule::DetectorSpacing,
     0.15,
     0.15,
     Asks::Magnification,
     {"EstimatedRadiographicMagnificationFactor is negative and is not used"}},
    {"TwoMagnifications",
     {.imager = {0.15, 0.15}, .magnification = {1.25, 1.25}},
     ScaleRule::DetectorSpacing,
     0.15,
     0.15,
     Asks::Magnification,
     {"EstimatedRadiographicMagnificationFactor has more than one value and is not used"}},
    {"MagnificationWithoutADetectorSpacing",
     {.pixel = {0.15, 0.15}, .magnification = {1.25}},
     ScaleRule::PixelSpacingAlone,
     0.15,
     0.15,
     Asks::Magnification,
     {"EstimatedRadiographicMagnificationFactor is not used: there is no ImagerPixelSpacing that "
      "it "
      "belongs to"}},
    {"SourceAsFarFromTheTableAsFromTheDetector",
     {.imager = {0.15, 0.15}, .detector = {1000}, .table = {1000}},
     ScaleRule::DetectorSpacing,
     0.15,
     0.15,
     Asks::Magnification,
     {"DistanceSourceToPatient is not below DistanceSourceToDetector; neither is used"}},
    {"TableBehindTheDetector",
     {.imager = {0.15, 0.15}, .detector = {1000}, .table = {1250}},
     ScaleRule::DetectorSpacing,
     0.15,
     0.15,
     Asks::Magnification,
     {"DistanceSourceToPatient is not below DistanceSourceToDetector; neither is used"}},
    {"ZeroDistanceToTheTable",
     {.imager = {0.15, 0.15}, .detector = {1250}, .table = {0}},
     ScaleRule::DetectorSpacing,
     0.15,
     0.15,
     Asks::Magnification,
     {"DistanceSourceToPatient is zero and is not used",
      "DistanceSourceToPatient is missing, so the other distance is not used as a scale"}},
    {"NegativeDistanceToTheDetector",
     {.imager = {0.15, 0.15}, .detector = {-1250}, .table = {1000}},
     ScaleRule::DetectorSpacing,
     0.15,
     0.15,
     Asks::Magnification,
     {"DistanceSourceToDetector is negative and is not used",
      "DistanceSourceToDetector is missing, so the other distance is not used as a scale"}},
    {"MissingDistanceToTheDetector",
     {.imager = {0.15, 0.15}, .table = {1000}},
     ScaleRule::DetectorSpacing,
     0.15,
     0.15,
     Asks::Magnification,
     {"DistanceSourceToDetector is missing, so the other distance is not used as a scale"}},
    {"MagnificationThatContradictsTheDistances",
     {.imager = {0.15, 0.15}, .magnification = {1.25}, .detector = {1100}, .table = {1000}},
     ScaleRule::GivenMagnification,
     0.12,
     0.12,
     Asks::HipHeight,
     {"the given magnification is 1.25, but the given distances make it 1.1"}},
    {"PixelSpacingAboveTheDetectors",
     {.pixel = {0.2, 0.2}, .imager = {0.15, 0.15}},
     ScaleRule::DetectorSpacing,
     0.15,
     0.15,
     Asks::Magnification,
     {"PixelSpacing is larger than ImagerPixelSpacing, a magnification below 1, and is not used"}},
    {"CalibratedSpacingThatIsTheDetectors",
     {.pixel = {0.15, 0.15}, .imager = {0.15, 0.15}, .calibration = "FIDUCIAL"},
     ScaleRule::Fiducial,
     0.15,
     0.15,
     Asks::Nothing,
     {"PixelSpacing is called calibrated, but is not below that of the detector: the hip would not "
      "be magnified"}},
    {"UnknownCalibration",
     {.pixel = {0.12, 0.12}, .calibration = "GUESS"},
     ScaleRule::PixelSpacingAlone,
     0.12,
     0.12,
     Asks::Magnification,
     {"PixelSpacingCalibrationType is \"GUESS\", which is not known, and is not used"}},
    {"ZeroAspectRatio",
     {.aspect = {0, 1}},
     ScaleRule::None,
     0,
     0,
     Asks::Nothing,
     {"PixelAspectRatio is zero and is not used"}},
};

class ScaleOf : public testing::TestWithParam<Row> {};

TEST_P(ScaleOf, IsFoundByItsRule) {
  const Row& row = GetParam();
  const Scale scale = FindScale(row.given.Attributes());
  EXPECT_EQ(scale.rule, row.rule);
  EXPECT_FALSE(scale.name.empty());
  EXPECT_EQ(scale.notes, row.notes);
  EXPECT_EQ(scale.asksMagnification, row.asks == Asks::Magnification);
  EXPECT_EQ(scale.asksHipHeight, row.asks == Asks::HipHeight);
  ASSERT_EQ(scale.spacing.has_value(), row.row > 0);
  if (!scale.spacing) return;
  EXPECT_NEAR(scale.spacing->row, row.row, 1e-12);
  EXPECT_NEAR(scale.spacing->column, row.column, 1e-12);
  EXPECT_NEAR(scale.aspect, row.row / row.column, 1e-12);
}

INSTANTIATE_TEST_SUITE_P(Rule, ScaleOf, testing::ValuesIn(kRules), RowName());
INSTANTIATE_TEST_SUITE_P(BadValue, ScaleOf, testing::ValuesIn(kBadValues), RowName());

TEST(Scale, HasAnotherNameForEachRule) {
  std::vector<std::string> names;
  std::vector<ScaleRule> rules;
  for (const Row& row : kRules) {
    const Scale scale = FindScale(row.given.Attributes());
    for (std::size_t i = 0; i < rules.size(); ++i) {
      EXPECT_EQ(rules[i] == scale.rule, names[i] == scale.name) << row.name;
    }
    rules.push_back(scale.rule);
    names.push_back(scale.name);
  }
}

TEST(Scale, KeepsTheShapeOfThePixelsWithoutTheirSize) {
  EXPECT_NEAR(FindScale(GivenScale{.aspect = {4, 3}}.Attributes()).aspect, 4.0 / 3.0, 1e-15);
  EXPECT_EQ(FindScale({}).aspect, 1.0);
}

}  // namespace
