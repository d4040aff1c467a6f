// Errors of marks carried into measurements and results: against closed forms, and against marking
// anew many times.
#include "measuring/mark_uncertainty.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "tests/support/random_numbers.h"

namespace {

using Landmarks::Circle;
using Landmarks::Point;
using Measuring::MarkedHip;
using Sila::Measurement;
using Uncertainty::Column;

enum Which : std::size_t { kLizm, kXizm, kZizm, kCizm, kHizm, kThetaCE, kHeadRadius, kMeasured };
using Numbers = std::array<double, kMeasured>;

constexpr double kMagnification = 1.2;

const Uncertainty::Points& SharedPoints() {
  static const Uncertainty::Points points(Measuring::kMarkedHipSources);
  return points;
}

// A left hip on an upright picture, in mm on the picture: lateral is to the right.
struct Places {
  Point head = {300.0, 260.0};
  double betweenHeads = 249.6;
  Point trochanter = {72.0, 6.0};  // from the head, as the other points; y downward
  Point crestTop = {-5.0, -192.0};
  Point crestLateral = {52.8, -150.0};
  Point socketEdge = {16.0, -28.0};
  double radius = 30.0;
};

MarkedHip HipAt(const Places& at) {
  MarkedHip hip;
  hip.marks.head = Circle{at.head, at.radius};
  hip.marks.other = Circle{at.head - Point{at.betweenHeads, 0.0}, at.radius};
  hip.marks.trochanter = at.head + at.trochanter;
  hip.marks.crestTop = at.head + at.crestTop;
  hip.marks.crestLateral = at.head + at.crestLateral;
  hip.marks.socketEdge = at.head + at.socketEdge;
  hip.magnification = {kMagnification, 0.0};
  hip.rest.values.bodyWeight = Sila::Kilograms{70.0};
  return hip;
}

Landmarks::CircleCovariance CentreAndRadius(double x, double y, double radius) {
  return {{{x * x, 0.0, 0.0}, {0.0, y * y, 0.0}, {0.0, 0.0, radius * radius}}};
}

Numbers SpreadsOf(const MarkedHip& hip) {
  const auto spreads = ComputeMeasurementUncertainty(hip, SharedPoints(), {.trials = 1U << 15});
  Numbers u{};
  for (std::size_t i = 0; i < kMeasured; ++i) u[i] = spreads[i].value().u.value();
  return u;
}

// How much each measurement changes when a mark moves by 1 mm: right, and down.
struct Slopes {
  Numbers right{};
  Numbers down{};
};

// A head that moves down turns the horizontal by 1 / distance; one that moves laterally does not.
Slopes SlopesOfHead(const Places& at) {
  const double turn = 1.0 / at.betweenHeads;
  const auto& edge = at.socketEdge;
  const double reach = edge.x * edge.x + edge.y * edge.y;
  Slopes s;
  s.right = {0.5, 0.0, -1.0, -1.0, 0.0, edge.y / reach, 0.0};
  s.down[kXizm] = -1.0 - at.trochanter.x * turn;
  s.down[kZizm] = at.trochanter.y * turn;
  s.down[kCizm] = at.crestLateral.y * turn;
  s.down[kHizm] = 1.0 + at.crestTop.x * turn;
  s.down[kThetaCE] = -edge.x / reach - turn;
  return s;
}

Slopes SlopesOfOther(const Places& at) {
  const double turn = -1.0 / at.betweenHeads;
  Slopes s;
  s.right[kLizm] = -0.5;
  s.down[kXizm] = -at.trochanter.x * turn;
  s.down[kZizm] = at.trochanter.y * turn;
  s.down[kCizm] = at.crestLateral.y * turn;
  s.down[kHizm] = at.crestTop.x * turn;
  s.down[kThetaCE] = -turn;
  return s;
}

double InUnit(std::size_t measurement) {
  return measurement == kThetaCE ? 1.0 : 1.0 / kMagnification;
}

TEST(MarkErrors, GiveTheMeasurementsTheUncertaintyOfTheClosedForm) {
  const Places at;
  MarkedHip hip = HipAt(at);
  hip.errors.head = CentreAndRadius(0.4, 0.5, 0.3);
  hip.errors.other = CentreAndRadius(0.6, 0.7, 0.3);
  hip.errors.trochanter = 0.9;
  hip.errors.crestTop = 1.0;
  hip.errors.crestLateral = 1.1;
  hip.errors.socketEdge = 0.5;
  const Slopes head = SlopesOfHead(at);
  const Slopes other = SlopesOfOther(at);
  const double reach = std::hypot(at.socketEdge.x, at.socketEdge.y);
  const Numbers own = {0.0, 0.9, 0.9, 1.1, 1.0, 0.5 / reach, 0.3};
  const Numbers got = SpreadsOf(hip);
  for (std::size_t i = 0; i < kMeasured; ++i) {
    const double variance = std::pow(0.4 * head.right[i], 2) + std::pow(0.5 * head.down[i], 2) +
                            std::pow(0.6 * other.right[i], 2) + std::pow(0.7 * other.down[i], 2) +
                            own[i] * own[i];
    const double expected = std::sqrt(variance) * InUnit(i);
    EXPECT_NEAR(got[i] / expected, 1.0, 0.005) << i;
  }
}

// Variance of each measurement and, through that of their sums, the covariance of each pair.
std::array<Numbers, kMeasured> Covariances(const MarkedHip& hip) {
  const Uncertainty::BlockModel model = MeasurementModel(hip);
  constexpr std::size_t kPairs = kMeasured * kMeasured;
  const Uncertainty::BlockModel sums = [&](std::span<const Column> sources, std::size_t trials,
                                           std::span<Column> results) {
    std::vector<Column> single(kMeasured);
    model(sources, trials, single);
    for (std::size_t i = 0; i < kPairs; ++i) {
      for (std::size_t k = 0; k < trials; ++k) {
        results[i].at[k] = single[i / kMeasured].at[k] + single[i % kMeasured].at[k];
      }
    }
  };
  const auto sources = SourcesOf(hip);
  const auto got = Propagate(sources, sums, kPairs, SharedPoints(), {.trials = 1U << 15});
  const auto variance = [&](std::size_t i, std::size_t k) {
    return std::pow(got.results[i * kMeasured + k].u.value(), 2);
  };
  std::array<Numbers, kMeasured> covariances{};
  for (std::size_t i = 0; i < kMeasured; ++i) {
    for (std::size_t k = 0; k < kMeasured; ++k) {
      covariances[i][k] = (variance(i, k) - variance(i, i) / 4.0 - variance(k, k) / 4.0) / 2.0;
    }
  }
  return covariances;
}

TEST(MarkErrors, OfTheHeadsCentreAreSharedByTheMeasurementsThatStartThere) {
  const Places at;
  MarkedHip hip = HipAt(at);
  hip.errors.head = CentreAndRadius(0.8, 0.8, 0.3);
  hip.errors.trochanter = 0.4;
  hip.errors.crestTop = 0.4;
  hip.errors.crestLateral = 0.4;
  const auto got = Covariances(hip);
  const Slopes head = SlopesOfHead(at);
  const auto correlation = [&](std::size_t i, std::size_t k) {
    return got[i][k] / std::sqrt(got[i][i] * got[k][k]);
  };
  for (std::size_t i = kLizm; i <= kThetaCE; ++i) {
    for (std::size_t k = i + 1; k <= kThetaCE; ++k) {
      // The trochanter's own error moves x and z independently; no point is shared otherwise.
      const double shared = 0.64 * (head.right[i] * head.right[k] + head.down[i] * head.down[k]);
      const auto own = [](std::size_t m) { return m == kLizm || m == kThetaCE ? 0.0 : 0.16; };
      const auto variance = [&](std::size_t m) {
        return 0.64 * (std::pow(head.right[m], 2) + std::pow(head.down[m], 2)) + own(m);
      };
      EXPECT_NEAR(correlation(i, k), shared / std::sqrt(variance(i) * variance(k)), 0.01)
          << i << ' ' << k;
    }
  }
  EXPECT_LT(correlation(kXizm, kHizm), -0.6);
  EXPECT_GT(correlation(kZizm, kCizm), 0.6);
  EXPECT_NEAR(correlation(kHeadRadius, kHizm), 0.0, 0.01);
}

// The other way about: errors of the same size that know nothing of each other.
TEST(MarkErrors, AreNotThoseOfIndependentMeasurements) {
  MarkedHip hip = HipAt({});
  hip.errors.head = CentreAndRadius(1.0, 1.0, 0.3);
  const Numbers u = SpreadsOf(hip);
  const Uncertainty::Settings settings = {.trials = 1U << 15};
  const auto shared = ComputeHipUncertainty(hip, InputsOf(hip), SharedPoints(), settings);
  Uncertainty::HipReading reading{.values = InputsOf(hip)};
  for (std::size_t i = 0; i < kMeasured; ++i) {
    const auto id = std::array{Measurement::Lizm,      Measurement::Xizm, Measurement::Zizm,
                               Measurement::Cizm,      Measurement::Hizm, Measurement::ThetaCE,
                               Measurement::HeadRadius}[i];
    const double perUnit = i == kThetaCE ? 1.0 : i == kHeadRadius ? 0.001 : 0.1;
    reading.errors[IndexOf(id)].u = perUnit * u[i];
  }
  const auto apart = ComputeHipUncertainty(reading, SharedPoints(), settings);
  for (const Sila::Result result : {Sila::Result::RWb, Sila::Result::ThetaR}) {
    const double together = *shared.results[IndexOf(result)]->spread.u;
    const double alone = *apart.results[IndexOf(result)]->spread.u;
    RecordProperty("ratio" + std::to_string(IndexOf(result)), std::to_string(together / alone));
    EXPECT_GT(std::abs(together / alone - 1.0), 0.1) << IndexOf(result);
    EXPECT_EQ(shared.results[IndexOf(result)]->estimate, apart.results[IndexOf(result)]->estimate);
  }
}

TEST(ErrorOfTheScale, IsOneFactorForAllLengthsAndLeavesTheAngle) {
  MarkedHip hip = HipAt({});
  hip.magnification.u = 0.024;
  const auto covariances = Covariances(hip);
  const Landmarks::Measurements m = Measure(hip.marks, hip.magnification);
  const Numbers lengths = {m.halfInterhip->value, m.trochanterX->value, m.trochanterZ->value,
                           m.crestWidth->value,   m.crestHeight->value, 0.0,
                           m.headRadius->value};
  for (std::size_t i = 0; i < kMeasured; ++i) {
    EXPECT_NEAR(std::sqrt(covariances[i][i]), 0.02 * lengths[i], 0.001 * lengths[i] + 1e-12) << i;
    for (std::size_t k = 0; k < kMeasured; ++k) {
      EXPECT_NEAR(covariances[i][k], std::sqrt(covariances[i][i] * covariances[k][k]), 1e-6);
    }
  }
}

std::vector<Point> MarksOnTheUpperHalf(const Circle& circle, RandomNumbers* random, double u) {
  std::vector<Point> marks;
  for (int i = 0; i < 8; ++i) {
    const double angle = -std::numbers::pi * i / 7.0;
    Point mark = circle.centre + circle.radius * Point{std::cos(angle), std::sin(angle)};
    if (random) mark = mark + Point{random->Normal(0.0, u), random->Normal(0.0, u)};
    marks.push_back(mark);
  }
  return marks;
}

// Outline marks moved one by one and the circle fitted anew, against one draw of the circle.
TEST(ErrorOfACircle, IsThatOfMarkingItsOutlineAnew) {
  constexpr double kMark = 0.4;
  constexpr int kTrials = 20000;
  MarkedHip hip = HipAt({});
  const Circle head = hip.marks.head.value();
  const auto fit = Landmarks::FitCircle(MarksOnTheUpperHalf(head, nullptr, 0.0));
  hip.errors.head = Measuring::ErrorOfCircle(fit.value(), kMark);
  const Numbers drawn = SpreadsOf(hip);
  const double covariance = Covariances(hip)[kHizm][kHeadRadius];

  RandomNumbers random(8);
  double sum = 0.0, squares = 0.0, radii = 0.0, radiusSquares = 0.0, products = 0.0;
  for (int i = 0; i < kTrials; ++i) {
    Landmarks::Marks marks = hip.marks;
    marks.head = Landmarks::FitCircle(MarksOnTheUpperHalf(head, &random, kMark))->circle;
    const Landmarks::Measurements m = Measure(marks, hip.magnification);
    const double height = m.crestHeight->value - 160.0;
    const double radius = m.headRadius->value - 25.0;
    sum += height;
    squares += height * height;
    radii += radius;
    radiusSquares += radius * radius;
    products += height * radius;
  }
  const auto central = [&](double a, double b, double ab) {
    return ab / kTrials - a * b / kTrials / kTrials;
  };
  EXPECT_NEAR(drawn[kHizm] / std::sqrt(central(sum, sum, squares)), 1.0, 0.03);
  EXPECT_NEAR(drawn[kHeadRadius] / std::sqrt(central(radii, radii, radiusSquares)), 1.0, 0.03);
  EXPECT_NEAR(covariance / central(sum, radii, products), 1.0, 0.06);
  EXPECT_GT(covariance, 0.5 * drawn[kHizm] * drawn[kHeadRadius]);
}

TEST(ErrorOfACircle, IsItsScatterWhereThatIsLargerThanWhatIsSaidOfAMark) {
  RandomNumbers random(4);
  const auto fit = Landmarks::FitCircle(MarksOnTheUpperHalf({{0.0, 0.0}, 25.0}, &random, 0.5));
  const auto asSaid = Measuring::ErrorOfCircle(fit.value(), 3.0);
  EXPECT_DOUBLE_EQ(asSaid[2][2], 9.0 * fit->perMark[2][2]);
  const auto asSeen = Measuring::ErrorOfCircle(fit.value(), 0.01);
  EXPECT_DOUBLE_EQ(std::sqrt(asSeen[2][2]), fit->u->radius);
}

TEST(MarkedHip, GivesTheModelItsMeasurementsInHeldUnitsAndTheRest) {
  MarkedHip hip = HipAt({});
  hip.rest.values.zasuk = {0.1};
  const Sila::HipInputs inputs = InputsOf(hip);
  EXPECT_NEAR(inputs.lizm, 10.4, 1e-12);
  EXPECT_NEAR(inputs.xizm, 0.5, 1e-12);
  EXPECT_NEAR(inputs.zizm, 6.0, 1e-12);
  EXPECT_NEAR(inputs.Cizm, 4.4, 1e-12);
  EXPECT_NEAR(inputs.Hizm, 16.0, 1e-12);
  EXPECT_NEAR(inputs.thetaCE, std::atan2(16.0, 28.0), 1e-12);
  EXPECT_NEAR(inputs.headRadius, 0.025, 1e-15);
  EXPECT_EQ(inputs.zasuk, 0.1);
  EXPECT_EQ(inputs.bodyWeight.value(), 70.0);
  Sila::HipState state;
  ASSERT_EQ(ComputeHip(inputs, state), Sila::HipOutcome::Ok);
  const auto found = ComputeHipUncertainty(hip, InputsOf(hip), SharedPoints(), {});
  ASSERT_EQ(found.outcome, Sila::HipOutcome::Ok);
  for (const Sila::ResultRow& row : Sila::kResults) {
    EXPECT_EQ(found.results[IndexOf(row.id)]->estimate, row.value(state.results));
    EXPECT_EQ(found.results[IndexOf(row.id)]->spread.u, 0.0) << "no mark errs";
  }
}

// What lacks its marks is typed, with an error of its own.
TEST(MarkedHip, TakesATypedReadingWhereMarksAreMissing) {
  MarkedHip hip = HipAt({});
  hip.marks.crestTop.reset();
  hip.rest.values.Hizm = {15.0};
  hip.rest.errors[IndexOf(Measurement::Hizm)].u = 0.4;
  hip.rest.errors[IndexOf(Measurement::Lizm)].u = 5.0;  // measured: not used
  EXPECT_EQ(InputsOf(hip).Hizm, 15.0);
  EXPECT_FALSE(ComputeMeasurementUncertainty(hip, SharedPoints(), {})[kHizm]);
  EXPECT_TRUE(ComputeMeasurementUncertainty(hip, SharedPoints(), {})[kXizm]);
  const auto mixed = ComputeHipUncertainty(hip, InputsOf(hip), SharedPoints(), {});
  Uncertainty::HipReading reading{.values = InputsOf(hip)};
  reading.errors[IndexOf(Measurement::Hizm)].u = 0.4;
  const auto typed = ComputeHipUncertainty(reading, SharedPoints(), {});
  const auto u = [](const Uncertainty::HipUncertainty& found) {
    return *found.results[IndexOf(Sila::Result::RWb)]->spread.u;
  };
  EXPECT_NEAR(u(mixed) / u(typed), 1.0, 0.01);
}

TEST(MarkedHip, IsMeasuredByItsMidlineWithTheErrorsOfBothItsPoints) {
  const Places at;
  MarkedHip hip = HipAt(at);
  const double middle = at.head.x - at.betweenHeads / 2.0;
  hip.marks.other = Landmarks::Midline{Point{middle, 160.0}, Point{middle, 360.0}};
  hip.errors.midline = 0.8;
  // The head is level with the middle of the two points: their mean says where the midline is.
  EXPECT_NEAR(SpreadsOf(hip)[kLizm], 0.8 / std::numbers::sqrt2 / kMagnification, 0.005);
}

TEST(MarkedHip, WhoseScaleMayBeBelowZeroHasRefusedTrials) {
  MarkedHip hip = HipAt({});
  hip.magnification.u = 0.6;
  const auto spreads = ComputeMeasurementUncertainty(hip, SharedPoints(), {});
  EXPECT_FALSE(spreads[kLizm].value().u);
  const auto found = ComputeHipUncertainty(hip, InputsOf(hip), SharedPoints(), {});
  EXPECT_LT(found.ok, found.trials);
}

}  // namespace
