// libcsv is given one record at a time, so line ends are never its business: inside a field they
// are text like any other.
#include "batch/record_parser.h"

#include <algorithm>
#include <new>

namespace Cohort {

namespace {

// By how much libcsv lets its field buffer grow; its own 128 bytes make long fields quadratic.
constexpr std::size_t kFieldBuffer = std::size_t{1} << 20;

constexpr unsigned char kOptions = CSV_STRICT | CSV_STRICT_FINI;

int NeverEndsARow(unsigned char) {
  return 0;
}

}  // namespace

RecordParser::RecordParser(char delimiter) : delimiter_(delimiter) {
  csv_init(&parser_, kOptions);
  csv_set_delim(&parser_, static_cast<unsigned char>(delimiter));
  csv_set_term_func(&parser_, NeverEndsARow);
  csv_set_blk_size(&parser_, kFieldBuffer);
}

RecordParser::~RecordParser() {
  csv_free(&parser_);
}

void RecordParser::TakeField(void* text, std::size_t length, void* self) {
  auto& parser = *static_cast<RecordParser*>(self);
  parser.text_.append(static_cast<const char*>(text), length);
  parser.ends_.push_back(parser.text_.size());
}

void RecordParser::GatherFields() {
  fields_.clear();
  std::size_t begin = 0;
  for (const std::size_t end : ends_) {
    fields_.push_back(std::string_view(text_).substr(begin, end - begin));
    begin = end;
  }
}

RecordFault RecordParser::Feed(std::string_view record) {
  const std::size_t taken =
      csv_parse(&parser_, record.data(), record.size(), TakeField, nullptr, this);
  if (taken != record.size()) {
    if (csv_error(&parser_) != CSV_EPARSE) throw std::bad_alloc();
    return RecordFault::StrayQuote;
  }
  if (csv_fini(&parser_, TakeField, nullptr, this) != 0) return RecordFault::OpenQuote;
  return RecordFault::None;
}

// After a fault libcsv still stands inside the record; only a lenient end brings it out.
void RecordParser::Recover() {
  csv_set_opts(&parser_, 0);
  csv_fini(&parser_, nullptr, nullptr, nullptr);
  csv_set_opts(&parser_, kOptions);
}

// Between tabs there are fields, if empty ones.
bool RecordParser::IsBlank(std::string_view record) const {
  constexpr std::string_view kNothing = " \t\r\n\x1A";
  return std::all_of(record.begin(), record.end(), [&](char c) {
    return kNothing.find(c) != std::string_view::npos && c != delimiter_;
  });
}

RecordFault RecordParser::Parse(std::string_view record) {
  text_.clear();
  ends_.clear();
  const RecordFault fault = IsBlank(record) ? RecordFault::None : Feed(record);
  if (fault != RecordFault::None) Recover();
  GatherFields();
  return fault;
}

}  // namespace Cohort
