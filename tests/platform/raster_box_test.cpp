// The picture of pixels: scale, pen and fill, and the widget that shows it.
#include "platform/raster_box.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QSignalSpy>
#include <array>
#include <limits>

#include "platform/raster_view.h"

namespace {

constexpr std::array<QPoint, 4> kSquare = {QPoint(2, 2), QPoint(8, 2), QPoint(8, 8), QPoint(2, 8)};

QRgb Ground() {
  return PaintColour(kButtonFace, QGuiApplication::palette()).rgb();
}

TEST(RasterBoxTest, ScaleFollowsTheModeAndTheSize) {
  RasterBox box({200, 100}, 2.0);
  EXPECT_EQ(box.PixelSize(), QSize(400, 200));
  EXPECT_EQ(box.ScaleMode(), ScaleUnit::Twips);
  EXPECT_EQ(box.ScaleWidth(), 3000.0);
  box.SetScaleMode(ScaleUnit::Points);
  EXPECT_EQ(box.ScaleHeight(), 75.0);
  box.SetScaleMode(ScaleUnit::Pixels);
  EXPECT_EQ(box.ScaleWidth(), 400.0);
  box.SetSize({50, 100}, 2.0);
  EXPECT_EQ(box.ScaleWidth(), 100.0);
  box.Scale(-1, 3, 1, -5);
  box.SetSize({70, 70}, 1.0);
  EXPECT_EQ(box.ScaleMode(), ScaleUnit::User);
  EXPECT_EQ(box.ScaleLeft(), -1.0);
  EXPECT_EQ(box.ScaleTop(), 3.0);
  EXPECT_EQ(box.ScaleHeight(), -8.0);
}

TEST(RasterBoxTest, PolygonsTakePenAndFill) {
  RasterBox box({10, 10});
  box.SetFillStyle(FillKind::Solid);
  box.SetFillColor(kBlue);
  box.Polygon(kSquare);
  EXPECT_EQ(box.Image().pixel(5, 5), qRgb(0, 0, 255));
  EXPECT_EQ(box.Image().pixel(2, 5), qRgb(0, 0, 0));
  EXPECT_EQ(box.Image().pixel(8, 8), qRgb(0, 0, 0));
  box.Cls();
  EXPECT_EQ(box.Image().pixel(5, 5), Ground());
  box.SetDrawStyle(LineStyle::None);
  box.Polygon(kSquare);
  EXPECT_EQ(box.Image().pixel(2, 5), qRgb(0, 0, 255));
  EXPECT_EQ(box.Image().pixel(8, 8), Ground()) << "the fill leaves right and lower edges out";
  box.Cls();
  box.SetDrawStyle(LineStyle::Solid);
  box.SetFillStyle(FillKind::Transparent);
  box.Polygon(kSquare);
  EXPECT_EQ(box.Image().pixel(5, 5), Ground());
}

TEST(RasterBoxTest, LinesAreInUserUnits) {
  RasterBox box({100, 100});
  box.Scale(0, 10, 10, 0);
  box.Line({1, 9}, {5, 9}, kBlue);
  EXPECT_EQ(box.Image().pixel(30, 10), qRgb(0, 0, 255));
  EXPECT_EQ(box.Image().pixel(51, 10), Ground());
  const QImage before = box.Image().copy();
  box.Line({1, std::numeric_limits<double>::quiet_NaN()}, {5, 5}, kRed);
  EXPECT_EQ(box.Image(), before);
  box.Line({-1e30, 5}, {1e30, 5}, kRed);
  EXPECT_EQ(box.Image().pixel(99, 50), qRgb(255, 0, 0));
}

TEST(RasterBoxTest, APenIsAsWideAsTheScaleFactorSays) {
  RasterBox box({50, 50}, 2.0);
  box.SetScaleMode(ScaleUnit::Pixels);
  box.Line({0, 50}, {100, 50}, kRed);
  EXPECT_EQ(box.Image().pixel(40, 50), qRgb(255, 0, 0));
  EXPECT_EQ(box.Image().pixel(40, 51), qRgb(255, 0, 0));
  EXPECT_EQ(box.Image().pixel(40, 52), Ground());
  box.SetDrawWidth(3);
  box.Line({0, 20}, {100, 20}, kBlue);
  int wide = 0;
  for (int y = 10; y < 30; ++y) wide += box.Image().pixel(40, y) == qRgb(0, 0, 255);
  EXPECT_EQ(wide, 6);
}

TEST(RasterBoxTest, ANewSizeOrGroundClears) {
  RasterBox box({10, 10});
  box.Polygon(kSquare);
  box.SetBackColor(kWhite);
  EXPECT_EQ(box.Image().pixel(2, 5), qRgb(255, 255, 255));
  box.Polygon(kSquare);
  box.SetSize({10, 10}, 1.0);
  EXPECT_EQ(box.Image().pixel(2, 5), qRgb(0, 0, 0)) << "the size was the same";
  box.SetSize({11, 10}, 1.0);
  EXPECT_EQ(box.Image().pixel(2, 5), qRgb(255, 255, 255));
}

TEST(RasterViewTest, ShowsWhatWasFinished) {
  RasterView view;
  QSignalSpy cleared(&view, &RasterView::Cleared);
  view.resize(40, 30);
  view.show();
  EXPECT_EQ(cleared.count(), 1);
  EXPECT_EQ(view.Box().PixelSize(), QSize(40, 30));
  view.Box().SetBackColor(kRed);
  view.ShowDrawing();
  view.Box().SetBackColor(kBlue);
  EXPECT_EQ(view.grab().toImage().pixel(20, 20), qRgb(255, 0, 0)) << "half a drawing is seen";
  view.ShowDrawing();
  EXPECT_EQ(view.grab().toImage().pixel(20, 20), qRgb(0, 0, 255));
  view.resize(80, 60);
  EXPECT_EQ(cleared.count(), 2);
  EXPECT_EQ(view.grab().toImage().pixel(79, 59), qRgb(0, 0, 255)) << "stretched until then";
  EXPECT_EQ(view.PixelPoint({3.5, 4.0}), QPointF(3.5, 4.0));
}

}  // namespace
