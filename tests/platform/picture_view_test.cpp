// A picture in a window. Run at several scale factors of the display.
#include "platform/picture_view.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPixmap>
#include <string>

#include "tests/support/row_name.h"

namespace {

QImage Seen(PictureView& view) {
  return view.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

// The window shows what the box holds. A window that is not open yet takes its size when it is
// looked at.
void ExpectShown(PictureView& view) {
  const QImage seen = Seen(view);
  const PictureBox& box = view.Box();
  EXPECT_EQ(seen, box.Image().ToImage(box.PixelSize(), box.PixelRatio(), view.palette()));
}

TEST(PictureView, ShowsTheImageOfItsBox) {
  PictureView view;
  view.resize(300, 200);
  view.Box().Scale(0, 0, 100, 100);
  view.Box().Circle({50, 50}, 20, kRed);
  ExpectShown(view);
}

TEST(PictureView, ShowsEveryChange) {
  PictureView view;
  view.resize(300, 200);
  PictureBox& box = view.Box();
  box.Scale(0, 0, 100, 100);
  box.Line({0, 0}, {100, 100}, kRed);
  ExpectShown(view);
  box.Line({0, 100}, {100, 0}, kBlue);  // painted over what is there
  ExpectShown(view);
  box.Cls();
  ExpectShown(view);
  box.SetBackColor(kWhite);
  ExpectShown(view);
  box.Circle({50, 50}, 20, kRed);
  view.resize(452, 280);
  ExpectShown(view);
  EXPECT_EQ(box.PixelSize(), (QSizeF(452, 280) * view.devicePixelRatioF()).toSize());
}

TEST(PictureView, FollowsThePalette) {
  PictureView view;
  view.resize(30, 20);
  QPalette palette = view.palette();
  Seen(view);
  palette.setColor(QPalette::Window, QColor(200, 220, 240));
  view.setPalette(palette);
  EXPECT_EQ(Seen(view).pixelColor(15, 10), QColor(200, 220, 240));
}

TEST(PictureView, ShowsWhatIsDrawnWithoutAutoRedraw) {
  PictureView view;
  view.resize(100, 100);
  view.Box().Scale(0, 0, 100, 100);
  view.Box().SetAutoRedraw(false);
  view.Box().LineFilledBox({10, 10}, {90, 90}, kRed);
  EXPECT_EQ(Seen(view).pixelColor(50, 50), QColor(Qt::red));
  view.Box().Cls();
  EXPECT_NE(Seen(view).pixelColor(50, 50), QColor(Qt::red));
}

struct AreaRow {
  std::string name;
  QSize widget;
  QRectF area;
};

class HeldRatio : public testing::TestWithParam<AreaRow> {};

TEST_P(HeldRatio, IsAsLargeAsFitsInTheMiddle) {
  PictureView view;
  view.HoldRatio({3, 2});
  view.resize(GetParam().widget);
  Seen(view);
  const QRectF area = view.PictureArea();
  EXPECT_NEAR(area.left(), GetParam().area.left(), 1);  // whole device pixels
  EXPECT_NEAR(area.top(), GetParam().area.top(), 1);
  EXPECT_NEAR(area.width(), GetParam().area.width(), 1);
  EXPECT_NEAR(area.height(), GetParam().area.height(), 1);
  EXPECT_EQ(view.Box().Size(), area.size());
}

INSTANTIATE_TEST_SUITE_P(Rows, HeldRatio,
                         testing::Values(AreaRow{"Fits", {600, 400}, {0, 0, 600, 400}},
                                         AreaRow{"TooWide", {700, 400}, {50, 0, 600, 400}},
                                         AreaRow{"TooHigh", {600, 500}, {0, 50, 600, 400}},
                                         AreaRow{"Tiny", {1, 1}, {0, 0, 1, 1}}),
                         RowName());

}  // namespace
