// Fields of one record, and what is a broken quote.
#include "batch/record_parser.h"

#include <gtest/gtest.h>

#include "tests/support/row_name.h"

namespace {

using Cohort::RecordFault;
using namespace std::string_literals;
using Fields = std::vector<std::string>;

struct Record {
  const char* name;
  char delimiter;
  std::string text;
  RecordFault fault;
  Fields fields;
};

class RecordParser : public testing::TestWithParam<Record> {};

TEST_P(RecordParser, TakesTheFieldsOrNamesTheFault) {
  Cohort::RecordParser parser(GetParam().delimiter);
  for (int time = 0; time < 2; ++time) {  // what went before leaves nothing behind
    EXPECT_EQ(parser.Parse(GetParam().text), GetParam().fault);
    if (GetParam().fault == RecordFault::None) {
      EXPECT_EQ(Fields(parser.Fields().begin(), parser.Fields().end()), GetParam().fields);
    }
    EXPECT_EQ(parser.Parse("a"s + GetParam().delimiter + "b"), RecordFault::None);
    EXPECT_EQ(Fields(parser.Fields().begin(), parser.Fields().end()), (Fields{"a", "b"}));
  }
}

constexpr RecordFault kNone = RecordFault::None;

INSTANTIATE_TEST_SUITE_P(
    Table, RecordParser,
    testing::Values(Record{"Plain", ',', "a,b,c", kNone, {"a", "b", "c"}},
                    Record{"EmptyFields", ',', ",,", kNone, {"", "", ""}},
                    Record{"Tabs", '\t', "a\t\tc\t", kNone, {"a", "", "c", ""}},
                    Record{"Semicolons", ';', "1,5;2,5", kNone, {"1,5", "2,5"}},
                    Record{"QuotedDelimiter", ',', "\"1,5\",b", kNone, {"1,5", "b"}},
                    Record{"DoubledQuote", ',', "\"say \"\"a\"\"\"", kNone, {"say \"a\""}},
                    Record{"LineEndsInQuotes", ',', "\"a\r\nb\",c", kNone, {"a\r\nb", "c"}},
                    Record{"LoneCarriageReturn", ',', "a\rb,c", kNone, {"a\rb", "c"}},
                    Record{"BlanksAround", ',', " a , \"b \" ,", kNone, {"a", "b ", ""}},
                    Record{"NulBytes", ',', "a\0b,\0"s, kNone, {"a\0b"s, "\0"s}},
                    Record{"BlanksAroundQuotes", ',', "a, \t\"b\"\t ,c", kNone, {"a", "b", "c"}},
                    Record{"QuotesAlone", ',', "\"\"\"\",\"\",x", kNone, {"\"", "", "x"}},
                    Record{"OneEmptyQuotedField", ',', "\"\"", kNone, {""}},
                    Record{"Nothing", ',', "", kNone, {}}, Record{"Blanks", ',', " \t ", kNone, {}},
                    Record{"LineEndsAlone", ',', " \r\n", kNone, {}},
                    Record{"ControlZAlone", ',', "\x1A", kNone, {}},
                    Record{"ControlZInAField", ',', "a\x1A,b", kNone, {"a\x1A", "b"}},
                    Record{"TabsAlone", '\t', "\t \t", kNone, {"", "", ""}},
                    Record{"StrayQuote", ',', "a,5'10\",b", RecordFault::StrayQuote, {}},
                    Record{"TextBehindQuote", ',', "\"a\"b,c", RecordFault::StrayQuote, {}},
                    Record{"QuoteBehindQuoted", ',', "\"a\" \"b\",c", RecordFault::StrayQuote, {}},
                    Record{"StrayBeforeOpen", ',', "\"a\"b,\"c", RecordFault::StrayQuote, {}},
                    Record{"DoubledAndOpen", ',', "a,\"b\"\"", RecordFault::OpenQuote, {}},
                    Record{"OpenQuote", ',', "a,\"b,c", RecordFault::OpenQuote, {}}),
    RowName());

// Delimiters at every place of the blocks that a record is read in, and at their seams. Records get
// shorter, so that what is left of the one before would be found.
TEST(RecordParserBlocks, FindEveryDelimiter) {
  Cohort::RecordParser parser(',');
  for (std::size_t size = 200; size > 0; --size) {
    for (std::size_t place = 0; place < size; ++place) {
      std::string record(size, 'x');
      record[place] = ',';
      ASSERT_EQ(parser.Parse(record), RecordFault::None);
      const Fields expected = {std::string(place, 'x'), std::string(size - place - 1, 'x')};
      ASSERT_EQ(Fields(parser.Fields().begin(), parser.Fields().end()), expected);
    }
    ASSERT_EQ(parser.Parse(std::string(size, ',')), RecordFault::None);
    ASSERT_EQ(parser.Fields().size(), size + 1);
  }
}

// Bytes that differ from the delimiter in one bit, or carry into their neighbours.
TEST(RecordParserBlocks, FindNothingElse) {
  Cohort::RecordParser parser(',');
  std::string record;
  for (int byte = 0; byte < 256; ++byte) {
    if (byte != ',' && byte != '"') record += static_cast<char>(byte);
  }
  record += "x,x";
  ASSERT_EQ(parser.Parse(record), RecordFault::None);
  ASSERT_EQ(parser.Fields().size(), 2U);
  EXPECT_EQ(parser.Fields()[0], std::string_view(record).substr(0, record.size() - 2));
}

TEST(RecordParserLongField, KeepsEveryByte) {
  Cohort::RecordParser parser(',');
  const std::string longText(5'000'000, 'x');
  ASSERT_EQ(parser.Parse("a," + longText), RecordFault::None);
  EXPECT_EQ(parser.Fields()[1], longText);
}

}  // namespace
