// Sphere, area and stress by routes of their own: the literal sampling, the geometry of facets, the
// closed form of the stress, mirrored views.
#include "view3d/head_surface.h"

#include <gtest/gtest.h>

#include <QVector3D>
#include <cmath>
#include <numbers>
#include <string>

#include "tests/view3d/head_cases.h"
#include "tests/view3d/literal_head.h"
#include "view3d/stress_colour.h"

namespace {

constexpr double kPi = std::numbers::pi;
constexpr std::array<int, 5> kResolutions = {5, 10, 50, 70, 300};

class HeadSurfaceTest : public testing::Test {
 protected:
  HeadSurfaceTest() {
    picture_.SetScaleMode(ScaleUnit::Pixels);
    picture_.SetFillStyle(FillKind::Solid);
    view_.radius = DrawingRadius(picture_);
    view_.headCase = {.edgeAngle = 0.5, .poleAngle = 0.2, .scalePeak = 52.0};
  }

  SampledSurface Sphere(int steps) {
    view_.sphereSteps = steps;
    return SampleSphere(picture_, view_);
  }
  SampledSurface Area(int steps) {
    view_.areaSteps = steps;
    return SampleArea(picture_, view_);
  }
  // From the centre of the head.
  QVector3D At(const SampledSurface& s, std::size_t row, std::size_t column) const {
    return QVector3D(s.x(row, column) - 350.0F, s.y(row, column) - 350.0F, s.depth(row, column));
  }
  QVector3D Centre(const SampledSurface& s, std::size_t row, std::size_t column) const {
    return (At(s, row, column) + At(s, row, column + 1) + At(s, row + 1, column) +
            At(s, row + 1, column + 1)) /
           4.0F;
  }
  // Half the cross product of the diagonals.
  QVector3D AreaVector(const SampledSurface& s, std::size_t row, std::size_t column) const {
    return QVector3D::crossProduct(At(s, row + 1, column + 1) - At(s, row, column),
                                   At(s, row + 1, column) - At(s, row, column + 1)) /
           2.0F;
  }
  void ExpectRoundFacets(const SampledSurface& s, double wantedArea) const {
    double area = 0.0;
    for (std::size_t row = 1; row <= s.facetRows; ++row) {
      for (std::size_t column = 1; column <= s.facetColumns; ++column) {
        EXPECT_NEAR(double(At(s, row, column).length()), double(view_.radius), 0.01);
        const QVector3D vector = AreaVector(s, row, column);
        area += double(vector.length());
        if (vector.length() < 1.0F) continue;  // slivers at a pole are all rounding
        const float cosine =
            QVector3D::dotProduct(vector.normalized(), Centre(s, row, column).normalized());
        EXPECT_GT(std::abs(cosine), 0.99F) << row << " " << column;
      }
    }
    EXPECT_NEAR(area / wantedArea, 1.0, 2e-3);
  }
  void ExpectLiteral(const SampledSurface& s, const literal::Rows& rows, bool withStress) const {
    ASSERT_GE(rows.size(), s.facetRows + 1);
    for (std::size_t row = 1; row <= s.facetRows + 1; ++row) {
      ASSERT_GE(rows[row - 1].size(), s.facetColumns + 1);
      for (std::size_t column = 1; column <= s.facetColumns + 1; ++column) {
        const literal::Sample& wanted = rows[row - 1][column - 1];
        ASSERT_NEAR(double(s.x(row, column)), double(wanted.x), 1e-3) << row << " " << column;
        ASSERT_NEAR(double(s.y(row, column)), double(wanted.y), 1e-3) << row << " " << column;
        ASSERT_NEAR(double(s.depth(row, column)), double(wanted.depth), 1e-3);
        if (!withStress) continue;
        // At 0 % rounding decides between 0 and the 7 of facets without load.
        if (std::abs(wanted.stress - s.stress(row, column)) == 7.0F) continue;
        ASSERT_NEAR(double(s.stress(row, column)), double(wanted.stress), 1e-3);
      }
    }
  }

  RasterBox picture_{QSizeF(700, 700)};
  Polygon polygon_;
  HeadView view_;
};

const std::vector<ViewAngles> kViews = {
    {0.0F, 0.0F, 0.0F}, {0.0F, 0.0F, 3.1415927F}, {0.6F, 0.0F, 2.0F}, {-4.0F, 0.3F, 12.0F}};

TEST_F(HeadSurfaceTest, PointsAreThoseOfTheLiteralSampling) {
  const literal::Frame frame{700, 700, view_.radius};
  for (const int steps : kResolutions) {
    for (const ViewAngles& angles : kViews) {
      view_.angles = angles;
      ExpectLiteral(Sphere(steps), literal::Sphere(steps, angles, frame), false);
      const HeadCase& head = view_.headCase;
      ExpectLiteral(
          Area(steps),
          literal::Area(steps, angles, frame, {head.edgeAngle, head.poleAngle, head.scalePeak}),
          true);
    }
  }
}

TEST_F(HeadSurfaceTest, FacetsAreRoundAndCoverTheHead) {
  const double whole = 4.0 * kPi * double(view_.radius) * double(view_.radius);
  for (const int steps : {50, 70, 300}) {
    view_.angles = kViews[3];
    ExpectRoundFacets(Sphere(steps), whole);
    ExpectRoundFacets(Area(steps), whole / 2.0);
  }
}

TEST_F(HeadSurfaceTest, NoIndexRunsPastAGridAtAnyEdgeAngle) {
  for (const int steps : kResolutions) {
    const SampledSurface sphere = Sphere(steps);
    EXPECT_EQ(sphere.facetRows, std::size_t(steps));
    EXPECT_EQ(sphere.facetColumns, std::size_t(2 * steps));
    for (int degrees = -300; degrees <= 1500; degrees += steps == 300 ? 75 : 5) {
      view_.headCase.edgeAngle = degrees / 1800.0 * kPi;
      const SampledSurface area = Area(steps);
      EXPECT_EQ(area.facetRows, std::size_t(steps));
      EXPECT_EQ(area.facetColumns, std::size_t(steps));
      // The last point that a facet needs has been sampled.
      const std::size_t last = area.facetRows + 1;
      EXPECT_NEAR(double(At(area, last, last).length()), double(view_.radius), 0.01);
    }
  }
}

// Stress is p0·cos γ at the angular distance γ from the pole.
TEST_F(HeadSurfaceTest, StressFollowsTheCosineLawAroundThePole) {
  for (const ViewAngles& angles : kViews) {
    view_.angles = angles;
    const SampledSurface area = Area(300);
    const PoleMark mark = FindPole(picture_, view_);
    const QVector3D pole =
        QVector3D(float(mark.pole.x()) - 350.0F, float(mark.pole.y()) - 350.0F, float(mark.depth))
            .normalized();
    for (std::size_t row = 1; row <= 300; row += 7) {
      for (std::size_t column = 1; column <= 300; column += 7) {
        const double cosine =
            double(QVector3D::dotProduct(Centre(area, row, column).normalized(), pole));
        const double wanted = 52.0 * cosine;
        if (std::abs(wanted) < 0.05) continue;
        EXPECT_NEAR(double(area.stress(row, column)), wanted < 0.0 ? 7.0 : wanted, 0.05);
      }
    }
  }
}

double Highest(const SampledSurface& area) {
  float highest = 0.0F;
  for (std::size_t row = 1; row <= area.facetRows; ++row) {
    for (std::size_t column = 1; column <= area.facetColumns; ++column) {
      highest = std::max(highest, area.stress(row, column));
    }
  }
  return double(highest);
}

TEST_F(HeadSurfaceTest, ThePeakLiesAtThePoleOrAtTheEdgeBeforeIt) {
  for (const double pole : {-0.4, 0.2, 0.5, 0.9, 1.2}) {
    view_.headCase.poleAngle = pole;
    EXPECT_NEAR(Highest(Area(300)), 52.0, 0.75) << pole;
  }
  view_.headCase.poleAngle = view_.headCase.edgeAngle;
  EXPECT_NEAR(Highest(Area(300)), 52.0, 0.01) << "pole on the edge";
}

TEST_F(HeadSurfaceTest, StressIsThatOfTheLiteralSamplingWhereverThePoleLies) {
  const literal::Frame frame{700, 700, view_.radius};
  for (const double pole : {-0.4, 0.45, 0.5, 0.55, 1.2}) {
    view_.headCase.poleAngle = pole;
    ExpectLiteral(Area(10), literal::Area(10, {}, frame, {0.5, pole, 52.0}), true);
  }
}

TEST_F(HeadSurfaceTest, StressIsHeldWithinItsLimits) {
  view_.headCase.scalePeak = 2000.0;
  const SampledSurface area = Area(50);
  EXPECT_EQ(Highest(area), 720.0);
  EXPECT_EQ(area.stress(50, 25), 7.0F) << "the load does not reach the inner edge";
}

TEST_F(HeadSurfaceTest, TheWindowWithoutStressIsEmptyWhileItsBoundsAreZero) {
  const SampledSurface whole = Area(50);
  for (std::size_t row = 1; row <= 50; ++row) {
    for (std::size_t column = 1; column <= 50; ++column) EXPECT_NE(whole.stress(row, column), 0.0F);
  }
  view_.exclusionBounds = {-0.2F, 0.3F, 0.25F};
  const SampledSurface area = Area(50);
  const double step = kPi / 50.0;
  for (std::size_t row = 1; row <= 50; ++row) {
    for (std::size_t column = 1; column <= 50; ++column) {
      const double a = -0.5 + double(row - 1) * step;               // from the vertical
      const double b = -kPi / 2.0 + (double(column) - 0.5) * step;  // of the facet's middle
      const bool inside = -0.3 < a && a < 0.2 && std::abs(b) < 0.25;
      EXPECT_EQ(area.stress(row, column) == 0.0F, inside) << row << " " << column;
    }
  }
}

// Turned the other way about the x axis the area, which is the same above and below, is mirrored.
TEST_F(HeadSurfaceTest, MirroredAnglesGiveMirroredViews) {
  for (const int steps : {10, 70}) {
    view_.angles = {0.0F, 0.4F, 1.1F};
    const SampledSurface area = Area(steps);
    const SampledSurface sphere = Sphere(steps);
    view_.angles = {0.0F, -0.4F, 1.1F};
    const SampledSurface mirrored = Area(steps);
    const SampledSurface mirroredSphere = Sphere(steps);
    const auto last = std::size_t(steps) + 2;
    for (std::size_t row = 1; row < last; ++row) {
      for (std::size_t column = 1; column < last; ++column) {
        EXPECT_NEAR(double(area.x(row, column)), double(mirrored.x(row, last - column)), 0.01);
        EXPECT_NEAR(double(area.y(row, column)), 700.0 - double(mirrored.y(row, last - column)),
                    0.01);
        EXPECT_NEAR(double(sphere.x(row, column)), double(mirroredSphere.x(last - row, column)),
                    0.01);
        EXPECT_NEAR(double(sphere.depth(row, column)),
                    double(mirroredSphere.depth(last - row, column)), 0.01);
      }
    }
  }
}

TEST_F(HeadSurfaceTest, WithoutATurnThePolesOfTheSphereAreAboveAndBelowTheCentre) {
  const SampledSurface sphere = Sphere(50);
  EXPECT_NEAR(double(sphere.x(1, 1)), 350.0, 1e-3);
  EXPECT_NEAR(double(sphere.y(1, 1)), 350.0 + double(view_.radius), 1e-3);
  EXPECT_NEAR(double(sphere.y(51, 1)), 350.0 - double(view_.radius), 1e-3);
}

TEST(FacingTest, OneCornerInFrontIsEnough) {
  const Grid none(2, 2);
  SampledSurface surface{1, 1, none, none, none, none};
  surface.depth(1, 1) = surface.depth(1, 2) = surface.depth(2, 1) = -5.0F;
  surface.depth(2, 2) = 0.01F;
  EXPECT_FALSE(surface.IsFacing(1, 1));
  surface.depth(2, 2) = 0.011F;
  EXPECT_TRUE(surface.IsFacing(1, 1));
}

TEST_F(HeadSurfaceTest, TheRadiusIsAQuarterOfTheLargerSide) {
  RasterBox wide(QSizeF(800, 400));
  wide.SetScaleMode(ScaleUnit::Pixels);
  DrawSphere(wide, polygon_, view_);
  EXPECT_EQ(view_.radius, 200.0F);
  RasterBox tall(QSizeF(300, 500));
  tall.SetScaleMode(ScaleUnit::Pixels);
  DrawSphere(tall, polygon_, view_);
  EXPECT_EQ(view_.radius, 125.0F);
}

TEST_F(HeadSurfaceTest, TheSphereTakesTheFillThatIsSetAndTheAreaLeavesItsOwn) {
  picture_.SetDrawStyle(LineStyle::None);
  picture_.SetFillColor(0x332211);
  DrawSphere(picture_, polygon_, view_);
  EXPECT_EQ(picture_.Image().pixel(350, 350), qRgb(0x11, 0x22, 0x33));
  picture_.SetFillStyle(FillKind::Transparent);
  view_.angles.third = float(kPi);
  DrawArea(picture_, polygon_, view_);
  EXPECT_EQ(picture_.FillStyle(), FillKind::Solid);
  EXPECT_EQ(picture_.FillColor(), StressColour(7.0)) << "the inner edge is drawn last";
}

TEST_F(HeadSurfaceTest, FacetsHaveTheColourOfTheirStress) {
  picture_.SetDrawStyle(LineStyle::None);
  view_.angles.third = float(kPi);
  view_.areaSteps = 70;
  view_.headCase.scalePeak = 104.0;
  DrawSphere(picture_, polygon_, view_);
  DrawArea(picture_, polygon_, view_);
  const QPoint pole = FindPole(picture_, view_).pole.toPoint();
  EXPECT_EQ(picture_.Image().pixel(pole), qRgb(255, 0, 0));
  // 60° below the pole the stress is half the peak, band 55.
  const int lower = 350 + int(double(view_.radius) * std::sin(59.0 / 180.0 * kPi));
  EXPECT_EQ(picture_.Image().pixel(350 + int(0.5 * std::sin(0.2) * double(view_.radius)), lower),
            qRgb(134, 204, 63));
}

TEST_F(HeadSurfaceTest, EachSampledRowIsAnnounced) {
  int rows = 0;
  const RowCall count = [&] { ++rows; };
  view_.sphereSteps = view_.areaSteps = 10;
  DrawSphere(picture_, polygon_, view_, count);
  const literal::Frame frame{700, 700, view_.radius};
  const auto sphereRows = int(literal::Sphere(10, view_.angles, frame).size());
  EXPECT_EQ(rows, sphereRows);
  DrawArea(picture_, polygon_, view_, count);
  EXPECT_EQ(rows, sphereRows + int(literal::Area(10, {}, frame, {0.5, 0.2, 52.0}).size()));
}

TEST_F(HeadSurfaceTest, ThePoleLiesAtItsAngle) {
  const double r = double(view_.radius);
  view_.angles.third = float(kPi);
  const PoleMark front = FindPole(picture_, view_);
  EXPECT_NEAR(front.pole.x(), 350.0 + r * std::sin(0.2), 1e-2);
  EXPECT_NEAR(front.pole.y(), 350.0, 1e-2);
  EXPECT_NEAR(front.depth, r * std::cos(0.2), 1e-2);
  EXPECT_GT(front.outer.x() - 350.0, 1.2 * (front.pole.x() - 350.0)) << "farther out";
  view_.angles.third = 0.0F;
  EXPECT_NEAR(FindPole(picture_, view_).depth, -r * std::cos(0.2), 1e-2);
}

TEST_F(HeadSurfaceTest, TheLineToThePoleIsSeenWhateverTheOutlines) {
  picture_.SetDrawStyle(LineStyle::None);
  picture_.Cls();
  DrawPole(picture_, {{100, 100}, {200, 100}, 1.0});
  EXPECT_EQ(picture_.Image().pixel(150, 100), qRgb(0, 0, 0));
  EXPECT_EQ(picture_.DrawStyle(), LineStyle::None);
}

TEST(LegendTest, ShowsTheBandsFromBottomToTop) {
  PictureBox picture({40, 200});
  DrawLegend(picture);
  const QImage image = picture.Image().ToImage({40, 200}, 1.0, QPalette());
  for (int band = 0; band < 10; ++band) {
    const Colour wanted = StressColour(10.0 * band);
    for (const int y : {199 - 20 * band - 1, 199 - 20 * band - 18}) {
      for (const int x : {0, 20, 39}) {
        const QRgb pixel = image.pixel(x, y);
        EXPECT_EQ(Colour(qRed(pixel)) | Colour(qGreen(pixel)) << 8U | Colour(qBlue(pixel)) << 16U,
                  wanted)
            << band << " at " << x << "," << y;
      }
    }
  }
}

TEST(AxesTest, RunFromTheCentreToTheirEnds) {
  PictureBox picture({120, 120});
  const std::array<QPointF, 3> ends = DrawAxes(picture, {0.5F, 0.0F, 0.0F});
  ASSERT_EQ(picture.Drawings().size(), 3U);
  const double length = 1.0 / 2.3;
  EXPECT_NEAR(ends[0].x(), 0.5 + length * std::sin(0.5), 1e-6);
  EXPECT_NEAR(ends[0].y(), 0.5 + length * std::cos(0.5), 1e-6);
  EXPECT_NEAR(ends[1].x(), 0.5 - length * std::sin(0.5), 1e-6);
  EXPECT_NEAR(ends[2].y(), 0.5 - length, 1e-6);
  EXPECT_EQ(std::get<LineShape>(picture.Drawings()[0].shape).from, QPointF(0.5, 0.5));
  DrawAxes(picture, {});
  EXPECT_EQ(picture.Drawings().size(), 3U) << "the axes before are gone";
}

}  // namespace
