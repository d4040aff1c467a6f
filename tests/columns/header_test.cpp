// What the names of a header may say, and what is said when they cannot be used.
#include "columns/header.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "columns/cohort_error.h"
#include "columns/column_title.h"
#include "tests/batch/cohort_text.h"
#include "tests/support/row_name.h"

namespace {

using CohortText::kHeader;
using CohortText::Replaced;
using Sila::Measurement;
using Sila::Unit;

// The columns of these names, which have commas between them.
Cohort::Columns Find(const std::string& header) {
  std::vector<std::string> names;
  std::istringstream text(header);
  for (std::string name; std::getline(text, name, ',');) names.push_back(name);
  return Cohort::FindColumns(std::move(names));
}

Cohort::InputColumn ColumnOf(const Cohort::Columns& columns, Measurement measurement) {
  return columns[measurement].value();
}

TEST(Columns, HaveTheFirstUnitOfTheirKindWithoutOne) {
  const Cohort::Columns columns = Find(kHeader);
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    EXPECT_EQ(columns.names.at(ColumnOf(columns, row.id).field), row.key);
    EXPECT_EQ(ColumnOf(columns, row.id).unit, Sila::UnitsOf(row.kind()).front());
  }
}

TEST(Columns, AreFoundInEveryUnitOfTheirKind) {
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    std::vector<Unit> units;
    std::istringstream names(Cohort::KnownUnits(row.kind()));
    for (std::string name; std::getline(names >> std::ws, name, ',');) {
      const std::string title = std::string(row.key) + '[' + name + ']';
      units.push_back(ColumnOf(Find(title), row.id).unit);
    }
    for (const Unit unit : Sila::UnitsOf(row.kind())) {
      EXPECT_NE(std::find(units.begin(), units.end(), unit), units.end()) << row.key;
    }
  }
}

TEST(Columns, StandInAnyOrderAmongOthers) {
  const Cohort::Columns columns =
      Find("thetaCE,name,Hizm,Cizm,zizm,xizm,lizm,remark,headRadius,zasuk");
  EXPECT_EQ(ColumnOf(columns, Measurement::ThetaCE).field, 0U);
  EXPECT_EQ(ColumnOf(columns, Measurement::Lizm).field, 6U);
  EXPECT_EQ(ColumnOf(columns, Measurement::Zasuk).field, 9U);
  EXPECT_FALSE(columns[Measurement::BodyWeight].has_value());
}

struct TitleRow {
  const char* name;
  std::string from;  // this title of the plain header …
  std::string to;    // … stands like this
  Measurement measurement;
  Unit unit;
};

class Titles : public testing::TestWithParam<TitleRow> {};

TEST_P(Titles, NameTheUnit) {
  const std::string header = Replaced(kHeader, GetParam().from, GetParam().to);
  const Cohort::Columns columns = Find(header);
  EXPECT_EQ(ColumnOf(columns, GetParam().measurement).unit, GetParam().unit) << header;
}

INSTANTIATE_TEST_SUITE_P(
    Table, Titles,
    testing::Values(
        TitleRow{"LengthMm", "lizm", "lizm[mm]", Measurement::Lizm, Unit::Millimetre},
        TitleRow{"LengthCm", "Hizm", "Hizm[cm]", Measurement::Hizm, Unit::Centimetre},
        TitleRow{"Blanks", "Cizm", " Cizm [ mm ] ", Measurement::Cizm, Unit::Millimetre},
        TitleRow{"Radians", "thetaCE", "thetaCE[rad]", Measurement::ThetaCE, Unit::Radian},
        TitleRow{"Degrees", "zasuk", "zasuk[deg]", Measurement::Zasuk, Unit::Degree},
        TitleRow{"DegreeSign", "zasuk", "zasuk[°]", Measurement::Zasuk, Unit::Degree},
        TitleRow{"RoundBrackets", "lizm", "lizm (mm)", Measurement::Lizm, Unit::Millimetre},
        TitleRow{"OtherCase", "lizm", "LIZM[MM]", Measurement::Lizm, Unit::Millimetre},
        TitleRow{"NoBreakSpace", "Cizm", "\u00A0cizm\u00A0(\u2009mm)\u202F", Measurement::Cizm,
                 Unit::Millimetre},
        TitleRow{"Invisible", "thetaCE", "\uFEFFtheta\u200BC\u00ADE\u2066[rad]\u2069",
                 Measurement::ThetaCE, Unit::Radian},
        TitleRow{"WrappedInItsCell", "xizm", "xizm\r\n(mm)", Measurement::Xizm, Unit::Millimetre},
        TitleRow{"RadiusM", "headRadius", "headRadius[m]", Measurement::HeadRadius, Unit::Metre},
        TitleRow{"RadiusCm", "headRadius", "headRadius[cm]", Measurement::HeadRadius,
                 Unit::Centimetre},
        TitleRow{"RadiusMm", "headRadius", "headRadius[mm]", Measurement::HeadRadius,
                 Unit::Millimetre}),
    RowName());

TEST(BodyWeight, IsFoundHoweverItIsWritten) {
  for (const char* title : {"bodyWeight[kg]", "bodyweight", "BODYWEIGHT", "bodyWeight (kg)",
                            "Bodyweight (KG)", "\u200EbodyWeight\u200C", " bodyWeight\t"}) {
    const Cohort::Columns columns = Find(Replaced(kHeader, "bodyWeight", title));
    EXPECT_TRUE(columns[Measurement::BodyWeight].has_value()) << title;
    EXPECT_TRUE(columns.remarks.empty()) << title;
  }
}

struct UnusedColumn {
  const char* name;
  std::string header;
  std::vector<std::string> remarks;
};

class Unused : public testing::TestWithParam<UnusedColumn> {};

TEST_P(Unused, IsToldWhenItsNameIsCloseToOneThatIsUsed) {
  EXPECT_EQ(Find(GetParam().header).remarks, GetParam().remarks);
}

std::string WithWeightColumn(const std::string& title) {
  return Replaced(kHeader, "bodyWeight", title);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Unused,
    testing::Values(
        UnusedColumn{"NoneWhereEverythingIsUsed", kHeader, {}},
        UnusedColumn{"OtherSigns",
                     WithWeightColumn("body_weight"),
                     {"the column \"body_weight\" is not used; is bodyWeight meant?"}},
        UnusedColumn{"OtherName",
                     WithWeightColumn("weight (kg)"),
                     {"the column \"weight (kg)\" is not used; is bodyWeight meant?"}},
        UnusedColumn{"UnknownUnit",
                     WithWeightColumn("bodyWeight[lb]"),
                     {"the column \"bodyWeight[lb]\" is not used, since its unit is not known; "
                      "bodyWeight is in kg"}},
        UnusedColumn{"EmptyUnit",
                     WithWeightColumn("bodyWeight()"),
                     {"the column \"bodyWeight()\" is not used, since its unit is not known; "
                      "bodyWeight is in kg"}},
        UnusedColumn{"UnknownUnitBesideAKnownOne",
                     "bodyWeight[lb]," + kHeader,
                     {"the column \"bodyWeight[lb]\" is not used, since its unit is not known; "
                      "bodyWeight is in kg"}},
        UnusedColumn{"SameLettersBesideTheUsedOne",
                     kHeader + ",theta CE",
                     {"the column \"theta CE\" is not used; is thetaCE meant?"}},
        UnusedColumn{"Two",
                     WithWeightColumn("mass,body.weight"),
                     {"the column \"mass\" is not used; is bodyWeight meant?",
                      "the column \"body.weight\" is not used; is bodyWeight meant?"}},
        UnusedColumn{
            "OtherNamesBesideTheUsedOne", kHeader + ",weight,thetaCE2,radius,CE,zasuk1", {}},
        UnusedColumn{
            "OrdinaryColumns", WithWeightColumn("patient,age,id,remark,status2,Status"), {}}),
    RowName());

TEST(SameNames, AreComparedAsAPersonReadsThem) {
  const auto read = [](const std::string& header) { return Find(header); };
  const Cohort::Columns columns = read("id," + kHeader);
  EXPECT_TRUE(
      Cohort::HaveSameNames(columns, read("\u200BID ," + Replaced(kHeader, "lizm", "Lizm"))));
  EXPECT_FALSE(Cohort::HaveSameNames(columns, read("name," + kHeader)));
  EXPECT_FALSE(Cohort::HaveSameNames(columns, read("id," + kHeader + ",x")));
  EXPECT_FALSE(Cohort::HaveSameNames(columns, read("id," + Replaced(kHeader, "lizm", "lizm[mm]"))));
}

TEST(ResultsInOtherCase, AreColumnsLikeOthers) {
  const Cohort::Columns columns = Find("Status,PMAX," + kHeader);
  EXPECT_EQ(columns.names.size(), 11U);
}

TEST(OtherColumns, MayShareAName) {
  EXPECT_EQ(Find("a,a,," + kHeader).names.size(), 12U);
}

struct BadNames {
  const char* name;
  std::string header;
  std::string message;
};

class RefusedNames : public testing::TestWithParam<BadNames> {};

TEST_P(RefusedNames, AreToldInASentence) {
  try {
    Find(GetParam().header);
    FAIL() << "accepted: " << GetParam().header;
  } catch (const Cohort::CohortError& error) {
    EXPECT_EQ(error.what(), GetParam().message);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Table, RefusedNames,
    testing::Values(
        BadNames{"TwoOfOneNameInOtherCase", kHeader + ",ZIZM", "there are two columns zizm"},
        BadNames{"TwoOfOneName", kHeader + ",zizm", "there are two columns zizm"},
        BadNames{"TwoOfOneNameInOtherUnits", kHeader + ",zizm[mm]", "there are two columns zizm"},
        BadNames{"UnknownLength", Replaced(kHeader, "lizm", "lizm[inch]"),
                 "the unit \"inch\" of column lizm is not known; known are cm, mm"},
        BadNames{"LengthInMetres", Replaced(kHeader, "lizm", "lizm[m]"),
                 "the unit \"m\" of column lizm is not known; known are cm, mm"},
        BadNames{"NoUnit", Replaced(kHeader, "lizm", "lizm[]"),
                 "the unit \"\" of column lizm is not known; known are cm, mm"},
        BadNames{"UnknownAngle", Replaced(kHeader, "thetaCE", "thetaCE[grad]"),
                 "the unit \"grad\" of column thetaCE is not known; known are °, deg, rad"},
        BadNames{"UnknownLengthInRoundBrackets", Replaced(kHeader, "lizm", "LIZM (px)"),
                 "the unit \"px\" of column lizm is not known; known are cm, mm"},
        BadNames{"ResultWithAnInvisibleMark", "\u200BrWb," + kHeader,
                 "there is a column rWb already, which the program adds; remove or rename it"},
        BadNames{"ResultAlreadyThere", kHeader + ",pmax",
                 "there is a column pmax already, which the program adds; remove or rename it"},
        BadNames{"StatusAlreadyThere", "status," + kHeader,
                 "there is a column status already, which the program adds; remove or rename it"}),
    RowName());

TEST(MissingColumns, AreNamedWithWhatWasPerhapsMeant) {
  EXPECT_EQ(Cohort::MissingColumns(Find(kHeader)), "");
  EXPECT_EQ(Cohort::MissingColumns(Find(Replaced(kHeader, ",bodyWeight", ",weight"))), "");
  EXPECT_EQ(Cohort::MissingColumns(Find(Replaced(kHeader, "thetaCE,", ""))),
            "the column thetaCE is missing");
  EXPECT_EQ(Cohort::MissingColumns(Find(Replaced(kHeader, "lizm,xizm", "li zm,age,X_izm"))),
            "the columns lizm, xizm are missing; \"li zm\" is perhaps lizm, \"X_izm\" is perhaps "
            "xizm");
}

}  // namespace
