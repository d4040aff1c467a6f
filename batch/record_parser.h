// One CSV record into its fields (RFC 4180 quoting), by libcsv.
#pragma once

#include <csv.h>

#include <cstddef>
#include <string>
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
  explicit RecordParser(char delimiter);
  RecordParser(const RecordParser&) = delete;
  RecordParser& operator=(const RecordParser&) = delete;
  ~RecordParser();

  // Reads one record, given without its line end. Blanks around a field are dropped unless they are
  // quoted. A record of nothing but blanks, line ends and control-Z has no fields.
  RecordFault Parse(std::string_view record);

  // The fields of the last record, quotes undone. They stay until the next call of Parse.
  const std::vector<std::string_view>& Fields() const { return fields_; }

 private:
  static void TakeField(void* text, std::size_t length, void* self);
  RecordFault Feed(std::string_view record);
  void Recover();
  void GatherFields();
  bool IsBlank(std::string_view record) const;

  char delimiter_;
  csv_parser parser_{};
  std::string text_;               // the fields one after the other
  std::vector<std::size_t> ends_;  // where each of them ends
  std::vector<std::string_view> fields_;
};

}  // namespace Cohort
