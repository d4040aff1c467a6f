// The case record: its texts, its angles, and what a run of the model writes into it.
#include "case/case_record.h"
#include "case/case_texts.h"
#include "case/entry_check.h"

#include <gtest/gtest.h>

#include <optional>

#include "case/case_conversion.h"
#include "case/number_text.h"
#include "tests/support/default_inputs.h"
#include "tests/support/row_name.h"

namespace {

using Sila::HipOutcome;

CaseRecord DefaultCase() {
  CaseRecord record;
  record.data.inputs = DefaultInputs();
  record.data.inputs.bodyWeight = Sila::Kilograms{70.0};
  return record;
}

struct Names {
  const char* name;
  const char* surname;
  const char* firstName;
  const char* held;
};

class ComposeName : public testing::TestWithParam<Names> {};

TEST_P(ComposeName, JoinsWithOneBlank) {
  const Names& row = GetParam();
  EXPECT_EQ(Vse::ComposeName(QString::fromUtf8(row.surname), QString::fromUtf8(row.firstName)),
            QString::fromUtf8(row.held));
}

INSTANTIATE_TEST_SUITE_P(Table, ComposeName,
                         testing::Values(Names{"Both", "Novak", "Ana", "Novak Ana"},
                                         Names{"NeitherIsEmpty", "", "", ""},
                                         Names{"BlanksAreNeither", "  ", "\t", ""},
                                         Names{"SurnameKeepsTheBlank", "Novak", "", "Novak "},
                                         Names{"FirstNameKeepsTheBlank", "", "Ana", " Ana"},
                                         Names{"Trimmed", "  Novak ", " Ana  ", "Novak Ana"},
                                         Names{"InnerBlanksStay", "van der  Berg", "Anna Maria",
                                               "van der  Berg Anna Maria"},
                                         Names{"BeyondAscii", "Žižek", "Đurđa", "Žižek Đurđa"}),
                         RowName());

TEST(ComposeNameTwice, DoesNotGrow) {
  const QString once = Vse::ComposeName("Novak", "");
  EXPECT_EQ(Vse::ComposeName(once, ""), once);
}

CaseEntries FilledEntries() {
  CaseEntries entries;
  entries.surname = "Novak";
  entries.firstName = "Ana";
  entries.sex = Sex::Female;
  entries.dateOfBirth = "15.11.1956";
  entries.bodyWeight = "72,5";
  entries.hip = HipSide::Right;
  entries.comments = "first\nsecond";
  entries.measurements.fill({"25", Sila::Unit::Millimetre});
  return entries;
}

PatientTexts TextsOf(const CaseEntries& entries, bool weightUnknown = false) {
  return Vse::PatientTextsOf(Vse::PatientOf(entries, weightUnknown));
}

TEST(PatientTexts, AreHeldAsTyped) {
  const PatientTexts expected = {"Novak Ana", "F", "15.11.1956", "72,5", "D", "first\nsecond"};
  EXPECT_TRUE(TextsOf(FilledEntries()) == expected);
}

TEST(PatientTexts, SayWhichSexAndHip) {
  CaseEntries entries = FilledEntries();
  entries.sex = Sex::Male;
  entries.hip = HipSide::Left;
  EXPECT_EQ(TextsOf(entries).sex, "M");
  EXPECT_EQ(TextsOf(entries).hip, "L");
}

TEST(PatientTexts, HavePlaceholdersForWhatIsMissing) {
  const PatientTexts expected = {"Unknown", "Unknown", "Unknown", "Unknown", "Unknown", "No"};
  EXPECT_TRUE(TextsOf(CaseEntries()) == expected);
}

// The box then holds the "60" that the confirmation has put there.
TEST(PatientTexts, HideTheAssumedWeight) {
  CaseEntries entries = FilledEntries();
  entries.bodyWeight = "60";
  EXPECT_EQ(TextsOf(entries, true).bodyWeight, "Unknown");
  EXPECT_EQ(TextsOf(entries).bodyWeight, "60");
}

TEST(PatientTexts, StandForThePatientThatTheyCameFrom) {
  for (const CaseEntries& entries : {FilledEntries(), CaseEntries()}) {
    const Patient patient = Vse::PatientOf(entries, false);
    EXPECT_TRUE(Vse::PatientFrom(Vse::PatientTextsOf(patient)) == patient);
  }
}

TEST(Angles, AreHeldWithTheForceModelsPi) {
  EXPECT_EQ(Sila::DegreesToRadians(30.0), 30.0 * 3.14159265358979 / 180.0);
  EXPECT_EQ(Sila::RadiansToDegrees(1.0), 1.0 * 180.0 / 3.14159265358979);
  EXPECT_EQ(Sila::DegreesToRadians(0.0), 0.0);
}

TEST(Angles, ComeBackAsTheTextThatWasTyped) {
  EXPECT_EQ(Vse::NumberText(Sila::RadiansToDegrees(Sila::DegreesToRadians(30.0)), QLocale::c()),
            "30");
  for (int tenths = -3600; tenths <= 3600; ++tenths) {
    const QString typed = Vse::NumberText(tenths / 10.0, QLocale::c());
    const double degrees = Vse::ReadNumber(typed.toStdString()).value();
    const double held = Sila::DegreesToRadians(degrees);
    EXPECT_EQ(Vse::NumberText(Sila::RadiansToDegrees(held), QLocale::c()), typed);
  }
}

TEST(CaseRecord, StartsWithoutAWeightAndResults) {
  const CaseRecord record;
  EXPECT_TRUE(record.data.weightUnknown());
  EXPECT_EQ(record.results().rWb, 0.0);
  EXPECT_TRUE(record.data.patient.name.isEmpty());
}

TEST(RunModel, WritesEveryResult) {
  CaseRecord record = DefaultCase();
  ASSERT_EQ(Vse::RunModel(record), HipOutcome::Ok);
  EXPECT_NEAR(record.results().rWb, 2.81222677558, 5e-12);
  EXPECT_NEAR(record.results().thetaR, 8.4764903085, 5e-11);
  EXPECT_NEAR(record.results().thetaPol, 16.4157852045, 5e-11);
  EXPECT_NEAR(record.results().pmaxWb, 3006.76110604, 5e-9);
  EXPECT_NEAR(record.results().pmax, 2066847.58429341, 5e-9);
}

TEST(RunModel, KeepsTheWorkingValuesReadable) {
  CaseRecord record = DefaultCase();
  ASSERT_EQ(Vse::RunModel(record), HipOutcome::Ok);
  EXPECT_EQ(record.model.force.rWb, record.results().rWb);
  EXPECT_EQ(record.model.stress.p0, record.results().pmax);
  EXPECT_GT(record.model.force.groups[0].tension, 0.0);
}

TEST(RunModel, LeavesEntriesAndWeightFlagAlone) {
  CaseRecord record = DefaultCase();
  record.data.patient.name = "Novak Ana";
  record.data.inputs.bodyWeight.reset();
  ASSERT_EQ(Vse::RunModel(record), HipOutcome::Ok);
  EXPECT_TRUE(record.data.weightUnknown());
  EXPECT_EQ(record.data.patient.name, "Novak Ana");
  EXPECT_EQ(record.data.inputs.headRadius, 0.025);
}

TEST(RunModel, TakesSixtyKilogramsForAnUnknownWeight) {
  EXPECT_EQ(Sila::kAssumedBodyWeight, 60.0);
  CaseRecord known = DefaultCase();
  CaseRecord unknown = DefaultCase();
  unknown.data.inputs.bodyWeight.reset();
  ASSERT_EQ(Vse::RunModel(known), HipOutcome::Ok);
  ASSERT_EQ(Vse::RunModel(unknown), HipOutcome::Ok);
  EXPECT_NEAR(unknown.results().pmaxWb, known.results().pmaxWb, 1e-9);
  EXPECT_NEAR(unknown.results().pmax, known.results().pmaxWb * 60.0 * 9.82, 1e-6);
}

TEST(RunModel, GivesOneResultForARadiusInMillimetresAndCentimetres) {
  CaseRecord millimetres = DefaultCase();
  CaseRecord centimetres = DefaultCase();
  millimetres.data.inputs.headRadius = {25.0 / 1000.0};
  centimetres.data.inputs.headRadius = {2.5 / 100.0};
  EXPECT_EQ(millimetres.data.inputs.headRadius, 0.025);
  ASSERT_EQ(Vse::RunModel(millimetres), HipOutcome::Ok);
  ASSERT_EQ(Vse::RunModel(centimetres), HipOutcome::Ok);
  EXPECT_EQ(millimetres.results().pmax, centimetres.results().pmax);
}

struct RefusedCase {
  const char* name;
  Sila::Measurement entry;
  double value;
  HipOutcome outcome;
};

class RunModelRefuses : public testing::TestWithParam<RefusedCase> {};

// The force is new, the stresses are those of the case before.
TEST_P(RunModelRefuses, AndKeepsTheStressesOfTheCaseBefore) {
  CaseRecord record = DefaultCase();
  ASSERT_EQ(Vse::RunModel(record), HipOutcome::Ok);
  const Sila::HipResults before = record.results();
  record.data.inputs.Cizm = {5.0};
  Sila::SetValue(record.data.inputs, Sila::RowOf(GetParam().entry), GetParam().value);
  EXPECT_EQ(Vse::RunModel(record), GetParam().outcome);
  EXPECT_NE(record.results().rWb, before.rWb);
  EXPECT_NE(record.results().thetaR, before.thetaR);
  EXPECT_EQ(record.results().thetaPol, before.thetaPol);
  EXPECT_EQ(record.results().pmaxWb, before.pmaxWb);
  EXPECT_EQ(record.results().pmax, before.pmax);
}

INSTANTIATE_TEST_SUITE_P(
    Table, RunModelRefuses,
    testing::Values(
        RefusedCase{"LeverLongerThanTheFemur", Sila::Measurement::Lizm, 104.0,
                    HipOutcome::OutOfRange},
        RefusedCase{"NoLever", Sila::Measurement::Lizm, 0.0, HipOutcome::OutOfRange},
        RefusedCase{"ForceOutsideTheSocket", Sila::Measurement::ThetaCE, -0.35, HipOutcome::NoPole},
        RefusedCase{"StressBelowZero", Sila::Measurement::ThetaCE, -3.5, HipOutcome::NoPole},
        RefusedCase{"RadiusZero", Sila::Measurement::HeadRadius, 0.0, HipOutcome::DivisionByZero}),
    RowName());

TEST(RunModel, SaysWhoseTheStressesAre) {
  using Stresses = Stresses;
  CaseRecord record = DefaultCase();
  EXPECT_EQ(record.stresses, Stresses::None);
  const auto runAt = [&record](double edge) {
    record.data.inputs.thetaCE = {Sila::DegreesToRadians(edge)};
    Vse::RunModel(record);
    return record.stresses;
  };
  EXPECT_EQ(runAt(-20.0), Stresses::None) << "refused, and no case before it";
  EXPECT_EQ(runAt(30.0), Stresses::Own);
  EXPECT_EQ(runAt(-20.0), Stresses::OfCaseBefore);
  EXPECT_EQ(runAt(-30.0), Stresses::OfCaseBefore);
  EXPECT_EQ(runAt(20.0), Stresses::Own);
}

TEST(RunModel, RecoversAfterARefusal) {
  CaseRecord record = DefaultCase();
  record.data.inputs.thetaCE = {Sila::DegreesToRadians(-20.0)};
  ASSERT_EQ(Vse::RunModel(record), HipOutcome::NoPole);
  record.data.inputs.thetaCE = {Sila::DegreesToRadians(30.0)};
  ASSERT_EQ(Vse::RunModel(record), HipOutcome::Ok);
  EXPECT_NEAR(record.results().pmax, 2066847.58429341, 5e-9);
}

struct Truncated {
  const char* name;
  double value;
  int decimals;
  const char* text;
};

class ShownResult : public testing::TestWithParam<Truncated> {};

TEST_P(ShownResult, IsTruncatedTowardsMinusInfinity) {
  const Truncated& row = GetParam();
  EXPECT_EQ(
      Vse::NumberText(Vse::TruncateToDecimals(row.value, row.decimals), QLocale::c()).toStdString(),
      row.text);
}

INSTANTIATE_TEST_SUITE_P(
    Table, ShownResult,
    testing::Values(Truncated{"ScreenRatio", 2.81922677558, 2, "2.81"},
                    Truncated{"FileRatio", 2.81922677558, 3, "2.819"},
                    Truncated{"ScreenAngle", 8.4764903085, 2, "8.47"},
                    Truncated{"FileAngle", 8.4764903085, 3, "8.476"},
                    Truncated{"ScreenPeakOverWeight", 3006.76910604, 2, "3006.76"},
                    Truncated{"FilePeakOverWeight", 3006.76910604, 3, "3006.769"},
                    Truncated{"ScreenPeak", 2066847.58929341, 2, "2066847.58"},
                    Truncated{"NegativePoleGoesDown", -8.471, 2, "-8.48"},
                    Truncated{"NegativeInFile", -8.4711, 3, "-8.472"},
                    Truncated{"NegativeWholeStays", -8.0, 2, "-8"},
                    Truncated{"SmallNegative", -1e-9, 2, "-0.01"},
                    Truncated{"SmallPositive", 1e-9, 2, "0"}, Truncated{"Zero", 0.0, 3, "0"},
                    Truncated{"NoDecimals", 2.9, 0, "2"}),
    RowName());

}  // namespace
