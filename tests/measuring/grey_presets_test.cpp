// Windows to choose from, and what a drag makes of one.
#include "measuring/grey_presets.h"

#include <gtest/gtest.h>

#include "tests/measuring/view_fixture.h"

namespace {

using namespace Measuring;
using Radiography::BrightnessTable;
using Radiography::Window;

// A thousand pixels with each level from 0 to 999 once.
std::shared_ptr<Radiography::Radiograph> Even() {
  return MakeRadiograph(50, 20, [](int x, int y) { return 50 * y + x; });
}

TEST(GreyPresets, TheFilesComeFirstByNameThenFullRangeAndBone) {
  auto radiograph = Even();
  radiograph->windows = {{500, 100, Radiography::WindowShape::Linear, "SOFT"}, {600, 50, {}, ""}};
  radiograph->tables = {{0, 8, {0, 1, 2}, " HARD \n"}};
  const auto presets = PresetsOf(*radiograph);
  ASSERT_EQ(presets.size(), 5U);
  EXPECT_EQ(presets[0].name, "SOFT");
  EXPECT_EQ(std::get<Window>(presets[0].look).width, 100.0);
  EXPECT_EQ(presets[1].name, "Window 2");
  EXPECT_EQ(presets[2].name, "HARD");
  EXPECT_EQ(std::get<BrightnessTable>(presets[2].look).entries.size(), 3U);
  EXPECT_EQ(presets[3].name, "Full range");
  EXPECT_EQ(std::get<Window>(presets[3].look).centre, 499.5);
  EXPECT_EQ(presets[4].name, "Bone");
}

TEST(GreyPresets, BoneLeavesOutTheDarkThreeTenthsAndTheBrightestHundredth) {
  const Window bone = BoneWindow(*Even());
  EXPECT_NEAR(bone.centre - bone.width / 2.0, 300.0, 1.0);
  EXPECT_NEAR(bone.centre + bone.width / 2.0, 990.0, 1.0);
}

TEST(GreyPresets, WhereLowLevelsAreBrightBoneLiesAmongThem) {
  auto radiograph = Even();
  radiograph->inverted = true;
  const Window bone = BoneWindow(*radiograph);
  EXPECT_NEAR(bone.centre - bone.width / 2.0, 10.0, 1.0);
  EXPECT_NEAR(bone.centre + bone.width / 2.0, 700.0, 1.0);
}

TEST(GreyPresets, BoneIsInTheFilesValues) {
  auto radiograph = Even();
  radiograph->slope = 2.0;
  radiograph->intercept = -100.0;
  const Window bone = BoneWindow(*radiograph);
  EXPECT_NEAR(bone.centre - bone.width / 2.0, 500.0, 2.0);
  EXPECT_NEAR(bone.centre + bone.width / 2.0, 1880.0, 2.0);
}

TEST(GreyPresets, APictureOfOneLevelStillHasAWindow) {
  EXPECT_GT(BoneWindow(*MakeRadiograph(4, 4, [](int, int) { return 5; })).width, 0.0);
}

TEST(GreyPresets, ADragToTheRightWidensAndOneUpwardBrightens) {
  const Window full{2048, 4096, {}, {}};
  const Window from{1000, 400, Radiography::WindowShape::Linear, "SOFT"};
  const Window wide = Dragged(from, {200, 0}, full, false);
  EXPECT_DOUBLE_EQ(wide.width, 800.0);
  EXPECT_DOUBLE_EQ(wide.centre, 1000.0);
  EXPECT_EQ(wide.name, "") << "it is the file's no more";
  EXPECT_DOUBLE_EQ(Dragged(from, {-200, 0}, full, false).width, 200.0);
  EXPECT_DOUBLE_EQ(Dragged(from, {0, -100}, full, false).centre, 900.0);
  EXPECT_DOUBLE_EQ(Dragged(from, {0, -100}, full, true).centre, 1100.0);
}

TEST(GreyPresets, NoDragLosesThePicture) {
  const Window full{2048, 4096, {}, {}};
  const Window from{1000, 400, {}, {}};
  const Window wide = Dragged(from, {1e5, 1e5}, full, false);
  EXPECT_LE(wide.width, 4.0 * 4096);
  EXPECT_LE(wide.centre, 2048 + 4096);
  EXPECT_GT(Dragged(from, {-1e5, 0}, full, false).width, 0.0);
}

TEST(GreyPresets, InvertedTurnsEveryBrightness) {
  const auto radiograph = Even();
  const GreyLook look = PresetsOf(*radiograph).front().look;
  const auto plain = BrightnessOf(*radiograph, look, false);
  const auto inverted = BrightnessOf(*radiograph, look, true);
  for (std::size_t i = 0; i < plain.size(); ++i) EXPECT_EQ(plain[i] + inverted[i], 255);
}

TEST(GreyPresets, ATableIsDraggedFromTheWindowThatSpansIt) {
  const Window window = WindowOf(BrightnessTable{100, 8, std::vector<std::uint16_t>(51), ""});
  EXPECT_EQ(window.centre, 125.0);
  EXPECT_EQ(window.width, 51.0);
}

}  // namespace
