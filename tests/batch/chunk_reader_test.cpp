// Records are cut where they end, whatever pieces the input comes in.
#include "batch/chunk_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "columns/cohort_error.h"
#include "tests/support/row_name.h"

namespace {

// A source that gives the text in pieces of at most `piece` bytes.
Cohort::ReadBytes InPieces(std::string text, std::size_t piece) {
  return [text = std::move(text), piece, at = std::size_t{0}](std::span<char> buffer) mutable {
    const std::size_t count = std::min({piece, buffer.size(), text.size() - at});
    std::copy_n(text.data() + at, count, buffer.data());
    at += count;
    return count;
  };
}

struct HeaderRow {
  const char* name;
  std::string text;
  std::optional<std::string> header;
  std::string lineEnd;
};

class Header : public testing::TestWithParam<HeaderRow> {};

TEST_P(Header, IsTheFirstRecordInPiecesOfAnySize) {
  for (const std::size_t piece : {1U, 2U, 3U, 100U}) {
    Cohort::ChunkReader reader(InPieces(GetParam().text, piece), {.readSize = 7});
    EXPECT_EQ(reader.ReadHeader(), GetParam().header) << piece;
    EXPECT_EQ(reader.LineEnd(), GetParam().lineEnd) << piece;
    std::string rest;
    for (std::string chunk; reader.Next(chunk);) rest += chunk;
    const std::string taken = GetParam().header.value_or("") + GetParam().lineEnd;
    EXPECT_EQ(rest, GetParam().text.substr(std::min(taken.size(), GetParam().text.size())));
  }
}

INSTANTIATE_TEST_SUITE_P(
    Table, Header,
    testing::Values(HeaderRow{"Lf", "a,b\n1,2\n", "a,b", "\n"},
                    HeaderRow{"CrLf", "a,b\r\n1,2\r\n", "a,b", "\r\n"},
                    HeaderRow{"Cr", "a,b\r1,2\r", "a,b", "\r"},
                    HeaderRow{"CrAtTheEnd", "a,b\r", "a,b", "\r"},
                    HeaderRow{"CrAndABlankLine", "a,b\r\r1,2\r", "a,b", "\r"},
                    HeaderRow{"Alone", "a,b", "a,b", "\n"},
                    HeaderRow{"QuotedLineEnd", "\"a\r\nb\",c\n1,2", "\"a\r\nb\",c", "\n"},
                    HeaderRow{"DoubledQuotes", "\"a\"\"\n\",c\r\nx", "\"a\"\"\n\",c", "\r\n"},
                    HeaderRow{"OpenQuote", "\"a\nb", "\"a\nb", "\n"},
                    HeaderRow{"BlankLine", "\na", "", "\n"},
                    HeaderRow{"Empty", "", std::nullopt, "\n"}),
    RowName());

TEST(Header, MayHaveSeveralCrBeforeItsLf) {
  for (const std::size_t piece : {1U, 2U, 100U}) {
    Cohort::ChunkReader reader(InPieces("a,b\r\r\n1,2\r\r\n", piece), {.readSize = 7});
    EXPECT_EQ(reader.ReadHeader(), "a,b");
    EXPECT_EQ(reader.LineEnd(), "\r\n");
    std::string rest;
    for (std::string chunk; reader.Next(chunk);) rest += chunk;
    EXPECT_EQ(rest, "1,2\r\r\n");
  }
}

TEST(Header, IsTheSecondRecordWhereTheFirstNamesTheSeparator) {
  for (const std::size_t piece : {1U, 2U, 100U}) {
    Cohort::ChunkReader reader(InPieces("\xEF\xBB\xBFsep=;\r\na;b\r\n1;2\r\n", piece),
                               {.readSize = 7});
    EXPECT_EQ(reader.ReadHeader(), "a;b");
    EXPECT_EQ(reader.SeparatorLine(), "\xEF\xBB\xBFsep=;");
    EXPECT_EQ(reader.LineEnd(), "\r\n");
    std::string chunk;
    ASSERT_TRUE(reader.Next(chunk));
    EXPECT_EQ(chunk.substr(0, 3), "1;2");
  }
  Cohort::ChunkReader plain(InPieces("a,b\n", 100));
  plain.ReadHeader();
  EXPECT_EQ(plain.SeparatorLine(), "");
  Cohort::ChunkReader alone(InPieces("sep=;\n", 100));
  EXPECT_FALSE(alone.ReadHeader().has_value());
}

TEST(ControlZ, IsDroppedAtTheVeryEndOnly) {
  for (const std::size_t piece : {1U, 2U, 100U}) {
    Cohort::ChunkReader reader(InPieces("a,b\n1\x1A,2\n3,4\x1A\x1A", piece), {.readSize = 7});
    EXPECT_EQ(reader.ReadHeader(), "a,b");
    std::string rest;
    for (std::string chunk; reader.Next(chunk);) rest += chunk;
    EXPECT_EQ(rest, "1\x1A,2\n3,4");
  }
  Cohort::ChunkReader header(InPieces("a,b\x1A", 2));
  EXPECT_EQ(header.ReadHeader(), "a,b");
  std::string chunk;
  EXPECT_FALSE(header.Next(chunk));
}

std::vector<std::string> RecordsOf(std::string_view text, char lineEnd) {
  std::vector<std::string> records;
  Cohort::RecordWalk walk(text, lineEnd);
  for (std::string_view record; walk.Next(record);) records.emplace_back(record);
  return records;
}

TEST(RecordWalk, EndsRecordsOutsideQuotesOnly) {
  using Records = std::vector<std::string>;
  EXPECT_EQ(RecordsOf("a\nb\r\nc", '\n'), (Records{"a", "b", "c"}));
  EXPECT_EQ(RecordsOf("\"a\nb\",\"c\n\"\"d\n\"\ne\n", '\n'),
            (Records{"\"a\nb\",\"c\n\"\"d\n\"", "e"}));
  EXPECT_EQ(RecordsOf("a\n\n\nb\n", '\n'), (Records{"a", "", "", "b"}));
  EXPECT_EQ(RecordsOf("a\rb\nc\r", '\r'), (Records{"a", "b\nc"}));
  EXPECT_EQ(RecordsOf("a\r\r\nb\r\n\rc\r\r", '\n'), (Records{"a", "b", "\rc"}));
  EXPECT_EQ(RecordsOf("a\r\nb\r\n", '\r'), (Records{"a", "b", ""}));
  EXPECT_EQ(RecordsOf("\"a\nb", '\n'), (Records{"\"a\nb"}));
  EXPECT_EQ(RecordsOf("", '\n'), Records{});
}

// Records of many kinds; the answer by reading them in one piece.
const std::string kRecords =
    "1,\"x\ny\"\n2\n\n\"\"\n\"\n\n\"\"\n\",3\n4,\"a\"\"b\"\r\n\"5\n\",\"\n\"\n6,plain\n7,"
    "\"last\n\"";

TEST(ChunkReader, GivesWholeRecordsForPiecesOfAnySize) {
  const std::vector<std::string> expected = RecordsOf(kRecords, '\n');
  ASSERT_EQ(expected.size(), 9U);
  for (std::size_t piece = 1; piece <= kRecords.size() + 1; ++piece) {
    Cohort::ChunkReader reader(InPieces("h\n" + kRecords, piece), {.readSize = piece});
    ASSERT_EQ(reader.ReadHeader(), "h");
    std::vector<std::string> records;
    for (std::string chunk; reader.Next(chunk);) {
      for (std::string& record : RecordsOf(chunk, '\n')) records.push_back(std::move(record));
    }
    EXPECT_EQ(records, expected) << "pieces of " << piece;
  }
}

TEST(ChunkReader, GivesWhatThereIsWithoutWaitingForMore) {
  int reads = 0;
  Cohort::ChunkReader reader([&](std::span<char> buffer) {
    if (++reads > 2) ADD_FAILURE() << "waited although a record was there";
    const std::string text = reads == 1 ? "h\n" : "1\n2\n3";
    std::copy(text.begin(), text.end(), buffer.begin());
    return text.size();
  });
  reader.ReadHeader();
  std::string chunk;
  ASSERT_TRUE(reader.Next(chunk));
  EXPECT_EQ(chunk, "1\n2\n");
}

TEST(ChunkReader, RefusesARecordAboveTheLimit) {
  const std::size_t limit = std::size_t{1} << 20;
  Cohort::ChunkReader reader(InPieces("h\n1\n\"" + std::string(3 * limit, 'x'), limit),
                             {.readSize = limit, .recordSize = limit});
  reader.ReadHeader();
  std::string chunk;
  ASSERT_TRUE(reader.Next(chunk));
  EXPECT_EQ(chunk, "1\n");
  try {
    reader.Next(chunk);
    FAIL() << "a record of 3 MiB passed a limit of 1 MiB";
  } catch (const Cohort::CohortError& error) {
    EXPECT_STREQ(error.what(), "the row is longer than 1 MiB; is a quote not closed?");
  }
}

}  // namespace
