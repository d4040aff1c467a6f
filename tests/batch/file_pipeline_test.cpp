// Several workers give the bytes of one, in the order of the rows.
#include "batch/file_pipeline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>

#include "columns/cohort_error.h"
#include "tests/batch/cohort_text.h"

namespace {

struct Outcome {
  std::string text;
  std::uint64_t rows = 0;
  std::uint64_t firstBad = 0;
  std::uint64_t trouble = 0;
  std::string why;
  bool operator==(const Outcome&) const = default;
};

// The text read in pieces of `piece` bytes by so many workers. The source fails at its end if told.
Outcome ComputeAll(const std::string& text, unsigned threads, std::size_t piece,
                   bool fails = false) {
  std::size_t at = 0;
  Cohort::ChunkReader reader(
      [&](std::span<char> buffer) {
        const std::size_t count = std::min(buffer.size(), text.size() - at);
        if (count == 0 && fails) throw Cohort::CohortError("cannot be read: gone");
        std::copy_n(text.data() + at, count, buffer.data());
        at += count;
        return count;
      },
      {.readSize = piece});
  const Cohort::HeaderRow header = Cohort::ReadHeaderRow(*reader.ReadHeader(), std::nullopt);
  Outcome outcome;
  Cohort::ComputeStream(reader, header, {.lineEnd = reader.LineEnd()}, threads,
                        [&](const Cohort::ChunkResult& result) {
                          outcome.text += result.text;
                          if (outcome.firstBad == 0 && result.firstBad) {
                            outcome.firstBad = outcome.rows + result.firstBad->row;
                          }
                          if (outcome.trouble == 0 && result.trouble) {
                            outcome.trouble = outcome.rows + result.trouble->row;
                            outcome.why = result.trouble->text;
                          }
                          outcome.rows += result.rows;
                        });
  return outcome;
}

// Hips that differ from row to row, with all that makes cutting hard among them.
std::string Cohort300() {
  std::string text = "name," + CohortText::kHeader + "\n";
  for (int i = 0; i < 300; ++i) {
    const std::string name = i % 3 == 0   ? "\"row\n" + std::to_string(i) + "\"\"\""
                             : i % 3 == 1 ? std::to_string(i)
                                          : "\"\"";
    text += name + ",10.40,0.50,6.00,4.40,16.00,0," + std::to_string(i - 100) + ",0.025,70\n";
    if (i % 40 == 39) text += "\n";
    if (i == 200) text += "bad\n";
  }
  return text;
}

TEST(Pipeline, GivesTheSameBytesForAnyThreadsAndPieces) {
  const std::string text = Cohort300();
  const Outcome expected = ComputeAll(text, 1, text.size());
  EXPECT_EQ(expected.rows, 308U);
  EXPECT_EQ(expected.firstBad, 207U);
  EXPECT_EQ(expected.trouble, 0U);
  EXPECT_EQ(std::count(expected.text.begin(), expected.text.end(), '\n'), 301 + 100);
  for (const unsigned threads : {1U, 2U, 3U, 8U}) {
    for (const std::size_t piece : {1U, 2U, 3U, 17U, 60U, 61U, 1000U, 4096U}) {
      EXPECT_EQ(ComputeAll(text, threads, piece), expected)
          << threads << " threads, pieces of " << piece;
    }
  }
}

TEST(Pipeline, NamesTheRowOfABrokenQuoteWhateverTheThreads) {
  const std::string hip = "," + CohortText::kDefaultHip + "\n";
  std::string text = "name," + CohortText::kHeader + "\n";
  for (int i = 0; i < 50; ++i) text += "a" + hip;
  text += "5'10\"" + hip;
  for (int i = 0; i < 50; ++i) text += "a" + hip;
  for (const unsigned threads : {1U, 4U}) {
    for (const std::size_t piece : {40U, 200U, 100000U}) {
      const Outcome outcome = ComputeAll(text, threads, piece);
      EXPECT_EQ(outcome.trouble, 51U);
      EXPECT_NE(outcome.why.find("quote"), std::string::npos);
    }
  }
}

TEST(Pipeline, ReportsTroubleInReadingBehindTheRowsThatWereRead) {
  for (const unsigned threads : {1U, 4U}) {
    const Outcome outcome = ComputeAll(Cohort300(), threads, 50, true);
    EXPECT_EQ(outcome.trouble, 309U);
    EXPECT_EQ(outcome.why, "cannot be read: gone");
    EXPECT_EQ(outcome.text, ComputeAll(Cohort300(), 1, 50).text);
  }
}

TEST(Pipeline, EndsWithWhatTheTakerThrows) {
  const std::string text = Cohort300();
  for (const unsigned threads : {1U, 4U}) {
    std::size_t at = 0;
    Cohort::ChunkReader reader(
        [&](std::span<char> buffer) {
          const std::size_t count = std::min(buffer.size(), text.size() - at);
          std::copy_n(text.data() + at, count, buffer.data());
          at += count;
          return count;
        },
        {.readSize = 100});
    const Cohort::HeaderRow header = Cohort::ReadHeaderRow(*reader.ReadHeader(), std::nullopt);
    int taken = 0;
    EXPECT_THROW(Cohort::ComputeStream(reader, header, {.lineEnd = reader.LineEnd()}, threads,
                                       [&](const Cohort::ChunkResult&) {
                                         if (++taken == 3) throw std::runtime_error("full");
                                       }),
                 std::runtime_error);
    EXPECT_EQ(taken, 3);
  }
}

}  // namespace
