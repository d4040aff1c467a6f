// A small table, read as a whole.
#include "batch/uncertainty_defaults.h"

#include <algorithm>
#include <optional>
#include <sstream>
#include <string_view>
#include <vector>

#include "batch/header_row.h"
#include "batch/input_file.h"
#include "batch/record_parser.h"
#include "case/number_text.h"
#include "columns/cohort_error.h"
#include "columns/default_reading.h"
#include "columns/visible_text.h"

namespace Cohort {

namespace {

constexpr std::size_t kLargestFile = std::size_t{1} << 20;  // bytes

// Where the table has what; only the first two must be there.
struct Places {
  std::optional<std::size_t> column, u, unit, distribution;
};

// The lines of a text with any line ends, the blank ones included.
std::vector<std::string> LinesOf(std::string text) {
  for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;) text.erase(at, 1);
  std::replace(text.begin(), text.end(), '\r', '\n');
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

char DelimiterOf(std::string_view header) {
  const std::size_t found = header.find_first_of(",;\t");
  return found == std::string_view::npos ? ',' : header[found];
}

Uncertainty::Distribution ReadDistribution(std::string_view text) {
  const std::string name = PlainName(text);
  if (name.empty() || name == "normal") return Uncertainty::Distribution::Normal;
  if (name == "uniform") return Uncertainty::Distribution::Uniform;
  if (name == "triangular") return Uncertainty::Distribution::Triangular;
  throw CohortError("the distribution " + Quoted(text) +
                    " is not known; known are normal, uniform, triangular");
}

double ReadU(std::string_view text) {
  const std::optional<double> u = Vse::ReadNumber(text);
  if (!u) throw CohortError("u is not a number: " + Quoted(text));
  if (*u < 0.0) throw CohortError("u must not be negative");
  return *u;
}

class DefaultsReader {
 public:
  explicit DefaultsReader(std::string_view header) : parser_(DelimiterOf(header)) {
    Parse(header);
    for (std::size_t i = 0; i < parser_.Fields().size(); ++i) TakeTitle(i);
    if (!places_.column || !places_.u) {
      throw CohortError("the columns column and u are needed; the header read is " +
                        Quoted(header));
    }
  }

  void ReadRow(std::string_view row) {
    Parse(row);
    if (parser_.Fields().empty()) return;
    const std::string_view name = Field(places_.column);
    const DefaultReading reading = DefaultReadingNamed(name);
    Uncertainty::ReadingError& error = reading.measurement
                                           ? defaults_.errors[Sila::IndexOf(*reading.measurement)]
                                           : defaults_.magnification;
    if (std::find(taken_.begin(), taken_.end(), &error) != taken_.end()) {
      throw CohortError(Quoted(name) + " is there twice");
    }
    taken_.push_back(&error);
    error = ReadError(reading);
  }

  const UncertaintyDefaults& Defaults() const { return defaults_; }

 private:
  void Parse(std::string_view record) {
    if (parser_.Parse(record) != RecordFault::None) throw CohortError("a quote is broken");
  }

  void TakeTitle(std::size_t field) {
    const std::string name = PlainName(parser_.Fields()[field]);
    if (name == "column") places_.column = field;
    if (name == "u") places_.u = field;
    if (name == "unit") places_.unit = field;
    if (name == "distribution") places_.distribution = field;
  }

  std::string_view Field(std::optional<std::size_t> place) const {
    return place && *place < parser_.Fields().size() ? parser_.Fields()[*place]
                                                     : std::string_view();
  }

  Uncertainty::ReadingError ReadError(const DefaultReading& reading) const {
    const double u = ReadU(Field(places_.u));
    const auto distribution = ReadDistribution(Field(places_.distribution));
    return {HeldDefault(reading, Field(places_.unit), u), distribution};
  }

  RecordParser parser_;
  Places places_;
  UncertaintyDefaults defaults_;
  std::vector<const Uncertainty::ReadingError*> taken_;
};

}  // namespace

UncertaintyDefaults ParseUncertaintyDefaults(std::string_view text) {
  const std::vector<std::string> lines = LinesOf(std::string(WithoutByteOrderMark(text)));
  std::size_t row = 0;  // counted from 0
  try {
    if (lines.empty()) throw CohortError("the file is empty; it should begin with a header row");
    DefaultsReader reader(lines.front());
    for (row = 1; row < lines.size(); ++row) reader.ReadRow(lines[row]);
    return reader.Defaults();
  } catch (const CohortError& error) {
    throw CohortError("row " + std::to_string(row + 1) + ": " + error.what());
  }
}

UncertaintyDefaults ReadUncertaintyDefaults(const std::string& path) {
  const FileBeginning file = ReadBeginning(path, kLargestFile + 1);
  if (!file.trouble.empty()) throw CohortError(path + ": cannot be read: " + file.trouble);
  if (file.bytes.size() > kLargestFile) {
    throw CohortError(path + ": is too large for a table of uncertainties");
  }
  try {
    return ParseUncertaintyDefaults(file.bytes);
  } catch (const CohortError& error) {
    throw CohortError(path + ": " + error.what());
  }
}

}  // namespace Cohort
