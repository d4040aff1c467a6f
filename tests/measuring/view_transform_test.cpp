// Where places on the picture lie in the view, at every zoom, pan and flip.
#include "measuring/view_transform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "tests/support/row_name.h"

namespace {

using namespace Measuring;
using Landmarks::PixelPlace;

constexpr QSize kPicture(300, 200);

struct TransformRow {
  std::string name;
  double zoom;
  double aspect;
  bool flipped;
  PixelPlace middle;
};

class ViewTransformTest : public testing::TestWithParam<TransformRow> {
 protected:
  static ViewTransform Given() {
    const TransformRow& row = GetParam();
    return {{640.0, 481.0}, row.zoom, row.aspect, row.flipped, row.middle};
  }
};

void ExpectNear(QPointF got, QPointF wanted) {
  EXPECT_NEAR(got.x(), wanted.x(), 1e-9);
  EXPECT_NEAR(got.y(), wanted.y(), 1e-9);
}

TEST_P(ViewTransformTest, ThereAndBackIsTheSamePlace) {
  for (const PixelPlace place : {PixelPlace{-0.5, -0.5}, {0, 0}, {123.25, 77.75}, {299.5, 199.5}}) {
    const PixelPlace back = PlaceAt(Given(), PositionOf(Given(), place));
    EXPECT_NEAR(back.column, place.column, 1e-9);
    EXPECT_NEAR(back.row, place.row, 1e-9);
  }
}

TEST_P(ViewTransformTest, APixelIsAsWideAsTheZoomAndAsHighAsItsAspectSays) {
  const QPointF step = PositionOf(Given(), {11, 21}) - PositionOf(Given(), {10, 20});
  EXPECT_NEAR(step.x(), GetParam().flipped ? -GetParam().zoom : GetParam().zoom, 1e-9);
  EXPECT_NEAR(step.y(), GetParam().zoom * GetParam().aspect, 1e-9);
}

TEST_P(ViewTransformTest, ZoomingKeepsThePlaceUnderThePointer) {
  const QPointF pointer(511.0, 37.0);
  const PixelPlace place = PlaceAt(Given(), pointer);
  ViewTransform transform = Given();
  for (const double zoom : {0.01, 3.7, 64.0, 0.5}) {
    transform = ZoomedAbout(transform, pointer, zoom);
    EXPECT_EQ(transform.zoom, zoom);
    ExpectNear(PositionOf(transform, place), pointer);
  }
}

TEST_P(ViewTransformTest, APullTakesEveryPlaceAlong) {
  const QPointF way(31.0, -17.5);
  const ViewTransform panned = Panned(Given(), way);
  for (const PixelPlace place : {PixelPlace{0, 0}, {250, 190}}) {
    ExpectNear(PositionOf(panned, place), PositionOf(Given(), place) + way);
  }
}

TEST_P(ViewTransformTest, TheFittedPictureTouchesTwoEdgesOfTheViewAndLiesInItsMiddle) {
  const QRectF area = PictureOnView(Fitted(Given(), kPicture), kPicture);
  ExpectNear(area.center(), {320.0, 240.5});
  EXPECT_NEAR(area.height() / area.width(), 200.0 * GetParam().aspect / 300.0, 1e-9);
  EXPECT_NEAR(std::max(area.width() / 640.0, area.height() / 481.0), 1.0, 1e-9);
}

TEST_P(ViewTransformTest, ZoomGoesFromATwentiethOfTheFittedPictureTo64) {
  const ZoomLimits limits = LimitsOf(Given(), kPicture, 1.0);
  EXPECT_NEAR(limits.least, Fitted(Given(), kPicture).zoom / 20.0, 1e-12);
  EXPECT_EQ(limits.most, 64.0);
  EXPECT_EQ(LimitsOf(Given(), kPicture, 2.0).most, 32.0) << "device pixels are half as large";
}

TEST_P(ViewTransformTest, SomeOfThePictureIsAlwaysSeen) {
  for (const QPointF way : {QPointF(1e5, 0), QPointF(-1e5, 0), QPointF(0, 1e5), QPointF(0, -1e5)}) {
    const ViewTransform kept = KeptInView(Panned(Given(), way), kPicture);
    const QRectF seen = PictureOnView(kept, kPicture) & QRectF(0, 0, 640, 481);
    const QRectF whole = PictureOnView(kept, kPicture);
    EXPECT_GE(seen.width() + 1e-9, std::min(16.0, whole.width()));
    EXPECT_GE(seen.height() + 1e-9, std::min(16.0, whole.height()));
  }
}

TEST_P(ViewTransformTest, WhatIsSeenIsNotMoved) {
  const ViewTransform fitted = Fitted(Given(), kPicture);
  EXPECT_EQ(KeptInView(fitted, kPicture), fitted);
}

TEST_P(ViewTransformTest, AHiddenPlaceIsBroughtJustInsideTheView) {
  const ViewTransform far = Panned(Given(), {4000.0, -50000.0});
  ExpectNear(
      PositionOf(Showing(far, PlaceAt(Given(), {300.0, 200.0})), PlaceAt(Given(), {300.0, 200.0})),
      {616.0, 24.0});
  ExpectNear(PositionOf(Showing(Given(), PlaceAt(Given(), {300.0, 200.0})),
                        PlaceAt(Given(), {300.0, 200.0})),
             {300.0, 200.0});
}

INSTANTIATE_TEST_SUITE_P(
    All, ViewTransformTest,
    testing::Values(TransformRow{"Small", 0.25, 1.0, false, {149.5, 99.5}},
                    TransformRow{"Large", 12.0, 1.0, false, {20.0, 180.0}},
                    TransformRow{"Flipped", 3.0, 1.0, true, {100.0, 50.0}},
                    TransformRow{"HighPixels", 2.0, 1.75, false, {100.0, 50.0}},
                    TransformRow{"LowPixelsFlipped", 2.0, 0.4, true, {100.25, 50.0}}),
    RowName());

TEST(ViewTransform, OneToOnePutsPixelsOnThoseOfTheDevice) {
  const ViewTransform given{{641.0, 480.0}, 0.5, 1.0, true, {33.3, 44.4}};
  const ViewTransform aligned = OnWholePixels(given, 2.0);
  const PixelPlace first = PlaceAt(aligned, {0.25, 0.25});
  EXPECT_NEAR(first.column, std::round(first.column), 1e-9);
  EXPECT_NEAR(first.row, std::round(first.row), 1e-9);
  EXPECT_LE(std::abs(aligned.middle.column - given.middle.column), 0.5);
  EXPECT_LE(std::abs(aligned.middle.row - given.middle.row), 0.5);
}

TEST(ViewTransform, TheOuterEdgesBelongToThePicture) {
  EXPECT_TRUE(IsOnPicture({-0.5, 199.5}, kPicture));
  EXPECT_FALSE(IsOnPicture({-0.51, 100.0}, kPicture));
  EXPECT_FALSE(IsOnPicture({100.0, 199.51}, kPicture));
  EXPECT_EQ(KeptOnPicture({-7.0, 300.0}, kPicture), (PixelPlace{-0.5, 199.5}));
}

}  // namespace
