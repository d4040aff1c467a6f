// The whole way: a pelvis whose measurements are known, written as a device's file, read back,
// brought to scale, its heads found, and measured.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "landmarks/edge_snap.h"
#include "landmarks/measure.h"
#include "landmarks/side.h"
#include "tests/radiograph/sample_files.h"
#include "tests/support/phantom.h"

using namespace Radiography;

namespace {

using Landmarks::Circle;
using Landmarks::Point;

constexpr double kDegree = std::numbers::pi / 180.0;
constexpr double kHipHeight = 30.0;  // mm above the table

Phantom::Setup MakeSetup(bool flipped) {
  Phantom::Setup setup;
  setup.width = 1200;
  setup.height = 1000;
  setup.spacing = {0.36, 0.36};
  setup.tilt = 5.0 * kDegree;
  setup.flipped = flipped;
  return setup;
}

PhantomDicom FileOf(const Phantom::Picture& picture, const Phantom::Setup& setup) {
  PhantomDicom file;
  file.kind = DeviceKind::ComputedRadiography;
  file.rows = picture.height;
  file.columns = picture.width;
  file.pixels = picture.grey;
  file.attributes = {{"ImagerPixelSpacing", "0.36\\0.36"},
                     {"PixelSpacing", ""},
                     {"DistanceSourceToDetector", std::to_string(setup.sourceToDetector)},
                     {"DistanceSourceToPatient", std::to_string(setup.sourceToHip + kHipHeight)},
                     {"PatientOrientation", setup.flipped ? "R\\F" : "L\\F"}};
  return file;
}

class PhantomRadiograph : public ReadingFiles, public testing::WithParamInterface<bool> {
 protected:
  // The head's circle found from a start 5 mm off, in mm at the hip.
  static Circle Snapped(const Landmarks::GreyView& view, Circle truth) {
    truth.centre = truth.centre + Point{4.0, -3.0};
    truth.radius *= 1.1;
    const Landmarks::Snap snap = Landmarks::SnapToEdge(view, truth);
    EXPECT_EQ(snap.doubt, Landmarks::SnapDoubt::None);
    return snap.fit ? snap.fit->circle : Circle{};
  }
};

TEST_P(PhantomRadiograph, GivesTheMeasurementsOfThePelvis) {
  const Phantom::Anatomy anatomy;
  const Phantom::Setup setup = MakeSetup(GetParam());
  const Phantom::Picture picture = Phantom::Render(anatomy, setup);
  const Radiograph read = MustRead(Save(FileOf(picture, setup)));

  const std::optional<Scale> scale = WithHipHeight(FindScale(read.scale), kHipHeight);
  ASSERT_TRUE(scale && scale->spacing) << FindScale(read.scale).name;
  const double toHip = setup.sourceToHip / setup.sourceToDetector;
  EXPECT_NEAR(scale->spacing->row, 0.36 * toHip, 1e-9);

  const Landmarks::GreyView view = {
      read.levels, read.width, read.height, {scale->spacing->row, scale->spacing->column}};
  const auto atHip = [&](Point point) { return toHip * point; };
  const auto circleAtHip = [&](const Circle& circle) {
    return Circle{atHip(circle.centre), toHip * circle.radius};
  };
  Landmarks::Marks marks = picture.truth.left;
  marks.head = Snapped(view, circleAtHip(*marks.head));
  marks.other = Snapped(view, circleAtHip(*picture.truth.right.head));
  for (auto* point : {&marks.socketEdge, &marks.crestTop, &marks.crestLateral, &marks.trochanter}) {
    *point = atHip(point->value());
  }

  const Landmarks::Measurements found = Landmarks::Measure(marks, {});
  EXPECT_NEAR(found.headRadius->value, anatomy.headRadius, 0.3);
  EXPECT_NEAR(found.halfInterhip->value, anatomy.halfInterhip, 0.3);
  EXPECT_NEAR(found.trochanterX->value, anatomy.trochanterX, 0.4);
  EXPECT_NEAR(found.trochanterZ->value, anatomy.trochanterZ, 0.4);
  EXPECT_NEAR(found.crestWidth->value, anatomy.crestWidth, 0.4);
  EXPECT_NEAR(found.crestHeight->value, anatomy.crestHeight, 0.4);
  EXPECT_NEAR(found.centreEdge->value, anatomy.centreEdge, 0.5 * kDegree);

  const auto side = Landmarks::SideOf(
      *Landmarks::FrameOf(marks),
      Landmarks::ReadOrientation(read.rowDirection + '\\' + read.columnDirection), std::nullopt);
  EXPECT_EQ(side.side, Landmarks::Side::Left);
}

INSTANTIATE_TEST_SUITE_P(Pictures, PhantomRadiograph, testing::Bool(),
                         [](const auto& row) { return row.param ? "Flipped" : "AsTaken"; });

}  // namespace
