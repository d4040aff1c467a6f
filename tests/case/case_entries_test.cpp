// Between the form's entries and the record.
#include "case/case_entries.h"

#include <gtest/gtest.h>

#include "case/case_conversion.h"
#include "case/number_text.h"
#include "tests/support/default_geometry.h"
#include "tests/support/row_name.h"

namespace {

struct Conversion {
  const char* name;
  Measure measure;
  double typed;
  QStringView unit;
  double held;
};

class HeldValue : public testing::TestWithParam<Conversion> {};

TEST_P(HeldValue, IsInTheRecordsUnit) {
  const Conversion& row = GetParam();
  EXPECT_DOUBLE_EQ(Vse::HeldValue(row.measure, row.typed, row.unit), row.held);
}

INSTANTIATE_TEST_SUITE_P(
    Table, HeldValue,
    testing::Values(Conversion{"LengthMm", Measure::Lizm, 104.0, Vse::kMillimetre, 10.4},
                    Conversion{"LengthCm", Measure::Hizm, 16.0, Vse::kCentimetre, 16.0},
                    Conversion{"RadiusMm", Measure::HeadRadius, 25.0, Vse::kMillimetre, 0.025},
                    Conversion{"RadiusCm", Measure::HeadRadius, 2.5, Vse::kCentimetre, 0.025},
                    Conversion{"RadiusM", Measure::HeadRadius, 0.025, Vse::kMetre, 0.025},
                    Conversion{"Degrees", Measure::ThetaCE, 30.0, Vse::kDegree,
                               3.14159265358979 / 6.0},
                    Conversion{"Radians", Measure::Zasuk, 0.25, Vse::kRadian, 0.25}),
    RowName());

CaseRecord SomeCase() {
  CaseRecord record;
  record.patient = {"van Berg Jan", "M", "1956", "70", "L", "one\ntwo"};
  record.geometry = DefaultGeometry();
  return record;
}

TEST(EntriesOf, GivesHeldUnitsWhateverWasTyped) {
  const CaseEntries entries = Vse::EntriesOf(SomeCase(), QLocale("de_DE"), {});
  EXPECT_TRUE((entries[Measure::Lizm] == MeasureEntry{"10,4", "cm"}));
  EXPECT_TRUE((entries[Measure::Zasuk] == MeasureEntry{"0", "  °  "}));
  EXPECT_TRUE((entries[Measure::ThetaCE] == MeasureEntry{"30", "  °  "}));
  EXPECT_TRUE((entries[Measure::HeadRadius] == MeasureEntry{"0,025", "m"}));
  EXPECT_EQ(entries.surname.toStdString(), "van Berg ");
  EXPECT_EQ(entries.firstName.toStdString(), "Jan");
  EXPECT_EQ(entries.sex, CaseEntries::Sex::Male);
  EXPECT_EQ(entries.hip, CaseEntries::Hip::Left);
  EXPECT_EQ(entries.comments.toStdString(), "one\ntwo");
}

TEST(EntriesOf, PlaceholdersGiveEmptyBoxes) {
  CaseRecord record = SomeCase();
  record.patient = {"Unknown", "Unknown", "Unknown", "Unknown", "Unknown", "No"};
  CaseEntries current;
  current.surname = "typed";
  current.dateOfBirth = "typed";
  const CaseEntries entries = Vse::EntriesOf(record, QLocale::c(), current);
  EXPECT_TRUE(entries.surname.isEmpty());  // never another patient's name
  EXPECT_EQ(entries.sex, CaseEntries::Sex::Female);
  EXPECT_EQ(entries.hip, CaseEntries::Hip::Right);
  EXPECT_TRUE(entries.dateOfBirth.isEmpty());
  EXPECT_TRUE(entries.bodyWeight.isEmpty());
  EXPECT_TRUE(entries.comments.isEmpty());
}

// Whatever was typed in whole hundredths comes back as it was typed.
TEST(EntriesOf, AnglesSurviveTheWayThroughRadians) {
  CaseRecord record = SomeCase();
  for (int hundredths = -9000; hundredths <= 18000; ++hundredths) {
    const double degrees = hundredths / 100.0;
    record.geometry.thetaCE = Vse::HeldValue(Measure::ThetaCE, degrees, Vse::kDegree);
    ASSERT_EQ(Vse::EntriesOf(record, QLocale::c(), {})[Measure::ThetaCE].text.toStdString(),
              Vse::NumberText(degrees, QLocale::c()).toStdString());
  }
}

// What Change shows and OK reads back is the same case, also where the held double is another.
TEST(IsSameCase, HoldsAcrossTheFormAndTellsRealChanges) {
  for (int tenths = 1; tenths < 400; ++tenths) {
    CaseRecord record = SomeCase();
    const double typed = tenths / 10.0;
    record.geometry.headRadius = Vse::HeldValue(Measure::HeadRadius, typed, Vse::kCentimetre);
    record.geometry.lizm = Vse::HeldValue(Measure::Lizm, typed, Vse::kMillimetre);
    record.geometry.thetaCE = Vse::HeldValue(Measure::ThetaCE, typed / 100.0, Vse::kRadian);
    record.bodyWeight = 70.0;
    const auto back = Vse::DataOf(Vse::EntriesOf(record, QLocale::c(), {}), false);
    ASSERT_TRUE(back);
    EXPECT_TRUE(Vse::IsSameCase(record, *back)) << typed;
    CaseData other = *back;
    other.geometry.zizm += 0.01;
    EXPECT_FALSE(Vse::IsSameCase(record, other));
    other = *back;
    other.patient.comments += "x";
    EXPECT_FALSE(Vse::IsSameCase(record, other));
  }
}

}  // namespace
