// Pictures are there at every size, differ from each other, and follow the palette.
#include "app/tool_icons.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QGuiApplication>
#include <QImage>
#include <QList>
#include <QPalette>
#include <QPixmap>
#include <QSize>
#include <cstdlib>
#include <utility>

namespace {

constexpr ToolPicture kPictures[] = {ToolPicture::New,     ToolPicture::Open,    ToolPicture::Save,
                                     ToolPicture::Back,    ToolPicture::Forward, ToolPicture::Home,
                                     ToolPicture::Smaller, ToolPicture::Larger};

// Puts the application's palette back at the end.
class TemporaryPalette {
 public:
  TemporaryPalette(const QColor& ink, const QColor& disabledInk)
      : old_(QGuiApplication::palette()) {
    QPalette palette = old_;
    palette.setColor(QPalette::Active, QPalette::ButtonText, ink);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, disabledInk);
    QGuiApplication::setPalette(palette);
  }
  TemporaryPalette(const TemporaryPalette&) = delete;
  TemporaryPalette& operator=(const TemporaryPalette&) = delete;
  ~TemporaryPalette() { QGuiApplication::setPalette(old_); }

 private:
  QPalette old_;
};

QImage Painted(const QIcon& icon, int side, QIcon::Mode mode = QIcon::Normal, double ratio = 1.0) {
  return icon.pixmap(QSize(side, side), ratio, mode)
      .toImage()
      .convertToFormat(QImage::Format_ARGB32);
}

// As alike as blending with eight bits a channel leaves them.
bool Alike(const QColor& a, const QColor& b) {
  return std::abs(a.red() - b.red()) < 4 && std::abs(a.green() - b.green()) < 4 &&
         std::abs(a.blue() - b.blue()) < 4;
}

// The colour of the pixels that are fully painted; invalid where there are several.
QColor Ink(const QImage& image) {
  QColor ink;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor pixel = image.pixelColor(x, y);
      if (pixel.alpha() < 255) continue;
      if (ink.isValid() && !Alike(ink, pixel)) return {};
      ink = pixel;
    }
  }
  return ink;
}

class ToolIcons : public testing::TestWithParam<int> {};

TEST_P(ToolIcons, AreDistinct) {
  QList<QImage> seen;
  for (const ToolPicture picture : kPictures) {
    const QImage image = Painted(ToolIcon(picture), GetParam());
    EXPECT_EQ(image.size(), QSize(GetParam(), GetParam()));
    EXPECT_TRUE(Ink(image).isValid()) << static_cast<int>(picture);
    EXPECT_FALSE(seen.contains(image)) << static_cast<int>(picture);
    seen.append(image);
  }
}

TEST_P(ToolIcons, TakeTheColoursOfThePalette) {
  for (const ToolPicture picture : kPictures) {
    const QIcon icon = ToolIcon(picture);
    for (const auto& [ink, disabled] : {std::pair<QColor, QColor>{Qt::black, Qt::gray},
                                        std::pair<QColor, QColor>{Qt::white, Qt::darkGray}}) {
      const TemporaryPalette palette(ink, disabled);
      EXPECT_TRUE(Alike(Ink(Painted(icon, GetParam())), ink));
      EXPECT_TRUE(Alike(Ink(Painted(icon, GetParam(), QIcon::Disabled)), disabled));
    }
  }
}

TEST_P(ToolIcons, AreDrawnInThePixelsOfTheScreen) {
  for (const ToolPicture picture : kPictures) {
    const QIcon icon = ToolIcon(picture);
    QImage doubled = Painted(icon, GetParam(), QIcon::Normal, 2.0);
    EXPECT_EQ(doubled.devicePixelRatio(), 2.0);
    doubled.setDevicePixelRatio(1.0);
    EXPECT_EQ(doubled, Painted(icon, 2 * GetParam()));
  }
}

INSTANTIATE_TEST_SUITE_P(Side, ToolIcons, testing::Values(16, 24, 48),
                         testing::PrintToStringParamName());

// Upright and level lines are sharp at whole scales: the picture of a sheet has no half-painted
// pixel in its left half but those that shade it.
TEST(ToolIcon, LinesLieOnPixels) {
  for (const int side : {24, 48, 72}) {
    const QImage image = Painted(ToolIcon(ToolPicture::New), side);
    for (int x = 0; x < side / 2; ++x) {
      const int alpha = image.pixelColor(x, side / 2).alpha();
      EXPECT_TRUE(alpha == 0 || alpha == 255 || (alpha > 30 && alpha < 50))
          << "side " << side << ", x " << x << ": " << alpha;
    }
  }
}

TEST(ApplicationIcon, HasTheSizesOfDesktops) {
  const QIcon icon = ApplicationIcon();
  for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
    ASSERT_TRUE(icon.availableSizes().contains(QSize(side, side))) << side;
    const QImage image = Painted(icon, side);
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << side;
    EXPECT_EQ(image.pixelColor(side / 2, side * 5 / 8).alpha(), 255) << side;
  }
}

TEST(ApplicationPicture, IsDrawnAtItsOwnSizeOnEveryScreen) {
  for (const double ratio : {1.0, 1.5, 2.0}) {
    const QPixmap picture = ApplicationPicture(96, ratio);
    EXPECT_EQ(picture.deviceIndependentSize(), QSizeF(96, 96));
    const QImage image = picture.toImage();
    EXPECT_EQ(image.width(), qRound(96 * ratio));
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << ratio;
    EXPECT_EQ(image.pixelColor(image.width() / 2, image.width() * 5 / 8).alpha(), 255) << ratio;
  }
}

}  // namespace
