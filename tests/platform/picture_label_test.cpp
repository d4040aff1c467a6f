// The texts on a picture: place, lines, ground.
#include "platform/picture_label.h"

#include <gtest/gtest.h>

#include <QFontInfo>
#include <QImage>
#include <QPainter>

namespace {

class PictureLabelTest : public testing::Test {
 protected:
  PictureLabelTest() : page_(750, 500, QImage::Format_RGB32) {
    box_.Scale(0, 0, 7500, 5000);
    page_.fill(Qt::white);
  }
  QRectF Area(const PictureLabel& label, const QRectF& target) {
    const QPainter painter(&page_);
    return LabelArea(painter, target, box_, label);
  }
  const QRectF whole_{0, 0, 750, 500};
  PictureBox box_;
  QImage page_;
};

TEST_F(PictureLabelTest, StaysAtItsPlaceAndGrowsWithThePicture) {
  const PictureLabel label{.caption = "Theta CE", .left = 1000, .top = 500};
  const QRectF small = Area(label, whole_);
  const QRectF large = Area(label, QRectF(100, 100, 1500, 1000));
  EXPECT_EQ(small.topLeft(), QPointF(100, 50));
  EXPECT_EQ(large.topLeft(), QPointF(300, 200));
  EXPECT_NEAR(large.width() / small.width(), 2.0, 0.05);
  EXPECT_NEAR(large.height() / small.height(), 2.0, 0.1);
}

TEST_F(PictureLabelTest, RunsOfBlanksBreakTheLine) {
  const double one = Area({.caption = "Pmax/Wb"}, whole_).height();
  EXPECT_EQ(Area({.caption = "Pmax/Wb     1000 m^-2"}, whole_).height(), 2 * one);
  EXPECT_EQ(Area({.caption = "R/Wb           1 "}, whole_).height(), 2 * one);
  EXPECT_EQ(Area({.caption = "Theta CE"}, whole_).height(), one);
}

TEST_F(PictureLabelTest, IsMovedInFromTheEdge) {
  for (const QPointF place : {QPointF(-900, -900), QPointF(7400, 4990), QPointF(-50, 2000)}) {
    const QRectF area = Area({.caption = "Theta CE", .left = place.x(), .top = place.y()}, whole_);
    EXPECT_TRUE(whole_.contains(area)) << place.x();
  }
}

TEST_F(PictureLabelTest, PaintsInsideItsAreaOnItsOwnGround) {
  page_.fill(Qt::red);
  const PictureLabel label{
      .caption = "Theta-R", .left = 1000, .top = 500, .visible = true, .backColor = kWhite};
  QPainter painter(&page_);
  PaintLabel(painter, whole_, box_, label, QPalette());
  painter.end();
  const QRect area = Area(label, whole_).toAlignedRect();
  int ink = 0;
  for (int y = 0; y < page_.height(); ++y) {
    for (int x = 0; x < page_.width(); ++x) {
      const QColor pixel = page_.pixelColor(x, y);
      if (!area.contains(x, y)) {
        ASSERT_EQ(pixel, QColor(Qt::red)) << x << "," << y;
      }
      if (pixel.lightness() < 64) ++ink;
    }
  }
  EXPECT_GT(ink, 50);
  EXPECT_EQ(page_.pixelColor(area.center().x(), area.top() + 2), QColor(Qt::white));
}

TEST_F(PictureLabelTest, HiddenLabelsAreNotPainted) {
  const QImage before = page_.copy();
  QPainter painter(&page_);
  PaintLabel(painter, whole_, box_, {.caption = "Theta-R", .left = 9, .top = 9}, QPalette());
  painter.end();
  EXPECT_EQ(page_, before);
}

TEST_F(PictureLabelTest, TheFamilyHasItsMetricSubstitute) {
  EXPECT_EQ(QFontInfo(QFont("Times New Roman")).family(), "Liberation Serif");
}

}  // namespace
