// Bars of shares: their lengths, their words, their colours.
#include "platform/share_bars.h"

#include <gtest/gtest.h>

#include <QImage>

#include "platform/readable_palette.h"

namespace {

// Coloured pixels in the middle of a row.
int LengthOf(ShareBars& bars, int row) {
  const QImage seen = bars.grab().toImage();
  const QColor ground = bars.palette().color(QPalette::Window);
  const QRgb ink = ReadableOn(ground, bars.palette().color(QPalette::Highlight)).rgb();
  const int rows = static_cast<int>(bars.Bars().size());
  const int y = (2 * row + 1) * seen.height() / (2 * rows);
  int length = 0;
  for (int x = 0; x < seen.width(); ++x) length += seen.pixel(x, y) == ink ? 1 : 0;
  return length;
}

TEST(ShareBars, AreAsLongAsTheirShares) {
  ShareBars bars;
  bars.Show({{"first", 0.25}, {"second", 0.75}, {"third", 0.0}, {"fourth", {}}});
  bars.resize(bars.sizeHint());
  EXPECT_GT(LengthOf(bars, 0), 20);
  EXPECT_NEAR(LengthOf(bars, 1), 3 * LengthOf(bars, 0), 3);
  EXPECT_EQ(LengthOf(bars, 2), 0);
  EXPECT_EQ(LengthOf(bars, 3), 0);
}

TEST(ShareBars, StretchWithTheWindow) {
  ShareBars bars;
  bars.Show({{"first", 1.0}});
  bars.resize(bars.sizeHint());
  const int narrow = LengthOf(bars, 0);
  bars.resize(bars.sizeHint() + QSize(200, 0));
  EXPECT_NEAR(LengthOf(bars, 0), narrow + 200, 2);
}

TEST(ShareBars, AreSaidInWords) {
  ShareBars bars;
  EXPECT_EQ(bars.accessibleDescription(), "Empty.");
  bars.Show({{"CE", 0.462}, {"l/2", 0.003}, {"C", 0.0}, {"H", {}}});
  EXPECT_EQ(bars.accessibleDescription(), "CE 46 %, l/2 < 1 %, C 0 %");
  bars.Show({{"CE", {}}});
  EXPECT_EQ(bars.accessibleDescription(), "Empty.");
}

TEST(ShareBars, HaveRoomForEveryLabel) {
  ShareBars bars;
  bars.Show({{"a", 0.5}});
  const QSize one = bars.sizeHint();
  bars.Show({{"a", 0.5}, {"a label that is a good deal longer", 0.5}});
  EXPECT_EQ(bars.sizeHint().height(), 2 * one.height());
  EXPECT_GT(bars.sizeHint().width(), one.width() + 100);
}

}  // namespace
