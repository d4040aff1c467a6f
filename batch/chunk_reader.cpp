// Records are cut before they are parsed, so that several workers can parse at once.
#include "batch/chunk_reader.h"

#include <algorithm>
#include <utility>

#include "batch/header_row.h"
#include "batch/quotes.h"
#include "columns/cohort_error.h"

namespace Cohort {

namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr char kControlZ = '\x1A';

// The last line end outside quotes; `quoted` says whether the text ends inside quotes. Backwards,
// since forwards each chunk would be walked record by record while all other workers wait for the
// reader.
std::size_t FindLastRecordEnd(std::string_view text, bool quoted, char lineEnd) {
  for (std::size_t i = text.size(); i-- > 0;) {
    if (text[i] == '"') quoted = !quoted;
    if (text[i] == lineEnd && !quoted) return i;
  }
  return kNone;
}

}  // namespace

// Most chunks have neither: one look at the chunk is cheaper than one at each record.
RecordWalk::RecordWalk(std::string_view text, char lineEnd)
    : text_(text),
      lineEnd_(lineEnd),
      hasQuotes_(text.find('"') != kNone),
      hasOtherLineEnds_(text.find(lineEnd == '\n' ? '\r' : '\n') != kNone) {}

bool RecordWalk::Next(std::string_view& record) {
  if (begin_ >= text_.size()) return false;
  bool quoted = false;
  const std::size_t found = hasQuotes_ ? FindOutsideQuotes(text_, begin_, {&lineEnd_, 1}, quoted)
                                       : text_.find(lineEnd_, begin_);
  const std::size_t end = std::min(found, text_.size());
  record = text_.substr(begin_, end - begin_);
  while (lineEnd_ == '\n' && record.ends_with('\r')) record.remove_suffix(1);
  if (lineEnd_ == '\r' && record.starts_with('\n')) record.remove_prefix(1);
  begin_ = end + 1;
  return true;
}

ChunkReader::ChunkReader(ReadBytes source, ChunkLimits limits)
    : source_(std::move(source)), limits_(limits) {}

bool ChunkReader::ReadMore(std::string& text) {
  const std::size_t before = text.size();
  if (before > limits_.recordSize) {
    throw CohortError("the row is longer than " + std::to_string(limits_.recordSize >> 20) +
                      " MiB; is a quote not closed?");
  }
  text.resize(before + limits_.readSize);
  const std::size_t count = source_(std::span(text).subspan(before));
  text.resize(before + count);
  if (count > 0) return true;
  while (text.ends_with(kControlZ)) text.pop_back();
  return false;
}

bool ChunkReader::HasHeaderByte(std::size_t i) {
  while (i >= rest_.size()) {
    if (!ReadMore(rest_)) return false;
  }
  return true;
}

// Takes the first `length` bytes as a record and its line end off what is read.
std::string ChunkReader::TakeRecord(std::size_t length) {
  std::string record = rest_.substr(0, length);
  std::size_t end = length;
  while (HasHeaderByte(end) && rest_[end] == '\r') ++end;
  const bool hasLf = HasHeaderByte(end) && rest_[end] == '\n';
  const bool hasCr = end > length;
  if (hasCr || hasLf) lineEnd_ = std::string(hasCr ? "\r" : "") + (hasLf ? "\n" : "");
  rest_.erase(0, hasLf ? end + 1 : length + (hasCr ? 1 : 0));
  return record;
}

std::optional<std::string> ChunkReader::ReadFirstRecord() {
  bool quoted = false;
  std::size_t searched = 0;
  do {
    const std::size_t end = FindOutsideQuotes(rest_, searched, "\r\n", quoted);
    if (end != kNone) return TakeRecord(end);
    searched = rest_.size();
  } while (ReadMore(rest_));
  if (rest_.empty()) return std::nullopt;
  return TakeRecord(rest_.size());
}

std::optional<std::string> ChunkReader::ReadHeader() {
  std::optional<std::string> record = ReadFirstRecord();
  if (!record || !NamedSeparator(*record)) return record;
  separatorLine_ = *record;
  return ReadFirstRecord();
}

bool ChunkReader::Next(std::string& chunk) {
  chunk.clear();
  chunk.swap(rest_);
  bool quoted = false;
  std::size_t searched = 0;
  for (;;) {
    const std::string_view fresh = std::string_view(chunk).substr(searched);
    if (HasOddQuotes(fresh)) quoted = !quoted;
    const std::size_t end = FindLastRecordEnd(fresh, quoted, lineEnd_.back());
    if (end != kNone) {
      rest_.assign(chunk, searched + end + 1);
      chunk.resize(searched + end + 1);
      return true;
    }
    searched = chunk.size();
    if (!ReadMore(chunk)) return !chunk.empty();
  }
}

}  // namespace Cohort
