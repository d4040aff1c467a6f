// Polygons and strokes in pixels.
#include "platform/raster.h"

#include <gtest/gtest.h>

#include <QPainterPath>
#include <QPolygon>
#include <random>
#include <string>
#include <vector>

#include "tests/support/row_name.h"

namespace {

constexpr QRgb kGround = 0xFFFFFFFF;
constexpr QRgb kInk = 0xFF000000;

QImage Blank(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(kGround);
  return image;
}

// One line of text a row, # where there is ink.
std::vector<std::string> Text(const QImage& image) {
  std::vector<std::string> rows;
  for (int y = 0; y < image.height(); ++y) {
    rows.emplace_back();
    for (int x = 0; x < image.width(); ++x) rows.back() += image.pixel(x, y) == kInk ? '#' : '.';
  }
  return rows;
}

struct ShapeRow {
  std::string name;
  std::vector<QPoint> points;
  std::vector<std::string> picture;
};
class FillTest : public testing::TestWithParam<ShapeRow> {};

TEST_P(FillTest, TakesThePixelsInside) {
  QImage image = Blank(6, 4);
  PolygonFiller().Fill(image, GetParam().points, kInk);
  EXPECT_EQ(Text(image), GetParam().picture);
}
INSTANTIATE_TEST_SUITE_P(
    Shapes, FillTest,
    testing::Values(
        ShapeRow{"LeftAndUpperEdgesOnly",
                 {{1, 1}, {4, 1}, {4, 3}, {1, 3}},
                 {"......", ".###..", ".###..", "......"}},
        ShapeRow{"TheOtherWayRound",
                 {{1, 3}, {4, 3}, {4, 1}, {1, 1}},
                 {"......", ".###..", ".###..", "......"}},
        ShapeRow{"Triangle", {{0, 0}, {4, 0}, {0, 4}}, {"####..", "###...", "##....", "#....."}},
        ShapeRow{"Flat", {{1, 1}, {5, 1}, {3, 1}}, {"......", "......", "......", "......"}},
        ShapeRow{"Upright", {{1, 0}, {1, 4}}, {"......", "......", "......", "......"}},
        ShapeRow{"OnePoint", {{2, 2}}, {"......", "......", "......", "......"}},
        ShapeRow{"BowTieAlternates",
                 {{0, 0}, {6, 4}, {6, 0}, {0, 4}},
                 {"......", "##...#", "######", "##...#"}},
        ShapeRow{"FarOutside",
                 {{-2000000000, -2000000000},
                  {2000000000, -2000000000},
                  {2000000000, 2},
                  {-2000000000, 2}},
                 {"######", "######", "......", "......"}},
        ShapeRow{"AllOutside",
                 {{10, 10}, {20, 10}, {20, 20}},
                 {"......", "......", "......", "......"}}),
    RowName());

// A fan of triangles over the whole: every pixel is taken exactly once.
TEST(FillTest, PolygonsThatShareEdgesNeitherOverlapNorLeaveSeams) {
  std::mt19937 random(7);
  std::uniform_int_distribution<int> inside(1, 62);
  for (int round = 0; round < 200; ++round) {
    const QPoint hub(inside(random), inside(random));
    const std::vector<QPoint> rim = {{0, 0},   {inside(random), 0},  {64, 0},
                                     {64, 64}, {inside(random), 64}, {0, 64}};
    std::vector<int> taken(64 * 64, 0);
    for (std::size_t i = 0; i < rim.size(); ++i) {
      QImage image = Blank(64, 64);
      const std::vector<QPoint> part = {hub, rim[i], rim[(i + 1) % rim.size()]};
      PolygonFiller().Fill(image, part, kInk);
      for (int p = 0; p < 64 * 64; ++p)
        taken[std::size_t(p)] += image.pixel(p % 64, p / 64) == kInk;
    }
    for (const int times : taken) ASSERT_EQ(times, 1) << round;
  }
}

// Qt's own filling, at pixels that no edge passes.
TEST(FillTest, AgreesWithThePainterAwayFromTheEdges) {
  std::mt19937 random(11);
  std::uniform_int_distribution<int> anywhere(-20, 84);
  for (int round = 0; round < 100; ++round) {
    QPolygon polygon;
    for (int i = 0; i < 5; ++i) polygon << QPoint(anywhere(random), anywhere(random));
    QImage image = Blank(64, 64);
    PolygonFiller().Fill(image, std::vector<QPoint>(polygon.begin(), polygon.end()), kInk);
    QPainterPath path;
    path.addPolygon(QPolygonF(polygon));
    path.closeSubpath();
    QPainterPathStroker edge;
    edge.setWidth(0.5);
    const QPainterPath rim = edge.createStroke(path);
    for (int y = 0; y < 64; y += 3) {
      for (int x = 0; x < 64; x += 3) {
        if (rim.contains(QPointF(x, y))) continue;
        ASSERT_EQ(image.pixel(x, y) == kInk, path.contains(QPointF(x, y))) << x << "," << y;
      }
    }
  }
}

struct StrokeRow {
  std::string name;
  QPoint from, to;
  Stroke stroke;
  std::vector<std::string> picture;
};
class StrokeTest : public testing::TestWithParam<StrokeRow> {};

TEST_P(StrokeTest, TakesTheSamePixelsBothWays) {
  const StrokeRow& row = GetParam();
  QImage image = Blank(6, 4);
  DrawStroke(image, row.from, row.to, row.stroke);
  EXPECT_EQ(Text(image), row.picture);
  QImage back = Blank(6, 4);
  DrawStroke(back, row.to, row.from, row.stroke);
  EXPECT_EQ(back, image);
}
INSTANTIATE_TEST_SUITE_P(
    Strokes, StrokeTest,
    testing::Values(
        StrokeRow{"Level", {1, 1}, {4, 1}, {kInk}, {"......", ".####.", "......", "......"}},
        StrokeRow{"Diagonal", {0, 0}, {3, 3}, {kInk}, {"#.....", ".#....", "..#...", "...#.."}},
        StrokeRow{"OnePixel", {2, 2}, {2, 2}, {kInk}, {"......", "......", "..#...", "......"}},
        StrokeRow{"Wide", {1, 1}, {3, 1}, {kInk, 2}, {"......", ".####.", ".####.", "......"}},
        StrokeRow{"None",
                  {0, 0},
                  {5, 3},
                  {kInk, 1, LineStyle::None},
                  {"......", "......", "......", "......"}},
        StrokeRow{"Dotted",
                  {0, 1},
                  {5, 1},
                  {kInk, 1, LineStyle::Dotted},
                  {"......", "##..##", "......", "......"}},
        StrokeRow{"FromFarOutside",
                  {-2000000000, 2},
                  {2000000000, 2},
                  {kInk},
                  {"......", "......", "######", "......"}},
        StrokeRow{
            "AllOutside", {-9, -9}, {-9, 20}, {kInk}, {"......", "......", "......", "......"}}),
    RowName());

}  // namespace
