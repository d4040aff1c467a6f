// Contrasts of colours, and what is made of a desktop that has too little.
#include "platform/readable_palette.h"

#include <gtest/gtest.h>

#include <QApplication>

#include "tests/support/palettes.h"

namespace {

// The examples of the guidelines: the extremes, and the greys that just pass and just fail on
// white.
TEST(ContrastOf, IsThatOfTheGuidelines) {
  EXPECT_NEAR(ContrastOf(Qt::black, Qt::white), 21.0, 1e-9);
  EXPECT_NEAR(ContrastOf(Qt::red, Qt::red), 1.0, 1e-9);
  EXPECT_GE(ContrastOf(QColor(0x76, 0x76, 0x76), Qt::white), 4.5);
  EXPECT_LT(ContrastOf(Qt::white, QColor(0x77, 0x77, 0x77)), 4.5);
  EXPECT_NEAR(ContrastOf(Qt::red, Qt::white), 3.998, 0.001);
}

TEST(ReadableOn, LeavesWhatCanBeReadAndMovesTheRestAsLittleAsNeeded) {
  EXPECT_EQ(ReadableOn(Qt::white, Qt::blue), QColor(Qt::blue));
  for (const QColor ground :
       {QColor(Qt::white), QColor(0x1e, 0x1f, 0x22), QColor(0x80, 0x80, 0x80)}) {
    for (const QColor ink : {QColor(Qt::blue), QColor(0xd9, 0x48, 0x3b), ground}) {
      const double contrast = ContrastOf(ground, ReadableOn(ground, ink));
      EXPECT_GE(contrast, kLeastContrast) << ink.name().toStdString();
      if (ContrastOf(ground, ink) < kLeastContrast) {
        EXPECT_LT(contrast, kLeastContrast + 0.7) << ink.name().toStdString();
      }
    }
  }
}

TEST(ReadableOn, CountsTranslucentInk) {
  const QColor half(0, 0, 0, 128);
  const QColor readable = ReadableOn(Qt::white, half);
  EXPECT_EQ(readable.alpha(), 255);
  EXPECT_LT(readable.red(), 128) << "half of black on white is 4.0:1";
}

TEST(ReadableColours, AreOnlyThoseThatTheDesktopNeedsChanged) {
  const QPalette changes = ReadableColours(LightPalette());
  EXPECT_TRUE(changes.isBrushSet(QPalette::Active, QPalette::Highlight));
  EXPECT_FALSE(changes.isBrushSet(QPalette::Active, QPalette::WindowText));
  EXPECT_FALSE(changes.isBrushSet(QPalette::Active, QPalette::Window));
  EXPECT_FALSE(changes.isBrushSet(QPalette::Disabled, QPalette::Text));
  EXPECT_GE(ContrastOf(changes.color(QPalette::Highlight), Qt::white), kLeastContrast);
}

// The desktop's theme changes while the program runs.
TEST(PaletteKeeper, FollowsTheDesktop) {
  const QPalette before = QApplication::palette();
  const auto contrast = [] {
    const QPalette now = QApplication::palette();
    return ContrastOf(now.color(QPalette::Highlight), now.color(QPalette::HighlightedText));
  };
  ASSERT_LT(contrast(), kLeastContrast);
  {
    const PaletteKeeper keeper;
    EXPECT_GE(contrast(), kLeastContrast);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), before.color(QPalette::Window));
    QApplication::setPalette(LightPalette());  // what a change of the theme comes as
    EXPECT_GE(contrast(), kLeastContrast);
  }
  QApplication::setPalette(QPalette());
}

}  // namespace
