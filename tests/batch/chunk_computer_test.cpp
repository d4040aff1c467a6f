// Records in, records with results out: every byte of the input stays, the results stay in line.
#include "batch/chunk_computer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/batch/cohort_text.h"
#include "tests/support/row_name.h"

namespace {

using namespace std::string_literals;

using CohortText::Replaced;

const std::string kHip = CohortText::kDefaultHip;

// The results of the default hip as they are put out.
std::string DefaultResults() {
  const Cohort::HeaderRow header = Cohort::ReadHeaderRow(CohortText::kHeader, std::nullopt);
  const Cohort::RowFormat format = {.lineEnd = ""};
  Cohort::ChunkResult result;
  Cohort::ChunkComputer(header, format).Compute(kHip, '\n', result);
  return result.text.substr(kHip.size());
}

Cohort::ChunkResult Compute(const std::string& chunk, const std::string& lineEnd = "\n",
                            bool table = false) {
  const Cohort::HeaderRow header =
      Cohort::ReadHeaderRow("name," + CohortText::kHeader + ",remark", std::nullopt);
  const Cohort::RowFormat format = {.lineEnd = lineEnd, .table = table};
  Cohort::ChunkComputer computer(header, format);
  Cohort::ChunkResult result;
  computer.Compute("to be forgotten\n", '\n', result);
  computer.Compute(chunk, lineEnd.back(), result);
  return result;
}

struct Kept {
  const char* name;
  std::string record;
};

class GoodRecord : public testing::TestWithParam<Kept> {};

TEST_P(GoodRecord, KeepsEveryByteBeforeItsResults) {
  const Cohort::ChunkResult result = Compute(GetParam().record + "\n");
  EXPECT_EQ(result.text, GetParam().record + DefaultResults() + "\n");
  EXPECT_EQ(result.bad, 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Table, GoodRecord,
    testing::Values(Kept{"Plain", "Ann," + kHip + ",none"}, Kept{"Empty", "," + kHip + ","},
                    Kept{"Quotes", "\"Ann \"\"A\"\" B\"," + kHip + ",\"\""},
                    Kept{"LineEndInQuotes", "\"Ann\r\nB\"," + kHip + ",\"a\nb\""},
                    Kept{"Blanks", " Ann , " + kHip + " , \"x\" "},
                    Kept{"NulBytes", "A\0nn,"s + kHip + ",\0"s},
                    Kept{"Latin1", "M\xFCller," + kHip + ",\xFF"}),
    RowName());

struct Bare {
  const char* name;
  std::string record;
  std::string lineEnd;  // of the file
  std::string out;      // the record in the output
};

class BareLineEnd : public testing::TestWithParam<Bare> {};

TEST_P(BareLineEnd, IsQuotedSoThatTheRowStaysWhole) {
  const Cohort::ChunkResult result =
      Compute(GetParam().record + GetParam().lineEnd, GetParam().lineEnd);
  EXPECT_EQ(result.text, GetParam().out + DefaultResults() + GetParam().lineEnd);
  EXPECT_EQ(result.hips, 1U);
  EXPECT_EQ(result.bad, 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Table, BareLineEnd,
    testing::Values(
        Bare{"CrInAFileOfLf", "A\rB," + kHip + ",none", "\n", "\"A\rB\"," + kHip + ",none"},
        Bare{"CrInAFileOfCrLf", "Ann," + kHip + ",a\rb", "\r\n", "Ann," + kHip + ",\"a\rb\""},
        Bare{"LfInAFileOfCr", "Ann," + kHip + ",one\ntwo", "\r", "Ann," + kHip + ",\"one\ntwo\""},
        Bare{"BlanksAround", " A\rB , " + kHip + ",x", "\n", "\" A\rB \", " + kHip + ",x"},
        Bare{"Twice", "\rA," + kHip + ",\rb", "\n", "\"\rA\"," + kHip + ",\"\rb\""},
        Bare{"BesideQuotedOnes", "\"A\rB\"," + kHip + ",a\rb", "\n",
             "\"A\rB\"," + kHip + ",\"a\rb\""},
        Bare{"BehindANumber", "Ann," + Replaced(kHip, "10.40", "10.40\r") + ",", "\n",
             "Ann," + Replaced(kHip, "10.40", "\"10.40\r\"") + ","}),
    RowName());

TEST(SurplusField, IsQuotedTooWhereItHoldsALineEnd) {
  EXPECT_EQ(Compute("Ann," + kHip + ",x,a\rb\n").text,
            "Ann," + kHip +
                ",x,,,,,,error: the row has 12 fields and the header 11: rows run together "
                "since they end with CR alone and the header does not,\"a\rb\"\n");
}

TEST(GluedRows, AreToldForWhatTheyAre) {
  const std::string row = "Ann," + kHip + ",none";
  EXPECT_EQ(Compute(row + "\r" + row + "\r\n").firstBad->text,
            "error: the row has 21 fields and the header 11: rows run together since they end with "
            "CR alone "
            "and the header does not");
  EXPECT_EQ(Compute(row + "\n" + row + "\n\r", "\r").firstBad->text,
            "error: the row has 21 fields and the header 11: rows run together since they end with "
            "LF and "
            "the header with CR");
  EXPECT_EQ(Compute("\"a\rb\"," + row + "\n").firstBad->text,
            "error: the row has 12 fields and the header 11: the header may lack a name for the "
            "first column");
}

TEST(LastRow, OfBlanksOrAControlZIsNone) {
  for (const char* last : {"", " ", "  \n", "\x1A", "\x1A\n", " \x1A\x1A\r\n", "\r\n"}) {
    const Cohort::ChunkResult result = Compute("Ann," + kHip + ",none\n" + last);
    EXPECT_EQ(result.hips, 1U) << testing::PrintToString(last);
    EXPECT_EQ(result.bad, 0U);
  }
  EXPECT_EQ(Compute("Ann," + kHip + ",none\r\n", "\r").hips, 1U);
}

TEST(ShortRecord, IsFilledUpSoThatTheResultsStayInLine) {
  EXPECT_EQ(Compute("Ann,1,2\n").text,
            "Ann,1,2,,,,,,,,,,,,,,error: the row has 3 fields and the header 11\n");
}

TEST(LongRecord, HasItsSurplusBehindTheStatus) {
  EXPECT_EQ(Compute("\"A,\"\"\",1,2,3,4,5,6,7,8,9,10,\"11,\",12\n").text,
            "\"A,\"\"\",1,2,3,4,5,6,7,8,9,10,,,,,,error: the row has 13 fields and the header "
            "11,\"11,\",12\n");
}

TEST(LineEnds, AreTheGivenOnesThroughout) {
  const std::string record = "Ann," + kHip + ",none";
  const std::string out = record + DefaultResults();
  EXPECT_EQ(Compute(record + "\r\n" + record + "\n" + record, "\r\n").text,
            out + "\r\n" + out + "\r\n" + out + "\r\n");
  EXPECT_EQ(Compute(record + "\r" + record + "\r", "\r").text, out + "\r" + out + "\r");
}

TEST(BlankLines, AreLeftOutButCounted) {
  const Cohort::ChunkResult result = Compute("\n\r\n  \nx\n\n");
  EXPECT_EQ(result.text, "x,,,,,,,,,,,,,,,,error: the row has 1 field and the header 11\n");
  EXPECT_EQ(result.rows, 5U);
  EXPECT_EQ(result.hips, 1U);
  ASSERT_TRUE(result.firstBad.has_value());
  EXPECT_EQ(result.firstBad->row, 4U);
}

TEST(Tally, CountsBadRowsAndKeepsTheFirst) {
  const std::string good = "Ann," + kHip + ",none\n";
  const Cohort::ChunkResult result = Compute(good + "a\nb,c\n" + good);
  EXPECT_EQ(result.rows, 4U);
  EXPECT_EQ(result.hips, 4U);
  EXPECT_EQ(result.bad, 2U);
  EXPECT_EQ(result.firstBad->row, 2U);
  EXPECT_EQ(result.firstBad->text, "error: the row has 1 field and the header 11");
  EXPECT_FALSE(result.trouble.has_value());
}

TEST(BrokenQuote, EndsTheChunkAfterTheRowsBeforeIt) {
  const std::string good = "Ann," + kHip + ",none";
  for (const std::string broken : {"x,5'10\",\n", "x,\"open\n1,2\n"}) {
    std::string chunk = good;
    chunk.append("\n").append(broken).append(good).append("\n");
    const Cohort::ChunkResult result = Compute(chunk);
    EXPECT_EQ(result.text, good + DefaultResults() + "\n");
    ASSERT_TRUE(result.trouble.has_value());
    EXPECT_EQ(result.trouble->row, 2U);
  }
}

TEST(RowsForATable, HoldTheFieldsAndTheResultsInPlaceOfText) {
  const std::string chunk = "\"A, B\"," + kHip + ",none\n\nshort,1\n";
  const Cohort::ChunkResult result = Compute(chunk, "\n", true);
  EXPECT_EQ(result.text, "");
  EXPECT_EQ(result.hips, 2U);
  EXPECT_EQ(result.bad, 1U);
  ASSERT_EQ(result.table.size(), 2U);
  EXPECT_EQ(result.table[0].fields.size(), 11U);
  EXPECT_EQ(result.table[0].fields[0], "A, B");
  std::string results;
  Cohort::AppendResults(results, result.table[0].result, ',');
  EXPECT_EQ(results, DefaultResults());
  EXPECT_EQ(result.table[1].fields, (std::vector<std::string>{"short", "1"}));
  EXPECT_EQ(result.table[1].result.status, result.firstBad->text);
}

TEST(Header, IsKeptAndGetsTheNamesOfTheResults) {
  std::string text;
  Cohort::AppendHeader(text, "\xEF\xBB\xBF\"a b\";lizm", ';', "\r\n");
  EXPECT_EQ(text, "\xEF\xBB\xBF\"a b\";lizm;rWb;thetaR;thetaPol;pmaxWb;pmax;status\r\n");
}

}  // namespace
