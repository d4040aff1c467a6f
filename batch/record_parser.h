// One CSV record into its fields (RFC 4180 quoting).
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace Cohort {

enum class RecordFault {
  None,
  StrayQuote,  // a quote inside an unquoted field, or text behind a closing quote
  OpenQuote,   // a quoted field without its closing quote
};

class RecordParser {
 public:
  explicit RecordParser(char delimiter) : delimiter_(delimiter) {}
  RecordParser(const RecordParser&) = delete;
  RecordParser& operator=(const RecordParser&) = delete;
  ~RecordParser() = default;

  // Reads one record, given without its line end; line ends inside are text like any other. Blanks
  // around a field are dropped unless they are quoted. A record of nothing but blanks, line ends
  // and control-Z has no fields. Whoever knows that no record has a quote may say so: looking for
  // one takes time.
  RecordFault Parse(std::string_view record, bool mayHoldQuotes = true);

  // The fields of the last record, quotes undone. They stay until the next call of Parse.
  const std::vector<std::string_view>& Fields() const { return fields_; }

 private:
  bool IsBlank(std::string_view record) const;
  std::string_view Copy(std::string_view record);
  void SplitPlain(std::string_view record);
  RecordFault SplitQuoted(std::string_view record);
  RecordFault AddField(std::string_view field);
  RecordFault AddQuoted(std::string_view field);

  char delimiter_;
  std::vector<char> copy_;  // of the record, with room behind it
  std::vector<std::string_view> fields_;
};

}  // namespace Cohort
