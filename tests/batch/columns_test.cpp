// What a header row may say, and what is said when it does not serve.
#include "batch/columns.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "batch/cohort_error.h"
#include "tests/batch/cohort_text.h"
#include "tests/support/row_name.h"

namespace {

using CohortText::kHeader;
using CohortText::Replaced;

Cohort::InputColumn ColumnOf(const Cohort::Columns& columns, Measure measure) {
  return columns.inputs.at(static_cast<std::size_t>(measure)).value();
}

TEST(Columns, AreCmDegreesMetresAndKilogramsWithoutUnits) {
  const Cohort::Columns columns = Cohort::ReadColumns(kHeader, std::nullopt);
  EXPECT_EQ(columns.delimiter, ',');
  EXPECT_EQ(columns.names.size(), 9U);
  for (const Measure length :
       {Measure::Lizm, Measure::Xizm, Measure::Zizm, Measure::Cizm, Measure::Hizm}) {
    EXPECT_EQ(ColumnOf(columns, length).unit, Vse::kCentimetre);
  }
  EXPECT_EQ(ColumnOf(columns, Measure::Zasuk).unit, Vse::kDegree);
  EXPECT_EQ(ColumnOf(columns, Measure::ThetaCE).unit, Vse::kDegree);
  EXPECT_EQ(ColumnOf(columns, Measure::HeadRadius).unit, Vse::kMetre);
  ASSERT_TRUE(columns.inputs[Cohort::kBodyWeight].has_value());
  EXPECT_EQ(columns.inputs[Cohort::kBodyWeight]->field, 8U);
}

TEST(Columns, StandInAnyOrderAmongOthers) {
  const Cohort::Columns columns = Cohort::ReadColumns(
      "thetaCE,name,Hizm,Cizm,zizm,xizm,lizm,remark,headRadius,zasuk", std::nullopt);
  EXPECT_EQ(ColumnOf(columns, Measure::ThetaCE).field, 0U);
  EXPECT_EQ(ColumnOf(columns, Measure::Lizm).field, 6U);
  EXPECT_EQ(ColumnOf(columns, Measure::Zasuk).field, 9U);
  EXPECT_FALSE(columns.inputs[Cohort::kBodyWeight].has_value());
}

struct TitleRow {
  const char* name;
  std::string from;  // this title of the plain header …
  std::string to;    // … stands like this
  Measure measure;
  QStringView unit;
};

class Titles : public testing::TestWithParam<TitleRow> {};

TEST_P(Titles, NameTheUnit) {
  const std::string header = Replaced(kHeader, GetParam().from, GetParam().to);
  const Cohort::Columns columns = Cohort::ReadColumns(header, std::nullopt);
  EXPECT_EQ(ColumnOf(columns, GetParam().measure).unit, GetParam().unit) << header;
}

INSTANTIATE_TEST_SUITE_P(
    Table, Titles,
    testing::Values(
        TitleRow{"LengthMm", "lizm", "lizm[mm]", Measure::Lizm, Vse::kMillimetre},
        TitleRow{"LengthCm", "Hizm", "Hizm[cm]", Measure::Hizm, Vse::kCentimetre},
        TitleRow{"Blanks", "Cizm", " Cizm [ mm ] ", Measure::Cizm, Vse::kMillimetre},
        TitleRow{"Quoted", "xizm", "\"xizm[mm]\"", Measure::Xizm, Vse::kMillimetre},
        TitleRow{"Radians", "thetaCE", "thetaCE[rad]", Measure::ThetaCE, Vse::kRadian},
        TitleRow{"Degrees", "zasuk", "zasuk[deg]", Measure::Zasuk, Vse::kDegree},
        TitleRow{"DegreeSign", "zasuk", "zasuk[°]", Measure::Zasuk, Vse::kDegree},
        TitleRow{"RadiusM", "headRadius", "headRadius[m]", Measure::HeadRadius, Vse::kMetre},
        TitleRow{"RadiusCm", "headRadius", "headRadius[cm]", Measure::HeadRadius, Vse::kCentimetre},
        TitleRow{"RadiusMm", "headRadius", "headRadius[mm]", Measure::HeadRadius,
                 Vse::kMillimetre}),
    RowName());

TEST(Delimiter, IsFoundByTheMeasuresItSetsApart) {
  for (const char delimiter : {',', ';', '\t'}) {
    std::string header = kHeader;
    std::replace(header.begin(), header.end(), ',', delimiter);
    EXPECT_EQ(Cohort::ReadColumns(header, std::nullopt).delimiter, delimiter);
    const std::string misleading = "\"a,b;c\td\"" + std::string(1, delimiter) + header;
    EXPECT_EQ(Cohort::ReadColumns(misleading, std::nullopt).delimiter, delimiter);
  }
  std::string header = kHeader;
  std::replace(header.begin(), header.end(), ',', ';');
  EXPECT_EQ(Cohort::ReadColumns("a,b,c,d,e,f,g,h,i,j,k,l;" + header, std::nullopt).delimiter, ';');
}

TEST(ByteOrderMark, IsPassedOver) {
  const Cohort::Columns columns = Cohort::ReadColumns("\xEF\xBB\xBF" + kHeader, std::nullopt);
  EXPECT_EQ(columns.names.front(), "lizm");
  EXPECT_EQ(ColumnOf(columns, Measure::Lizm).field, 0U);
}

TEST(BodyWeight, MayNameItsUnit) {
  const Cohort::Columns columns =
      Cohort::ReadColumns(Replaced(kHeader, "bodyWeight", "bodyWeight[kg]"), std::nullopt);
  EXPECT_TRUE(columns.inputs[Cohort::kBodyWeight].has_value());
}

TEST(OtherColumns, MayShareAName) {
  EXPECT_EQ(Cohort::ReadColumns("a,a,," + kHeader, std::nullopt).names.size(), 12U);
}

struct BadHeader {
  const char* name;
  std::string header;
  std::string message;
};

class BadHeaders : public testing::TestWithParam<BadHeader> {};

TEST_P(BadHeaders, AreToldInASentence) {
  try {
    Cohort::ReadColumns(GetParam().header, std::nullopt);
    FAIL() << "accepted: " << GetParam().header;
  } catch (const Cohort::CohortError& error) {
    EXPECT_EQ(error.what(), GetParam().message);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Table, BadHeaders,
    testing::Values(
        BadHeader{"MissingOne", Replaced(kHeader, "thetaCE,", ""), "the column thetaCE is missing"},
        BadHeader{"MissingTwo", Replaced(Replaced(kHeader, "lizm,", ""), "thetaCE,", ""),
                  "the columns lizm, thetaCE are missing"},
        BadHeader{"OtherCase", Replaced(kHeader, "lizm", "LIZM"), "the column lizm is missing"},
        BadHeader{"Blank", "",
                  "the columns lizm, xizm, zizm, Cizm, Hizm, zasuk, thetaCE, headRadius are "
                  "missing"},
        BadHeader{"TwoOfOneName", kHeader + ",zizm", "there are two columns zizm"},
        BadHeader{"TwoOfOneNameInOtherUnits", kHeader + ",zizm[mm]", "there are two columns zizm"},
        BadHeader{"UnknownLength", Replaced(kHeader, "lizm", "lizm[inch]"),
                  "the unit \"inch\" of column lizm is not known; known are cm, mm"},
        BadHeader{"LengthInMetres", Replaced(kHeader, "lizm", "lizm[m]"),
                  "the unit \"m\" of column lizm is not known; known are cm, mm"},
        BadHeader{"NoUnit", Replaced(kHeader, "lizm", "lizm[]"),
                  "the unit \"\" of column lizm is not known; known are cm, mm"},
        BadHeader{"UnknownAngle", Replaced(kHeader, "thetaCE", "thetaCE[grad]"),
                  "the unit \"grad\" of column thetaCE is not known; known are °, deg, rad"},
        BadHeader{"UnknownWeight", Replaced(kHeader, "bodyWeight", "bodyWeight[lb]"),
                  "the unit \"lb\" of column bodyWeight is not known; known are kg"},
        BadHeader{"ResultAlreadyThere", kHeader + ",pmax",
                  "there is a column pmax already, which the program adds; remove or rename it"},
        BadHeader{"StatusAlreadyThere", "status," + kHeader,
                  "there is a column status already, which the program adds; remove or rename it"},
        BadHeader{"BrokenQuote", kHeader + ",\"remark", "the header has a broken quote"},
        BadHeader{"NulBytes", std::string("l\0i\0z\0m\0", 8),
                  "the header holds NUL bytes; the file must be text in UTF-8, not UTF-16"}),
    RowName());

TEST(Delimiter, IsTakenAsGiven) {
  EXPECT_THROW(Cohort::ReadColumns(kHeader, ';'), Cohort::CohortError);
  EXPECT_EQ(Cohort::ReadColumns(kHeader, ',').delimiter, ',');
}

TEST(Header, IsWhatNamesTwoMeasuresUnderSomeDelimiter) {
  for (const char* row : {kHeader.c_str(), "lizm;name;\"xizm [mm]\"", "thetaCE\tbodyWeight"}) {
    EXPECT_TRUE(Cohort::LooksLikeHeader(row)) << row;
  }
  for (const char* row : {"", "lizm", "lizm xizm", "TELMARION", "Lizm,Xizm", "10.4,0.5,6"}) {
    EXPECT_FALSE(Cohort::LooksLikeHeader(row)) << row;
  }
}

}  // namespace
