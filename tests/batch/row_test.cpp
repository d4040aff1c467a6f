// One row: conversion of units, checks, and the words of a status.
#include "batch/row.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

#include "batch/record_parser.h"
#include "tests/batch/cohort_text.h"
#include "tests/support/row_name.h"

namespace {

using Cohort::RowKind;
using Cohort::RowResult;
using CohortText::Replaced;
using Sila::Result;

RowResult Compute(const std::string& header, const std::string& record) {
  const Cohort::HeaderRow row = Cohort::ReadHeaderRow(header, std::nullopt);
  Cohort::RecordParser parser(row.delimiter);
  parser.Parse(record);
  Sila::HipState scratch;
  return Cohort::ComputeRow(parser.Fields(), row, scratch);
}

std::optional<double> Value(const RowResult& row, Sila::Result id) {
  return row.values.at(Sila::IndexOf(id));
}

void ExpectNear(const std::optional<double>& value, double expected) {
  ASSERT_TRUE(value.has_value());
  EXPECT_NEAR(*value, expected, std::abs(expected) * CohortText::kRelativeTolerance);
}

// The results of the default hip.
void ExpectKnown(const RowResult& row) {
  EXPECT_EQ(row.status, "ok");
  ExpectNear(Value(row, Result::RWb), CohortText::kRWb);
  ExpectNear(Value(row, Result::ThetaR), CohortText::kThetaR);
  ExpectNear(Value(row, Result::ThetaPol), CohortText::kThetaPol);
  ExpectNear(Value(row, Result::PmaxWb), CohortText::kPmaxWb);
  ExpectNear(Value(row, Result::Pmax), CohortText::kPmax);
}

TEST(Row, GivesTheKnownResultsOfTheDefaultHip) {
  const RowResult row = Compute(CohortText::kHeader, CohortText::kDefaultHip);
  EXPECT_EQ(row.kind, RowKind::Ok);
  ExpectKnown(row);
}

TEST(UnknownWeight, LeavesOutThePeakStressOnly) {
  const std::string noWeight = Replaced(CohortText::kDefaultHip, ",70", "");
  for (const auto& [header, record] : std::vector<std::pair<std::string, std::string>>{
           {CohortText::kHeader, noWeight + ","},
           {CohortText::kHeader, noWeight + ",\"  \""},
           {CohortText::kHeader, noWeight + ",NA"},
           {CohortText::kHeader, noWeight + ",N/A"},
           {CohortText::kHeader, noWeight + ",NaN"},
           {CohortText::kHeader, noWeight + ",nan"},
           {CohortText::kHeader, noWeight + ",#N/A"},
           {CohortText::kHeader, noWeight + ", - "},
           {CohortText::kHeader, noWeight + ",Unknown"},
           {Replaced(CohortText::kHeader, ",bodyWeight", ""), noWeight}}) {
    const RowResult row = Compute(header, record);
    EXPECT_EQ(row.status, "ok");
    ExpectNear(Value(row, Result::RWb), CohortText::kRWb);
    ExpectNear(Value(row, Result::PmaxWb), CohortText::kPmaxWb);
    EXPECT_FALSE(Value(row, Result::Pmax).has_value()) << record;
  }
}

struct SameHip {
  const char* name;
  std::string header;
  std::string record;
};

class OtherUnits : public testing::TestWithParam<SameHip> {};

TEST_P(OtherUnits, GiveTheKnownResults) {
  const RowResult row = Compute(GetParam().header, GetParam().record);
  ExpectKnown(row);
}

INSTANTIATE_TEST_SUITE_P(
    Table, OtherUnits,
    testing::Values(
        SameHip{"Millimetres",
                "lizm[mm],xizm[mm],zizm[mm],Cizm[mm],Hizm[mm],zasuk,thetaCE,headRadius[mm],"
                "bodyWeight",
                "104,5,60,44,160,0,30,25,70"},
        SameHip{"Centimetres", Replaced(CohortText::kHeader, "headRadius", "headRadius[cm]"),
                Replaced(CohortText::kDefaultHip, "0.025", "2.5")},
        SameHip{"Radians", Replaced(CohortText::kHeader, "thetaCE", "thetaCE[rad]"),
                Replaced(CohortText::kDefaultHip, "30.0", "0.523598775598298")},
        SameHip{"DegreeSign", Replaced(CohortText::kHeader, "thetaCE", "thetaCE[°]"),
                CohortText::kDefaultHip},
        SameHip{"DecimalCommas", "lizm;xizm;zizm;Cizm;Hizm;zasuk;thetaCE;headRadius;bodyWeight",
                "10,40;0,50;6,00;4,40;16,00;0;30,0;0,025;70"},
        SameHip{"QuotedCommas", CohortText::kHeader,
                "\"10,40\",\"0,50\",\"6,00\",\"4,40\",\"16,00\",0,\"30,0\",\"2,5e-2\",70"},
        SameHip{"OtherOrder", "bodyWeight,x,headRadius,thetaCE,zasuk,Hizm,Cizm,zizm,xizm,lizm",
                "70,text,0.025,30,0,16,4.4,6,0.5,10.4"}),
    RowName());

TEST(Rotation, TurnsAlsoInRadians) {
  // A quarter turn brings z to x and x to -z.
  const RowResult turned = Compute(Replaced(CohortText::kHeader, "zasuk", "zasuk[rad]"),
                                   "10.4,-6,0.5,4.4,16,1.5707963267948966,30,0.025,70");
  EXPECT_EQ(turned.status, "ok");
  ExpectNear(Value(turned, Result::RWb), CohortText::kRWb);
}

struct StatusRow {
  const char* name;
  std::string from;  // this part of the default hip …
  std::string to;    // … replaced by this
  RowKind kind;
  std::string status;
};

class Status : public testing::TestWithParam<StatusRow> {};

TEST_P(Status, SaysWhatIsWrong) {
  const StatusRow& row = GetParam();
  const std::string record = Replaced(CohortText::kDefaultHip, row.from, row.to);
  const RowResult result = Compute(CohortText::kHeader, record);
  EXPECT_EQ(result.kind, row.kind) << record;
  EXPECT_EQ(result.status, row.status) << record;
  EXPECT_FALSE(Value(result, Result::ThetaPol) || Value(result, Result::PmaxWb) ||
               Value(result, Result::Pmax));
  EXPECT_EQ(Value(result, Result::RWb).has_value() || Value(result, Result::ThetaR).has_value(),
            row.kind == RowKind::Refused && row.name != std::string("LengthOf104"));
}

using namespace std::string_literals;
constexpr RowKind kBad = RowKind::Bad;
const std::string kOutside = "refused: resultant force outside the model's range";

INSTANTIATE_TEST_SUITE_P(
    Table, Status,
    testing::Values(
        StatusRow{"TooLarge", "10.40", "1e400", kBad, "error: lizm is too large"},
        StatusRow{"TooLargeBelowZero", "10.40", "-1e301", kBad, "error: lizm is too large"},
        StatusRow{"WeightTooLarge", ",70", ",1e400", kBad, "error: bodyWeight is too large"},
        StatusRow{"NotANumber", "0.50", "1e", kBad, "error: xizm is not a number"},
        StatusRow{"TwoPoints", "6.00", "1.2.3", kBad, "error: zizm is not a number"},
        StatusRow{"Infinite", "4.40", "inf", kBad, "error: Cizm is not a number"},
        StatusRow{"Empty", "16.00", "", kBad, "error: Hizm is missing"},
        StatusRow{"Blank", "16.00", "\" \"", kBad, "error: Hizm is missing"},
        StatusRow{"NotAvailable", "16.00", "NA", kBad, "error: Hizm is missing"},
        StatusRow{"NotAvailableWithSlash", "30.0", "n/a", kBad, "error: thetaCE is missing"},
        StatusRow{"NotANumberOfPandas", "0.50", "NaN", kBad, "error: xizm is missing"},
        StatusRow{"NotAvailableOfSpreadsheets", "0.025", "#N/A", kBad,
                  "error: headRadius is missing"},
        StatusRow{"Dash", "10.40", " - ", kBad, "error: lizm is missing"},
        StatusRow{"UnknownWord", "6.00", "Unknown", kBad, "error: zizm is missing"},
        StatusRow{"Nothing", CohortText::kDefaultHip, "NA,NA,NA,NA,NA,NA,NA,NA,NA", kBad,
                  "error: lizm is missing and xizm is missing and zizm is missing and Cizm is "
                  "missing and Hizm is missing and zasuk is missing and thetaCE is missing and "
                  "headRadius is missing"},
        StatusRow{"NulByte", "30.0", "3\0"s, kBad, "error: thetaCE is not a number"},
        StatusRow{"RadiusWord", "0.025", "big", kBad, "error: headRadius is not a number"},
        StatusRow{"RadiusZero", "0.025", "0", kBad, "error: headRadius must be greater than 0"},
        StatusRow{"RadiusNegative", "0.025", "-1", kBad,
                  "error: headRadius must be greater than 0"},
        StatusRow{"WeightZero", ",70", ",0", kBad, "error: bodyWeight must be greater than 0"},
        StatusRow{"WeightNegative", ",70", ",-70", kBad,
                  "error: bodyWeight must be greater than 0"},
        StatusRow{"WeightWord", ",70", ",heavy", kBad, "error: bodyWeight is not a number"},
        StatusRow{"WeightDashes", ",70", ",--", kBad, "error: bodyWeight is not a number"},
        StatusRow{"SeveralAtOnce", "10.40,0.50", ",x", kBad,
                  "error: lizm is missing and xizm is not a number"},
        StatusRow{"TooShort", ",70", "", kBad, "error: the row has 8 fields and the header 9"},
        StatusRow{"TooLong", ",70", ",70,x", kBad, "error: the row has 10 fields and the header 9"},
        StatusRow{"NameBeforeTheRow", "10.40", "Ann,10.40", kBad,
                  "error: the row has 10 fields and the header 9: the header may lack a name for "
                  "the first column"},
        StatusRow{"DelimiterBehindTheRow", ",70", ",70,", kBad,
                  "error: the row has 10 fields and the header 9"},
        StatusRow{"OneField", CohortText::kDefaultHip, "x", kBad,
                  "error: the row has 1 field and the header 9"},
        StatusRow{"LengthOf104", "10.40", "104", RowKind::Refused, kOutside},
        StatusRow{"NoPole", "30.0", "-20", RowKind::Refused,
                  "refused: no stress pole for this centre-edge angle and force"},
        StatusRow{"StressBelowZero", "30.0", "-200", RowKind::Refused,
                  "refused: no stress pole for this centre-edge angle and force"},
        StatusRow{"RadiusTooSmall", "0.025", "1e-200", RowKind::Refused,
                  "refused: the contact stress is not a finite number"}),
    RowName());

// Without a lever there is no muscle force: the hip carries the body less one leg, straight down.
TEST(LengthOfZero, IsLeftToTheModel) {
  const RowResult row =
      Compute(CohortText::kHeader, Replaced(CohortText::kDefaultHip, "10.40", "0"));
  EXPECT_NE(row.kind, RowKind::Bad);
  ExpectNear(Value(row, Result::RWb), 1.0 - 0.161);
}

// Whatever the user keeps in it.
TEST(ColumnNamedRemark, IsTheUsersOwn) {
  EXPECT_EQ(Compute("remark," + CohortText::kHeader, "lost film,,,,,,,,,").status,
            "error: the row holds no measures");
}

TEST(FaultField, SaysWhyARowHasNoMeasurements) {
  Cohort::HeaderRow header = Cohort::ReadHeaderRow("why," + CohortText::kHeader, std::nullopt);
  header.faultField = 0;
  Sila::HipState scratch;
  const auto status = [&](std::string_view why, std::string_view lizm) {
    std::vector<std::string_view> fields(header.columns.names.size());
    fields[0] = why;
    fields[1] = lizm;
    return Cohort::ComputeRow(fields, header, scratch).status;
  };
  EXPECT_EQ(status("Not correct file", ""), "error: Not correct file");
  EXPECT_EQ(status(" ", ""), "error: the row holds no measures");
  for (const char* needsQuotes : {"a, b", "a; b", "a\tb", "the line \"Cizm\"", "a\nb", "a\rb"}) {
    EXPECT_EQ(status(needsQuotes, ""), "error: the row holds no measures") << needsQuotes;
  }
  EXPECT_TRUE(status("Not correct file", "10.4").starts_with("error: xizm is missing"));
}

TEST(Scratch, LeavesNothingOfTheRowBefore) {
  const Cohort::HeaderRow header = Cohort::ReadHeaderRow(CohortText::kHeader, std::nullopt);
  Cohort::RecordParser parser(header.delimiter);
  Sila::HipState scratch;
  const auto compute = [&](const std::string& record) {
    parser.Parse(record);
    return Cohort::ComputeRow(parser.Fields(), header, scratch);
  };
  ExpectKnown(compute(CohortText::kDefaultHip));
  EXPECT_FALSE(Value(compute(Replaced(CohortText::kDefaultHip, ",70", ",")), Result::Pmax));
  EXPECT_FALSE(Value(compute(Replaced(CohortText::kDefaultHip, "30.0", "-20")), Result::PmaxWb));
  ExpectKnown(compute(CohortText::kDefaultHip));
}

TEST(AngleInRadians, IsAWrongAngleBeyondAFullTurn) {
  for (const std::string column : {"zasuk", "thetaCE"}) {
    const std::string header = Replaced(CohortText::kHeader, column, column + "[rad]");
    const std::string from = column == "zasuk" ? "0.0," : "30.0,";
    EXPECT_EQ(Compute(header, Replaced(CohortText::kDefaultHip, from, "7,")).status,
              "error: " + column + " is more than 2 pi radians");
    EXPECT_NE(Compute(header, Replaced(CohortText::kDefaultHip, from, "6.28318530717958,")).kind,
              kBad);
    EXPECT_NE(Compute(header, Replaced(CohortText::kDefaultHip, from, "-7,")).kind, kBad);
  }
  EXPECT_NE(Compute(CohortText::kHeader, Replaced(CohortText::kDefaultHip, "30.0", "400")).kind,
            kBad);
}

TEST(Results, AreTheShortestTextThatReadsBack) {
  std::string text;
  const RowResult row = {.kind = RowKind::Ok,
                         .status = "ok",
                         .values = {0.1, 0.1 + 0.2, -1.0 / 3.0, 1e300, 2066847.5}};
  Cohort::AppendResults(text, row, ';');
  EXPECT_EQ(text, ";0.1;0.30000000000000004;-0.3333333333333333;1e+300;2066847.5;ok");
}

TEST(Results, StayEmptyWhereThereAreNone) {
  std::string text;
  RowResult bad;
  bad.status = "error: x";
  Cohort::AppendResults(text, bad, ',');
  EXPECT_EQ(text, ",,,,,,error: x");
}

}  // namespace
