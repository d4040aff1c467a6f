// Records keep the bytes that they came with; only what is added is written anew.
#include "batch/chunk_computer.h"

#include <algorithm>
#include <utility>

#include "batch/chunk_reader.h"
#include "batch/quotes.h"

namespace Cohort {

namespace {

// The position of the delimiter that closes field number `count`, or the record's end.
std::size_t FindFieldEnd(std::string_view record, std::size_t count, char delimiter) {
  bool quoted = false;
  std::size_t end = FindOutsideQuotes(record, 0, {&delimiter, 1}, quoted);
  while (--count > 0 && end < record.size()) {
    end = FindOutsideQuotes(record, end + 1, {&delimiter, 1}, quoted);
  }
  return std::min(end, record.size());
}

bool HoldsLineEnd(std::string_view text) {
  return text.find('\r') != std::string_view::npos || text.find('\n') != std::string_view::npos;
}

// Puts quotes around each unquoted field that holds a line end. Only a quoted field holds quotes.
std::string QuoteLineEnds(std::string_view record, char delimiter) {
  std::string out;
  for (;;) {
    const std::size_t end = FindFieldEnd(record, 1, delimiter);
    const std::string_view field = record.substr(0, end);
    const bool bare = HoldsLineEnd(field) && field.find('"') == std::string_view::npos;
    if (bare) out += '"';
    out += field;
    if (bare) out += '"';
    if (end == record.size()) return out;
    out += delimiter;
    record.remove_prefix(end + 1);
  }
}

// Rows that end otherwise than the header are one record, far too long.
std::string_view DescribeGluedRows(char lineEndIn) {
  return lineEndIn == '\n'
             ? ": rows run together since they end with CR alone and the header does not"
             : ": rows run together since they end with LF and the header with CR";
}

std::string_view Describe(RecordFault fault) {
  return fault == RecordFault::OpenQuote ? "a quoted field has no closing quote"
                                         : "a quote stands inside a field or text behind a "
                                           "closing quote; quotes in a field must be doubled and "
                                           "the field put in quotes";
}

}  // namespace

void AppendHeader(std::string& out, std::string_view header, char delimiter,
                  std::string_view lineEnd, const std::vector<std::string>& uncertainties) {
  out += header;
  for (const Sila::ResultRow& result : Sila::kResults) {
    out += delimiter;
    out += result.key;
  }
  for (const std::string& name : uncertainties) {
    out += delimiter;
    out += name;
  }
  out += delimiter;
  out += kStatusName;
  out += lineEnd;
}

ChunkComputer::ChunkComputer(const HeaderRow& header, const RowFormat& format)
    : header_(header), format_(format), parser_(header.delimiter) {}

void ChunkComputer::AppendRecord(std::string_view record, const RowResult& row,
                                 std::string& out) const {
  const std::size_t count = parser_.Fields().size();
  const std::size_t expected = header_.columns.names.size();
  std::string_view surplus;
  if (count > expected) {
    const std::size_t end = FindFieldEnd(record, expected, header_.delimiter);
    surplus = record.substr(end);
    record = record.substr(0, end);
  }
  out += record;
  if (count < expected) out.append(expected - count, header_.delimiter);
  AppendResults(out, row, header_.delimiter);
  out += surplus;
  out += format_.lineEnd;
}

bool ChunkComputer::ComputeRecord(std::string_view record, char lineEndIn, ChunkResult& result) {
  const RecordFault fault = parser_.Parse(record, mayHoldQuotes_);
  if (fault != RecordFault::None) {
    result.trouble = RowRemark{result.rows, std::string(Describe(fault))};
    return false;
  }
  if (parser_.Fields().empty()) return true;
  RowResult row = ComputeRow(parser_.Fields(), header_, scratch_);
  if (mayHoldLineEnds_ && HoldsLineEnd(record)) {
    quoted_ = QuoteLineEnds(record, header_.delimiter);
    const bool tooLong = parser_.Fields().size() > header_.columns.names.size();
    if (tooLong && quoted_.size() > record.size()) row.status += DescribeGluedRows(lineEndIn);
    record = quoted_;
  }
  ++result.hips;
  if (row.kind == RowKind::Bad) {
    ++result.bad;
    if (!result.firstBad) result.firstBad = RowRemark{result.rows, row.status};
  }
  if (header_.uncertainty && header_.uncertainty->HasBudget()) {
    result.budget.push_back({result.rows, std::move(row.spread->budget)});
  }
  if (format_.table) {
    result.table.push_back({{parser_.Fields().begin(), parser_.Fields().end()}, std::move(row)});
  } else {
    AppendRecord(record, row, result.text);
  }
  return true;
}

void ChunkComputer::Compute(std::string_view chunk, char lineEndIn, ChunkResult& result) {
  result.text.clear();
  result.table.clear();
  result.budget.clear();
  result.bytes = chunk.size();
  result.rows = result.hips = result.bad = 0;
  result.firstBad.reset();
  result.trouble.reset();
  RecordWalk walk(chunk, lineEndIn);
  mayHoldQuotes_ = walk.MayHoldQuotes();
  mayHoldLineEnds_ = walk.MayHoldLineEnds();
  for (std::string_view record; walk.Next(record);) {
    ++result.rows;
    if (!ComputeRecord(record, lineEndIn, result)) return;
  }
}

}  // namespace Cohort
