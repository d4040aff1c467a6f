// Between the form's entries and the record.
#include "case/case_entries.h"
#include "case/case_texts.h"
#include "case/entry_check.h"

#include <gtest/gtest.h>

#include "case/case_conversion.h"
#include "case/number_text.h"
#include "tests/support/default_inputs.h"
#include "tests/support/row_name.h"

namespace {

CaseRecord SomeCase() {
  CaseRecord record;
  record.data.patient = Vse::PatientFrom({"van Berg Jan", "M", "1956", "70", "L", "one\ntwo"});
  record.data.inputs = DefaultInputs();
  return record;
}

TEST(EntriesOf, GivesHeldUnitsWhateverWasTyped) {
  const CaseEntries entries = Vse::EntriesOf(SomeCase().data, QLocale("de_DE"), {});
  EXPECT_TRUE(
      (entries[Sila::Measurement::Lizm] == MeasurementEntry{"10,4", Sila::Unit::Centimetre}));
  EXPECT_TRUE((entries[Sila::Measurement::Zasuk] == MeasurementEntry{"0", Sila::Unit::Degree}));
  EXPECT_TRUE((entries[Sila::Measurement::ThetaCE] == MeasurementEntry{"30", Sila::Unit::Degree}));
  EXPECT_TRUE(
      (entries[Sila::Measurement::HeadRadius] == MeasurementEntry{"0,025", Sila::Unit::Metre}));
  EXPECT_EQ(entries.surname.toStdString(), "van Berg ");
  EXPECT_EQ(entries.firstName.toStdString(), "Jan");
  EXPECT_EQ(entries.sex, Sex::Male);
  EXPECT_EQ(entries.hip, HipSide::Left);
  EXPECT_EQ(entries.comments.toStdString(), "one\ntwo");
}

TEST(EntriesOf, PlaceholdersGiveEmptyBoxes) {
  CaseRecord record = SomeCase();
  record.data.patient =
      Vse::PatientFrom({"Unknown", "Unknown", "Unknown", "Unknown", "Unknown", "No"});
  CaseEntries current;
  current.surname = "typed";
  current.dateOfBirth = "typed";
  const CaseEntries entries = Vse::EntriesOf(record.data, QLocale::c(), current);
  EXPECT_TRUE(entries.surname.isEmpty());  // never another patient's name
  EXPECT_EQ(entries.sex, Sex::Female);
  EXPECT_EQ(entries.hip, HipSide::Right);
  EXPECT_TRUE(entries.dateOfBirth.isEmpty());
  EXPECT_TRUE(entries.bodyWeight.isEmpty());
  EXPECT_TRUE(entries.comments.isEmpty());
}

// Whatever was typed in whole hundredths comes back as it was typed.
TEST(EntriesOf, AnglesSurviveTheWayThroughRadians) {
  CaseRecord record = SomeCase();
  for (int hundredths = -9000; hundredths <= 18000; ++hundredths) {
    const double degrees = hundredths / 100.0;
    record.data.inputs.thetaCE = {Sila::ToHeld(Sila::Kind::Angle, Sila::Unit::Degree, degrees)};
    ASSERT_EQ(Vse::EntriesOf(record.data, QLocale::c(), {})[Sila::Measurement::ThetaCE]
                  .text.toStdString(),
              Vse::NumberText(degrees, QLocale::c()).toStdString());
  }
}

// What Change shows and OK reads back is the same case, also where the held double is another.
TEST(IsSameCase, HoldsAcrossTheFormAndTellsRealChanges) {
  for (int tenths = 1; tenths < 400; ++tenths) {
    CaseRecord record = SomeCase();
    const double typed = tenths / 10.0;
    record.data.inputs.headRadius = {
        Sila::ToHeld(Sila::Kind::Radius, Sila::Unit::Centimetre, typed)};
    record.data.inputs.lizm = {Sila::ToHeld(Sila::Kind::Length, Sila::Unit::Millimetre, typed)};
    record.data.inputs.thetaCE = {
        Sila::ToHeld(Sila::Kind::Angle, Sila::Unit::Radian, typed / 100.0)};
    record.data.inputs.bodyWeight = Sila::Kilograms{70.0};
    const auto back =
        Vse::CheckEntries(Vse::EntriesOf(record.data, QLocale::c(), {}), false, QLocale::c()).data;
    ASSERT_TRUE(back);
    EXPECT_TRUE(Vse::IsSameCase(record.data, *back)) << typed;
    CaseData other = *back;
    other.inputs.zizm.value += 0.01;
    EXPECT_FALSE(Vse::IsSameCase(record.data, other));
    other = *back;
    other.patient.comments += "x";
    EXPECT_FALSE(Vse::IsSameCase(record.data, other));
  }
}

}  // namespace
