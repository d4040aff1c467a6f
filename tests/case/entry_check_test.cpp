// The one check: entries into held units, or every fault in the order of the boxes.
#include "case/entry_check.h"

#include <gtest/gtest.h>

#include "tests/support/row_name.h"

namespace {

using Sila::Kind;
using Sila::Measurement;
using Sila::Unit;
using Vse::FaultKind;

struct Checked {
  const char* name;
  Kind kind;
  const char* text;
  Unit unit;
  Vse::CheckedNumber expected;
};

class CheckMeasurement : public testing::TestWithParam<Checked> {};

TEST_P(CheckMeasurement, GivesTheHeldValueOrTheFault) {
  const Checked& row = GetParam();
  EXPECT_EQ(Vse::CheckMeasurement(row.kind, row.text, row.unit), row.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, CheckMeasurement,
    testing::Values(
        Checked{"LengthMm", Kind::Length, "104", Unit::Millimetre, 10.4},
        Checked{"LengthCm", Kind::Length, "16,0", Unit::Centimetre, 16.0},
        Checked{"RadiusMm", Kind::Radius, "25", Unit::Millimetre, 0.025},
        Checked{"RadiusCm", Kind::Radius, "2.5", Unit::Centimetre, 0.025},
        Checked{"RadiusM", Kind::Radius, "0,025", Unit::Metre, 0.025},
        Checked{"Degrees", Kind::Angle, "30.0", Unit::Degree, 30.0 * 3.14159265358979 / 180.0},
        Checked{"Radians", Kind::Angle, "0.5", Unit::Radian, 0.5},
        Checked{"FullTurnInRadians", Kind::Angle, "6.28318530717958", Unit::Radian,
                6.28318530717958},
        Checked{"MoreThanAFullTurn", Kind::Angle, "7", Unit::Radian, FaultKind::AngleTooLarge},
        Checked{"NegativeRadians", Kind::Angle, "-7", Unit::Radian, -7.0},
        Checked{"ManyDegrees", Kind::Angle, "400", Unit::Degree, 400.0 * 3.14159265358979 / 180.0},
        Checked{"Weight", Kind::Weight, " 72,5 ", Unit::Kilogram, 72.5},
        Checked{"GroupMarks", Kind::Length, "1.2.3", Unit::Centimetre, FaultKind::NotANumber},
        Checked{"Nothing", Kind::Length, "", Unit::Centimetre, FaultKind::NotANumber},
        Checked{"TooLarge", Kind::Length, "1e301", Unit::Centimetre, FaultKind::TooLarge}),
    RowName());

CaseEntries GoodEntries() {
  CaseEntries entries;
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    entries[row.id] = {"2", Sila::UnitsOf(row.kind()).front()};
  }
  entries.bodyWeight = "70";
  return entries;
}

TEST(CheckEntries, GivesEveryMeasurementInItsHeldUnit) {
  CaseEntries entries = GoodEntries();
  entries[Measurement::Lizm] = {"104", Unit::Millimetre};
  entries[Measurement::ThetaCE] = {"0.5", Unit::Radian};
  entries[Measurement::HeadRadius] = {"2,5", Unit::Centimetre};
  const Vse::CheckedCase checked = Vse::CheckEntries(entries, false, QLocale::c());
  ASSERT_TRUE(checked.data);
  EXPECT_EQ(checked.data->inputs.lizm, 10.4);
  EXPECT_EQ(checked.data->inputs.Hizm, 2.0);
  EXPECT_EQ(checked.data->inputs.thetaCE, 0.5);
  EXPECT_EQ(checked.data->inputs.headRadius, 0.025);
  EXPECT_EQ(checked.data->inputs.bodyWeight->value, 70.0);
  EXPECT_EQ(checked.data->patient.bodyWeight, "70");
}

TEST(CheckEntries, DoesNotKnowAWeightThatIsEmptyOrDeclaredUnknown) {
  CaseEntries entries = GoodEntries();
  const Vse::CheckedCase declared = Vse::CheckEntries(entries, true, QLocale::c());
  ASSERT_TRUE(declared.data);
  EXPECT_TRUE(declared.data->weightUnknown());
  EXPECT_EQ(declared.data->patient.bodyWeight, "");
  entries.bodyWeight.clear();
  const Vse::CheckedCase empty = Vse::CheckEntries(entries, false, QLocale::c());
  ASSERT_TRUE(empty.data);
  EXPECT_TRUE(empty.data->weightUnknown());
}

TEST(CheckEntries, NamesEveryFaultInTheOrderOfTheBoxes) {
  CaseEntries entries = GoodEntries();
  entries[Measurement::HeadRadius].text = "";
  entries[Measurement::ThetaCE] = {"7", Unit::Radian};
  entries[Measurement::Xizm].text = "abc";
  entries.bodyWeight = "heavy";
  entries.dateOfBirth = "31.2.1956";
  const Vse::CheckedCase checked = Vse::CheckEntries(entries, true, QLocale::c());
  EXPECT_FALSE(checked.data);
  ASSERT_EQ(checked.faults.size(), 5U);
  EXPECT_EQ(checked.faults[0].measurement, Measurement::Xizm);
  EXPECT_EQ(checked.faults[1].measurement, Measurement::ThetaCE);
  EXPECT_EQ(checked.faults[1].kind, FaultKind::AngleTooLarge);
  EXPECT_EQ(checked.faults[2].measurement, Measurement::HeadRadius);
  EXPECT_EQ(checked.faults[3].measurement, Measurement::BodyWeight);
  EXPECT_EQ(checked.faults[4].measurement, std::nullopt);
  EXPECT_EQ(checked.faults[4].kind, FaultKind::NotADate);
}

}  // namespace
