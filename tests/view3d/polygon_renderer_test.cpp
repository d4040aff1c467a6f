// Polygons in user coordinates, looked at in the pixels of the picture.
#include "view3d/polygon_renderer.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>

#include "tests/support/row_name.h"

namespace {

// On white, in user units, with a black outline and without a fill.
class PolygonTest : public testing::Test {
 protected:
  void Draw(std::initializer_list<QPointF> points) {
    for (const QPointF& p : points) polygon_.Point(float(p.x()), float(p.y()));
    polygon_.draw();
  }
  void Clear() { picture_.SetBackColor(kWhite); }
  // The smallest area that holds all ink.
  QRect Inked() const {
    QRect inked;
    for (int y = 0; y < picture_.Image().height(); ++y) {
      for (int x = 0; x < picture_.Image().width(); ++x) {
        if (picture_.Image().pixel(x, y) != qRgb(255, 255, 255)) inked |= QRect(x, y, 1, 1);
      }
    }
    return inked;
  }

  RasterBox picture_{{40, 50}};
  Polygon polygon_;
};

TEST_F(PolygonTest, AUserScaleStaysExactlyAsItIs) {
  picture_.Scale(-1.5, 40.0, 2.25, -10.0);
  polygon_.Device(picture_);
  EXPECT_EQ(picture_.ScaleMode(), ScaleUnit::User);
  EXPECT_EQ(picture_.ScaleLeft(), -1.5);
  EXPECT_EQ(picture_.ScaleTop(), 40.0);
  EXPECT_EQ(picture_.ScaleWidth(), 3.75);
  EXPECT_EQ(picture_.ScaleHeight(), -50.0);
}

TEST_F(PolygonTest, APictureInTwipsStaysInTwips) {
  Clear();
  polygon_.Device(picture_);
  EXPECT_EQ(picture_.ScaleMode(), ScaleUnit::Twips);
  EXPECT_EQ(picture_.ScaleHeight(), 750.0);
  Draw({{0.0, 0.0}, {450.0, 0.0}, {450.0, 600.0}});
  EXPECT_EQ(Inked(), QRect(QPoint(0, 0), QPoint(30, 40)));
}

struct PixelRow {
  std::string name;
  double x;  // pixels from the edge of the picture
  int pixel;
};
class PolygonRounding : public PolygonTest, public testing::WithParamInterface<PixelRow> {};

// Drawn with a pen of 9 pixels, of which 4 are before the point: it is seen when the point is not.
TEST_P(PolygonRounding, NearestPixelTiesToEven) {
  Clear();
  picture_.SetScaleMode(ScaleUnit::Pixels);
  picture_.SetDrawWidth(9);
  polygon_.Device(picture_);
  Draw({{GetParam().x, GetParam().x}});
  EXPECT_EQ(Inked().bottomRight(), QPoint(4, 4) + QPoint(1, 1) * GetParam().pixel);
}
INSTANTIATE_TEST_SUITE_P(
    Pixels, PolygonRounding,
    testing::Values(PixelRow{"HalfGoesToZero", 0.5, 0}, PixelRow{"OneAndAHalfGoesToTwo", 1.5, 2},
                    PixelRow{"TwoAndAHalfGoesToTwo", 2.5, 2}, PixelRow{"BelowHalf", 0.49999, 0},
                    PixelRow{"AboveHalf", 0.50001, 1}, PixelRow{"MinusHalfGoesToZero", -0.5, 0},
                    PixelRow{"MinusOneAndAHalf", -1.5, -2}),
    RowName());

TEST_F(PolygonTest, AnAxisThatRunsUpwardIsFlipped) {
  Clear();
  picture_.Scale(10.0, 100.0, -10.0, 0.0);
  polygon_.Device(picture_);
  Draw({{10, 100}, {5, 100}, {5, 90}});
  EXPECT_EQ(Inked(), QRect(QPoint(0, 0), QPoint(10, 5)));
}

TEST_F(PolygonTest, FactorsStayThoseOfTheLastDevice) {
  Clear();
  picture_.Scale(0, 0, 40, 50);
  polygon_.Device(picture_);
  picture_.Scale(0, 0, 20, 25);
  Draw({{3, 3}});
  EXPECT_EQ(Inked(), QRect(3, 3, 1, 1));
  Clear();
  polygon_.Device(picture_);
  Draw({{3, 3}});
  EXPECT_EQ(Inked(), QRect(6, 6, 1, 1));
}

TEST_F(PolygonTest, BeyondThirtyTwoBitsIsAnOverflow) {
  picture_.SetScaleMode(ScaleUnit::Pixels);
  Clear();
  polygon_.Device(picture_);
  for (const float x : {2147483648.0F, -2147483904.0F, std::numeric_limits<float>::infinity(),
                        std::numeric_limits<float>::quiet_NaN()}) {
    EXPECT_THROW(polygon_.Point(x, 0.0F), std::overflow_error) << x;
    EXPECT_THROW(polygon_.Point(0.0F, x), std::overflow_error) << x;
  }
  EXPECT_THROW(polygon_.draw(), std::out_of_range) << "no vertex was kept";
  Draw({{-2147483648.0, 7.0}, {2147483520.0, 7.0}});
  EXPECT_EQ(Inked(), QRect(0, 7, 40, 1)) << "far outside is cut off";
}

TEST_F(PolygonTest, ZeroWidthOrHeightIsADivisionError) {
  picture_.Scale(0, 0, 0, 8);
  EXPECT_THROW(polygon_.Device(picture_), std::domain_error);
  picture_.Scale(3, 2, 11, 2);
  EXPECT_THROW(polygon_.Device(picture_), std::domain_error);
}

TEST_F(PolygonTest, WithoutPointsTheSubscriptIsOutOfRange) {
  polygon_.Device(picture_);
  EXPECT_THROW(polygon_.draw(), std::out_of_range);
  Draw({{1, 2}});
  try {
    polygon_.draw();
    FAIL() << "the points of the first polygon were used again";
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "subscript out of range");
  }
}

TEST_F(PolygonTest, TakesPenAndFillOfThePicture) {
  Clear();
  picture_.SetScaleMode(ScaleUnit::Pixels);
  picture_.SetFillColor(kRed);
  picture_.SetFillStyle(FillKind::Solid);
  polygon_.Device(picture_);
  Draw({{10, 10}, {30, 10}, {30, 30}, {10, 30}});
  EXPECT_EQ(picture_.Image().pixel(20, 20), qRgb(255, 0, 0));
  EXPECT_EQ(picture_.Image().pixel(10, 20), qRgb(0, 0, 0));
  EXPECT_EQ(picture_.Image().pixel(9, 20), qRgb(255, 255, 255));
  Clear();
  picture_.SetDrawStyle(LineStyle::None);
  Draw({{10, 10}, {30, 10}, {30, 30}, {10, 30}});
  EXPECT_EQ(picture_.Image().pixel(10, 20), qRgb(255, 0, 0));
}

}  // namespace
