// The three turns compared with Qt's rotation matrices, and where points on an axis go.
#include "view3d/turn.h"

#include <gtest/gtest.h>

#include <QMatrix4x4>
#include <QVector3D>
#include <cmath>
#include <string>
#include <vector>

#include "tests/support/row_name.h"

namespace {

constexpr double kPi = 3.14159265358979323846;

// The same by rotation matrices: about z backwards, about x, about y backwards.
QVector3D Rotated(const Point3& p, const ViewAngles& angles) {
  const auto degrees = [](float radians) { return float(double(radians) * 180.0 / kPi); };
  QMatrix4x4 matrix;
  matrix.rotate(-degrees(angles.third), 0, 1, 0);
  matrix.rotate(degrees(angles.second), 1, 0, 0);
  matrix.rotate(-degrees(angles.first), 0, 0, 1);
  return matrix.map(QVector3D(float(p.x), float(p.y), float(p.z)));
}

const std::vector<ViewAngles> kAngles = {
    {0.0F, 0.0F, 0.0F},  {0.0F, 0.0F, 3.1415927F}, {0.7F, 0.0F, 0.0F},   {0.0F, -1.2F, 0.0F},
    {2.5F, 0.4F, -5.0F}, {-9.0F, 7.0F, 11.0F},     {0.1F, -0.1F, 1.57F}, {3.0F, 3.0F, 3.0F}};

TEST(TurnTest, PointsOffTheAxesTurnAsRotationMatricesSay) {
  for (const ViewAngles& angles : kAngles) {
    PointTurner turner(angles);
    for (const Point3& p :
         {Point3{1, 2, 3}, Point3{-1, 2, 3}, Point3{1, -2, 3}, Point3{1, 2, -3}, Point3{-1, -2, 3},
          Point3{-1, 2, -3}, Point3{1, -2, -3}, Point3{-3, -1, -2}, Point3{0.001, -5, 0.002}}) {
      const Point3 turned = turner.Turn(p);
      const QVector3D wanted = Rotated(p, angles);
      EXPECT_NEAR(turned.x, double(wanted.x()), 1e-5);
      EXPECT_NEAR(turned.y, double(wanted.y()), 1e-5);
      EXPECT_NEAR(turned.z, double(wanted.z()), 1e-5);
    }
  }
}

TEST(TurnTest, TheMatrixTurnsAsPointByPoint) {
  for (const ViewAngles& angles : kAngles) {
    PointTurner turner(angles);
    const TurnMatrix matrix = MatrixOf(angles);
    const Point3 p{-1.25, 0.5, 2.0};
    const Point3 turned = turner.Turn(p);
    const auto row = [&](std::size_t i) {
      const Point3& r = matrix.rows[i];
      return r.x * p.x + r.y * p.y + r.z * p.z;
    };
    EXPECT_NEAR(row(0), turned.x, 1e-12);
    EXPECT_NEAR(row(1), turned.y, 1e-12);
    EXPECT_NEAR(row(2), turned.z, 1e-12);
  }
}

struct AxisRow {
  std::string name;
  ViewAngles angles;
  Point3 x, y, z;  // where the ends of the axes go, turned one after another
};
class AxisTurn : public testing::TestWithParam<AxisRow> {};

void ExpectPoint(const Point3& got, const Point3& wanted, const char* what) {
  EXPECT_NEAR(got.x, wanted.x, 1e-6) << what;
  EXPECT_NEAR(got.y, wanted.y, 1e-6) << what;
  EXPECT_NEAR(got.z, wanted.z, 1e-6) << what;
}

TEST_P(AxisTurn, PointsOnAnAxisKeepThePreviousAngle) {
  PointTurner turner(GetParam().angles);
  ExpectPoint(turner.Turn({1, 0, 0}), GetParam().x, "x");
  ExpectPoint(turner.Turn({0, -1, 0}), GetParam().y, "y");
  ExpectPoint(turner.Turn({0, 0, 1}), GetParam().z, "z");
}

const double kS = std::sin(0.5);
const double kC = std::cos(0.5);
INSTANTIATE_TEST_SUITE_P(
    Axes, AxisTurn,
    testing::Values(
        // x keeps the first angle 0 that it finds and goes down; z keeps y's π and goes up.
        AxisRow{"NoTurn", {0, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, -1, 0}},
        AxisRow{"FirstTurn", {0.5F, 0, 0}, {kS, kC, 0}, {-kS, -kC, 0}, {0, -1, 0}},
        AxisRow{"SecondTurn", {0, 0.5F, 0}, {0, kC, kS}, {0, -kC, -kS}, {0, -kC, -kS}},
        AxisRow{"FirstAndThird",
                {0.5F, 0, 0.5F},
                {kS * kC, kC, kS* kS},
                {-kS * kC, -kC, -kS* kS},
                {0, -1, 0}}),
    RowName());

TEST(TurnTest, WhereBothValuesOfAPairAreZeroNothingChanges) {
  PointTurner turner({0.3F, 0.2F, 0.1F});
  const Point3 before = turner.Turn({0, 0, 0});
  ExpectPoint(before, {0, 0, 0}, "origin");
  PointTurner fresh({0.3F, 0.2F, 0.1F});
  const Point3 wanted = fresh.Turn({1, 0, 0});
  ExpectPoint(turner.Turn({1, 0, 0}), wanted, "the origin left the angles alone");
}

}  // namespace
