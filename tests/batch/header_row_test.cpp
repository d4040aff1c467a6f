// How a header row is split, and what is said when it cannot be used.
#include "batch/header_row.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "columns/cohort_error.h"
#include "tests/batch/cohort_text.h"
#include "tests/support/row_name.h"

namespace {

using CohortText::kHeader;
using CohortText::Replaced;

TEST(Delimiter, IsFoundByTheMeasurementsItSetsApart) {
  for (const char delimiter : {',', ';', '\t'}) {
    std::string header = kHeader;
    std::replace(header.begin(), header.end(), ',', delimiter);
    EXPECT_EQ(Cohort::ReadHeaderRow(header, std::nullopt).delimiter, delimiter);
    const std::string misleading = "\"a,b;c\td\"" + std::string(1, delimiter) + header;
    EXPECT_EQ(Cohort::ReadHeaderRow(misleading, std::nullopt).delimiter, delimiter);
  }
  std::string header = kHeader;
  std::replace(header.begin(), header.end(), ',', ';');
  EXPECT_EQ(Cohort::ReadHeaderRow("a,b,c,d,e,f,g,h,i,j,k,l;" + header, std::nullopt).delimiter,
            ';');
}

TEST(Names, MayBeQuoted) {
  const std::string header =
      Replaced(kHeader, "xizm,zizm", "\"x,\"\"y\"\"\",\"xizm\r\n(mm)\",zizm");
  const Cohort::Columns columns = Cohort::ReadHeaderRow(header, std::nullopt).columns;
  EXPECT_EQ(columns.names.at(1), "x,\"y\"");
  EXPECT_EQ(columns[Sila::Measurement::Xizm]->field, 2U);
  EXPECT_EQ(columns[Sila::Measurement::Xizm]->unit, Sila::Unit::Millimetre);
}

TEST(ByteOrderMark, IsPassedOver) {
  const Cohort::HeaderRow header = Cohort::ReadHeaderRow("\xEF\xBB\xBF" + kHeader, std::nullopt);
  EXPECT_EQ(header.columns.names.front(), "lizm");
  EXPECT_EQ(header.columns[Sila::Measurement::Lizm]->field, 0U);
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

struct BadHeader {
  const char* name;
  std::string header;
  std::string message;
};

class BadHeaders : public testing::TestWithParam<BadHeader> {};

TEST_P(BadHeaders, AreToldInASentence) {
  try {
    Cohort::ReadHeaderRow(GetParam().header, std::nullopt);
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
        BadHeader{"BrokenQuote", kHeader + ",\"remark", "the header has a broken quote"},
        BadHeader{"NulBytes", std::string("l\0i\0z\0m\0", 8),
                  "the header holds NUL bytes; the file must be text in UTF-8, not UTF-16"}),
    RowName());

TEST(Delimiter, IsTakenAsGiven) {
  EXPECT_THROW(Cohort::ReadHeaderRow(kHeader, ';'), Cohort::CohortError);
  EXPECT_EQ(Cohort::ReadHeaderRow(kHeader, ',').delimiter, ',');
}

TEST(Header, IsWhatNamesTwoMeasurementsUnderSomeDelimiter) {
  for (const char* row : {kHeader.c_str(), "lizm;name;\"xizm [mm]\"", "thetaCE\tbodyWeight",
                          "Lizm,Xizm", "lizm xizm zizm Cizm Hizm"}) {
    EXPECT_TRUE(Cohort::LooksLikeHeader(row)) << row;
  }
  for (const char* row : {"", "lizm", "lizm xizm", "TELMARION", "10.4,0.5,6"}) {
    EXPECT_FALSE(Cohort::LooksLikeHeader(row)) << row;
  }
}

}  // namespace
