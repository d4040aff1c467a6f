// Polygons in user coordinates on pictures, and on anything else that offers the same.
#include "view3d/polygon_renderer.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <limits>
#include <stdexcept>
#include <string>

#include "platform/page_surface.h"
#include "platform/print_target.h"
#include "platform/raster_box.h"
#include "tests/support/pdf_pages.h"
#include "tests/support/row_name.h"

namespace {

// A page with nothing but what the renderer asks for.
struct Page {
  ScaleUnit mode = ScaleUnit::User;
  QRectF area{0, 0, 8, 8};
  QRectF userArea = area;
  QSizeF pixels{8, 8};
  QList<QPolygon> drawn;

  ScaleUnit ScaleMode() const { return mode; }
  double ScaleLeft() const { return area.left(); }
  double ScaleTop() const { return area.top(); }
  double ScaleWidth() const { return area.width(); }
  double ScaleHeight() const { return area.height(); }
  void SetScaleMode(ScaleUnit unit) {
    mode = unit;
    area = unit == ScaleUnit::Pixels ? QRectF({0, 0}, pixels) : QRectF({0, 0}, pixels * 15.0);
  }
  void Scale(double x1, double y1, double x2, double y2) {
    mode = ScaleUnit::User;
    area = QRectF(x1, y1, x2 - x1, y2 - y1);
  }
  void Polygon(const QPolygon& points) { drawn.append(points); }
};

QPolygon Drawn(Page& page, std::initializer_list<QPointF> points) {
  Polygon polygon;
  polygon.Device(page);
  for (const QPointF& p : points) polygon.Point(float(p.x()), float(p.y()));
  polygon.draw();
  return page.drawn.last();
}

TEST(PolygonDeviceTest, AUserScaleStaysExactlyAsItIs) {
  PictureBox picture({300, 200});
  picture.Scale(-1.5, 40.0, 2.25, -10.0);
  Polygon polygon;
  polygon.Device(picture);
  EXPECT_EQ(picture.ScaleMode(), ScaleUnit::User);
  EXPECT_EQ(picture.ScaleLeft(), -1.5);
  EXPECT_EQ(picture.ScaleTop(), 40.0);
  EXPECT_EQ(picture.ScaleWidth(), 3.75);
  EXPECT_EQ(picture.ScaleHeight(), -50.0);
}

TEST(PolygonDeviceTest, APictureInTwipsStaysInTwips) {
  PictureBox picture({300, 200});
  RasterBox raster({300, 200});
  Polygon polygon;
  polygon.Device(picture);
  EXPECT_EQ(picture.ScaleMode(), ScaleUnit::Twips);
  EXPECT_EQ(picture.ScaleWidth(), 4500.0);
  polygon.Device(raster);
  EXPECT_EQ(raster.ScaleMode(), ScaleUnit::Twips);
  EXPECT_EQ(raster.ScaleHeight(), 3000.0);
}

struct PixelRow {
  std::string name;
  double x;
  int pixel;
};
class PolygonRounding : public testing::TestWithParam<PixelRow> {};

TEST_P(PolygonRounding, NearestPixelTiesToEven) {
  Page page;
  EXPECT_EQ(Drawn(page, {{GetParam().x, GetParam().x}}).first(),
            QPoint(GetParam().pixel, GetParam().pixel));
}
INSTANTIATE_TEST_SUITE_P(
    Pixels, PolygonRounding,
    testing::Values(PixelRow{"HalfGoesToZero", 0.5, 0}, PixelRow{"OneAndAHalfGoesToTwo", 1.5, 2},
                    PixelRow{"TwoAndAHalfGoesToTwo", 2.5, 2}, PixelRow{"BelowHalf", 0.49999, 0},
                    PixelRow{"AboveHalf", 0.50001, 1}, PixelRow{"MinusHalfGoesToZero", -0.5, 0},
                    PixelRow{"MinusOneAndAHalf", -1.5, -2}),
    RowName());

TEST(PolygonPointTest, AnAxisThatRunsUpwardIsTurnedOver) {
  Page page;
  page.area = QRectF(10.0, 100.0, -20.0, -100.0);
  page.pixels = {40, 50};
  const QPolygon drawn = Drawn(page, {{10, 100}, {-10, 0}, {0, 50}});
  EXPECT_EQ(drawn, QPolygon({{0, 0}, {40, 50}, {20, 25}}));
}

TEST(PolygonPointTest, FactorsStayThoseOfTheLastDevice) {
  Page page;
  Polygon polygon;
  polygon.Device(page);
  page.Scale(0, 0, 4, 4);
  polygon.Point(3.0F, 3.0F);
  polygon.draw();
  EXPECT_EQ(page.drawn.last(), QPolygon({{3, 3}}));
  polygon.Device(page);
  polygon.Point(3.0F, 3.0F);
  polygon.draw();
  EXPECT_EQ(page.drawn.last(), QPolygon({{6, 6}}));
}

TEST(PolygonPointTest, BeyondThirtyTwoBitsIsAnOverflow) {
  Page page;
  Polygon polygon;
  polygon.Device(page);
  for (const float x : {2147483648.0F, -2147483904.0F, std::numeric_limits<float>::infinity(),
                        std::numeric_limits<float>::quiet_NaN()}) {
    EXPECT_THROW(polygon.Point(x, 0.0F), std::overflow_error) << x;
    EXPECT_THROW(polygon.Point(0.0F, x), std::overflow_error) << x;
  }
  EXPECT_THROW(polygon.draw(), std::out_of_range) << "no vertex was kept";
  polygon.Point(-2147483648.0F, 2147483520.0F);
  polygon.draw();
  EXPECT_EQ(page.drawn.last().first(), QPoint(-2147483647 - 1, 2147483520));
}

TEST(PolygonDeviceTest, ZeroWidthOrHeightIsADivisionError) {
  for (const QRectF& area : {QRectF(0, 0, 0, 8), QRectF(3, 2, 8, 0)}) {
    Page page;
    page.area = area;
    Polygon polygon;
    EXPECT_THROW(polygon.Device(page), std::domain_error);
    EXPECT_EQ(page.mode, ScaleUnit::User) << "the scale is restored before";
    EXPECT_EQ(page.area, area);
  }
}

TEST(PolygonDrawTest, WithoutPointsTheSubscriptIsOutOfRange) {
  Page page;
  Polygon polygon;
  polygon.Device(page);
  EXPECT_THROW(polygon.draw(), std::out_of_range);
  polygon.Point(1.0F, 2.0F);
  polygon.draw();
  try {
    polygon.draw();
    FAIL() << "the points of the first polygon were used again";
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "subscript out of range");
  }
  EXPECT_EQ(page.drawn.size(), 1);
}

TEST(PolygonDrawTest, TakesPenAndFillOfThePicture) {
  PictureBox picture({80, 80});
  picture.SetForeColor(kBlue);
  picture.SetFillColor(kRed);
  picture.SetFillStyle(FillKind::Solid);
  picture.Scale(0, 0, 8, 8);
  Polygon polygon;
  polygon.Device(picture);
  for (const QPointF& p : {QPointF(1, 1), QPointF(7, 1), QPointF(7, 7)}) {
    polygon.Point(float(p.x()), float(p.y()));
  }
  polygon.draw();
  ASSERT_EQ(picture.Drawings().size(), 1U);
  const Drawing& drawing = picture.Drawings().front();
  EXPECT_EQ(std::get<PolygonShape>(drawing.shape).points, QPolygon({{10, 10}, {70, 10}, {70, 70}}));
  EXPECT_EQ(drawing.pen.colour, kBlue);
  EXPECT_EQ(drawing.fill, (Fill{kRed, FillKind::Solid}));
}

static_assert(PolygonSurface<PictureBox> && PolygonSurface<RasterBox>);
static_assert(PolygonSurface<PageSurface>);

TEST(PolygonDrawTest, DrawsOnAPrintedPage) {
  const QTemporaryDir folder;
  PdfTarget target(folder.filePath("page.pdf"), {},
                   QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, {}));
  PrinterPage page(target);
  PageSurface surface(page);
  surface.SetFillStyle(FillKind::Solid);
  surface.SetFillColor(kRed);
  surface.SetDrawStyle(LineStyle::None);
  surface.Scale(0, 4, 4, 0);
  Polygon polygon;
  polygon.Device(surface);
  EXPECT_EQ(surface.ScaleMode(), ScaleUnit::User);
  EXPECT_EQ(surface.ScaleHeight(), -4.0);
  for (const QPointF& p : {QPointF(1, 3), QPointF(2, 3), QPointF(2, 2), QPointF(1, 2)}) {
    polygon.Point(float(p.x()), float(p.y()));
  }
  polygon.draw();
  ASSERT_EQ(page.EndDocument(), "");
  const QImage printed = PdfPages(folder.filePath("page.pdf")).PictureOf(1, 72.0);
  const auto at = [&](double x, double y) {
    return QColor(
        printed.pixel(int(x / 4.0 * printed.width()), int((4.0 - y) / 4.0 * printed.height())));
  };
  EXPECT_EQ(at(1.5, 2.5), QColor(Qt::red));
  EXPECT_EQ(at(1.05, 2.95), QColor(Qt::red));
  for (const QPointF& p : {QPointF(0.95, 2.5), QPointF(2.05, 2.5), QPointF(1.5, 3.05)}) {
    EXPECT_EQ(at(p.x(), p.y()), QColor(Qt::white));
  }
}

}  // namespace
