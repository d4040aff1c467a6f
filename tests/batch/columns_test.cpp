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
        TitleRow{"RoundBrackets", "lizm", "lizm (mm)", Measure::Lizm, Vse::kMillimetre},
        TitleRow{"OtherCase", "lizm", "LIZM[MM]", Measure::Lizm, Vse::kMillimetre},
        TitleRow{"NoBreakSpace", "Cizm", "\u00A0cizm\u00A0(\u2009mm)\u202F", Measure::Cizm,
                 Vse::kMillimetre},
        TitleRow{"Invisible", "thetaCE", "\uFEFFtheta\u200BC\u00ADE\u2066[rad]\u2069",
                 Measure::ThetaCE, Vse::kRadian},
        TitleRow{"WrappedInItsCell", "xizm", "\"xizm\r\n(mm)\"", Measure::Xizm, Vse::kMillimetre},
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

TEST(BodyWeight, IsFoundHoweverItIsWritten) {
  for (const char* title : {"bodyWeight[kg]", "bodyweight", "BODYWEIGHT", "bodyWeight (kg)",
                            "Bodyweight (KG)", "\u200EbodyWeight\u200C", " bodyWeight\t"}) {
    const Cohort::Columns columns =
        Cohort::ReadColumns(Replaced(kHeader, "bodyWeight", title), std::nullopt);
    EXPECT_TRUE(columns.inputs[Cohort::kBodyWeight].has_value()) << title;
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
  EXPECT_EQ(Cohort::ReadColumns(GetParam().header, std::nullopt).remarks, GetParam().remarks);
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
  const auto read = [](const std::string& header) {
    return Cohort::ReadColumns(header, std::nullopt);
  };
  const Cohort::Columns columns = read("id," + kHeader);
  EXPECT_TRUE(
      Cohort::HaveSameNames(columns, read("\u200BID ," + Replaced(kHeader, "lizm", "Lizm"))));
  EXPECT_FALSE(Cohort::HaveSameNames(columns, read("name," + kHeader)));
  EXPECT_FALSE(Cohort::HaveSameNames(columns, read("id," + kHeader + ",x")));
  EXPECT_FALSE(Cohort::HaveSameNames(columns, read("id," + Replaced(kHeader, "lizm", "lizm[mm]"))));
}

TEST(SeparatorLine, NamesTheDelimiter) {
  for (const char delimiter : {',', ';', '\t'}) {
    for (const std::string& line : {std::string("sep="), std::string("SEP="),
                                    std::string("\uFEFFsep="), std::string("\"sep=")}) {
      const std::string end = line.front() == '"' ? "\"" : "";
      EXPECT_EQ(Cohort::ReadSeparatorLine(line + delimiter + end), delimiter) << line;
      EXPECT_EQ(Cohort::ReadSeparatorLine(line + delimiter + end + delimiter), delimiter) << line;
    }
  }
  for (const char* line : {"", "sep=", "sep", "sep=;,", "separator", "sep=\xC2\xA6"}) {
    EXPECT_FALSE(Cohort::ReadSeparatorLine(line).has_value()) << line;
  }
  try {
    Cohort::ReadSeparatorLine("sep=|");
    FAIL() << "accepted";
  } catch (const Cohort::CohortError& error) {
    EXPECT_STREQ(error.what(),
                 "the line before the header names the separator \"|\"; it must be a "
                 "comma, semicolon or tab");
  }
}

TEST(ResultsInOtherCase, AreColumnsLikeOthers) {
  const Cohort::Columns columns = Cohort::ReadColumns("Status,PMAX," + kHeader, std::nullopt);
  EXPECT_EQ(columns.names.size(), 11U);
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
        BadHeader{"MissingOne", Replaced(kHeader, "thetaCE,", ""),
                  "the column thetaCE is missing; the header read is \"lizm,xizm,zizm,Cizm,Hizm,"
                  "zasuk,headRadius,bodyWeight\""},
        BadHeader{"MissingTwo", Replaced(Replaced(kHeader, "lizm,", ""), "thetaCE,", ""),
                  "the columns lizm, thetaCE are missing; the header read is \"xizm,zizm,Cizm,Hizm,"
                  "zasuk,headRadius,bodyWeight\""},
        BadHeader{"OtherSigns", Replaced(kHeader, "thetaCE", "theta CE"),
                  "the column thetaCE is missing; \"theta CE\" is perhaps thetaCE; the header read "
                  "is \"lizm,xizm,zizm,Cizm,Hizm,zasuk,theta CE,headRadius,bodyWeight\""},
        BadHeader{"OtherNames", Replaced(Replaced(kHeader, "thetaCE", "CE"), "headR", "r"),
                  "the columns thetaCE, headRadius are missing; \"CE\" is perhaps thetaCE, "
                  "\"radius\" is perhaps headRadius; the header read is \"lizm,xizm,zizm,Cizm,Hizm,"
                  "zasuk,CE,radius,bodyWeight\""},
        BadHeader{
            "Tabs", "lizm\txizm",
            "the columns zizm, Cizm, Hizm, zasuk, thetaCE, headRadius are missing; the header "
            "read is \"lizm\\txizm\""},
        BadHeader{"AnotherLine", "Table 1",
                  "the columns lizm, xizm, zizm, Cizm, Hizm, zasuk, thetaCE, headRadius are "
                  "missing; the header read is \"Table 1\""},
        BadHeader{"Blank", "",
                  "the columns lizm, xizm, zizm, Cizm, Hizm, zasuk, thetaCE, headRadius are "
                  "missing; the header read is \"\""},
        BadHeader{"SeparatedByBlanks",
                  "lizm xizm zizm Cizm Hizm zasuk thetaCE headRadius bodyWeight",
                  "the columns are separated by blanks; they must be separated by commas, "
                  "semicolons or tabs (in R by write.csv)"},
        BadHeader{"QuotedAndSeparatedByBlanks",
                  R"("name" "lizm" "xizm" "zizm" "Cizm" "Hizm" "zasuk" "thetaCE" "headRadius")",
                  "the columns are separated by blanks; they must be separated by commas, "
                  "semicolons or tabs (in R by write.csv)"},
        BadHeader{"TwoOfOneNameInOtherCase", kHeader + ",ZIZM", "there are two columns zizm"},
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
        BadHeader{"UnknownLengthInRoundBrackets", Replaced(kHeader, "lizm", "LIZM (px)"),
                  "the unit \"px\" of column lizm is not known; known are cm, mm"},
        BadHeader{"ResultWithAnInvisibleMark", "\u200BrWb," + kHeader,
                  "there is a column rWb already, which the program adds; remove or rename it"},
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
  for (const char* row : {kHeader.c_str(), "lizm;name;\"xizm [mm]\"", "thetaCE\tbodyWeight",
                          "Lizm,Xizm", "lizm xizm zizm Cizm Hizm"}) {
    EXPECT_TRUE(Cohort::LooksLikeHeader(row)) << row;
  }
  for (const char* row : {"", "lizm", "lizm xizm", "TELMARION", "10.4,0.5,6"}) {
    EXPECT_FALSE(Cohort::LooksLikeHeader(row)) << row;
  }
}

}  // namespace
