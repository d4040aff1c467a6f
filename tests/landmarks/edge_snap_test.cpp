// A rough circle snaps to the edge of the head, or says why it does not.
#include "landmarks/edge_snap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <span>
#include <string>
#include <vector>

#include "tests/support/phantom.h"
#include "tests/support/random_numbers.h"

namespace {

using Landmarks::Circle;
using Landmarks::GreyView;
using Landmarks::Point;
using Landmarks::Snap;
using Landmarks::SnapDoubt;
using Landmarks::SnapToEdge;

GreyView ViewOf(const Phantom::Picture& picture) {
  return {picture.grey, picture.width, picture.height, picture.spacing};
}

Point Direction(double angle) {
  return {std::cos(angle), std::sin(angle)};
}

// The larger of the errors of centre and radius.
double Apart(const Circle& a, const Circle& b) {
  return std::max(Landmarks::Length(a.centre - b.centre), std::abs(a.radius - b.radius));
}

Phantom::Anatomy AnyAnatomy(RandomNumbers& random) {
  Phantom::Anatomy anatomy;
  anatomy.headRadius = random.Uniform(20.0, 30.0);
  anatomy.halfInterhip = random.Uniform(80.0, 105.0);
  anatomy.neckRadius = anatomy.headRadius * random.Uniform(0.55, 0.7);
  anatomy.centreEdge = random.Uniform(0.1, 0.9);
  anatomy.jointSpace = random.Uniform(2.5, 5.0);
  return anatomy;
}

Phantom::Setup AnySetup(RandomNumbers& random, int number) {
  Phantom::Setup setup;
  setup.spacing = {random.Uniform(0.22, 0.38), random.Uniform(0.22, 0.38)};
  setup.width = static_cast<int>(430.0 / setup.spacing.column);
  setup.height = static_cast<int>(360.0 / setup.spacing.row);
  setup.sourceToHip = random.Uniform(900.0, 1050.0);
  setup.pelvis = {random.Uniform(-30.0, 30.0), random.Uniform(-60.0, 80.0)};
  setup.tilt = random.Uniform(-0.17, 0.17);
  setup.flipped = number % 2 == 1;
  setup.signalToNoise = random.Uniform(15.0, 60.0);
  setup.seed = static_cast<std::uint64_t>(number);
  return setup;
}

Phantom::Picture AroundTheHead(const Phantom::Anatomy& anatomy, const Phantom::Setup& setup) {
  const Circle head = Phantom::TruthOf(anatomy, setup).left.head.value();
  return Phantom::Render(anatomy, Phantom::PartOf(setup, head.centre, 1.6 * head.radius));
}

TEST(SnapToEdge, FindsTheHeadFromAStartFiveMillimetresOff) {
  RandomNumbers random(100);
  double worst = 0.0;
  for (int number = 0; number < 100; ++number) {
    SCOPED_TRACE(number);
    const Phantom::Anatomy anatomy = AnyAnatomy(random);
    const Phantom::Picture picture = AroundTheHead(anatomy, AnySetup(random, number));
    const Circle head = picture.truth.left.head.value();
    const Point off = 5.0 * Direction(random.Uniform(0.0, 2.0 * std::numbers::pi));
    const Circle rough = {head.centre + off, head.radius + random.Uniform(-4.0, 4.0)};
    const Snap snap = SnapToEdge(ViewOf(picture), rough);
    ASSERT_TRUE(snap.fit) << "doubt " << static_cast<int>(snap.doubt);
    EXPECT_EQ(snap.doubt, SnapDoubt::None);
    EXPECT_LE(Landmarks::Length(snap.fit->circle.centre - head.centre), 0.2);
    EXPECT_NEAR(snap.fit->circle.radius, head.radius, 0.2);
    EXPECT_GE(snap.seen, 0.6);
    worst = std::max(worst, Apart(snap.fit->circle, head));
  }
  RecordProperty("worst", std::to_string(worst));
}

// A whole pelvis, and starts anywhere on it and of any size, half of them near a head or the ball:
// what is found without doubt is one of these.
TEST(SnapToEdge, IsNeverSureOfAWrongCircle) {
  RandomNumbers random(3);
  int found = 0;
  for (int number = 0; number < 4; ++number) {
    Phantom::Setup setup = AnySetup(random, number);
    setup.spacing = {0.4, 0.4};
    setup.width = 1075;
    setup.height = 900;
    setup.ball = Phantom::Ball{};
    if (number == 3) setup.signalToNoise = 0.0;  // every faint line of the bones is clear
    const Phantom::Picture picture = Phantom::Render(AnyAnatomy(random), setup);
    const std::vector<Circle> truths = {picture.truth.left.head.value(),
                                        picture.truth.right.head.value(),
                                        picture.truth.ball.value()};
    for (std::size_t start = 0; start < 60; ++start) {
      Circle rough = {{random.Uniform(0.0, 430.0), random.Uniform(0.0, 360.0)},
                      random.Uniform(12.0, 45.0)};
      if (start % 2 == 0) {
        const Circle& truth = truths[start / 2 % truths.size()];
        const Point off = {random.Uniform(-12.0, 12.0), random.Uniform(-12.0, 12.0)};
        rough = {truth.centre + off, truth.radius * random.Uniform(0.7, 1.4)};
      }
      const Snap snap = SnapToEdge(ViewOf(picture), rough);
      EXPECT_EQ(snap.fit.has_value(), snap.doubt == SnapDoubt::None);
      if (!snap.fit) continue;
      ++found;
      double nearest = std::numeric_limits<double>::infinity();
      for (const Circle& truth : truths) {
        nearest = std::min(nearest, Apart(snap.fit->circle, truth));
      }
      EXPECT_LE(nearest, 0.3) << "picture " << number << ", start " << start;
    }
  }
  EXPECT_GT(found, 20);
}

TEST(SnapToEdge, RefusesANeckWithoutAHead) {
  RandomNumbers random(5);
  for (int number = 0; number < 4; ++number) {
    Phantom::Anatomy anatomy = AnyAnatomy(random);
    anatomy.hasHeads = false;
    const Phantom::Picture picture = AroundTheHead(anatomy, AnySetup(random, number));
    const Circle head = picture.truth.left.head.value();
    for (const double size : {0.7, 0.9, 1.1}) {
      for (const Point off : {Point{0.0, 0.0}, {6.0, 3.0}, {-5.0, 5.0}}) {
        const Snap snap = SnapToEdge(ViewOf(picture), {head.centre + off, size * head.radius});
        EXPECT_FALSE(snap.fit) << number << ", size " << size;
      }
    }
  }
}

TEST(SnapToEdge, RefusesSoftTissueAlone) {
  Phantom::Anatomy anatomy;
  anatomy.hasBones = false;
  const Phantom::Picture picture = AroundTheHead(anatomy, {});
  const Snap snap = SnapToEdge(ViewOf(picture), picture.truth.left.head.value());
  EXPECT_EQ(snap.doubt, SnapDoubt::NoEdge);
  EXPECT_FALSE(snap.fit);
}

struct Flat {
  const char* name;
  double level;
  double noise;
};

TEST(SnapToEdge, RefusesNoiseAndUniformPictures) {
  RandomNumbers random(9);
  for (const Flat& row : {Flat{"uniform", 1500.0, 0.0},
                          {"black", 0.0, 0.0},
                          {"white", 65535.0, 0.0},
                          {"rounding", 1500.5, 0.3},
                          {"little noise", 1500.0, 5.0},
                          {"much noise", 30000.0, 4000.0},
                          {"noise cut off at black", 10.0, 30.0}}) {
    std::vector<std::uint16_t> grey(160000);
    for (std::uint16_t& level : grey) {
      const double made = std::round(random.Normal(row.level, row.noise));
      level = static_cast<std::uint16_t>(std::clamp(made, 0.0, 65535.0));
    }
    for (const double radius : {10.0, 18.0, 28.0}) {
      const Snap snap = SnapToEdge({grey, 400, 400, {0.2, 0.2}}, {{40.0, 40.0}, radius});
      EXPECT_EQ(snap.doubt, SnapDoubt::NoEdge) << row.name << ' ' << radius;
      EXPECT_FALSE(snap.fit);
    }
  }
}

// The obturator foramen, an artefact: round and dark is no head.
TEST(SnapToEdge, RefusesWhatIsRoundAndDark) {
  Phantom::Picture picture = AroundTheHead({}, {});
  for (std::uint16_t& grey : picture.grey) {
    grey = static_cast<std::uint16_t>(Phantom::kMostGrey - grey);
  }
  EXPECT_FALSE(SnapToEdge(ViewOf(picture), picture.truth.left.head.value()).fit);
}

TEST(SnapToEdge, RefusesAHeadThatIsMostlyOffThePicture) {
  const Phantom::Anatomy anatomy;
  const Circle whole = Phantom::TruthOf(anatomy, {}).left.head.value();
  const Point corner = whole.centre + Point{whole.radius, -whole.radius};
  const Phantom::Picture picture =
      Phantom::Render(anatomy, Phantom::PartOf({}, corner, 1.2 * whole.radius));
  const Snap snap = SnapToEdge(ViewOf(picture), picture.truth.left.head.value());
  EXPECT_FALSE(snap.fit);
  EXPECT_NE(snap.doubt, SnapDoubt::None);
}

TEST(SnapToEdge, IsNotSureOfAnythingElseFromAStartThatIsTooFarOff) {
  const Phantom::Picture picture = AroundTheHead({}, {});
  const Circle head = picture.truth.left.head.value();
  for (const Circle& rough :
       {Circle{head.centre + Point{14.0, 0.0}, head.radius},
        Circle{head.centre - Point{0.0, 14.0}, head.radius}, Circle{head.centre, 0.6 * head.radius},
        Circle{head.centre, 1.6 * head.radius}}) {
    const Snap snap = SnapToEdge(ViewOf(picture), rough);
    EXPECT_FALSE(snap.fit && Apart(snap.fit->circle, head) > 0.2);
  }
}

TEST(SnapToEdge, RefusesAStartThatIsNoCircleOnThePicture) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const Phantom::Picture picture = AroundTheHead({}, {});
  const GreyView view = ViewOf(picture);
  for (const Circle& rough :
       {Circle{{nan, 30.0}, 25.0}, Circle{{30.0, 30.0}, nan}, Circle{{30.0, 30.0}, 0.0},
        Circle{{30.0, 30.0}, -25.0}, Circle{{30.0, 30.0}, 1.0},
        Circle{{30.0, 30.0}, std::numeric_limits<double>::infinity()}}) {
    EXPECT_EQ(SnapToEdge(view, rough).doubt, SnapDoubt::NoStart);
  }
  const GreyView cut = {view.grey.first(view.grey.size() - 1), view.width, view.height,
                        view.spacing};
  EXPECT_EQ(SnapToEdge(cut, {{30.0, 30.0}, 25.0}).doubt, SnapDoubt::NoStart);
  EXPECT_EQ(SnapToEdge({}, {{30.0, 30.0}, 25.0}).doubt, SnapDoubt::NoStart);
  for (const Circle& rough : {Circle{{-900.0, 30.0}, 25.0}, Circle{{30.0, 5000.0}, 25.0}}) {
    EXPECT_FALSE(SnapToEdge(view, rough).fit);
  }
}

TEST(SnapToEdge, ReturnsTheEdgePointsItUsed) {
  const Phantom::Picture picture = AroundTheHead({}, {});
  const Circle head = picture.truth.left.head.value();
  const Snap snap = SnapToEdge(ViewOf(picture), {head.centre + Point{3.0, 4.0}, head.radius});
  ASSERT_TRUE(snap.fit);
  EXPECT_EQ(snap.fit->points, snap.edge.size());
  EXPECT_NEAR(snap.seen, static_cast<double>(snap.edge.size()) / 180.0, 1e-12);
  for (const Point& point : snap.edge) {
    EXPECT_NEAR(Landmarks::Length(point - head.centre), head.radius, 0.8);
  }
  const auto fit = Landmarks::FitCircle(snap.edge);
  EXPECT_LE(Apart(fit->circle, snap.fit->circle), 1e-9);
}

// A dense core within a round bone, or a cap upon it: two outlines, each whole and of equal weight.
TEST(SnapToEdge, RefusesToChooseBetweenTwoWholeOutlines) {
  constexpr int kSide = 400;
  std::vector<std::uint16_t> grey;
  for (int row = 0; row < kSide; ++row) {
    for (int column = 0; column < kSide; ++column) {
      const double distance = 0.2 * std::hypot(column - 199.5, row - 200.5);
      grey.push_back(distance < 22.0 ? 2000 : distance < 27.0 ? 1500 : 1000);
    }
  }
  const Snap snap = SnapToEdge({grey, kSide, kSide, {0.2, 0.2}}, {{40.0, 40.0}, 24.5});
  EXPECT_EQ(snap.doubt, SnapDoubt::OtherRound);
  EXPECT_FALSE(snap.fit);
}

// Nothing rests on how many grey levels there are, as long as noise spans several of them.
TEST(SnapToEdge, FindsTheSameInMoreGreyLevels) {
  Phantom::Picture picture = AroundTheHead({}, {});
  const Circle rough = picture.truth.left.head.value();
  const Snap once = SnapToEdge(ViewOf(picture), rough);
  for (std::uint16_t& grey : picture.grey) grey = static_cast<std::uint16_t>(8 * grey);
  const Snap more = SnapToEdge(ViewOf(picture), rough);
  ASSERT_TRUE(once.fit && more.fit);
  EXPECT_LE(Apart(once.fit->circle, more.fit->circle), 1e-6);
}

// The mean over five by five pixels is a blur of 0.28 mm.
TEST(SnapToEdge, FindsTheHeadOnABlurredPicture) {
  Phantom::Setup setup;
  setup.spacing = {0.2, 0.2};
  setup.width = 2100;
  Phantom::Picture picture = AroundTheHead({}, setup);
  const std::vector<std::uint16_t> sharp = picture.grey;
  const auto at = [&](int row, int column) {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(picture.width) +
           static_cast<std::size_t>(column);
  };
  for (int row = 2; row < picture.height - 2; ++row) {
    for (int column = 2; column < picture.width - 2; ++column) {
      int sum = 0;
      for (int i = 0; i < 25; ++i) {
        sum += sharp[at(row + i / 5 - 2, column + i % 5 - 2)];
      }
      picture.grey[at(row, column)] = static_cast<std::uint16_t>(sum / 25);
    }
  }
  const Circle head = picture.truth.left.head.value();
  const Snap snap = SnapToEdge(ViewOf(picture), {head.centre + Point{-3.0, 4.0}, head.radius});
  ASSERT_TRUE(snap.fit);
  EXPECT_LE(Apart(snap.fit->circle, head), 0.2);
}

}  // namespace
