// Accepted pictures of the head: each resolution with and without outlines, and outlines on one of
// the two surfaces.
#include <gtest/gtest.h>

#include <string>

#include "tests/support/golden_picture.h"
#include "tests/support/row_name.h"
#include "tests/view3d/head_cases.h"
#include "view3d/head_surface.h"

namespace {

struct HeadPictureRow {
  std::string name;
  int steps;
  LineStyle sphere;  // outlines of its facets, and of the area's
  LineStyle area;
  ViewAngles angles{-0.5F, 0.0F, 2.8F};
  double pixelRatio = 1.0;
};
class HeadPictureTest : public testing::TestWithParam<HeadPictureRow> {};

TEST_P(HeadPictureTest, IsTheAcceptedOne) {
  const HeadPictureRow& row = GetParam();
  RasterBox picture({480, 480}, row.pixelRatio);
  picture.SetScaleMode(ScaleUnit::Pixels);
  picture.SetBackColor(kWhite);
  picture.SetFillStyle(FillKind::Solid);
  picture.SetFillColor(0xDD5436);
  const CaseRecord record = head_cases::Default(110.0);
  HeadView view;
  view.angles = row.angles;
  view.sphereSteps = view.areaSteps = row.steps;
  view.headCase = HeadCaseOf(record, head_cases::PoleText(record));
  Polygon polygon;
  picture.SetDrawStyle(row.sphere);
  DrawSphere(picture, polygon, view);
  picture.SetDrawStyle(row.area);
  DrawArea(picture, polygon, view);
  if (const PoleMark mark = FindPole(picture, view); mark.depth > 0.0) DrawPole(picture, mark);
  ExpectGoldenPicture(picture.Image(), "tests/view3d/golden", QString::fromStdString(row.name));
}
constexpr LineStyle kBare = LineStyle::None;
constexpr LineStyle kOutlined = LineStyle::Solid;
INSTANTIATE_TEST_SUITE_P(
    Pictures, HeadPictureTest,
    testing::Values(HeadPictureRow{"drag", 5, kOutlined, kOutlined},
                    HeadPictureRow{"low", 10, kBare, kBare},
                    HeadPictureRow{"low_outlines", 10, kOutlined, kOutlined},
                    HeadPictureRow{"medium", 50, kBare, kBare},
                    HeadPictureRow{"medium_outlines", 50, kOutlined, kOutlined},
                    HeadPictureRow{"high", 70, kBare, kBare},
                    HeadPictureRow{"high_outlines", 70, kOutlined, kOutlined},
                    HeadPictureRow{"sphere_outlines", 50, kOutlined, kBare},
                    HeadPictureRow{"area_outlines", 50, kBare, kOutlined},
                    HeadPictureRow{"extra", 300, kBare, kBare},
                    HeadPictureRow{"opened", 10, kBare, kBare, {0.0F, 0.0F, 3.1415927F}},
                    HeadPictureRow{"from_behind", 50, kBare, kBare, {0.3F, 0.0F, 0.4F}},
                    HeadPictureRow{
                        "scale_200", 10, kOutlined, kOutlined, {-0.5F, 0.0F, 2.8F}, 2.0}),
    RowName());

}  // namespace
