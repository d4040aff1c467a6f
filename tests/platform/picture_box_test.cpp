// The user scale of a picture and what it keeps of the drawing.
#include "platform/picture_box.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>
#include <string>

#include "tests/support/row_name.h"

namespace {

constexpr double kPi = std::numbers::pi;

QRectF ScaleOf(const PictureBox& box) {
  return {box.ScaleLeft(), box.ScaleTop(), box.ScaleWidth(), box.ScaleHeight()};
}

template <class Wanted>
const Wanted& Only(const PictureBox& box) {
  EXPECT_EQ(box.Drawings().size(), 1U);
  return std::get<Wanted>(box.Drawings().at(0).shape);
}

struct ModeRow {
  std::string name;
  ScaleUnit mode;
  double ratio;
  QRectF scale;  // of a picture of 600 by 400
};

class ScaleModes : public testing::TestWithParam<ModeRow> {};

TEST_P(ScaleModes, MeasureThePicture) {
  PictureBox box({600, 400}, GetParam().ratio);
  box.Scale(-1, 5, 1, -5);
  box.SetScaleMode(GetParam().mode);
  EXPECT_EQ(box.ScaleMode(), GetParam().mode);
  EXPECT_EQ(ScaleOf(box), GetParam().scale);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ScaleModes,
    testing::Values(ModeRow{"User", ScaleUnit::User, 1, {-1, 5, 2, -10}},
                    ModeRow{"Twips", ScaleUnit::Twips, 1, {0, 0, 9000, 6000}},
                    ModeRow{"Points", ScaleUnit::Points, 1, {0, 0, 450, 300}},
                    ModeRow{"Pixels", ScaleUnit::Pixels, 1, {0, 0, 600, 400}},
                    ModeRow{"TwipsAt200", ScaleUnit::Twips, 2, {0, 0, 9000, 6000}},
                    ModeRow{"PixelsAt200", ScaleUnit::Pixels, 2, {0, 0, 1200, 800}},
                    ModeRow{"PixelsAt125", ScaleUnit::Pixels, 1.25, {0, 0, 750, 500}}),
    RowName());

TEST(PictureScale, BeginsInTwips) {
  const PictureBox box({600, 400});
  EXPECT_EQ(box.ScaleMode(), ScaleUnit::Twips);
  EXPECT_EQ(ScaleOf(box), QRectF(0, 0, 9000, 6000));
}

TEST(PictureScale, SettingANumberSwitchesToUser) {
  PictureBox box({600, 400});
  box.SetScaleMode(ScaleUnit::Points);
  box.SetScaleWidth(7500);
  EXPECT_EQ(box.ScaleMode(), ScaleUnit::User);
  EXPECT_EQ(ScaleOf(box), QRectF(0, 0, 7500, 300));
  box.SetScaleMode(ScaleUnit::Points);
  box.SetScaleHeight(5000);
  EXPECT_EQ(box.ScaleMode(), ScaleUnit::User);
  EXPECT_EQ(ScaleOf(box), QRectF(0, 0, 450, 5000));
}

TEST(PictureScale, CornersOfEitherSign) {
  PictureBox box;
  box.Scale(10, 100, -10, -100);
  EXPECT_EQ(box.ScaleMode(), ScaleUnit::User);
  EXPECT_EQ(ScaleOf(box), QRectF(10, 100, -20, -200));
  EXPECT_EQ(box.PartPoint({-10, 0}), QPointF(1, 0.5));
}

TEST(PictureScale, FollowsTheSizeUnlessItIsTheUsers) {
  PictureBox box({600, 400});
  box.SetScaleMode(ScaleUnit::Pixels);
  box.SetSize({300, 200}, 2.0);
  EXPECT_EQ(ScaleOf(box), QRectF(0, 0, 600, 400));
  box.SetScaleMode(ScaleUnit::Points);
  box.SetSize({96, 96}, 1.0);
  EXPECT_EQ(ScaleOf(box), QRectF(0, 0, 72, 72));
  box.Scale(1, 2, 3, 4);
  box.SetSize({600, 400}, 1.0);
  EXPECT_EQ(ScaleOf(box), QRectF(1, 2, 2, 2));
}

TEST(PictureDrawing, KeepsPenFillAndScaleInForce) {
  PictureBox box;
  box.Scale(0, 0, 7500, 5000);
  box.SetDrawWidth(2);
  box.SetDrawStyle(LineStyle::Dotted);
  box.SetFillStyle(FillKind::Solid);
  box.SetFillColor(kBlue);
  box.Circle({1, 2}, 3, kRed);
  box.SetDrawWidth(1);
  box.SetFillColor(kWhite);
  box.Scale(0, 0, 1, 1);
  const Drawing& drawing = box.Drawings().at(0);
  EXPECT_EQ(drawing.pen, (Pen{kRed, 2, LineStyle::Dotted}));
  EXPECT_EQ(drawing.fill, (Fill{kBlue, FillKind::Solid}));
  EXPECT_EQ(drawing.scale, QRectF(0, 0, 7500, 5000));
  EXPECT_EQ(Only<ArcShape>(box).centre, QPointF(1, 2));
  EXPECT_EQ(Only<ArcShape>(box).radius, 3.0);
}

TEST(PictureDrawing, FilledBoxTakesThePensColour) {
  PictureBox box;
  box.SetFillColor(kBlue);
  box.LineFilledBox({0, 0}, {1, 1}, kRed);
  EXPECT_EQ(box.Drawings().at(0).fill, (Fill{kRed, FillKind::Solid}));
  EXPECT_EQ(Only<BoxShape>(box).from, QPointF(0, 0));
  EXPECT_EQ(Only<BoxShape>(box).to, QPointF(1, 1));
}

TEST(PictureDrawing, OnlyClosedShapesAreFilled) {
  PictureBox box;
  box.SetFillStyle(FillKind::Solid);
  box.Line({0, 0}, {1, 1}, kRed);
  box.Circle({0, 0}, 1, kRed, 0, 1);
  box.Circle({0, 0}, 1, kRed);
  EXPECT_EQ(box.Drawings().at(0).fill.kind, FillKind::Transparent);
  EXPECT_EQ(box.Drawings().at(1).fill.kind, FillKind::Transparent);
  EXPECT_EQ(box.Drawings().at(2).fill.kind, FillKind::Solid);
}

struct ArcRow {
  std::string name;
  double start, end, sweep;
};

class Arcs : public testing::TestWithParam<ArcRow> {};

TEST_P(Arcs, RunCounterClockwise) {
  PictureBox box;
  box.Circle({0, 0}, 1, kBlack, GetParam().start, GetParam().end);
  EXPECT_EQ(Only<ArcShape>(box).start, GetParam().start);
  EXPECT_NEAR(Only<ArcShape>(box).sweep, GetParam().sweep, 1e-15);
}

INSTANTIATE_TEST_SUITE_P(Rows, Arcs,
                         testing::Values(ArcRow{"Quarter", 0, kPi / 2, kPi / 2},
                                         ArcRow{"ThroughZero", 1.5 * kPi, 0.5 * kPi, kPi},
                                         ArcRow{"Short", 1.5, 1.6, 0.1},
                                         ArcRow{"ThreeQuarters", kPi / 2, 0, 1.5 * kPi},
                                         ArcRow{"Equal", 1, 1, 0},
                                         ArcRow{"Whole", 0, 2 * kPi, 2 * kPi},
                                         ArcRow{"Negative", -0.5, 0.5, 1}),
                         RowName());

TEST(PictureDrawing, LeavesOutWhatIsNotFinite) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  PictureBox box;
  box.Line({0, 0}, {0, infinity}, kRed);
  box.Line({nan, 0}, {0, 0}, kRed);
  box.LineFilledBox({0, 0}, {nan, 0}, kRed);
  box.Circle({0, 0}, infinity, kRed);
  box.Circle({0, 0}, 1, kRed, nan, 1);
  EXPECT_TRUE(box.Drawings().empty());
}

TEST(PictureDrawing, NothingIsDrawnOnAScaleWithoutExtent) {
  PictureBox box;
  box.SetScaleWidth(0);
  box.Line({0, 0}, {1, 1}, kRed);
  box.Scale(0, 1, 1, 1);
  box.Line({0, 0}, {1, 1}, kRed);
  EXPECT_TRUE(box.Drawings().empty());
}

TEST(PictureClearing, ClsKeepsScalePenAndBackground) {
  PictureBox box;
  box.Scale(0, 0, 10, 10);
  box.SetDrawStyle(LineStyle::Dotted);
  box.Line({0, 0}, {1, 1}, kRed);
  box.SetPicture(box.Image());
  box.Cls();
  EXPECT_TRUE(box.Drawings().empty());
  EXPECT_EQ(ScaleOf(box), QRectF(0, 0, 10, 10));
  EXPECT_EQ(box.DrawStyle(), LineStyle::Dotted);
  EXPECT_EQ(box.Image().drawings.size(), 1U);
}

TEST(PictureClearing, BackColourClearsEvenWithoutAutoRedraw) {
  PictureBox box;
  box.Line({0, 0}, {1, 1}, kRed);
  box.SetAutoRedraw(false);
  box.Line({0, 0}, {2, 2}, kRed);
  box.SetBackColor(kWhite);
  EXPECT_TRUE(box.Drawings().empty());
  EXPECT_TRUE(box.DrawingsOver().empty());
  EXPECT_EQ(box.Image().ground, kWhite);
}

TEST(PictureAutoRedraw, OffDrawsOverTheImageUntilCls) {
  PictureBox box;
  box.Line({0, 0}, {1, 1}, kRed);
  box.SetAutoRedraw(false);
  box.Line({0, 0}, {2, 2}, kBlue);
  EXPECT_EQ(box.Drawings().size(), 1U);
  EXPECT_EQ(box.DrawingsOver().size(), 1U);
  EXPECT_EQ(box.Image().drawings.size(), 1U);
  box.Cls();
  EXPECT_EQ(box.Drawings().size(), 1U);
  EXPECT_TRUE(box.DrawingsOver().empty());
  box.SetAutoRedraw(true);
  box.Cls();
  EXPECT_TRUE(box.Drawings().empty());
}

TEST(PictureImage, FreezesTheDrawing) {
  PictureBox box;
  box.SetBackColor(kWhite);
  box.Line({0, 0}, {1, 1}, kRed);
  box.SetPicture(box.Image());
  box.Cls();
  box.Line({0, 0}, {2, 2}, kBlue);
  const Picture image = box.Image();
  ASSERT_EQ(image.drawings.size(), 2U);
  EXPECT_EQ(image.drawings[0].pen.colour, kRed);
  EXPECT_EQ(image.drawings[1].pen.colour, kBlue);
  EXPECT_EQ(image.ground, kWhite);
}

TEST(PictureChange, IsReportedAndDistinguishesDrawingFromClearing) {
  PictureBox box;
  int changes = 0;
  box.OnChange([&] { ++changes; });
  const unsigned before = box.Generation();
  box.Line({0, 0}, {1, 1}, kRed);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(box.Generation(), before);
  box.Cls();
  EXPECT_EQ(changes, 2);
  EXPECT_NE(box.Generation(), before);
  box.SetSize(box.Size(), box.PixelRatio());  // nothing new
  EXPECT_EQ(changes, 2);
}

}  // namespace
