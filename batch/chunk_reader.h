// Cuts a stream of CSV into chunks of whole records, so that several workers can read it at once.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace Cohort {

// Fills the beginning of the buffer and gives the number of bytes; 0 at the end of the input.
using ReadBytes = std::function<std::size_t(std::span<char>)>;

struct ChunkLimits {
  std::size_t readSize = std::size_t{512} * 1024;   // bytes asked for at once
  std::size_t recordSize = std::size_t{128} << 20;  // bytes; longer records are refused
};

// Walks through the records of a chunk, each without its line end: LF, CR LF or CR. Programs that
// make CR LF of every LF, CR LF among them, leave several CR before an LF; they belong to it.
class RecordWalk {
 public:
  // `lineEnd` is the last character of a line end.
  RecordWalk(std::string_view text, char lineEnd);

  bool MayHoldQuotes() const { return hasQuotes_; }

  // Whether a record may hold a CR or LF.
  bool MayHoldLineEnds() const { return hasQuotes_ || hasOtherLineEnds_; }

  // False when there is no further record.
  bool Next(std::string_view& record);

 private:
  std::string_view text_;
  char lineEnd_;
  bool hasQuotes_ = false;
  bool hasOtherLineEnds_ = false;
  std::size_t begin_ = 0;
};

class ChunkReader {
 public:
  explicit ChunkReader(ReadBytes source, ChunkLimits limits = {});

  // The first record without its line end, or the second where the first names the separator; empty
  // at the end of the input. Learns the input's line end. To be called once, before Next.
  std::optional<std::string> ReadHeader();

  // How much is asked for at once from now on, and so the size of the chunks.
  void SetReadSize(std::size_t bytes) { limits_.readSize = bytes; }

  // The header's line end: LF, CR LF or CR.
  const std::string& LineEnd() const { return lineEnd_; }

  // The line before the header that names the separator ("sep=;"), without its line end; empty when
  // there is none.
  const std::string& SeparatorLine() const { return separatorLine_; }

  // The next records, each with its line end but perhaps the last. False at the end of the input.
  // Gives what one reading brings as long as that holds a whole record, so that a slow source is
  // not waited for. A control-Z at the very end, by which old programs end a text, is dropped.
  // Throws CohortError for a record above the limit.
  bool Next(std::string& chunk);

 private:
  bool ReadMore(std::string& text);
  bool HasHeaderByte(std::size_t i);
  std::optional<std::string> ReadFirstRecord();
  std::string TakeRecord(std::size_t length);

  ReadBytes source_;
  ChunkLimits limits_;
  std::string lineEnd_ = "\n";
  std::string separatorLine_;
  std::string rest_;  // read, but not yet given
};

}  // namespace Cohort
