// Which side a hip is on: from the picture's directions, from the user, never from a guess.
#include "landmarks/side.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <optional>
#include <string_view>

namespace {

using Landmarks::Circle;
using Landmarks::Marks;
using Landmarks::OrientationStatus;
using Landmarks::Point;
using Landmarks::ReadOrientation;
using Landmarks::Side;
using Landmarks::SideDoubt;

struct Text {
  std::string_view text;
  OrientationStatus status;
};

TEST(Orientation, IsGivenOrSaysWhyNot) {
  using enum OrientationStatus;
  for (const Text& row : {
           Text{"L\\F", Given},
           {"R\\F", Given},
           {"L\\H", Given},
           {"F\\R", Given},
           {"LF\\FR", Given},
           {"LF\\F", Given},
           {"LFP\\FRA", Given},
           {" L \\F ", Given},
           {std::string_view("L\\F\0", 4), Given},
           {"", Missing},
           {"  ", Missing},
           {"L", Unreadable},
           {"L\\", Unreadable},
           {"\\F", Unreadable},
           {"\\", Unreadable},
           {"L\\F\\A", Unreadable},
           {"L/F", Unreadable},
           {"l\\f", Unreadable},
           {"LEFT\\F", Unreadable},
           {"CR\\CD", Unreadable},
           {"A\\F", NotFrontal},
           {"L\\P", NotFrontal},
           {"AL\\F", NotFrontal},
           {"L\\R", Contradictory},
           {"L\\L", Contradictory},
           {"F\\H", Contradictory},
           {"LR\\F", Contradictory},
           {"LL\\F", Contradictory},
           {"LF\\FL", Contradictory},
       }) {
    EXPECT_EQ(ReadOrientation(row.text).status, row.status) << row.text;
  }
}

TEST(Orientation, SaysWhereThePatientsLeftAndHeadAre) {
  const Landmarks::Orientation usual = ReadOrientation("L\\F");
  EXPECT_EQ(usual.left, (Point{1.0, 0.0}));
  EXPECT_EQ(usual.head, (Point{0.0, -1.0}));
  const Landmarks::Orientation turned = ReadOrientation("F\\R");
  EXPECT_EQ(turned.left, (Point{0.0, -1.0}));
  EXPECT_EQ(turned.head, (Point{-1.0, 0.0}));
  const Landmarks::Orientation tilted = ReadOrientation("LF\\FR");
  EXPECT_GT(tilted.left.x, 0.8);
  EXPECT_LT(tilted.left.y, -0.3);
}

// The hip whose head is at `head`; the other one lies at the origin.
Landmarks::Frame FrameAt(Point head, Point towardsHead = {0.0, -1.0}) {
  Marks marks;
  marks.head = Circle{head, 25.0};
  marks.other = Circle{{0.0, 0.0}, 25.0};
  marks.towardsHead = towardsHead;
  return Landmarks::FrameOf(marks).value();
}

struct Found {
  const char* name;
  Point head;
  std::string_view orientation;
  std::optional<Side> said;
  std::optional<Side> side;
  SideDoubt doubt;
};

TEST(SideOfAHip, FollowsFromOrientationAndTheTwoHeads) {
  using enum Side;
  const std::optional<Side> nobody;
  for (const Found& row : {
           Found{"right head of the picture", {200, 5}, "L\\F", nobody, Left, SideDoubt::None},
           {"left head of the picture", {-200, 5}, "L\\F", nobody, Right, SideDoubt::None},
           {"flipped picture", {200, 5}, "R\\F", nobody, Right, SideDoubt::None},
           {"picture on its head", {200, 5}, "R\\H", nobody, Right, SideDoubt::None},
           {"picture on its side", {5, 200}, "F\\R", nobody, Right, SideDoubt::None},
           {"tilted", {200, 35}, "L\\F", nobody, Left, SideDoubt::None},
           {"the user says the same", {200, 5}, "L\\F", Left, Left, SideDoubt::None},
           {"the user says the other", {200, 5}, "L\\F", Right, nobody, SideDoubt::Disagrees},
           {"nothing says it", {200, 5}, "", nobody, nobody, SideDoubt::NotSaid},
           {"the user alone says it", {200, 5}, "", Right, Right, SideDoubt::None},
           {"unreadable", {200, 5}, "LEFT", nobody, nobody, SideDoubt::NotSaid},
           {"unreadable, and the user says it", {200, 5}, "LEFT", Left, Left, SideDoubt::None},
           {"contradictory", {200, 5}, "L\\R", nobody, nobody, SideDoubt::NotSaid},
           {"contradictory, and the user says it", {200, 5}, "L\\R", Left, Left, SideDoubt::None},
           {"from the side", {200, 5}, "A\\F", nobody, nobody, SideDoubt::NotSaid},
           {"heads one above the other", {5, 200}, "L\\F", Left, nobody, SideDoubt::Unclear},
       }) {
    const Landmarks::SideFinding finding =
        SideOf(FrameAt(row.head, {1.0, -1.0}), ReadOrientation(row.orientation), row.said);
    EXPECT_EQ(finding.side, row.side) << row.name;
    EXPECT_EQ(finding.doubt, row.doubt) << row.name;
  }
}

TEST(SideOfAHip, FollowsFromOrientationAndTheMidlineAsWell) {
  Marks marks;
  marks.head = Circle{{200.0, 100.0}, 25.0};
  marks.other = Landmarks::Midline{{{100.0, 0.0}, {100.0, 300.0}}};
  const auto finding =
      SideOf(Landmarks::FrameOf(marks).value(), ReadOrientation("L\\F"), std::nullopt);
  EXPECT_EQ(finding.side, Side::Left);
}

}  // namespace
