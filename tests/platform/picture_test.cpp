// What a picture looks like when it is painted: looked at pixel by pixel.
#include "platform/picture.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QPainter>
#include <cmath>
#include <numbers>
#include <string>

#include "platform/picture_box.h"
#include "tests/support/row_name.h"

namespace {

constexpr double kPi = std::numbers::pi;
const QColor kPaper(Qt::white);

// 100 by 100 units on 100 by 100 device-independent pixels, on white.
class PicturePixels : public testing::Test {
 protected:
  PicturePixels() : box_({100, 100}) {
    box_.Scale(0, 0, 100, 100);
    box_.SetBackColor(kWhite);
  }
  QImage At(double ratio) const {
    const int size = int(std::lround(100 * ratio));
    return box_.Image().ToImage({size, size}, ratio, QPalette());
  }
  PictureBox box_;
};

// Pixels of row or column that are pure `colour`, and those that are neither it nor white.
struct Count {
  int pure = 0;
  int blurred = 0;
  bool operator==(const Count&) const = default;
};
void PrintTo(const Count& count, std::ostream* out) {
  *out << count.pure << " pure, " << count.blurred << " blurred";
}

Count Across(const QImage& image, QColor colour, int row) {
  Count count;
  for (int x = 0; x < image.width(); ++x) {
    const QColor pixel = image.pixelColor(x, row);
    if (pixel == colour) ++count.pure;
    if (pixel != colour && pixel != kPaper) ++count.blurred;
  }
  return count;
}

Count Down(const QImage& image, QColor colour, int column) {
  return Across(image.transformed(QTransform().rotate(-90)), colour, image.width() - 1 - column);
}

struct RatioRow {
  std::string name;
  double ratio;
  int thin;  // device pixels of a pen of width 1
  int wide;  // of width 2
};

class Crisp : public PicturePixels, public testing::WithParamInterface<RatioRow> {};

TEST_P(Crisp, UprightAndLevelLinesCoverWholePixels) {
  box_.Line({40.3, 10}, {40.3, 90}, kRed);
  box_.SetDrawWidth(2);
  box_.Line({70, 10}, {70, 90}, kRed);
  box_.SetDrawWidth(1);
  box_.Line({10, 5.2}, {90, 5.2}, kRed);
  const QImage image = At(GetParam().ratio);
  EXPECT_EQ(Across(image, Qt::red, image.height() / 2),
            (Count{GetParam().thin + GetParam().wide, 0}));
  EXPECT_EQ(Down(image, Qt::red, image.width() / 5), (Count{GetParam().thin, 0}));
}

TEST_P(Crisp, BoxesCoverWholePixels) {
  box_.LineFilledBox({10.2, 20.7}, {80.9, 60.1}, kRed);
  const QImage image = At(GetParam().ratio);
  const Count across = Across(image, Qt::red, image.height() * 4 / 10);
  const Count down = Down(image, Qt::red, image.width() / 2);
  EXPECT_EQ(across.blurred + down.blurred, 0);
  EXPECT_NEAR(across.pure, 70.7 * GetParam().ratio + GetParam().thin, 1.0);
  EXPECT_NEAR(down.pure, 39.4 * GetParam().ratio + GetParam().thin, 1.0);
}

INSTANTIATE_TEST_SUITE_P(Rows, Crisp,
                         testing::Values(RatioRow{"At100", 1.0, 1, 2},
                                         RatioRow{"At125", 1.25, 1, 3},
                                         RatioRow{"At150", 1.5, 2, 3}, RatioRow{"At200", 2.0, 2, 4},
                                         RatioRow{"At300", 3.0, 3, 6}),
                         RowName());

TEST_F(PicturePixels, ClassicColours) {
  box_.LineFilledBox({0, 0}, {10, 10}, kRed);
  box_.LineFilledBox({20, 0}, {30, 10}, kBlue);
  box_.LineFilledBox({40, 0}, {50, 10}, 0x00FF8040);
  const QImage image = At(1);
  EXPECT_EQ(image.pixelColor(5, 5), QColor(255, 0, 0));
  EXPECT_EQ(image.pixelColor(25, 5), QColor(0, 0, 255));
  EXPECT_EQ(image.pixelColor(45, 5), QColor(0x40, 0x80, 0xFF));
}

TEST_F(PicturePixels, NegativeScalesTurnTheAxes) {
  box_.Scale(100, 100, 0, 0);  // x runs leftward, y upward
  box_.LineFilledBox({90, 90}, {80, 80}, kRed);
  EXPECT_EQ(At(1).pixelColor(15, 15), QColor(Qt::red));
  EXPECT_EQ(At(1).pixelColor(85, 85), kPaper);
}

TEST_F(PicturePixels, DrawStyleNoneLeavesTheFillAlone) {
  box_.SetDrawStyle(LineStyle::None);
  box_.LineFilledBox({20, 20}, {60, 60}, kBlue);
  EXPECT_EQ(Across(At(1), Qt::blue, 40), (Count{40, 0}));
  box_.Cls();
  box_.Line({0, 50}, {100, 50}, kRed);
  EXPECT_EQ(Across(At(1), Qt::red, 50), (Count{0, 0}));
}

TEST_F(PicturePixels, DottedLinesHaveGaps) {
  box_.SetDrawStyle(LineStyle::Dotted);
  box_.Line({0, 50}, {100, 50}, kBlack);
  for (const double ratio : {1.0, 2.0}) {
    const QImage image = At(ratio);
    const Count count = Across(image, Qt::black, image.height() / 2);
    EXPECT_NEAR(count.pure, image.width() * 0.4, 2) << ratio;
    EXPECT_EQ(count.blurred, 0) << ratio;
  }
}

TEST_F(PicturePixels, TransparentFillShowsTheGround) {
  box_.SetFillColor(kBlue);
  box_.Circle({40, 40}, 15, kRed);
  EXPECT_EQ(At(1).pixelColor(40, 40), kPaper);
  box_.SetFillStyle(FillKind::Solid);
  box_.Circle({40, 40}, 15, kRed);
  EXPECT_EQ(At(1).pixelColor(40, 40), QColor(Qt::blue));
}

// Ink at a place: the pixel there is not paper.
bool IsInk(const QImage& image, double x, double y) {
  return image.pixelColor(int(std::floor(x)), int(std::floor(y))) != kPaper;
}

TEST_F(PicturePixels, CircleIsRoundOnAnUnevenScale) {
  box_.Scale(0, 0, 100, 1000);  // the radius counts in horizontal units
  box_.Circle({50, 500}, 30, kBlack);
  const QImage image = At(1);
  for (int k = 0; k < 16; ++k) {
    const double angle = kPi / 8 * k;
    EXPECT_TRUE(IsInk(image, 50 + 30 * std::cos(angle), 50 - 30 * std::sin(angle))) << k;
  }
}

TEST_F(PicturePixels, ArcRunsCounterClockwiseFromStartToEnd) {
  box_.Circle({50, 50}, 30, kBlack, 0, kPi / 2);
  box_.Circle({50, 50}, 30, kBlack, kPi, kPi);  // without length
  const QImage image = At(1);
  for (int k = 0; k < 16; ++k) {
    const double angle = kPi / 8 * (k + 0.5);
    EXPECT_EQ(IsInk(image, 50 + 30 * std::cos(angle), 50 - 30 * std::sin(angle)), k < 4) << k;
  }
}

TEST_F(PicturePixels, PaintsIntoAPartOfAPageAndNotOutsideIt) {
  box_.LineFilledBox({-50, -50}, {150, 150}, kRed);
  QImage page(300, 300, QImage::Format_RGB32);
  page.fill(Qt::white);
  QPainter painter(&page);
  box_.Image().Paint(painter, QRectF(100, 50, 120, 60), {});
  painter.end();
  for (int y = 0; y < 300; ++y) {
    for (int x = 0; x < 300; ++x) {
      const bool inside = x >= 100 && x < 220 && y >= 50 && y < 110;
      ASSERT_EQ(page.pixelColor(x, y), inside ? QColor(Qt::red) : kPaper) << x << "," << y;
    }
  }
}

TEST_F(PicturePixels, PenGrowsWithThePagesUnit) {
  box_.Line({50, 0}, {50, 100}, kRed);
  QImage page(600, 600, QImage::Format_RGB32);  // 600 dots per inch: 1/96 inch is 6.25 dots
  QPainter painter(&page);
  box_.Image().Paint(painter, QRectF(0, 0, 600, 600), {QPalette(), 6.25, false});
  painter.end();
  EXPECT_EQ(Across(page, Qt::red, 300).pure, 6);
}

TEST_F(PicturePixels, BackgroundPictureFillsTheBox) {
  PictureBox half({10, 10});
  half.Scale(0, 0, 2, 2);
  half.SetBackColor(kRed);
  half.LineFilledBox({1, 0}, {2, 2}, kBlue);
  box_.SetPicture(half.Image());
  EXPECT_EQ(At(1).pixelColor(10, 50), QColor(Qt::red));
  EXPECT_EQ(At(1).pixelColor(90, 50), QColor(Qt::blue));
  box_.SetPicture({});
  EXPECT_EQ(At(1).pixelColor(90, 50), kPaper);
}

TEST_F(PicturePixels, WithoutGroundTheImageIsTransparent) {
  EXPECT_EQ(qAlpha(Picture().ToImage({4, 4}, 1, QPalette()).pixel(1, 1)), 0);
}

TEST(ButtonFace, IsTheWindowColourWhereStrokesCanBeRead) {
  QPalette palette;
  palette.setColor(QPalette::Window, QColor(212, 208, 200));
  EXPECT_EQ(PaintColour(kButtonFace, palette), QColor(212, 208, 200));
  palette.setColor(QPalette::Window, QColor(45, 45, 48));
  EXPECT_GT(PaintColour(kButtonFace, palette).lightness(), 200);
}

}  // namespace
