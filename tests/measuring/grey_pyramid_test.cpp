// What is seen of a picture, against the levels themselves.
#include "measuring/grey_pyramid.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "tests/measuring/view_fixture.h"

namespace {

using namespace Measuring;

constexpr QRgb kGround = 0xFF102030U;

// Brightness is the level: 8 bits of it.
std::vector<std::uint8_t> Straight() {
  std::vector<std::uint8_t> brightness(4096);
  for (std::size_t i = 0; i < brightness.size(); ++i) {
    brightness[i] = static_cast<std::uint8_t>(std::min<std::size_t>(i, 255));
  }
  return brightness;
}

QImage Seen(const GreyPyramid& pyramid, const ViewTransform& transform, double ratio = 1.0) {
  QImage image((transform.view * ratio).toSize(), QImage::Format_RGB32);
  PaintSeen(pyramid, transform, ratio, Straight(), kGround, image);
  return image;
}

TEST(GreyPyramid, OneToOneShowsEachPixelOnceAndTheGroundAround) {
  const auto level = [](int x, int y) { return (x * 7 + y * 13) % 256; };
  const GreyPyramid pyramid = MakePyramid(MakeRadiograph(37, 21, level));
  for (const bool flipped : {false, true}) {
    const ViewTransform transform = {{50.0, 30.0}, 1.0, 1.0, flipped, {18.5, 10.5}};
    const QImage seen = Seen(pyramid, transform);
    for (int y = 0; y < 30; ++y) {
      for (int x = 0; x < 50; ++x) {
        const int column = flipped ? 43 - x : x - 6;
        const int row = y - 4;
        const bool isOn = column >= 0 && column < 37 && row >= 0 && row < 21;
        const int grey = isOn ? level(column, row) : 0;
        ASSERT_EQ(seen.pixel(x, y), isOn ? qRgb(grey, grey, grey) : kGround) << x << ' ' << y;
      }
    }
  }
}

// A slope stays a slope: interpolation between pixels is linear, at every scale of the display.
TEST(GreyPyramid, BetweenPixelsLevelsAreInterpolated) {
  const GreyPyramid pyramid =
      MakePyramid(MakeRadiograph(60, 40, [](int x, int y) { return 2 * x + 3 * y; }));
  for (const double ratio : {1.0, 2.0}) {
    const ViewTransform transform = {{80.0, 60.0}, 5.3, 1.0, false, {30.2, 19.7}};
    const QImage seen = Seen(pyramid, transform, ratio);
    for (int y = 0; y < seen.height(); y += 7) {
      for (int x = 0; x < seen.width(); x += 7) {
        const auto place = PlaceAt(transform, QPointF(x + 0.5, y + 0.5) / ratio);
        const double wanted = 2.0 * place.column + 3.0 * place.row;
        EXPECT_NEAR(qGray(seen.pixel(x, y)), wanted, 0.52) << x << ' ' << y;
      }
    }
  }
}

// A slope in the picture lies where it lies at full size, however often the picture is halved.
TEST(GreyPyramid, ASmallPictureIsNotShifted) {
  const GreyPyramid pyramid =
      MakePyramid(MakeRadiograph(801, 603, [](int x, int y) { return x / 8 + y / 4; }));
  for (const double zoom : {0.7, 0.5, 0.31, 0.13}) {
    const ViewTransform transform = {{100.0, 75.0}, zoom, 1.0, false, {400.0, 301.0}};
    const QImage seen = Seen(pyramid, transform);
    for (int y = 20; y < 55; ++y) {
      for (int x = 20; x < 80; ++x) {
        const auto place = PlaceAt(transform, {x + 0.5, y + 0.5});
        const double wanted = (place.column - 3.5) / 8.0 + (place.row - 1.5) / 4.0;
        ASSERT_NEAR(qGray(seen.pixel(x, y)), wanted, 1.2) << zoom << ": " << x << ' ' << y;
      }
    }
  }
}

TEST(GreyPyramid, FineStripesBecomeTheirMeanInsteadOfFalsePatterns) {
  const GreyPyramid pyramid =
      MakePyramid(MakeRadiograph(1000, 1000, [](int x, int) { return x % 2 * 200; }));
  const QImage seen = Seen(pyramid, {{150.0, 150.0}, 0.15, 1.0, false, {499.5, 499.5}});
  for (int x = 2; x < 148; ++x) EXPECT_NEAR(qGray(seen.pixel(x, 75)), 100, 2) << x;
}

TEST(GreyPyramid, TheSmallestIsTakenThatHasAPixelForEachOfTheDevice) {
  const GreyPyramid pyramid = MakePyramid(MakeRadiograph(100, 60, [](int, int) { return 1; }));
  EXPECT_EQ(LevelFor(pyramid, 3.0).halvings, 0);
  EXPECT_EQ(LevelFor(pyramid, 0.51).halvings, 0);
  EXPECT_EQ(LevelFor(pyramid, 0.5).halvings, 1);
  EXPECT_EQ(LevelFor(pyramid, 0.5).width, 50);
  EXPECT_EQ(LevelFor(pyramid, 0.2).halvings, 2);
  EXPECT_EQ(LevelFor(pyramid, 0.2).height, 15);
  EXPECT_EQ(LevelFor(pyramid, 1e-6).height, 1) << "the last there is";
}

TEST(GreyPyramid, TheHighestLevelsDoNotOverflow) {
  auto radiograph = MakeRadiograph(9, 9, [](int, int) { return 65535; });
  radiograph->bits = 16;
  const GreyPyramid pyramid = MakePyramid(radiograph);
  std::vector<std::uint8_t> brightness(65536, 0);
  brightness.back() = 77;
  for (const double zoom : {0.25, 0.4, 1.0, 7.7}) {
    const ViewTransform transform = {{2.0, 2.0}, zoom, 1.0, false, {4.1, 4.2}};
    QImage image(2, 2, QImage::Format_RGB32);
    PaintSeen(pyramid, transform, 1.0, brightness, kGround, image);
    EXPECT_EQ(image.pixel(0, 0), qRgb(77, 77, 77)) << zoom;
    EXPECT_EQ(image.pixel(1, 1), qRgb(77, 77, 77)) << zoom;
  }
}

TEST(GreyPyramid, APictureOfOnePixelCanBeSeen) {
  const GreyPyramid pyramid = MakePyramid(MakeRadiograph(1, 1, [](int, int) { return 9; }));
  const QImage seen = Seen(pyramid, {{10.0, 10.0}, 4.0, 1.0, false, {0.0, 0.0}});
  EXPECT_EQ(seen.pixel(5, 5), qRgb(9, 9, 9));
  EXPECT_EQ(seen.pixel(2, 5), kGround);
}

}  // namespace
