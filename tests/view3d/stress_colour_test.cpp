// The colour of every band. The table was worked out with mpmath.
#include "view3d/stress_colour.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/support/row_name.h"

namespace {

struct ColourRow {
  std::string name;
  double from, to;  // percent, both in the band
  unsigned red, green, blue;
};

class StressColourTest : public testing::TestWithParam<ColourRow> {};

TEST_P(StressColourTest, OneColourForTheWholeBand) {
  const ColourRow& row = GetParam();
  const Colour wanted = row.red | row.green << 8U | row.blue << 16U;
  for (const double percent : {row.from, (row.from + row.to) / 2.0, row.to}) {
    EXPECT_EQ(StressColour(percent), wanted) << percent;
  }
}

double Below(double value) {
  return std::nextafter(value, -1e9);
}

INSTANTIATE_TEST_SUITE_P(Bands, StressColourTest,
                         testing::Values(ColourRow{"Minus20", -20, Below(-10), 16, 27, 203},
                                         ColourRow{"Minus10", -10, -1e-9, 32, 50, 221},
                                         ColourRow{"Band5", 0, Below(10), 54, 84, 221},
                                         ColourRow{"Band15", 10, Below(20), 76, 125, 203},
                                         ColourRow{"Band25", 20, Below(30), 94, 167, 172},
                                         ColourRow{"Band35", 30, Below(40), 106, 199, 134},
                                         ColourRow{"Band45", 40, Below(50), 118, 213, 96},
                                         ColourRow{"Band55", 50, Below(60), 134, 204, 63},
                                         ColourRow{"Band65", 60, Below(70), 158, 174, 38},
                                         ColourRow{"Band75", 70, Below(80), 185, 134, 21},
                                         ColourRow{"Band85", 80, Below(90), 208, 92, 11},
                                         ColourRow{"Band95", 90, Below(100), 221, 56, 5},
                                         ColourRow{"TheTopItself", 100, 100, 221, 31, 2},
                                         ColourRow{"JustAboveTheTop", std::nextafter(100.0, 200.0),
                                                   104, 255, 0, 0},
                                         ColourRow{"Above", 105, 800, 255, 0, 0}),
                         RowName());

TEST(StressColourLimitsTest, NumbersBeyondTheScaleHaveAColourToo) {
  EXPECT_EQ(StressColour(std::numeric_limits<double>::infinity()), kRed);
  EXPECT_EQ(StressColour(-std::numeric_limits<double>::infinity()), kBlack);
  EXPECT_EQ(StressColour(std::numeric_limits<double>::quiet_NaN()), StressColour(5.0));
}

}  // namespace
