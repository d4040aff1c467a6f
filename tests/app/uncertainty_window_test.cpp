// The window "How sure is this case": what it makes of the entries, and how it follows them and the
// case on screen.
#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QTextBrowser>
#include <array>
#include <cmath>
#include <ostream>
#include <string>

#include "model/hip_model.h"
#include "tests/app/how_sure_program.h"
#include "tests/support/default_inputs.h"
#include "tests/support/row_name.h"

namespace {

using Sila::Result;
using Column = HowSureProgram::Column;

constexpr double kNormal95 = 1.959963985;  // quantile of 97.5 %
constexpr double kNormal90 = 1.644853627;  // quantile of 95 %

TEST(HowSure, IsGreyUntilThereIsAConfirmedCase) {
  HowSureProgram program;
  auto* command = program.InWindow<QAction>("mnuHowSure");
  EXPECT_FALSE(command->isEnabled());
  program.window.New();
  EXPECT_FALSE(command->isEnabled());
  program.PressOk();
  EXPECT_TRUE(command->isEnabled());
}

TEST(HowSure, IsAWindowOfItsOwnBesideTheOthers) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  EXPECT_TRUE(program.Sure().isVisible());
  EXPECT_FALSE(program.Sure().isModal());
  EXPECT_EQ(program.Sure().windowTitle(), "How sure is this case");
  ASSERT_TRUE(QTest::qWaitForWindowActive(&program.Sure()));
  QTest::keyClick(&program.Sure(), Qt::Key_Escape);
  EXPECT_FALSE(program.Sure().isVisible());
  program.Command("mnuHowSure");
  EXPECT_TRUE(program.Sure().isVisible());
}

TEST(HowSure, ShowsTheReadingsOfTheCaseWithTheirUnits) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  for (const auto& [label, text] :
       {std::pair("lizm_value", "10.4 cm"), std::pair("xizm_value", "0.5 cm"),
        std::pair("zizm_value", "6 cm"), std::pair("Cizm_value", "4.4 cm"),
        std::pair("Hizm_value", "16 cm"), std::pair("zasuk_value", "0 °"),
        std::pair("thetaCE_value", "30 °"), std::pair("headRadius_value", "2.5 cm"),
        std::pair("bodyWeight_value", "70 kg")}) {
    EXPECT_EQ(program.Words(label), text);
  }
}

TEST(HowSure, WithoutErrorsTheIntervalsAreTheResultsOfTheMainWindow) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  const std::array boxes = {"txtRWb", "txtThetaR", "txtThetaPol", "txtPmaxWb", "txtPmax"};
  for (const Sila::ResultRow& row : Sila::kResults) {
    const QString shown = program.Panel(boxes[Sila::IndexOf(row.id)]);
    EXPECT_EQ(program.Cell(row.id, Column::kValue), shown);
    EXPECT_EQ(program.Cell(row.id, Column::kU), "0");
    EXPECT_EQ(program.Cell(row.id, Column::kInterval), shown + " to " + shown);
  }
  EXPECT_EQ(program.Share("Body weight"), 0.0);
  EXPECT_EQ(program.Words("lblNotice"), "");
}

// The peak stress is proportional to the weight, and nothing else depends on it.
TEST(HowSure, AnUncertainWeightMovesThePeakStressInProportion) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  program.Enter("bodyWeight_u", "3.2");
  const double pmax = program.Number(Result::Pmax, Column::kValue);
  const double u = pmax * 3.2 / 70.0;
  EXPECT_NEAR(program.Number(Result::Pmax, Column::kU), u, 0.01 * u);
  EXPECT_NEAR(program.Low(Result::Pmax), pmax - kNormal95 * u, 0.01 * 2 * kNormal95 * u);
  EXPECT_NEAR(program.High(Result::Pmax), pmax + kNormal95 * u, 0.01 * 2 * kNormal95 * u);
  for (const Result other : {Result::RWb, Result::ThetaR, Result::ThetaPol, Result::PmaxWb}) {
    EXPECT_EQ(program.Cell(other, Column::kU), "0");
  }
  EXPECT_EQ(program.Share("Body weight"), 1.0);
  EXPECT_EQ(program.Share("CE"), 0.0);
}

// u stays what it is whatever the errors' distribution: only the ends move.
TEST(HowSure, ADistributionChangesTheEndsAndNotU) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  program.Enter("bodyWeight_u", "3.2");
  program.InSure<QComboBox>("bodyWeight_distribution")->setCurrentText("uniform");
  const double pmax = program.Number(Result::Pmax, Column::kValue);
  const double u = pmax * 3.2 / 70.0;
  const double end = 0.95 * std::sqrt(3.0) * u;
  EXPECT_NEAR(program.Number(Result::Pmax, Column::kU), u, 0.01 * u);
  EXPECT_NEAR(program.Low(Result::Pmax), pmax - end, 0.01 * 2 * end);
  EXPECT_NEAR(program.High(Result::Pmax), pmax + end, 0.01 * 2 * end);
}

TEST(HowSure, TheCoverageSetsTheWidthAndTheTitle) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  program.Enter("bodyWeight_u", "3.2");
  program.Enter("coverage", "90");
  EXPECT_EQ(program.Table().horizontalHeaderItem(Column::kInterval)->text(), "90 % interval");
  const double pmax = program.Number(Result::Pmax, Column::kValue);
  const double half = kNormal90 * pmax * 3.2 / 70.0;
  EXPECT_NEAR(program.Low(Result::Pmax), pmax - half, 0.01 * 2 * half);
  EXPECT_NEAR(program.High(Result::Pmax), pmax + half, 0.01 * 2 * half);
}

// The model's own answer when all lengths are divided by a factor.
Sila::HipResults WithLengthsOver(double factor) {
  Sila::HipInputs inputs = DefaultInputs();
  for (const auto length : {&Sila::HipInputs::lizm, &Sila::HipInputs::xizm, &Sila::HipInputs::zizm,
                            &Sila::HipInputs::Cizm, &Sila::HipInputs::Hizm}) {
    (inputs.*length).value /= factor;
  }
  inputs.headRadius.value /= factor;
  Sila::HipState state;
  EXPECT_EQ(Sila::ComputeHip(inputs, state), Sila::HipOutcome::Ok);
  return state.results;
}

// Where one factor alone is uncertain and the stress rises with it, the ends are the stresses at
// the factor's own ends. The ratio of the forces hardly feels a factor of all lengths.
TEST(HowSure, AnUncertainMagnificationMovesTheStressesAlone) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  program.Enter("magnification_u", "0.02");
  const double low = WithLengthsOver(1.0 - kNormal95 * 0.02).pmaxWb;
  const double high = WithLengthsOver(1.0 + kNormal95 * 0.02).pmaxWb;
  EXPECT_NEAR(program.Low(Result::PmaxWb), low, 0.01 * (high - low));
  EXPECT_NEAR(program.High(Result::PmaxWb), high, 0.01 * (high - low));
  EXPECT_LT(program.Number(Result::RWb, Column::kU), 0.001 * 2.812);
  EXPECT_EQ(program.Share("Magnification"), 1.0);
}

TEST(HowSure, LengthsOnThePictureAreDividedByTheMagnification) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  program.Enter("magnification", "1,25");
  const Sila::HipResults results = WithLengthsOver(1.25);
  EXPECT_NEAR(program.Number(Result::PmaxWb, Column::kValue), results.pmaxWb, 0.01);
  EXPECT_NEAR(program.Number(Result::ThetaPol, Column::kValue), results.thetaPol, 0.01);
}

TEST(HowSure, AnAngleIsEnteredInDegreesAndARadiusInCentimetres) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  program.Enter("headRadius_u", "0.025");  // 1 %, of which the stress takes 2 %
  const double pmaxWb = program.Number(Result::PmaxWb, Column::kValue);
  EXPECT_NEAR(program.Number(Result::PmaxWb, Column::kU), 0.02 * pmaxWb, 0.001 * pmaxWb);
  program.Enter("headRadius_u", "");
  program.Enter("thetaCE_u", "0.5");
  // Pole and edge turn against each other, so by less than the edge itself.
  const double u = program.Number(Result::ThetaPol, Column::kU);
  EXPECT_GT(u, 0.2);
  EXPECT_LT(u, 1.0);
}

TEST(HowSure, FollowsEveryKeystroke) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  auto* box = program.InSure<QLineEdit>("bodyWeight_u");
  QStringList seen;
  for (const char key : {'1', '0', '.', '5'}) {
    QTest::keyClick(box, key);
    seen << program.Cell(Result::Pmax, Column::kU);
  }
  EXPECT_NE(seen[0], "0");
  EXPECT_NEAR(seen[1].toDouble() / seen[0].toDouble(), 10.0, 0.5);
  EXPECT_EQ(seen[2], seen[1]);
  EXPECT_NE(seen[3], seen[2]);
}

TEST(HowSure, FollowsTheCaseOnScreen) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  program.Enter("bodyWeight_u", "2");
  const double before = program.Number(Result::Pmax, Column::kValue);
  program.ChangeEntry("Text10", "35");
  EXPECT_EQ(program.Words("bodyWeight_value"), "35 kg");
  EXPECT_NEAR(program.Number(Result::Pmax, Column::kValue), before / 2.0, 1.0);
  EXPECT_NEAR(program.Number(Result::Pmax, Column::kU), before * 2.0 / 70.0, 0.01 * before / 35.0);
}

TEST(HowSure, TheBudgetIsThatOfTheChosenResult) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  program.Enter("bodyWeight_u", "3.2");
  program.Enter("thetaCE_u", "2");
  EXPECT_EQ(program.Words("lblBudget"), "Budget of Pmax");
  EXPECT_GT(program.Share("Body weight"), 0.1);
  EXPECT_NEAR(*program.Share("Body weight") + *program.Share("CE"), 1.0, 1e-9);
  QTest::keyClick(&program.Table(), Qt::Key_Up);
  EXPECT_EQ(program.Words("lblBudget"), "Budget of Pmax/Wb");
  EXPECT_EQ(program.Share("Body weight"), 0.0);
  EXPECT_EQ(program.Share("CE"), 1.0);
  EXPECT_EQ(program.InSure<QWidget>("picBudget")->accessibleName(), "Budget of Pmax/Wb");
}

TEST(HowSure, WithoutABodyWeightThereIsNoPeakStress) {
  HowSureProgram program;
  program.OpenOnDefaultCase({});
  EXPECT_EQ(program.Table().rowCount(), 4);
  EXPECT_EQ(program.Words("lblBudget"), "Budget of Pmax/Wb");
  EXPECT_FALSE(program.InSure<QLineEdit>("bodyWeight_u")->isVisible());
  program.Enter("thetaCE_u", "1");
  EXPECT_NE(program.Cell(Result::PmaxWb, Column::kU), "0");
}

TEST(HowSure, ARefusedCaseIsToldInTheWindow) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  program.Enter("thetaCE_u", "2");
  program.ChangeEntry("Text9", "-25");
  EXPECT_EQ(program.messages.Take().size(), 1);
  EXPECT_EQ(program.Words("lblNotice"),
            "No results for this case: in this range of input data you could not use this model");
  for (const Sila::ResultRow& row : Sila::kResults) {
    EXPECT_EQ(program.Cell(row.id, Column::kValue), "");
    EXPECT_EQ(program.Cell(row.id, Column::kInterval), "");
  }
  EXPECT_EQ(program.Share("CE"), std::nullopt);
  program.ChangeEntry("Text9", "30");
  EXPECT_EQ(program.Words("lblNotice"), "");
  EXPECT_NE(program.Cell(Result::Pmax, Column::kInterval), "");
}

TEST(HowSure, ARadiusOfZeroIsADivisionByZero) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  program.ChangeEntry("Text13", "0");
  EXPECT_EQ(program.messages.Take().size(), 1);
  EXPECT_EQ(program.Words("lblNotice"), "No results for this case: division by zero");
}

// A weight that is not above zero is refused. Normal errors reach 3.09 u in one trial of a
// thousand, and 2 u in 23.
TEST(HowSure, AFewRefusedTrialsLeaveTheInterval) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  program.Enter("bodyWeight_u", QString::number(70.0 / 3.0902));
  const QRegularExpression notice(
      "^The model refuses [789] of 8192 trials: there is no u and no budget. The interval counts "
      "them as above all others.$");
  EXPECT_TRUE(notice.match(program.Words("lblNotice")).hasMatch())
      << program.Words("lblNotice").toStdString();
  EXPECT_EQ(program.Cell(Result::Pmax, Column::kU), "");
  EXPECT_NE(program.Cell(Result::Pmax, Column::kInterval), "");
  EXPECT_NE(program.Cell(Result::Pmax, Column::kValue), "");
  EXPECT_EQ(program.Share("Body weight"), std::nullopt);
}

TEST(HowSure, ManyRefusedTrialsLeaveNoInterval) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  program.Enter("bodyWeight_u", "35");
  const QString notice = program.Words("lblNotice");
  EXPECT_TRUE(notice.startsWith("The model refuses 18")) << notice.toStdString();
  EXPECT_TRUE(notice.contains("more than 0.2 %: there is no u, no interval and no budget."));
  EXPECT_EQ(program.Cell(Result::Pmax, Column::kU), "");
  EXPECT_EQ(program.Cell(Result::Pmax, Column::kInterval), "");
  EXPECT_NE(program.Cell(Result::Pmax, Column::kValue), "");
}

struct WrongEntry {
  const char* name;
  const char* box;
  const char* label;
  QString text;
  QString words;
};

void PrintTo(const WrongEntry& wrong, std::ostream* out) {
  *out << wrong.name;
}

class WrongEntries : public testing::TestWithParam<WrongEntry> {};

TEST_P(WrongEntries, AreMarkedInTheirPlaceAndLeaveNoResults) {
  const WrongEntry& wrong = GetParam();
  HowSureProgram program;
  program.OpenOnDefaultCase();
  const QString before = program.InSure<QLineEdit>(wrong.box)->text();
  program.Enter(wrong.box, wrong.text);
  EXPECT_EQ(program.Words(wrong.label), wrong.words);
  EXPECT_TRUE(
      program.InSure<QLineEdit>(wrong.box)->accessibleDescription().startsWith(wrong.words));
  EXPECT_EQ(program.Words("lblNotice"), "No results while an entry is marked.");
  EXPECT_EQ(program.Cell(Result::Pmax, Column::kInterval), "");
  EXPECT_EQ(program.InSure<QLineEdit>(wrong.box)->text(), wrong.text) << "as it was typed";
  program.Enter(wrong.box, before);
  EXPECT_EQ(program.Words(wrong.label), "");
  EXPECT_NE(program.Cell(Result::Pmax, Column::kInterval), "");
}

INSTANTIATE_TEST_SUITE_P(
    Table, WrongEntries,
    testing::Values(
        WrongEntry{"Letters", "lizm_u", "lizm_fault", "abc", "not a number"},
        WrongEntry{"GroupMarks", "thetaCE_u", "thetaCE_fault", "1.234,5", "not a number"},
        WrongEntry{"Negative", "headRadius_u", "headRadius_fault", "-0,1", "negative"},
        WrongEntry{"Huge", "bodyWeight_u", "bodyWeight_fault", "1e301", "too large"},
        WrongEntry{"MagnificationZero", "magnification", "magnification_fault", "0", "not above 0"},
        WrongEntry{"MagnificationNegative", "magnification", "magnification_fault", "-1",
                   "not above 0"},
        WrongEntry{"MagnificationLetters", "magnification", "magnification_fault", "x",
                   "not a number"},
        WrongEntry{"MagnificationsU", "magnification_u", "magnification_fault", "-1", "negative"},
        WrongEntry{"CoverageBelow", "coverage", "coverage_fault", "49", "not 50 to 99.9"},
        WrongEntry{"CoverageAbove", "coverage", "coverage_fault", "100", "not 50 to 99.9"},
        WrongEntry{"CoverageEmpty", "coverage", "coverage_fault", "", "not a number"}),
    RowName());

// However absurd, an entry is computed or refused, and the window goes on.
TEST(HowSure, HugeErrorsAreNoTrouble) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  for (const char* box : {"lizm_u", "zasuk_u", "thetaCE_u", "headRadius_u", "magnification_u"}) {
    program.Enter(box, "1e300");
    EXPECT_EQ(program.Cell(Result::Pmax, Column::kInterval), "") << box;
    program.Enter(box, "");
  }
  EXPECT_NE(program.Cell(Result::Pmax, Column::kInterval), "");
}

TEST(HowSure, NumbersAreWrittenInTheWayOfTheLocale) {
  HowSureProgram program(QLocale("de_DE"));
  program.OpenOnDefaultCase();
  program.Enter("thetaCE_u", "0,5");
  EXPECT_EQ(program.Words("lizm_value"), "10,4 cm");
  EXPECT_TRUE(program.Cell(Result::ThetaPol, Column::kInterval).contains(','));
  EXPECT_FALSE(program.Cell(Result::ThetaPol, Column::kInterval).contains('.'));
  program.Enter("coverage", "99,5");
  EXPECT_EQ(program.Table().horizontalHeaderItem(Column::kInterval)->text(), "99,5 % interval");
}

TEST(HowSure, FitsASmallScreen) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  EXPECT_LE(program.Sure().minimumSizeHint().width(), 1024);
  EXPECT_LE(program.Sure().minimumSizeHint().height(), 700);
}

TEST(HowSure, FollowsADistributionThatIsChosenByTheKeyboard) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  program.Enter("bodyWeight_u", "3.2");
  const QString normal = program.Cell(Result::Pmax, Column::kInterval);
  auto* list = program.InSure<QComboBox>("bodyWeight_distribution");
  QTest::keyClick(list, Qt::Key_Down);
  EXPECT_EQ(list->currentText(), "uniform");
  EXPECT_NE(program.Cell(Result::Pmax, Column::kInterval), normal);
}

// A magnification that is forgotten in its box must not change the numbers of another patient.
TEST(HowSure, AMagnificationStaysWithItsPicture) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  program.ChangeEntry("Text8", "Novak");
  program.Enter("magnification", "1.2");
  program.ChangeEntry("Text9", "28");
  EXPECT_EQ(program.InSure<QLineEdit>("magnification")->text(), "1.2") << "a corrected reading";
  program.ChangeEntry("Text8", "Kovac");
  EXPECT_EQ(program.InSure<QLineEdit>("magnification")->text(), "");
  EXPECT_EQ(program.Cell(Result::RWb, Column::kValue), program.Panel("txtRWb"));
}

TEST(HowSure, F1OpensTheHelpAtItsPage) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&program.Sure()));
  QTest::keyClick(&program.Sure(), Qt::Key_F1);
  const HelpWindow* help = nullptr;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (auto* found = dynamic_cast<HelpWindow*>(widget)) help = found;
  }
  ASSERT_NE(help, nullptr);
  EXPECT_TRUE(help->isVisible());
  EXPECT_EQ(help->findChild<QTextBrowser*>("helpPage")->source().fileName(), "uncertainty.html");
}

}  // namespace
