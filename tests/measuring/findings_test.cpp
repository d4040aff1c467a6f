// From the marks of a perfect reader on a made-up pelvis to its true measurements, and what is said
// when something is missing.
#include "measuring/findings.h"

#include <gtest/gtest.h>

#include "case/number_text.h"
#include "measuring/mark_uncertainty.h"
#include "tests/support/marked_phantom.h"

namespace {

using Landmarks::PixelPlace;
using namespace Measuring;

const Uncertainty::Points& SharedPoints() {
  static const Uncertainty::Points points(kMarkedHipSources);
  return points;
}

double Number(const QString& text) {
  return Vse::ReadNumber(text.toStdString()).value_or(-1e9);
}

// A ball off the central ray throws an ellipse, and the circle through it lies up to 0.1 mm further
// out: more than the rounding to 0.001 cm.
class FindingsOfAPelvis : public testing::Test {
 protected:
  FindingsOfAPelvis() {
    file = DetectorFile(setup);
    draft[Entry::Magnification] = QString::number(truth.magnification, 'g', 15);
    draft[Entry::BodyWeight] = QStringLiteral("70");
  }

  Findings Find() const {
    return FindAll(FactsOf(file), draft, CheckErrors(errors), SharedPoints(), QLocale::c());
  }
  double Measured(const Findings& found, Sila::Measurement id) const {
    return Number(found.entries[id].text);
  }

  Phantom::Anatomy anatomy;
  Phantom::Setup setup;
  Phantom::Truth truth = Phantom::TruthOf(anatomy, setup);
  Radiography::Radiograph file;
  Draft draft = DraftOf(truth, setup.spacing);
  ErrorTexts errors;
};

TEST_F(FindingsOfAPelvis, AreItsTrueMeasurements) {
  const Findings found = Find();
  EXPECT_NEAR(Measured(found, Sila::Measurement::Lizm), 9.2, 0.01);
  EXPECT_NEAR(Measured(found, Sila::Measurement::Xizm), 0.4, 0.005);
  EXPECT_NEAR(Measured(found, Sila::Measurement::Zizm), 5.8, 0.005);
  EXPECT_NEAR(Measured(found, Sila::Measurement::Cizm), 4.6, 0.005);
  EXPECT_NEAR(Measured(found, Sila::Measurement::Hizm), 15.0, 0.005);
  EXPECT_NEAR(Measured(found, Sila::Measurement::ThetaCE), 0.52 * 180.0 / std::numbers::pi, 0.2);
  EXPECT_NEAR(Measured(found, Sila::Measurement::HeadRadius), 2.4, 0.01);
  EXPECT_EQ(found.entries.hip, HipSide::Left);
  EXPECT_EQ(found.entries.bodyWeight, "70");
}

TEST_F(FindingsOfAPelvis, AreRoundedToWhatTheFormTakesAndComputedFromThat) {
  const Findings found = Find();
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    const double steps = row.kind() == Sila::Kind::Angle ? 100.0 : 1000.0;
    const double number = Number(found.entries[row.id].text);
    EXPECT_DOUBLE_EQ(number, std::round(number * steps) / steps) << row.key;
  }
  ASSERT_TRUE(found.record);
  const Sila::HipInputs& inputs = found.record->data.inputs;
  EXPECT_EQ(inputs.lizm.value, Number(found.entries[Sila::Measurement::Lizm].text));
  EXPECT_EQ(inputs.thetaCE.value,
            Sila::DegreesToRadians(Number(found.entries[Sila::Measurement::ThetaCE].text)));
  Sila::HipState state;
  EXPECT_EQ(ComputeHip(inputs, state), Sila::HipOutcome::Ok);
  EXPECT_EQ(found.record->results().pmax.value, state.results.pmax.value);
}

TEST_F(FindingsOfAPelvis, GiveNoIntervalWithoutErrors) {
  EXPECT_FALSE(Find().sure);
}

TEST_F(FindingsOfAPelvis, GiveIntervalsAboutTheValueThatIsShown) {
  errors.fill(QStringLiteral("1"));
  errors[IndexOf(ErrorOf::Magnification)] = QStringLiteral("0.01");
  const Findings found = Find();
  ASSERT_TRUE(found.sure);
  for (const Sila::ResultRow& row : Sila::kResults) {
    const auto& result = found.sure->results[Sila::IndexOf(row.id)];
    ASSERT_TRUE(result) << row.key;
    EXPECT_EQ(result->estimate, row.value(found.record->results())) << row.key;
    ASSERT_TRUE(result->spread.interval) << row.key;
    EXPECT_LT(result->spread.interval->low, result->estimate) << row.key;
    EXPECT_GT(result->spread.interval->high, result->estimate) << row.key;
    double sum = 0.0;
    for (const ShareBar& bar : found.budget[Sila::IndexOf(row.id)]) sum += bar.share.value_or(9.0);
    EXPECT_NEAR(sum, 1.0, 1e-9) << row.key;
  }
}

// The whole of the variance of pmax is that of the weight, in proportion.
TEST_F(FindingsOfAPelvis, GiveAnUncertainWeightItsBar) {
  errors[IndexOf(ErrorOf::BodyWeight)] = QStringLiteral("0.7");
  const Findings found = Find();
  ASSERT_TRUE(found.sure);
  const auto& pmax = *found.sure->results[Sila::IndexOf(Sila::Result::Pmax)];
  EXPECT_NEAR(pmax.spread.u.value() / pmax.estimate, 0.01, 1e-4);
  const ShareBar& last = found.budget[Sila::IndexOf(Sila::Result::Pmax)].back();
  EXPECT_EQ(last.label, "Body weight");
  EXPECT_EQ(last.share, 1.0);
}

TEST_F(FindingsOfAPelvis, HaveAnglesButNoLengthsBeforeTheScaleIsSettled) {
  draft[Entry::Magnification].clear();
  const Findings found = Find();
  EXPECT_FALSE(found.scale.magnification);
  EXPECT_EQ(found.scale.todo, "Enter the magnification, or mark an object of known size.");
  EXPECT_TRUE(found.scale.asks[IndexOf(Entry::Magnification)]);
  EXPECT_NEAR(Measured(found, Sila::Measurement::ThetaCE), 29.79, 0.2);
  EXPECT_EQ(found.measurements[0].missing, "needs the scale");
  EXPECT_EQ(found.entries[Sila::Measurement::Lizm].text, "");
  EXPECT_FALSE(found.record);
}

TEST_F(FindingsOfAPelvis, SayWhichMarksAMeasurementNeeds) {
  draft[MarkKind::OtherHead].clear();
  draft[MarkKind::CrestTop].clear();
  const Findings found = Find();
  EXPECT_EQ(found.measurements[0].missing, "needs mark 2 (or 3)");
  EXPECT_EQ(found.measurements[4].missing, "needs mark 2 (or 3), 5");
  EXPECT_EQ(found.measurements[6].missing, "");
  EXPECT_TRUE(found.HasMeasurement());
  EXPECT_FALSE(Find().record);
}

TEST_F(FindingsOfAPelvis, AreTheSameFromTheMidline) {
  const Landmarks::Point left = truth.left.head->centre;
  const Landmarks::Point right = truth.right.head->centre;
  const Landmarks::Point middle = 0.5 * (left + right);
  const Landmarks::Point along = left - right;
  const Landmarks::Point upward = {-along.y, along.x};
  draft[MarkKind::OtherHead].clear();
  draft[MarkKind::Midline] = {Landmarks::InPixels(middle + 0.3 * upward, setup.spacing),
                              Landmarks::InPixels(middle - 0.2 * upward, setup.spacing)};
  const Findings found = Find();
  EXPECT_NEAR(Measured(found, Sila::Measurement::Lizm), 9.2, 0.01);
  EXPECT_NEAR(Measured(found, Sila::Measurement::Hizm), 15.0, 0.005);
}

TEST_F(FindingsOfAPelvis, HaveNoDirectionFromAMidlineWhosePointsCoincide) {
  const Landmarks::PixelPlace point = draft[MarkKind::CrestTop].front();
  draft[MarkKind::OtherHead].clear();
  draft[MarkKind::Midline] = {point, point};
  const Findings found = Find();
  EXPECT_EQ(found.measurements[0].missing, "no direction in these marks");
  EXPECT_FALSE(found.record);
}

TEST_F(FindingsOfAPelvis, TakeTheirScaleFromABallOfKnownSize) {
  setup.ball = Phantom::Ball{};
  truth = Phantom::TruthOf(anatomy, setup);
  draft[Entry::Magnification].clear();
  draft[MarkKind::Ball] = EdgePoints(*truth.ball, setup.spacing);
  EXPECT_EQ(Find().scale.todo, "Finish marking the ball of known size, and enter its size.");
  EXPECT_TRUE(Find().scale.asks[IndexOf(Entry::Magnification)]);
  draft[Entry::BallDiameter] = QStringLiteral("25");
  const Findings found = Find();
  EXPECT_FALSE(found.scale.asks[IndexOf(Entry::Magnification)]) << "it is not used any more";
  EXPECT_TRUE(found.scale.asks[IndexOf(Entry::BallDiameter)]);
  EXPECT_EQ(found.scale.name, "ball of known size");
  EXPECT_EQ(found.scale.todo, "");
  EXPECT_EQ(found.scale.notes, QStringList());
  EXPECT_NEAR(found.scale.magnification->factor, 1.15, 0.015);
  EXPECT_NEAR(Measured(found, Sila::Measurement::Lizm), 9.2, 0.1);
  EXPECT_TRUE(Find().scale.isByObject);
  draft[Entry::BallDiameter] = QStringLiteral("30");
  EXPECT_EQ(Find().scale.notes,
            QStringList{"The magnification is below 1. Check the size that was entered."});
}

// The radius through n points all around is their mean distance from the centre: it errs by a
// point's error over the root of n. Points that were put on a circle by snapping have no scatter of
// their own.
TEST_F(FindingsOfAPelvis, TrustABallThatWasSnappedNoMoreThanItsPoints) {
  const Landmarks::Circle ball = {{50.0, 60.0}, 15.0};  // mm
  draft[MarkKind::Ball] = EdgePoints(ball, setup.spacing, 8);
  draft[Entry::BallDiameter] = QStringLiteral("25");
  errors[IndexOf(ErrorOf::CircleEdge)] = QStringLiteral("1");
  const Landmarks::Magnification found = Find().scale.magnification.value();
  EXPECT_NEAR(found.factor, 1.2, 1e-9);
  EXPECT_NEAR(found.u / found.factor, setup.spacing.row / std::sqrt(8.0) / ball.radius, 1e-9);
}

TEST_F(FindingsOfAPelvis, CallNoOtherFactorTheMagnification) {
  EXPECT_EQ(Find().scale.value, "0.2087 mm per pixel at the hip, magnification 1.15");
  file.scale.pixelSpacing = {0.24 / 1.15, 0.24 / 1.15};
  file.scale.calibrationType = "FIDUCIAL";
  EXPECT_EQ(Find().scale.value, "0.2087 mm per pixel at the hip");
}

TEST_F(FindingsOfAPelvis, TellWhatReadingTheFileHasNoted) {
  file.notes.assign(2, "the file has 2 pictures; this is the first");
  EXPECT_EQ(Find().notices, QStringList{"The file has 2 pictures; this is the first."});
}

TEST_F(FindingsOfAPelvis, TakeTheirScaleFromALineOfKnownLengthWithoutAnythingInTheFile) {
  file.scale = {};
  draft[Entry::Magnification].clear();
  EXPECT_EQ(Find().scale.todo, "Mark an object of known size to measure lengths.");
  const double pixels = 100.0 * 1.15 / 0.24;  // 100 mm at the hip
  draft[MarkKind::Line] = {PixelPlace{50.0, 20.0}, PixelPlace{50.0 + pixels, 20.0}};
  draft[Entry::LineLength] = QStringLiteral("100");
  const Findings found = Find();
  EXPECT_NEAR(Measured(found, Sila::Measurement::Lizm), 9.2, 0.01);
  EXPECT_EQ(found.scale.value, "0.2087 mm per pixel at the hip");
}

TEST_F(FindingsOfAPelvis, BringASpacingAtTheTableToTheHip) {
  draft[Entry::Magnification].clear();
  file.scale.sourceToDetector = {setup.sourceToDetector};
  file.scale.sourceToTable = {setup.sourceToHip + 40.0};
  EXPECT_EQ(Find().scale.todo, "Enter the height of the hip above the table.");
  draft[Entry::HipHeight] = QStringLiteral("40");
  const Findings found = Find();
  EXPECT_EQ(found.scale.value, "0.2087 mm per pixel at the hip");
  EXPECT_NEAR(Measured(found, Sila::Measurement::Lizm), 9.2, 0.01);
}

TEST_F(FindingsOfAPelvis, RefuseAHipAboveTheSource) {
  draft[Entry::Magnification].clear();
  file.scale.sourceToDetector = {setup.sourceToDetector};
  file.scale.sourceToTable = {1000.0};
  draft[Entry::HipHeight] = QStringLiteral("1000");
  const Findings found = Find();
  EXPECT_EQ(found.scale.todo, "The hip must lie above the table and below the source.");
  EXPECT_EQ(found.measurements[0].missing, "needs the scale");
}

TEST_F(FindingsOfAPelvis, RefuseAMagnificationBelowOne) {
  draft[Entry::Magnification] = QStringLiteral("0.9");
  EXPECT_EQ(Find().scale.todo, "The magnification must be a number of 1 or more.");
  EXPECT_FALSE(Find().scale.magnification);
}

TEST_F(FindingsOfAPelvis, HaveNoSideWhereUserAndFileDisagree) {
  draft.side = HipSide::Right;
  const Findings found = Find();
  EXPECT_FALSE(found.entries.hip);
  EXPECT_EQ(found.notices, QStringList{"The file says that this is the other hip."});
}

TEST_F(FindingsOfAPelvis, TakeTheUsersWordForTheSideWhereTheFileIsSilent) {
  file.rowDirection.clear();
  file.columnDirection.clear();
  EXPECT_FALSE(Find().entries.hip);
  draft.side = HipSide::Right;
  EXPECT_EQ(Find().entries.hip, HipSide::Right);
}

TEST_F(FindingsOfAPelvis, NameATypedNumberThatIsNone) {
  draft[Entry::Rotation] = QStringLiteral("a");
  const Findings found = Find();
  EXPECT_EQ(found.wrongEntries, std::vector{Sila::Measurement::Zasuk});
  EXPECT_FALSE(found.record);
}

TEST_F(FindingsOfAPelvis, WarnOfAnEdgeThatIsHardlyMarked) {
  std::vector<PixelPlace>& head = draft[MarkKind::Head];
  head.resize(3);  // a quarter of the edge
  EXPECT_TRUE(Find().notices.value(0).startsWith("Head circle: the points cover less than 150°"));
}

TEST_F(FindingsOfAPelvis, WarnOfPointsThatAreOnNoCircle) {
  draft[MarkKind::Head] = {{100, 100}, {200, 100}, {300, 100}};
  const Findings found = Find();
  EXPECT_EQ(found.measurements[6].missing, "needs mark 1");
  EXPECT_EQ(found.notices,
            QStringList{"Head circle: no circle can be drawn through these points."});
}

TEST_F(FindingsOfAPelvis, WarnOfACrestBelowTheHead) {
  draft[MarkKind::CrestTop].front().row = setup.height - 1.0;
  EXPECT_TRUE(Find().notices.value(0).contains("upside down"));
}

TEST(Draft, ComesBackFromItsJson) {
  Draft draft = DraftOf(Phantom::TruthOf({}, {}), {0.24, 0.24});
  draft[MarkKind::Midline] = {PixelPlace{1.25, -0.1}};
  for (QString& entry : draft.entries) entry = QStringLiteral("1,5 ") + QChar(u'µ');
  draft.side = HipSide::Left;
  EXPECT_EQ(DraftFrom(ToJson(draft)), draft);
  EXPECT_EQ(DraftFrom({}), Draft{});
}

TEST(ErrorEntries, MustBeNumbersOfAtLeastZero) {
  ErrorTexts texts;
  EXPECT_FALSE(CheckErrors(texts).isAnyGiven);
  texts = {"0,5", "-1", "x", " ", "0"};
  const CheckedErrors checked = CheckErrors(texts);
  EXPECT_EQ(checked[ErrorOf::CircleEdge], 0.5);
  EXPECT_EQ(checked.isWrong, (std::array{false, true, true, false, false}));
  EXPECT_FALSE(checked.IsGood());
  EXPECT_EQ(ErrorTextsFrom(ToJson(texts)), texts);
}

}  // namespace
