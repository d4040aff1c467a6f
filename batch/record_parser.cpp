// A record without quotes, as most are, is split 64 bytes at a time. Its fields lie in a copy,
// where quotes can be undone in place.
#include "batch/record_parser.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "batch/quotes.h"

namespace Cohort {

namespace {

constexpr std::size_t kBlock = 64;  // bytes, one for each bit of a mask

// Most characters pass with the first comparison.
bool IsSpace(char c) {
  return c <= ' ' && (c == ' ' || c == '\t');
}

std::string_view WithoutSpaces(const char* begin, const char* end) {
  while (begin != end && IsSpace(*begin)) ++begin;
  while (begin != end && IsSpace(end[-1])) --end;
  return {begin, static_cast<std::size_t>(end - begin)};
}
std::string_view WithoutSpaces(std::string_view text) {
  return WithoutSpaces(text.data(), text.data() + text.size());
}

// A bit for each byte of a block, the first one's lowest: whether it is `wanted`.
std::uint64_t FindInBlock(const char* bytes, char wanted) {
  using Bytes [[gnu::vector_size(16)]] = char;
  constexpr bool kIsLittle = std::endian::native == std::endian::little;
  constexpr std::uint64_t kOwnBits = kIsLittle ? 0x8040201008040201 : 0x0102040810204080;
  constexpr std::uint64_t kSum = 0x0101010101010101;  // of all bytes, in the highest
  std::uint64_t found = 0;
  for (std::size_t i = 0; i < kBlock; i += sizeof(Bytes)) {
    Bytes part;
    std::memcpy(&part, bytes + i, sizeof(part));
    std::array<std::uint64_t, 2> halves{};
    const auto equal = part == wanted;
    std::memcpy(halves.data(), &equal, sizeof(equal));
    found |= ((halves[0] & kOwnBits) * kSum >> 56) << i;
    found |= ((halves[1] & kOwnBits) * kSum >> 56) << (i + 8);
  }
  return found;
}

}  // namespace

// Between tabs there are fields, if empty ones.
bool RecordParser::IsBlank(std::string_view record) const {
  return std::all_of(record.begin(), record.end(), [&](char c) {
    return (IsSpace(c) || c == '\r' || c == '\n' || c == '\x1A') && c != delimiter_;
  });
}

// The last block may be read as a whole.
std::string_view RecordParser::Copy(std::string_view record) {
  if (copy_.size() < record.size() + kBlock) copy_.resize(record.size() + kBlock);
  std::copy(record.begin(), record.end(), copy_.data());
  return {copy_.data(), record.size()};
}

void RecordParser::SplitPlain(std::string_view record) {
  const char* begin = record.data();
  const char* const end = begin + record.size();
  for (const char* block = begin; block < end; block += kBlock) {
    std::uint64_t found = FindInBlock(block, delimiter_);
    const auto left = static_cast<std::size_t>(end - block);
    if (left < kBlock) found &= (std::uint64_t{1} << left) - 1;
    for (; found != 0; found &= found - 1) {
      const char* const delimiter = block + std::countr_zero(found);
      fields_.push_back(WithoutSpaces(begin, delimiter));
      begin = delimiter + 1;
    }
  }
  fields_.push_back(WithoutSpaces(begin, end));
}

// `field` begins with a quote.
RecordFault RecordParser::AddQuoted(std::string_view field) {
  char* const begin = copy_.data() + (field.data() - copy_.data());
  char* out = begin;
  do {
    field.remove_prefix(1);
    const std::size_t quote = field.find('"');
    if (quote == std::string_view::npos) return RecordFault::OpenQuote;
    out = std::copy_n(field.begin(), quote, out);
    field.remove_prefix(quote + 1);
    if (field.starts_with('"')) *out++ = '"';
  } while (field.starts_with('"'));
  if (!WithoutSpaces(field).empty()) return RecordFault::StrayQuote;
  fields_.emplace_back(begin, out - begin);
  return RecordFault::None;
}

RecordFault RecordParser::AddField(std::string_view field) {
  field = WithoutSpaces(field);
  if (field.starts_with('"')) return AddQuoted(field);
  if (field.find('"') != std::string_view::npos) return RecordFault::StrayQuote;
  fields_.push_back(field);
  return RecordFault::None;
}

RecordFault RecordParser::SplitQuoted(std::string_view record) {
  for (;;) {
    bool quoted = false;
    const std::size_t end = FindOutsideQuotes(record, 0, {&delimiter_, 1}, quoted);
    const RecordFault fault = AddField(record.substr(0, end));
    if (fault != RecordFault::None || end == std::string_view::npos) return fault;
    record.remove_prefix(end + 1);
  }
}

RecordFault RecordParser::Parse(std::string_view record, bool mayHoldQuotes) {
  fields_.clear();
  if (IsBlank(record)) return RecordFault::None;
  record = Copy(record);
  if (mayHoldQuotes && record.find('"') != std::string_view::npos) return SplitQuoted(record);
  SplitPlain(record);
  return RecordFault::None;
}

}  // namespace Cohort
